#pragma once

#include "NSUserDefaults.h"

/// A few small values that all devices of a user share. Kept in a file of the profile, so that they are there without a
/// network; what carries them between devices delivers through receiveValues(). Confined to the queue that made it.
class NSUbiquitousKeyValueStore
{
public:
    /// Why values changed, as the notification tells it.
    enum ChangeReason
    {
        ServerChange = 0,         ///< another device, or another process of this one
        InitialSyncChange = 1,    ///< the first delivery on this device
        QuotaViolationChange = 2, ///< a value was not taken: the store is full
        AccountChange = 3,        ///< another account, with other values
    };
    struct ChangeNotification
    {
        int reason = ServerChange;
        QStringList changedKeys;
    };
    using Observer = std::function<void(const ChangeNotification &notification)>;

    /// Bounds of the store. Units: keys; bytes of the property list.
    static constexpr qsizetype kMaximumKeys = 1024;
    static constexpr qsizetype kMaximumSize = 1024 * 1024;

    /// The store in the profile's preferences folder.
    NSUbiquitousKeyValueStore();
    /// A store in a file of its own.
    explicit NSUbiquitousKeyValueStore(std::shared_ptr<NSUserDefaults> file);
    NSUbiquitousKeyValueStore(const NSUbiquitousKeyValueStore &) = delete;
    NSUbiquitousKeyValueStore &operator=(const NSUbiquitousKeyValueStore &) = delete;

    [[nodiscard]] quib::PropertyValue objectForKey(const QString &key) const { return m_file->objectForKey(key); }
    [[nodiscard]] bool boolForKey(const QString &key) const { return m_file->boolForKey(key); }
    /// Sets a value for all devices. Its own change is not announced here. Where the store would grow beyond its bounds
    /// the old value stays, and a quota notification names the key.
    void setObject(const quib::PropertyValue &value, const QString &forKey);
    void setBool(bool value, const QString &forKey) { setObject(quib::PropertyValue(value), forKey); }
    /// Writes what was set and announces, as a server change, what other processes set meanwhile.
    [[nodiscard]] bool synchronize(NSError *error);

    /// Takes values over from elsewhere and announces those that differ; a null value removes the key. A quota reason
    /// changes nothing and announces the keys.
    void receiveValues(const quib::PropertyValue::Dictionary &values, int reason);

    [[nodiscard]] quib::ObservationToken addObserver(Observer observer) { return m_observers.add(std::move(observer)); }

private:
    using Dictionary = quib::PropertyValue::Dictionary;
    [[nodiscard]] Dictionary values() const;

    std::shared_ptr<NSUserDefaults> m_file;
    quib::ObserverList<const ChangeNotification &> m_observers;
};
