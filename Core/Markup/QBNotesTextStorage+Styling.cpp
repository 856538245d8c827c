#include "QBNotesTextStorage.h"

#include <Logging/QBLogger.h>
#include <Markup/Stylers/QBNoteAttachmentTextStyler.h>
#include <Markup/Stylers/QBNoteCodeTextStyler.h>
#include <Markup/Stylers/QBNoteNormalTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteTextStylerCommonAttributes.h>
#include <Markup/Syntax/SyntaxCharacters.h>
#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

// Which part of a text is styled again after an edit, and how.

namespace {

/// The places in a text where a fence of a code block may stand: the marker at a line's start. A search sees nothing
/// outside of its range, so that the range's own start counts as a line's.
class Fences
{
public:
    explicit Fences(const NSAttributedString &text)
        : m_text(text)
        , m_marker(QBNoteCodeTextStyler::stylerMarker())
    {
    }

    [[nodiscard]] NSRange firstIn(NSRange range) const
    {
        const QStringView region = m_text.stringInRange(range);
        for (qsizetype place = region.indexOf(m_marker); place >= 0; place = region.indexOf(m_marker, place + 1)) {
            if (quib::syntax::isLineStart(region, place)) {
                return {range.location + place, m_marker.size()};
            }
        }
        return kNotFoundRange;
    }
    [[nodiscard]] NSRange lastIn(NSRange range) const
    {
        const QStringView region = m_text.stringInRange(range);
        qsizetype place = region.lastIndexOf(m_marker);
        while (place >= 0) {
            if (quib::syntax::isLineStart(region, place)) {
                return {range.location + place, m_marker.size()};
            }
            place = place > 0 ? region.lastIndexOf(m_marker, place - 1) : -1;
        }
        return kNotFoundRange;
    }
    /// Whether a fence is half of a block already.
    [[nodiscard]] bool isPaired(NSRange fence) const
    {
        return bool(m_text.attribute(QBNoteCodeTextStylerMarkerAttributeName, fence.location));
    }
    [[nodiscard]] bool isStyledAt(qint64 place) const
    {
        return bool(m_text.attribute(QBNoteCodeTextStylerAttributeName, place)) ||
               bool(m_text.attribute(QBNoteCodeTextStylerMarkerAttributeName, place));
    }
    [[nodiscard]] bool isStyledIn(NSRange range) const
    {
        return m_text.containsAttribute(QBNoteCodeTextStylerAttributeName, range) ||
               m_text.containsAttribute(QBNoteCodeTextStylerMarkerAttributeName, range);
    }

private:
    const NSAttributedString &m_text;
    QString m_marker;
};

NSRange fromTo(qint64 location, qint64 limit)
{
    return {location, limit - location};
}

/// Keeps a selection in its place while attachments come and go around it.
class ProposedSelection
{
public:
    explicit ProposedSelection(NSRange selection)
        : m_original(selection)
        , m_proposed(selection)
    {
    }

    [[nodiscard]] NSRange range() const { return m_proposed; }

    /// A stretch of the text became another of some length.
    void replaced(NSRange range, qint64 newLength)
    {
        const qint64 place = range.location;
        if (m_proposed.length != 0) {
            const NSRange common = NSIntersectionRange(m_proposed, range);
            if (common.length != 0) {
                m_proposed.length += newLength - common.length;
            } else if (range.length == 0 && place > m_proposed.location && place < m_proposed.limit()) {
                m_proposed.length += newLength;
            }
        }
        if (place < m_proposed.location) {
            m_proposed.location =
                range.limit() <= m_proposed.location ? m_proposed.location + newLength - range.length : place;
        } else if (place == m_proposed.location && place + newLength < m_original.location && newLength != 0) {
            m_proposed.location += newLength - range.length;
        }
    }

private:
    NSRange m_original;
    NSRange m_proposed;
};

} // namespace

void QBNotesTextStorage::loadString(const QString &string)
{
    if (string.isEmpty()) {
        setAttributedString(NSAttributedString());
        return;
    }
    QElapsedTimer timer;
    timer.start();
    setAttributedString(styledAttributedStringFromString(string));
    QBLogDebug(u"Note loaded in %1ms"_s.arg(static_cast<double>(timer.nsecsElapsed()) / 1e6, 0, 'f', 6));
}

NSAttributedString QBNotesTextStorage::styledAttributedStringFromString(const QString &string)
{
    return styledAttributedStringFromAttributedString(NSAttributedString(string));
}

NSAttributedString QBNotesTextStorage::styledAttributedStringFromAttributedString(const NSAttributedString &string)
{
    NSMutableAttributedString styled(string);
    NSRange range = styled.fullRange();
    for (const auto &styler : m_noteStylersManager->textStylers()) {
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->addTextAttachmentsInAttributedString(styled, range, {});
        }
        styler->applyStyleIn(styled, range, nullptr);
    }
    return styled;
}

NSAttributedString QBNotesTextStorage::styledAttributedStringFromString(const QString &string,
                                                                        NSRange ifItWasInsertedInRange) const
{
    const NSRange range = ifItWasInsertedInRange;
    const auto storage = subTextStorageWithRange(fullRange());
    storage->replaceCharactersInRange(range, NSAttributedString(string));
    const NSRange inserted{range.location, string.size()};
    NSRange toStyle = storage->rangeToStyle();
    storage->addAttribute(QBNoteBoundaryMarkerAttributeName, 1, inserted);
    NSRange proposed;
    if (const auto styled = storage->styleTextInRange(toStyle, inserted, &proposed)) {
        storage->replaceCharactersInRange(toStyle, *styled);
    }
    NSRange span = kNotFoundRange;
    storage->attributedString().enumerateAttribute(
        QBNoteBoundaryMarkerAttributeName, storage->fullRange(), NSAttributedStringEnumerationOptions::Forward,
        [&span](const quib::AttributeValue &value, NSRange run, bool * /*stop*/) {
            if (value) {
                span = span.isFound() ? NSUnionRange(span, run) : run;
            }
        });
    if (!span.isFound()) {
        return NSAttributedString();
    }
    NSMutableAttributedString piece(storage->NSTextStorage::attributedSubstringFromRange(span));
    piece.removeAttribute(QBNoteBoundaryMarkerAttributeName, piece.fullRange());
    return piece;
}

NSRange QBNotesTextStorage::rangeToStyleFromEditedRange(NSRange range, qint64 /*changeInLength*/,
                                                        bool insertedNewline) const
{
    const qint64 length = this->length();
    NSRange edited = range;
    if (edited.limit() > length) {
        edited = NSIntersectionRange(edited, {0, length}); // the start of the text for a range that was not found
    }
    NSRange paragraph = attributedString().paragraphRangeForRange(edited);
    if (insertedNewline && paragraph.limit() + 1 <= length) {
        paragraph.length += attributedString().paragraphRangeForRange({paragraph.limit(), 1}).length;
    }
    const NSRange multiple =
        multipleParagraphStyleRangeForEditedParagraphRange(paragraph, insertedNewline, attributedString());
    return multiple.isFound() ? multiple : paragraph;
}

NSRange
QBNotesTextStorage::multipleParagraphStyleRangeForEditedParagraphRange(NSRange range, bool /*insertedNewline*/,
                                                                       const NSAttributedString &attributedString)
{
    const Fences fences(attributedString);
    const qint64 length = attributedString.length();
    const qint64 end = range.limit();
    const qint64 previous = range.location == 0 ? 0 : range.location - 1;
    const NSRange behind = fromTo(previous + range.length, length);

    const bool isStyledHere = fences.isStyledIn(range);
    const NSRange fence = fences.firstIn(range);
    // The text's first place never counts as one before.
    const bool isStyledBefore = previous != 0 && fences.isStyledAt(previous);
    const bool isStyledAfter = end < length && fences.isStyledAt(end);

    if (!isStyledHere && !fence.isFound() && !isStyledBefore) {
        return kNotFoundRange;
    }
    if (fence.isFound() && !isStyledBefore && !isStyledAfter) {
        // A fence in plain surroundings: it may close one that waits above, or open towards one below.
        const NSRange above = fences.lastIn({0, previous});
        if (above.isFound() && !fences.isPaired(above)) {
            return fromTo(above.location, end);
        }
        const NSRange below = fences.firstIn(behind);
        if (!below.isFound()) {
            return kNotFoundRange;
        }
        // Where the one below is taken, all pairs behind it flip.
        return fromTo(previous, fences.isPaired(below) ? length : below.limit());
    }
    if (isStyledBefore && isStyledAfter) {
        const NSRange above = fences.lastIn({0, previous});
        if (!above.isFound()) {
            return kNotFoundRange;
        }
        const NSRange below = fence.isFound() ? kNotFoundRange : fences.firstIn(behind);
        return below.isFound() ? NSUnionRange(above, below) : fromTo(above.location, length);
    }
    if (isStyledAfter) {
        return fromTo(range.location, length);
    }
    if (isStyledBefore) {
        // From the text's first fence, not the nearest: all pairs in between are looked at again.
        const NSRange first = fences.firstIn({0, range.location});
        return first.isFound() ? fromTo(first.location, length) : kNotFoundRange;
    }
    return kNotFoundRange;
}

std::optional<NSMutableAttributedString> QBNotesTextStorage::styleTextInRange(NSRange range, NSRange selectionRange,
                                                                              NSRange *proposedSelectionRange)
{
    if (!range.isFound()) {
        return std::nullopt;
    }
    range = NSIntersectionRange(range, fullRange());
    auto text = NSMutableAttributedString::resetCopy(
        attributedString(), range, QBNoteTextStylerCommonAttributes::attributesNamesToReset(), groundAttributes());
    NSRange local = text.fullRange();
    ProposedSelection selection(selectionRange);
    bool isChanged = false;

    auto pending = stylersAfterReset();
    while (!pending.isEmpty()) {
        const auto styler = pending.takeFirst();
        bool hasChanged = false; // this styler, in this pass
        if (auto *attachmentStyler = styler->attachmentStyler()) {
            attachmentStyler->replaceTextAttachmentsInAttributedString(
                text, local,
                [&](NSRange replaced, const QBNoteAttachmentTextStyler::Replacement &replacement, bool * /*stop*/) {
                    hasChanged = true;
                    selection.replaced({replaced.location + range.location, replaced.length},
                                       replacement.string.size());
                });
        }
        if (hasChanged) {
            isChanged = true;
            for (const auto &again : m_noteStylersManager->doublePassStylersForStyler(*styler)) {
                if (!pending.contains(again)) {
                    pending.append(again);
                }
            }
        }
        styler->styleTextInAttributedString(text, local, this);
    }
    text.joinEqualRuns();
    if (isChanged) {
        text.fixAttributesInRange(text.fullRange());
        *proposedSelectionRange = selection.range();
        return text;
    }
    contents().replaceCharactersInRange(range, std::move(text));
    edited(kEditedAttributes, range, 0); // which fixes the attributes
    *proposedSelectionRange = kNotFoundRange;
    return std::nullopt;
}

quib::AttributeSet QBNotesTextStorage::groundAttributes() const
{
    const auto &theme = m_noteStylersManager->themeManager();
    return theme ? theme->defaultTextAttributes() : quib::AttributeSet();
}

QBNoteStylersManager::Stylers QBNotesTextStorage::stylersAfterReset() const
{
    auto stylers = m_noteStylersManager->textStylers();
    stylers.removeOne(m_noteStylersManager->stylerForClass<QBNoteNormalTextStyler>());
    return stylers;
}

void QBNotesTextStorage::applyStylingInRange(NSRange range)
{
    range = NSIntersectionRange(range, fullRange());
    NSRange styled = range;
    const auto names = QBNoteTextStylerCommonAttributes::attributesNamesToReset();
    if (range == fullRange()) {
        // OPTIMIZATION: runs stay where they are for what comes back to them.
        contents().reset(names, groundAttributes());
    } else {
        contents().removeAndAddAttributes(names, groundAttributes(), range);
    }
    for (const auto &styler : stylersAfterReset()) {
        styler->styleTextInAttributedString(contents(), styled, this);
    }
    contents().joinEqualRuns();
    edited(kEditedAttributes, range, 0); // which fixes the attributes
}
