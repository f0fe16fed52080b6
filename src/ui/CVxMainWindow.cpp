#include "CVxMainWindow.h"

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxLocFileInfo.h"
#include "CVxLocalize.h"
#include "CVxMainRenderArea.h"
#include "CVxMainScrollArea.h"
#include "CVxMainStatusBar.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QAbstractNativeEventFilter>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDockWidget>
#include <QFileOpenEvent>
#include <QGridLayout>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPalette>
#include <QTimer>
#include <QToolBar>

#include <cmath>

CVxMainWindow* CVxMainWindow::s_instance = nullptr;

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

    CVxStringW appFolder = CVxStringW(QCoreApplication::applicationDirPath()) + L"/";
    ParseCommandLine(arguments.isEmpty() ? QCoreApplication::arguments() : arguments, appFolder);

    TraceAppVersion();
    TraceWindowsVersion();

    qApp->installEventFilter(this);
    static CVxNativeEventFilter nativeFilter;
    qApp->installNativeEventFilter(&nativeFilter);

    core->SetAppFolder(appFolder);
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
    } else if (loc->SelectLanguageID(options->m_language) && loc->IsRightToLeft()) {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    }

    CVxUnits::LocalizeUnits();
    CVxUtils::AcquireInstanceLock();
    VxTrace("Init - project temp dir: %s\n", VX_StringToUTF8(CVxUtils::GetProjectsTempPath()).c_str());
    CVxUtils::DeleteUserAppDataProjects();

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

    CreateDocks();
    VxTrace("Init - after preparing toolbars and menus\n");

    setMinimumSize(600, 400);
    ApplyStoredGeometry();

    core->InitProject();

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
}

CVxMainWindow::~CVxMainWindow()
{
    CVxAppCore* core = VX_GetCore();
    core->SetAppExiting();

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
            CVxLogFile::SetLogFile(m_helper->GetUserDocsPath() + L"pverrlog.txt");
        } else if (argument == QStringLiteral("-installer")) {
            m_startedByInstaller = true;
        } else if (argument == QStringLiteral("-newinstance")) {
            CVxUtils::SetRunFromAnotherInstance(true);
        } else if (!argument.isEmpty() && m_commandLineFile.IsEmpty()) {
            m_commandLineFile = CVxStringW(argument).FromWinPath();
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
}

void CVxMainWindow::OnStartTimer()
{
    setAcceptDrops(true);
    VxTrace("StartTimer\n");
    if (!isMaximized())
        ApplyStoredGeometry();

    VxTrace("StartTimer - before checking for autosave\n");
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

    if (m_firstStart)
        ChooseLanguageAtFirstStart();
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
    CVxOptions* options = VX_GetOptions();
    if (m_docks[DOCK_LIBRARY]->isVisible() || m_docks[DOCK_ALIGN]->isVisible())
        options->m_leftDockWidth = m_docks[DOCK_ALIGN]->width();
    if (m_docks[DOCK_LISTING]->isVisible())
        options->m_rightDockWidth = m_docks[DOCK_LISTING]->width();
    event->accept();
}

bool CVxMainWindow::eventFilter(QObject* watched, QEvent* event)
{
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
