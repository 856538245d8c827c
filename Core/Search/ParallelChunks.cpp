#include "ParallelChunks.h"

#include <Foundation/DispatchQueue.h>

#include <QThread>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace quib {

namespace {

/// More threads than this wait for memory, not for each other.
constexpr int kMostThreads = 4;

struct Job
{
    explicit Job(const std::shared_ptr<ChunkedWork> &asked)
        : work(asked)
        , isKept(asked->count())
    {
    }

    const std::shared_ptr<ChunkedWork> work;
    std::atomic<size_t> next = 0;
    std::mutex mutex;
    std::vector<bool> isKept; // guarded by mutex
    bool isOver = false;      // guarded by mutex

    [[nodiscard]] bool isWanted(size_t index)
    {
        const std::lock_guard lock(mutex);
        return !isOver && !isKept[index];
    }
    void workOut(size_t index)
    {
        const auto keep = work->workOut(index);
        const std::lock_guard lock(mutex);
        if (!isOver && !isKept[index]) {
            keep();
            isKept[index] = true;
        }
    }
    void help()
    {
        for (size_t index = next.fetch_add(1); index < work->count(); index = next.fetch_add(1)) {
            // What is guarded may be gone when nobody wants the piece any more, and stays as long as somebody does.
            const std::shared_lock lock(work->guard());
            if (isWanted(index)) {
                workOut(index);
            }
        }
    }
};

} // namespace

void runInChunks(const std::shared_ptr<ChunkedWork> &work)
{
    const auto threads = static_cast<size_t>(std::min(kMostThreads, QThread::idealThreadCount()));
    const size_t helpers = work->count() > 0 ? std::min(threads, work->count()) - 1 : 0;
    const auto job = std::make_shared<Job>(work);
    for (size_t i = 0; i < helpers; ++i) {
        DispatchQueue::serial(QStringLiteral("search helper"))->async([job] { job->help(); });
    }
    for (size_t index = job->next.fetch_add(1); index < work->count(); index = job->next.fetch_add(1)) {
        job->workOut(index);
    }
    for (size_t index = 0; index < work->count(); ++index) {
        if (job->isWanted(index)) {
            job->workOut(index);
        }
    }
    const std::lock_guard lock(job->mutex);
    job->isOver = true;
}

} // namespace quib
