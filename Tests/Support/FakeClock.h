#pragma once

#include <Foundation/Clock.h>

#include <map>
#include <utility>

namespace quib::tests {

/// A clock that stands still until a test moves it. Installed as the shared clock while it lives. One thread only.
/// Timers fire inside advance(), in the order in which they fall due; timers of one instant in the order of their
/// making.
class FakeClock final : public Clock
{
public:
    FakeClock();
    ~FakeClock() override;
    FakeClock(const FakeClock &) = delete;
    FakeClock &operator=(const FakeClock &) = delete;

    [[nodiscard]] NSDate now() override { return m_now; }
    [[nodiscard]] std::unique_ptr<TimerToken> schedule(double seconds, std::function<void()> callback) override;

    /// Jumps to an instant without firing anything.
    void setNow(NSDate now) { m_now = now; }
    /// Moves on, firing each timer at its own instant; timers that callbacks schedule fire too when they fall due.
    void advance(double seconds);
    [[nodiscard]] size_t waitingTimers() const { return m_timers->size(); }

private:
    using Key = std::pair<double, quint64>;
    using Timers = std::map<Key, std::function<void()>>;
    class Token;

    NSDate m_now = NSDate::dateWithTimeIntervalSince1970(1'500'000'000);
    quint64 m_lastTimer = 0;
    std::shared_ptr<Timers> m_timers = std::make_shared<Timers>();
};

} // namespace quib::tests
