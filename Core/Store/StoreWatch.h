#pragma once

#include <Files/FileWatcher.h>
#include <Foundation/Clock.h>

#include <QString>

#include <functional>
#include <memory>

class NSPersistentStore;

namespace quib {

/// Tells when anybody committed to a store's file, this process or another: the end of each commit is a change in the
/// file's folder, and a number that the store keeps tells commits from mere touching. Where the system cannot watch the
/// folder, the number is asked for again and again. Lives on the queue that made it, and needs its event loop.
class StoreWatch
{
public:
    /// Units: seconds from a change of the folder until it is looked at.
    static constexpr double kLatency = 0.1;
    /// Units: seconds between two looks where nothing tells of changes.
    static constexpr double kPollInterval = 0.5;

    /// The store must outlive the watch.
    StoreWatch(NSPersistentStore &store, const QString &path, std::function<void()> changed);

    /// Looks now, and tells if anything changed since the last look.
    void look();

private:
    void scheduleLook();

    NSPersistentStore &m_store;
    std::function<void()> m_changed;
    qint64 m_counter = -1;
    std::unique_ptr<FileWatcher> m_watcher;
    std::unique_ptr<TimerToken> m_timer; ///< set only where the folder cannot be watched, or a look failed
};

} // namespace quib
