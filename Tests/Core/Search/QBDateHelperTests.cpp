#include <Search/QBDateHelper.h>

#include <Support/FakeClock.h>

#include <gtest/gtest.h>

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

NSDate local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    const QDateTime date(QDate(year, month, day), QTime(hour, minute, second));
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(date.toSecsSinceEpoch()));
}

TEST(ShortDate, IsReadInTheStyleOfTheLanguageOrAsNumbers)
{
    EXPECT_EQ(QBDateHelper::shortDateFromString(u"3/2/17"_s), local(2017, 3, 2));
    EXPECT_EQ(QBDateHelper::shortDateFromString(u"2017-03-02"_s), local(2017, 3, 2));
    for (const QString &bad : {u""_s, u"nonsense"_s, u"2017-03-32"_s, u"13/13/2017"_s, u"2017-03-02 x"_s}) {
        EXPECT_EQ(QBDateHelper::shortDateFromString(bad), std::nullopt) << bad.toStdString();
    }
}

TEST(ISODate, RoundTrips)
{
    const NSDate date = local(2017, 7, 2, 14, 5, 9);
    EXPECT_EQ(
        QBDateHelper::ISO8061DateFormatter().dateFromString(QBDateHelper::ISO8061DateFormatter().stringFromDate(date)),
        date);
    EXPECT_EQ(QBDateHelper::ISO8061DateFormatter().dateFromString(u"2017-03-02T10:11:12Z"),
              NSDate::dateWithTimeIntervalSince1970(1'488'449'472));
    EXPECT_EQ(QBDateHelper::ISO8061DateOnlyFormatter().stringFromDate(date), u"2017-07-02"_s);
}

TEST(CurrentDate, IsWrittenByItsCode)
{
    quib::tests::FakeClock clock;
    clock.setNow(local(2017, 3, 2, 14, 5, 9));
    EXPECT_TRUE(QBDateHelper::currentDateWithFormat(0).startsWith(u"Mar 2, 2017, 2:05"_s));
    EXPECT_TRUE(QBDateHelper::currentDateWithFormat(1).startsWith(u"2017-03-02T14:05:09"_s));
    EXPECT_EQ(QBDateHelper::currentDateWithFormat(2), u"Mar 2, 2017"_s);
    EXPECT_EQ(QBDateHelper::currentDateWithFormat(3), u"2017-03-02T14:05"_s);
    EXPECT_EQ(QBDateHelper::currentDateWithFormat(4), u"3/2/17"_s);
    EXPECT_EQ(QBDateHelper::currentDateWithFormat(5), u"2017-03-02"_s);
    EXPECT_TRUE(QBDateHelper::currentDateWithFormat(6).startsWith(u"2:05"_s));
    EXPECT_EQ(QBDateHelper::currentDateWithFormat(7), u"14:05:09"_s);
    for (const qint64 unknown : {-1, 8, 9}) {
        EXPECT_TRUE(QBDateHelper::currentDateWithFormat(unknown).isEmpty());
    }
    EXPECT_TRUE(QBDateHelper::currentISO8601DateWithFormat(2).isEmpty());
}

} // namespace
