#pragma once

#include "Clock.h"

#include <QDate>

#include <functional>
#include <memory>

namespace quib {

/// Tells when the day of the local calendar has become another: at midnight, and soon after a sleep, a change of the
/// clock or of the time zone. Owned by what shows days; the callback comes on the queue that made the watch.
class DayWatch
{
public:
    explicit DayWatch(std::function<void()> dayDidChange);

    /// The day that was told last.
    [[nodiscard]] QDate day() const { return m_day; }

private:
    void scheduleNext();
    void look();

    std::function<void()> m_dayDidChange;
    QDate m_day;
    std::unique_ptr<TimerToken> m_timer;
};

} // namespace quib
