#pragma once

#include <Foundation/NSRange.h>

#include <QMap>
#include <QString>
#include <QStringView>

#include <optional>

namespace quib {

/// The part of a range that lies in the string; nothing when the range begins outside of it or was not found.
[[nodiscard]] std::optional<NSRange> rangeCutToString(QStringView string, NSRange range);

/// The whole line or lines that touch the range, terminators included. Terminators: \n, \r, \r\n, U+0085, U+2028,
/// U+2029.
[[nodiscard]] NSRange paragraphRangeForRange(QStringView string, NSRange range);
/// The range widened so that it splits no composed character sequence (grapheme cluster).
[[nodiscard]] NSRange rangeOfComposedCharacterSequencesForRange(QStringView string, NSRange range);
/// Without white space (blanks, tabs, Unicode space separators; no line ends) at both ends.
[[nodiscard]] QString trimmedWhitespace(QStringView string);
/// Without white space and line ends at both ends.
[[nodiscard]] QString trimmedWhitespaceAndNewlines(QStringView string);
/// What ends a paragraph: the terminators above.
[[nodiscard]] constexpr bool isParagraphEnd(char16_t unit)
{
    return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}
[[nodiscard]] bool isWhitespace(char16_t unit);
[[nodiscard]] bool isNewline(char16_t unit);
[[nodiscard]] bool isWhitespaceOrNewline(char16_t unit);

/// The text in lower case, by the full rules of Unicode and of no language in particular.
[[nodiscard]] QString lowercaseString(QStringView string);

/// Widens a range so that removing it leaves no double or stray blank behind.
[[nodiscard]] NSRange rangeForRemovingCharactersInRangeLeavingNoGaps(QStringView string, NSRange range);
/// Removes a string again and again, each time by that rule; the rule is evaluated on the original string while the
/// removal takes place on the copy.
[[nodiscard]] QString stringByRemovingOccurrencesOfStringLeavingNoGaps(const QString &string, QStringView occurrence);
/// Line feeds and runs of white space become one blank each; trimmed.
[[nodiscard]] QString qbCleanConcatenatedString(const QString &string);
/// The text with every occurrence of each key replaced by its value, key after key in their order, literally.
[[nodiscard]] QString correctFilenamesWithDictionary(const QString &string, const QMap<QString, QString> &dictionary);

} // namespace quib
