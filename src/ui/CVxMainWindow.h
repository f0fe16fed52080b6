#pragma once
// The main window: the plan in the middle, menus, docks and the status bar.
// It builds the core at the start of its constructor and writes the settings
// when it goes.

#include "CVxStringW.h"
#include "VxHostTypes.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>

class CVxAppHelperQt;
class CVxLayersForm;
class CVxLibraryForm;
class CVxMainRenderArea;
class CVxMainScrollArea;
class CVxMainStatusBar;
class CVxMainToolbar;
class CVx3dSetupForm;
class CVxPartsListForm;
class QAction;
class QDockWidget;
class QDragEnterEvent;
class QDropEvent;
class QMimeData;
class QMenu;
class QTimer;
class CVx3dViewer;
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
    // SIGTERM or SIGHUP came: questions get their careful answer unasked,
    // and the program ends as soon as it can.
    static bool IsSessionEnding() { return s_instance && s_instance->m_sessionEnding; }

    // The 3D viewer on a scene file as it stands; one viewer at a time.
    // "Explore in 3D": the project's scene, written anew, in the viewer.
    void Show3D();
    void Show3DScene(const CVxStringW& path);
    void Close3DViewer();
    CVx3dViewer* Get3DViewer() const;
    // .wrl, .x3d and .x3dv files open in the 3D viewer.
    static bool IsSceneFile(const CVxStringW& path);

    CVxMainRenderArea* GetRenderArea() const { return m_renderArea; }
    CVxMainScrollArea* GetScrollArea() const { return m_scrollArea; }
    CVxMainStatusBar* GetStatusBar() const { return m_statusBar; }
    QMenu* GetMenu(EVxMenu menu) const { return m_menus[menu]; }
    CVxMainToolbar* GetMainToolbar() const { return m_mainToolbar; }
    QToolBar* GetFloorToolbar() const { return m_floorToolbar; }
    QToolBar* GetContextToolbar() const { return m_contextToolbar; }
    QToolBar* GetContextAlignToolbar() const { return m_contextAlignToolbar; }
    QMenu* GetObjectPopup() const { return m_objectPopup; }
    QMenu* GetProjectPopup() const { return m_projectPopup; }
    // Undo and Redo follow what the core can do.
    void EnableUndoButtons();
    // The floor commands and the floor tool bar follow the floors there are
    // and the current one.
    void EnableFloorButtons();
    // Every item of every command enabled, and the context items shown, as
    // the project, the selection and the active editor allow now.
    void UpdateCommandStates();
    void RebuildContextToolbar();
    void EnableAlignCommands();
    void AfterSelectionChanged();
    // The object pop-up at the pointer, or the project's for -1.
    void ShowPopupMenuForObject(int index);
    // An editor opened or closed: its bar over the plan, the tool bar's
    // commands.
    void AfterSpecialEditorActivated(EVxEditorCode code, bool active, bool discard);
    void ShowWallEditorPopupMenu();
    QToolBar* GetEditorBar() const { return m_editorBar; }
    // Runs a command by number: here those that need a window or a
    // dialogue, in the core the rest. False when nobody handles the code.
    bool DoMainToolbarAction(EVxMainToolbarButtonCode code, int index);
    // Whether this build has the feature behind a command; the items of
    // the others are shown disabled.
    static bool IsCommandAvailable(int code);
    // Widget tests see each command before it runs; true from the hook
    // keeps it from running.
    static void SetCommandHook(std::function<bool(int code, int index)> hook)
    {
        s_commandHook = std::move(hook);
    }
    // The tool bar and the menus for the classic desktop, a touch screen
    // beside it, or the touch interface.
    void AdaptForTouch();
    void UpdateMainToolbarButtonsVisibility();
    void UpdateButtonsWithAutoDarkIcons();
    QDockWidget* GetDock(EVxDock dock) const { return m_docks[dock]; }
    CVxLayersForm* GetLayersForm() const { return m_layersForm; }
    CVxPartsListForm* GetPartsListForm() const { return m_partsListForm; }
    // Shows or hides a dock and checks its command.
    void ShowDock(EVxDock dock, bool show);
    // After the document changed: the layers and the listing follow.
    void RefreshProjectWindows();
    // Every text of the window again, after a change of language.
    void LocalizeAll();
    // The user guide: the language's help file, or the one shipped in Help.
    CVxStringW GetHelpFilePath() const;
    // The library window in its dock; its visibility is command 62's check
    // mark and is kept in the settings.
    CVxLibraryForm* GetLibraryForm() const { return m_libraryForm; }
    void ShowLibrary(bool show);
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
    void ShowScanMenu();
    // The recent files in the Project menu, from the settings.
    void BuildRecentMenu();
    QMenu* GetSamplesMenu() const { return m_samplesMenu; }

public slots:
    void OnStartTimer();
    void OnOpenedFileChangedOnDisk();
    void OnShowMissingFilesDlg();
    void OnMergeProjects();
    // The print dialog on the current floor.
    void OnPrint();
    // The plan of the current floor as a drawing exchange file.
    void OnExportDxf();
    void OnOpenSampleFileClicked();
    // The desktop session ends: nobody is there to answer, so unsaved work
    // goes to the auto-save file for the next start to offer, and the
    // window closes.
    void OnSessionEnd();
    // A triggered command item.
    void OnMainToolbarAction();
    // The floor tool bar's segments: the user picked a floor.
    void on_SegmFloorChanged();

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
    // The docks' titles in the chosen language.
    void LocalizeDockTitles();
    void FillSamplesMenu();
    void ShowAbout();
    // The language's help or news file, false when it has none.
    bool OpenLanguageFile(bool whatsNew);
    void OpenStartFile();
    // The first project file among dropped ones, or empty.
    static CVxStringW GetDroppedProjectFile(const QMimeData* data);
    void ChooseLanguageAtFirstStart();

    static CVxMainWindow* s_instance;
    static bool s_openSampleAtFirstStart;
    static inline std::function<bool(int, int)> s_commandHook;

    CVxAppHelperQt* m_helper = nullptr;
    CVxMainRenderArea* m_renderArea = nullptr;
    CVxMainScrollArea* m_scrollArea = nullptr;
    CVxMainStatusBar* m_statusBar = nullptr;
    CVxMainToolbar* m_mainToolbar = nullptr;
    QToolBar* m_floorToolbar = nullptr;
    QToolBar* m_contextAlignToolbar = nullptr;
    QToolBar* m_contextToolbar = nullptr;
    QToolBar* m_editorBar = nullptr;
    QAction* m_exportDxf = nullptr;
    // The print dialog comes back when the layout it sent to the editor is
    // closed.
    bool m_printAfterLayout = false;
    QMenu* m_menus[MENU_COUNT] = {};
    // The menu bar's items of the menus, kept apart: a menu that a tool
    // button takes over answers with the button's action instead.
    QAction* m_menuTitles[MENU_COUNT] = {};
    QMenu* m_objectPopup = nullptr;
    QMenu* m_projectPopup = nullptr;
    QMenu* m_specialEditorPopup = nullptr;
    QMenu* m_newObjectPopup = nullptr;
    QMenu* m_longPressPopup = nullptr;
    QDockWidget* m_docks[DOCK_COUNT] = {};
    CVxLibraryForm* m_libraryForm = nullptr;
    CVxLayersForm* m_layersForm = nullptr;
    CVxPartsListForm* m_partsListForm = nullptr;
    CVx3dSetupForm* m_setup3dForm = nullptr;
    QMenu* m_samplesMenu = nullptr;
    QAction* m_recentSeparator = nullptr;
    CVxStringW m_commandLineFile;
    bool m_crashedLastTime = false;
    bool m_firstStart = false;
    bool m_startedByInstaller = false;
    QPointer<CVx3dViewer> m_viewer3d;
    int64_t m_lastAutoSaveTick = 0;
    QTimer* m_autoSaveTimer = nullptr;
    bool m_firstShow = true;
    bool m_darkScheme = false;
    bool m_blockSchemeChanges = true;
    bool m_sessionEnding = false;
};
