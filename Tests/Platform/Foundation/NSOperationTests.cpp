// Operations: order, width, dependencies, completion and cancelling.

#include <Foundation/NSOperationQueue.h>
#include <Foundation/NSProgress.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <semaphore>
#include <thread>

using namespace Qt::StringLiterals;
using quib::tests::TestSeed;

namespace {

std::shared_ptr<NSBlockOperation> block(std::function<void()> work)
{
    return NSBlockOperation::blockOperationWithBlock(std::move(work));
}

TEST(OperationQueues, OfWidthOneRunInTheOrderOfAdding)
{
    NSOperationQueue queue(u"serial"_s);
    queue.setMaxConcurrentOperationCount(1);
    std::vector<int> order;
    for (int index = 0; index < 200; ++index) {
        queue.addOperationWithBlock([&order, index] { order.push_back(index); });
    }
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(order.size(), 200U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_EQ(queue.operationCount(), 0U);
}

TEST(OperationQueues, RunAsManyAtOnceAsTheyAreWide)
{
    NSOperationQueue queue;
    queue.setMaxConcurrentOperationCount(3);
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::counting_semaphore<> threeRun(0);
    std::counting_semaphore<> go(0);
    for (int index = 0; index < 30; ++index) {
        queue.addOperationWithBlock([&] {
            const int now = ++running;
            int seen = most.load();
            while (now > seen && !most.compare_exchange_weak(seen, now)) {
            }
            threeRun.release();
            go.acquire();
            --running;
        });
    }
    // The width is reached.
    for (int left = 3; left > 0; --left) {
        threeRun.acquire();
    }
    go.release(30);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(most, 3);
}

TEST(Operations, BeginWhenAllTheirDependenciesHaveFinished)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int round = 0; round < 20; ++round) {
        NSOperationQueue queues[2];
        std::vector<std::shared_ptr<NSBlockOperation>> operations;
        std::vector<std::vector<size_t>> dependencies;
        std::atomic<int> wrong = 0;
        for (size_t index = 0; index < 50; ++index) {
            std::vector<size_t> before;
            for (auto left = index == 0 ? 0 : random() % 4; left > 0; --left) {
                before.push_back(random() % index);
            }
            operations.push_back(block([&operations, &wrong, before] {
                for (const size_t earlier : before) {
                    wrong += operations[earlier]->isFinished() ? 0 : 1;
                }
            }));
            for (const size_t earlier : before) {
                operations.back()->addDependency(operations[earlier]);
            }
            dependencies.push_back(before);
        }
        // Added in any order: what depends on a later one waits for it.
        std::vector<size_t> order(operations.size());
        for (size_t index = 0; index < order.size(); ++index) {
            order[index] = index;
        }
        std::shuffle(order.begin(), order.end(), random);
        for (const size_t index : order) {
            queues[index % 2].addOperation(operations[index]);
        }
        queues[0].waitUntilAllOperationsAreFinished();
        queues[1].waitUntilAllOperationsAreFinished();
        ASSERT_EQ(wrong, 0);
    }
}

TEST(Operations, CallTheirCompletionBlockOnceFinished)
{
    NSOperationQueue queue;
    bool finishedBefore = false;
    const auto operation = block([] {});
    operation->setCompletionBlock([&] { finishedBefore = operation->isFinished(); });
    queue.addOperation(operation);
    operation->waitUntilFinished();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(finishedBefore);
    operation->waitUntilFinished(); // at once
    EXPECT_FALSE(operation->isExecuting());
}

TEST(Operations, CancelledBeforeTheyBeginFinishWithoutTheirWork)
{
    NSOperationQueue queue;
    queue.setSuspended(true);
    int ran = 0;
    int completed = 0;
    const auto cancelled = block([&ran] { ++ran; });
    cancelled->setCompletionBlock([&completed] { ++completed; });
    const auto after = block([&ran] { ran += 10; });
    after->addDependency(cancelled);
    queue.addOperation(cancelled);
    queue.addOperation(after);
    cancelled->cancel();
    EXPECT_EQ(queue.operationCount(), 2U);
    queue.setSuspended(false);
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(ran, 10);
    EXPECT_EQ(completed, 1);
    EXPECT_TRUE(cancelled->isFinished() && cancelled->isCancelled());
}

/// Goes on after main() until it is told, or cancelled.
class Waiter final : public NSOperation
{
public:
    void end() { finish(); }
    std::counting_semaphore<> begun{0};

protected:
    void main() override { begun.release(); }
    [[nodiscard]] bool isAsynchronous() const override { return true; }
    void didCancel() override
    {
        if (isExecuting()) {
            finish();
        }
    }
};

TEST(Operations, ThatGoOnAfterMainHoldTheirPlaceUntilTheyFinish)
{
    NSOperationQueue queue;
    queue.setMaxConcurrentOperationCount(1);
    const auto waiter = std::make_shared<Waiter>();
    bool ran = false;
    queue.addOperation(waiter);
    queue.addOperationWithBlock([&ran] { ran = true; });
    waiter->begun.acquire();
    EXPECT_TRUE(waiter->isExecuting());
    EXPECT_EQ(queue.operationCount(), 2U);
    EXPECT_FALSE(ran);
    waiter->end();
    waiter->end(); // the same as once
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(ran);

    const auto cancelled = std::make_shared<Waiter>();
    queue.addOperation(cancelled);
    cancelled->begun.acquire();
    queue.cancelAllOperations();
    queue.waitUntilAllOperationsAreFinished();
    EXPECT_TRUE(cancelled->isFinished());
}

TEST(OperationQueues, MayDieBeforeTheirOperations)
{
    std::counting_semaphore<> go(0);
    std::counting_semaphore<> done(0);
    std::weak_ptr<NSOperation> held;
    {
        NSOperationQueue queue;
        queue.setMaxConcurrentOperationCount(1);
        queue.addOperationWithBlock([&go] { go.acquire(); });
        const auto last = block([&done] { done.release(); });
        held = last;
        queue.addOperation(last);
    }
    go.release();
    done.acquire();
    while (const auto last = held.lock()) {
        last->waitUntilFinished();
        std::this_thread::yield();
    }
    EXPECT_TRUE(held.expired());
}

TEST(Progress, CountsFromSeveralThreadsAndTellsItsObserver)
{
    NSProgress progress(4000);
    qint64 last = 0;
    int calls = 0;
    progress.setObserver([&](qint64 completed, qint64 total) {
        EXPECT_GE(completed, last);
        EXPECT_EQ(total, 4000);
        last = completed;
        ++calls;
    });
    std::vector<std::thread> workers;
    for (int index = 0; index < 4; ++index) {
        workers.emplace_back([&progress] {
            for (int round = 0; round < 100; ++round) {
                progress.addCompletedUnits(10);
            }
        });
    }
    for (auto &worker : workers) {
        worker.join();
    }
    EXPECT_EQ(progress.completedUnitCount(), 4000);
    EXPECT_EQ(calls, 400);
    EXPECT_EQ(progress.fractionCompleted(), 1.0);
    progress.setObserver({});
    progress.setCompletedUnitCount(1);
    EXPECT_EQ(calls, 400);
}

TEST(Progress, IsCancelledOnlyWhereTheWorkCanStop)
{
    NSProgress progress;
    EXPECT_EQ(progress.fractionCompleted(), 0.0);
    progress.setCancellable(false);
    progress.cancel();
    EXPECT_FALSE(progress.isCancelled());
    progress.setCancellable(true);
    progress.cancel();
    EXPECT_TRUE(progress.isCancelled());
}

} // namespace
