#pragma once

#include <Foundation/NSDate.h>
#include <Text/NSDateFormatter.h>

#include <QString>

#include <optional>

/// Dates as people write them in searches and as commands put them into notes; local time zone, the shared clock's now.
/// Class-level only; any thread.
class QBDateHelper
{
public:
    QBDateHelper() = delete;

    /// Reads a day in the short style of the user's language, or as "yyyy-MM-dd": the instant at which it begins.
    [[nodiscard]] static std::optional<NSDate> shortDateFromString(const QString &string);
    /// Date and time with the zone's offset, as "2017-03-02T10:11:12+01:00".
    [[nodiscard]] static NSDateFormatter ISO8061DateFormatter();
    /// As "2017-03-02".
    [[nodiscard]] static NSDateFormatter ISO8061DateOnlyFormatter();

    /// The current date as text. Even codes: 0 medium date and short time, 2 medium date, 4 short date, 6 short time.
    /// Odd codes are those of currentISO8601DateWithFormat. Empty for any other code.
    [[nodiscard]] static QString currentDateWithFormat(qint64 format);
    /// 1 the ISO date and time, 3 "yyyy-MM-dd'T'HH:mm", 5 "yyyy-MM-dd", 7 "HH:mm:ss". Empty for any other code.
    [[nodiscard]] static QString currentISO8601DateWithFormat(qint64 format);
};
