#pragma once
// The one event loop that all timers and sockets of a station run on.

#include <functional>
#include <memory>

namespace veltrix {

/// A periodic timer of the event loop. It is off and has no interval when made. An event that comes due while
/// a handler runs comes late, once: events do not pile up. A handler may change its own timer.
class Timer {
  public:
    virtual ~Timer() = default;
    /// Milliseconds between two events, above 0. Takes effect from the next event on.
    virtual void SetInterval(int milliseconds) = 0;
    /// Switches the events on or off. Switching on starts a whole interval.
    virtual void SetEnabled(bool enabled) = 0;
    /// Whether the events are on.
    virtual bool Enabled() const = 0;
};

/// The loop of the one thread on which a station runs.
class EventLoop {
  public:
    virtual ~EventLoop() = default;

    /// A timer whose events run `handler`. A Failure that leaves a handler ends that handler only; it is told
    /// once on standard error.
    virtual std::unique_ptr<Timer> MakeTimer(std::function<void()> handler) = 0;

    /// Runs the events that are waiting now, then returns. May run any handler, the caller's own included.
    virtual void DoEvents() = 0;

    /// Blocks the thread; no event runs meanwhile.
    virtual void Sleep(int milliseconds) = 0;

    /// Ends the loop once the present handler has returned.
    virtual void Quit() = 0;

    /// Ends the program at once, without any of its closing steps; does not return. What is stored is safe at
    /// any moment.
    virtual void EndProgram() = 0;
};

}  // namespace veltrix
