#include "QBNoteStyleEditor.h"

#include "MarkerEdits.h"
#include "OrderedListCounter.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSStringHelpers.h>

#include <array>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;
using quib::MarkerEdits;
using quib::OrderedListCounter;
using quib::syntax::Construct;

// Commands that make whole lines something, and the numbers of ordered lists.

namespace {

bool isIndentation(char16_t unit)
{
    return unit == u' ' || unit == u'\t';
}

/// Where a line's text begins behind its indentation, markers that are to go left out. indentation becomes the latter.
qint64 placeBehindIndentation(MarkerEdits &edits, NSRange paragraph, QString *indentation)
{
    const NSAttributedString &text = edits.text();
    qint64 place = paragraph.location;
    for (qint64 i = place; i < paragraph.limit();) {
        if (const qint64 limit = edits.limitOfRemovalAt(i); limit > i) {
            i = limit;
        } else if (isIndentation(text.characterAtIndex(i))) {
            *indentation += QChar(text.characterAtIndex(i));
            place = ++i;
        } else {
            break;
        }
    }
    return place;
}

/// Calls block for each paragraph of a range of paragraphs; once for an empty one.
template <typename Block> void forEachParagraph(const NSAttributedString &text, NSRange paragraphs, const Block &block)
{
    qint64 start = paragraphs.location;
    do {
        const NSRange paragraph = text.paragraphRangeForRange({start, 0});
        block(paragraph);
        start = paragraph.limit();
    } while (start < paragraphs.limit());
}

void addFullLineStyleMarker(const QString &marker, bool supportIndent, MarkerEdits &edits, NSRange paragraphs)
{
    forEachParagraph(edits.text(), paragraphs, [&](NSRange paragraph) {
        QString indentation;
        edits.insert(supportIndent ? placeBehindIndentation(edits, paragraph, &indentation) : paragraph.location,
                     marker);
    });
}

/// A represented text unequal to a marker, at the first unit of a line.
bool beginsWithOtherAttachment(const NSAttributedString &text, qint64 location, const QString &marker)
{
    const auto value = text.attribute(NSAttachmentAttributeName, location);
    const auto *attachment = value.as<QBNotesTextAttachment>();
    return attachment != nullptr && attachment->representedText() != quib::trimmedWhitespaceAndNewlines(marker);
}

/// An item of an ordered list.
struct OrderedItem
{
    NSRange digits;
    qint64 number = 0;
    /// Of its indentation.
    qint64 columns = 0;
};

OrderedItem orderedItem(const NSAttributedString &text, NSRange markerRun)
{
    OrderedItem item;
    item.number = OrderedListCounter::leadingNumber(text.stringInRange(markerRun), &item.digits.length);
    item.digits.location = markerRun.location;
    qint64 start = markerRun.location;
    while (start > 0 && isIndentation(text.characterAtIndex(start - 1))) {
        --start;
    }
    item.columns = OrderedListCounter::columns(text.stringInRange({start, markerRun.location - start}));
    return item;
}

/// The items of a range, in their order.
template <typename Block> void forEachOrderedItem(const NSAttributedString &text, NSRange range, const Block &block)
{
    text.enumerateAttribute(QBNoteOrderedListStylerMArkerAttributeName, range,
                            NSAttributedStringEnumerationOptions::Forward,
                            [&](const quib::AttributeValue &value, NSRange run, bool * /*stop*/) {
                                if (value) {
                                    block(orderedItem(text, run));
                                }
                            });
}

/// The whole run of an attribute that holds a place; empty where the place has none.
NSRange runAt(const NSAttributedString &text, const NSAttributeName &name, qint64 place)
{
    NSRange run;
    return text.attribute(name, place, &run, text.fullRange()) ? run : NSRange{place, 0};
}

/// A counter that has counted the list which ends where an item is to come.
OrderedListCounter counterForOrderedListItemInAttributedString(const NSAttributedString &string,
                                                               const NSAttributeName &styleName, NSRange atRange)
{
    OrderedListCounter counter;
    if (atRange.location > 0) {
        const NSRange list = runAt(string, styleName, atRange.location - 1);
        const NSRange above{list.location, atRange.location - list.location};
        forEachOrderedItem(string, above,
                           [&counter](const OrderedItem &item) { counter.setNumber(item.number, item.columns); });
    }
    return counter;
}

} // namespace

std::span<const NSAttributeName> QBNoteStyleEditor::fullLineMarkerNames()
{
    static const std::array names{QBNoteCheckboxStylerMarkerAttributeName, QBNoteUnorderedListStylerMarkerAttributeName,
                                  QBNoteOrderedListStylerMArkerAttributeName, QBNoteQuoteTextStylerMarkerAttributeName,
                                  QBHeaderTextStylerMarkerAttributeName};
    return names;
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyOrderedListInAttributedString(const NSAttributedString &text,
                                                                                NSRange range) const
{
    const QString marker = this->marker(Construct::OrderedList);
    const auto addNumbers = [&marker](MarkerEdits &edits, NSRange paragraphs) {
        if (paragraphs.length == 0) {
            edits.insert(paragraphs.location, marker);
            return;
        }
        OrderedListCounter counter = counterForOrderedListItemInAttributedString(
            edits.text(), QBNoteOrderedListTextStylerAttributeName, paragraphs);
        forEachParagraph(edits.text(), paragraphs, [&](NSRange paragraph) {
            QString indentation;
            const qint64 place = placeBehindIndentation(edits, paragraph, &indentation);
            const qint64 number = counter.nextNumber(OrderedListCounter::columns(indentation));
            edits.insert(place, QString(QString::number(number) % u". "));
        });
    };
    return applyFullLineStyle(QBNoteOrderedListTextStylerAttributeName, marker,
                              QBNoteOrderedListStylerMArkerAttributeName, /*supportIndent=*/true, range, text,
                              addNumbers);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyFullLineStyle(const NSAttributeName &style,
                                                                const QString &styleMarker,
                                                                const NSAttributeName &styleMarkerName,
                                                                bool supportIndent, NSRange range,
                                                                const NSAttributedString &inAttributedString,
                                                                const CustomAddStyleBlock &customAddStyleBlock)
{
    const NSAttributedString &text = inAttributedString;
    const NSRange selection = quib::rangeCutToLength(range, text.length());
    const NSRange paragraphs = text.paragraphRangeForRange(selection);
    const bool isOneLine = text.paragraphRangeForRange({paragraphs.location, 0}) == paragraphs;
    const bool isStyled = isAttributedString(text, paragraphs, style);
    const bool isDifferent =
        isStyled && !customAddStyleBlock && beginsWithOtherAttachment(text, paragraphs.location, styleMarker);

    MarkerEdits edits(text);
    if (isStyled) {
        edits.removeRuns(styleMarkerName, paragraphs);
    } else {
        removeAllFullLineAttachments(edits, paragraphs);
    }
    if (isStyled && !isDifferent) {
        // It is taken away.
    } else if (customAddStyleBlock) {
        customAddStyleBlock(edits, paragraphs);
    } else {
        addFullLineStyleMarker(styleMarker, supportIndent, edits, paragraphs);
    }
    if (edits.isEmpty()) {
        return std::nullopt;
    }
    if (isOneLine) {
        const NSRange changed = edits.changedRange();
        return QBNoteStyleEditorResult{edits.editedText(changed), changed, edits.editedRange(selection)};
    }
    NSAttributedString edited = edits.editedText(paragraphs);
    const NSRange extent{paragraphs.location, edited.length()};
    return QBNoteStyleEditorResult{std::move(edited), paragraphs, extent};
}

void QBNoteStyleEditor::removeAllFullLineAttachments(MarkerEdits &edits, NSRange paragraphs)
{
    for (const NSAttributeName &name : fullLineMarkerNames()) {
        edits.removeRuns(name, paragraphs);
    }
}

bool QBNoteStyleEditor::isAttributedString(const NSAttributedString &string, NSRange fullyStyledInRange,
                                           const NSAttributeName &forFullLineStyler)
{
    NSRange run;
    return string.attribute(forFullLineStyler, fullyStyledInRange.location, &run, fullyStyledInRange) &&
           run == fullyStyledInRange;
}

// The order of numbers

NSRange QBNoteStyleEditor::rangeToCheckForOrderedListItemInAttributedString(const NSAttributedString &string,
                                                                            const NSAttributeName &styleName,
                                                                            NSRange atRange)
{
    const NSRange paragraphs = string.paragraphRangeForRange(quib::rangeCutToLength(atRange, string.length()));
    if (paragraphs.length == 0) {
        return paragraphs;
    }
    const NSRange above = runAt(string, styleName, paragraphs.location);
    const NSRange below = runAt(string, styleName, paragraphs.limit() - 1);
    return NSUnionRange(paragraphs, NSUnionRange(above, below));
}

QBNoteStyleEditor::Result QBNoteStyleEditor::ensureOrderedListOrderInAttributedString(const NSAttributedString &text,
                                                                                      NSRange range) const
{
    const NSAttributeName &style = QBNoteOrderedListTextStylerAttributeName;
    const NSRange lists = rangeToCheckForOrderedListItemInAttributedString(text, style, range);
    MarkerEdits edits(text);
    const auto numberList = [&](NSRange list) {
        OrderedListCounter counter;
        bool isFirst = true;
        forEachOrderedItem(text, list, [&](const OrderedItem &item) {
            if (std::exchange(isFirst, false)) {
                counter.setNumber(item.number, item.columns);
                return;
            }
            if (const qint64 number = counter.nextNumber(item.columns); number != item.number) {
                edits.remove(item.digits);
                edits.insert(item.digits.location, QString::number(number), MarkerEdits::Caret::Before,
                             text.attributesAtIndex(item.digits.location));
            }
        });
    };
    text.enumerateAttribute(style, lists, NSAttributedStringEnumerationOptions::Forward,
                            [&](const quib::AttributeValue &value, NSRange list, bool * /*stop*/) {
                                if (value) {
                                    numberList(list);
                                }
                            });
    if (edits.isEmpty()) {
        return std::nullopt;
    }
    NSAttributedString edited = edits.editedText(lists);
    return QBNoteStyleEditorResult{std::move(edited), lists,
                                   edits.editedRange(quib::rangeCutToLength(range, text.length()))};
}
