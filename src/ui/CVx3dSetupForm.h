#pragma once
// The 3D settings of the project, in a dock of the main window: where
// "Explore in 3D" opens the scene, the project's viewpoints, which floors
// and views go into the scene, the sun, the walls mode and two options of
// the walking view.

#include <QWidget>

class QCheckBox;
class QComboBox;
class QListWidget;
class QPushButton;

class CVx3dSetupForm : public QWidget
{
    Q_OBJECT
public:
    explicit CVx3dSetupForm(QWidget* parent = nullptr);

    // Shows the project's and the options' state.
    void Refresh();
    void FillList();
    // Whether a browser plug-in could show the scene; never on this
    // platform, so the choice of it is not offered.
    static bool CheckVrmlOptions() { return false; }

    QComboBox* GetOpenTarget() const { return m_openTarget; }
    QComboBox* GetWallsMode() const { return m_wallsMode; }
    QListWidget* GetViewpointList() const { return m_list; }
    // Adds a viewpoint of that name at the middle of the active floor.
    void AddViewpoint(const QString& name);
    void RemoveViewpoint(int index);
    void MoveViewpoint(int index, int by);

private:
    void BtnItemAddClick();
    void BtnShadowPosClick();
    void EnableControls();
    // After a change of the project's 3D settings: the main view and a
    // running viewer follow.
    void ProjectChanged(bool sceneChanged);

    QComboBox* m_openTarget = nullptr;
    QListWidget* m_list = nullptr;
    QPushButton* m_btnAdd = nullptr;
    QPushButton* m_btnRemove = nullptr;
    QPushButton* m_btnUp = nullptr;
    QPushButton* m_btnDown = nullptr;
    QCheckBox* m_chkAllFloors = nullptr;
    QCheckBox* m_chkIncludeStd = nullptr;
    QCheckBox* m_chkGlobalShadow = nullptr;
    QPushButton* m_btnShadowPos = nullptr;
    QComboBox* m_wallsMode = nullptr;
    QCheckBox* m_chkRotatedDown = nullptr;
    QCheckBox* m_chkWalkThroughWalls = nullptr;
    bool m_updating = false;
};
