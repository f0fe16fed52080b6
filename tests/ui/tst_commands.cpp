// The window's commands: every key of the command table reaches its command,
// every icon has its picture, the floor tool bar switches floors, and no
// menu item is enabled without something behind it.

#include "CVxAction.h"
#include "CVxAppCore.h"
#include "CVxMainRenderArea.h"
#include "CVxMainToolbar.h"
#include "CVxMainWindow.h"
#include "CVxSegmentedControl.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

// The shortcuts as the command table lists them, in Qt's words.
const QMap<int, QString> s_keys = {{1, "Ctrl+N"},
                                   {2, "Ctrl+O"},
                                   {5, "Ctrl+S"},
                                   {6, "F12"},
                                   {7, "Ctrl+P"},
                                   {15, "Ctrl+Return"},
                                   {16, "Esc"},
                                   {18, "Ctrl+Z"},
                                   {19, "Ctrl+Y"},
                                   {21, "Ctrl+T"},
                                   {22, "F8"},
                                   {23, "F7"},
                                   {26, "Ctrl+G"},
                                   {27, "Ctrl+K"},
                                   {28, "M"},
                                   {30, "*"},
                                   {31, "/"},
                                   {32, "+"},
                                   {33, "-"},
                                   {34, "Ctrl++"},
                                   {39, "A"},
                                   {40, "W"},
                                   {41, "E"},
                                   {51, "T"},
                                   {62, "Ctrl+B"},
                                   {63, "F9"},
                                   {64, "L"},
                                   {65, "Ctrl+I"},
                                   {66, "F11"},
                                   {68, "F5"},
                                   {69, "Ctrl+Shift+W"},
                                   {77, "PgUp"},
                                   {78, "PgDown"},
                                   {80, "Ctrl+J"},
                                   {93, "Ctrl+X"},
                                   {94, "Ctrl+C"},
                                   {95, "Ctrl+V"},
                                   {96, "Ctrl+A"},
                                   {97, "Ctrl+D"},
                                   {98, "Ctrl+E"},
                                   {99, "Ctrl+H"},
                                   {100, "Ctrl+M"},
                                   {116, "F1"},
                                   {130, "Del"},
                                   {131, "Ctrl+G"},
                                   {132, "Ctrl+U"},
                                   {133, "Ctrl+K"},
                                   {136, "Alt+Return"},
                                   {141, "Shift+D"},
                                   {152, "Ctrl+L"},
                                   {153, "Ctrl+R"},
                                   {168, "Alt+Left"},
                                   {170, "Alt+Right"},
                                   {171, "Alt+Up"},
                                   {173, "Alt+Down"}};

EVxMainToolbarButtonCode Code(int code)
{
    return static_cast<EVxMainToolbarButtonCode>(code);
}

// Every command item of a menu and of its sub-menus.
void CollectItems(QMenu* menu, QList<CVxAction*>& items)
{
    for (QAction* action : menu->actions()) {
        if (action->menu())
            CollectItems(action->menu(), items);
        else if (auto* command = qobject_cast<CVxAction*>(action))
            items << command;
    }
}

// Remembers the keys, other than the modifiers themselves, that reach a
// widget.
class CVxKeyCounter : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Alt && key != Qt::Key_Control && key != Qt::Key_Shift)
            m_keys << key;
        return false;
    }
    QList<int> m_keys;
};

CVxUiTestHome* g_home = nullptr;

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void everyShortcutReachesItsCommand();
    void everyIconHasItsPicture();
    void iconsFollowSchemeAndDirection();
    void floorToolbarSwitchesFloors();
    void enabledMenuItemsAreHandled();
    void keysOfDisabledCommandsReachThePlan();
    void toolbarsOfTheWindow();
};

void TestCommands::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
}

void TestCommands::cleanup()
{
    CVxMainWindow::SetCommandHook(nullptr);
    CVxAppCore* core = VX_GetCore();
    core->GetFileMonitor().StopMonitoring();
    core->SetProjectPath(CVxStringW());
    core->InitProject();
}

void TestCommands::everyShortcutReachesItsCommand()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxMainToolbar* toolbar = window.GetMainToolbar();
    CVxAppCore* core = VX_GetCore();

    QMap<int, QKeySequence> table;
    for (int code = 1; code <= VX_TB_LAST; ++code) {
        unsigned modifiers = 0, key = 0;
        if (core->GetMainToolbarButtonShortcut(Code(code), modifiers, key))
            table.insert(code, CVxAction::ToKeySequence(modifiers, key));
    }
    QCOMPARE(table.keys(), s_keys.keys());

    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        const int code = it.key();
        const QKeySequence expected(s_keys.value(code), QKeySequence::PortableText);
        QCOMPARE(it.value(), expected);
        CVxAction* action = toolbar->FindAction(code);
        if (!action)
            action = toolbar->FindAction(code, CVxMainToolbar::contextIndex);
        QVERIFY2(action, qPrintable(QString::number(code)));
        QCOMPARE(action->shortcut(), expected);

        // The key with every item of it live, whatever the state of the
        // project would allow now.
        QList<int> owners;
        for (auto other = table.cbegin(); other != table.cend(); ++other) {
            if (other.value() != expected)
                continue;
            owners << other.key();
            for (int index : {0, CVxMainToolbar::contextIndex}) {
                if (CVxAction* item = toolbar->FindAction(other.key(), index)) {
                    item->setVisible(true);
                    item->setEnabled(true);
                }
            }
        }
        // The context bars stand as they do for a selection: their copies
        // of a command must not take its key from the menu bar's item.
        window.GetContextToolbar()->show();
        window.GetContextAlignToolbar()->show();
        QList<int> reached;
        CVxMainWindow::SetCommandHook([&reached](int reachedCode, int) {
            reached << reachedCode;
            return true;
        });
        window.GetRenderArea()->setFocus();
        QTest::keySequence(&window, expected);
        CVxMainWindow::SetCommandHook(nullptr);
        QVERIFY2(reached.size() == 1 && owners.contains(reached.first()),
                 qPrintable(QStringLiteral("%1 %2").arg(code).arg(expected.toString())));
        window.UpdateCommandStates();
    }
}

void TestCommands::everyIconHasItsPicture()
{
    if (!QDir(QStringLiteral(":/icons/svg")).exists())
        QSKIP("The icon set is not in the resources of this build.");
    CVxAppCore* core = VX_GetCore();
    for (int code = 1; code <= VX_TB_LAST; ++code) {
        bool mirrorable = false, autoDark = false;
        const QString name = core->GetMainToolbarButtonIconName(Code(code), mirrorable, autoDark).ToQString();
        if (name.isEmpty())
            continue;
        const QString resource = QStringLiteral(":/icons/svg/%1.svg").arg(name);
        QVERIFY2(QFile::exists(resource), qPrintable(resource));
        QVERIFY2(!CVxMainToolbar::RenderIcon(resource, mirrorable, autoDark, true).isNull(),
                 qPrintable(resource));
    }
}

void TestCommands::iconsFollowSchemeAndDirection()
{
    // An icon inked on its left half only.
    const QString path = g_home->Path() + QStringLiteral("/ink.svg");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\" viewBox=\"0 0 24 24\">"
               "<rect x=\"0\" y=\"0\" width=\"12\" height=\"24\" fill=\"#3a3f44\"/></svg>");
    file.close();
    const auto pixel = [](const QIcon& icon, int x) {
        return icon.pixmap(QSize(24, 24), 1.0).toImage().pixelColor(x, 12);
    };
    const QIcon light = CVxMainToolbar::RenderIcon(path, false, true, false);
    QCOMPARE(pixel(light, 3), QColor(0x3a, 0x3f, 0x44));
    QCOMPARE(pixel(light, 20).alpha(), 0);
    QCOMPARE(pixel(CVxMainToolbar::RenderIcon(path, false, true, true), 3), QColor(0xe6, 0xe6, 0xe6));
    // A coloured icon keeps its colours on a dark ground.
    QCOMPARE(pixel(CVxMainToolbar::RenderIcon(path, false, false, true), 3), QColor(0x3a, 0x3f, 0x44));
    // Both scales are drawn from the picture itself.
    QCOMPARE(light.availableSizes().size(), 2);

    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const QIcon mirrored = CVxMainToolbar::RenderIcon(path, true, true, false);
    const QIcon unmirrored = CVxMainToolbar::RenderIcon(path, false, true, false);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(pixel(mirrored, 3).alpha(), 0);
    QCOMPARE(pixel(mirrored, 20), QColor(0x3a, 0x3f, 0x44));
    QCOMPARE(pixel(unmirrored, 3), QColor(0x3a, 0x3f, 0x44));
}

void TestCommands::floorToolbarSwitchesFloors()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxAppCore* core = VX_GetCore();
    auto* segments = window.GetFloorToolbar()->findChild<CVxSegmentedControl*>(QStringLiteral("segmFloor"));
    QVERIFY(segments);
    QCOMPARE(segments->styleSheet(), QStringLiteral("QToolButton { padding: 5px; }"));
    QCOMPARE(segments->GetSegmentCount(), 1);

    QVERIFY(core->AddNewFloor());
    QVERIFY(core->AddNewFloor());
    QCOMPARE(segments->GetSegmentCount(), 3);
    QCOMPARE(segments->GetSelectedSegment(), 2);
    QTest::mouseClick(segments->GetSegmentButton(0), Qt::LeftButton);
    QCOMPARE(core->GetProject().m_currentFloor, 0);
    QCOMPARE(segments->GetSelectedSegment(), 0);
    // The floor commands follow the floor chosen there.
    QVERIFY(!window.GetMainToolbar()->FindAction(VX_TB_FLOOR_DOWN)->isEnabled());
    QVERIFY(window.GetMainToolbar()->FindAction(VX_TB_FLOOR_UP)->isEnabled());

    // Removing a floor takes its segment away.
    QTest::mouseClick(segments->GetSegmentButton(1), Qt::LeftButton);
    QCOMPARE(core->GetProject().m_currentFloor, 1);
    QVERIFY(core->RemoveCurrentFloor(false));
    QCOMPARE(segments->GetSegmentCount(), 2);
    QCOMPARE(segments->GetSelectedSegment(), core->GetProject().m_currentFloor);
}

void TestCommands::enabledMenuItemsAreHandled()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // A second floor, so that the floor commands are live too.
    VX_GetCore()->AddNewFloor();

    QList<CVxAction*> items;
    for (QAction* menu : window.menuBar()->actions())
        CollectItems(menu->menu(), items);
    QVERIFY(items.size() > 100);

    // Whatever asks the user is answered at once.
    QTimer closer;
    connect(&closer, &QTimer::timeout, [] {
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
    });
    closer.start(50);

    QStringList dead;
    for (CVxAction* item : items) {
        QVERIFY2(!item->text().isEmpty(), qPrintable(QString::number(item->GetCode())));
        if (!item->isVisible() || !item->isEnabled())
            continue;
        if (!window.DoMainToolbarAction(item->GetCode(), item->GetIndex()))
            dead << QStringLiteral("%1 %2").arg(item->GetCode()).arg(item->text());
    }
    QVERIFY2(dead.isEmpty(), qPrintable(dead.join(QStringLiteral(", "))));

    // A command whose feature this build lacks stands disabled with its text.
    CVxAction* mail = window.GetMainToolbar()->FindAction(VX_TB_SEND_EMAIL);
    QVERIFY(mail && !mail->isEnabled());
    QCOMPARE(mail->text(), QStringLiteral("Send as E-mail..."));
}

void TestCommands::keysOfDisabledCommandsReachThePlan()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxMainRenderArea* area = window.GetRenderArea();
    CVxKeyCounter counter;
    area->installEventFilter(&counter);
    area->setFocus();
    QList<int> reached;
    CVxMainWindow::SetCommandHook([&reached](int code, int) {
        reached << code;
        return true;
    });
    // Nothing is selected and no editor is active.
    QVERIFY(!window.GetMainToolbar()->FindAction(VX_TB_CTX_REMOVE)->isEnabled());
    QVERIFY(!window.GetMainToolbar()->FindAction(VX_TB_DISCARD_CLOSE)->isEnabled());
    for (int key : {int(Qt::Key_Delete), int(Qt::Key_Escape), int(Qt::Key_Left), int(Qt::Key_Right),
                    int(Qt::Key_Up), int(Qt::Key_Down)})
        QTest::keyClick(area, static_cast<Qt::Key>(key));
    QTest::keyClick(area, Qt::Key_Left, Qt::AltModifier);
    QTest::keyClick(area, Qt::Key_Return, Qt::ControlModifier);
    QVERIFY2(reached.isEmpty(), qPrintable(QString::number(reached.value(0))));
    QCOMPARE(counter.m_keys, (QList<int>{Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Left, Qt::Key_Right,
                                         Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Return}));
    // A live command still takes its key.
    QTest::keyClick(area, Qt::Key_Plus);
    QCOMPARE(reached, QList<int>{VX_TB_ZOOM_IN});
}

void TestCommands::toolbarsOfTheWindow()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxMainToolbar* toolbar = window.GetMainToolbar();
    // The desktop bar leaves out what is for touch screens only.
    QVERIFY(toolbar->actions().contains(toolbar->FindAction(VX_TB_NEW_PROJECT)));
    QVERIFY(!toolbar->actions().contains(toolbar->FindAction(VX_TB_NEW_PROJECT_TOUCH)));
    QVERIFY(!toolbar->actions().contains(toolbar->FindAction(VX_TB_TOUCH_MODE)));
    QVERIFY(toolbar->IsButtonVisible(VX_TB_UNDO));
    QVERIFY(!toolbar->IsButtonVisible(VX_TB_ACCEPT_CLOSE));
    // The tool tip names the key; the painter's second line is for the tip
    // alone.
    QCOMPARE(toolbar->FindAction(VX_TB_OPEN)->toolTip(), QStringLiteral("Open (Ctrl+O)"));
    CVxAction* painter = toolbar->FindAction(VX_TB_FORMAT_PAINTER);
    QCOMPARE(painter->text(), QStringLiteral("Copy Properties"));
    QCOMPARE(painter->toolTip(),
             QStringLiteral("Copy Properties\nDouble-click to apply to multiple objects"));
    QCOMPARE(toolbar->FindAction(VX_TB_BLACK_WHITE)->text(), QStringLiteral("Draw in Black && White"));
    // The pointer selects at start.
    QVERIFY(toolbar->FindAction(VX_TB_SELECTION_TOOL)->isChecked());
    QVERIFY(!toolbar->FindAction(VX_TB_NEW_WALL)->isChecked());

    QList<int> context;
    for (QAction* action : window.GetContextToolbar()->actions())
        context << qobject_cast<CVxAction*>(action)->GetCode();
    QCOMPARE(context, (QList<int>{130, 144, 150, 134, 142, 143, 131, 132, 133, 137,
                                  138, 141, 140, 145, 146, 147, 148, 149, 135, 136}));
    QCOMPARE(window.GetContextToolbar()->orientation(), Qt::Vertical);
    QList<int> align;
    for (QAction* action : window.GetContextAlignToolbar()->actions())
        align << (action->isSeparator() ? 0 : qobject_cast<CVxAction*>(action)->GetCode());
    QCOMPARE(align, (QList<int>{165, 167, 166, 0,   168, 169, 170, 171, 172, 173, 0,
                                174, 175, 176, 177, 0,   178, 179, 180, 181, 182}));
    // Nothing selected: no context bar; "Align or Distribute" and Close
    // show and hide the align bar.
    QVERIFY(!window.GetContextToolbar()->isVisible());
    QVERIFY(window.DoMainToolbarAction(VX_TB_CTX_ALIGN, 0));
    QVERIFY(window.GetContextAlignToolbar()->isVisible());
    QVERIFY(window.DoMainToolbarAction(VX_TB_ALIGN_CLOSE, 0));
    QVERIFY(!window.GetContextAlignToolbar()->isVisible());

    // The view flags carry their check marks, and the menu item toggles.
    CVxAction* grid = toolbar->FindAction(VX_TB_SHOW_GRID);
    const bool before = grid->isChecked();
    grid->trigger();
    QCOMPARE(grid->isChecked(), !before);
    grid->trigger();
    QCOMPARE(grid->isChecked(), before);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestCommands test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_commands.moc"
