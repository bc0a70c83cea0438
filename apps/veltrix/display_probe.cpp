#include "display_probe.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>

#include <cerrno>
#include <csignal>

namespace veltrix {

namespace {

constexpr unsigned PatienceSeconds = 10;

/// In the child: ends with 0 where Qt comes up, else by Qt's own abort or the alarm.
[[noreturn]] void TryToOpen(char* program) {
    ::prctl(PR_SET_DUMPABLE, 0);  // the abort is expected, so no core file of it
    std::signal(SIGALRM, SIG_DFL);
    ::alarm(PatienceSeconds);
    const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, stream);
    // These belong to the window that comes later.
    for (const char* const name : {"SESSION_MANAGER", "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"})
        qunsetenv(name);
    char* arguments[] = {program, nullptr};
    int count = 1;
    const QGuiApplication application(count, arguments);
    ::_exit(0);
}

}  // namespace

DisplayState ProbeDisplay(char* program) {
    bool isNamed = false;
    for (const char* const name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        isNamed = isNamed || !qEnvironmentVariableIsEmpty(name);
    if (!isNamed) return DisplayState::None;
    const pid_t child = ::fork();
    if (child == 0) TryToOpen(program);
    if (child < 0) return DisplayState::Closed;
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return DisplayState::Closed;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? DisplayState::Open : DisplayState::Closed;
}

}  // namespace veltrix
