// At a first start the window speaks the system's language at once, and the
// choice is kept for the next start.

#include "CVxLocalize.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QFile>
#include <QMenuBar>
#include <QTest>

namespace {
CVxUiTestHome* g_home = nullptr;
}

class TestLanguageFirstStart : public QObject
{
    Q_OBJECT
private slots:
    void germanSystemGivesGermanWindowAtOnce();
};

void TestLanguageFirstStart::germanSystemGivesGermanWindowAtOnce()
{
    const QString config = g_home->AppDataFolder() + QStringLiteral("config.ini");
    QVERIFY(!QFile::exists(config));
    {
        CVxMainWindow window;
        QVERIFY(window.IsFirstStart());
        QCOMPARE(VX_GetLoc()->GetSelectedLanguageID(), 1031);
        QCOMPARE(window.menuBar()->actions().first()->text().remove(QLatin1Char('&')),
                 QStringLiteral("Projekt"));
        QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [unbenannt]"));
    }
    QFile file(config);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("\r\nLanguage=1031\r\n"));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    // The system's language comes from the environment, as on a desktop.
    qunsetenv("LANGUAGE");
    qunsetenv("LC_ALL");
    qunsetenv("LC_MESSAGES");
    qputenv("LANG", "de_DE.UTF-8");
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    TestLanguageFirstStart test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_language_first_start.moc"
