#include "NSDateFormatter.h"

#include "UserLocale.h"

#include <QTimeZone>

#include <array>
#include <memory>

#include <unicode/udat.h>

namespace {

/// No date is written or read in more units than this.
constexpr int32_t kLongestDate = 256;

struct FormatCloser
{
    void operator()(UDateFormat *format) const { udat_close(format); }
};
using Format = std::unique_ptr<UDateFormat, FormatCloser>;

[[nodiscard]] UDateFormatStyle icuStyle(NSDateFormatter::Style style)
{
    switch (style) {
    case NSDateFormatter::Style::None:
        return UDAT_NONE;
    case NSDateFormatter::Style::Short:
        return UDAT_SHORT;
    case NSDateFormatter::Style::Medium:
        return UDAT_MEDIUM;
    case NSDateFormatter::Style::Long:
        return UDAT_LONG;
    case NSDateFormatter::Style::Full:
        return UDAT_FULL;
    }
    return UDAT_NONE;
}

/// A format of its own for each call: ICU's formats are not safe to share between threads.
[[nodiscard]] Format openFormat(UDateFormatStyle dateStyle, UDateFormatStyle timeStyle, const QString &pattern)
{
    // Asked for each time: a machine may travel while the program runs. Without a name ICU's own guess has to do.
    const QString timeZone = QString::fromLatin1(QTimeZone::systemTimeZoneId());
    UErrorCode status = U_ZERO_ERROR;
    Format format(udat_open(timeStyle, dateStyle, pattern.isEmpty() ? quib::userLocale() : "en_US_POSIX",
                            timeZone.isEmpty() ? nullptr : reinterpret_cast<const UChar *>(timeZone.utf16()),
                            static_cast<int32_t>(timeZone.size()), reinterpret_cast<const UChar *>(pattern.utf16()),
                            static_cast<int32_t>(pattern.size()), &status));
    if (U_FAILURE(status)) {
        return nullptr;
    }
    udat_setLenient(format.get(), false);
    return format;
}

} // namespace

NSDateFormatter::NSDateFormatter(Style dateStyle, Style timeStyle)
    : m_dateStyle(dateStyle)
    , m_timeStyle(timeStyle)
{
}

NSDateFormatter::NSDateFormatter(const QString &dateFormat)
    : m_dateFormat(dateFormat)
{
}

QString NSDateFormatter::stringFromDate(NSDate date) const
{
    const bool isPattern = !m_dateFormat.isEmpty();
    const Format format = openFormat(isPattern ? UDAT_PATTERN : icuStyle(m_dateStyle),
                                     isPattern ? UDAT_PATTERN : icuStyle(m_timeStyle), m_dateFormat);
    if (format == nullptr) {
        return {};
    }
    std::array<UChar, kLongestDate> text;
    UErrorCode status = U_ZERO_ERROR;
    const int32_t size =
        udat_format(format.get(), date.timeIntervalSince1970() * 1000, text.data(), kLongestDate, nullptr, &status);
    return U_SUCCESS(status) && size <= kLongestDate ? QStringView(text.data(), size).toString() : QString();
}

std::optional<NSDate> NSDateFormatter::dateFromString(QStringView string) const
{
    const bool isPattern = !m_dateFormat.isEmpty();
    const Format format = openFormat(isPattern ? UDAT_PATTERN : icuStyle(m_dateStyle),
                                     isPattern ? UDAT_PATTERN : icuStyle(m_timeStyle), m_dateFormat);
    if (format == nullptr || string.isEmpty() || string.size() > kLongestDate) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto size = static_cast<int32_t>(string.size());
    int32_t position = 0;
    const UDate date =
        udat_parse(format.get(), reinterpret_cast<const UChar *>(string.utf16()), size, &position, &status);
    if (U_FAILURE(status) || position != size) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(date / 1000);
}
