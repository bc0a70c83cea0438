#pragma once
// An event loop whose time is a ManualClock: the test says how long it runs.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/error_convention.h"
#include "platform/event_loop.h"
#include "support/manual_clock.h"
#include "support/program_ended.h"

namespace veltrix {

/// REQUIRES that it outlives its timers.
class ManualLoop final : public EventLoop {
  public:
    explicit ManualLoop(ManualClock& clock) : clock_(clock) {}

    std::unique_ptr<Timer> MakeTimer(std::function<void()> handler) override {
        auto timer = std::make_unique<ManualTimer>(*this, std::move(handler));
        timers_.push_back(timer.get());
        return timer;
    }
    /// Runs each timer that is due at the present time once.
    void DoEvents() override { Run(0); }
    /// Advances the clock; no timer runs. Timers that came due meanwhile come late, once.
    void Sleep(int milliseconds) override { clock_.Advance(milliseconds); }
    void Quit() override { quit_ = true; }
    /// Throws ProgramEnded.
    [[noreturn]] void EndProgram() override { throw ProgramEnded{}; }

    /// Advances the clock by `milliseconds`, stopping on the way at each timer that comes due to run it, the
    /// earliest first and those of one moment in the order they were made. Returns early on Quit(), and when
    /// a handler slept beyond the end.
    void Run(std::int64_t milliseconds) {
        const std::int64_t end = clock_.Elapsed() + milliseconds;
        while (!quit_ && clock_.Elapsed() <= end) {
            ManualTimer* const timer = NextDue(end);
            clock_.Advance(std::max<std::int64_t>((timer ? timer->due : end) - clock_.Elapsed(), 0));
            if (!timer) return;
            Fire(*timer);
        }
    }
    bool HasQuit() const { return quit_; }

  private:
    struct ManualTimer final : Timer {
        ManualTimer(ManualLoop& owner, std::function<void()> run)
            : loop(owner), handler(std::make_shared<std::function<void()>>(std::move(run))) {}
        ~ManualTimer() override { std::erase(loop.timers_, this); }

        void SetInterval(int milliseconds) override { interval = milliseconds; }
        void SetEnabled(bool on) override {
            if (on && !enabled) due = loop.clock_.Elapsed() + interval;
            enabled = on;
        }
        bool Enabled() const override { return enabled; }

        ManualLoop& loop;
        std::shared_ptr<std::function<void()>> handler;
        std::int64_t interval = 0;
        std::int64_t due = 0;
        bool enabled = false;
    };

    /// The enabled timer due first and not after `end`, or null.
    ManualTimer* NextDue(std::int64_t end) const {
        ManualTimer* first = nullptr;
        for (ManualTimer* const timer : timers_) {
            if (!timer->enabled || timer->interval <= 0 || timer->due > end) continue;
            if (!first || timer->due < first->due) first = timer;
        }
        return first;
    }
    void Fire(ManualTimer& timer) {
        timer.due += timer.interval;
        if (timer.due <= clock_.Elapsed()) timer.due = clock_.Elapsed() + timer.interval;
        const auto handler = timer.handler;  // it may end its own timer
        SkippingErrors(*handler);
    }

    ManualClock& clock_;
    std::vector<ManualTimer*> timers_;
    bool quit_ = false;
};

}  // namespace veltrix
