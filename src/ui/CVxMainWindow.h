#pragma once
// The main window: the plan in the middle, menus, docks and the status bar.
// It builds the core at the start of its constructor and writes the settings
// when it goes.

#include "CVxStringW.h"

#include <QMainWindow>

class CVxAppHelperQt;
class CVxMainRenderArea;
class CVxMainScrollArea;
class CVxMainStatusBar;
class QAction;
class QDockWidget;
class QDragEnterEvent;
class QDropEvent;
class QMimeData;
class QMenu;
class QTimer;
class QToolBar;

class CVxMainWindow : public QMainWindow
{
    Q_OBJECT
public:
    // The menus of the menu bar, in their order.
    enum EVxMenu
    {
        MENU_PROJECT = 0,
        MENU_EDIT,
        MENU_FLOOR,
        MENU_OBJECTS,
        MENU_VIEW,
        MENU_CONFIGURE,
        MENU_HELP,
        MENU_COUNT
    };
    enum EVxDock
    {
        DOCK_LIBRARY = 0,
        DOCK_LISTING,
        DOCK_3D_SETUP,
        DOCK_ALIGN,
        DOCK_LAYERS,
        DOCK_ATTACHMENTS,
        DOCK_COMMENTS,
        DOCK_COUNT
    };

    explicit CVxMainWindow(const QStringList& arguments = QStringList(), QWidget* parent = nullptr);
    ~CVxMainWindow() override;

    static CVxMainWindow* GetInstance();

    CVxMainRenderArea* GetRenderArea() const { return m_renderArea; }
    CVxMainScrollArea* GetScrollArea() const { return m_scrollArea; }
    CVxMainStatusBar* GetStatusBar() const { return m_statusBar; }
    QMenu* GetMenu(EVxMenu menu) const { return m_menus[menu]; }
    // Undo and Redo follow what the core can do.
    void EnableUndoButtons();
    // The floor commands follow the floors there are and the current one.
    void EnableFloorButtons();
    QDockWidget* GetDock(EVxDock dock) const { return m_docks[dock]; }
    const CVxStringW& GetCommandLineFile() const { return m_commandLineFile; }
    bool IsFirstStart() const { return m_firstStart; }
    bool IsStartedByInstaller() const { return m_startedByInstaller; }
    // Whether a first start opens the sample project; widget tests turn it
    // off so that every window starts with the default project.
    static void SetOpenSampleAtFirstStart(bool open) { s_openSampleAtFirstStart = open; }

    void RebuildRoom();
    void ZoomToBestFit();
    // The selected objects of the floor fill the view, with a quarter of
    // their size around them, centred.
    void ZoomToSelectedObjects();
    // One rung of the zoom ladder up or down, about the pointer when it is
    // over the plan; nothing at the end of the ladder.
    void ZoomIn(bool atCursor = false);
    void ZoomOut(bool atCursor = false);
    void ZoomStep(double zoom, bool atCursor);
    void AutoSizeWindow();
    void InitDarkTheme(bool dark);

    // The project as a document; the core does the work and asks through
    // the host.
    bool OpenFile(const CVxStringW& path, bool atStart);
    bool OpenSampleFile(const CVxStringW& path);
    bool OpenRecentFile(int index);
    bool DoProjectSave();
    bool DoProjectSaveAs();
    void RevertProjectToSaved();
    void StartNewProject();
    // The recent files in the Project menu, from the settings.
    void BuildRecentMenu();
    QMenu* GetSamplesMenu() const { return m_samplesMenu; }

public slots:
    void OnStartTimer();
    void OnOpenedFileChangedOnDisk();
    void OnShowMissingFilesDlg();
    void OnMergeProjects();
    void OnOpenSampleFileClicked();
    // The desktop session ends: nobody is there to answer, so unsaved work
    // goes to the auto-save file for the next start to offer, and the
    // window closes.
    void OnSessionEnd();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ParseCommandLine(const QStringList& arguments, CVxStringW& appFolder);
    void ApplyStoredGeometry();
    void CreateMenus();
    void CreateDocks();
    void CreateProjectMenu();
    void CreateViewMenu();
    void CreateEditMenu();
    void CreateFloorMenu();
    void FillSamplesMenu();
    void OpenStartFile();
    // The first project file among dropped ones, or empty.
    static CVxStringW GetDroppedProjectFile(const QMimeData* data);
    void ChooseLanguageAtFirstStart();

    static CVxMainWindow* s_instance;
    static bool s_openSampleAtFirstStart;

    CVxAppHelperQt* m_helper = nullptr;
    CVxMainRenderArea* m_renderArea = nullptr;
    CVxMainScrollArea* m_scrollArea = nullptr;
    CVxMainStatusBar* m_statusBar = nullptr;
    QToolBar* m_floorToolbar = nullptr;
    QToolBar* m_contextAlignToolbar = nullptr;
    QToolBar* m_contextToolbar = nullptr;
    QMenu* m_menus[MENU_COUNT] = {};
    QMenu* m_objectPopup = nullptr;
    QMenu* m_projectPopup = nullptr;
    QMenu* m_specialEditorPopup = nullptr;
    QMenu* m_newObjectPopup = nullptr;
    QDockWidget* m_docks[DOCK_COUNT] = {};
    QMenu* m_samplesMenu = nullptr;
    QAction* m_floorActions[6] = {};
    QAction* m_undoAction = nullptr;
    QAction* m_redoAction = nullptr;
    QAction* m_recentActions[4] = {};
    QAction* m_recentSeparator = nullptr;
    CVxStringW m_commandLineFile;
    bool m_firstStart = false;
    bool m_startedByInstaller = false;
    int64_t m_lastAutoSaveTick = 0;
    QTimer* m_autoSaveTimer = nullptr;
    bool m_firstShow = true;
    bool m_darkScheme = false;
    bool m_blockSchemeChanges = true;
    bool m_sessionEnding = false;
};
