#include "VxCrashHandler.h"

#include "VxTrace.h"
#include "VxUtf8.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Everything the handler reads is prepared beforehand: in a signal handler
// only calls that take no lock and allocate nothing may run.
char g_reportPath[4096];
char g_header[1024];
char g_exceptionText[1024];
volatile sig_atomic_t g_handling = 0;
bool g_installed = false;

constexpr int kFatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr size_t kLogTail = 4096;
constexpr int kMaxFrames = 64;
constexpr size_t kAltStackSize = 64 * 1024;

void WriteAll(int fd, const char* text, size_t length)
{
    while (length > 0) {
        const ssize_t written = write(fd, text, length);
        if (written <= 0)
            return;
        text += written;
        length -= static_cast<size_t>(written);
    }
}

void WriteText(int fd, const char* text)
{
    WriteAll(fd, text, strlen(text));
}

void WriteNumber(int fd, unsigned long value, unsigned base)
{
    char digits[32];
    int n = 0;
    do {
        digits[n++] = "0123456789abcdef"[value % base];
        value /= base;
    } while (value > 0 && n < 32);
    char text[34];
    int length = 0;
    if (base == 16) {
        text[length++] = '0';
        text[length++] = 'x';
    }
    while (n > 0)
        text[length++] = digits[--n];
    WriteAll(fd, text, static_cast<size_t>(length));
}

const char* SignalName(int signal)
{
    switch (signal) {
    case SIGSEGV:
        return "SIGSEGV (invalid memory access)";
    case SIGBUS:
        return "SIGBUS (bus error)";
    case SIGFPE:
        return "SIGFPE (arithmetic error)";
    case SIGILL:
        return "SIGILL (illegal instruction)";
    case SIGABRT:
        return "SIGABRT (aborted)";
    default:
        return "signal";
    }
}

// The end of the trace log, which is flushed after every line.
void WriteLogTail(int fd)
{
    FILE* log = CVxLogFile::GetStream();
    if (!log) {
        WriteText(fd, "\nNo trace log: start the program with -log to have one.\n");
        return;
    }
    const int logFd = fileno(log);
    struct stat info;
    if (logFd < 0 || fstat(logFd, &info) != 0)
        return;
    const off_t size = info.st_size;
    off_t offset = size > static_cast<off_t>(kLogTail) ? size - static_cast<off_t>(kLogTail) : 0;
    WriteText(fd, "\nLast lines of the trace log:\n");
    char buffer[1024];
    bool lineStart = offset == 0;
    while (offset < size) {
        const ssize_t n = pread(logFd, buffer, sizeof(buffer), offset);
        if (n <= 0)
            break;
        size_t from = 0;
        // A cut first line helps nobody.
        if (!lineStart) {
            while (from < static_cast<size_t>(n) && buffer[from] != '\n')
                ++from;
            if (from < static_cast<size_t>(n)) {
                ++from;
                lineStart = true;
            }
        }
        WriteAll(fd, buffer + from, static_cast<size_t>(n) - from);
        offset += n;
    }
}

void OnFatalSignal(int signal, siginfo_t* info, void*)
{
    // A fault inside the handler ends the process at once.
    if (!g_handling) {
        g_handling = 1;
        const int fd = open(g_reportPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (fd >= 0) {
            WriteText(fd, "Plaveno stopped on ");
            WriteText(fd, SignalName(signal));
            WriteText(fd, ", signal ");
            WriteNumber(fd, static_cast<unsigned long>(signal), 10);
            // Sent by another process, the signal tells no address.
            if (info && info->si_code <= 0) {
                WriteText(fd, " sent by process ");
                WriteNumber(fd, static_cast<unsigned long>(info->si_pid), 10);
            } else if (info && (signal == SIGSEGV || signal == SIGBUS)) {
                WriteText(fd, " at address ");
                WriteNumber(fd, reinterpret_cast<unsigned long>(info->si_addr), 16);
            }
            WriteText(fd, "\n");
            WriteText(fd, g_header);
            if (g_exceptionText[0]) {
                WriteText(fd, "Uncaught exception: ");
                WriteText(fd, g_exceptionText);
                WriteText(fd, "\n");
            }
            WriteText(fd, "\nBacktrace:\n");
            void* frames[kMaxFrames];
            const int count = backtrace(frames, kMaxFrames);
            backtrace_symbols_fd(frames, count, fd);
            WriteLogTail(fd);
            close(fd);
        }
    }
    // The default action then ends the process as it would have, with a
    // core dump where the system keeps them.
    struct sigaction fallback;
    memset(&fallback, 0, sizeof(fallback));
    fallback.sa_handler = SIG_DFL;
    sigemptyset(&fallback.sa_mask);
    sigaction(signal, &fallback, nullptr);
    raise(signal);
}

void OnTerminate()
{
    // Not in a signal handler yet: the exception's text can be taken.
    if (std::exception_ptr current = std::current_exception()) {
        try {
            std::rethrow_exception(current);
        } catch (const std::exception& error) {
            snprintf(g_exceptionText, sizeof(g_exceptionText), "%s", error.what());
        } catch (...) {
            snprintf(g_exceptionText, sizeof(g_exceptionText), "%s", "of an unknown type");
        }
    }
    abort();
}

void CopyPath(const CVxStringW& path)
{
    const CVxStringA native = VX_StringToUTF8(path);
    snprintf(g_reportPath, sizeof(g_reportPath), "%s", native.c_str());
}

} // namespace

CVxStringW VX_GetCrashFolder(const CVxStringW& appDataFolder)
{
    return appDataFolder + L"crash/";
}

void VX_InstallCrashHandler(const CVxStringW& crashFolder)
{
    QDir().mkpath(crashFolder.ToQString());
    const QDateTime now = QDateTime::currentDateTime();
    CopyPath(crashFolder + CVxStringW(QStringLiteral("crash-%1-%2.txt")
                                          .arg(now.toString(QStringLiteral("yyyyMMdd-HHmmss")))
                                          .arg(QCoreApplication::applicationPid())));
    if (g_installed)
        return;
    g_installed = true;
    snprintf(g_header, sizeof(g_header), "Version: %s\nStarted: %s\nProcess: %lld\n", PLAVENO_VERSION_TEXT,
             now.toString(Qt::ISODate).toUtf8().constData(),
             static_cast<long long>(QCoreApplication::applicationPid()));

    // The first backtrace loads the unwinder, which allocates: better here
    // than in the handler.
    void* frames[2];
    backtrace(frames, 2);

    // A stack overflow leaves no stack for the handler but its own.
    static char* s_altStack = static_cast<char*>(malloc(kAltStackSize));
    stack_t stack;
    memset(&stack, 0, sizeof(stack));
    stack.ss_sp = s_altStack;
    stack.ss_size = kAltStackSize;
    sigaltstack(&stack, nullptr);

    struct sigaction action;
    memset(&action, 0, sizeof(action));
    action.sa_sigaction = OnFatalSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (int signal : kFatalSignals)
        sigaction(signal, &action, nullptr);
    std::set_terminate(OnTerminate);
}

std::vector<SVxCrashReport> VX_ListCrashReports(const CVxStringW& crashFolder)
{
    std::vector<SVxCrashReport> reports;
    const QFileInfoList files =
        QDir(crashFolder.ToQString()).entryInfoList({QStringLiteral("crash-*.txt")}, QDir::Files);
    for (const QFileInfo& file : files) {
        SVxCrashReport report;
        report.path = CVxStringW(file.absoluteFilePath());
        report.time = file.lastModified().toSecsSinceEpoch();
        QFile text(file.absoluteFilePath());
        if (text.open(QIODevice::ReadOnly))
            report.title = CVxStringW(QString::fromUtf8(text.readLine(512)).trimmed());
        reports.push_back(report);
    }
    std::sort(reports.begin(), reports.end(), [](const SVxCrashReport& a, const SVxCrashReport& b) {
        return a.time != b.time ? a.time > b.time : a.path.ToQString() > b.path.ToQString();
    });
    return reports;
}
