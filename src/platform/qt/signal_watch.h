#pragma once
// The signals that ask the program to end.

#include <array>
#include <csignal>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace veltrix {

/// Runs a handler on the event loop for each interrupt, terminate or hang-up signal. One object at a time.
/// From its end on the signals are ignored: the program is ending, and a second signal must not cut that
/// short.
class SignalWatch {
  public:
    explicit SignalWatch(std::function<void()> handler);
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

  private:
    static constexpr std::array<int, 3> Watched{SIGINT, SIGTERM, SIGHUP};

    int readEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace veltrix
