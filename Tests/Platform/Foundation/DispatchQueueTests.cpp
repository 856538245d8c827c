// Order, exclusion and reentrance of the main and private queues.

#include <Foundation/DispatchQueue.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <semaphore>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using quib::DispatchQueue;

namespace {

void turnUntil(const std::function<bool()> &done)
{
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

TEST(PrivateQueue, RunsBlocksOneByOneInTheirOrder)
{
    const auto queue = DispatchQueue::serial(u"order"_s);
    std::vector<int> order;
    for (int index = 0; index < 1000; ++index) {
        queue->async([&order, index] { order.push_back(index); });
    }
    queue->sync([] {});
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(PrivateQueue, NeverRunsTwoBlocksAtOnceWhoeverGivesThem)
{
    const auto queue = DispatchQueue::serial(u"exclusion"_s);
    std::atomic<int> inside = 0;
    std::atomic<bool> overlapped = false;
    int count = 0; // guarded by the queue alone
    const auto block = [&] {
        if (inside.fetch_add(1) != 0) {
            overlapped = true;
        }
        ++count;
        inside.fetch_sub(1);
    };
    std::vector<std::thread> givers;
    for (int giver = 0; giver < 4; ++giver) {
        givers.emplace_back([&, giver] {
            for (int round = 0; round < 500; ++round) {
                if ((round + giver) % 3 == 0) {
                    queue->sync(block);
                } else {
                    queue->async(block);
                }
            }
        });
    }
    for (auto &giver : givers) {
        giver.join();
    }
    queue->sync([] {});
    EXPECT_EQ(count, 2000);
    EXPECT_FALSE(overlapped);
}

TEST(PrivateQueue, SyncRunsOnTheCallingThread)
{
    const auto queue = DispatchQueue::serial(u"thread"_s);
    const QThread *ran = nullptr;
    queue->sync([&ran] { ran = QThread::currentThread(); });
    EXPECT_EQ(ran, QThread::currentThread());
}

TEST(PrivateQueue, AsyncNeverRunsAtOnceEvenOnTheQueueItself)
{
    const auto queue = DispatchQueue::serial(u"later"_s);
    QStringList order;
    queue->sync([&] {
        queue->async([&order] { order.append(u"later"_s); });
        order.append(u"now"_s);
    });
    queue->sync([] {});
    EXPECT_EQ(order, (QStringList{u"now"_s, u"later"_s}));
}

TEST(PrivateQueue, KnowsItselfThroughNestedQueues)
{
    const auto outer = DispatchQueue::serial(u"outer"_s);
    const auto inner = DispatchQueue::serial(u"inner"_s);
    int checked = 0;
    EXPECT_FALSE(outer->isCurrent());
    outer->sync([&] {
        EXPECT_TRUE(outer->isCurrent());
        EXPECT_FALSE(inner->isCurrent());
        inner->sync([&] {
            EXPECT_TRUE(outer->isCurrent());
            EXPECT_TRUE(inner->isCurrent());
            outer->sync([&checked] { ++checked; });
        });
        EXPECT_FALSE(inner->isCurrent());
    });
    EXPECT_FALSE(outer->isCurrent());
    EXPECT_EQ(checked, 1);
    std::counting_semaphore<> done(0);
    outer->async([&] {
        EXPECT_TRUE(outer->isCurrent());
        EXPECT_FALSE(DispatchQueue::main()->isCurrent());
        done.release();
    });
    done.acquire();
}

TEST(PrivateQueue, OutlivesItsLastHolderUntilItsBlocksAreDone)
{
    std::counting_semaphore<> start(0);
    std::counting_semaphore<> done(0);
    DispatchQueue::serial(u"orphan"_s)->async([&] {
        start.acquire();
        done.release();
    });
    start.release();
    done.acquire();
}

TEST(MainQueue, RunsBlocksInOrderFromTheEventLoop)
{
    QStringList order;
    DispatchQueue::main()->async([&order] { order.append(u"first"_s); });
    DispatchQueue::main()->async([&order] { order.append(u"second"_s); });
    EXPECT_TRUE(order.isEmpty());
    turnUntil([&order] { return order.size() == 2; });
    EXPECT_EQ(order, (QStringList{u"first"_s, u"second"_s}));
}

TEST(MainQueue, SyncFromItselfRunsAtOnce)
{
    bool ran = false;
    DispatchQueue::main()->sync([&ran] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(MainQueue, AnswersAPrivateQueueThatWaitsForIt)
{
    const auto queue = DispatchQueue::serial(u"asks main"_s);
    bool answered = false;
    bool ended = false;
    queue->async([&] {
        DispatchQueue::main()->sync([&answered] { answered = DispatchQueue::main()->isCurrent(); });
        DispatchQueue::main()->async([&ended] { ended = true; });
    });
    turnUntil([&ended] { return ended; });
    EXPECT_TRUE(answered);
}

TEST(MainQueue, MayWaitForAPrivateQueueWhoseBlockAsksForTheMainQueue)
{
    const auto queue = DispatchQueue::serial(u"round trip"_s);
    int depth = 0;
    queue->sync([&depth] { DispatchQueue::main()->sync([&depth] { ++depth; }); });
    EXPECT_EQ(depth, 1);
}

} // namespace
