#pragma once

#include <QtGlobal>

#include <atomic>
#include <functional>
#include <mutex>

/// How far a long piece of work has come, and whether somebody wants it to stop. Shared between the worker, which
/// counts and looks at isCancelled(), and a watcher, which shows and may cancel. Any thread. Work that cannot stop
/// half-way declares itself not cancellable: cancel() then changes nothing.
class NSProgress
{
public:
    /// Told on the worker's thread after each change, never two calls at once.
    using Observer = std::function<void(qint64 completedUnitCount, qint64 totalUnitCount)>;

    explicit NSProgress(qint64 totalUnitCount = 0);
    NSProgress(const NSProgress &) = delete;
    NSProgress &operator=(const NSProgress &) = delete;

    [[nodiscard]] qint64 totalUnitCount() const { return m_total.load(); }
    void setTotalUnitCount(qint64 totalUnitCount);
    [[nodiscard]] qint64 completedUnitCount() const { return m_completed.load(); }
    void setCompletedUnitCount(qint64 completedUnitCount);
    /// Counts units that were done; workers on several threads lose none.
    void addCompletedUnits(qint64 units);
    /// From 0 to 1; 0 while the total is not known.
    [[nodiscard]] double fractionCompleted() const;

    [[nodiscard]] bool isCancellable() const { return m_isCancellable.load(); }
    void setCancellable(bool cancellable) { m_isCancellable.store(cancellable); }
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_isCancelled.load(); }

    /// One observer; an empty function takes it away, and is then never called again once this returns. Not to be
    /// called from the observer itself.
    void setObserver(Observer observer);

private:
    void tell();

    std::atomic<qint64> m_total;
    std::atomic<qint64> m_completed = 0;
    std::atomic<bool> m_isCancellable = true;
    std::atomic<bool> m_isCancelled = false;
    std::mutex m_mutex; ///< guards m_observer and its calls
    Observer m_observer;
};
