#include "ShortTimeAgo.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace quib {

namespace {

constexpr double kMinute = 60;
constexpr double kHour = 60 * kMinute;
constexpr double kDay = 24 * kHour;
constexpr double kWeek = 7 * kDay;
/// Below a mean month, so that four weeks and a rest are never more than "4w".
constexpr double kFirstMonth = 30 * kDay;
constexpr double kFirstYear = 365 * kDay;
constexpr double kMeanYear = 365.2425 * kDay;
constexpr double kMostYears = 9999;

struct Unit
{
    /// From here on the unit is used.
    double from;
    double length;
    const char *text;
};

/// The longest first.
constexpr Unit kUnits[] = {
    {kFirstYear, kMeanYear, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1y")},
    {kFirstMonth, kMeanYear / 12, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1M")},
    {kWeek, kWeek, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1w")},
    {kDay, kDay, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1d")},
    {kHour, kHour, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1h")},
    {kMinute, kMinute, QT_TRANSLATE_NOOP("ShortTimeAgo", "%1m")},
};

} // namespace

QString shortTimeAgoSinceNow(NSDate date)
{
    const double seconds = NSDate::now().timeIntervalSinceDate(date);
    for (const Unit &unit : kUnits) {
        // Not true for what is no number.
        if (seconds >= unit.from) {
            const double count = std::clamp(std::floor(seconds / unit.length), 1.0, kMostYears);
            return QCoreApplication::translate("ShortTimeAgo", unit.text).arg(static_cast<qint64>(count));
        }
    }
    return QCoreApplication::translate("ShortTimeAgo", "now");
}

} // namespace quib
