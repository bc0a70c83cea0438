#include "platform/qt/signal_watch.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <system_error>
#include <utility>

namespace veltrix {

namespace {

/// Where the signal handler writes: a handler has no other way to its object.
std::atomic<int> writeEnd = -1;

void OnSignal(int) {
    const int keptErrno = errno;
    const char mark = 1;
    // A full pipe has told the loop already.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &mark, 1);
    errno = keptErrno;
}

}  // namespace

SignalWatch::SignalWatch(std::function<void()> handler) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category());
    readEnd_ = ends[0];
    writeEnd = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this, run = std::move(handler)] {
        std::array<char, 64> marks;
        while (::read(readEnd_, marks.data(), marks.size()) > 0) continue;
        run();
    });
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (const int signal : Watched) ::sigaction(signal, &action, nullptr);
}

SignalWatch::~SignalWatch() {
    for (const int signal : Watched) ::signal(signal, SIG_IGN);
    notifier_.reset();
    ::close(readEnd_);
    ::close(writeEnd.exchange(-1));
}

}  // namespace veltrix
