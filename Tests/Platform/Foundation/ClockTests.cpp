// Instants, their ISO 8601 form, and calls made later.

#include <Foundation/Clock.h>
#include <Foundation/Identifiers.h>
#include <Support/FakeClock.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using quib::tests::FakeClock;
using quib::tests::TestSeed;

namespace {

NSDate at(double seconds)
{
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

TEST(Instants, PrintWholeSecondsInUniversalTime)
{
    const struct
    {
        double seconds;
        const char16_t *text;
    } rows[] = {{0, u"1970-01-01T00:00:00Z"},
                {1488449472, u"2017-03-02T10:11:12Z"},
                {1488449472.999999, u"2017-03-02T10:11:12Z"},
                {-0.5, u"1969-12-31T23:59:59Z"},
                {951782400, u"2000-02-29T00:00:00Z"}};
    for (const auto &row : rows) {
        EXPECT_EQ(at(row.seconds).iso8601String(), QString::fromUtf16(row.text)) << row.seconds;
    }
}

TEST(Instants, AreReadWithFractionsAndOffsets)
{
    const struct
    {
        const char16_t *text;
        std::optional<double> seconds;
    } rows[] = {{u"2017-03-02T10:11:12Z", 1488449472},
                {u"2017-03-02T10:11:12.250Z", 1488449472.25},
                {u"2017-03-02T10:11:12.123456Z", 1488449472.123456},
                {u"2017-03-02T11:11:12,5+01:00", 1488449472.5},
                {u"2017-03-02T10:11:12.Z", std::nullopt},
                {u"2017-03-02T11:11:12+01:00", 1488449472},
                {u"2017-03-02T10:11:12", 1488449472},
                {u"2017-02-30T10:11:12Z", std::nullopt},
                {u"yesterday", std::nullopt},
                {u"", std::nullopt}};
    for (const auto &row : rows) {
        const auto read = NSDate::dateFromISO8601String(row.text);
        ASSERT_EQ(read.has_value(), row.seconds.has_value()) << qPrintable(QString::fromUtf16(row.text));
        if (read) {
            EXPECT_EQ(read->timeIntervalSince1970(), *row.seconds) << qPrintable(QString::fromUtf16(row.text));
        }
    }
}

TEST(Instants, OfWholeSecondsSurviveTheirText)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int round = 0; round < 500; ++round) {
        const double seconds = std::floor(std::uniform_real_distribution<double>(-6e10, 2e11)(random));
        const auto read = NSDate::dateFromISO8601String(at(seconds).iso8601String());
        ASSERT_TRUE(read.has_value()) << seconds;
        ASSERT_EQ(read->timeIntervalSince1970(), seconds);
    }
}

TEST(Instants, OfTheSystemClockAreWholeMicroseconds)
{
    const double micros = NSDate::now().timeIntervalSince1970() * 1e6;
    EXPECT_LT(std::abs(micros - std::round(micros)), 0.5);
    EXPECT_GT(micros, 1.6e15);
}

TEST(HandDrivenClock, IsWhereNowComesFrom)
{
    FakeClock clock;
    clock.setNow(at(12.5));
    EXPECT_EQ(NSDate::now(), at(12.5));
    clock.advance(2);
    EXPECT_EQ(NSDate::now(), at(14.5));
}

TEST(HandDrivenClock, FiresTimersInTheOrderTheyFallDue)
{
    FakeClock clock;
    clock.setNow(at(100));
    QStringList fired;
    const auto note = [&fired](const QString &name) {
        fired.append(name % u"@"_s % QString::number(NSDate::now().timeIntervalSince1970()));
    };
    std::unique_ptr<quib::TimerToken> chained;
    const auto late = clock.schedule(5, [&] { note(u"late"_s); });
    const auto soon = clock.schedule(1, [&] {
        note(u"soon"_s);
        chained = clock.schedule(1, [&] { note(u"chained"_s); });
    });
    const auto alsoSoon = clock.schedule(1, [&] { note(u"also"_s); });
    const auto cancelled = clock.schedule(2, [&] { note(u"cancelled"_s); });
    auto dropped = clock.schedule(2, [&] { note(u"dropped"_s); });
    cancelled->invalidate();
    dropped.reset();
    EXPECT_FALSE(cancelled->isValid());

    clock.advance(4);
    EXPECT_EQ(fired, (QStringList{u"soon@101"_s, u"also@101"_s, u"chained@102"_s}));
    EXPECT_FALSE(soon->isValid());
    EXPECT_TRUE(late->isValid());
    clock.advance(1);
    EXPECT_EQ(fired.last(), u"late@105"_s);
}

TEST(SystemTimers, FireOnceFromTheEventLoop)
{
    int fired = 0;
    const auto first = quib::Clock::shared().schedule(0, [&fired] { ++fired; });
    const auto never = quib::Clock::shared().schedule(0, [&fired] { fired += 100; });
    never->invalidate();
    EXPECT_EQ(fired, 0);
    while (fired == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(first->isValid());
}

TEST(SystemTimers, MayBeDestroyedByTheirOwnCall)
{
    bool fired = false;
    std::unique_ptr<quib::TimerToken> timer;
    timer = quib::Clock::shared().schedule(0, [&] {
        timer.reset();
        fired = true;
    });
    while (!fired) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(timer, nullptr);
}

TEST(Identifiers, AreUniqueAndHoldNoSlash)
{
    QSet<QString> seen;
    for (int round = 0; round < 1000; ++round) {
        const QString unique = quib::globallyUniqueString();
        EXPECT_FALSE(unique.contains(u'/'));
        EXPECT_EQ(unique, unique.toUpper());
        seen.insert(unique);
        seen.insert(quib::uuidString());
    }
    EXPECT_EQ(seen.size(), 2000);
    static const QRegularExpression canonical(u"\\A[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\z"_s);
    EXPECT_TRUE(canonical.match(quib::uuidString()).hasMatch());
}

TEST(Identifiers, ComeFromTheInstalledSource)
{
    int count = 0;
    quib::setIdentifierSource([&count] { return u"id-%1"_s.arg(++count); });
    EXPECT_EQ(quib::globallyUniqueString(), u"id-1"_s);
    EXPECT_EQ(quib::uuidString(), u"id-2"_s);
    quib::setIdentifierSource({});
    EXPECT_FALSE(quib::uuidString().startsWith(u"id-"_s));
}

} // namespace
