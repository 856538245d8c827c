// Waiting for work in the background, which the end of a process does.

#include <Foundation/DispatchQueue.h>
#include <Foundation/WorkerThreads.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <semaphore>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using quib::DispatchQueue;
using quib::WorkerThreads;

namespace {

TEST(WorkersAreWaitedFor, UntilTheLastBlockOfEachQueueHasEnded)
{
    const auto first = DispatchQueue::serial(u"first"_s);
    const auto second = DispatchQueue::serial(u"second"_s);
    std::counting_semaphore<> gate(0);
    std::atomic<int> ended = 0;
    first->async([&] {
        gate.acquire();
        second->async([&ended] { ++ended; });
    });
    first->async([&ended] { ++ended; });
    EXPECT_FALSE(WorkerThreads::shared().waitUntilIdle(0ms));
    gate.release();
    EXPECT_TRUE(WorkerThreads::shared().waitUntilIdle(1min));
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(WorkerThreads::shared().waitUntilIdle(0ms));
}

TEST(WorkersAreWaitedFor, ByTheEndOfAProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // What ends in time is done: the block's own end of the process is the one that counts.
    EXPECT_EXIT(
        {
            DispatchQueue::serial(u"short"_s)->async([] { ::_Exit(5); });
            ::_Exit(WorkerThreads::endProcess(3));
        },
        testing::ExitedWithCode(5), "");
    // What does not end is left behind.
    EXPECT_EXIT(
        {
            DispatchQueue::serial(u"endless"_s)->async([] { std::counting_semaphore<>(0).acquire(); });
            ::_Exit(WorkerThreads::endProcess(3) + 1);
        },
        testing::ExitedWithCode(3), "");
}

} // namespace
