#pragma once

#include <QChar>
#include <QStringView>

namespace quib {

/// What the characters of a text mean to the detectors of links and addresses.

struct CodePoint
{
    char32_t value = 0;
    qsizetype size = 1; ///< in UTF-16 code units
};

/// A lone surrogate is a code point of its own.
[[nodiscard]] CodePoint codePointAt(QStringView text, qsizetype index);
[[nodiscard]] CodePoint codePointBefore(QStringView text, qsizetype index);

/// Letters, digits and the marks on them.
[[nodiscard]] bool isWordCharacter(char32_t character);
/// Letters of the scripts whose words follow each other, or other words, without a space: a name of another script ends
/// where they begin, and they do not keep one from beginning.
[[nodiscard]] bool isWrittenWithoutSpaces(char32_t character);
/// Follows a label letter by letter and tells where letters that are written without spaces meet others.
class ScriptSeam
{
public:
    /// True when the character begins another word, although nothing stands between; it is then not followed.
    [[nodiscard]] bool isBefore(char32_t character);

private:
    enum class Kind
    {
        Open,
        Spaced,
        WithoutSpaces,
    };
    Kind m_kind = Kind::Open;
};
/// Where every link ends: white space, controls, quotes, angle brackets, and what stands in no address.
[[nodiscard]] bool endsLinks(char32_t character);
/// What a link may hold, but not as its last character: it is the sentence's there.
[[nodiscard]] bool isTrailingPunctuation(char32_t character);

[[nodiscard]] constexpr bool isAsciiDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}
[[nodiscard]] constexpr bool isAsciiLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

} // namespace quib
