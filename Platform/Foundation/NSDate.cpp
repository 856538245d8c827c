#include "NSDate.h"

#include "Clock.h"

#include <QDateTime>
#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;

NSDate NSDate::now()
{
    return quib::Clock::shared().now();
}

QString NSDate::iso8601String() const
{
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(m_seconds)), Qt::UTC).toString(Qt::ISODate);
}

std::optional<NSDate> NSDate::dateFromISO8601String(QStringView text)
{
    const QDateTime read = QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
    if (!read.isValid()) {
        return std::nullopt;
    }
    // Text without an offset or "Z" is in UTC: a date that travels means the same everywhere.
    const QDateTime instant = read.timeSpec() == Qt::LocalTime ? QDateTime(read.date(), read.time(), Qt::UTC) : read;
    return NSDate(static_cast<double>(instant.toMSecsSinceEpoch()) / 1000);
}
