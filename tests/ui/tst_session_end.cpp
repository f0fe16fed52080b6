// The program ends as a desktop session ends it at logout, with SIGTERM or
// SIGHUP: it asks nothing, keeps unsaved work for recovery at the next start
// and writes its settings.

#include "CVxAppCore.h"
#include "CVxAppHelperQt.h"
#include "CVxMainWindow.h"
#include "CVxProject.h"
#include "CVxUtils.h"
#include "VxUiTestEnv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <unistd.h>

namespace {

CVxUiTestHome* g_home = nullptr;

// Counts the questions instead of showing them.
class CVxCountingHelper : public CVxAppHelperQt
{
public:
    int MsgBox(const CVxStringW& /*text*/, const CVxStringW& /*caption*/, unsigned /*flags*/,
               void* /*parent*/, EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        ++asked;
        return VX_MBR_CANCEL;
    }
    int asked = 0;
};

} // namespace

class TestSessionEnd : public QObject
{
    Q_OBJECT
private slots:
    void modifiedWorkGoesToTheAutoSaveFile();
    void programEndsKeepingRecoveryAndSettings();
};

void TestSessionEnd::modifiedWorkGoesToTheAutoSaveFile()
{
    const QString config = g_home->AppDataFolder() + QStringLiteral("config.ini");
    IVxAppHelperCallback* previous = nullptr;
    CVxCountingHelper helper;
    CVxStringW autoSave;
    {
        CVxMainWindow window;
        window.show();
        previous = VX_GetAppHelper();
        VX_SetAppHelperCallback(&helper);
        CVxProject& project = VX_GetCore()->GetProject();
        project.m_width = 777;
        project.m_modified = true;
        autoSave = CVxUtils::GetAutoSaveFile();
        QVERIFY(!QFile::exists(autoSave.ToQString()));
        QFile::remove(config);
        kill(getpid(), SIGTERM);
        QTRY_VERIFY(!window.isVisible());
        QCOMPARE(helper.asked, 0);
    }
    VX_SetAppHelperCallback(previous);
    QVERIFY(VxReadFile(config).contains("\r\nLastVersion=1034\r\n"));
    CVxProject recovered;
    QVERIFY(recovered.LoadFromFile(autoSave, nullptr, nullptr, false, 0));
    recovered.RemoveTempFiles();
    QCOMPARE(recovered.m_width, 777.0);
    QFile::remove(autoSave.ToQString());
}

void TestSessionEnd::programEndsKeepingRecoveryAndSettings()
{
    // The program itself, with a home of its own: a fresh account.
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QString data = home.path() + QStringLiteral("/data/Plaveno/Plaveno/");
    QVERIFY(QDir().mkpath(data));
    // Work that a run which ended badly left: the start asks about it.
    QVERIFY(QFile::copy(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp"),
                        data + QStringLiteral("PVSave1.pvp")));
    const QProcessEnvironment environment = VxFreshHomeEnvironment(home.path());
    const QString log = home.path() + QStringLiteral("/Documents/Plaveno/pverrlog.txt");

    // The second start finds the work the first one kept, and keeps it too.
    for (int signal : {SIGTERM, SIGHUP}) {
        QFile::remove(log);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(PLAVENO_BINARY), {QStringLiteral("-log")});
        QVERIFY(program.waitForStarted());
        const qint64 pid = program.processId();
        QTRY_VERIFY_WITH_TIMEOUT(VxReadFile(log).contains("StartTimer - before checking for autosave"),
                                 30000);
        QFile::remove(data + QStringLiteral("config.ini"));
        kill(pid_t(pid), signal);
        QVERIFY(program.waitForFinished(5000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(VxReadFile(data + QStringLiteral("config.ini")).contains("\r\nLastVersion=1034\r\n"));
        // A start takes the file over as its own; the end leaves it.
        QVERIFY(QFile::exists(data + QStringLiteral("PVSave%1.pvp").arg(pid)));
        QCOMPARE(QDir(data).entryList({QStringLiteral("PVSave*.pvp")}).size(), 1);
    }
}

int main(int argc, char** argv)
{
    CVxUiTestHome home;
    g_home = &home;
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    TestSessionEnd test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_session_end.moc"
