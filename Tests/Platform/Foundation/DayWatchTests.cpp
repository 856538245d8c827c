#include <Foundation/DayWatch.h>
#include <Support/FakeClock.h>

#include <QDateTime>

#include <gtest/gtest.h>

using namespace quib;

namespace {

NSDate localTime(QDate day, QTime time)
{
    return NSDate::dateWithTimeIntervalSince1970(
        static_cast<double>(QDateTime(day, time, Qt::LocalTime).toSecsSinceEpoch()));
}

} // namespace

TEST(DayWatch, TellsOnceAtEachMidnight)
{
    tests::FakeClock clock;
    clock.setNow(localTime(QDate(2017, 7, 14), QTime(23, 30)));
    int told = 0;
    const DayWatch watch([&told] { ++told; });
    clock.advance(29 * 60);
    EXPECT_EQ(told, 0);
    clock.advance(61);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(watch.day(), QDate(2017, 7, 15));
    clock.advance(23 * 3600);
    EXPECT_EQ(told, 1);
    clock.advance(2 * 3600);
    EXPECT_EQ(told, 2);
}

TEST(DayWatch, SeesTheShortNightOfSummerTimeAndAClockThatWasSet)
{
    tests::FakeClock clock;
    clock.setNow(localTime(QDate(2017, 3, 26), QTime(0, 30))); // 23 hours long in central Europe
    int told = 0;
    const DayWatch watch([&told] { ++told; });
    clock.advance(22.5 * 3600 + 1);
    EXPECT_EQ(told, 1);
    // Back by two days, as a hand does it, and on after a sleep: each is seen at the next look.
    clock.setNow(localTime(QDate(2017, 3, 25), QTime(12, 0)));
    clock.advance(600 + 48 * 3600);
    EXPECT_EQ(watch.day(), QDate(2017, 3, 27));
}

TEST(DayWatch, MayBeDroppedFromItsOwnCall)
{
    tests::FakeClock clock;
    std::unique_ptr<DayWatch> watch;
    int told = 0;
    watch = std::make_unique<DayWatch>([&] {
        ++told;
        watch.reset();
    });
    clock.advance(3 * 86'400);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(clock.waitingTimers(), 0U);
}
