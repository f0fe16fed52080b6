// The main window's frame, its start-up order and its settings at exit.

#include "CVxAction.h"
#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxFloor.h"
#include "CVxMainRenderArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMainToolbar.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QCursor>
#include <QDockWidget>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWheelEvent>

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void captionOfAnUntitledProject();
    void sevenMenusInTheirOrder();
    void forcedOptionsAreOnWhateverTheFileSays();
    void sheetAndShadowArePainted();
    void statusBarShowsZoomAndProject();
    void ctrlWheelZoomsAboutThePointer();
    void zoomKeysAndZoomToSelection();
    void undoAndRedoKeysFollowTheCore();
    void floorMenuAndPageKeys();
    void messageBoxButtonsCarryAccelerators();
    void exitWritesSettingsFile();
};

namespace {
CVxUiTestHome* g_home = nullptr;
}

void TestMainWindow::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    // A settings file that turns the forced options off, as an old version
    // might have left it.
    QDir().mkpath(g_home->AppDataFolder());
    QFile file(g_home->AppDataFolder() + QStringLiteral("config.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\xEF\xBB\xBF\r\n[Options]\r\nAutosize=0\r\nOpenInBestFit=0\r\nAntiAliasing=0\r\n"
               "MainWndMax=0\r\nMainWndWidth=900\r\nMainWndHeight=650\r\n");
    file.close();
}

void TestMainWindow::captionOfAnUntitledProject()
{
    CVxMainWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled]"));

    VX_GetCore()->GetProject().m_modified = true;
    VX_GetAppHelper()->RefreshMainViewCaption();
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled*]"));

    // A named project shows its path, with the home folder as "~".
    VX_GetCore()->SetProjectPath(CVxStringW(QDir::homePath() + QStringLiteral("/plans/flat.pvp")));
    CVxStringW shortTitle;
    VX_GetCore()->GetMainWndCaption(shortTitle);
    QCOMPARE(shortTitle.ToQString(), QStringLiteral("Plaveno - flat.pvp"));
    VX_GetAppHelper()->RefreshMainViewCaption();
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [~/plans/flat.pvp*]"));

    VX_GetCore()->SetProjectPath(CVxStringW());
    VX_GetCore()->GetProject().m_modified = false;
}

void TestMainWindow::sevenMenusInTheirOrder()
{
    CVxMainWindow window;
    const QList<QAction*> actions = window.menuBar()->actions();
    QStringList titles;
    for (QAction* action : actions)
        titles << action->text().remove(QLatin1Char('&'));
    QCOMPARE(titles, (QStringList{QStringLiteral("Project"), QStringLiteral("Edit"), QStringLiteral("Floor"),
                                  QStringLiteral("Objects"), QStringLiteral("View"),
                                  QStringLiteral("Configure"), QStringLiteral("Help")}));
}

void TestMainWindow::forcedOptionsAreOnWhateverTheFileSays()
{
    CVxMainWindow window;
    const CVxOptions* options = VX_GetOptions();
    QVERIFY(options->m_autosize);
    QVERIFY(options->m_openInBestFit);
    QVERIFY(options->m_antiAliasing);
    QCOMPARE(options->m_mainWndWidth, 900);
}

void TestMainWindow::sheetAndShadowArePainted()
{
    CVxMainWindow window;
    window.resize(1000, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(300); // the start timer fits the sheet into the view
    QVERIFY(VX_GetCore()->IsDrawingAllowed());

    CVxMainRenderArea* area = window.GetRenderArea();
    const QImage shot = area->grab().toImage();
    const VxRECT sheet = VX_GetCore()->GetSheetRect();
    QVERIFY(sheet.right - sheet.left > 100);
    QVERIFY(sheet.left >= 0 && sheet.right <= shot.width());
    const QPoint centre((sheet.left + sheet.right) / 2, (sheet.top + sheet.bottom) / 2);
    // Between grid lines inside the default room: its floor colour; in the
    // space around the room: the white ground.
    const CVxProject& project = VX_GetCore()->GetProject();
    const double zoom = VX_GetCore()->GetZoom();
    const QPoint inRoom(sheet.left + static_cast<int>((project.m_spaceLeft + 130) * zoom),
                        sheet.top + static_cast<int>((project.m_spaceTop + 120) * zoom));
    const unsigned floorColour = project.m_floors.front()->m_floorAppear.GetColor();
    QCOMPARE(shot.pixelColor(inRoom),
             QColor(floorColour & 0xFF, (floorColour >> 8) & 0xFF, (floorColour >> 16) & 0xFF));
    QCOMPARE(shot.pixelColor(sheet.left + 3, sheet.top + 3), QColor(Qt::white));
    // The shadow lies just outside the sheet, brighter than the background tile
    // would be on its own and not the sheet's white.
    const QColor shadow = shot.pixelColor(sheet.right + 4, centre.y());
    QVERIFY(shadow != QColor(Qt::white));
    const QColor background = shot.pixelColor(qMax(0, sheet.left - 15), centre.y());
    QVERIFY(shadow != background);
    // The sheet keeps the proportions of the project with its margins.
    const double aspect = project.GetTotalWidth() / project.GetTotalHeight();
    QVERIFY(qAbs(double(sheet.right - sheet.left) / (sheet.bottom - sheet.top) - aspect) < 0.02);
}

void TestMainWindow::ctrlWheelZoomsAboutThePointer()
{
    CVxMainWindow window;
    window.resize(1000, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(300);
    CVxAppCore* core = VX_GetCore();
    CVxMainRenderArea* area = window.GetRenderArea();
    const double before = core->GetZoom();
    double expected = 0;
    QVERIFY(core->GetNextZoom(true, expected));

    // The plan point under the pointer stays under it.
    const VxRECT sheet = core->GetSheetRect();
    const QPoint pointer(sheet.left + (sheet.right - sheet.left) / 3,
                         sheet.top + (sheet.bottom - sheet.top) / 3);
    QCursor::setPos(area->mapToGlobal(pointer));
    const double planX = (pointer.x() - core->GetViewOrigin().x) / before;
    QWheelEvent wheel(QPointF(pointer), QPointF(area->mapToGlobal(pointer)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(area, &wheel);
    QCOMPARE(core->GetZoom(), expected);
    if (area->mapFromGlobal(QCursor::pos()) == pointer) {
        const double after = (pointer.x() - core->GetViewOrigin().x) / core->GetZoom();
        QVERIFY2(qAbs(after - planX) < 2 / core->GetZoom(), qPrintable(QString::number(after - planX)));
    }

    // Without Ctrl the wheel scrolls and keeps the zoom.
    QWheelEvent scroll(QPointF(pointer), QPointF(area->mapToGlobal(pointer)), QPoint(), QPoint(0, -120),
                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(area, &scroll);
    QCOMPARE(core->GetZoom(), expected);
}

void TestMainWindow::undoAndRedoKeysFollowTheCore()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    QMenu* edit = window.GetMenu(CVxMainWindow::MENU_EDIT);
    QAction* undo = window.GetMainToolbar()->FindAction(VX_TB_UNDO);
    QAction* redo = window.GetMainToolbar()->FindAction(VX_TB_REDO);
    QVERIFY(undo && redo);
    // The Edit menu opens with the two, and the tool bar shows them too.
    QCOMPARE(edit->actions().value(0), undo);
    QCOMPARE(edit->actions().value(1), redo);
    QVERIFY(window.GetMainToolbar()->actions().contains(undo));
    QCOMPARE(undo->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
    QCOMPARE(redo->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Y));
    QVERIFY(!undo->isEnabled());

    const double width = core->GetProject().m_width;
    core->TransformScale(2);
    QVERIFY(undo->isEnabled());
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(core->GetProject().m_width, width);
    QVERIFY(!undo->isEnabled());
    QVERIFY(redo->isEnabled());
    QTest::keyClick(&window, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(core->GetProject().m_width, 2 * width);
    core->InitProject();
}

void TestMainWindow::floorMenuAndPageKeys()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    core->GetProject().m_modified = false;
    QMenu* floor = window.GetMenu(CVxMainWindow::MENU_FLOOR);
    QAction* add = floor->actions()[0];
    QCOMPARE(add->text(), QStringLiteral("Add New Floor"));
    QAction* down = window.GetMainToolbar()->FindAction(VX_TB_FLOOR_DOWN);
    QVERIFY(down && floor->actions().contains(down));
    add->trigger();
    add->trigger();
    const CVxProject& project = core->GetProject();
    QCOMPARE(project.GetFloorCount(), 3);
    QCOMPARE(project.m_currentFloor, 2);
    QVERIFY(window.GetStatusBar()->GetRightText().ToQString().contains(QStringLiteral("Floor 3")));
    QTest::keyClick(&window, Qt::Key_PageDown);
    QTest::keyClick(&window, Qt::Key_PageDown);
    QCOMPARE(project.m_currentFloor, 0);
    // At the ground floor, down goes nowhere and its command is off.
    QTest::keyClick(&window, Qt::Key_PageDown);
    QCOMPARE(project.m_currentFloor, 0);
    QVERIFY(!down->isEnabled());
    QTest::keyClick(&window, Qt::Key_PageUp);
    QCOMPARE(project.m_currentFloor, 1);

    // A project of several floors opened at start: the keys work at once.
    const QString path = g_home->Path() + QStringLiteral("/floors.pvp");
    QVERIFY(core->SaveMainProjectToFile(CVxStringW(path)));
    core->InitProject();
    window.EnableFloorButtons();
    QVERIFY(window.OpenFile(CVxStringW(path), true));
    QCOMPARE(project.GetFloorCount(), 3);
    QTest::keyClick(&window, Qt::Key_PageUp);
    QCOMPARE(project.m_currentFloor, 2);
    core->SetProjectPath(CVxStringW());
    core->GetFileMonitor().StopMonitoring();
    core->InitProject();
}

void TestMainWindow::zoomKeysAndZoomToSelection()
{
    CVxMainWindow window;
    // The plan alone fills the window: best fit then stops at the natural
    // size, a rung of the zoom ladder, which Minus comes back to.
    window.GetDock(CVxMainWindow::DOCK_LIBRARY)->hide();
    window.resize(1000, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(300);
    CVxAppCore* core = VX_GetCore();
    const double before = core->GetZoom();
    double next = 0;
    QVERIFY(core->GetNextZoom(true, next));
    QTest::keyClick(&window, Qt::Key_Plus);
    QCOMPARE(core->GetZoom(), next);
    QTest::keyClick(&window, Qt::Key_Minus);
    QCOMPARE(core->GetZoom(), before);

    // A small box near the far corner fills the view and sits in its middle.
    CVxPart* box = core->GetProject().GetFloor()->GetNewObject();
    box->type = ptRectangle;
    box->x = 380;
    box->y = 220;
    box->width = 40;
    box->height = 30;
    box->selected = true;
    QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
    const double zoom = core->GetZoom();
    QVERIFY(zoom > 4 * before);
    const CVxProject& project = core->GetProject();
    const QSize view = window.GetRenderArea()->size();
    const double centreX = core->GetViewOrigin().x + (project.m_spaceLeft + 400) * zoom;
    const double centreY = core->GetViewOrigin().y + (project.m_spaceTop + 235) * zoom;
    QVERIFY2(qAbs(centreX - view.width() / 2.0) < 3, qPrintable(QString::number(centreX)));
    QVERIFY2(qAbs(centreY - view.height() / 2.0) < 3, qPrintable(QString::number(centreY)));
    // The box with a quarter of itself on each side still fits.
    QVERIFY(40 * 1.5 * zoom <= view.width() + 1 && 30 * 1.5 * zoom <= view.height() + 1);
    core->InitProject();
}

void TestMainWindow::statusBarShowsZoomAndProject()
{
    CVxMainWindow window;
    CVxMainStatusBar* bar = window.GetStatusBar();
    QCOMPARE(bar->GetLeftText().ToQString(), QStringLiteral("Use Ctrl + mouse wheel to zoom."));
    const QString right = bar->GetRightText().ToQString();
    QVERIFY2(right.startsWith(QStringLiteral("Zoom ")), qPrintable(right));
    QVERIFY2(right.contains(QStringLiteral("Project 740 x 540 cm")), qPrintable(right));
    // A message stands for a while, and the fields on the right stay.
    bar->SetMessage(CVxStringW(L"Autosave: The project was saved."), 50);
    QCOMPARE(bar->GetLeftText().ToQString(), QStringLiteral("Autosave: The project was saved."));
    QCOMPARE(bar->GetRightText().ToQString(), right);
    QTRY_COMPARE(bar->GetLeftText().ToQString(), QStringLiteral("Use Ctrl + mouse wheel to zoom."));

    // The pointer over the plan, in the project's unit from the room's corner.
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    CVxAppCore* core = VX_GetCore();
    const CVxProject& project = core->GetProject();
    const VxRECT sheet = core->GetSheetRect();
    const QPoint at(sheet.left + static_cast<int>((project.m_spaceLeft + 100) * core->GetZoom()),
                    sheet.top + static_cast<int>((project.m_spaceTop + 50) * core->GetZoom()));
    QTest::mouseMove(window.GetRenderArea(), at);
    QTRY_VERIFY2(bar->GetRightText().ToQString().endsWith(QStringLiteral(" -- 100, 50")),
                 qPrintable(bar->GetRightText().ToQString()));
}

void TestMainWindow::messageBoxButtonsCarryAccelerators()
{
    CVxStringW yes, no, ok, cancel, save;
    CVxAppHelperQt::GetMsgBoxButtonTexts(yes, no, ok, cancel, save);
    QCOMPARE(yes.ToQString(), QStringLiteral("&Yes"));
    QCOMPARE(no.ToQString(), QStringLiteral("&No"));
    QCOMPARE(ok.ToQString(), QStringLiteral("OK"));
    QCOMPARE(cancel.ToQString(), QStringLiteral("Cancel"));
    QCOMPARE(save.ToQString(), QStringLiteral("Save"));
}

void TestMainWindow::exitWritesSettingsFile()
{
    const QString path = g_home->AppDataFolder() + QStringLiteral("config.ini");
    QFile::remove(path);
    VX_GetOptions()->ResetToDefaults();
    {
        CVxMainWindow window;
        QVERIFY(!QFile::exists(path));
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("\xEF\xBB\xBF\r\n[Options]\r\n"));
    QVERIFY(text.contains("\r\nLastVersion=1034\r\n"));
    QVERIFY(text.contains("\r\nLanguage=1\r\n"));
    QVERIFY(text.contains("\r\nAntiAliasing=1\r\n"));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow.moc"
