#include "ParallelChunks.h"

#include <Foundation/DispatchQueue.h>

#include <QThread>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace quib {

namespace {

/// More threads than this wait for memory, not for each other.
constexpr int kMostThreads = 4;

/// Outlives the call for a helper that starts when everything is done.
struct Job
{
    std::function<void(size_t)> work; // called for indexes below count only, which the caller waits for
    size_t count = 0;
    std::atomic<size_t> next = 0;
    std::mutex mutex;
    std::condition_variable isDone;
    size_t done = 0; // guarded by mutex

    void help()
    {
        size_t finished = 0;
        for (size_t index = next.fetch_add(1); index < count; index = next.fetch_add(1)) {
            work(index);
            ++finished;
        }
        if (finished > 0) {
            const std::lock_guard lock(mutex);
            done += finished;
            if (done == count) {
                isDone.notify_all();
            }
        }
    }
};

} // namespace

void runInChunks(size_t count, const std::function<void(size_t index)> &work)
{
    const auto helpers = std::min<size_t>(static_cast<size_t>(std::min(kMostThreads, QThread::idealThreadCount()) - 1),
                                          count > 0 ? count - 1 : 0);
    if (helpers == 0) {
        for (size_t index = 0; index < count; ++index) {
            work(index);
        }
        return;
    }
    const auto job = std::make_shared<Job>();
    job->work = work;
    job->count = count;
    for (size_t i = 0; i < helpers; ++i) {
        DispatchQueue::serial(QStringLiteral("search helper"))->async([job] { job->help(); });
    }
    job->help();
    std::unique_lock lock(job->mutex);
    job->isDone.wait(lock, [&job] { return job->done == job->count; });
}

} // namespace quib
