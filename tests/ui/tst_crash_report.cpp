// A run that dies leaves a report beside the auto-save files; the next start
// says so once, and the Help menu's dialogue shows, copies and deletes it.

#include "CVxCrashDumpsDlg.h"
#include "CVxMainStatusBar.h"
#include "CVxMainWindow.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

CVxUiTestHome* g_home = nullptr;

} // namespace

class TestCrashReport : public QObject
{
    Q_OBJECT
private slots:
    void fatalSignalLeavesReportAndNextStartSaysSo();
};

void TestCrashReport::fatalSignalLeavesReportAndNextStartSaysSo()
{
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QProcessEnvironment environment = VxFreshHomeEnvironment(home.path());
    const QString log = home.path() + QStringLiteral("/Documents/Plaveno/pverrlog.txt");
    const QString crashFolder = home.path() + QStringLiteral("/data/Plaveno/Plaveno/crash/");

    // The program itself, hit by a fault as it waits for the user.
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(PLAVENO_BINARY), {QStringLiteral("-log")});
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(VxReadFile(log).contains("StartTimer - before checking for autosave"), 30000);
    kill(pid_t(program.processId()), SIGSEGV);
    QVERIFY(program.waitForFinished(10000));
    QCOMPARE(program.exitStatus(), QProcess::CrashExit);

    const QStringList reports = QDir(crashFolder).entryList({QStringLiteral("crash-*.txt")});
    QCOMPARE(reports.size(), 1);
    const QByteArray report = VxReadFile(crashFolder + reports.first());
    QVERIFY2(report.startsWith("Plaveno stopped on SIGSEGV"), report.constData());
    QVERIFY(report.contains("\nVersion: " PLAVENO_VERSION_TEXT "\n"));
    // Frames of the program, by name.
    QVERIFY2(report.contains("\nBacktrace:\n") && report.contains("plaveno("), report.constData());
    QVERIFY(report.contains("StartTimer - before checking for autosave"));

    // The next start, in this process, finds the report and says so once.
    const QString ownFolder = g_home->AppDataFolder() + QStringLiteral("crash/");
    QVERIFY(QDir().mkpath(ownFolder));
    QVERIFY(QFile::copy(crashFolder + reports.first(), ownFolder + reports.first()));
    const QString notice = QStringLiteral("stopped unexpectedly last time");
    {
        CVxMainWindow window;
        window.show();
        QTRY_VERIFY(window.GetStatusBar()->GetMessage().ToQString().contains(notice));

        CVxCrashDumpsDlg dialog{CVxStringW(ownFolder)};
        QCOMPARE(dialog.GetList()->count(), 1);
        QVERIFY(dialog.GetText()->toPlainText().startsWith(QStringLiteral("Plaveno stopped on SIGSEGV")));
        dialog.OnCopy();
        QCOMPARE(QGuiApplication::clipboard()->text(), dialog.GetText()->toPlainText());
        dialog.OnDelete();
        QCOMPARE(dialog.GetList()->count(), 0);
        QVERIFY(QDir(ownFolder).entryList(QDir::Files).isEmpty());
    }
    CVxMainWindow again;
    again.show();
    QTest::qWait(600);
    QVERIFY(!again.GetStatusBar()->GetMessage().ToQString().contains(notice));
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    TestCrashReport test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crash_report.moc"
