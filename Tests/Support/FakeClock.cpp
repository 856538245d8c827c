#include "FakeClock.h"

#include <algorithm>

namespace quib::tests {

class FakeClock::Token final : public TimerToken
{
public:
    Token(std::weak_ptr<Timers> timers, Key key)
        : m_timers(std::move(timers))
        , m_key(key)
    {
    }
    ~Token() override { cancel(); }
    void invalidate() override { cancel(); }
    [[nodiscard]] bool isValid() const override
    {
        const auto timers = m_timers.lock();
        return timers && timers->contains(m_key);
    }

private:
    void cancel()
    {
        if (const auto timers = m_timers.lock()) {
            timers->erase(m_key);
        }
    }

    std::weak_ptr<Timers> m_timers;
    Key m_key;
};

FakeClock::FakeClock()
{
    setShared(this);
}

FakeClock::~FakeClock()
{
    setShared(nullptr);
}

std::unique_ptr<TimerToken> FakeClock::schedule(double seconds, std::function<void()> callback)
{
    const Key key{m_now.timeIntervalSince1970() + std::max(0.0, seconds), ++m_lastTimer};
    m_timers->emplace(key, std::move(callback));
    return std::make_unique<Token>(m_timers, key);
}

void FakeClock::advance(double seconds)
{
    const double target = m_now.timeIntervalSince1970() + seconds;
    while (!m_timers->empty() && m_timers->begin()->first.first <= target) {
        auto due = m_timers->extract(m_timers->begin());
        m_now = NSDate::dateWithTimeIntervalSince1970(std::max(m_now.timeIntervalSince1970(), due.key().first));
        due.mapped()();
    }
    m_now = NSDate::dateWithTimeIntervalSince1970(target);
}

} // namespace quib::tests
