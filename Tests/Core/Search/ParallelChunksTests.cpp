#include <Search/ParallelChunks.h>

#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

#include <vector>

namespace {

/// Every other thread is put off in the middle of its first piece, and the calling one waits until one was.
struct Interrupted final : quib::ChunkedWork
{
    Interrupted(size_t count, const std::shared_ptr<std::shared_mutex> &lock)
        : ChunkedWork(count, lock)
        , timesKept(count)
    {
    }
    std::function<void()> workOut(size_t index) override
    {
        if (QThread::currentThreadId() != caller) {
            isAtIt.release();
            mayGoOn.acquire();
        } else if (!hasWaited && QThread::idealThreadCount() > 1) {
            isAtIt.acquire();
            hasWaited = true;
        }
        return [this, index] { ++timesKept[index]; };
    }

    const Qt::HANDLE caller = QThread::currentThreadId();
    QSemaphore isAtIt;
    QSemaphore mayGoOn;
    bool hasWaited = false;
    std::vector<int> timesKept;
};

} // namespace

TEST(ParallelChunks, WaitForNoThreadThatIsPutOffAtAPiece)
{
    constexpr size_t kCount = 50;
    const auto guard = std::make_shared<std::shared_mutex>();
    const auto work = std::make_shared<Interrupted>(kCount, guard);
    {
        const std::shared_lock lock(*guard);
        quib::runInChunks(work);
    }
    EXPECT_EQ(work->timesKept, std::vector<int>(kCount, 1));
    if (work->hasWaited) {
        EXPECT_FALSE(guard->try_lock()) << "what is guarded stays while a thread is still at it";
    }
    work->mayGoOn.release(kCount);
    const std::unique_lock lock(*guard);
    EXPECT_EQ(work->timesKept, std::vector<int>(kCount, 1)) << "what comes late is not kept";
}
