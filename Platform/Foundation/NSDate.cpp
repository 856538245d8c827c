#include "NSDate.h"

#include "Clock.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
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
    // The fraction is read apart: QDateTime keeps three digits, an instant six.
    qsizetype start = text.indexOf(u'.');
    if (start < 0) {
        start = text.indexOf(u',');
    }
    QString whole = text.toString();
    double fraction = 0;
    if (start >= 0) {
        qsizetype limit = start + 1;
        while (limit < text.size() && text[limit] >= u'0' && text[limit] <= u'9') {
            ++limit;
        }
        if (limit == start + 1) {
            return std::nullopt;
        }
        const QString digits = u"0." % text.sliced(start + 1, std::min<qsizetype>(limit - start - 1, 9));
        fraction = digits.toDouble();
        whole.remove(start, limit - start);
    }
    const QDateTime read = QDateTime::fromString(whole, Qt::ISODate);
    if (!read.isValid()) {
        return std::nullopt;
    }
    // Text without an offset or "Z" is in UTC: a date that travels means the same everywhere.
    const QDateTime instant = read.timeSpec() == Qt::LocalTime ? QDateTime(read.date(), read.time(), Qt::UTC) : read;
    return NSDate(static_cast<double>(instant.toSecsSinceEpoch()) + fraction);
}
