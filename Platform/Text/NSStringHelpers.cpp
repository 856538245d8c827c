#include "NSStringHelpers.h"

#include "AsciiRuns.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include <unicode/ubrk.h>
#include <unicode/ustring.h>

namespace quib {

namespace {

constexpr char16_t kSpace = u' ';
constexpr char16_t kLineFeed = u'\n';

/// True between "\r" and "\n", which end a line together.
bool splitsLineEnd(QStringView string, qint64 position)
{
    return position > 0 && position < string.size() && string[position - 1] == u'\r' && string[position] == u'\n';
}

template <typename Predicate> QString trimmed(QStringView string, Predicate isBlank)
{
    qsizetype start = 0;
    qsizetype limit = string.size();
    while (start < limit && isBlank(string[start].unicode())) {
        ++start;
    }
    while (limit > start && isBlank(string[limit - 1].unicode())) {
        --limit;
    }
    return string.sliced(start, limit - start).toString();
}

struct BreakCloser
{
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

/// The thread's iterator over grapheme clusters; making one costs far more than a query. Null when ICU has no data.
UBreakIterator *clusterIterator()
{
    thread_local const std::unique_ptr<UBreakIterator, BreakCloser> s_iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<UBreakIterator, BreakCloser>(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    }();
    return s_iterator.get();
}

/// OPTIMIZATION: two ASCII units other than "\r\n" always have a cluster boundary between them.
bool isPlainBoundary(QStringView string, qint64 position)
{
    if (position <= 0 || position >= string.size()) {
        return true;
    }
    return string[position - 1].unicode() < 0x80 && string[position].unicode() < 0x80 &&
           !splitsLineEnd(string, position);
}

} // namespace

std::optional<NSRange> rangeCutToString(QStringView string, NSRange range)
{
    if (range.location < 0 || range.location > string.size() || range.length < 0) {
        return std::nullopt;
    }
    return NSRange{range.location, std::min<qint64>(range.length, string.size() - range.location)};
}

NSRange paragraphRangeForRange(QStringView string, NSRange range)
{
    qint64 start = std::clamp<qint64>(range.location, 0, string.size());
    qint64 limit = start + std::clamp<qint64>(range.length, 0, string.size() - start);
    if (splitsLineEnd(string, start)) {
        --start;
    }
    // A range that ends behind a line end ends with that line; an empty one lies in the line that it touches.
    if (limit == start || !isParagraphEnd(string[limit - 1].unicode())) {
        while (limit < string.size() && !isParagraphEnd(string[limit].unicode())) {
            ++limit;
        }
        if (limit < string.size()) {
            ++limit;
        }
    }
    if (splitsLineEnd(string, limit)) {
        ++limit;
    }
    while (start > 0 && !isParagraphEnd(string[start - 1].unicode())) {
        --start;
    }
    return {start, limit - start};
}

NSRange rangeOfComposedCharacterSequencesForRange(QStringView string, NSRange range)
{
    qint64 start = std::clamp<qint64>(range.location, 0, string.size());
    qint64 limit = start + std::clamp<qint64>(range.length, 0, string.size() - start);
    if (isPlainBoundary(string, start) && isPlainBoundary(string, limit)) {
        return {start, limit - start};
    }
    UBreakIterator *iterator = clusterIterator();
    if (iterator == nullptr) {
        return {start, limit - start};
    }
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(iterator, reinterpret_cast<const UChar *>(string.utf16()), static_cast<int32_t>(string.size()),
                 &status);
    if (U_SUCCESS(status)) {
        // A place within a sequence leaves the iterator at the sequence's end.
        if (ubrk_isBoundary(iterator, static_cast<int32_t>(start)) == 0) {
            start = ubrk_previous(iterator);
        }
        if (ubrk_isBoundary(iterator, static_cast<int32_t>(limit)) == 0) {
            limit = ubrk_current(iterator);
        }
        static constexpr UChar kNothing = 0;
        ubrk_setText(iterator, &kNothing, 0, &status);
    }
    return {start, limit - start};
}

bool isWhitespace(char16_t unit)
{
    if (unit < 0x80) {
        return unit == u' ' || unit == u'\t';
    }
    return unit == 0x00A0 || unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x202F || unit == 0x205F ||
           unit == 0x3000;
}

bool isNewline(char16_t unit)
{
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x0085 || unit == 0x2028 || unit == 0x2029;
}

bool isWhitespaceOrNewline(char16_t unit)
{
    return isWhitespace(unit) || isNewline(unit);
}

QString trimmedWhitespace(QStringView string)
{
    return trimmed(string, isWhitespace);
}

QString trimmedWhitespaceAndNewlines(QStringView string)
{
    return trimmed(string, isWhitespaceOrNewline);
}

QString lowercaseString(QStringView string)
{
    QString lower(string.size(), Qt::Uninitialized);
    const qsizetype plain =
        ascii::copyLowered(string.utf16(), string.size(), reinterpret_cast<char16_t *>(lower.data()));
    if (plain == string.size()) {
        return lower;
    }
    // A unit becomes three at most; the final sigma needs its neighbours, so the text goes to ICU whole.
    if (string.size() > std::numeric_limits<int32_t>::max() / 3) {
        return string.toString().toLower();
    }
    lower.resize(3 * string.size());
    UErrorCode status = U_ZERO_ERROR;
    const int32_t size =
        u_strToLower(reinterpret_cast<UChar *>(lower.data()), static_cast<int32_t>(lower.size()),
                     reinterpret_cast<const UChar *>(string.utf16()), static_cast<int32_t>(string.size()), "", &status);
    lower.truncate(size);
    lower.squeeze();
    return lower;
}

NSRange rangeForRemovingCharactersInRangeLeavingNoGaps(QStringView string, NSRange range)
{
    const bool edgeBefore = range.location <= 0;
    const bool edgeAfter = range.limit() >= string.size();
    const char16_t before = edgeBefore ? u'\0' : string[range.location - 1].unicode();
    const char16_t after = edgeAfter ? u'\0' : string[range.limit()].unicode();
    const bool spaceBefore = !edgeBefore && before == kSpace;
    const bool spaceAfter = !edgeAfter && after == kSpace;
    const bool lineFeedBefore = !edgeBefore && before == kLineFeed;
    const bool lineFeedAfter = !edgeAfter && after == kLineFeed;

    if (spaceAfter && (spaceBefore || lineFeedBefore || edgeBefore)) {
        return {range.location, range.length + 1};
    }
    if ((spaceBefore && (lineFeedAfter || edgeAfter)) || (lineFeedBefore && edgeAfter)) {
        return {range.location - 1, range.length + 1};
    }
    return range;
}

QString stringByRemovingOccurrencesOfStringLeavingNoGaps(const QString &string, QStringView occurrence)
{
    const auto length = static_cast<size_t>(occurrence.size());
    if (length == 0 || occurrence.size() > string.size()) {
        return string;
    }
    // The copy is kept as a finished head plus the unread rest. The head never holds an occurrence, so the copy's first
    // one always ends where the head grows, and each head position remembers how much of an occurrence ends there
    // (Knuth, Morris and Pratt): the whole removal reads each unit once.
    std::vector<size_t> fallback(length, 0);
    const auto step = [&](size_t matched, QChar unit) {
        while (matched > 0 && (matched == length || occurrence[static_cast<qsizetype>(matched)] != unit)) {
            matched = fallback[matched - 1];
        }
        return occurrence[static_cast<qsizetype>(matched)] == unit ? matched + 1 : 0;
    };
    for (size_t i = 1; i < length; ++i) {
        fallback[i] = step(fallback[i - 1], occurrence[static_cast<qsizetype>(i)]);
    }

    QString head;
    head.reserve(string.size());
    std::vector<size_t> matchedAt;
    matchedAt.reserve(static_cast<size_t>(string.size()));
    for (qsizetype i = 0; i < string.size(); ++i) {
        head.append(string[i]);
        matchedAt.push_back(step(matchedAt.empty() ? 0 : matchedAt.back(), string[i]));
        if (matchedAt.back() != length) {
            continue;
        }
        const NSRange found{head.size() - occurrence.size(), occurrence.size()};
        // The neighbours are looked up in the original string, at the place that the occurrence has in the copy.
        const NSRange widened = rangeForRemovingCharactersInRangeLeavingNoGaps(string, found);
        if (widened.limit() > found.limit()) {
            ++i;
        }
        head.truncate(widened.location);
        matchedAt.resize(static_cast<size_t>(widened.location));
    }
    return head;
}

QString qbCleanConcatenatedString(const QString &string)
{
    QString clean(string.size(), Qt::Uninitialized);
    QChar *out = clean.data();
    const QStringView view(string);
    qsizetype position = 0;
    while (position < view.size()) {
        const char16_t first = view[position].unicode();
        if (first > kSpace && first < 0x7F) { // most characters
            *out++ = first;
            ++position;
            continue;
        }
        qsizetype limit = position;
        while (limit < view.size() && isWhitespaceOrNewline(view[limit].unicode())) {
            ++limit;
        }
        if (limit - position >= 2 || (limit > position && (first == u'\t' || first == kLineFeed))) {
            *out++ = kSpace;
            position = limit;
        } else {
            *out++ = first;
            ++position;
        }
    }
    clean.truncate(out - clean.constData());
    return trimmedWhitespaceAndNewlines(clean);
}

QString correctFilenamesWithDictionary(const QString &string, const QMap<QString, QString> &dictionary)
{
    QString corrected = string;
    for (auto name = dictionary.cbegin(); name != dictionary.cend(); ++name) {
        if (!name.key().isEmpty()) {
            corrected.replace(name.key(), name.value());
        }
    }
    return corrected;
}

} // namespace quib
