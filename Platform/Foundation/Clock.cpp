#include "Clock.h"

#include <QTimer>

#include <atomic>
#include <chrono>
#include <cmath>

namespace quib {

namespace {

class SystemTimer final : public TimerToken
{
public:
    SystemTimer(double seconds, std::function<void()> callback)
        : m_callback(std::move(callback))
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            // The callback may destroy this token.
            const auto call = std::exchange(m_callback, nullptr);
            call();
        });
        m_timer.start(std::chrono::milliseconds(static_cast<qint64>(std::ceil(std::max(0.0, seconds) * 1000))));
    }
    void invalidate() override
    {
        m_timer.stop();
        m_callback = nullptr;
    }
    [[nodiscard]] bool isValid() const override { return m_callback != nullptr; }

private:
    QTimer m_timer;
    std::function<void()> m_callback;
};

class SystemClock final : public Clock
{
public:
    NSDate now() override
    {
        using namespace std::chrono;
        const auto micros = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
        return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(micros) / 1e6);
    }
    std::unique_ptr<TimerToken> schedule(double seconds, std::function<void()> callback) override
    {
        return std::make_unique<SystemTimer>(seconds, std::move(callback));
    }
};

std::atomic<Clock *> &installedClock()
{
    static std::atomic<Clock *> installed = nullptr;
    return installed;
}

} // namespace

Clock &Clock::shared()
{
    static SystemClock system;
    Clock *installed = installedClock().load();
    return installed != nullptr ? *installed : system;
}

void Clock::setShared(Clock *clock)
{
    installedClock().store(clock);
}

} // namespace quib
