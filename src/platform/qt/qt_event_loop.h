#pragma once
// The event loop of a running program.

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/event_loop.h"

namespace veltrix {

/// All events of the program on the loop of its QCoreApplication. REQUIRES that the application object stands
/// as long as this one, and that the timers made here do not outlive this one.
class QtEventLoop final : public EventLoop {
  public:
    /// Runs until Quit(); returns at once when that was called before.
    void Run();

    std::unique_ptr<Timer> MakeTimer(std::function<void()> handler) override;
    void DoEvents() override;
    void Sleep(int milliseconds) override;
    void Quit() override;
    [[noreturn]] void EndProgram() override;

    /// Runs a handler of any event; a Failure that leaves it is told on standard error, once for equal texts.
    void RunHandler(const std::function<void()>& handler);

    /// While one stands, timers of the loop whose time comes do not fire; they do not make up for it
    /// afterwards.
    class HoldTimers {
      public:
        explicit HoldTimers(QtEventLoop& loop) : loop_(loop) { ++loop_.holds_; }
        ~HoldTimers() { --loop_.holds_; }
        HoldTimers(const HoldTimers&) = delete;
        HoldTimers& operator=(const HoldTimers&) = delete;

      private:
        QtEventLoop& loop_;
    };
    /// Whether one stands.
    bool TimersHeld() const { return holds_ > 0; }

  private:
    int holds_ = 0;
    std::set<std::string> told_;
    bool quit_ = false;
};

}  // namespace veltrix
