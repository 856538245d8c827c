#pragma once

#include <Foundation/NSDate.h>

#include <QString>
#include <QStringView>

#include <optional>

/// Writes instants as text and reads them back, in the local time zone: by the date and time styles of the user's
/// language, or by a fixed pattern that depends on no language. Immutable; any thread.
class NSDateFormatter
{
public:
    enum class Style : quint8
    {
        None,
        Short,
        Medium,
        Long,
        Full,
    };

    NSDateFormatter(Style dateStyle, Style timeStyle);
    /// Shape: dateFormat in Unicode's pattern letters, as "yyyy-MM-dd'T'HH:mm".
    explicit NSDateFormatter(const QString &dateFormat);

    /// Empty when the system has no data for it.
    [[nodiscard]] QString stringFromDate(NSDate date) const;
    /// Nothing when the text as a whole is not such a date. Parts that the form leaves out are those of midnight.
    [[nodiscard]] std::optional<NSDate> dateFromString(QStringView string) const;

private:
    Style m_dateStyle = Style::None;
    Style m_timeStyle = Style::None;
    /// Empty for a formatter of styles.
    QString m_dateFormat;
};
