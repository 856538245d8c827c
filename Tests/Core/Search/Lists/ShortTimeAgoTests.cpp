#include <Search/Lists/ShortTimeAgo.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

TEST(ShortTimeAgo, IsOneShortWord)
{
    constexpr double kDay = 86'400;
    struct Case
    {
        double secondsAgo;
        QString text;
    };
    const Case cases[] = {
        {0, u"now"_s},
        {59.999, u"now"_s},
        {60, u"1m"_s},
        {119, u"1m"_s},
        {5 * 60, u"5m"_s},
        {3'599, u"59m"_s},
        {3'600, u"1h"_s},
        {3 * 3'600 + 1, u"3h"_s},
        {kDay - 1, u"23h"_s},
        {kDay, u"1d"_s},
        {7 * kDay - 1, u"6d"_s},
        {7 * kDay, u"1w"_s},
        {28 * kDay, u"4w"_s},
        {30 * kDay - 1, u"4w"_s},
        {30 * kDay, u"1M"_s},
        {61 * kDay, u"2M"_s},
        {365 * kDay - 1, u"11M"_s},
        {365 * kDay, u"1y"_s},
        {2 * 365.25 * kDay, u"2y"_s},
        {47 * 365.25 * kDay, u"47y"_s},
        // Another device's clock may be ahead, or wrong altogether.
        {-1, u"now"_s},
        {-400 * kDay, u"now"_s},
        {1e300, u"9999y"_s},
        {std::numeric_limits<double>::infinity(), u"9999y"_s},
        {std::nan(""), u"now"_s},
    };
    const quib::tests::FakeClock clock;
    for (const Case &one : cases) {
        EXPECT_EQ(quib::shortTimeAgoSinceNow(NSDate::now().dateByAddingTimeInterval(-one.secondsAgo)), one.text)
            << one.secondsAgo;
    }
}

TEST(ShortTimeAgo, GrowsWithTheClock)
{
    quib::tests::FakeClock clock;
    const NSDate date = NSDate::now();
    clock.advance(90);
    EXPECT_EQ(quib::shortTimeAgoSinceNow(date), u"1m"_s);
    clock.advance(7'200);
    EXPECT_EQ(quib::shortTimeAgoSinceNow(date), u"2h"_s);
}
