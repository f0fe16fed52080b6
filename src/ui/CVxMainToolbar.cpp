#include "CVxMainToolbar.h"

#include "CVxAction.h"
#include "CVxAppCore.h"
#include "CVxMainWindow.h"
#include "CVxSegmentedControl.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QInputDevice>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <QToolButton>

namespace {

constexpr int iconPixels = 24;

// The ink colour of the icon set, and what it becomes on a dark ground.
const QByteArray lightInk("#3a3f44");
const QByteArray lightInkUpper("#3A3F44");
const QByteArray darkInk("#e6e6e6");

EVxMainToolbarButtonCode Code(int code)
{
    return static_cast<EVxMainToolbarButtonCode>(code);
}

// The desktop and touch buttons together; an interface picks its own. An
// editor's accept and discard come first, where they are seen.
const QList<int> s_mainButtons = {15, 16, 1,  3,  2,  5,  7,  0,  18, 19, 0,  26, 132, 20, 27, 28,
                                  29, 0,  30, 32, 33, 0,  22, 39, 40, 41, 42, 43, 44,  54, 23, 25,
                                  35, 0,  62, 63, 36, 37, 45, 0,  68, 69, 0,  38, 70,  71};
const QList<int> s_contextButtons = {130, 144, 150, 134, 142, 143, 131, 132, 133, 137,
                                     138, 141, 140, 145, 146, 147, 148, 149, 135, 136};
const QList<int> s_alignButtons = {165, 167, 166, 0,   168, 169, 170, 171, 172, 173, 0,
                                   174, 175, 176, 177, 0,   178, 179, 180, 181, 182};

} // namespace

CVxMainToolbar::CVxMainToolbar(CVxMainWindow* window) : QToolBar(window), m_window(window)
{
    setObjectName(QStringLiteral("MainToolbar"));
    setIconSize(QSize(iconPixels, iconPixels));
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (int code : s_mainButtons)
        m_buttons << AddButton(Code(code));
}

CVxAction* CVxMainToolbar::FindAction(int code, int index) const
{
    return m_actions.value(qMakePair(code, index), nullptr);
}

CVxAction* CVxMainToolbar::CreateGenericAction(EVxMainToolbarButtonCode code, int index, const QString& text,
                                               QObject* parent)
{
    auto* action = new CVxAction(code, index, parent);
    action->setText(text);
    connect(action, &QAction::triggered, m_window, &CVxMainWindow::OnMainToolbarAction);
    m_actions.insert(qMakePair(static_cast<int>(code), index), action);
    return action;
}

CVxAction* CVxMainToolbar::FindAddAction(EVxMainToolbarButtonCode code, int index)
{
    if (CVxAction* action = FindAction(code, index))
        return action;
    CVxAction* action = CreateGenericAction(code, index, QString(), this);
    CVxAppCore* core = VX_GetCore();
    SetActionIcon(action);
    action->setIconVisibleInMenu(true);
    action->setCheckable(core->IsMainToolbarButtonCheckable(code));
    action->SetInterfaces(core->GetMainToolbarButtonInterfacePresence(code));
    action->SetActionTexts();
    if (index == contextIndex) {
        // The key shows in the copy's text, but the menu bar's item owns it:
        // two live items of one key would take it from each other.
        action->setShortcutContext(Qt::WidgetShortcut);
    } else if (!action->shortcut().isEmpty()) {
        // Keys work whatever menu or bar holds the item, and whether it is
        // shown or not.
        m_window->addAction(action);
    }
    return action;
}

QAction* CVxMainToolbar::AddButton(EVxMainToolbarButtonCode code)
{
    if (code == VX_TB_SEPARATOR)
        return addSeparator();
    CVxAction* action = FindAddAction(code);
    addAction(action);
    return action;
}

void CVxMainToolbar::RemoveAction(int code, int index)
{
    CVxAction* action = m_actions.take(qMakePair(code, index));
    if (!action)
        return;
    m_buttons.removeAll(action);
    delete action;
}

QToolButton* CVxMainToolbar::ToolButtonForAction(QAction* action) const
{
    return qobject_cast<QToolButton*>(widgetForAction(action));
}

void CVxMainToolbar::CheckButton(int code, bool check)
{
    for (CVxAction* action : std::as_const(m_actions))
        if (action->GetCode() == code && action->isCheckable())
            action->setChecked(check);
}

void CVxMainToolbar::EnableButton(int code, bool enable)
{
    for (CVxAction* action : std::as_const(m_actions))
        if (action->GetCode() == code)
            action->setEnabled(enable);
}

void CVxMainToolbar::ShowButton(int code, bool show)
{
    if (CVxAction* action = FindAction(code))
        action->setVisible(show);
}

bool CVxMainToolbar::IsButtonVisible(int code) const
{
    const CVxAction* action = FindAction(code);
    return action && action->isVisible();
}

void CVxMainToolbar::LocalizeAllActions()
{
    for (CVxAction* action : std::as_const(m_actions))
        action->SetActionTexts();
}

void CVxMainToolbar::CreateMainToolbarForInterface(unsigned interfaceMask)
{
    clear();
    for (QAction* action : std::as_const(m_buttons)) {
        auto* command = qobject_cast<CVxAction*>(action);
        if (!command || (command->GetInterfaces() & interfaceMask) == interfaceMask)
            addAction(action);
    }
}

void CVxMainToolbar::CreateFloorToolbar(QToolBar* bar, QMenu* floorMenu)
{
    bar->setObjectName(QStringLiteral("FloorToolbar"));
    CVxAction* floor = FindAddAction(VX_TB_FLOOR);
    floor->setMenu(floorMenu);
    bar->addAction(floor);
    if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(floor))) {
        button->setPopupMode(QToolButton::InstantPopup);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    }
    m_floorControl = new CVxSegmentedControl(bar);
    m_floorControl->setObjectName(QStringLiteral("segmFloor"));
    m_floorControl->setStyleSheet(QStringLiteral("QToolButton { padding: 5px; }"));
    bar->addWidget(m_floorControl);
    connect(m_floorControl, &CVxSegmentedControl::selectedSegmentChanged, m_window,
            &CVxMainWindow::on_SegmFloorChanged);
    RebuildFloorSegments();
}

void CVxMainToolbar::RebuildFloorSegments()
{
    if (!m_floorControl)
        return;
    const CVxProject& project = VX_GetCore()->GetProject();
    QStringList labels;
    for (int i = 0; i < project.GetFloorCount(); ++i)
        labels << QString::number(i + 1);
    m_floorControl->SetSegments(labels, project.m_currentFloor);
}

void CVxMainToolbar::CreateContextToolbar(QToolBar* bar)
{
    bar->setObjectName(QStringLiteral("ContextToolbar"));
    bar->setOrientation(Qt::Vertical);
    bar->setIconSize(QSize(iconPixels, iconPixels));
    for (int code : s_contextButtons)
        bar->addAction(FindAddAction(Code(code), contextIndex));
    bar->grabGesture(Qt::TapAndHoldGesture);
}

void CVxMainToolbar::CreateContextAlignToolbar(QToolBar* bar)
{
    bar->setObjectName(QStringLiteral("ContextAlignToolbar"));
    bar->setOrientation(Qt::Vertical);
    bar->setIconSize(QSize(iconPixels, iconPixels));
    for (int code : s_alignButtons) {
        if (code == 0)
            bar->addSeparator();
        else
            bar->addAction(FindAddAction(Code(code), contextIndex));
    }
    bar->grabGesture(Qt::TapAndHoldGesture);
}

void CVxMainToolbar::AddMenuItems(QMenu* menu, const QList<int>& codes, int index)
{
    for (int code : codes) {
        if (code == 0)
            menu->addSeparator();
        else
            menu->addAction(FindAddAction(Code(code), index));
    }
}

void CVxMainToolbar::CreateProjectMenu(QMenu* menu, QMenu*& samplesMenu, QAction*& recentSeparator)
{
    AddMenuItems(menu, {1, 2, 80, 0, 5, 6, 4, 0, 89}, 0);
    // The three sample commands share one sub-menu; its title is theirs
    // without the number.
    QString samples = VX_GetCore()->GetMainToolbarButtonHint(VX_TB_SAMPLES1, false).ToQString();
    while (!samples.isEmpty() && (samples.back().isDigit() || samples.back().isSpace()))
        samples.chop(1);
    samplesMenu = menu->addMenu(samples);
    AddMenuItems(menu, {0, 21, 45, 0, 7, 83, 84, 87, 88}, 0);
    recentSeparator = menu->addSeparator();
    menu->setToolTipsVisible(true);
    for (int i = 0; i < 4; ++i) {
        CVxAction* recent = FindAddAction(VX_TB_RECENT_FILE, i);
        recent->SetOwnText(true);
        recent->setVisible(false);
        menu->addAction(recent);
    }
    menu->addSeparator();
    CVxAction* exit = FindAddAction(VX_TB_EXIT);
    exit->setMenuRole(QAction::QuitRole);
    menu->addAction(exit);
}

void CVxMainToolbar::CreateEditMenu(QMenu* menu)
{
    AddMenuItems(menu,
                 {18, 19, 0, 93, 94, 95, 130, 141, 0, 96, 97, 29, 39, 157, 158, 0, 20, 0, 12, 13, 51, 14}, 0);
}

void CVxMainToolbar::CreateFloorMenu(QMenu* menu)
{
    AddMenuItems(menu, {73, 74, 0, 75, 76, 0, 77, 78, 0, 22, 40, 41, 42, 43, 44, 0, 23, 101, 102, 103, 0, 24},
                 0);
}

void CVxMainToolbar::CreateObjectsMenu(QMenu* menu)
{
    AddMenuItems(menu, {25, 0, 98, 99, 100, 28, 149, 0, 26, 132, 27, 0}, 0);
    QMenu* transform = menu->addMenu(VX_GetCore()->GetMainToolbarButtonHint(VX_TB_TRANSFORMATIONS, false));
    AddMenuItems(transform, {152, 153, 154, 0, 155, 156}, 0);
    AddMenuItems(menu, {137, 138, 139, 0}, 0);
    QMenu* align = menu->addMenu(VX_GetCore()->GetMainToolbarButtonHint(VX_TB_CTX_ALIGN, false));
    AddMenuItems(align, {168, 169, 170, 171, 172, 173, 0, 174, 175, 176, 177}, 0);
    AddMenuItems(menu, {178, 179, 180, 181, 182, 0, 143, 164, 0, 104, 105, 106, 0, 136}, 0);
}

void CVxMainToolbar::CreateViewMenu(QMenu* menu)
{
    AddMenuItems(menu, {30, 31, 32, 33, 34, 0,  108, 109, 110, 111, 112, 113, 0,
                        62, 63, 65, 66, 0,  68, 69,  0,   64,  55,  85,  86},
                 0);
}

void CVxMainToolbar::CreateConfigureMenu(QMenu* menu)
{
    AddMenuItems(menu, {70, 114, 115, 107}, 0);
}

void CVxMainToolbar::CreateHelpMenu(QMenu* menu)
{
    AddMenuItems(menu, {116, 117, 0, 118, 119, 120, 123, 0}, 0);
    CVxAction* about = FindAddAction(VX_TB_ABOUT);
    about->setMenuRole(QAction::AboutRole);
    menu->addAction(about);
}

void CVxMainToolbar::CreateObjectContextMenu(QMenu* menu)
{
    AddMenuItems(menu,
                 {130, 93,  140, 141, 0,   131, 132, 133, 0, 152, 153, 154, 155, 156, 0,   137, 138, 139,
                  0,   142, 143, 162, 163, 0,   157, 158, 0, 135, 149, 144, 150, 151, 164, 0,   136},
                 contextIndex);
}

void CVxMainToolbar::CreateProjectContextMenu(QMenu* menu)
{
    AddMenuItems(menu,
                 {95, 96, 0, 159, 161, 0, 21, 22, 23, 160, 0, 30, 32, 33, 0, 108, 109, 110, 111, 112, 113},
                 contextIndex);
}

void CVxMainToolbar::CreateSpecialEdContextMenu(QMenu* menu)
{
    AddMenuItems(menu, {130, 136, 147, 148, 0, 46, 0, 15, 16}, contextIndex);
}

void CVxMainToolbar::CreateNewObjContextMenu(QMenu* menu)
{
    AddMenuItems(menu, {25, 0, 98, 99, 100, 28}, contextIndex);
}

void CVxMainToolbar::CreateLongPressContextMenu(QMenu* menu)
{
    AddMenuItems(menu, {130, 140, 141, 0, 131, 132, 0, 137, 138, 139, 0, 136}, contextIndex);
}

bool CVxMainToolbar::IsTouchInterfaceAvailable()
{
    for (const QInputDevice* device : QInputDevice::devices())
        if (device->type() == QInputDevice::DeviceType::TouchScreen)
            return true;
    return false;
}

QIcon CVxMainToolbar::RenderIcon(const QString& resource, bool mirrorable, bool autoDark, bool dark)
{
    QFile file(resource);
    if (resource.isEmpty() || !file.open(QIODevice::ReadOnly))
        return QIcon();
    QByteArray svg = file.readAll();
    if (autoDark && dark)
        svg.replace(lightInk, darkInk).replace(lightInkUpper, darkInk);
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return QIcon();
    const bool mirror = mirrorable && QGuiApplication::layoutDirection() == Qt::RightToLeft;
    QIcon icon;
    for (int scale : {1, 2}) {
        QImage image(iconPixels * scale, iconPixels * scale, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        if (mirror)
            image = image.mirrored(true, false);
        QPixmap pixmap = QPixmap::fromImage(image);
        pixmap.setDevicePixelRatio(scale);
        icon.addPixmap(pixmap);
    }
    return icon;
}

void CVxMainToolbar::SetActionIcon(CVxAction* action)
{
    bool mirrorable = false;
    bool autoDark = false;
    const QString name =
        VX_GetCore()->GetMainToolbarButtonIconName(action->GetCode(), mirrorable, autoDark).ToQString();
    if (name.isEmpty())
        return;
    action->SetIconResource(QStringLiteral(":/icons/svg/%1.svg").arg(name), mirrorable, autoDark);
    action->setIcon(RenderIcon(action->GetIconResource(), mirrorable, autoDark, m_dark));
}

void CVxMainToolbar::UpdateButtonsWithAutoDarkIcons(bool dark)
{
    if (dark == m_dark)
        return;
    m_dark = dark;
    for (CVxAction* action : std::as_const(m_actions))
        if (action->IsAutoDark())
            action->setIcon(RenderIcon(action->GetIconResource(), action->IsMirrorable(), true, dark));
}
