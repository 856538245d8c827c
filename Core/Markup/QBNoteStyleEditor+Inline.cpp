#include "QBNoteStyleEditor.h"

#include "MarkerEdits.h"
#include "TextlessAttachments.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/SyntaxCharacters.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>
#include <vector>

using quib::MarkerEdits;

// Commands that put a stretch of a line between two markers.

namespace {

/// Two markers of a line as they are painted, and what lies between.
struct Pair
{
    NSRange open;
    NSRange close;

    [[nodiscard]] NSRange content() const { return {open.limit(), close.location - open.limit()}; }
    /// Whether a place lies between the markers, their inner edges included.
    [[nodiscard]] bool encloses(qint64 place) const { return place >= open.limit() && place <= close.location; }
};

std::span<const NSAttributeName> inlineMarkerNames()
{
    static const std::array names{
        QBNoteBoldTextStylerMarkerAttributeName,        QBNoteItalicTextStylerMarkerAttributeName,
        QBNoteUnderlineTextStylerMarkerAttributeName,   QBNoteStrikedTextStylerMarkerAttributeName,
        QBNoteHighlighterTextStylerMarkerAttributeName, QBNoteCodeInlineTextStylerMarkerAttributeName};
    return names;
}

/// One line of a text, and one inline command at work on it.
class InlineToggle
{
public:
    InlineToggle(MarkerEdits &edits, NSRange line, const QString &styleMarker, const NSAttributeName &styleMarkerName,
                 bool isHalfOfOther)
        : m_edits(edits)
        , m_text(edits.text())
        , m_line(line)
        , m_marker(styleMarker)
        , m_markerName(styleMarkerName)
        , m_isHalfOfOther(isHalfOfOther)
    {
        findPairs();
    }

    /// Gathers the edits for a range of the line. Gives the range with the markers around it that are edited, in the
    /// text as it is; not-found where there is nothing to put between markers.
    [[nodiscard]] NSRange toggleInlineStyle(NSRange inRange, bool needTrimming, bool needExternalBoundarySpaces);

private:
    void findPairs();
    [[nodiscard]] const Pair *pairBefore(qint64 place) const;
    [[nodiscard]] const Pair *pairAround(qint64 place) const;
    [[nodiscard]] qint64 placeOutsideOfMarkers(qint64 place) const;
    [[nodiscard]] NSRange withWholeMarkers(NSRange range) const;
    [[nodiscard]] NSRange withoutSpaces(NSRange range) const;
    [[nodiscard]] bool isMarkerText(qint64 location) const;
    [[nodiscard]] bool isPartOfLongerMarker(qint64 edge, int direction) const;
    [[nodiscard]] bool isNoText(qint64 place) const;
    [[nodiscard]] bool isStyledThroughout(NSRange range) const;
    [[nodiscard]] qint64 textLength(NSRange range) const;
    template <typename Block> void forEachMarkerIn(NSRange range, const Block &block) const;

    [[nodiscard]] NSRange toggleEmpty(NSRange range, bool isCaret, bool needExternalBoundarySpaces);
    [[nodiscard]] std::optional<NSRange> toggleOff(NSRange range);
    [[nodiscard]] std::optional<NSRange> unpaintedOff(NSRange range);
    [[nodiscard]] NSRange toggleOn(NSRange range, bool needExternalBoundarySpaces);
    void removeMarkersIn(NSRange range);
    void insertOpening(qint64 location, bool needExternalBoundarySpaces);
    void insertClosing(qint64 location, bool needExternalBoundarySpaces);

    MarkerEdits &m_edits;
    const NSAttributedString &m_text;
    const NSRange m_line;
    const QString &m_marker;
    const NSAttributeName &m_markerName;
    /// The marker twice is another style's marker.
    const bool m_isHalfOfOther;
    std::vector<Pair> m_pairs;
};

NSRange InlineToggle::toggleInlineStyle(NSRange inRange, bool needTrimming, bool needExternalBoundarySpaces)
{
    const bool isCaret = inRange.length == 0;
    NSRange range = inRange;
    if (isCaret) {
        range.location = placeOutsideOfMarkers(range.location);
        if (const Pair *pair = pairAround(range.location)) {
            range = pair->content();
        }
    } else {
        range = needTrimming ? withoutSpaces(range) : range;
        if (range.length == 0) {
            return kNotFoundRange;
        }
        range = withWholeMarkers(range);
    }
    if (textLength(range) == 0) {
        return toggleEmpty(range, isCaret, needExternalBoundarySpaces);
    }
    if (const auto widened = toggleOff(range)) {
        return *widened;
    }
    return toggleOn(range, needExternalBoundarySpaces);
}

/// Markers of one kind open and close in turn, and no pair leaves its line. Where a style has two writings, the other
/// one within a pair is what stands between the markers.
void InlineToggle::findPairs()
{
    const qint64 length = m_marker.size();
    std::optional<NSRange> open;
    m_text.enumerateAttribute(m_markerName, m_line, NSAttributedStringEnumerationOptions::Forward,
                              [&](const quib::AttributeValue &value, NSRange run, bool * /*stop*/) {
                                  // Markers that touch are one run.
                                  for (qint64 i = run.location; value && i + length <= run.limit(); i += length) {
                                      const NSRange marker{i, length};
                                      if (!open) {
                                          open = marker;
                                      } else if (m_text.stringInRange(*open) == m_text.stringInRange(marker)) {
                                          m_pairs.push_back({*std::exchange(open, std::nullopt), marker});
                                      }
                                  }
                              });
}

/// The last pair that begins before a place.
const Pair *InlineToggle::pairBefore(qint64 place) const
{
    const auto behind =
        std::ranges::lower_bound(m_pairs, place, {}, [](const Pair &pair) { return pair.open.location; });
    return behind == m_pairs.begin() ? nullptr : &*std::prev(behind);
}

const Pair *InlineToggle::pairAround(qint64 place) const
{
    const Pair *pair = pairBefore(place);
    return pair != nullptr && pair->encloses(place) ? pair : nullptr;
}

/// A caret within a marker goes to the marker's inner side.
qint64 InlineToggle::placeOutsideOfMarkers(qint64 place) const
{
    const Pair *pair = pairBefore(place);
    if (pair == nullptr) {
        return place;
    }
    if (place < pair->open.limit()) {
        return pair->open.limit();
    }
    return place > pair->close.location && place < pair->close.limit() ? pair->close.location : place;
}

NSRange InlineToggle::withWholeMarkers(NSRange range) const
{
    qint64 start = range.location;
    qint64 limit = range.limit();
    if (const Pair *pair = pairBefore(start)) {
        start = start < pair->open.limit() ? pair->open.location : start;
        start = start > pair->close.location && start < pair->close.limit() ? pair->close.location : start;
    }
    if (const Pair *pair = pairBefore(limit)) {
        limit = limit < pair->open.limit() ? pair->open.limit() : limit;
        limit = limit > pair->close.location && limit < pair->close.limit() ? pair->close.limit() : limit;
    }
    return {start, limit - start};
}

NSRange InlineToggle::withoutSpaces(NSRange range) const
{
    const auto isSpace = [this](qint64 place) {
        return quib::syntax::isSpace(m_text.characterAtIndex(place)) || quib::isTextlessAttachment(m_text, place);
    };
    qint64 start = range.location;
    qint64 limit = range.limit();
    while (start < limit && isSpace(start)) {
        ++start;
    }
    while (limit > start && isSpace(limit - 1)) {
        --limit;
    }
    return {start, limit - start};
}

/// Calls block for each marker that lies in a range.
template <typename Block> void InlineToggle::forEachMarkerIn(NSRange range, const Block &block) const
{
    const auto callWithin = [&](NSRange marker) {
        if (marker.location >= range.location && marker.limit() <= range.limit()) {
            block(marker);
        }
    };
    for (const Pair &pair : m_pairs) {
        callWithin(pair.open);
        callWithin(pair.close);
    }
}

/// What a range holds beside markers of the style.
qint64 InlineToggle::textLength(NSRange range) const
{
    qint64 length = range.length;
    forEachMarkerIn(range, [&length](NSRange marker) { length -= marker.length; });
    return length;
}

/// Markers of other styles, and what stands for nothing, are no text: they count neither as styled nor as plain.
bool InlineToggle::isNoText(qint64 place) const
{
    return quib::isTextlessAttachment(m_text, place) ||
           std::ranges::any_of(inlineMarkerNames(), [&](const NSAttributeName &name) {
               return name != m_markerName && m_text.attribute(name, place).boolValue();
           });
}

bool InlineToggle::isStyledThroughout(NSRange range) const
{
    qint64 place = range.location;
    const auto isPassed = [&](qint64 limit) {
        while (place < limit && isNoText(place)) {
            ++place;
        }
        return place >= limit;
    };
    for (const Pair &pair : m_pairs) {
        if (pair.close.limit() > range.location && pair.open.location < range.limit()) {
            if (!isPassed(std::min(pair.open.location, range.limit()))) {
                return false;
            }
            place = pair.close.limit();
        }
    }
    return isPassed(range.limit());
}

bool InlineToggle::isMarkerText(qint64 location) const
{
    return location >= m_line.location && location + m_marker.size() <= m_line.limit() &&
           m_text.stringInRange({location, m_marker.size()}) == m_marker;
}

/// Whether a marker of one unit that ends or begins at an edge belongs to one of two such units, which is another
/// style's: an even number of them stands there.
bool InlineToggle::isPartOfLongerMarker(qint64 edge, int direction) const
{
    if (!m_isHalfOfOther) {
        return false;
    }
    qint64 count = 0;
    for (qint64 i = direction < 0 ? edge - 1 : edge;
         i >= m_line.location && i < m_line.limit() && m_text.characterAtIndex(i) == m_marker.front(); i += direction) {
        ++count;
    }
    return count % 2 == 0;
}

/// Nothing but markers, or nothing at all.
NSRange InlineToggle::toggleEmpty(NSRange range, bool isCaret, bool needExternalBoundarySpaces)
{
    const qint64 length = m_marker.size();
    const NSRange before{range.location - length, length};
    const NSRange behind{range.limit(), length};
    if (isMarkerText(before.location) && isMarkerText(behind.location) && !isPartOfLongerMarker(range.location, -1) &&
        !isPartOfLongerMarker(range.limit(), 1)) {
        const NSRange widened = NSUnionRange(before, behind);
        m_edits.remove(widened);
        return widened;
    }
    if (isCaret) {
        insertOpening(range.location, needExternalBoundarySpaces);
        insertClosing(range.location, needExternalBoundarySpaces);
        return range;
    }
    const bool areWholePairs = std::ranges::all_of(m_pairs, [&](const Pair &pair) {
        return pair.open.limit() <= range.location || pair.close.location >= range.limit() ||
               (pair.open.location >= range.location && pair.close.limit() <= range.limit());
    });
    if (!areWholePairs) {
        return kNotFoundRange;
    }
    m_edits.remove(range);
    return range;
}

/// Takes the markers away where all text of a range is styled and its first and last markers are at hand; nothing where
/// they are not.
std::optional<NSRange> InlineToggle::toggleOff(NSRange range)
{
    qint64 start = range.location;
    qint64 limit = range.limit();
    if (m_pairs.empty() || !isStyledThroughout(range)) {
        return unpaintedOff(range);
    }
    // The markers inside, or directly outside; those of other styles may stand between.
    const qint64 length = m_marker.size();
    qint64 inner = start;
    while (inner < limit && isNoText(inner)) {
        ++inner;
    }
    const Pair *first = pairBefore(inner + 1);
    if (first == nullptr || first->open.location != inner) {
        first = pairAround(start);
        while (first != nullptr && start > first->open.limit() && isNoText(start - 1)) {
            --start;
        }
        if (first == nullptr || start != first->open.limit()) {
            return unpaintedOff(range);
        }
        start -= length;
    }
    inner = limit;
    while (inner > range.location && isNoText(inner - 1)) {
        --inner;
    }
    const Pair *last = pairBefore(inner);
    if (last == nullptr || last->close.limit() != inner) {
        last = pairAround(limit);
        while (last != nullptr && limit < last->close.location && isNoText(limit)) {
            ++limit;
        }
        if (last == nullptr || limit != last->close.location) {
            return unpaintedOff(range);
        }
        limit += length;
    }
    const NSRange widened{start, limit - start};
    removeMarkersIn(widened);
    return widened;
}

/// Markers at a range's ends that nothing paints, as within a header, go all the same, so that a command undoes itself.
std::optional<NSRange> InlineToggle::unpaintedOff(NSRange range)
{
    const qint64 length = m_marker.size();
    const bool isTouched = std::ranges::any_of(m_pairs, [&](const Pair &pair) {
        return pair.close.limit() >= range.location && pair.open.location <= range.limit();
    });
    const NSRange content{range.location + length, range.length - 2 * length};
    if (isTouched || content.length <= 0 || !isMarkerText(range.location) || !isMarkerText(content.limit()) ||
        isPartOfLongerMarker(range.location, 1) || isPartOfLongerMarker(range.limit(), -1) ||
        withoutSpaces(content) != content) {
        return std::nullopt;
    }
    m_edits.remove({range.location, length});
    m_edits.remove({content.limit(), length});
    return range;
}

/// Styled stretches that a range reaches into become one with it: only a side that is plain gets a marker.
NSRange InlineToggle::toggleOn(NSRange range, bool needExternalBoundarySpaces)
{
    const Pair *left = pairAround(range.location);
    const Pair *right = pairAround(range.limit());
    if (left != nullptr && left == right) {
        return range;
    }
    // Stretches that a range touches are joined as well: their markers would run together. Over blanks only where the
    // range reaches into styled text on its other side.
    const auto isSpace = [this](qint64 place) { return quib::syntax::isSpace(m_text.characterAtIndex(place)); };
    qint64 start = range.location;
    qint64 limit = range.limit();
    while (right != nullptr && start > m_line.location && isSpace(start - 1)) {
        --start;
    }
    while (left != nullptr && limit < m_line.limit() && isSpace(limit)) {
        ++limit;
    }
    const Pair *before = left == nullptr ? pairBefore(start) : nullptr;
    const Pair *behind = right == nullptr ? pairBefore(limit + 1) : nullptr;
    const bool joinsBefore = before != nullptr && before->close.limit() == start;
    const bool joinsBehind = behind != nullptr && behind->open.location == limit;
    start = joinsBefore ? before->close.location : range.location;
    limit = joinsBehind ? behind->open.limit() : range.limit();
    const NSRange widened{start, limit - start};
    removeMarkersIn(widened);
    if (left == nullptr && !joinsBefore) {
        insertOpening(start, needExternalBoundarySpaces);
    }
    if (right == nullptr && !joinsBehind) {
        insertClosing(limit, needExternalBoundarySpaces);
    }
    return widened;
}

void InlineToggle::removeMarkersIn(NSRange range)
{
    forEachMarkerIn(range, [this](NSRange marker) { m_edits.remove(marker); });
}

void InlineToggle::insertOpening(qint64 location, bool needExternalBoundarySpaces)
{
    const qint64 start = quib::rangeWithTextlessAttachments(m_text, {location, 0}).location;
    const char16_t before = start == 0 ? u' ' : m_text.characterAtIndex(start - 1);
    if (needExternalBoundarySpaces && before != u' ' && before != u'\n') {
        m_edits.insert(location, QStringLiteral(" "));
    }
    m_edits.insert(location, m_marker);
}

void InlineToggle::insertClosing(qint64 location, bool needExternalBoundarySpaces)
{
    const qint64 limit = quib::rangeWithTextlessAttachments(m_text, {location, 0}).limit();
    const char16_t behind = limit == m_text.length() ? u' ' : m_text.characterAtIndex(limit);
    m_edits.insert(location, m_marker, MarkerEdits::Caret::Before);
    if (needExternalBoundarySpaces && behind != u' ' && behind != u'\n' &&
        !quib::syntax::isClosingPunctuation(behind)) {
        m_edits.insert(location, QStringLiteral(" "), MarkerEdits::Caret::Before);
    }
}

/// The part of a line, terminators left out, that a line's place lies in.
NSRange lineAt(const NSAttributedString &text, qint64 place)
{
    const auto isTerminator = [&text](qint64 i) { return quib::syntax::isLineTerminator(text.characterAtIndex(i)); };
    qint64 start = place;
    while (start > 0 && !isTerminator(start - 1)) {
        --start;
    }
    qint64 limit = place;
    while (limit < text.length() && !isTerminator(limit)) {
        ++limit;
    }
    return {start, limit - start};
}

NSRange trimmedRangeForString(QStringView string, NSRange inRange)
{
    NSRange range = inRange;
    while (range.length > 0 && quib::isWhitespaceOrNewline(string[range.location].unicode())) {
        ++range.location;
        --range.length;
    }
    while (range.length > 0 && quib::isWhitespaceOrNewline(string[range.limit() - 1].unicode())) {
        --range.length;
    }
    return range;
}

} // namespace

QBNoteStyleEditor::Result QBNoteStyleEditor::applyInlineStyle(const QString &styleMarker,
                                                              const NSAttributeName &styleMarkerName, bool needTrimming,
                                                              bool needExternalBoundarySpaces, NSRange range,
                                                              const NSAttributedString &inAttributedString) const
{
    const NSAttributedString &text = inAttributedString;
    const NSRange selection = quib::rangeCutToLength(range, text.length());
    const bool isHalfOfOther = isHalfOfOtherMarker(styleMarker);
    MarkerEdits edits(text);
    NSRange extent = kNotFoundRange;
    qint64 start = selection.location;
    do {
        const NSRange line = lineAt(text, start);
        // A marker that the line begins with is none of its text.
        const qint64 contentStart = selection.length == 0 ? start : std::max(start, limitOfFullLineMarker(text, line));
        const NSRange part{contentStart, std::min(line.limit(), selection.limit()) - contentStart};
        if (part.length > 0 || selection.length == 0) {
            InlineToggle toggle(edits, line, styleMarker, styleMarkerName, isHalfOfOther);
            const NSRange toggled = toggle.toggleInlineStyle(part, needTrimming, needExternalBoundarySpaces);
            if (toggled.isFound()) {
                extent = extent.isFound() ? NSUnionRange(extent, toggled) : toggled;
            }
        }
        start = line.limit() + 1;
    } while (start < selection.limit());
    if (edits.isEmpty()) {
        return std::nullopt;
    }
    NSAttributedString edited = edits.editedText(extent);
    // A caret stays one, so that typing on replaces nothing.
    NSRange proposed = edits.editedRange(selection);
    if (selection.length > 0) {
        proposed = trimmedRangeForString(edited.string(), edited.fullRange());
        proposed.location += extent.location;
    }
    return QBNoteStyleEditorResult{std::move(edited), extent, proposed};
}

/// Whether another style of the syntax has this marker twice as its own.
bool QBNoteStyleEditor::isHalfOfOtherMarker(const QString &marker) const
{
    using quib::syntax::Construct;
    const QString twice = marker % marker;
    return this->marker(Construct::Bold) == twice || this->marker(Construct::Strike) == twice;
}

/// Behind the marker that a line begins with, or the line's start.
qint64 QBNoteStyleEditor::limitOfFullLineMarker(const NSAttributedString &text, NSRange line)
{
    qint64 place = line.location;
    while (place < line.limit() && (text.characterAtIndex(place) == u' ' || text.characterAtIndex(place) == u'\t')) {
        ++place;
    }
    for (const NSAttributeName &name : fullLineMarkerNames()) {
        NSRange run;
        if (text.attribute(name, place, &run, line)) {
            return run.limit();
        }
    }
    return line.location;
}
