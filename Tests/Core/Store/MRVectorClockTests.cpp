// Counters by device: comparison, merge, and the stored form.

#include <Files/PropertyList.h>
#include <Store/MRVectorClock.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <limits>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using quib::PropertyValue;
using quib::tests::TestSeed;

namespace {

/// "A1 B2": a clock with the counter 1 for A and 2 for B.
MRVectorClock clockFrom(const QString &text)
{
    MRVectorClock clock;
    for (const QString &counter : text.split(u' ', Qt::SkipEmptyParts)) {
        clock.updateClockValueForID(counter.left(1), counter.sliced(1).toULongLong());
    }
    return clock;
}

TEST(VectorClocks, CompareByRows)
{
    const struct
    {
        QString mine;
        QString theirs;
        int result;
    } rows[] = {{u""_s, u""_s, 0},
                {u"A1"_s, u"A1"_s, 0},
                {u"A0"_s, u""_s, 0},
                {u""_s, u"A1"_s, -1},
                {u"A2"_s, u"A1"_s, 1},
                {u"A1 B1"_s, u"A1"_s, 1},
                {u"A1"_s, u"B1"_s, 2},
                {u"A2 B1"_s, u"A1 B2"_s, 2},
                {u"A9 B1 C3"_s, u"A9 B2 C3"_s, -1},
                // A counter that went round is ahead of the largest one.
                {u"A0"_s, u"A18446744073709551615"_s, 1},
                {u"A18446744073709551615"_s, u"A1"_s, -1}};
    for (const auto &row : rows) {
        const MRVectorClock mine = clockFrom(row.mine);
        const MRVectorClock theirs = clockFrom(row.theirs);
        EXPECT_EQ(mine.compare(theirs), row.result) << qPrintable(row.mine % u" / " % row.theirs);
        const int mirrored = row.result == 2 ? 2 : -row.result;
        EXPECT_EQ(theirs.compare(mine), mirrored) << qPrintable(row.mine % u" / " % row.theirs);
    }
}

TEST(VectorClocks, TickFromOneAndCountMissingAsNone)
{
    MRVectorClock clock;
    EXPECT_EQ(clock.clockValueForID(u"A"_s), 0U);
    clock.updateClockValueForID(u"A"_s);
    clock.updateClockValueForID(u"A"_s);
    EXPECT_EQ(clock.clockValueForID(u"A"_s), 2U);
    MRVectorClock copy = clock;
    copy.updateClockValueForID(u"A"_s);
    EXPECT_EQ(clock.clockValueForID(u"A"_s), 2U);
    EXPECT_EQ(copy.compare(clock), MRVectorClock::Newer);
}

TEST(VectorClocks, ComeBackFromTheirStoredForm)
{
    const MRVectorClock clock = clockFrom(u"B2 A18446744073709551615 C0"_s);
    const QByteArray data = clock.data();
    EXPECT_TRUE(data.startsWith("bplist00"));
    const auto read = MRVectorClock::initWithData(data);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->data(), data);
    EXPECT_EQ(read->stringRepresentation(), u"(A:18446744073709551615, B:2, C:0)"_s);
    EXPECT_EQ(read->orderedIDs(), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_TRUE(read->description().endsWith(u" (A:18446744073709551615, B:2, C:0)"));
}

TEST(VectorClocks, AreEmptyWithoutDataAndNoneFromBadData)
{
    const auto empty = MRVectorClock::initWithData(QByteArray());
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->stringRepresentation(), u"()"_s);
    const auto stored = [](const PropertyValue &value) {
        return *quib::writePropertyList(value, quib::PropertyListFormat::Binary, nullptr);
    };
    for (const QByteArray &bad :
         {QByteArray(""), QByteArray("bplist00"), QByteArray("text"), stored(PropertyValue(PropertyValue::Array())),
          stored(PropertyValue(PropertyValue::Dictionary{{u"A"_s, PropertyValue(u"x"_s)}}))}) {
        EXPECT_FALSE(MRVectorClock::initWithData(bad)) << bad.toHex().constData();
    }
    const auto xml = MRVectorClock::initWithData("<plist><dict><key>A</key><integer>3</integer></dict></plist>");
    ASSERT_TRUE(xml);
    EXPECT_EQ(xml->clockValueForID(u"A"_s), 3U);
}

TEST(VectorClocks, MergeIsALeastUpperBound)
{
    const TestSeed seed;
    auto random = seed.generator();
    const auto randomClock = [&random] {
        MRVectorClock clock;
        for (auto left = random() % 5; left > 0; --left) {
            clock.updateClockValueForID(QString(QChar(u'A' + static_cast<int>(random() % 5))), random() % 4);
        }
        return clock;
    };
    const auto isAtLeast = [](const MRVectorClock &a, const MRVectorClock &b) {
        const int result = a.compare(b);
        return result == 0 || result == 1;
    };
    for (int round = 0; round < 2000; ++round) {
        const MRVectorClock a = randomClock();
        const MRVectorClock b = randomClock();
        const MRVectorClock c = randomClock();
        const MRVectorClock merged = a.mergeClock(b);
        ASSERT_TRUE(isAtLeast(merged, a) && isAtLeast(merged, b));
        ASSERT_EQ(merged.compare(b.mergeClock(a)), 0);
        ASSERT_EQ(merged.mergeClock(c).compare(a.mergeClock(b.mergeClock(c))), 0);
        ASSERT_EQ(a.mergeClock(a).compare(a), 0);
        // Every clock above both is above the merged one.
        if (isAtLeast(c, a) && isAtLeast(c, b)) {
            ASSERT_TRUE(isAtLeast(c, merged));
        }
    }
}

TEST(VectorClocks, LoseNoTickOfSeveralThreads)
{
    MRVectorClock clock;
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index) {
        threads.emplace_back([&clock] {
            for (int round = 0; round < 1000; ++round) {
                clock.updateClockValueForID(u"A"_s);
            }
        });
    }
    for (auto &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(clock.clockValueForID(u"A"_s), 4000U);
}

} // namespace
