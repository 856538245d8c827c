#include "WorkerThreads.h"

#include "Assert.h"

#include <cstdio>
#include <utility>

#include <pthread.h>
#include <unistd.h>

namespace quib {

namespace {

/// Beyond this, work waits for a thread. Far above the number of queues that wait for each other.
constexpr size_t kMaximumThreads = 256;
/// How long a thread without work is kept.
constexpr std::chrono::seconds kIdleTime{5};
/// How long the end of the process waits for work under way. Nobody sees it: windows are closed and notes are saved.
constexpr std::chrono::seconds kPatienceAtTheEnd{2};

} // namespace

WorkerThreads &WorkerThreads::shared()
{
    static auto *threads = new WorkerThreads;
    return *threads;
}

void WorkerThreads::start(std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_work.push_back(std::move(work));
    if (m_work.size() <= m_idle || m_threads == kMaximumThreads) {
        m_arrived.notify_one();
        return;
    }
    pthread_t thread = {};
    if (::pthread_create(&thread, nullptr, &WorkerThreads::runThread, this) == 0) {
        ::pthread_detach(thread);
        ++m_threads;
        return;
    }
    // The system has no thread to give: those that there are do the work one after the other.
    QUIB_REQUIRE(m_threads > 0);
    m_arrived.notify_one();
}

bool WorkerThreads::waitUntilIdle(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    return m_becameIdle.wait_for(lock, patience, [this] { return m_work.empty() && m_idle == m_threads; });
}

int WorkerThreads::endProcess(int status)
{
    if (!shared().waitUntilIdle(kPatienceAtTheEnd)) {
        std::fflush(nullptr);
        ::_exit(status);
    }
    return status;
}

void *WorkerThreads::runThread(void *self)
{
    static_cast<WorkerThreads *>(self)->run();
    return nullptr;
}

void WorkerThreads::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        ++m_idle;
        if (m_work.empty() && m_idle == m_threads) {
            m_becameIdle.notify_all();
        }
        m_arrived.wait_for(lock, kIdleTime, [this] { return !m_work.empty(); });
        --m_idle;
        if (m_work.empty()) {
            --m_threads;
            return;
        }
        auto work = std::move(m_work.front());
        m_work.pop_front();
        lock.unlock();
        work();
        work = nullptr; // what it holds dies outside of the lock
        lock.lock();
    }
}

} // namespace quib
