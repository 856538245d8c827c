#include "TextAroundRange.h"

#include <optional>

namespace quib {

namespace {

/// So many units that end where the range begins; nothing where there are not as many.
std::optional<QStringView> unitsBefore(QStringView string, NSRange range, qsizetype count)
{
    if (range.location < count || range.location > string.size()) {
        return std::nullopt;
    }
    return string.sliced(range.location - count, count);
}

/// So many units that begin where the range ends; nothing where there are not as many.
std::optional<QStringView> unitsAfter(QStringView string, NSRange range, qsizetype count)
{
    // Compared without sums: the numbers of a range that was not found are too large for them.
    const bool isInside = range.location >= 0 && range.length >= 0 && range.location <= string.size() &&
                          range.length <= string.size() - range.location &&
                          count <= string.size() - range.location - range.length;
    if (!isInside) {
        return std::nullopt;
    }
    return string.sliced(range.limit(), count);
}

template <typename Test> bool answer(std::optional<QStringView> units, bool *outOfBounds, const Test &test)
{
    if (outOfBounds != nullptr) {
        *outOfBounds = !units;
    }
    return units && test(*units);
}

} // namespace

bool qbCharBeforeRange(QStringView string, NSRange range, char16_t isEqualToChar, bool *outOfBounds)
{
    return qbStringBeforeRange(string, range, QStringView(&isEqualToChar, 1), outOfBounds);
}

bool qbCharAfterRange(QStringView string, NSRange range, char16_t isEqualToChar, bool *outOfBounds)
{
    return qbStringAfterRange(string, range, QStringView(&isEqualToChar, 1), outOfBounds);
}

bool qbCharBeforeRange(QStringView string, NSRange range, CharacterSet isMemberOfCharacterSet, bool *outOfBounds)
{
    return answer(unitsBefore(string, range, 1), outOfBounds, [isMemberOfCharacterSet](QStringView unit) {
        return isMemberOfCharacterSet(unit.front().unicode());
    });
}

bool qbCharAfterRange(QStringView string, NSRange range, CharacterSet isMemberOfCharacterSet, bool *outOfBounds)
{
    return answer(unitsAfter(string, range, 1), outOfBounds, [isMemberOfCharacterSet](QStringView unit) {
        return isMemberOfCharacterSet(unit.front().unicode());
    });
}

bool qbStringBeforeRange(QStringView string, NSRange range, QStringView isEqualToString, bool *outOfBounds)
{
    return answer(unitsBefore(string, range, isEqualToString.size()), outOfBounds,
                  [isEqualToString](QStringView units) { return units == isEqualToString; });
}

bool qbStringAfterRange(QStringView string, NSRange range, QStringView isEqualToString, bool *outOfBounds)
{
    return answer(unitsAfter(string, range, isEqualToString.size()), outOfBounds,
                  [isEqualToString](QStringView units) { return units == isEqualToString; });
}

} // namespace quib
