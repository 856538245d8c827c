#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace quib {

/// A subscription; destroying it, or reset(), ends it. Movable, not copyable.
class ObservationToken
{
public:
    ObservationToken() = default;
    explicit ObservationToken(std::function<void()> cancel)
        : m_cancel(std::move(cancel))
    {
    }
    ObservationToken(ObservationToken &&other) noexcept
        : m_cancel(std::exchange(other.m_cancel, nullptr))
    {
    }
    ObservationToken &operator=(ObservationToken &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_cancel = std::exchange(other.m_cancel, nullptr);
        }
        return *this;
    }
    ~ObservationToken() { reset(); }
    void reset()
    {
        if (const auto cancel = std::exchange(m_cancel, nullptr)) {
            cancel();
        }
    }

private:
    std::function<void()> m_cancel;
};

/// The observers of one event, told in the order in which they subscribed. Confined to its owner's queue. Observers may
/// subscribe and unsubscribe while being told; the list may die meanwhile.
template <typename... Arguments> class ObserverList
{
public:
    using Callback = std::function<void(Arguments...)>;

    [[nodiscard]] ObservationToken add(Callback callback)
    {
        const auto key = ++m_state->lastKey;
        m_state->callbacks.emplace(key, std::make_shared<Callback>(std::move(callback)));
        return ObservationToken([weak = std::weak_ptr<State>(m_state), key] {
            if (const auto state = weak.lock()) {
                state->callbacks.erase(key);
            }
        });
    }
    void notify(Arguments... arguments) const
    {
        const auto state = m_state;
        for (unsigned long key = 0;;) {
            const auto next = state->callbacks.upper_bound(key);
            if (next == state->callbacks.end()) {
                return;
            }
            key = next->first;
            const auto callback = next->second;
            (*callback)(arguments...);
        }
    }
    [[nodiscard]] bool isEmpty() const { return m_state->callbacks.empty(); }

private:
    struct State
    {
        unsigned long lastKey = 0;
        std::map<unsigned long, std::shared_ptr<Callback>> callbacks;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace quib
