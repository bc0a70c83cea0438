#include "window/refresher.h"

#include <utility>

namespace veltrix {

namespace {

constexpr int FrameMilliseconds = 16;

}  // namespace

Refresher::Refresher() {
    frame_.setSingleShot(true);
    frame_.setInterval(FrameMilliseconds);
    frame_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&frame_, &QTimer::timeout, &frame_, [this] { Flush(); });
}

std::size_t Refresher::Add(std::function<void()> refresh) {
    entries_.push_back({std::move(refresh)});
    Want(entries_.size() - 1);
    return entries_.size() - 1;
}

void Refresher::Append(std::size_t number, std::function<void()> more) {
    std::function<void()>& refresh = entries_[number].refresh;
    refresh = [first = std::move(refresh), more = std::move(more)] {
        first();
        more();
    };
    Want(number);
}

void Refresher::Want(std::size_t number) {
    Entry& entry = entries_[number];
    if (entry.wanted) return;
    entry.wanted = true;
    wanted_.push_back(number);
    if (!frame_.isActive()) frame_.start();
}

void Refresher::WantAll() {
    for (std::size_t number = 0; number < entries_.size(); ++number) Want(number);
}

void Refresher::Flush() {
    frame_.stop();
    for (const std::size_t number : std::exchange(wanted_, {})) {
        entries_[number].wanted = false;
        entries_[number].refresh();
    }
}

}  // namespace veltrix
