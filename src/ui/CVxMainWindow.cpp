#include "CVxMainWindow.h"

#include "CVx3dSetupForm.h"
#include "CVx3dViewer.h"
#include "CVxAction.h"
#include "CVxAdditionalLibrariesDlg.h"
#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxAutoSave.h"
#include "CVxAutoSaveThumbDlg.h"
#include "CVxCrashDumpsDlg.h"
#include "CVxLanguageDlg.h"
#include "CVxLayersForm.h"
#include "CVxLibraryForm.h"
#include "CVxLocFileInfo.h"
#include "CVxLocalize.h"
#include "CVxMainRenderArea.h"
#include "CVxMainScrollArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMainToolbar.h"
#include "CVxMergeProjectDlg.h"
#include "CVxMissingFilesDlg.h"
#include "CVxNewProjectDlg.h"
#include "CVxOptions.h"
#include "CVxOptionsDlg.h"
#include "CVxPartsListForm.h"
#include "CVxPrintDlg.h"
#include "CVxProjectPropertiesDlg.h"
#include "CVxRoomDlgs.h"
#include "CVxSegmentedControl.h"
#include "CVxTransformDlg.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "VxCastleEngine.h"
#include "VxCrashHandler.h"
#include "VxLocalizeWidgets.h"
#include "VxSessionSignals.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QAbstractNativeEventFilter>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileOpenEvent>
#include <QFileSystemWatcher>
#include <QGridLayout>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPalette>
#include <QSet>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include <algorithm>
#include <cmath>

CVxMainWindow* CVxMainWindow::s_instance = nullptr;
bool CVxMainWindow::s_openSampleAtFirstStart = true;

namespace {
// The docks' titles are message rows from here on, in the order of EVxDock.
constexpr int kDockTitleRow = 1600;

struct SVxDockSpec
{
    const char* name;
    const wchar_t* title;
    Qt::DockWidgetArea area;
};
const SVxDockSpec kDockSpecs[CVxMainWindow::DOCK_COUNT] = {
    {"LibraryDock", L"Library", Qt::LeftDockWidgetArea},
    {"ListingDock", L"Object Listing", Qt::RightDockWidgetArea},
    {"Setup3DDock", L"Explore in 3D - Setup", Qt::RightDockWidgetArea},
    {"AlignDock", L"Alignment", Qt::LeftDockWidgetArea},
    {"LayersDock", L"Layers", Qt::RightDockWidgetArea},
    {"AttachmentsDock", L"Attachments", Qt::LeftDockWidgetArea},
    {"CommentsDock", L"Comments", Qt::RightDockWidgetArea}};
} // namespace

namespace {

// Installed so that platform events pass one place of the program's own;
// nothing depends on what it sees.
class CVxNativeEventFilter : public QAbstractNativeEventFilter
{
public:
    bool nativeEventFilter(const QByteArray& /*eventType*/, void* /*message*/, qintptr* /*result*/) override
    {
        return false;
    }
};

CVxStringW MainMenuText(int number, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_MAINMENU), number, english);
}

} // namespace

CVxMainWindow* CVxMainWindow::GetInstance()
{
    return s_instance;
}

static void InitIconResources()
{
    Q_INIT_RESOURCE(icons);
}

CVxMainWindow::CVxMainWindow(const QStringList& arguments, QWidget* parent) : QMainWindow(parent)
{
    InitIconResources();
    // The host must stand before the core exists: the project's reset reads
    // options and folders through it.
    s_instance = this;
    // The core keeps calling its host to the end of the process.
    static CVxAppHelperQt helper;
    m_helper = &helper;
    VX_SetAppHelperCallback(m_helper);
    CVxAppCore* core = VX_GetCore();
    // From the first moment: a session may end while a question of the
    // start-up is on the screen.
    VX_CallOnSessionEndSignals(this, [this] { OnSessionEnd(); });

    CVxStringW appFolder = CVxAppCore::FindDataFolder(CVxStringW(QCoreApplication::applicationDirPath()));
    ParseCommandLine(arguments.isEmpty() ? QCoreApplication::arguments() : arguments, appFolder);

    TraceAppVersion();
    TraceWindowsVersion();

    qApp->installEventFilter(this);
    static CVxNativeEventFilter nativeFilter;
    qApp->installNativeEventFilter(&nativeFilter);

    core->SetAppFolder(appFolder);
    connect(core->GetFileMonitor().GetWatcher(), &QFileSystemWatcher::fileChanged, this,
            &CVxMainWindow::OnOpenedFileChangedOnDisk);
    m_helper->CreateFolder(m_helper->GetUserAppDataPath());
    const CVxStringW crashFolder = VX_GetCrashFolder(m_helper->GetUserAppDataPath());
    VX_InstallCrashHandler(crashFolder);

    CVxLocalize* loc = VX_GetLoc();
    loc->Init(appFolder + L"Language");

    CVxOptions* options = VX_GetOptions();
    options->LoadFromRegistry();
    // Reports written since the last start tell of a run that died; the
    // auto-save question that follows recovers its work.
    m_crashedLastTime =
        CVxCrashDumpsDlg::CountReportsSince(crashFolder, options->m_lastTimeCheckForCrash) > 0;
    options->m_lastTimeCheckForCrash = QDateTime::currentSecsSinceEpoch();
    options->m_antiAliasing = true;
    options->m_autosize = true;
    options->m_openInBestFit = true;
    options->m_touchInterface = m_helper->IsDeviceInTouchMode();

    if (options->m_language == 1) {
        m_firstStart = true;
        // Chosen before any widget takes its text, so that the first start
        // already speaks the user's language.
        ChooseLanguageAtFirstStart();
    } else {
        loc->SelectLanguageID(options->m_language);
    }
    if (loc->IsRightToLeft())
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);

    CVxUnits::LocalizeUnits();
    CVxUtils::AcquireInstanceLock();
    VxTrace("Init - project temp dir: %s\n", VX_StringToUTF8(CVxUtils::GetProjectsTempPath()).c_str());
    CVxUtils::DeleteUserAppDataProjects();
    CVxUtils::RemoveTempFoldersOfDeadRuns();
    // The library window lists the library as soon as it is made.
    if (!core->IsLibraryInitialized())
        core->LibInitObjectLibrary();

    if (options->m_mainWndWidth > 0 && options->m_mainWndHeight > 0) {
        setGeometry(options->m_mainWndLeft, options->m_mainWndTop, options->m_mainWndWidth,
                    options->m_mainWndHeight);
        if (options->m_mainWndMax)
            setWindowState(windowState() | Qt::WindowMaximized);
    }

    m_darkScheme = m_helper->IsGuiDarkMode();
    if (m_darkScheme)
        InitDarkTheme(true);

    m_scrollArea = new CVxMainScrollArea(this);
    setCentralWidget(m_scrollArea);
    m_renderArea = new CVxMainRenderArea(m_scrollArea->viewport());
    m_scrollArea->SetRenderArea(m_renderArea);
    m_statusBar = new CVxMainStatusBar(this);
    setStatusBar(m_statusBar);
    m_mainToolbar = new CVxMainToolbar(this);
    addToolBar(Qt::TopToolBarArea, m_mainToolbar);

    // The floor bar lies over the plan's bottom left corner, the context bars
    // over its right edge.
    auto* overlay = new QGridLayout(m_renderArea);
    m_floorToolbar = new QToolBar(m_renderArea);
    m_contextAlignToolbar = new QToolBar(m_renderArea);
    m_contextToolbar = new QToolBar(m_renderArea);
    // The context bars show only for a selection, and the align bar only
    // when asked for.
    for (QToolBar* bar : {m_contextAlignToolbar, m_contextToolbar})
        bar->hide();
    overlay->addWidget(m_floorToolbar, 0, 0, Qt::AlignLeft | Qt::AlignBottom);
    overlay->addWidget(m_contextAlignToolbar, 0, 1, Qt::AlignRight | Qt::AlignVCenter);
    overlay->addWidget(m_contextToolbar, 0, 2, Qt::AlignRight | Qt::AlignVCenter);

    CreateMenus();
    VxTrace("Init - after creating toolbars\n");

    m_objectPopup = new QMenu;
    m_projectPopup = new QMenu;
    m_specialEditorPopup = new QMenu;
    m_newObjectPopup = new QMenu;
    m_longPressPopup = new QMenu;
    m_mainToolbar->CreateObjectContextMenu(m_objectPopup);
    m_mainToolbar->CreateProjectContextMenu(m_projectPopup);
    m_mainToolbar->CreateSpecialEdContextMenu(m_specialEditorPopup);
    m_mainToolbar->CreateNewObjContextMenu(m_newObjectPopup);
    m_mainToolbar->CreateLongPressContextMenu(m_longPressPopup);
    if (loc->IsRightToLeft())
        for (QMenu* popup :
             {m_objectPopup, m_projectPopup, m_specialEditorPopup, m_newObjectPopup, m_longPressPopup})
            popup->setLayoutDirection(Qt::RightToLeft);
    BuildRecentMenu();

    CreateDocks();
    VxTrace("Init - after preparing toolbars and menus\n");

    setMinimumSize(600, 400);
    ApplyStoredGeometry();
    FillSamplesMenu();

    core->InitProject();
    OpenStartFile();

    if (options->m_lastOpenFolder.IsEmpty())
        options->m_lastOpenFolder = m_helper->GetUserDocsPath();

    AdaptForTouch();
    m_blockSchemeChanges = false;
    UpdateButtonsWithAutoDarkIcons();
    EnableFloorButtons();
    RebuildRoom();
    VxTrace("Init - after rebuilding room\n");

    core->SetDrawingAllowed(true);
    m_lastAutoSaveTick = 0;

    m_helper->EnableUndoButtons();
    m_helper->AfterSelectionChanged();
    m_helper->BuildLayersSubMenu(false);
    m_helper->RefreshMainViewCaption();
    core->CheckViewMenuItems();
    core->CheckMouseStateToolbarButtons(VX_TB_SELECTION_TOOL);
    m_helper->UpdateHomeEditPicker(CVxStringW(), CVxStringW());
    m_helper->UpdateCommentsView();
}

CVxMainWindow::~CVxMainWindow()
{
    Close3DViewer();
    CVxAppCore* core = VX_GetCore();
    // An editor still open gives the project back as it was before it.
    core->DeactivateActiveEditor(true, true);
    core->SetAppExiting();
    // After a session end the file holds the work that nobody could save,
    // or a recovery that nobody could answer.
    if (!m_sessionEnding)
        CVxAutoSave::DeleteAutoSaveFile();

    CVxOptions* options = VX_GetOptions();
    options->m_lastVersion = 1034;
    const int languageId = VX_GetLoc()->GetSelectedLanguageID();
    if (languageId > 0)
        options->m_language = languageId;
    options->m_mainWndMax = isMaximized();
    if (windowState() == Qt::WindowNoState) {
        const QRect frame = geometry();
        options->m_mainWndLeft = frame.left();
        options->m_mainWndTop = frame.top();
        options->m_mainWndWidth = frame.width();
        options->m_mainWndHeight = frame.height();
    }
    options->SaveToRegistry();
    CVxUtils::ReleaseInstanceLock();

    qApp->removeEventFilter(this);
    delete m_objectPopup;
    delete m_projectPopup;
    delete m_specialEditorPopup;
    delete m_newObjectPopup;
    delete m_longPressPopup;
    // The core outlives the window, so it must no longer call back into it.
    if (s_instance == this)
        s_instance = nullptr;
}

void CVxMainWindow::ParseCommandLine(const QStringList& arguments, CVxStringW& appFolder)
{
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == QStringLiteral("-bd")) {
            // A developer's layout: the data lies four folders above the binary.
            appFolder += L"../../../../";
        } else if (argument == QStringLiteral("-log")) {
            // A fresh account has no documents folder of the program yet.
            const CVxStringW folder = m_helper->GetUserDocsPath();
            m_helper->CreateFolder(folder);
            CVxLogFile::SetLogFile(folder + L"pverrlog.txt");
        } else if (argument == QStringLiteral("-installer")) {
            m_startedByInstaller = true;
        } else if (argument == QStringLiteral("-newinstance")) {
            CVxUtils::SetRunFromAnotherInstance(true);
        } else if (!argument.isEmpty() && m_commandLineFile.IsEmpty()) {
            // Messages about the file name it in full, whatever the
            // folder the program was started from.
            m_commandLineFile =
                CVxStringW(QFileInfo(CVxStringW(argument).FromWinPath().ToQString()).absoluteFilePath());
        }
    }
}

void CVxMainWindow::ApplyStoredGeometry()
{
    const CVxOptions* options = VX_GetOptions();
    if (options->m_mainWndWidth > 0 && options->m_mainWndHeight > 0)
        setGeometry(options->m_mainWndLeft, options->m_mainWndTop, options->m_mainWndWidth,
                    options->m_mainWndHeight);
    if (options->m_mainWndMax)
        setWindowState(windowState() | Qt::WindowMaximized);
}

namespace {
QString MenuTitle(int menu)
{
    struct SVxMenuTitle
    {
        int number;
        const wchar_t* english;
    };
    static const SVxMenuTitle titles[CVxMainWindow::MENU_COUNT] = {
        {1, L"&Project"}, {42, L"&Edit"},      {82, L"F&loor"}, {9, L"&Objects"},
        {26, L"&View"},   {19, L"&Configure"}, {17, L"&Help"}};
    return MainMenuText(titles[menu].number, titles[menu].english).ToQString();
}
} // namespace

void CVxMainWindow::CreateMenus()
{
    menuBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    for (int i = 0; i < MENU_COUNT; ++i) {
        m_menus[i] = menuBar()->addMenu(MenuTitle(i));
        m_menuTitles[i] = m_menus[i]->menuAction();
    }

    m_mainToolbar->CreateProjectMenu(m_menus[MENU_PROJECT], m_samplesMenu, m_recentSeparator);
    // The drawing exchange export stands with the project's other exports,
    // after "Save as Image...".
    m_exportDxf = new QAction(VX_MessageText(1312, L"Export to DXF..."), this);
    m_exportDxf->setObjectName(QStringLiteral("ExportDxf"));
    connect(m_exportDxf, &QAction::triggered, this, &CVxMainWindow::OnExportDxf);
    {
        const QList<QAction*> items = m_menus[MENU_PROJECT]->actions();
        QAction* before = nullptr;
        for (qsizetype i = 0; i + 1 < items.size(); ++i) {
            auto* action = qobject_cast<CVxAction*>(items[i]);
            if (action && action->GetCode() == VX_TB_SAVE_AS_IMAGE)
                before = items[i + 1];
        }
        m_menus[MENU_PROJECT]->insertAction(before, m_exportDxf);
    }
    m_mainToolbar->CreateEditMenu(m_menus[MENU_EDIT]);
    m_mainToolbar->CreateFloorMenu(m_menus[MENU_FLOOR]);
    m_mainToolbar->CreateObjectsMenu(m_menus[MENU_OBJECTS]);
    m_mainToolbar->CreateViewMenu(m_menus[MENU_VIEW]);
    m_mainToolbar->CreateConfigureMenu(m_menus[MENU_CONFIGURE]);
    m_mainToolbar->CreateHelpMenu(m_menus[MENU_HELP]);

    m_mainToolbar->CreateFloorToolbar(m_floorToolbar, m_menus[MENU_FLOOR]);
    m_mainToolbar->CreateContextAlignToolbar(m_contextAlignToolbar);
    m_mainToolbar->CreateContextToolbar(m_contextToolbar);
}

void CVxMainWindow::CreateDocks()
{
    for (int i = 0; i < DOCK_COUNT; ++i) {
        auto* dock = new QDockWidget(this);
        dock->setObjectName(QString::fromLatin1(kDockSpecs[i].name));
        if (i == DOCK_LIBRARY)
            dock->setWidget(m_libraryForm = new CVxLibraryForm(dock));
        else if (i == DOCK_LAYERS)
            dock->setWidget(m_layersForm = new CVxLayersForm(dock));
        else if (i == DOCK_LISTING)
            dock->setWidget(m_partsListForm = new CVxPartsListForm(dock));
        else if (i == DOCK_3D_SETUP)
            dock->setWidget(m_setup3dForm = new CVx3dSetupForm(dock));
        else
            dock->setWidget(new QWidget(dock));
        addDockWidget(kDockSpecs[i].area, dock);
        m_docks[i] = dock;
    }
    tabifyDockWidget(m_docks[DOCK_LISTING], m_docks[DOCK_3D_SETUP]);
    tabifyDockWidget(m_docks[DOCK_LIBRARY], m_docks[DOCK_ATTACHMENTS]);

    CVxOptions* options = VX_GetOptions();
    if (options->m_leftDockWidth < 1)
        options->m_leftDockWidth = m_docks[DOCK_ALIGN]->minimumSizeHint().width();
    if (options->m_rightDockWidth < 1)
        options->m_rightDockWidth = m_docks[DOCK_LISTING]->width();

    // The forms that fill the docks come with their own features; until then
    // only the docks the user asked for stand, and empty ones stay hidden.
    for (int i = 0; i < DOCK_COUNT; ++i)
        if (i != DOCK_LIBRARY)
            m_docks[i]->hide();
    LocalizeDockTitles();
    connect(m_docks[DOCK_3D_SETUP], &QDockWidget::visibilityChanged, this, [this](bool visible) {
        if (visible)
            m_setup3dForm->Refresh();
    });
    connect(m_docks[DOCK_LAYERS], &QDockWidget::visibilityChanged, this, [this] {
        m_mainToolbar->CheckButton(VX_TB_SHOW_LAYERS, !m_docks[DOCK_LAYERS]->isHidden());
        RefreshProjectWindows();
    });
    connect(m_docks[DOCK_LISTING], &QDockWidget::visibilityChanged, this, [this] {
        m_mainToolbar->CheckButton(VX_TB_SHOW_LISTING, !m_docks[DOCK_LISTING]->isHidden());
        RefreshProjectWindows();
    });
    QDockWidget* library = m_docks[DOCK_LIBRARY];
    library->setVisible(options->m_showLibTab);
    resizeDocks({library}, {std::max(options->m_leftDockWidth, m_libraryForm->sizeHint().width())},
                Qt::Horizontal);
    connect(library, &QDockWidget::visibilityChanged, this, [this] {
        if (m_mainToolbar)
            m_mainToolbar->CheckButton(VX_TB_SHOW_LIBRARY, !m_docks[DOCK_LIBRARY]->isHidden());
    });
    m_mainToolbar->CheckButton(VX_TB_SHOW_LIBRARY, options->m_showLibTab);
}

void CVxMainWindow::ShowLibrary(bool show)
{
    QDockWidget* library = m_docks[DOCK_LIBRARY];
    library->setVisible(show);
    if (show)
        library->raise();
    m_mainToolbar->CheckButton(VX_TB_SHOW_LIBRARY, show);
}

void CVxMainWindow::RebuildRoom()
{
    VX_GetCore()->RebuildRoom();
    if (m_scrollArea)
        m_scrollArea->UpdateScrollbars();
    if (m_renderArea)
        m_renderArea->SetPaintable(true);
    if (m_helper)
        m_helper->RefreshMainViewStatusBar();
}

void CVxMainWindow::ZoomToBestFit()
{
    CVxAppCore* core = VX_GetCore();
    const CVxProject& project = core->GetProject();
    if (!m_scrollArea || project.m_width < 1 || project.GetTotalWidth() <= 0 || project.GetTotalHeight() <= 0)
        return;
    // Room is left for the sheet's shadow; best fit never magnifies beyond
    // the natural size unless the user had zoomed in that far already.
    const double scale = devicePixelRatioF();
    const int free = static_cast<int>(24 * scale);
    const QSize view = m_scrollArea->maximumViewportSize();
    const double zoomX = (view.width() - free - 2) / project.GetTotalWidth();
    const double zoomY = (view.height() - free - 2) / project.GetTotalHeight();
    const double natural = scale * project.m_baseZoom;
    const double zoom = std::min(std::min(zoomX, zoomY), std::max(natural, core->GetZoom()));
    if (zoom > 0)
        core->SetZoom(core->ClampZoom(zoom));
    RebuildRoom();
    m_helper->DrawRoom(nullptr);
}

void CVxMainWindow::ZoomToSelectedObjects()
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    if (!m_scrollArea)
        return;
    bool any = false;
    CVxDRect box;
    for (const CVxPart& part : project.GetFloor()->m_objects) {
        if (!part.inUse || !part.selected)
            continue;
        CVxDRect rect;
        part.GetBoundingRect(&rect, 1.0);
        if (any)
            box.UnionRect(rect);
        else
            box = rect;
        any = true;
    }
    if (!any)
        return;
    // A quarter of the selection's size stays free on every side.
    const double width = std::max(box.Width(), 1.0) * 1.5;
    const double height = std::max(box.Height(), 1.0) * 1.5;
    // Zoomed in on a part of the plan, both scroll bars show.
    const int bar = m_scrollArea->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize view = m_scrollArea->maximumViewportSize() - QSize(bar, bar);
    const double zoom = std::min(std::min(view.width() / width, view.height() / height), 10000.0);
    if (!(zoom > 0))
        return;
    core->SetZoom(core->ClampZoom(zoom));
    RebuildRoom();
    // The selection's centre to the middle of the view; the image never
    // starts right of or below the view's corner.
    const double scale = core->GetZoom();
    const double cx = (box.left + box.right) / 2;
    const double cy = (box.top + box.bottom) / 2;
    // The scroll bars that the new size brings take their part of the view.
    view = m_scrollArea->viewport()->size();
    const VxPOINT origin{
        std::min(0, static_cast<int>(view.width() / 2 - (project.m_spaceLeft + cx) * scale)),
        std::min(0, static_cast<int>(view.height() / 2 - (project.m_spaceTop + cy) * scale))};
    m_scrollArea->ScrollToOrigin(origin);
    m_helper->RefreshMainViewStatusBar();
    m_helper->DrawRoom(nullptr);
}

void CVxMainWindow::ZoomIn(bool atCursor)
{
    double zoom = 0;
    if (VX_GetCore()->GetNextZoom(true, zoom))
        ZoomStep(zoom, atCursor);
}

void CVxMainWindow::ZoomOut(bool atCursor)
{
    double zoom = 0;
    if (VX_GetCore()->GetNextZoom(false, zoom))
        ZoomStep(zoom, atCursor);
}

void CVxMainWindow::ZoomStep(double zoom, bool atCursor)
{
    CVxAppCore* core = VX_GetCore();
    const double newZoom = core->ClampZoom(zoom);
    const double oldZoom = core->GetZoom();
    if (!m_scrollArea || !m_renderArea || oldZoom <= 0)
        return;
    // The point under the pointer, or the view's centre, stays where it is.
    QPoint fixed(m_renderArea->width() / 2, m_renderArea->height() / 2);
    if (atCursor) {
        const QPoint cursor = m_renderArea->mapFromGlobal(QCursor::pos());
        if (m_renderArea->rect().contains(cursor))
            fixed = cursor;
    }
    const VxPOINT origin = core->GetViewOrigin();
    const VxPOINT target{static_cast<int>(fixed.x() - (fixed.x() - origin.x) * newZoom / oldZoom),
                         static_cast<int>(fixed.y() - (fixed.y() - origin.y) * newZoom / oldZoom)};
    core->SetZoom(newZoom);
    RebuildRoom();
    m_scrollArea->ScrollToOrigin(target);
    m_helper->RefreshMainViewStatusBar();
    m_helper->DrawRoom(nullptr);
}

void CVxMainWindow::AutoSizeWindow()
{
    RebuildRoom();
}

void CVxMainWindow::InitDarkTheme(bool dark)
{
    m_darkScheme = dark;
    UpdateButtonsWithAutoDarkIcons();
    if (m_renderArea)
        m_renderArea->update();
}

void CVxMainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!m_firstShow)
        return;
    m_firstShow = false;
    QTimer::singleShot(200, this, &CVxMainWindow::OnStartTimer);
    m_autoSaveTimer = new QTimer(this);
    connect(m_autoSaveTimer, &QTimer::timeout, this,
            [this] { VX_GetAutoSave()->OnAutoSaveTimer(m_lastAutoSaveTick); });
    m_autoSaveTimer->start(CVxAutoSave::timerPeriodMs);
}

void CVxMainWindow::OnStartTimer()
{
    setAcceptDrops(true);
    VxTrace("StartTimer\n");
    if (!isMaximized())
        ApplyStoredGeometry();

    VxTrace("StartTimer - before checking for autosave\n");
    CVxAutoSaveThumbDlg::CheckForAutoSave(this, true);
    VxTrace("StartTimer - after checking for autosave\n");
    // Long enough to be read once the window is there.
    if (m_crashedLastTime)
        m_statusBar->SetMessage(
            VX_GetLoc()->LocalizeMessage(
                1406, L"Plaveno stopped unexpectedly last time. Help > Report App Crash shows the report."),
            60000);

    const CVxOptions* options = VX_GetOptions();
    if (options->m_openInBestFit)
        ZoomToBestFit();
    else if (options->m_autosize)
        AutoSizeWindow();
    else
        m_helper->DrawRoom(nullptr);
    VxTrace("StartTimer - after redrawing\n");

    m_docks[DOCK_LAYERS]->setMaximumHeight(16777215);
    m_docks[DOCK_COMMENTS]->setMaximumHeight(16777215);

    VxTrace("StartTimer - after localizing application\n");

    CVxOptions* writable = VX_GetOptions();
    if (writable->m_lastVersion <= 1033)
        writable->m_autoCheckNewVersionLast = 0;
    m_lastAutoSaveTick = m_helper->GetTickCount();
}

void CVxMainWindow::ChooseLanguageAtFirstStart()
{
    CVxLocalize* loc = VX_GetLoc();
    if (loc->GetLanguageFileCount() == 0)
        return;
    const QStringList uiLanguages = QLocale::system().uiLanguages();
    if (uiLanguages.isEmpty())
        return;
    const CVxStringW system(uiLanguages.first());
    int id = 1033;
    for (int i = 0; i < loc->GetLanguageFileCount(); ++i) {
        const CVxLocFileInfo* info = loc->GetLanguageFile(i);
        if (!info || info->GetLanguageCode().IsEmpty())
            continue;
        if (info->GetLanguageCode().IsEqualNoCase(system) ||
            info->GetLanguageCode().Left(2).IsEqualNoCase(system.Left(2)))
            id = info->GetLanguageID();
    }
    loc->SelectLanguageID(id);
}

void CVxMainWindow::closeEvent(QCloseEvent* event)
{
    // Closing while an editor is active leaves the editor, not the program.
    if (!m_sessionEnding && VX_GetCore()->GetActiveEditor()) {
        event->ignore();
        DoMainToolbarAction(VX_TB_DISCARD_CLOSE, 0);
        return;
    }
    if (!m_sessionEnding && !VX_GetCore()->AskToSaveModifiedProject()) {
        event->ignore();
        return;
    }
    CVxOptions* options = VX_GetOptions();
    if (m_docks[DOCK_LIBRARY]->isVisible())
        options->m_leftDockWidth = m_docks[DOCK_LIBRARY]->width();
    else if (m_docks[DOCK_ALIGN]->isVisible())
        options->m_leftDockWidth = m_docks[DOCK_ALIGN]->width();
    if (!m_helper->IsTouchOnlyDevice())
        options->m_showLibTab = !m_docks[DOCK_LIBRARY]->isHidden();
    if (m_docks[DOCK_LISTING]->isVisible())
        options->m_rightDockWidth = m_docks[DOCK_LISTING]->width();
    event->accept();
}

void CVxMainWindow::OnSessionEnd()
{
    if (m_sessionEnding)
        return;
    m_sessionEnding = true;
    VxTrace("Session end\n");
    if (VX_GetCore()->GetProject().IsModified())
        VX_GetAutoSave()->SaveProjectToAutoSaveFile(m_lastAutoSaveTick);
    close();
    // A question on the screen runs an event loop of its own; it goes too.
    QCoreApplication::exit(0);
}

bool CVxMainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FileOpen) {
        auto* open = static_cast<QFileOpenEvent*>(event);
        event->setAccepted(OpenFile(CVxStringW(open->file()), false));
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void CVxMainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::ThemeChange && event->type() != QEvent::PaletteChange)
        return;
    if (m_blockSchemeChanges || !m_helper)
        return;
    const bool dark = m_helper->IsGuiDarkMode();
    if (dark != m_darkScheme)
        InitDarkTheme(dark);
}

namespace {

// Commands whose menu bar items follow the selection.
bool FollowsSelection(int code)
{
    return code == VX_TB_FORMAT_PAINTER || code == VX_TB_GROUP ||
           (code >= VX_TB_FLIP_HORIZONTALLY && code <= VX_TB_ROTATE_RIGHT) || code == VX_TB_CUT ||
           code == VX_TB_COPY || code == VX_TB_DESELECT ||
           (code >= VX_TB_CTX_REMOVE && code <= VX_TB_SELECT_SAME_TYPE) ||
           (code >= VX_TB_BRING_FORWARD && code <= VX_TB_Z_TO_TERRAIN) ||
           (code >= VX_TB_ALIGN_LEFT && code <= VX_TB_ZORDER_BY_Z);
}

} // namespace

bool CVxMainWindow::IsCommandAvailable(int code)
{
    // Those that this window runs, then those that the core runs. The
    // features behind the others (3D view, the editors of walls, sides and
    // polygons, the listing form, printing, the property and options
    // dialogues, ...) come with their own work.
    static const QSet<int> available = {
        1,   2,   3,   4,   5,   6,   7,   8,   30,  31,  32,  33,  34,  71,  72,  89,  90,  116, 117, 124,
        125, 142, 165, 15,  16,  18,  19,  20,  26,  28,  29,  39,  47,  48,  49,  50,  73,  74,  75,  76,
        77,  78,  86,  93,  94,  95,  96,  97,  100, 101, 106, 108, 109, 110, 111, 112, 113, 130, 131, 132,
        135, 137, 138, 139, 140, 141, 149, 152, 153, 154, 155, 156, 162, 163, 168, 169, 170, 171, 172, 173,
        174, 175, 178, 179, 180, 181, 182, 22,  40,  41,  42,  43,  44,  102, 148, 123, 54,  126, 127, 128,
        129, 115, 68,  69,  46,  21,  35,  45,  63,  65,  70,  79,  82,  85,  114};
    // The library window: show it, open it to add an object, open it on the
    // user's own objects.
    static const QSet<int> library = {25, 62, 107};
    // The property dialogues of objects and rooms, and Add Label, which
    // opens the new label's.
    static const QSet<int> properties = {23, 136, 160, 98, 159};
    // An open editor answers for its own selection's commands.
    if (VX_GetCore()->GetActiveEditor() && (code == VX_TB_CTX_PROPERTIES || code == VX_TB_CTX_ADD_POINT))
        return true;
    return available.contains(code) || library.contains(code) || properties.contains(code);
}

void CVxMainWindow::EnableUndoButtons()
{
    UpdateCommandStates();
}

void CVxMainWindow::EnableFloorButtons()
{
    if (!m_mainToolbar)
        return;
    m_mainToolbar->RebuildFloorSegments();
    RefreshProjectWindows();
    UpdateCommandStates();
}

void CVxMainWindow::UpdateCommandStates()
{
    if (!m_mainToolbar)
        return;
    CVxAppCore* core = VX_GetCore();
    const bool editor = core->GetActiveEditor() != nullptr;
    const CVxProject& project = core->GetProject();
    const int floors = project.GetFloorCount();
    const int current = project.m_currentFloor;
    CVxLocalize* loc = VX_GetLoc();
    for (CVxAction* action : m_mainToolbar->GetAllActions()) {
        const int code = action->GetCode();
        bool enabled = IsCommandAvailable(code);
        switch (code) {
        case VX_TB_REVERT:
            enabled = enabled && !editor && !core->GetProjectPath().IsEmpty();
            break;
        case VX_TB_SAVE:
            enabled = enabled && core->ShouldEnableSaveProject();
            break;
        case VX_TB_ACCEPT_CLOSE:
        case VX_TB_DISCARD_CLOSE:
            enabled = enabled && editor;
            break;
        case VX_TB_UNDO:
            enabled = enabled && core->CanUndo();
            break;
        case VX_TB_REDO:
            enabled = enabled && core->CanRedo();
            break;
        case VX_TB_REMOVE_FLOOR:
            enabled = enabled && floors > 1;
            break;
        case VX_TB_SWAP_HIGHER_FLOOR:
        case VX_TB_FLOOR_UP:
            enabled = enabled && current + 1 < floors;
            break;
        case VX_TB_SWAP_LOWER_FLOOR:
        case VX_TB_FLOOR_DOWN:
            enabled = enabled && current > 0;
            break;
        case VX_TB_HELP:
        case VX_TB_HELP_FILE:
            enabled = enabled && !GetHelpFilePath().IsEmpty();
            break;
        case VX_TB_WHATS_NEW:
            enabled = enabled && !loc->GetWhatsNewFile().IsEmpty();
            break;
        default:
            break;
        }
        bool contextEnabled = true;
        if (action->GetIndex() == CVxMainToolbar::contextIndex) {
            // The editor's accept and discard stand in its own pop-up.
            const bool visible = code < VX_TB_FORMAT_PAINTER
                                     ? true
                                     : core->IsContextToolbarButtonVisible(action->GetCode(), contextEnabled);
            action->setVisible(visible);
            enabled = enabled && contextEnabled;
        } else if (FollowsSelection(code)) {
            enabled = enabled && core->IsContextToolbarButtonVisible(action->GetCode(), contextEnabled) &&
                      contextEnabled;
        }
        action->setEnabled(enabled);
    }
    UpdateMainToolbarButtonsVisibility();
}

void CVxMainWindow::UpdateMainToolbarButtonsVisibility()
{
    if (!m_mainToolbar)
        return;
    CVxAppCore* core = VX_GetCore();
    for (QAction* item : m_mainToolbar->actions())
        if (auto* action = qobject_cast<CVxAction*>(item))
            action->setVisible(core->IsMainToolbarButtonVisible(action->GetCode()));
}

void CVxMainWindow::RebuildContextToolbar()
{
    UpdateCommandStates();
    if (!m_contextToolbar)
        return;
    bool any = false;
    for (QAction* action : m_contextToolbar->actions())
        any = any || action->isVisible();
    m_contextToolbar->setVisible(any && VX_GetCore()->GetSelCount() > 0);
}

void CVxMainWindow::EnableAlignCommands()
{
    UpdateCommandStates();
}

void CVxMainWindow::AfterSelectionChanged()
{
    RebuildContextToolbar();
    if (m_helper)
        m_helper->RefreshMainViewStatusBar();
}

void CVxMainWindow::ShowPopupMenuForObject(int index)
{
    UpdateCommandStates();
    QMenu* menu = m_projectPopup;
    // A page layout is a sheet of objects, with the plan's menus.
    const IVxSpecialEditor* editor = VX_GetCore()->GetActiveEditor();
    if (editor && editor->GetID() != VX_EDITOR_PAGE_LAYOUT)
        menu = m_specialEditorPopup;
    else if (index >= 0)
        menu = m_objectPopup;
    if (menu)
        menu->popup(QCursor::pos());
}

void CVxMainWindow::OnMainToolbarAction()
{
    auto* action = qobject_cast<CVxAction*>(sender());
    if (!action)
        return;
    if (s_commandHook && s_commandHook(action->GetCode(), action->GetIndex()))
        return;
    DoMainToolbarAction(action->GetCode(), action->GetIndex());
}

bool CVxMainWindow::DoMainToolbarAction(EVxMainToolbarButtonCode code, int index)
{
    switch (code) {
    case VX_TB_NEW_PROJECT:
    case VX_TB_NEW_PROJECT_TOUCH:
        StartNewProject();
        break;
    case VX_TB_OPEN:
        OpenFile(CVxStringW(), false);
        break;
    case VX_TB_REVERT:
        RevertProjectToSaved();
        break;
    case VX_TB_SAVE:
        DoProjectSave();
        break;
    case VX_TB_SAVE_AS:
        DoProjectSaveAs();
        break;
    case VX_TB_RECENT_FILE:
        OpenRecentFile(index);
        break;
    case VX_TB_SAMPLES1: {
        const CVxAction* sample = m_mainToolbar->FindAction(code, index);
        if (!sample)
            return false;
        OpenSampleFile(CVxStringW(sample->data().toString()));
        break;
    }
    case VX_TB_MERGE_PROJECTS:
        OnMergeProjects();
        break;
    case VX_TB_PRINT:
        OnPrint();
        break;
    case VX_TB_ABOUT:
        ShowAbout();
        break;
    case VX_TB_BUILD_ON_IMAGE_TOUCH:
        ShowScanMenu();
        break;
    case VX_TB_EXPLORE_3D:
        Show3D();
        break;
    case VX_TB_EXPLORE_3D_SETUP:
        ShowDock(DOCK_3D_SETUP, m_docks[DOCK_3D_SETUP]->isHidden());
        break;
    case VX_TB_ADDITIONAL_LIBRARIES: {
        CVxAdditionalLibrariesDlg dialog(this);
        dialog.exec();
        break;
    }
    case VX_TB_REPORT_CRASH: {
        CVxCrashDumpsDlg dialog(VX_GetCrashFolder(m_helper->GetUserAppDataPath()), this);
        dialog.exec();
        break;
    }
    case VX_TB_EXIT:
        close();
        break;
    case VX_TB_ZOOM_BEST_FIT:
        ZoomToBestFit();
        break;
    case VX_TB_ZOOM_100:
        ZoomStep(VX_GetCore()->GetProject().m_baseZoom * devicePixelRatioF(), false);
        break;
    case VX_TB_ZOOM_IN:
        ZoomIn(false);
        break;
    case VX_TB_ZOOM_OUT:
        ZoomOut(false);
        break;
    case VX_TB_ZOOM_SELECTED:
        ZoomToSelectedObjects();
        break;
    case VX_TB_HELP:
    case VX_TB_HELP_FILE:
        if (GetHelpFilePath().IsEmpty())
            return false;
        m_helper->OpenHelpTopic(GetHelpFilePath());
        break;
    case VX_TB_PROJECT_PROPERTIES: {
        CVxProjectPropertiesDlg dialog(this);
        dialog.exec();
        break;
    }
    case VX_TB_TRANSFORMATIONS:
    case VX_TB_TRANSFORM_PROJECT: {
        CVxTransformDlg dialog(this);
        dialog.exec();
        break;
    }
    case VX_TB_OPTIONS: {
        CVxOptionsDlg dialog(this);
        dialog.exec();
        break;
    }
    case VX_TB_LANGUAGE: {
        CVxLanguageDlg dialog(this);
        if (dialog.exec() == QDialog::Accepted)
            LocalizeAll();
        break;
    }
    case VX_TB_LAYERS:
    case VX_TB_SHOW_LAYERS:
        ShowDock(DOCK_LAYERS, m_docks[DOCK_LAYERS]->isHidden());
        break;
    case VX_TB_SHOW_LISTING:
    case VX_TB_OBJECT_LISTING:
        ShowDock(DOCK_LISTING, m_docks[DOCK_LISTING]->isHidden());
        break;
    case VX_TB_COPY_LISTING: {
        CVxPartListExportDlg dialog(true, this);
        dialog.exec();
        break;
    }
    case VX_TB_WHATS_NEW:
        if (!OpenLanguageFile(true))
            return false;
        break;
    case VX_TB_FLOOR:
        m_menus[MENU_FLOOR]->popup(QCursor::pos());
        break;
    case VX_TB_CTX_ALIGN:
        m_contextAlignToolbar->show();
        break;
    case VX_TB_ALIGN_CLOSE:
        m_contextAlignToolbar->hide();
        break;
    case VX_TB_SHOW_LIBRARY:
        ShowLibrary(m_docks[DOCK_LIBRARY]->isHidden());
        break;
    case VX_TB_ADD_OBJECT:
        ShowLibrary(true);
        m_libraryForm->FocusSearch();
        break;
    case VX_TB_CTX_PROPERTIES:
        if (VX_GetCore()->GetActiveEditor())
            return VX_GetCore()->DoMainToolbarButtonAction(code);
        VX_GetCore()->ShowSelectedObjectProperties();
        break;
    case VX_TB_ROOMS:
    case VX_TB_CTX_ROOMS: {
        CVxRoomMngDlg dialog(this);
        dialog.exec();
        break;
    }
    case VX_TB_BROWSE_USER_LIBRARY:
        // The user library is the library's first page.
        ShowLibrary(true);
        m_libraryForm->SelectPage(0);
        break;
    default:
        if (!IsCommandAvailable(code) || !VX_GetCore()->DoMainToolbarButtonAction(code))
            return false;
        break;
    }
    UpdateCommandStates();
    return true;
}

void CVxMainWindow::ShowScanMenu()
{
    // The scan under the walls: a picture to choose, then to calibrate,
    // show or hide, or remove.
    QMenu menu(this);
    const bool hasScan = VX_GetCore()->GetProject().GetFloor()->HasBkgScan();
    for (int code : {VX_TB_SCAN_SELECT_IMAGE, VX_TB_SCAN_SIZE_POSITION, VX_TB_SCAN_SHOW, VX_TB_SCAN_REMOVE}) {
        auto* action = new CVxAction(EVxMainToolbarButtonCode(code), 0, &menu);
        action->SetActionTexts();
        action->setEnabled(code == VX_TB_SCAN_SELECT_IMAGE || hasScan);
        if (code == VX_TB_SCAN_SHOW) {
            action->setCheckable(true);
            action->setChecked(hasScan && VX_GetCore()->GetProject().m_bkgScanVisible);
        }
        connect(action, &QAction::triggered, this,
                [this, code] { DoMainToolbarAction(EVxMainToolbarButtonCode(code), 0); });
        menu.addAction(action);
    }
    menu.exec(QCursor::pos());
}

void CVxMainWindow::on_SegmFloorChanged()
{
    CVxSegmentedControl* control = m_mainToolbar->GetFloorControl();
    if (!control || !VX_GetCore()->GoToFloor(control->GetSelectedSegment()))
        m_mainToolbar->RebuildFloorSegments();
}

void CVxMainWindow::AdaptForTouch()
{
    unsigned interfaceMask = VX_IF_DESKTOP;
    if (CVxMainToolbar::IsTouchInterfaceAvailable()) {
        if (m_helper->IsTouchOnlyDevice())
            interfaceMask = VX_IF_TOUCH_ONLY;
        else if (m_helper->IsTouchInterface())
            interfaceMask = VX_IF_TOUCH;
        else
            interfaceMask = VX_IF_DESKTOP_WITH_TOUCH;
    }
    m_mainToolbar->CreateMainToolbarForInterface(interfaceMask);
    UpdateMainToolbarButtonsVisibility();
}

void CVxMainWindow::UpdateButtonsWithAutoDarkIcons()
{
    if (m_mainToolbar)
        m_mainToolbar->UpdateButtonsWithAutoDarkIcons(m_darkScheme);
}

void CVxMainWindow::ShowAbout()
{
    auto msg = [](int row, const wchar_t* english) {
        return VX_GetLoc()->LocalizeMessage(row, english).ToQString().toHtmlEscaped();
    };
    QString text =
        QStringLiteral("<h3>Plaveno %1</h3><p>%2</p><p>%3</p><ul>")
            .arg(QStringLiteral(PLAVENO_VERSION_TEXT), msg(1251, L"Design homes and rooms, floor by floor."),
                 msg(1253, L"Plaveno is built with these libraries, each under its own licence:"));
    const QString items[] = {
        msg(1254, L"Qt %1, under the GNU Lesser General Public License version 3")
            .arg(QString::fromLatin1(qVersion())),
        msg(1255, L"zlib, under the zlib licence"),
        msg(1256, L"utfcpp, under the Boost Software License 1.0"),
        msg(1257, L"qrcodegen, under the MIT licence"),
        msg(1258, L"Castle Game Engine, under the GNU Lesser General Public License with a static linking "
                  L"exception"),
    };
    for (const QString& item : items)
        text += QStringLiteral("<li>%1</li>").arg(item);
    text +=
        QStringLiteral("</ul><p>%1</p>")
            .arg(msg(1259, L"The licence texts are in the file licences.html of the program's Help folder."));
    const CVxStringW credits = VX_GetLoc()->GetCredits();
    if (!credits.IsEmpty())
        text += QStringLiteral("<p>%1</p>").arg(credits.ToQString().toHtmlEscaped());
    QMessageBox::about(this, msg(1250, L"About Plaveno"), text);
}

CVxStringW CVxMainWindow::GetHelpFilePath() const
{
    const CVxStringW language = VX_GetLoc()->GetHelpfile();
    const CVxStringW folder = VX_GetCore()->GetAppFolder();
    if (!language.IsEmpty() && QFileInfo::exists((folder + L"Language/" + language).ToQString()))
        return folder + L"Language/" + language;
    const CVxStringW shipped = folder + L"Help/index.html";
    return QFileInfo::exists(shipped.ToQString()) ? shipped : CVxStringW();
}

void CVxMainWindow::ShowDock(EVxDock dock, bool show)
{
    m_docks[dock]->setVisible(show);
    if (show)
        m_docks[dock]->raise();
    if (dock == DOCK_LAYERS) {
        VX_GetOptions()->m_layerFormDocked = 1;
        m_mainToolbar->CheckButton(VX_TB_SHOW_LAYERS, show);
    } else if (dock == DOCK_LISTING) {
        VX_GetOptions()->m_showPartListing = show;
        m_mainToolbar->CheckButton(VX_TB_SHOW_LISTING, show);
    }
    RefreshProjectWindows();
}

void CVxMainWindow::RefreshProjectWindows()
{
    if (m_layersForm && !m_docks[DOCK_LAYERS]->isHidden())
        m_layersForm->ScheduleRefill();
    if (m_partsListForm && !m_docks[DOCK_LISTING]->isHidden())
        m_partsListForm->Refill();
    if (m_setup3dForm && !m_docks[DOCK_3D_SETUP]->isHidden())
        m_setup3dForm->Refresh();
}

void CVxMainWindow::LocalizeDockTitles()
{
    for (int i = 0; i < DOCK_COUNT; ++i)
        m_docks[i]->setWindowTitle(VX_MessageText(kDockTitleRow + i, kDockSpecs[i].title));
    // The forms with a title of their own name their docks.
    m_docks[DOCK_LAYERS]->setWindowTitle(m_layersForm->windowTitle());
    m_docks[DOCK_LISTING]->setWindowTitle(m_partsListForm->windowTitle());
    m_docks[DOCK_3D_SETUP]->setWindowTitle(m_setup3dForm->windowTitle());
}

void CVxMainWindow::LocalizeAll()
{
    CVxUnits::LocalizeUnits();
    QGuiApplication::setLayoutDirection(VX_GetLoc()->IsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    m_mainToolbar->LocalizeAllActions();
    for (int i = 0; i < MENU_COUNT; ++i)
        m_menuTitles[i]->setText(MenuTitle(i));
    m_exportDxf->setText(VX_MessageText(1312, L"Export to DXF..."));
    m_layersForm->Localize();
    m_partsListForm->Localize();
    LocalizeDockTitles();
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(m_libraryForm, &change);
    m_helper->RefreshMainViewCaption();
    m_helper->RefreshMainViewStatusBar();
    UpdateCommandStates();
    m_renderArea->update();
}

bool CVxMainWindow::OpenLanguageFile(bool whatsNew)
{
    CVxLocalize* loc = VX_GetLoc();
    const CVxStringW file = whatsNew ? loc->GetWhatsNewFile() : loc->GetHelpfile();
    if (file.IsEmpty())
        return false;
    m_helper->OpenHelpTopic(VX_GetCore()->GetAppFolder() + L"Language/" + file);
    return true;
}

void CVxMainWindow::FillSamplesMenu()
{
    if (!m_samplesMenu || !m_mainToolbar)
        return;
    for (QAction* old : m_samplesMenu->actions())
        if (auto* sample = qobject_cast<CVxAction*>(old))
            m_mainToolbar->RemoveAction(sample->GetCode(), sample->GetIndex());
    m_samplesMenu->clear();
    const QDir folder(VX_GetCore()->GetSamplesFolder().ToQString());
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.pvp")}, QDir::Files, QDir::Name);
    for (int i = 0; i < files.size(); ++i) {
        CVxAction* action = m_mainToolbar->FindAddAction(VX_TB_SAMPLES1, i);
        action->SetOwnText(true);
        action->setText(files.at(i).completeBaseName());
        action->setToolTip(QString());
        action->setData(files.at(i).absoluteFilePath());
        m_samplesMenu->addAction(action);
    }
    m_samplesMenu->menuAction()->setEnabled(!files.isEmpty());
}

void CVxMainWindow::BuildRecentMenu()
{
    bool any = false;
    for (int i = 0; i < 4; ++i) {
        CVxAction* recent = m_mainToolbar ? m_mainToolbar->FindAction(VX_TB_RECENT_FILE, i) : nullptr;
        if (!recent)
            return;
        const CVxStringW path = VX_GetCore()->GetRecentFile(i);
        recent->setVisible(!path.IsEmpty());
        if (path.IsEmpty())
            continue;
        any = true;
        // The name says which project it is; where it lies is a hint away.
        const QString name =
            QFileInfo(path.ToQString()).fileName().replace(QLatin1Char('&'), QStringLiteral("&&"));
        const QString full = QDir::toNativeSeparators(path.ToQString());
        recent->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(name));
        recent->setToolTip(full);
        recent->setStatusTip(full);
    }
    if (m_recentSeparator)
        m_recentSeparator->setVisible(any);
}

void CVxMainWindow::OpenStartFile()
{
    if (!m_startedByInstaller && IsSceneFile(m_commandLineFile) && m_helper->FileExists(m_commandLineFile)) {
        Show3DScene(m_commandLineFile);
        return;
    }
    CVxAppCore* core = VX_GetCore();
    const CVxOptions* options = VX_GetOptions();
    CVxStringW file;
    if (options->m_autoOpenLastProject) {
        const CVxStringW recent = core->GetRecentFile(0);
        if (!recent.IsEmpty() && m_helper->FileExists(recent))
            file = recent;
    }
    if (!m_startedByInstaller && !m_commandLineFile.IsEmpty() && m_helper->FileExists(m_commandLineFile))
        file = m_commandLineFile;
    if (file.IsEmpty() && m_firstStart && s_openSampleAtFirstStart) {
        // A first start shows what a plan looks like; the sample opens
        // untitled, so saving can't overwrite it.
        const CVxStringW sample = core->GetSamplesFolder() + L"/Sample.pvp";
        if (m_helper->FileExists(sample))
            file = sample;
    }
    if (file.IsEmpty())
        return;
    VxTrace("Init - before opening recent file %s\n", VX_StringToUTF8(file).c_str());
    OpenFile(file, true);
}

bool CVxMainWindow::OpenFile(const CVxStringW& path, bool atStart)
{
    const bool opened = VX_GetCore()->OpenFile(path, atStart);
    if (opened) {
        m_lastAutoSaveTick = m_helper->GetTickCount();
        // At start the core leaves the window's own controls to the window.
        EnableFloorButtons();
        EnableUndoButtons();
    }
    return opened;
}

bool CVxMainWindow::OpenSampleFile(const CVxStringW& path)
{
    return OpenFile(path, false);
}

bool CVxMainWindow::OpenRecentFile(int index)
{
    const bool opened = VX_GetCore()->OpenRecentFile(index);
    if (opened)
        m_lastAutoSaveTick = m_helper->GetTickCount();
    return opened;
}

bool CVxMainWindow::DoProjectSave()
{
    const bool saved = VX_GetCore()->DoProjectSave();
    if (saved)
        m_lastAutoSaveTick = m_helper->GetTickCount();
    return saved;
}

bool CVxMainWindow::DoProjectSaveAs()
{
    const bool saved = VX_GetCore()->DoProjectSaveAs();
    if (saved)
        m_lastAutoSaveTick = m_helper->GetTickCount();
    return saved;
}

void CVxMainWindow::RevertProjectToSaved()
{
    VX_GetCore()->RevertProjectToSaved();
}

void CVxMainWindow::StartNewProject()
{
    CVxAppCore* core = VX_GetCore();
    if (!core->AskToSaveModifiedProject())
        return;
    if (!VX_GetOptions()->m_newProjectsWithWizard) {
        core->InitProject();
        const CVxProject& defaults = core->GetProject();
        core->StartNewProject(defaults.m_width, defaults.m_height, defaults.m_unit, false);
        m_lastAutoSaveTick = m_helper->GetTickCount();
        return;
    }
    // The unit the user works in now; a first room of 5 by 4 metres, or
    // 16 by 12 feet.
    const int unit = core->GetProject().m_unit;
    const bool imperial =
        unit == CVxUnits::UNIT_INCH || unit == CVxUnits::UNIT_FT || unit == CVxUnits::UNIT_YD;
    const int from = imperial ? CVxUnits::UNIT_FT : CVxUnits::UNIT_M;
    CVxNewProjectDlg dialog(CVxUnits::ConvertLength(imperial ? 16 : 5, from, unit),
                            CVxUnits::ConvertLength(imperial ? 12 : 4, from, unit), unit, this);
    if (dialog.exec() != QDialog::Accepted || !dialog.IsValid())
        return;
    core->StartNewProject(dialog.GetWidth(), dialog.GetDepth(), dialog.GetUnit(), dialog.GetStartWallEditor(),
                          dialog.GetShape());
    ZoomToBestFit();
    m_lastAutoSaveTick = m_helper->GetTickCount();
}

void CVxMainWindow::OnOpenSampleFileClicked()
{
    if (auto* action = qobject_cast<QAction*>(sender()))
        OpenSampleFile(CVxStringW(action->data().toString()));
}

void CVxMainWindow::OnOpenedFileChangedOnDisk()
{
    // A file that another program replaces in steps may be unreadable for
    // a moment.
    if (VX_GetCore()->OnOpenedFileChangedOnDisk())
        QTimer::singleShot(CVxAppCore::fileChangeRetryMs, this, &CVxMainWindow::OnOpenedFileChangedOnDisk);
}

void CVxMainWindow::OnShowMissingFilesDlg()
{
    if (VX_GetCore()->GetMissingFiles().empty())
        return;
    CVxMissingFilesDlg dialog(this);
    dialog.exec();
}

void CVxMainWindow::OnMergeProjects()
{
    CVxMergeProjectDlg dialog(this);
    dialog.exec();
}

void CVxMainWindow::OnPrint()
{
    CVxAppCore* core = VX_GetCore();
    if (core->GetActiveEditor())
        return;
    CVxPrintDlg dialog(this);
    dialog.exec();
    // Objects kept their shapes at the printer's zoom.
    core->RebuildRoom();
    if (m_helper)
        m_helper->DrawRoom(nullptr);
    if (dialog.HasLayoutRequest() &&
        core->ActivatePageLayoutEditor(true, false, &dialog.GetLayoutRequest(), dialog.IsNewLayoutRequest()))
        m_printAfterLayout = true;
}

void CVxMainWindow::OnExportDxf()
{
    CVxAppCore* core = VX_GetCore();
    if (core->GetActiveEditor())
        return;
    const CVxStringW& project = core->GetProjectPath();
    // Beside the project, under its name.
    const QString name = project.IsEmpty()
                             ? VX_MessageText(1302, L"Project")
                             : QFileInfo(project.ToQString()).absolutePath() + QLatin1Char('/') +
                                   QFileInfo(project.ToQString()).completeBaseName();
    QString path = QFileDialog::getSaveFileName(
        this, m_exportDxf->text().remove(QStringLiteral("...")), name + QStringLiteral(".dxf"),
        VX_MessageText(1313, L"DXF drawing") + QStringLiteral(" (*.dxf)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QStringLiteral(".dxf"), Qt::CaseInsensitive))
        path += QStringLiteral(".dxf");
    const bool written = core->ExportFloorToDxf(CVxStringW(path));
    if (m_helper)
        m_helper->DrawRoom(nullptr);
    if (!written)
        QMessageBox::warning(this, VX_MessageText(34, L"Error"),
                             VX_MessageText(1314, L"The file could not be written:") + QLatin1Char('\n') +
                                 QDir::toNativeSeparators(path));
}

CVxStringW CVxMainWindow::GetDroppedProjectFile(const QMimeData* data)
{
    if (!data || !data->hasUrls())
        return CVxStringW();
    for (const QUrl& url : data->urls()) {
        if (!url.isLocalFile())
            continue;
        const QString path = url.toLocalFile();
        if (path.endsWith(QStringLiteral(".pvp"), Qt::CaseInsensitive))
            return CVxStringW(path);
    }
    return CVxStringW();
}

void CVxMainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    // A project opened under an editor would be overwritten by the backup
    // the editor gives back.
    if (!VX_GetCore()->GetActiveEditor() && !GetDroppedProjectFile(event->mimeData()).IsEmpty())
        event->acceptProposedAction();
    else
        event->ignore();
}

void CVxMainWindow::dropEvent(QDropEvent* event)
{
    const CVxStringW path = GetDroppedProjectFile(event->mimeData());
    if (path.IsEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    // The source of the drag waits until the drop returns; the question
    // about the modified project must not hold it.
    QTimer::singleShot(0, this, [this, path] { OpenFile(path, false); });
}

void CVxMainWindow::AfterSpecialEditorActivated(EVxEditorCode code, bool active, bool /*discard*/)
{
    // A layout from the print dialog goes back to it, to be seen on the page.
    if (!active && code == VX_EDITOR_PAGE_LAYOUT && m_printAfterLayout) {
        m_printAfterLayout = false;
        QTimer::singleShot(0, this, &CVxMainWindow::OnPrint);
    }
    // The tool bar changes its meaning: the editor decides what shows, and
    // a bar over the plan offers to keep or to drop the editor's work.
    if (!m_editorBar) {
        m_editorBar = new QToolBar(m_renderArea);
        m_editorBar->setObjectName(QStringLiteral("EditorBar"));
        m_editorBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        m_editorBar->addAction(
            m_mainToolbar->FindAddAction(VX_TB_ACCEPT_CLOSE, CVxMainToolbar::contextIndex));
        m_editorBar->addAction(
            m_mainToolbar->FindAddAction(VX_TB_DISCARD_CLOSE, CVxMainToolbar::contextIndex));
        if (auto* grid = qobject_cast<QGridLayout*>(m_renderArea->layout()))
            grid->addWidget(m_editorBar, 0, 0, 1, 3, Qt::AlignHCenter | Qt::AlignTop);
    }
    m_editorBar->setVisible(active);
    if (!active) {
        m_renderArea->HideTypedLength();
        for (QAction* item : m_specialEditorPopup->actions())
            if (auto* action = qobject_cast<CVxAction*>(item))
                action->SetActionTexts();
    }
    UpdateCommandStates();
    RebuildContextToolbar();
    m_renderArea->setFocus(Qt::OtherFocusReason);
}

void CVxMainWindow::ShowWallEditorPopupMenu()
{
    UpdateCommandStates();
    if (!m_specialEditorPopup)
        return;
    // "Remove Wall", "Floor Opening Properties": the items say what they act
    // on.
    for (QAction* item : m_specialEditorPopup->actions())
        if (auto* action = qobject_cast<CVxAction*>(item))
            action->SetActionTexts();
    m_specialEditorPopup->popup(QCursor::pos());
}

bool CVxMainWindow::IsSceneFile(const CVxStringW& path)
{
    const QString suffix = QFileInfo(path.ToQString()).suffix().toLower();
    return suffix == QLatin1String("wrl") || suffix == QLatin1String("x3d") ||
           suffix == QLatin1String("x3dv");
}

CVx3dViewer* CVxMainWindow::Get3DViewer() const
{
    return m_viewer3d;
}

void CVxMainWindow::Close3DViewer()
{
    if (m_viewer3d)
        m_viewer3d->close();
}

void CVxMainWindow::Show3D()
{
    CVxAppCore* core = VX_GetCore();
    // The walls being edited are not the project's yet.
    if (core->GetActiveEditor())
        return;
    if (core->GetProject().m_modified)
        VX_GetAutoSave()->SaveProjectToAutoSaveFile(m_lastAutoSaveTick);
    const CVxOptions* options = VX_GetOptions();
    const EVx3dViewerMode mode = options->m_open3DViewMode == 1 ? VX_3DVIEWER_EXTERNAL : VX_3DVIEWER_BUILTIN;
    CVxStringW path;
    CVx3DFloorLayerVis vis;
    if (!core->CreateWrlExportFile(path, mode, options->m_3DUsePhongShaderPipeline, true, &vis, CVxStringA(),
                                   CVxStringW()))
        return;
    if (mode == VX_3DVIEWER_EXTERNAL)
        m_helper->SystemExecute(path);
    else
        Show3DScene(path);
}

void CVxMainWindow::Show3DScene(const CVxStringW& path)
{
    // A broken installation is told once, with the reason, and the rest of
    // the program goes on.
    CGE_SetErrorReporter([this](const QString& title, const QString& text) {
        if (!m_sessionEnding)
            QMessageBox::critical(this, title, text);
    });
    CVxOptions* options = VX_GetOptions();
    if (options->m_3dViewCrashedLastTime) {
        options->m_3DUsePhongShaderPipeline = false;
        QMessageBox::warning(this, VX_GetLoc()->LocalizeMessage(1151, L"Warning").ToQString(),
                             VX_GetLoc()
                                 ->LocalizeMessage(1152,
                                                   L"3D viewer crashed last time at start. Trying old legacy "
                                                   L"rendering, without anti-aliasing and effects now.\nThis "
                                                   L"can be switched back on in the 3D Viewer Settings menu.")
                                 .ToQString());
    }
    CVx3dSceneSwitches switches;
    switches.ScanSceneFile(path.ToQString());
    switches.wallsMode = VX_GetCore()->GetProject().m_walls3DStyle;
    const bool sameScene = m_viewer3d != nullptr;
    if (m_viewer3d) {
        if (m_viewer3d->isMinimized())
            m_viewer3d->setWindowState(m_viewer3d->windowState() & ~Qt::WindowMinimized);
    } else {
        VxTrace("3D: Preparing new 3D viewer\n");
        // Cleared by the first frame drawn: a start that kills the driver
        // leaves it set for the next one.
        const bool crashed = options->m_3dViewCrashedLastTime;
        options->m_3dViewCrashedLastTime = true;
        options->SaveToRegistry();
        m_viewer3d = new CVx3dViewer(crashed);
        if (!CGE_IsLoaded()) {
            // Nothing will be drawn, so nothing can crash either.
            options->m_3dViewCrashedLastTime = crashed;
            options->SaveToRegistry();
        }
    }
    m_viewer3d->show();
    m_viewer3d->raise();
    VxTrace("3D: before SetScene\n");
    m_viewer3d->SetScene(path, switches, options->m_3DUsePhongShaderPipeline, sameScene);
    VxTrace("3D: after SetScene\n");
}
