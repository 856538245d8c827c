#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

#include <optional>

namespace quib {

/// Finds postal addresses from left to right: a street with its number, then a postal code with its town, in the forms
/// of the United States, the United Kingdom, Italy, Germany, France and Spain. An address may break into lines.
/// Anything that lacks one of these parts is none: a false alarm is worse than a miss. The text must outlive it.
class AddressScanner
{
public:
    explicit AddressScanner(QStringView text)
        : m_text(text)
    {
    }

    /// The next address; nothing when there is none any more.
    [[nodiscard]] std::optional<NSRange> next();
    /// How many units it gave to expressions so far: the measure of the work, for tests.
    [[nodiscard]] qint64 workDone() const { return m_work; }

private:
    enum class PostalCode
    {
        None,
        American,
        British,
        Continental,
    };

    /// The kind of the postal code that a digit begins or is part of; *limit is the end of what was read.
    [[nodiscard]] PostalCode postalCodeAt(qsizetype digit, qsizetype *limit) const;
    [[nodiscard]] std::optional<NSRange> addressAround(PostalCode code, qsizetype digit);

    QStringView m_text;
    qsizetype m_at = 0;
    qsizetype m_free = 0; ///< the end of the address found last: the next one begins behind it
    qint64 m_work = 0;
};

} // namespace quib
