// plaveno-cli: the program's work on projects without a window.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxUtils.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>

namespace {

void PrintUsage(FILE* out)
{
    fputs("Usage: plaveno-cli [--help] [--version] VERB [ARGS...]\n"
          "\n"
          "Works on Plaveno projects without a display.\n"
          "\n"
          "Verbs:\n",
          out);
    for (const SVxCliVerb& verb : VxCliVerbs())
        fprintf(out, "  %-17s %s\n", verb.name, verb.summary);
    fputs("\n"
          "Options:\n"
          "  -h, --help     show this help and exit\n"
          "  -V, --version  show the program's version and exit\n"
          "\n"
          "'plaveno-cli VERB --help' describes a verb. Exit status: 0 done, 1 an\n"
          "error with a file, 2 wrong usage.\n",
          out);
}

const SVxCliVerb* FindVerb(const char* name)
{
    for (const SVxCliVerb& verb : VxCliVerbs())
        if (strcmp(verb.name, name) == 0)
            return &verb;
    return nullptr;
}

// Errors must stay one line on stderr for scripts; Qt's own notes about
// the session (runtime folders, fonts) are not the user's concern.
void QuietQtMessages(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg || qEnvironmentVariableIsSet("PLAVENO_CLI_QT_MESSAGES"))
        fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

// A FIFO or device named as a project or an output would hold the tool in
// open() until someone writes to it, or feed it without end; only regular
// files and folders are worked on (a folder gets its own message).
bool RefuseSpecialFiles(const std::vector<std::string>& args)
{
    for (const std::string& arg : args) {
        struct stat info
        {
        };
        if (arg.empty() || arg[0] == '-' || ::stat(arg.c_str(), &info) != 0)
            continue;
        if (!S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode)) {
            VxCliFail(QString::fromLocal8Bit(arg.c_str()), QStringLiteral("not a regular file"));
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2) {
        PrintUsage(stderr);
        return kVxCliUsage;
    }
    const char* first = argv[1];
    if (strcmp(first, "--help") == 0 || strcmp(first, "-h") == 0) {
        PrintUsage(stdout);
        return kVxCliOk;
    }
    if (strcmp(first, "--version") == 0 || strcmp(first, "-V") == 0) {
        printf("plaveno-cli %s\n", PLAVENO_VERSION_TEXT);
        return kVxCliOk;
    }
    const SVxCliVerb* verb = FindVerb(first);
    if (!verb) {
        fprintf(stderr, "plaveno-cli: unknown verb or option '%s'\nTry 'plaveno-cli --help'.\n", first);
        return kVxCliUsage;
    }
    const std::vector<std::string> args(argv + 2, argv + argc);
    if (VxCliWantsHelp(args, verb->name))
        return kVxCliOk;
    if (RefuseSpecialFiles(args))
        return kVxCliFailed;

    // Fonts and images need a GUI application; the tool must run where no
    // display is, so it picks the offscreen platform whatever the session has.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(QuietQtMessages);
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Plaveno"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PLAVENO_VERSION_TEXT));
    setlocale(LC_NUMERIC, "C");

    // Settings and unpacked project files go to a private folder that ends
    // with the run: a batch job neither reads nor changes the user's settings.
    // Folders that killed runs left behind go first; this run's own folder
    // carries its process id, so that a later run can tell it is dead.
    CVxUtils::RemoveTempFoldersOfDeadRuns();
    QTemporaryDir appData(CVxUtils::GetRunTempFolderTemplate().ToQString());
    if (!appData.isValid()) {
        fprintf(stderr, "plaveno-cli: can't create a temporary folder: %s\n",
                appData.errorString().toLocal8Bit().constData());
        return kVxCliFailed;
    }
    const CVxStringW root = CVxStringW(appData.path()) + L"/";
    static CVxAppHelperHeadless host(root + L"appdata/", root + L"docs/");
    host.CreateFolder(root + L"appdata/");
    host.CreateFolder(root + L"docs/");
    VX_SetAppHelperCallback(&host);
    VX_GetCore()->SetAppFolder(
        CVxAppCore::FindDataFolder(CVxStringW(QCoreApplication::applicationDirPath())));

    const int result = verb->handler(args);
    VX_GetCore()->GetProject().RemoveTempFiles();
    return result;
}
