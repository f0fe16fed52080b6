#include "CVxMainWindow.h"

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxAutoSave.h"
#include "CVxAutoSaveThumbDlg.h"
#include "CVxLocFileInfo.h"
#include "CVxLocalize.h"
#include "CVxMainRenderArea.h"
#include "CVxMainScrollArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMergeProjectDlg.h"
#include "CVxMissingFilesDlg.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "VxSessionSignals.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QAbstractNativeEventFilter>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
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
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include <cmath>

CVxMainWindow* CVxMainWindow::s_instance = nullptr;
bool CVxMainWindow::s_openSampleAtFirstStart = true;

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

// A command's text from the toolbar table of the language file.
QString ToolbarText(int row, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetTableIndex(CVxLocalize::TBL_TOOLBAR), row, english).ToQString();
}

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

    CVxStringW appFolder = CVxStringW(QCoreApplication::applicationDirPath()) + L"/";
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

    CVxLocalize* loc = VX_GetLoc();
    loc->Init(appFolder + L"Language");

    CVxOptions* options = VX_GetOptions();
    options->LoadFromRegistry();
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

    // The floor bar lies over the plan's bottom left corner, the context bars
    // over its right edge.
    auto* overlay = new QGridLayout(m_renderArea);
    m_floorToolbar = new QToolBar(m_renderArea);
    m_contextAlignToolbar = new QToolBar(m_renderArea);
    m_contextToolbar = new QToolBar(m_renderArea);
    for (QToolBar* bar : {m_floorToolbar, m_contextAlignToolbar, m_contextToolbar})
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
    if (loc->IsRightToLeft())
        for (QMenu* popup : {m_objectPopup, m_projectPopup, m_specialEditorPopup, m_newObjectPopup})
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

    m_blockSchemeChanges = false;
    RebuildRoom();
    VxTrace("Init - after rebuilding room\n");

    core->SetDrawingAllowed(true);
    m_lastAutoSaveTick = 0;

    m_helper->EnableUndoButtons();
    m_helper->AfterSelectionChanged();
    m_helper->BuildLayersSubMenu(false);
    m_helper->RefreshMainViewCaption();
    m_helper->UpdateHomeEditPicker(CVxStringW(), CVxStringW());
    m_helper->UpdateCommentsView();
    VX_CallOnSessionEndSignals(this, [this] { OnSessionEnd(); });
}

CVxMainWindow::~CVxMainWindow()
{
    CVxAppCore* core = VX_GetCore();
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

void CVxMainWindow::CreateMenus()
{
    menuBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    struct SVxMenuTitle
    {
        int number;
        const wchar_t* english;
    };
    const SVxMenuTitle titles[MENU_COUNT] = {{1, L"&Project"}, {42, L"&Edit"}, {82, L"F&loor"},
                                             {9, L"&Objects"}, {26, L"&View"}, {19, L"&Configure"},
                                             {17, L"&Help"}};
    for (int i = 0; i < MENU_COUNT; ++i)
        m_menus[i] = menuBar()->addMenu(MainMenuText(titles[i].number, titles[i].english).ToQString());

    CreateProjectMenu();
    CreateEditMenu();
    CreateFloorMenu();
    CreateViewMenu();
    CVxLocalize* loc = VX_GetLoc();
    const int toolbarTable = loc->GetTableIndex(CVxLocalize::TBL_TOOLBAR);
    QAction* exitAction = m_menus[MENU_PROJECT]->addAction(
        loc->LocalizeDlgString(toolbarTable, 125, L"Exit").ToQString(), this, &QWidget::close);
    exitAction->setMenuRole(QAction::QuitRole);
    QAction* aboutAction = m_menus[MENU_HELP]->addAction(
        loc->LocalizeDlgString(toolbarTable, 124, L"About...").ToQString(), this, [this] {
            QMessageBox::about(this, QStringLiteral("Plaveno"),
                               QStringLiteral("Plaveno %1\nDesign homes and rooms, floor by floor.")
                                   .arg(QStringLiteral(PLAVENO_VERSION_TEXT)));
        });
    aboutAction->setMenuRole(QAction::AboutRole);
}

void CVxMainWindow::CreateDocks()
{
    struct SVxDockSpec
    {
        const char* name;
        const wchar_t* title;
        Qt::DockWidgetArea area;
    };
    const SVxDockSpec specs[DOCK_COUNT] = {{"LibraryDock", L"Library", Qt::LeftDockWidgetArea},
                                           {"ListingDock", L"Object Listing", Qt::RightDockWidgetArea},
                                           {"Setup3DDock", L"Explore in 3D - Setup", Qt::RightDockWidgetArea},
                                           {"AlignDock", L"Alignment", Qt::LeftDockWidgetArea},
                                           {"LayersDock", L"Layers", Qt::RightDockWidgetArea},
                                           {"AttachmentsDock", L"Attachments", Qt::LeftDockWidgetArea},
                                           {"CommentsDock", L"Comments", Qt::RightDockWidgetArea}};
    for (int i = 0; i < DOCK_COUNT; ++i) {
        auto* dock = new QDockWidget(CVxStringW(specs[i].title).ToQString(), this);
        dock->setObjectName(QString::fromLatin1(specs[i].name));
        dock->setWidget(new QWidget(dock));
        addDockWidget(specs[i].area, dock);
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
        m_docks[i]->hide();
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
    if (!m_sessionEnding && !VX_GetCore()->AskToSaveModifiedProject()) {
        event->ignore();
        return;
    }
    CVxOptions* options = VX_GetOptions();
    if (m_docks[DOCK_LIBRARY]->isVisible() || m_docks[DOCK_ALIGN]->isVisible())
        options->m_leftDockWidth = m_docks[DOCK_ALIGN]->width();
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

void CVxMainWindow::CreateProjectMenu()
{
    const auto text = ToolbarText;
    QMenu* menu = m_menus[MENU_PROJECT];
    QAction* action = menu->addAction(text(1, L"Start New Project"), this, &CVxMainWindow::StartNewProject);
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    action = menu->addAction(text(2, L"Open"), this, [this] { OpenFile(CVxStringW(), false); });
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    action = menu->addAction(text(5, L"Save"), this, &CVxMainWindow::DoProjectSave);
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    action = menu->addAction(text(6, L"Save As..."), this, &CVxMainWindow::DoProjectSaveAs);
    action->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), QKeySequence(Qt::Key_F12)});
    menu->addAction(text(4, L"Revert to Saved"), this, &CVxMainWindow::RevertProjectToSaved);
    menu->addAction(text(89, L"Merge Projects..."), this, &CVxMainWindow::OnMergeProjects);
    menu->addSeparator();
    // The three sample commands share one sub-menu; its title is theirs
    // without the number.
    QString samples = text(90, L"Samples1");
    while (!samples.isEmpty() && (samples.back().isDigit() || samples.back().isSpace()))
        samples.chop(1);
    m_samplesMenu = menu->addMenu(samples);
    m_recentSeparator = menu->addSeparator();
    menu->setToolTipsVisible(true);
    for (int i = 0; i < 4; ++i) {
        m_recentActions[i] = menu->addAction(QString(), this, [this, i] { OpenRecentFile(i); });
        m_recentActions[i]->setVisible(false);
    }
    menu->addSeparator();
}

void CVxMainWindow::CreateEditMenu()
{
    const auto text = ToolbarText;
    QMenu* menu = m_menus[MENU_EDIT];
    m_undoAction = menu->addAction(text(18, L"Undo"), this, [] { VX_GetCore()->MakeUndo(); });
    m_undoAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    m_redoAction = menu->addAction(text(19, L"Redo"), this, [] { VX_GetCore()->MakeRedo(); });
    m_redoAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y));
    EnableUndoButtons();
}

void CVxMainWindow::EnableUndoButtons()
{
    if (m_undoAction)
        m_undoAction->setEnabled(VX_GetCore()->CanUndo());
    if (m_redoAction)
        m_redoAction->setEnabled(VX_GetCore()->CanRedo());
}

void CVxMainWindow::CreateFloorMenu()
{
    const auto text = ToolbarText;
    QMenu* menu = m_menus[MENU_FLOOR];
    CVxAppCore* core = VX_GetCore();
    m_floorActions[0] = menu->addAction(text(73, L"Add New Floor"), this, [core] { core->AddNewFloor(); });
    m_floorActions[1] =
        menu->addAction(text(74, L"Remove Floor..."), this, [core] { core->RemoveCurrentFloor(true); });
    menu->addSeparator();
    m_floorActions[2] =
        menu->addAction(text(75, L"Swap with Higher Floor"), this, [core] { core->SwapCurrentFloor(true); });
    m_floorActions[3] =
        menu->addAction(text(76, L"Swap with Lower Floor"), this, [core] { core->SwapCurrentFloor(false); });
    menu->addSeparator();
    m_floorActions[4] = menu->addAction(text(77, L"Go Up One Floor"), this,
                                        [core] { core->GoToFloor(core->GetProject().m_currentFloor + 1); });
    m_floorActions[4]->setShortcut(QKeySequence(Qt::Key_PageUp));
    m_floorActions[5] = menu->addAction(text(78, L"Go Down One Floor"), this,
                                        [core] { core->GoToFloor(core->GetProject().m_currentFloor - 1); });
    m_floorActions[5]->setShortcut(QKeySequence(Qt::Key_PageDown));
    EnableFloorButtons();
}

void CVxMainWindow::EnableFloorButtons()
{
    if (!m_floorActions[0])
        return;
    const CVxProject& project = VX_GetCore()->GetProject();
    const int count = project.GetFloorCount();
    const int current = project.m_currentFloor;
    m_floorActions[1]->setEnabled(count > 1);
    m_floorActions[2]->setEnabled(current + 1 < count);
    m_floorActions[3]->setEnabled(current > 0);
    m_floorActions[4]->setEnabled(current + 1 < count);
    m_floorActions[5]->setEnabled(current > 0);
}

void CVxMainWindow::CreateViewMenu()
{
    const auto text = ToolbarText;
    QMenu* menu = m_menus[MENU_VIEW];
    QAction* action = menu->addAction(text(32, L"Zoom In"), this, [this] { ZoomIn(false); });
    action->setShortcut(QKeySequence(Qt::Key_Plus));
    action = menu->addAction(text(33, L"Zoom Out"), this, [this] { ZoomOut(false); });
    action->setShortcut(QKeySequence(Qt::Key_Minus));
    action = menu->addAction(text(31, L"Zoom 100%"), this, [this] {
        ZoomStep(VX_GetCore()->GetProject().m_baseZoom * devicePixelRatioF(), false);
    });
    action->setShortcut(QKeySequence(Qt::Key_Slash));
    action = menu->addAction(text(30, L"Best Fit"), this, &CVxMainWindow::ZoomToBestFit);
    action->setShortcut(QKeySequence(Qt::Key_Asterisk));
    action =
        menu->addAction(text(34, L"Zoom to Selected Objects"), this, &CVxMainWindow::ZoomToSelectedObjects);
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Plus));
}

void CVxMainWindow::FillSamplesMenu()
{
    if (!m_samplesMenu)
        return;
    m_samplesMenu->clear();
    const QDir folder(VX_GetCore()->GetSamplesFolder().ToQString());
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.pvp")}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        QAction* action =
            m_samplesMenu->addAction(file.completeBaseName(), this, &CVxMainWindow::OnOpenSampleFileClicked);
        action->setData(file.absoluteFilePath());
    }
    m_samplesMenu->menuAction()->setEnabled(!files.isEmpty());
}

void CVxMainWindow::BuildRecentMenu()
{
    bool any = false;
    for (int i = 0; i < 4; ++i) {
        if (!m_recentActions[i])
            return;
        const CVxStringW path = VX_GetCore()->GetRecentFile(i);
        m_recentActions[i]->setVisible(!path.IsEmpty());
        if (path.IsEmpty())
            continue;
        any = true;
        // The name says which project it is; where it lies is a hint away.
        const QString name =
            QFileInfo(path.ToQString()).fileName().replace(QLatin1Char('&'), QStringLiteral("&&"));
        const QString full = QDir::toNativeSeparators(path.ToQString());
        m_recentActions[i]->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(name));
        m_recentActions[i]->setToolTip(full);
        m_recentActions[i]->setStatusTip(full);
    }
    if (m_recentSeparator)
        m_recentSeparator->setVisible(any);
}

void CVxMainWindow::OpenStartFile()
{
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
    // The dialogue that asks for size and unit comes with the new project
    // wizard; until then a new project has the default room.
    core->InitProject();
    const CVxProject& defaults = core->GetProject();
    core->StartNewProject(defaults.m_width, defaults.m_height, defaults.m_unit, false);
    m_lastAutoSaveTick = m_helper->GetTickCount();
}

void CVxMainWindow::OnOpenSampleFileClicked()
{
    auto* action = qobject_cast<QAction*>(sender());
    if (action)
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
    if (!GetDroppedProjectFile(event->mimeData()).IsEmpty())
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
