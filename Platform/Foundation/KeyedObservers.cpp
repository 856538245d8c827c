#include "KeyedObservers.h"

namespace quib {

ObservationToken KeyedObservers::add(const QString &key, Observer observer)
{
    const std::lock_guard lock(m_state->mutex);
    const quint64 number = ++m_state->lastNumber;
    m_state->entries.emplace(number, Entry{key, std::make_shared<Observer>(std::move(observer))});
    return ObservationToken([weak = std::weak_ptr<State>(m_state), number] {
        if (const auto state = weak.lock()) {
            const std::lock_guard inner(state->mutex);
            state->entries.erase(number);
        }
    });
}

void KeyedObservers::tell(const QString &key) const
{
    const auto state = m_state;
    // Looked up one by one: an observer may take another one away.
    for (quint64 number = 0;;) {
        std::shared_ptr<Observer> observer;
        {
            const std::lock_guard lock(state->mutex);
            auto next = state->entries.upper_bound(number);
            while (next != state->entries.end() && next->second.key != key) {
                ++next;
            }
            if (next == state->entries.end()) {
                return;
            }
            number = next->first;
            observer = next->second.observer;
        }
        (*observer)(key);
    }
}

} // namespace quib
