// A screenshot of the real window on an X server: the frame a user sees at
// start-up. The picture is kept in the build folder for a look.

#include "CVxAppCore.h"
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

    // The sheet lies in the middle of the plan area, in its grey.
    CVxMainRenderArea* area = window.GetRenderArea();
    const VxRECT sheet = VX_GetCore()->GetSheetRect();
    const QPoint centre =
        area->mapTo(&window, QPoint((sheet.left + sheet.right) / 2, (sheet.top + sheet.bottom) / 2));
    QCOMPARE(shot.pixelColor(centre), QColor(0xD4, 0xD4, 0xD4));
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
