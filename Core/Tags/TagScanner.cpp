#include "TagScanner.h"

#include <Markup/Syntax/SyntaxCharacters.h>
#include <Text/NSStringHelpers.h>

namespace quib::tags {

using syntax::isClosingPunctuation;
using syntax::isHexDigit;
using syntax::isOpeningPunctuation;

namespace {

constexpr char16_t kHash = u'#';
constexpr qint64 kColorLength = 7;

/// A line end is white space, or the text's own end.
[[nodiscard]] bool isSpaceOrEnd(QStringView text, qint64 position)
{
    return position >= text.size() || isWhitespaceOrNewline(text[position].unicode());
}

[[nodiscard]] bool isBoundaryBefore(QStringView text, qint64 position)
{
    if (position == 0) {
        return true;
    }
    const char16_t unit = text[position - 1].unicode();
    return isWhitespaceOrNewline(unit) || isOpeningPunctuation(unit);
}

[[nodiscard]] bool isBoundaryAfter(QStringView text, qint64 position)
{
    return isSpaceOrEnd(text, position) || isClosingPunctuation(text[position].unicode());
}

/// Two hashes, or a colour code that stands alone.
[[nodiscard]] bool isRefused(QStringView text, qint64 position)
{
    if (position + 1 < text.size() && text[position + 1] == kHash) {
        return true;
    }
    if (text.size() - position < kColorLength) {
        return false;
    }
    for (qint64 i = 1; i < kColorLength; ++i) {
        if (!isHexDigit(text[position + i].unicode())) {
            return false;
        }
    }
    return isSpaceOrEnd(text, position + kColorLength);
}

} // namespace

qint64 lengthOfClosedTagAt(QStringView text, qint64 position, qint64 nextHash)
{
    const qint64 start = position + 1;
    if (nextHash >= text.size() || nextHash == start || isWhitespaceOrNewline(text[start].unicode()) ||
        isWhitespaceOrNewline(text[nextHash - 1].unicode()) || isRefused(text, position) ||
        text.sliced(start, nextHash - start).contains(u'\n')) {
        return 0;
    }
    return nextHash + 1 - position;
}

qint64 lengthOfSingleTagAt(QStringView text, qint64 position)
{
    const qint64 start = position + 1;
    if (!isBoundaryBefore(text, position) || isSpaceOrEnd(text, start) || text[start] == u'/' ||
        isRefused(text, position)) {
        return 0;
    }
    qint64 limit = start;
    while (limit < text.size() && (text[limit] == u'-' || (text[limit] >= u'0' && text[limit] <= u'9'))) {
        ++limit;
    }
    if (limit > start && isBoundaryAfter(text, limit)) {
        return 0;
    }
    // The first character counts whatever it is; no boundary lies inside of the digits or of a surrogate pair.
    limit = qMax(limit, start + 1);
    while (!isBoundaryAfter(text, limit)) {
        ++limit;
    }
    return limit - position;
}

} // namespace quib::tags
