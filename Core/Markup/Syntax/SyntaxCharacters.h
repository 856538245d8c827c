#pragma once

#include <QChar>
#include <QStringView>

#include <algorithm>

/// The classes of characters that the patterns of the markup use, unit by unit. All members of these classes are single
/// UTF-16 units, so a surrogate is never one.
namespace quib::syntax {

/// What "." does not match and "^" and "$" go by.
[[nodiscard]] constexpr bool isLineTerminator(char16_t unit)
{
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || (unit & 0xFFFE) == 0x2028;
}

/// \s
[[nodiscard]] constexpr bool isSpace(char16_t unit)
{
    if (unit < 0x80) {
        return unit == u' ' || (unit >= 0x09 && unit <= 0x0D);
    }
    return unit == 0x85 || unit == 0xA0 || unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) ||
           (unit & 0xFFFE) == 0x2028 || unit == 0x202F || unit == 0x205F || unit == 0x3000;
}

[[nodiscard]] constexpr bool isHexDigit(char16_t unit)
{
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

/// Punctuation behind which an inline construct or a tag may begin.
[[nodiscard]] constexpr bool isOpeningPunctuation(char16_t unit)
{
    return unit == u'[' || unit == u'(' || unit == u'"' || unit == u'{' || unit == u'\'';
}

/// Punctuation before which one may end.
[[nodiscard]] constexpr bool isClosingPunctuation(char16_t unit)
{
    switch (unit) {
    case u';':
    case u':':
    case u'\u060C':
    case u',':
    case u'\u2026':
    case u'\u3001':
    case u'.':
    case u'!':
    case u')':
    case u'?':
    case u'}':
    case u']':
    case u'\'':
    case u'"':
        return true;
    default:
        return false;
    }
}

/// Where an inline construct may begin: inlineBeginPattern at a place of a region.
[[nodiscard]] inline bool isInlineBegin(QStringView region, qsizetype place)
{
    if (place == 0) {
        return true;
    }
    const char16_t unit = region[place - 1].unicode();
    return isSpace(unit) || isOpeningPunctuation(unit);
}

/// Where one may end: inlineEndPattern at a place of a region.
[[nodiscard]] inline bool isInlineEnd(QStringView region, qsizetype place)
{
    if (place >= region.size()) {
        return true;
    }
    const char16_t unit = region[place].unicode();
    return isSpace(unit) || isClosingPunctuation(unit);
}

/// The first line terminator at or behind a place, or the region's end.
[[nodiscard]] inline qsizetype lineLimit(QStringView region, qsizetype place)
{
    const auto *units = region.utf16();
    const qsizetype size = region.size();
    // OPTIMIZATION: a line that is not short is passed in blocks without a terminator.
    constexpr qsizetype kShort = 12;
    constexpr qsizetype kBlock = 16;
    for (const qsizetype limit = std::min(size, place + kShort); place < limit; ++place) {
        if (isLineTerminator(static_cast<char16_t>(units[place]))) {
            return place;
        }
    }
    while (size - place >= kBlock) {
        unsigned near = 0;
        for (qsizetype i = 0; i < kBlock; ++i) {
            const auto unit = static_cast<char16_t>(units[place + i]);
            near |= unsigned(unit <= 0x0D) | unsigned(unit == 0x85) | unsigned((unit & 0xFFFE) == 0x2028);
        }
        if (near != 0) {
            break;
        }
        place += kBlock;
    }
    while (place < size && !isLineTerminator(units[place])) {
        ++place;
    }
    return place;
}

/// The first place at or behind another where "$" holds: before a terminator, but not between CR and LF, or at the end.
[[nodiscard]] inline qsizetype dollarPlace(QStringView region, qsizetype place)
{
    place = lineLimit(region, place);
    const bool isInsidePair =
        place > 0 && place < region.size() && region[place] == u'\n' && region[place - 1] == u'\r';
    return isInsidePair ? lineLimit(region, place + 1) : place;
}

/// Whether "^" holds at a place.
[[nodiscard]] inline bool isLineStart(QStringView region, qsizetype place)
{
    return place == 0 || (place < region.size() && isLineTerminator(region[place - 1].unicode()));
}

/// The length of the code point at a place.
[[nodiscard]] inline qsizetype codePointLength(QStringView region, qsizetype place)
{
    return region[place].isHighSurrogate() && place + 1 < region.size() && region[place + 1].isLowSurrogate() ? 2 : 1;
}

} // namespace quib::syntax
