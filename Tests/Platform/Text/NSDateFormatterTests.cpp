#include <Text/NSDateFormatter.h>

#include <gtest/gtest.h>

#include <QDateTime>

using namespace Qt::StringLiterals;
using Style = NSDateFormatter::Style;

namespace {

NSDate local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    const QDateTime date(QDate(year, month, day), QTime(hour, minute, second));
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(date.toSecsSinceEpoch()));
}

TEST(DateFormatter, WritesAndReadsAPattern)
{
    const NSDateFormatter formatter(u"yyyy-MM-dd'T'HH:mm:ss"_s);
    EXPECT_EQ(formatter.stringFromDate(local(2017, 3, 2, 14, 5, 9)), u"2017-03-02T14:05:09"_s);
    EXPECT_EQ(formatter.dateFromString(u"2017-07-02T14:05:09"), local(2017, 7, 2, 14, 5, 9));

    const NSDateFormatter day(u"yyyy-MM-dd"_s);
    EXPECT_EQ(day.dateFromString(u"2017-03-02"), local(2017, 3, 2));
    for (const QStringView bad : {u"", u"2017", u"2017-13-02", u"2017-02-30", u"2017-03-02x", u"nonsense"}) {
        EXPECT_EQ(day.dateFromString(bad), std::nullopt) << bad.toString().toStdString();
    }
    EXPECT_EQ(day.dateFromString(QString(1000, u'1')), std::nullopt);
}

TEST(DateFormatter, FollowsTheStylesOfTheLanguage)
{
    // The tests run in the C locale, which American English stands in for.
    const NSDate date = local(2017, 3, 2, 14, 5);
    EXPECT_EQ(NSDateFormatter(Style::Short, Style::None).stringFromDate(date), u"3/2/17"_s);
    EXPECT_EQ(NSDateFormatter(Style::Medium, Style::None).stringFromDate(date), u"Mar 2, 2017"_s);
    EXPECT_TRUE(NSDateFormatter(Style::None, Style::Short).stringFromDate(date).startsWith(u"2:05"_s));
    EXPECT_EQ(NSDateFormatter(Style::Short, Style::None).dateFromString(u"3/2/17"), local(2017, 3, 2));
    EXPECT_EQ(NSDateFormatter(Style::Short, Style::None).dateFromString(u"03/02/2017"), local(2017, 3, 2));
    EXPECT_EQ(NSDateFormatter(Style::Short, Style::None).dateFromString(u"2017-03-02"), std::nullopt);
}

} // namespace
