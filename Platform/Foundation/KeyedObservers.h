#pragma once

#include "NotificationCenter.h"

#include <QString>

#include <map>
#include <mutex>

namespace quib {

/// Observers of named values. Any thread may subscribe, leave and tell; observers are called on the thread that tells,
/// without a lock held, in the order in which they subscribed. One that leaves while another thread tells may be called
/// once more.
class KeyedObservers
{
public:
    using Observer = std::function<void(const QString &key)>;

    [[nodiscard]] ObservationToken add(const QString &key, Observer observer);
    void tell(const QString &key) const;

private:
    struct Entry
    {
        QString key;
        std::shared_ptr<Observer> observer;
    };
    /// Apart from this object, so that a token may outlive it.
    struct State
    {
        std::mutex mutex;
        quint64 lastNumber = 0;
        std::map<quint64, Entry> entries;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace quib
