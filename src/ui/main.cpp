// Plaveno: design homes and rooms, floor by floor.

#include "CVxAppHelperQt.h"
#include "CVxMainWindow.h"

#include <QApplication>
#include <QIcon>
#include <QSplashScreen>

int main(int argc, char* argv[])
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QT_WARNING_POP

    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    QCoreApplication::setOrganizationName(QStringLiteral("Plaveno"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PLAVENO_VERSION_TEXT));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/plaveno.png")));

    QSplashScreen splash(QPixmap(QStringLiteral(":/icons/splash.png")));
    splash.show();
    CVxAppHelperQt::SetSplashScreen(&splash);
    QApplication::processEvents();

    CVxMainWindow window;
    window.show();
    splash.finish(&window);
    CVxAppHelperQt::SetSplashScreen(nullptr);
    return QApplication::exec();
}
