#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace quib {

/// The threads on which private queues and operations run: one for each piece of work under way, kept for a while when
/// it is idle. Any thread. Never destroyed, since work may end after everything else. Made of standard primitives, so
/// that tools which watch for data races see every hand-over.
class WorkerThreads
{
public:
    [[nodiscard]] static WorkerThreads &shared();

    /// Runs the work on a thread of its own, soon. Pieces of work may wait for each other.
    void start(std::function<void()> work);

    /// Waits until there is no work under way and none that waits to begin.
    /// Errors: false when that takes longer than the patience.
    [[nodiscard]] bool waitUntilIdle(std::chrono::milliseconds patience);

    /// The last thing that main() does, while there is an application: work under way may still use what the exit of
    /// the process destroys, so it is waited for. Where it takes too long the process ends here, and nothing is
    /// destroyed.
    /// Shape: gives the status.
    [[nodiscard]] static int endProcess(int status);

private:
    WorkerThreads() = default;
    static void *runThread(void *self);
    void run();

    std::mutex m_mutex; ///< guards all below
    std::condition_variable m_arrived;
    std::condition_variable m_becameIdle;
    std::deque<std::function<void()>> m_work;
    size_t m_threads = 0;
    size_t m_idle = 0;
};

} // namespace quib
