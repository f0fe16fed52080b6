// A language chosen in the settings shows in the window.

#include "CVxLocalize.h"
#include "CVxMainStatusBar.h"
#include "CVxMainWindow.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QFile>
#include <QMenuBar>
#include <QTest>

class TestLanguage : public QObject
{
    Q_OBJECT
private slots:
    void germanMenusFromTheSettings();
};

void TestLanguage::germanMenusFromTheSettings()
{
    CVxMainWindow window;
    QCOMPARE(VX_GetLoc()->GetSelectedLanguageID(), 1031);
    QStringList titles;
    for (QAction* action : window.menuBar()->actions())
        titles << action->text().remove(QLatin1Char('&'));
    QCOMPARE(titles,
             (QStringList{QStringLiteral("Projekt"), QStringLiteral("Bearbeiten"), QStringLiteral("Geschoss"),
                          QStringLiteral("Objekte"), QStringLiteral("Ansicht"),
                          QStringLiteral("Einstellungen"), QStringLiteral("Hilfe")}));
    QCOMPARE(window.windowTitle(), QStringLiteral("Plaveno - [unbenannt]"));
    QCOMPARE(window.GetStatusBar()->GetLeftText().ToQString(),
             QStringLiteral("Zum Zoomen Strg + Mausrad verwenden."));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    QDir().mkpath(home.AppDataFolder());
    QFile file(home.AppDataFolder() + QStringLiteral("config.ini"));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write("\xEF\xBB\xBF\r\n[Options]\r\nLanguage=1031\r\n");
    file.close();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    TestLanguage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_language.moc"
