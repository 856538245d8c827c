#pragma once

#include "PropertyList.h"

#include <Foundation/KeyedObservers.h>

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>

class QFileSystemWatcher;

/// Settings by key: the values of one property list file above the registered defaults. Any thread; the one lock guards
/// all state and is not held while observers are told.
/// Invariants: (1) a value that synchronize() acknowledged is on disk; (2) processes that write different keys of one
/// file lose nothing: each write reads the file again, under a lock file, and changes its own keys only; (3) a value
/// that differs is announced once, on the thread that brought it.
class NSUserDefaults
{
public:
    using Observer = quib::KeyedObservers::Observer;

    /// The application's own settings: the suite named by the bundle identifier.
    [[nodiscard]] static std::shared_ptr<NSUserDefaults> standardUserDefaults();
    /// The settings in "NAME.plist" of the profile's preferences folder. One object a file, as long as someone holds
    /// it.
    [[nodiscard]] static std::shared_ptr<NSUserDefaults> suite(const QString &name);

    /// Settings in a file of their own. The folder must exist before the first write.
    explicit NSUserDefaults(QString path);
    /// Writes what was not written yet.
    ~NSUserDefaults();
    NSUserDefaults(const NSUserDefaults &) = delete;
    NSUserDefaults &operator=(const NSUserDefaults &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

    // Reading

    /// The value as set here or by another process up to the last synchronize(), else the registered one, else nothing.
    [[nodiscard]] quib::PropertyValue objectForKey(const QString &key) const;
    /// The value without the registered defaults.
    [[nodiscard]] quib::PropertyValue ownObjectForKey(const QString &key) const;
    [[nodiscard]] bool boolForKey(const QString &key) const { return objectForKey(key).toBool(); }
    [[nodiscard]] qint64 integerForKey(const QString &key) const { return objectForKey(key).toInteger(); }
    [[nodiscard]] double doubleForKey(const QString &key) const { return objectForKey(key).toDouble(); }
    /// Null where the value is no string and no number.
    [[nodiscard]] QString stringForKey(const QString &key) const { return objectForKey(key).toString(); }
    /// All keys with a value of their own.
    [[nodiscard]] QStringList keys() const;

    // Writing

    /// Sets a value, or removes it where it is null. Kept in memory until synchronize(), or the end of this object.
    void setObject(const quib::PropertyValue &value, const QString &forKey);
    void removeObject(const QString &forKey) { setObject(quib::PropertyValue(), forKey); }
    /// The lowest layer: values in force where none was set. Adds to those registered before; never written.
    void registerDefaults(const quib::PropertyValue::Dictionary &defaults);

    /// Writes what was set, durably, and takes over what other processes wrote.
    /// Errors: as for files; what was set stays in force and is tried again next time. A file that is no property list
    ///         is kept beside as "NAME.plist.damaged" and replaced by the values in memory. A value that no property
    ///         list can hold is given up, all others are written.
    [[nodiscard]] bool synchronize(NSError *error);

    // Observing

    /// Tells of changes of a key, on the thread of the writer; changes by other processes on that of synchronize().
    [[nodiscard]] quib::ObservationToken addObserver(const QString &forKey, Observer observer)
    {
        return m_observers.add(forKey, std::move(observer));
    }
    /// Takes over changes by other processes as they happen, from the event loop of the calling thread.
    /// Queue: the thread that later destroys this object.
    void startWatching();

private:
    using Dictionary = quib::PropertyValue::Dictionary;

    /// What is in the file; nothing where reading failed. A missing file is empty.
    [[nodiscard]] std::optional<Dictionary> readFile(NSError *error) const;
    /// Which of the keys differ between two states, as seen with the registered defaults.
    [[nodiscard]] QStringList changedKeys(const Dictionary &before, const Dictionary &after) const;
    [[nodiscard]] Dictionary current() const;
    bool synchronizeFile(NSError *error);
    void tell(const QStringList &keys) const;

    QString m_path;
    mutable std::mutex m_mutex; ///< guards the four below
    Dictionary m_stored;        ///< the file as last read or written
    Dictionary m_pending;       ///< set and not written; null for removed
    Dictionary m_registered;
    QByteArray m_stamp; ///< identity, size and time of the file that m_stored stands for
    quib::KeyedObservers m_observers;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};
