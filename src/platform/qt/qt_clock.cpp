#include "platform/qt/qt_clock.h"

#include <QDateTime>
#include <chrono>

namespace veltrix {

DateTime LocalDateTime(std::int64_t milliseconds) {
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(milliseconds);
    const qint64 day = QDate(1899, 12, 30).daysTo(local.date());
    return static_cast<DateTime>(day) + local.time().msecsSinceStartOfDay() / (SecondsPerDay * 1000);
}

DateTime QtClock::Now() {
    return LocalDateTime(QDateTime::currentMSecsSinceEpoch());
}

std::int32_t QtClock::timeGetTime() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count();
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(count));
}

}  // namespace veltrix
