// Plaveno: design homes and rooms, floor by floor.

#include "CVxAppHelperQt.h"
#include "CVxMainWindow.h"
#include "VxSessionSignals.h"

#include <QApplication>
#include <QIcon>
#include <QSplashScreen>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdio>
#include <unistd.h>

namespace {

// Qt gives up with an abort when it can't reach the X server, and the
// server refuses for a moment a connection that follows closely on another
// one's end, as when a killed instance is started again. Wait for it a
// little, and keep the connection that got through until Qt has its own:
// Qt then connects after a connection, not after an end.
struct SVxDisplayProbe
{
    SVxDisplayProbe()
    {
        const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
        const QByteArray display = qgetenv("DISPLAY");
        if (display.isEmpty() || (!platform.isEmpty() && !platform.startsWith("xcb"))) {
            reached = true;
            return;
        }
        for (int attempt = 0; attempt < 50 && !reached; ++attempt) {
            connection = xcb_connect(nullptr, nullptr);
            reached = xcb_connection_has_error(connection) == 0;
            if (!reached) {
                xcb_disconnect(connection);
                connection = nullptr;
                usleep(100 * 1000);
            }
        }
        if (!reached)
            fprintf(stderr, "plaveno: cannot connect to the display %s\n", display.constData());
    }
    ~SVxDisplayProbe() { Release(); }
    void Release()
    {
        if (connection)
            xcb_disconnect(connection);
        connection = nullptr;
    }
    SVxDisplayProbe(const SVxDisplayProbe&) = delete;
    SVxDisplayProbe& operator=(const SVxDisplayProbe&) = delete;

    xcb_connection_t* connection = nullptr;
    bool reached = false;
};

} // namespace

int main(int argc, char* argv[])
{
    VX_PrepareSessionEndSignals();
    SVxDisplayProbe display;
    if (!display.reached)
        return 1;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QT_WARNING_POP

    QApplication app(argc, argv);
    display.Release();
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    QCoreApplication::setOrganizationName(QStringLiteral("Plaveno"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PLAVENO_VERSION_TEXT));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/plaveno.png")));

    QSplashScreen splash(QPixmap(QStringLiteral(":/icons/splash.png")));
    splash.show();
    CVxAppHelperQt::SetSplashScreen(&splash);
    QApplication::processEvents();

    CVxMainWindow window;
    // Ended by the session during start-up: nothing more to show.
    if (CVxMainWindow::IsSessionEnding())
        return 0;
    window.show();
    splash.finish(&window);
    CVxAppHelperQt::SetSplashScreen(nullptr);
    // The session may have ended while the window came up, when no loop
    // was there to leave: the loop then ends at its first turn.
    if (CVxMainWindow::IsSessionEnding())
        return 0;
    QTimer::singleShot(0, &app, [] {
        if (CVxMainWindow::IsSessionEnding())
            QCoreApplication::exit(0);
    });
    return QApplication::exec();
}
