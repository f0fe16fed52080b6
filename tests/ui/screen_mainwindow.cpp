// A screenshot of the real window on an X server: the frame a user sees at
// start-up. The picture is kept in the build folder for a look.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxMainRenderArea.h"
#include "CVxMainWindow.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QImage>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTest>

class ScreenMainWindow : public QObject
{
    Q_OBJECT
private slots:
    void startUpFrame();
};

void ScreenMainWindow::startUpFrame()
{
    CVxMainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(600);
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [untitled]"));

    const QImage shot = window.grab().toImage();
    QVERIFY(shot.save(QStringLiteral("screen_mainwindow.png")));

    // The sheet lies in the middle of the plan area; the default room's
    // left wall shows in the floor's wall colour.
    CVxMainRenderArea* area = window.GetRenderArea();
    const VxRECT sheet = VX_GetCore()->GetSheetRect();
    const CVxProject& project = VX_GetCore()->GetProject();
    const CVxFloor* floor = project.m_floors.front();
    const double zoom = VX_GetCore()->GetZoom();
    const QPoint onWall = area->mapTo(
        &window,
        QPoint(sheet.left + static_cast<int>((project.m_spaceLeft - floor->m_defWallThickness / 2) * zoom),
               sheet.top + static_cast<int>((project.m_spaceTop + project.m_height / 2) * zoom)));
    const unsigned wall = floor->m_wallsColor;
    QCOMPARE(shot.pixelColor(onWall), QColor(wall & 0xFF, (wall >> 8) & 0xFF, (wall >> 16) & 0xFF));
    QVERIFY(window.menuBar()->isVisible());
    QVERIFY(window.statusBar()->isVisible());
    QVERIFY(sheet.right - sheet.left > area->width() / 3);
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    ScreenMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "screen_mainwindow.moc"
