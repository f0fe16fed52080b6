#pragma once
// The 3D viewer window: the engine's view in a GLWidget and the controls
// around it: navigation, viewpoints, the floor and layer switches, the walls
// mode, effects, snapshots and the export of the loaded scene. Visibility
// and effects go to the running engine by node names and variables; what
// changes the scene's contents needs a new export.

#include "CVx3dSceneSwitches.h"
#include "CVxGlobalShadow.h"
#include "CVxStringW.h"
#include "GLWidget.h"

#include <QStringList>
#include <QWidget>

class QAction;
class QCheckBox;
class QComboBox;
class QDialog;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QSlider;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;

// A saved camera: position, direction, up, gravity up, and the navigation
// type, to come back to after a reload.
class CVxNavKeeper
{
public:
    void SaveState(GLWidget* widget);
    // Moves the camera back and forgets the state; false when none was saved.
    bool ApplyState(GLWidget* widget, bool animated);
    void Clear() { m_valid = false; }
    bool IsValid() const { return m_valid; }

private:
    float m_coords[12] = {};
    int m_navigationType = 0;
    bool m_valid = false;
};

class CVx3dViewer : public QWidget, public IVx3dViewerHost
{
    Q_OBJECT
public:
    explicit CVx3dViewer(bool crashedLastTime, QWidget* parent = nullptr);
    ~CVx3dViewer() override;

    static void SetSurfaceFormat(QSurfaceFormat& format, bool antiAliasing);
    // The size of a VRML model, for the object properties: the engine
    // loads a small scene that uses it, without a window, after the viewer
    // is closed. box: xmin, xmax, ymin, ymax, zmin, zmax in metres. False
    // when the scene can't be written or holds nothing.
    static bool GetProtoSize(const CVxStringW& file, const CVxStringA& prototype, bool withAppearance,
                             float box[6]);

    // Shows a scene file. `switches` are the Switch nodes the export wrote;
    // with `sameScene` and the same nodes the viewer keeps its own states.
    void SetScene(const CVxStringW& path, const CVx3dSceneSwitches& switches, bool phong, bool sameScene);

    void MoveToViewpoint(int index, bool animated);
    void SwitchNavigation(int to);
    void OnFloorLayerVisibilityChanged(int floor, int layer, bool visible);
    void OnWallsVisibilityChanged(int mode);
    // The sun of the project at another date, time or place: the sun light,
    // its shadow and the sun object move in the running scene. The settings
    // become the project's.
    void OnSunShadowTimeOrPosChanged(const CVxGlobalShadow& shadow);
    // The project's ground colour changed: the running scene takes a plain
    // colour at once, a texture needs a new export.
    void OnGroundAppearanceChanged();
    bool SaveScreenshotToFile(const QString& path);
    void SaveSceneToFile(const QString& path);
    // The tour from the current viewpoint to the last one; a key stops it.
    void BtnViewPlayClick();
    bool IsPlaying() const { return m_playing; }

    GLWidget* GetGLWidget() const { return m_glWidget; }
    QTreeWidget* GetTreeWidget() const { return m_tree; }
    QSlider* GetDateSlider() const { return m_sliderDate; }
    QSlider* GetTimeSlider() const { return m_sliderTime; }
    QCheckBox* GetSunCheck() const { return m_chkSun; }
    QMenu* GetViewpointsMenu() const { return m_menuViewpoints; }
    int GetCurrentViewpoint() const { return m_currentViewpoint; }
    int GetViewpointCount() const { return m_viewpointCount; }
    // The engine's warnings, as the log window shows them.
    const QStringList& GetWarnings() const { return m_warnings; }
    // The text shown in place of the view, when the engine can't run.
    QString GetWaiterText() const;

    // IVx3dViewerHost
    bool IsViewerLayoutEnabled() const override;
    void Castle3DAfterInitialized() override;
    void Castle3DAfterSceneLoaded() override;
    void ShowWaiterImage(bool show) override;
    void UpdateNavigationButtons(bool setOptions) override;
    void AddNewWarning(const QString& text) override;
    bool OnKeyPress(int key) override;
    bool OnGestureEvent(QEvent* event) override;
    void OnCameraMotion(bool moving) override;

protected:
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildControls();
    void LoadOptions(bool crashedLastTime);
    void SaveOptions();
    bool CreateCastleGlWidget();
    void RemoveCastleGlWidget(bool keepPicture);
    void CaptureWaiterImage();
    void SetNavigationOptionsToCGE();
    void RebuildViewpointsMenu();
    void LoadFloorLayerVisFromSwitches();
    void LoadSunShadow(const CVxGlobalShadow& shadow);
    void OnSliderDateChanged(int value);
    void OnSliderTimeChanged(int value);
    void BtnSunPosClick();
    void BtnColorClick();
    // A new export of the project, for what the running scene can't change.
    void ReExport();
    void ApplyFloorLayerVis();
    void OnTreeItemChanged(QTreeWidgetItem* item, int column);
    void MenuMouseLookClick();
    void MenuAddViewpointClick();
    void BtnSnapshotClick();
    void MenuSaveSceneToFileClick();
    void MenuOpenGLInfoClick();
    void BtnReloadClick();
    void CreateLogWindow();
    void ApplyEffects();
    QAction* AddToggle(QMenu* menu, int row, const wchar_t* english, bool checked);

    GLWidget* m_glWidget = nullptr;
    QWidget* m_glContainer = nullptr;
    QLabel* m_waiter = nullptr;
    QVBoxLayout* m_centre = nullptr;
    QDialog* m_logWindow = nullptr;
    QPlainTextEdit* m_logText = nullptr;
    QMenu* m_menuViewpoints = nullptr;
    QMenu* m_menuGear = nullptr;
    QAction* m_addViewpointSeparator = nullptr;
    QToolButton* m_btnWalk = nullptr;
    QToolButton* m_btnFly = nullptr;
    QToolButton* m_btnExamine = nullptr;
    QTreeWidget* m_tree = nullptr;
    QComboBox* m_wallsMode = nullptr;
    QCheckBox* m_chkSun = nullptr;
    QCheckBox* m_chkShowSun = nullptr;
    QSlider* m_sliderDate = nullptr;
    QSlider* m_sliderTime = nullptr;
    QLabel* m_dateLabel = nullptr;
    QLabel* m_timeLabel = nullptr;
    QPushButton* m_btnSunPos = nullptr;
    QPushButton* m_btnGround = nullptr;
    QAction* m_actPauseMovie = nullptr;
    QAction* m_actSoftShadows = nullptr;
    QAction* m_actEdgeEnhance = nullptr;
    QAction* m_actAntiAliasing = nullptr;
    QAction* m_actWalkingEffect = nullptr;
    QAction* m_actSaveCPU = nullptr;
    QAction* m_actOcclusion = nullptr;
    QAction* m_actLegacy = nullptr;
    QWidget* m_sidePanel = nullptr;

    CVxStringW m_sceneFile;
    bool m_startMaximised = false;
    bool m_reloadPending = false;
    // The sun's shadow was on at the last load: its map belongs to the
    // context, so turning it off needs a new one too.
    bool m_lastShadows = false;
    bool m_phongOn = true;
    int m_currentViewpoint = 0;
    int m_viewpointCount = 0;
    bool m_keyFToggle = false;
    bool m_playing = false;
    bool m_updatingControls = false;
    bool m_layoutReady = false;
    double m_lastPixelRatio = 1.0;
    CVxNavKeeper m_navKeeper;
    CVx3dSceneSwitches m_floorLayerVis;
    QStringList m_warnings;
};
