#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

// What stands next to a range of a string.
//
// Shape: outOfBounds, which may be null, becomes true where there is no such place in the string, and the answer is
// then false. A range that was not found, or that reaches beyond the string, has nothing behind it; one that begins
// beyond the string has nothing before it either.

namespace quib {

/// Whether a unit belongs to a set, as isWhitespace, isNewline and isWhitespaceOrNewline of NSStringHelpers tell.
using CharacterSet = bool (*)(char16_t unit);

[[nodiscard]] bool qbCharBeforeRange(QStringView string, NSRange range, char16_t isEqualToChar,
                                     bool *outOfBounds = nullptr);
[[nodiscard]] bool qbCharAfterRange(QStringView string, NSRange range, char16_t isEqualToChar,
                                    bool *outOfBounds = nullptr);
[[nodiscard]] bool qbCharBeforeRange(QStringView string, NSRange range, CharacterSet isMemberOfCharacterSet,
                                     bool *outOfBounds = nullptr);
[[nodiscard]] bool qbCharAfterRange(QStringView string, NSRange range, CharacterSet isMemberOfCharacterSet,
                                    bool *outOfBounds = nullptr);
/// There must be room for the whole other string, else the place is out of bounds.
[[nodiscard]] bool qbStringBeforeRange(QStringView string, NSRange range, QStringView isEqualToString,
                                       bool *outOfBounds = nullptr);
[[nodiscard]] bool qbStringAfterRange(QStringView string, NSRange range, QStringView isEqualToString,
                                      bool *outOfBounds = nullptr);

} // namespace quib
