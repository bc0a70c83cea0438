#include "platform/qt/qt_event_loop.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "common/failure.h"

namespace veltrix {

namespace {

/// A coarse timer may be 5 percent off; below this many milliseconds that would be felt.
constexpr int CoarseFrom = 500;

/// How many different texts are remembered as told.
constexpr std::size_t MostTold = 100;

class Event final : public QTimer {
  public:
    Event(QtEventLoop& loop, std::function<void()> handler) : handler_(std::move(handler)) {
        connect(this, &QTimer::timeout, this, [this, &loop] { Fire(loop); });
    }
    void Start() {
        if (wantedInterval <= 0) return;
        setTimerType(wantedInterval < CoarseFrom ? Qt::PreciseTimer : Qt::CoarseTimer);
        start(wantedInterval);
    }
    bool Running() const { return running_; }

    int wantedInterval = 0;
    bool enabled = false;

  private:
    void Fire(QtEventLoop& loop) {
        if (loop.TimersHeld()) return;
        // A new interval counts from the event behind which it was set.
        if (interval() != wantedInterval) Start();
        running_ = true;
        loop.RunHandler(handler_);
        running_ = false;
    }

    std::function<void()> handler_;
    bool running_ = false;
};

class QtTimer final : public Timer {
  public:
    QtTimer(QtEventLoop& loop, std::function<void()> handler)
        : event_(std::make_unique<Event>(loop, std::move(handler))) {}
    ~QtTimer() override {
        event_->stop();
        // A handler that ends its own timer still runs.
        if (event_->Running()) event_.release()->deleteLater();
    }

    void SetInterval(int milliseconds) override {
        event_->wantedInterval = milliseconds;
        if (event_->enabled && !event_->isActive()) event_->Start();
    }
    void SetEnabled(bool enabled) override {
        if (enabled == event_->enabled) return;
        event_->enabled = enabled;
        if (enabled)
            event_->Start();
        else
            event_->stop();
    }
    bool Enabled() const override { return event_->enabled; }

  private:
    std::unique_ptr<Event> event_;
};

}  // namespace

void QtEventLoop::Run() {
    if (!quit_) QCoreApplication::exec();
}

std::unique_ptr<Timer> QtEventLoop::MakeTimer(std::function<void()> handler) {
    return std::make_unique<QtTimer>(*this, std::move(handler));
}

void QtEventLoop::DoEvents() {
    QCoreApplication::processEvents();
}

void QtEventLoop::Sleep(int milliseconds) {
    if (milliseconds > 0) QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void QtEventLoop::Quit() {
    quit_ = true;
    QCoreApplication::exit(0);
}

void QtEventLoop::EndProgram() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    std::_Exit(1);
}

void QtEventLoop::RunHandler(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const Failure& failure) {
        std::string text = failure.Source() + ": " + failure.Description();
        if (told_.size() >= MostTold) told_.clear();
        if (!told_.contains(text)) std::cerr << "veltrix: " + text + "\n" << std::flush;
        told_.insert(std::move(text));
    }
}

}  // namespace veltrix
