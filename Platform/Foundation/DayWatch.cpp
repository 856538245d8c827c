#include "DayWatch.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quib {

namespace {

/// Timers stand still while the machine sleeps, and nobody tells of a clock that was set.
constexpr double kLongestWait = 600;

[[nodiscard]] QDateTime localNow()
{
    return QDateTime::fromMSecsSinceEpoch(
        static_cast<qint64>(std::floor(Clock::shared().now().timeIntervalSince1970() * 1000)));
}

} // namespace

DayWatch::DayWatch(std::function<void()> dayDidChange)
    : m_dayDidChange(std::move(dayDidChange))
    , m_day(localNow().date())
{
    scheduleNext();
}

void DayWatch::scheduleNext()
{
    const QDateTime now = localNow();
    const double untilMidnight = static_cast<double>(now.msecsTo(now.date().addDays(1).startOfDay())) / 1000;
    m_timer = Clock::shared().schedule(std::clamp(untilMidnight, 1.0, kLongestWait), [this] { look(); });
}

void DayWatch::look()
{
    const QDate today = localNow().date();
    const bool isChanged = std::exchange(m_day, today) != today;
    scheduleNext();
    if (isChanged) {
        m_dayDidChange(); // the last word: the watch may not outlive it
    }
}

} // namespace quib
