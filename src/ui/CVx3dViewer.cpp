#include "CVx3dViewer.h"

#include "CVx3dSnapshot.h"
#include "CVxAppCore.h"
#include "CVxColorPickerDlg.h"
#include "CVxLocalize.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxSceneExport.h"
#include "CVxTimeAndPosDlg.h"
#include "IVxAppHelperCallback.h"
#include "VxCastleEngine.h"
#include "VxLocalizeWidgets.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGestureEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPinchGesture>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QTapGesture>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// Rows of the viewer's texts in the table Explore3DDlg.
enum EVxViewerRow
{
    ROW_TITLE = 101,
    ROW_WALK,
    ROW_FLY,
    ROW_EXAMINE,
    ROW_PREV,
    ROW_NEXT,
    ROW_VIEWPOINTS,
    ROW_SNAPSHOT,
    ROW_EXPORT_SCENE,
    ROW_RELOAD,
    ROW_SETTINGS,
    ROW_PAUSE_MOVIE,
    ROW_SOFT_SHADOWS,
    ROW_ANTI_ALIASING,
    ROW_WALKING_EFFECT,
    ROW_SAVE_CPU,
    ROW_OCCLUSION,
    ROW_EDGE_ENHANCE,
    ROW_LEGACY,
    ROW_SHOW_LOG,
    ROW_OPENGL_INFO,
    ROW_FLOORS_LAYERS,
    ROW_WALLS,
    ROW_WALLS_SOLID,
    ROW_WALLS_INVISIBLE,
    ROW_WALLS_HALVED,
    ROW_LOG_TITLE,
    ROW_ADD_VIEWPOINT,
    ROW_ENTER_NAME,
    ROW_MOUSE_LOOK,
    ROW_LAYER,
    ROW_PLAY,
    ROW_SUN,
    ROW_DATE,
    ROW_TIME,
    ROW_SUN_POS,
    ROW_SHOW_SUN,
    ROW_GROUND
};

// Messages of the viewer.
constexpr int kMsgEngineMissing = 1150;

constexpr int kFloorRole = Qt::UserRole; // 256: floor or layer index

int ExploreTable()
{
    return VX_GetLoc()->GetTableIndex(CVxLocalize::TBL_EXPLORE3DDLG);
}

QString Dlg(int row, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeDlgString(ExploreTable(), row, english).ToQString();
}

QByteArray FsPath(const QString& path)
{
    return QFile::encodeName(path);
}

QToolButton* MakeButton(QWidget* parent, const QString& text, bool checkable)
{
    auto* button = new QToolButton(parent);
    button->setText(text);
    button->setCheckable(checkable);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace

// --- CVxNavKeeper ---------------------------------------------------------

void CVxNavKeeper::SaveState(GLWidget* widget)
{
    if (!widget || !widget->IsAfterInit())
        return;
    widget->EnsureContextCurrent();
    float* c = m_coords;
    CGE_GetViewCoords(&c[0], &c[1], &c[2], &c[3], &c[4], &c[5], &c[6], &c[7], &c[8], &c[9], &c[10], &c[11]);
    m_navigationType = CGE_GetNavigationType();
    m_valid = true;
}

bool CVxNavKeeper::ApplyState(GLWidget* widget, bool animated)
{
    if (!m_valid || !widget || !widget->IsAfterInit())
        return false;
    widget->EnsureContextCurrent();
    const float* c = m_coords;
    CGE_MoveViewToCoords(animated, c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11]);
    CGE_SetNavigationType(m_navigationType);
    m_valid = false;
    return true;
}

// --- CVx3dViewer ------------------------------------------------------------

CVx3dViewer::CVx3dViewer(bool crashedLastTime, QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Dlg(ROW_TITLE, L"Plaveno 3D Viewer"));
    BuildControls();
    LoadOptions(crashedLastTime);
    m_lastPixelRatio = devicePixelRatioF();
    m_layoutReady = true;

    CGE_LoadLibrary();
    if (CGE_IsLoaded()) {
        CreateCastleGlWidget();
    } else {
        // The rest of the program goes on; the window says why it is empty.
        m_waiter->setText(VX_MessageText(kMsgEngineMissing,
                                         L"The 3D engine could not be loaded, so the 3D view can't be "
                                         L"shown. Please try reinstalling the software.\n\n%1")
                              .arg(CGE_LoadError()));
    }
}

CVx3dViewer::~CVx3dViewer()
{
    delete m_logWindow;
}

void CVx3dViewer::SetSurfaceFormat(QSurfaceFormat& format, bool antiAliasing)
{
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setRedBufferSize(8);
    format.setGreenBufferSize(8);
    format.setBlueBufferSize(8);
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
    format.setSwapInterval(1);
    format.setSamples(antiAliasing ? 4 : 0);
}

QAction* CVx3dViewer::AddToggle(QMenu* menu, int row, const wchar_t* english, bool checked)
{
    QAction* action = menu->addAction(Dlg(row, english));
    action->setCheckable(true);
    action->setChecked(checked);
    return action;
}

void CVx3dViewer::BuildControls()
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(4, 4, 4, 4);
    m_btnWalk = MakeButton(this, Dlg(ROW_WALK, L"Walk"), true);
    m_btnFly = MakeButton(this, Dlg(ROW_FLY, L"Fly"), true);
    m_btnExamine = MakeButton(this, Dlg(ROW_EXAMINE, L"Examine"), true);
    connect(m_btnWalk, &QToolButton::clicked, this, [this] { SwitchNavigation(0); });
    connect(m_btnFly, &QToolButton::clicked, this, [this] { SwitchNavigation(1); });
    connect(m_btnExamine, &QToolButton::clicked, this, [this] { SwitchNavigation(3); });
    QToolButton* prev = MakeButton(this, Dlg(ROW_PREV, L"Previous viewpoint"), false);
    QToolButton* next = MakeButton(this, Dlg(ROW_NEXT, L"Next viewpoint"), false);
    connect(prev, &QToolButton::clicked, this, [this] { MoveToViewpoint(m_currentViewpoint - 1, true); });
    connect(next, &QToolButton::clicked, this, [this] { MoveToViewpoint(m_currentViewpoint + 1, true); });
    QToolButton* viewpoints = MakeButton(this, Dlg(ROW_VIEWPOINTS, L"Viewpoints"), false);
    m_menuViewpoints = new QMenu(viewpoints);
    viewpoints->setMenu(m_menuViewpoints);
    viewpoints->setPopupMode(QToolButton::InstantPopup);
    QToolButton* play = MakeButton(this, Dlg(ROW_PLAY, L"Play"), false);
    connect(play, &QToolButton::clicked, this, &CVx3dViewer::BtnViewPlayClick);
    QToolButton* snapshot = MakeButton(this, Dlg(ROW_SNAPSHOT, L"Snapshot"), false);
    snapshot->setShortcut(Qt::Key_F3);
    connect(snapshot, &QToolButton::clicked, this, &CVx3dViewer::BtnSnapshotClick);
    QToolButton* reload = MakeButton(this, Dlg(ROW_RELOAD, L"Reload"), false);
    reload->setShortcut(Qt::Key_F5);
    connect(reload, &QToolButton::clicked, this, &CVx3dViewer::BtnReloadClick);
    QToolButton* gear = MakeButton(this, Dlg(ROW_SETTINGS, L"Settings"), false);
    m_menuGear = new QMenu(gear);
    gear->setMenu(m_menuGear);
    gear->setPopupMode(QToolButton::InstantPopup);
    for (QToolButton* button :
         {m_btnWalk, m_btnFly, m_btnExamine, prev, next, viewpoints, play, snapshot, reload, gear})
        bar->addWidget(button);
    bar->addStretch(1);
    outer->addLayout(bar);

    m_actPauseMovie = AddToggle(m_menuGear, ROW_PAUSE_MOVIE, L"Pause Movie at Viewpoints", true);
    m_actSoftShadows = AddToggle(m_menuGear, ROW_SOFT_SHADOWS, L"Draw Soft Shadows", true);
    m_actAntiAliasing = AddToggle(m_menuGear, ROW_ANTI_ALIASING, L"Anti-Aliasing", true);
    m_actWalkingEffect = AddToggle(m_menuGear, ROW_WALKING_EFFECT, L"Walking Effect", true);
    m_actSaveCPU = AddToggle(m_menuGear, ROW_SAVE_CPU, L"Save CPU", true);
    m_actOcclusion = AddToggle(m_menuGear, ROW_OCCLUSION, L"Occlusion Culling", true);
    m_actEdgeEnhance = AddToggle(m_menuGear, ROW_EDGE_ENHANCE, L"Enhance Contours", false);
    m_actLegacy = AddToggle(m_menuGear, ROW_LEGACY, L"Legacy Rendering", false);
    m_menuGear->addSeparator();
    QAction* mouseLook = m_menuGear->addAction(Dlg(ROW_MOUSE_LOOK, L"Mouse Look"));
    mouseLook->setShortcut(Qt::Key_G);
    connect(mouseLook, &QAction::triggered, this, &CVx3dViewer::MenuMouseLookClick);
    connect(m_menuGear->addAction(Dlg(ROW_EXPORT_SCENE, L"Export 3D Scene to File") + QStringLiteral("...")),
            &QAction::triggered, this, &CVx3dViewer::MenuSaveSceneToFileClick);
    connect(m_menuGear->addAction(Dlg(ROW_SHOW_LOG, L"Show Log")), &QAction::triggered, this, [this] {
        CreateLogWindow();
        m_logWindow->show();
        m_logWindow->raise();
    });
    connect(m_menuGear->addAction(Dlg(ROW_OPENGL_INFO, L"OpenGL Information")), &QAction::triggered, this,
            &CVx3dViewer::MenuOpenGLInfoClick);
    connect(m_actPauseMovie, &QAction::toggled, this, [this] { SaveOptions(); });
    for (QAction* action :
         {m_actSoftShadows, m_actEdgeEnhance, m_actWalkingEffect, m_actOcclusion, m_actLegacy})
        connect(action, &QAction::toggled, this, &CVx3dViewer::ApplyEffects);
    connect(m_actSaveCPU, &QAction::toggled, this, [this](bool on) {
        if (m_glWidget)
            m_glWidget->SetSaveCPU(on);
    });
    connect(m_actAntiAliasing, &QAction::toggled, this, [this] {
        // Multisampling belongs to the context: a new one is made.
        m_navKeeper.SaveState(m_glWidget);
        m_reloadPending = true;
        BtnReloadClick();
    });

    auto* middle = new QHBoxLayout;
    middle->setSpacing(0);
    m_centre = new QVBoxLayout;
    m_waiter = new QLabel(this);
    m_waiter->setAlignment(Qt::AlignCenter);
    m_waiter->setWordWrap(true);
    m_waiter->setMinimumSize(200, 200);
    m_waiter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_waiter->setStyleSheet(
        QStringLiteral("QLabel { background-image: url(:/icons/BackTileBlue.png); color: white; }"));
    m_centre->addWidget(m_waiter, 10);
    middle->addLayout(m_centre, 10);

    m_sidePanel = new QWidget(this);
    auto* side = new QVBoxLayout(m_sidePanel);
    m_tree = new QTreeWidget(m_sidePanel);
    m_tree->setHeaderLabel(Dlg(ROW_FLOORS_LAYERS, L"Floors and Layers"));
    m_tree->setFocusPolicy(Qt::NoFocus);
    connect(m_tree, &QTreeWidget::itemChanged, this, &CVx3dViewer::OnTreeItemChanged);
    side->addWidget(m_tree, 1);
    side->addWidget(new QLabel(Dlg(ROW_WALLS, L"Walls:"), m_sidePanel));
    m_wallsMode = new QComboBox(m_sidePanel);
    m_wallsMode->addItems({Dlg(ROW_WALLS_SOLID, L"Solid"), Dlg(ROW_WALLS_INVISIBLE, L"Invisible"),
                           Dlg(ROW_WALLS_HALVED, L"Halved")});
    m_wallsMode->setFocusPolicy(Qt::NoFocus);
    connect(m_wallsMode, &QComboBox::currentIndexChanged, this, [this](int mode) {
        if (!m_updatingControls)
            OnWallsVisibilityChanged(mode);
    });
    side->addWidget(m_wallsMode);

    // The sun: date and time move it in the running scene; turning the
    // shadow on or off, or another place, is a new export.
    m_chkSun = new QCheckBox(Dlg(ROW_SUN, L"Sun and Shadows"), m_sidePanel);
    m_chkSun->setFocusPolicy(Qt::NoFocus);
    connect(m_chkSun, &QCheckBox::toggled, this, [this](bool on) {
        if (m_updatingControls)
            return;
        CVxProject& project = VX_GetCore()->GetProject();
        CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
        shadow.enabled = on;
        shadow.StoreToKept(project.m_globalShadow);
        project.m_modified = true;
        ReExport();
    });
    side->addWidget(m_chkSun);
    m_dateLabel = new QLabel(m_sidePanel);
    side->addWidget(m_dateLabel);
    m_sliderDate = new QSlider(Qt::Horizontal, m_sidePanel);
    m_sliderDate->setRange(0, 359);
    m_sliderDate->setPageStep(30);
    m_sliderDate->setFocusPolicy(Qt::NoFocus);
    connect(m_sliderDate, &QSlider::valueChanged, this, &CVx3dViewer::OnSliderDateChanged);
    side->addWidget(m_sliderDate);
    m_timeLabel = new QLabel(m_sidePanel);
    side->addWidget(m_timeLabel);
    m_sliderTime = new QSlider(Qt::Horizontal, m_sidePanel);
    m_sliderTime->setRange(0, 24 * 60 - 1);
    m_sliderTime->setSingleStep(5);
    m_sliderTime->setPageStep(60);
    m_sliderTime->setFocusPolicy(Qt::NoFocus);
    connect(m_sliderTime, &QSlider::valueChanged, this, &CVx3dViewer::OnSliderTimeChanged);
    side->addWidget(m_sliderTime);
    m_chkShowSun = new QCheckBox(Dlg(ROW_SHOW_SUN, L"Show the Sun"), m_sidePanel);
    m_chkShowSun->setFocusPolicy(Qt::NoFocus);
    connect(m_chkShowSun, &QCheckBox::toggled, this, [this](bool on) {
        if (m_updatingControls)
            return;
        CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
        shadow.showSunObject = on;
        OnSunShadowTimeOrPosChanged(shadow);
    });
    side->addWidget(m_chkShowSun);
    m_btnSunPos =
        new QPushButton(Dlg(ROW_SUN_POS, L"Location and Time") + QStringLiteral("..."), m_sidePanel);
    m_btnSunPos->setFocusPolicy(Qt::NoFocus);
    connect(m_btnSunPos, &QPushButton::clicked, this, &CVx3dViewer::BtnSunPosClick);
    side->addWidget(m_btnSunPos);
    m_btnGround = new QPushButton(Dlg(ROW_GROUND, L"Ground Colour") + QStringLiteral("..."), m_sidePanel);
    m_btnGround->setFocusPolicy(Qt::NoFocus);
    connect(m_btnGround, &QPushButton::clicked, this, &CVx3dViewer::BtnColorClick);
    side->addWidget(m_btnGround);
    m_sidePanel->setFixedWidth(220);
    middle->addWidget(m_sidePanel);
    outer->addLayout(middle, 1);
}

void CVx3dViewer::LoadOptions(bool crashedLastTime)
{
    const CVxOptions* options = VX_GetOptions();
    const QStringList tokens = options->m_3DViewerOptions.ToQString().split(QLatin1Char('|'));
    auto token = [&tokens](int index, bool fallback) {
        if (index >= tokens.size() || tokens.at(index).isEmpty())
            return fallback;
        const QString word = tokens.at(index).trimmed().toLower();
        return word == QLatin1String("true") || word == QLatin1String("1");
    };
    m_startMaximised = token(0, false);
    m_actPauseMovie->setChecked(token(1, true));
    // What may have killed the driver at the last start stays off.
    m_actSoftShadows->setChecked(!crashedLastTime && token(2, true));
    m_actAntiAliasing->setChecked(!crashedLastTime && token(3, true));
    m_actWalkingEffect->setChecked(token(4, true));
    m_actSaveCPU->setChecked(token(5, true));
    m_actOcclusion->setChecked(token(6, true));
    m_sidePanel->setVisible(token(7, true));
    m_actEdgeEnhance->setChecked(!crashedLastTime && token(8, false));
    m_actLegacy->setChecked(!options->m_3DUsePhongShaderPipeline);

    int left = 0, top = 0, width = 0, height = 0;
    const QByteArray size = options->m_3DViewerWndSize.ToQString().toLatin1();
    if (sscanf(size.constData(), "%d~%d~%d~%d~", &left, &top, &width, &height) == 4 && width > 0 &&
        height > 0 && width < 100000 && height < 100000) {
        QRect rect(left, top, std::max(width, 174), height);
        if (QScreen* screen = QGuiApplication::screenAt(rect.topLeft())) {
            const QRect avail = screen->availableGeometry();
            rect.setSize(rect.size().boundedTo(avail.size()));
            rect.moveLeft(std::clamp(rect.left(), avail.left(), avail.right() - rect.width() + 1));
            rect.moveTop(std::clamp(rect.top(), avail.top(), avail.bottom() - rect.height() + 1));
        }
        setGeometry(rect);
    } else {
        resize(900, 650);
    }
}

void CVx3dViewer::SaveOptions()
{
    CVxOptions* options = VX_GetOptions();
    auto word = [](bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); };
    const QStringList tokens = {word(isMaximized()),
                                word(m_actPauseMovie->isChecked()),
                                word(m_actSoftShadows->isChecked()),
                                word(m_actAntiAliasing->isChecked()),
                                word(m_actWalkingEffect->isChecked()),
                                word(m_actSaveCPU->isChecked()),
                                word(m_actOcclusion->isChecked()),
                                word(m_sidePanel->isVisible()),
                                word(m_actEdgeEnhance->isChecked())};
    options->m_3DViewerOptions = CVxStringW(tokens.join(QLatin1Char('|')));
    const QRect rect = normalGeometry();
    options->m_3DViewerWndSize =
        CVxStringW(QString::asprintf("%d~%d~%d~%d~", rect.left(), rect.top(), rect.width(), rect.height()));
}

bool CVx3dViewer::CreateCastleGlWidget()
{
    if (m_glWidget)
        return true;
    if (m_logText)
        m_logText->clear();
    m_warnings.clear();
    QSurfaceFormat format;
    SetSurfaceFormat(format, m_actAntiAliasing->isChecked());
    QSurfaceFormat::setDefaultFormat(format);
    m_glWidget = new GLWidget(format, this);
    m_glWidget->SetSaveCPU(m_actSaveCPU->isChecked());
    m_glContainer = QWidget::createWindowContainer(m_glWidget, this);
    m_glContainer->setFocusPolicy(Qt::WheelFocus);
    m_glContainer->setAttribute(Qt::WA_AcceptTouchEvents);
    m_glContainer->setMinimumSize(200, 200);
    m_glContainer->move(0, 0);
    m_glContainer->resize(m_waiter->size());
    m_glContainer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    if (VX_GetAppHelper()->IsTouchInterface()) {
        m_glContainer->grabGesture(Qt::TapGesture);
        m_glContainer->grabGesture(Qt::PanGesture);
    } else {
        m_glContainer->grabGesture(Qt::PinchGesture);
    }
    // The window is drawn black until the engine is up; it must be shown
    // to get its context at all.
    ShowWaiterImage(false);
    return true;
}

void CVx3dViewer::RemoveCastleGlWidget(bool keepPicture)
{
    if (!m_glWidget)
        return;
    if (keepPicture)
        CaptureWaiterImage();
    else
        m_waiter->setPixmap(QPixmap());
    ShowWaiterImage(true);
    // The window, and with it the engine's instance, goes with its container.
    delete m_glContainer;
    m_glContainer = nullptr;
    m_glWidget = nullptr;
}

void CVx3dViewer::CaptureWaiterImage()
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    QImage frame = m_glWidget->grabFramebuffer();
    if (frame.isNull())
        return;
    frame.setDevicePixelRatio(m_glWidget->GetUsedDpiPixRatio());
    m_waiter->setPixmap(QPixmap::fromImage(frame));
}

QString CVx3dViewer::GetWaiterText() const
{
    return m_waiter->text();
}

bool CVx3dViewer::IsViewerLayoutEnabled() const
{
    return m_layoutReady;
}

void CVx3dViewer::ShowWaiterImage(bool show)
{
    if (!m_glContainer) {
        m_waiter->setVisible(show || !CGE_IsLoaded());
        return;
    }
    QWidget* wanted = show ? static_cast<QWidget*>(m_waiter) : m_glContainer;
    QWidget* other = show ? m_glContainer : static_cast<QWidget*>(m_waiter);
    if (m_centre->count() > 0 && m_centre->itemAt(0)->widget() == wanted)
        return;
    m_centre->setEnabled(false);
    m_centre->removeWidget(other);
    wanted->resize(other->size());
    m_centre->insertWidget(0, wanted, 10);
    other->hide();
    wanted->show();
    m_centre->setEnabled(true);
    if (!show)
        m_glWidget->requestActivate();
}

void CVx3dViewer::SetScene(const CVxStringW& path, const CVx3dSceneSwitches& switches, bool phong,
                           bool sameScene)
{
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    bool reload = m_reloadPending || (!m_sceneFile.IsEmpty() && (shadow.enabled || m_lastShadows));
    m_reloadPending = false;
    m_lastShadows = shadow.enabled;
    m_phongOn = phong;
    m_sceneFile = path;
    if (!(sameScene && switches.IsCompatible(m_floorLayerVis)))
        m_floorLayerVis = switches;
    if (!CGE_IsLoaded())
        return;
    if (!m_glWidget) {
        if (!CreateCastleGlWidget())
            return;
        m_navKeeper.Clear();
        m_glWidget->OpenScene(path);
        ShowWaiterImage(false);
        return;
    }
    if (reload) {
        if (sameScene)
            m_navKeeper.SaveState(m_glWidget);
        else
            m_navKeeper.Clear();
        RemoveCastleGlWidget(true);
        CreateCastleGlWidget();
        m_glWidget->OpenScene(path);
        ShowWaiterImage(false);
        return;
    }
    if (sameScene) {
        CVxNavKeeper keeper;
        keeper.SaveState(m_glWidget);
        CaptureWaiterImage();
        ShowWaiterImage(true);
        m_glWidget->OpenScene(path);
        ShowWaiterImage(false);
        keeper.ApplyState(m_glWidget, false);
        m_glWidget->updateGL();
        UpdateNavigationButtons(false);
    } else {
        m_glWidget->OpenScene(path);
        m_navKeeper.Clear();
    }
    QPointer<GLWidget> widget = m_glWidget;
    QTimer::singleShot(200, this, [widget] {
        if (widget)
            widget->update();
    });
}

void CVx3dViewer::Castle3DAfterInitialized()
{
    CGE_SetVariableInt(CGE_VAR_OCCLUSION_QUERY, m_actOcclusion->isChecked() ? 1 : 0);
    char version[512];
    CGE_GetCastleEngineVersion(version, sizeof(version));
    AddNewWarning(QStringLiteral("Castle Engine version: ") + QString::fromUtf8(version));
}

void CVx3dViewer::RebuildViewpointsMenu()
{
    m_menuViewpoints->clear();
    const int count = CGE_GetViewpointsCount();
    for (int i = 0; i < count; ++i) {
        char name[512];
        CGE_GetViewpointName(i, name, sizeof(name));
        QAction* action = m_menuViewpoints->addAction(QString::fromUtf8(name));
        connect(action, &QAction::triggered, this, [this, i] { MoveToViewpoint(i, true); });
    }
    m_addViewpointSeparator = m_menuViewpoints->addSeparator();
    connect(m_menuViewpoints->addAction(Dlg(ROW_ADD_VIEWPOINT, L"Add Viewpoint") + QStringLiteral("...")),
            &QAction::triggered, this, &CVx3dViewer::MenuAddViewpointClick);
}

void CVx3dViewer::Castle3DAfterSceneLoaded()
{
    RebuildViewpointsMenu();
    m_currentViewpoint = 0;
    m_viewpointCount = CGE_GetViewpointsCount();
    SetNavigationOptionsToCGE();
    if (!m_phongOn)
        CGE_SetVariableInt(CGE_VAR_PHONG, 0);
    m_updatingControls = true;
    m_actLegacy->setChecked(!m_phongOn);
    m_wallsMode->setCurrentIndex(std::clamp(m_floorLayerVis.wallsMode, 0, 2));
    m_updatingControls = false;
    ApplyEffects();
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    LoadSunShadow(shadow);
    LoadFloorLayerVisFromSwitches();
    ApplyFloorLayerVis();
    if (m_navKeeper.ApplyState(m_glWidget, false))
        UpdateNavigationButtons(false);
}

void CVx3dViewer::ApplyEffects()
{
    if (m_updatingControls || !m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    CGE_SetVariableInt(CGE_VAR_SSAO, m_actSoftShadows->isChecked() && !m_glWidget->IsCameraMoving() ? 1 : 0);
    CGE_SetVariableInt(CGE_VAR_OCCLUSION_QUERY, m_actOcclusion->isChecked() ? 1 : 0);
    CGE_SetVariableInt(CGE_VAR_HEAD_BOBBING, m_actWalkingEffect->isChecked() ? 1 : 0);
    const bool phong = !m_actLegacy->isChecked();
    if (phong != m_phongOn) {
        m_phongOn = phong;
        CVxOptions* options = VX_GetOptions();
        options->m_3DUsePhongShaderPipeline = phong;
        CGE_SetVariableInt(CGE_VAR_PHONG, phong ? 1 : 0);
    }
    // The export writes the contour effect only when asked for; without the
    // node there is nothing to switch.
    if (m_actEdgeEnhance->isChecked())
        CGE_SetNodeFieldValue_SFBool("VX_EDGE_ENHANCE_EFFECT", "enabled", true);
    m_glWidget->updateGL();
}

void CVx3dViewer::OnCameraMotion(bool moving)
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    // The screen effects, ambient occlusion above all, and the lighting by
    // the pixel cost more than the scene itself on a software renderer:
    // walking would fall below ten frames a second with them. The still
    // picture has them again.
    const bool full = !moving;
    m_glWidget->EnsureContextCurrent();
    CGE_SetVariableInt(CGE_VAR_SSAO, full && m_actSoftShadows->isChecked() ? 1 : 0);
    if (m_actEdgeEnhance->isChecked())
        CGE_SetNodeFieldValue_SFBool("VX_EDGE_ENHANCE_EFFECT", "enabled", full);
    // Lighting by the vertex instead of by the pixel halves the cost of a
    // furnished room; the sun's shadow needs the pixel shading.
    if (m_phongOn && !m_lastShadows)
        CGE_SetVariableInt(CGE_VAR_PHONG, full ? 1 : 0);
}

void CVx3dViewer::SwitchNavigation(int to)
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    const int current = CGE_GetNavigationType();
    if (current != 3 && to == 3) {
        m_navKeeper.SaveState(m_glWidget);
        const QString front = VX_MessageText(50, L"Front View");
        int found = -1;
        for (int i = 0; i < m_viewpointCount && found < 0; ++i) {
            char name[512];
            CGE_GetViewpointName(i, name, sizeof(name));
            if (QString::fromUtf8(name) == front)
                found = i;
        }
        if (found >= 0) {
            MoveToViewpoint(found, true);
        } else {
            float box[6] = {};
            CGE_GetBoundingBox(&box[0], &box[1], &box[2], &box[3], &box[4], &box[5]);
            CGE_MoveViewToCoords(true, (box[0] + box[1]) / 2, box[3] + 1.23f, box[5] - 9.2f, 0, -0.84f,
                                 -0.54f, 0, 0.54f, -0.84f, 0, 1, 0);
        }
    } else if (current == 3 && to == 0) {
        m_navKeeper.ApplyState(m_glWidget, true);
    }
    CGE_SetNavigationType(to);
    UpdateNavigationButtons(true);
    m_glWidget->updateGL();
}

void CVx3dViewer::UpdateNavigationButtons(bool setOptions)
{
    const int type = m_glWidget && m_glWidget->IsAfterInit() ? CGE_GetNavigationType() : -1;
    m_btnWalk->setChecked(type == 0);
    m_btnFly->setChecked(type == 1);
    m_btnExamine->setChecked(type == 2 || type == 3);
    if (setOptions)
        SetNavigationOptionsToCGE();
}

void CVx3dViewer::SetNavigationOptionsToCGE()
{
    const int type = CGE_GetNavigationType();
    if (type == 0 || type == 1) {
        CGE_SetVariableInt(CGE_VAR_HEAD_BOBBING, m_actWalkingEffect->isChecked() ? 1 : 0);
        // The keys U and J, and the wheel, move up and down.
        CGE_SetNavigationInputShortcut(17, 85, 0, 0, 2);
        CGE_SetNavigationInputShortcut(18, 74, 0, 0, 1);
    } else if (type == 2 || type == 3) {
        CGE_SetNavigationInputShortcut(32, 0, 0, 3, 0);
    }
}

void CVx3dViewer::MoveToViewpoint(int index, bool animated)
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    if (index < 0)
        index = m_viewpointCount - 1;
    if (index >= m_viewpointCount || index < 0)
        index = 0;
    m_currentViewpoint = index;
    m_glWidget->EnsureContextCurrent();
    CGE_MoveToViewpoint(index, animated);
    // Past the start the views look at the house from outside and above,
    // where walking would fall: they fly.
    if (index > 0 && CGE_GetNavigationType() == 0)
        CGE_SetNavigationType(1);
    UpdateNavigationButtons(false);
    SetNavigationOptionsToCGE();
    m_glWidget->updateGL();
}

bool CVx3dViewer::OnKeyPress(int key)
{
    if (m_playing && key != Qt::Key_Escape) {
        m_playing = false;
        return true;
    }
    switch (key) {
    case Qt::Key_E:
        m_actEdgeEnhance->toggle();
        return true;
    case Qt::Key_F:
        m_keyFToggle = !m_keyFToggle;
        return true;
    case Qt::Key_G:
        MenuMouseLookClick();
        return true;
    case Qt::Key_L:
        CGE_SetVariableInt(CGE_VAR_HEADLIGHT, CGE_GetVariableInt(CGE_VAR_HEADLIGHT) != 1 ? 1 : 0);
        return true;
    case Qt::Key_O:
        m_actSoftShadows->toggle();
        return true;
    case Qt::Key_Q:
        m_actOcclusion->toggle();
        return true;
    case Qt::Key_Escape:
        if (CGE_GetVariableInt(CGE_VAR_MOUSE_LOOK) == 1) {
            MenuMouseLookClick();
            return true;
        }
        if (m_playing) {
            m_playing = false;
            return true;
        }
        return false;
    default:
        return false;
    }
}

void CVx3dViewer::BtnViewPlayClick()
{
    if (m_playing || !m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_playing = true;
    // The tour runs in this loop; the window may be closed, or the program
    // end, while it processes events.
    QPointer<CVx3dViewer> self = this;
    auto goOn = [&self] {
        return self && self->m_playing && self->m_glWidget && !CVxMainWindow::IsSessionEnding() &&
               !QCoreApplication::closingDown();
    };
    bool first = true;
    while (goOn() && m_currentViewpoint < m_viewpointCount - 1) {
        if (!first && m_actPauseMovie->isChecked()) {
            for (int waited = 0; waited < 990 && goOn(); waited += 10) {
                QThread::msleep(10);
                QCoreApplication::processEvents();
            }
            if (!goOn())
                break;
        }
        first = false;
        MoveToViewpoint(m_currentViewpoint + 1, true);
        // The engine starts the move at its next update.
        m_glWidget->EnsureContextCurrent();
        CGE_Update();
        while (goOn() && CGE_GetVariableInt(CGE_VAR_ANIMATION_RUNNING) != 0) {
            QThread::msleep(10);
            m_glWidget->EnsureContextCurrent();
            CGE_Update();
            m_glWidget->updateGL();
            QCoreApplication::processEvents();
        }
    }
    if (self)
        m_playing = false;
}

bool CVx3dViewer::GetProtoSize(const CVxStringW& file, const CVxStringA& prototype, bool withAppearance,
                               float box[6])
{
    // The engine takes a "#" in a URL for the prototype's mark even when it
    // is escaped, so a model under such a name is reached through a link.
    QString path = file.ToQString();
    const QString link = QDir::tempPath() + QStringLiteral("/Plaven_ProtoModel.wrl");
    QFile::remove(link);
    if (path.contains(QLatin1Char('#')) && QFile::link(path, link))
        path = link;
    QString url = QStringLiteral("file://") + path;
    url.replace(QLatin1Char('#'), QStringLiteral("%23"))
        .replace(QLatin1Char(' '), QStringLiteral("%20"))
        .replace(QLatin1Char('?'), QStringLiteral("%3F"));
    if (!prototype.IsEmpty())
        url += QLatin1Char('#') + QString::fromUtf8(prototype.c_str());
    const QString scene = QDir::tempPath() + QStringLiteral("/Plaven_ProtoTest.wrl");
    QFile out(scene);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray fields = withAppearance ? "field SFNode appearance" : "";
    out.write("#VRML V2.0 utf8\nEXTERNPROTO Model [" + fields + "] \"" + url.toUtf8() + "\"\nModel{}\n");
    out.close();
    // Only one engine instance can live.
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        window->Close3DViewer();
    QString error;
    const bool measured = VX_Measure3dScene(scene, box, error);
    QFile::remove(scene);
    QFile::remove(link);
    return measured;
}

void CVx3dViewer::MenuMouseLookClick()
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    const int on = CGE_GetVariableInt(CGE_VAR_MOUSE_LOOK) == 1 ? 0 : 1;
    CGE_SetVariableInt(CGE_VAR_MOUSE_LOOK, on);
    CGE_SetVariableInt(CGE_VAR_CROSSHAIR, on);
}

bool CVx3dViewer::OnGestureEvent(QEvent* event)
{
    auto* gestures = static_cast<QGestureEvent*>(event);
    bool handled = false;
    if (auto* tap = static_cast<QTapGesture*>(gestures->gesture(Qt::TapGesture))) {
        if (tap->state() == Qt::GestureFinished) {
            m_glWidget->TapAt(m_glWidget->mapFromGlobal(tap->position().toPoint()));
            handled = true;
        }
    }
    if (auto* pan = static_cast<QPanGesture*>(gestures->gesture(Qt::PanGesture))) {
        const QPointF point = m_glWidget->mapFromGlobal(QCursor::pos());
        m_glWidget->PanTo(point, pan->state() == Qt::GestureStarted,
                          pan->state() == Qt::GestureFinished || pan->state() == Qt::GestureCanceled);
        handled = true;
    }
    if (auto* pinch = static_cast<QPinchGesture*>(gestures->gesture(Qt::PinchGesture))) {
        if (pinch->changeFlags() & QPinchGesture::ScaleFactorChanged) {
            m_glWidget->ZoomByFactor(pinch->scaleFactor());
            handled = true;
        }
    }
    return handled;
}

// --- Floors, layers, walls --------------------------------------------------

void CVx3dViewer::LoadFloorLayerVisFromSwitches()
{
    m_updatingControls = true;
    m_tree->clear();
    const bool single = m_floorLayerVis.floors.size() == 1;
    for (auto floor = m_floorLayerVis.floors.rbegin(); floor != m_floorLayerVis.floors.rend(); ++floor) {
        auto* item = new QTreeWidgetItem(m_tree);
        item->setText(0, VX_MessageText(115, L"Floor") + QStringLiteral(" %1").arg(floor->floor + 1));
        item->setData(0, kFloorRole, floor->floor);
        if (!single)
            item->setCheckState(0, floor->visible ? Qt::Checked : Qt::Unchecked);
        for (auto layer = floor->layers.rbegin(); layer != floor->layers.rend(); ++layer) {
            auto* child = new QTreeWidgetItem(item);
            child->setText(0, Dlg(ROW_LAYER, L"Layer %1").arg(layer->layer + 1));
            child->setData(0, kFloorRole, layer->layer);
            child->setCheckState(0, layer->visible ? Qt::Checked : Qt::Unchecked);
            child->setDisabled(!floor->visible);
        }
        item->setExpanded(true);
    }
    m_updatingControls = false;
}

void CVx3dViewer::OnTreeItemChanged(QTreeWidgetItem* item, int column)
{
    if (m_updatingControls || column != 0)
        return;
    const int index = item->data(0, kFloorRole).toInt();
    const bool checked = item->checkState(0) == Qt::Checked;
    if (QTreeWidgetItem* parent = item->parent()) {
        OnFloorLayerVisibilityChanged(parent->data(0, kFloorRole).toInt(), index, checked);
    } else {
        m_updatingControls = true;
        for (int i = 0; i < item->childCount(); ++i)
            item->child(i)->setDisabled(!checked);
        m_updatingControls = false;
        OnFloorLayerVisibilityChanged(index, -1, checked);
    }
}

void CVx3dViewer::OnFloorLayerVisibilityChanged(int floor, int layer, bool visible)
{
    SVxFloorVis* entry = m_floorLayerVis.FindFloor(floor);
    if (!entry)
        return;
    QString node;
    if (layer < 0) {
        entry->visible = visible;
        node = CVx3dSceneSwitches::FloorNodeName(floor);
    } else {
        for (SVxLayerVis& s : entry->layers)
            if (s.layer == layer)
                s.visible = visible;
        node = CVx3dSceneSwitches::LayerNodeName(floor, layer);
    }
    if (m_glWidget && m_glWidget->IsAfterInit()) {
        m_glWidget->EnsureContextCurrent();
        CGE_SetNodeFieldValue_SFInt32(node.toLatin1().constData(), "whichChoice", visible ? 0 : -1);
        m_glWidget->updateGL();
    }
    // The top visible floor may have changed, and with it the halved walls.
    if (layer < 0 && m_floorLayerVis.wallsMode == 2)
        OnWallsVisibilityChanged(2);
}

void CVx3dViewer::ApplyFloorLayerVis()
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    for (const SVxFloorVis& floor : m_floorLayerVis.floors) {
        CGE_SetNodeFieldValue_SFInt32(CVx3dSceneSwitches::FloorNodeName(floor.floor).toLatin1().constData(),
                                      "whichChoice", floor.visible ? 0 : -1);
        for (const SVxLayerVis& layer : floor.layers)
            CGE_SetNodeFieldValue_SFInt32(
                CVx3dSceneSwitches::LayerNodeName(floor.floor, layer.layer).toLatin1().constData(),
                "whichChoice", layer.visible ? 0 : -1);
    }
}

void CVx3dViewer::OnWallsVisibilityChanged(int mode)
{
    m_floorLayerVis.wallsMode = mode;
    // The project keeps its own; new projects start with the last one.
    CVxProject& project = VX_GetCore()->GetProject();
    if (project.m_walls3DStyle != mode) {
        project.m_walls3DStyle = mode;
        project.m_modified = true;
    }
    VX_GetOptions()->m_3DWallsTransp = mode;
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    const std::vector<SVxFloorVis>& floors = m_floorLayerVis.floors;
    for (size_t k = 0; k < floors.size(); ++k) {
        const int floor = floors[k].floor;
        CGE_SetNodeFieldValue_SFInt32(CVx3dSceneSwitches::WallNodeName(floor, false).toLatin1().constData(),
                                      "whichChoice", m_floorLayerVis.WallChoice(k, false));
        CGE_SetNodeFieldValue_SFInt32(CVx3dSceneSwitches::WallNodeName(floor, true).toLatin1().constData(),
                                      "whichChoice", m_floorLayerVis.WallChoice(k, true));
    }
    m_glWidget->updateGL();
}

// --- Sun and ground ------------------------------------------------------------

void CVx3dViewer::LoadSunShadow(const CVxGlobalShadow& shadow)
{
    m_updatingControls = true;
    int day = shadow.day;
    int minutes = shadow.time;
    if (day == 0 && minutes == 0) {
        // No date chosen: the controls offer today and now.
        const QDateTime now = QDateTime::currentDateTime();
        day = now.date().dayOfYear() - 1;
        minutes = now.time().hour() * 60 + now.time().minute();
    }
    m_sliderDate->setValue(std::clamp(day, 0, 359));
    m_sliderTime->setValue(std::clamp(minutes, 0, 24 * 60 - 1));
    m_dateLabel->setText(
        Dlg(ROW_DATE, L"Date:") + QLatin1Char(' ') +
        QLocale().toString(CVxTimeAndPosDlg::DayToDate(m_sliderDate->value()), QStringLiteral("d MMMM")));
    m_timeLabel->setText(
        Dlg(ROW_TIME, L"Time:") + QLatin1Char(' ') +
        QTime(m_sliderTime->value() / 60, m_sliderTime->value() % 60).toString(QStringLiteral("HH:mm")));
    m_chkSun->setChecked(shadow.enabled);
    m_chkShowSun->setChecked(shadow.showSunObject);
    for (QWidget* widget : {static_cast<QWidget*>(m_sliderDate), static_cast<QWidget*>(m_sliderTime),
                            static_cast<QWidget*>(m_chkShowSun), static_cast<QWidget*>(m_dateLabel),
                            static_cast<QWidget*>(m_timeLabel)})
        widget->setEnabled(shadow.enabled);
    m_updatingControls = false;
}

void CVx3dViewer::OnSliderDateChanged(int value)
{
    if (m_updatingControls)
        return;
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    shadow.day = value;
    // The time the slider shows becomes a chosen one with the date.
    shadow.time = std::max(m_sliderTime->value(), value == 0 ? 1 : 0);
    OnSunShadowTimeOrPosChanged(shadow);
}

void CVx3dViewer::OnSliderTimeChanged(int value)
{
    if (m_updatingControls)
        return;
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    shadow.day = m_sliderDate->value();
    shadow.time = shadow.day == 0 ? std::max(value, 1) : value;
    OnSunShadowTimeOrPosChanged(shadow);
}

void CVx3dViewer::BtnSunPosClick()
{
    CVxGlobalShadow shadow = CVxTimeAndPosDlg::ProjectShadow();
    CVxTimeAndPosDlg dialog(shadow, this);
    if (dialog.exec() == QDialog::Accepted)
        OnSunShadowTimeOrPosChanged(dialog.GetResult());
}

void CVx3dViewer::OnSunShadowTimeOrPosChanged(const CVxGlobalShadow& shadow)
{
    CVxProject& project = VX_GetCore()->GetProject();
    CVxGlobalShadow own = CVxTimeAndPosDlg::ProjectShadow();
    CVxGlobalShadow changed = shadow;
    if (changed.enabled && own.enabled && m_glWidget && m_glWidget->IsAfterInit()) {
        double place[3], direction[3];
        CVxSceneExport::GetSunPlacement(project, &changed, VX_GetOptions()->m_3DZoom, place, direction);
        m_glWidget->EnsureContextCurrent();
        const CVxStringA sun = SVx3DExportPars::SunNodeName();
        CGE_SetNodeFieldValue_SFVec3f(sun.c_str(), "projectionLocation", static_cast<float>(place[0]),
                                      static_cast<float>(place[1]), static_cast<float>(place[2]));
        CGE_SetNodeFieldValue_SFVec3f(sun.c_str(), "direction", static_cast<float>(direction[0]),
                                      static_cast<float>(direction[1]), static_cast<float>(direction[2]));
        CGE_SetNodeFieldValue_SFVec3f(SVx3DExportPars::SunSphereNodeName().c_str(), "translation",
                                      static_cast<float>(place[0]), static_cast<float>(place[1]),
                                      static_cast<float>(place[2]));
        CGE_SetNodeFieldValue_SFInt32(SVx3DExportPars::SunSwitchNodeName().c_str(), "whichChoice",
                                      (changed.showSunObject ? 1 : 0) - 1);
        m_glWidget->updateGL();
    }
    if (changed != own || changed.day != own.day) {
        changed.StoreToKept(project.m_globalShadow);
        project.m_modified = true;
    }
    LoadSunShadow(changed);
}

void CVx3dViewer::BtnColorClick()
{
    CVxProject& project = VX_GetCore()->GetProject();
    CVxColorPickerDlg dialog(project.m_groundAppear, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    VX_GetCore()->CatchUndoRoom(true);
    VX_GetCore()->GetProject().m_groundAppear = dialog.GetAppearance();
    VX_GetCore()->GetProject().m_modified = true;
    OnGroundAppearanceChanged();
}

void CVx3dViewer::OnGroundAppearanceChanged()
{
    const CVxAppearance& ground = VX_GetCore()->GetProject().m_groundAppear;
    // The background's ground is one colour; a texture is the terrain's.
    if (!ground.GetTexture().IsEmpty() || !m_glWidget || !m_glWidget->IsAfterInit()) {
        ReExport();
        return;
    }
    float r, g, b;
    VxSplitColor(ground.GetColor(), r, g, b);
    const float colours[6] = {r, g, b, r, g, b};
    m_glWidget->EnsureContextCurrent();
    CGE_SetNodeFieldValue_MFVec3f(SVx3DExportPars::BackgroundNodeName().c_str(), "groundColor", 2, colours);
    m_glWidget->updateGL();
}

void CVx3dViewer::ReExport()
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance()) {
        window->Show3D();
    } else {
        BtnReloadClick();
    }
}

// --- Snapshots, export, log ---------------------------------------------------

void CVx3dViewer::MenuAddViewpointClick()
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    bool ok = false;
    const QString name =
        QInputDialog::getText(this, Dlg(ROW_ADD_VIEWPOINT, L"Add Viewpoint"),
                              Dlg(ROW_ENTER_NAME, L"Enter new name"), QLineEdit::Normal, QString(), &ok);
    if (!ok || name.isEmpty())
        return;
    m_glWidget->EnsureContextCurrent();
    CGE_AddViewpointFromCurrentView(name.toUtf8().constData());
    const int index = m_viewpointCount;
    auto* action = new QAction(name, m_menuViewpoints);
    connect(action, &QAction::triggered, this, [this, index] { MoveToViewpoint(index, true); });
    m_menuViewpoints->insertAction(m_addViewpointSeparator, action);
    ++m_viewpointCount;
    m_currentViewpoint = index;
}

void CVx3dViewer::BtnSnapshotClick()
{
    const QString path =
        QFileDialog::getSaveFileName(this, VX_MessageText(23, L"Save as image"), QStringLiteral("3D.jpg"),
                                     QStringLiteral("JPEG (*.jpg);;PNG (*.png)"));
    if (!path.isEmpty())
        SaveScreenshotToFile(path);
}

bool CVx3dViewer::SaveScreenshotToFile(const QString& path)
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return false;
    const QImage frame = m_glWidget->grabFramebuffer();
    if (frame.isNull())
        return false;
    // Beside the target first, so that a failed write leaves an older
    // picture whole.
    const QString temp = path + QStringLiteral(".part~");
    const QByteArray format = QFileInfo(path).suffix().toLower() == QLatin1String("png") ? "PNG" : "JPEG";
    if (!frame.save(temp, format.constData())) {
        QFile::remove(temp);
        return false;
    }
    QFile::remove(path);
    return QFile::rename(temp, path);
}

void CVx3dViewer::MenuSaveSceneToFileClick()
{
    const QString path = QFileDialog::getSaveFileName(
        this, Dlg(ROW_EXPORT_SCENE, L"Export 3D Scene to File"), QStringLiteral("3DScene.x3d"),
        QStringLiteral("X3D (*.x3d);;STL (*.stl);;VRML (*.wrl)"));
    if (!path.isEmpty())
        SaveSceneToFile(path);
}

void CVx3dViewer::SaveSceneToFile(const QString& path)
{
    if (!m_glWidget || !m_glWidget->IsAfterInit())
        return;
    m_glWidget->EnsureContextCurrent();
    CGE_SaveSceneToFile(FsPath(path).constData(), 4);
}

void CVx3dViewer::AddNewWarning(const QString& text)
{
    // Notes of the triangulator and about removed points are the engine's
    // own business.
    const int colon = text.indexOf(QLatin1Char(':'));
    if (colon >= 0 && text.left(colon).startsWith(QLatin1String("Triangulator")))
        return;
    if (text.contains(QLatin1String("Remopoint"), Qt::CaseInsensitive))
        return;
    m_warnings.append(text);
    CreateLogWindow();
    m_logText->appendPlainText(text);
}

void CVx3dViewer::CreateLogWindow()
{
    if (m_logWindow)
        return;
    m_logWindow = new QDialog(nullptr);
    m_logWindow->setWindowTitle(Dlg(ROW_LOG_TITLE, L"Log - Warnings"));
    m_logWindow->setModal(false);
    auto* layout = new QVBoxLayout(m_logWindow);
    m_logText = new QPlainTextEdit(m_logWindow);
    m_logText->setReadOnly(true);
    layout->addWidget(m_logText);
    m_logWindow->resize(600, 300);
}

void CVx3dViewer::MenuOpenGLInfoClick()
{
    QString text;
    if (m_glWidget && m_glWidget->IsAfterInit()) {
        m_glWidget->EnsureContextCurrent();
        std::vector<char> buffer(16000);
        CGE_GetOpenGLInformation(buffer.data(), static_cast<int>(buffer.size()));
        text = QString::fromUtf8(buffer.data());
    } else {
        text = QStringLiteral("OpenGL Information as detected by Qt\n\n");
        QOpenGLContext context;
        QOffscreenSurface surface;
        surface.create();
        if (context.create() && context.makeCurrent(&surface)) {
            const QSurfaceFormat format = context.format();
            text += QStringLiteral("OpenGL version: %1.%2; %3\n\n")
                        .arg(format.majorVersion())
                        .arg(format.minorVersion())
                        .arg(QString::fromLatin1(
                            reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER))));
            context.doneCurrent();
        } else {
            text += QStringLiteral("Error creating OpenGL context\n");
        }
    }
    QDialog dialog(this);
    dialog.setWindowTitle(Dlg(ROW_OPENGL_INFO, L"OpenGL Information"));
    auto* layout = new QVBoxLayout(&dialog);
    auto* edit = new QPlainTextEdit(text, &dialog);
    edit->setReadOnly(true);
    layout->addWidget(edit);
    dialog.resize(640, 480);
    dialog.exec();
}

void CVx3dViewer::BtnReloadClick()
{
    if (m_sceneFile.IsEmpty())
        return;
    // Without a new export, a reload shows the same file in a new context.
    m_reloadPending = true;
    SetScene(m_sceneFile, m_floorLayerVis, m_phongOn, true);
}

// --- Window -----------------------------------------------------------------

void CVx3dViewer::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    const double ratio = devicePixelRatioF();
    if (std::fabs(ratio - m_lastPixelRatio) >= 1e-7) {
        m_lastPixelRatio = ratio;
        if (m_glWidget)
            m_glWidget->ResetViewportSize();
    }
}

void CVx3dViewer::closeEvent(QCloseEvent* event)
{
    SaveOptions();
    RemoveCastleGlWidget(false);
    delete m_logWindow;
    m_logWindow = nullptr;
    m_logText = nullptr;
    QWidget::closeEvent(event);
}

void CVx3dViewer::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_startMaximised) {
        m_startMaximised = false;
        setWindowState(windowState() | Qt::WindowMaximized);
    }
    if (m_glWidget)
        m_glWidget->requestActivate();
}

void CVx3dViewer::hideEvent(QHideEvent* event)
{
    SaveOptions();
    QWidget::hideEvent(event);
}
