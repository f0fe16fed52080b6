#include "VxSessionSignals.h"

#include <QObject>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler may do almost nothing; it writes one byte into a pipe
// whose other end the event loop watches.
int g_pipe[2] = {-1, -1};
constexpr int kSignals[] = {SIGTERM, SIGHUP};

void OnSignal(int signal)
{
    const int saved = errno;
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = write(g_pipe[1], &byte, 1);
    errno = saved;
}

void SetHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

} // namespace

void VX_PrepareSessionEndSignals()
{
    if (g_pipe[0] >= 0)
        return;
    if (pipe(g_pipe) != 0)
        return;
    for (int fd : g_pipe) {
        fcntl(fd, F_SETFD, FD_CLOEXEC);
        fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    }
    SetHandler(OnSignal);
}

void VX_CallOnSessionEndSignals(QObject* context, std::function<void()> onEnd)
{
    VX_PrepareSessionEndSignals();
    if (g_pipe[0] < 0)
        return;
    // A signal that came before stands in the pipe and is delivered as soon
    // as the loop runs.
    auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [onEnd = std::move(onEnd)] {
        char bytes[16];
        while (read(g_pipe[0], bytes, sizeof(bytes)) > 0) {
        }
        onEnd();
    });
    QObject::connect(notifier, &QObject::destroyed, [] { SetHandler(SIG_DFL); });
    SetHandler(OnSignal);
}
