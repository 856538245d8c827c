#include "QBDateHelper.h"

using Style = NSDateFormatter::Style;

std::optional<NSDate> QBDateHelper::shortDateFromString(const QString &string)
{
    const std::optional<NSDate> inStyle = NSDateFormatter(Style::Short, Style::None).dateFromString(string);
    return inStyle ? inStyle : ISO8061DateOnlyFormatter().dateFromString(string);
}

NSDateFormatter QBDateHelper::ISO8061DateFormatter()
{
    return NSDateFormatter(QStringLiteral("yyyy-MM-dd'T'HH:mm:ssXXX"));
}

NSDateFormatter QBDateHelper::ISO8061DateOnlyFormatter()
{
    return NSDateFormatter(QStringLiteral("yyyy-MM-dd"));
}

QString QBDateHelper::currentDateWithFormat(qint64 format)
{
    const NSDate now = NSDate::now();
    switch (format) {
    case 0:
        return NSDateFormatter(Style::Medium, Style::Short).stringFromDate(now);
    case 2:
        return NSDateFormatter(Style::Medium, Style::None).stringFromDate(now);
    case 4:
        return NSDateFormatter(Style::Short, Style::None).stringFromDate(now);
    case 6:
        return NSDateFormatter(Style::None, Style::Short).stringFromDate(now);
    default:
        return currentISO8601DateWithFormat(format);
    }
}

QString QBDateHelper::currentISO8601DateWithFormat(qint64 format)
{
    const NSDate now = NSDate::now();
    switch (format) {
    case 1:
        return ISO8061DateFormatter().stringFromDate(now);
    case 3:
        return NSDateFormatter(QStringLiteral("yyyy-MM-dd'T'HH:mm")).stringFromDate(now);
    case 5:
        return ISO8061DateOnlyFormatter().stringFromDate(now);
    case 7:
        return NSDateFormatter(QStringLiteral("HH:mm:ss")).stringFromDate(now);
    default:
        return {};
    }
}
