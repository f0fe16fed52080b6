#pragma once
// Merging a saved project into the open one: both are shown side by side,
// each can be shifted, and the second is poured into the first floor by
// floor or added as floors of its own.

#include "CVxProject.h"
#include "CVxStringW.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QLabel;

class CVxMergeProjectDlg : public QDialog
{
    Q_OBJECT
public:
    enum EProject
    {
        PROJECT_CURRENT = 0,
        PROJECT_MERGE = 1
    };
    enum EEdge
    {
        EDGE_LEFT = 0,
        EDGE_RIGHT,
        EDGE_TOP,
        EDGE_BOTTOM
    };

    // Holds a copy of the core's project as it is now.
    explicit CVxMergeProjectDlg(QWidget* parent = nullptr);
    ~CVxMergeProjectDlg() override;

    // The second project, scaled to the unit of the first; false when the
    // file doesn't load.
    bool LoadSecondProject(const CVxStringW& path);
    bool HasSecondProject() const { return m_loaded; }
    QDoubleSpinBox* GetShiftBox(int project, bool vertical) const
    {
        return m_shift[project][vertical ? 1 : 0];
    }
    QCheckBox* GetNewFloorCheck() const { return m_newFloor; }
    QDialogButtonBox* GetButtonBox() const { return m_buttonBox; }
    // The preview of one project, as shown.
    QImage GetPreview(int project) const;

public slots:
    // Shifts both projects so that their rooms line up at that edge.
    void Align(int edge);
    void OnBrowse();
    void OnAccepted();

private:
    void UpdatePreview(int project);

    CVxProject m_current;
    CVxProject m_second;
    bool m_loaded = false;
    bool m_merged = false;
    QLabel* m_preview[2] = {};
    QDoubleSpinBox* m_shift[2][2] = {};
    QCheckBox* m_newFloor = nullptr;
    QDialogButtonBox* m_buttonBox = nullptr;
};
