#include "QBNotesTextStorage.h"

#include "OrderedListCounter.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/StylerSyntax.h>

#include <span>

using namespace Qt::StringLiterals;
using quib::syntax::Construct;

// What a line begins with that the next one repeats, or that a tab moves.

namespace {

/// A styler of lines as the editor asks for it: where it marks its marker, and what the marker is.
struct LineStyle
{
    NSAttributeName markerAttributeName;
    Construct construct;
};

/// In the order of QBNoteStylersManager::repeatableStylers, and the ordered list behind them.
std::span<const LineStyle> repeatableLineStyles()
{
    static const LineStyle styles[] = {
        {QBNoteUnorderedListStylerMarkerAttributeName, Construct::UnorderedList},
        {QBNoteCheckboxStylerMarkerAttributeName, Construct::Checkbox},
        {QBNoteQuoteTextStylerMarkerAttributeName, Construct::Quote},
        {QBNoteOrderedListStylerMArkerAttributeName, Construct::OrderedList},
    };
    return styles;
}

/// In the order of QBNoteStylersManager::tabbableStylers.
std::span<const LineStyle> tabbableLineStyles()
{
    static const LineStyle styles[] = {
        {QBNoteUnorderedListStylerMarkerAttributeName, Construct::UnorderedList},
        {QBNoteCheckboxStylerMarkerAttributeName, Construct::Checkbox},
        {QBNoteOrderedListStylerMArkerAttributeName, Construct::OrderedList},
    };
    return styles;
}

/// The first of the styles that marks a marker in the range; null where none does. Looks for one style after the other.
const LineStyle *lineStyleIn(const NSAttributedString &text, NSRange range, std::span<const LineStyle> styles,
                             NSRange *markerRange)
{
    for (const LineStyle &style : styles) {
        NSRange found = kNotFoundRange;
        text.enumerateAttribute(style.markerAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                                [&found](const quib::AttributeValue &value, NSRange run, bool *stop) {
                                    if (value) {
                                        found = run;
                                        *stop = true;
                                    }
                                });
        if (found.isFound()) {
            *markerRange = found;
            return &style;
        }
    }
    return nullptr;
}

/// "9. " gives "10. ". The largest number that there is stays.
QString nextNumber(QStringView marker)
{
    qint64 digits = 0;
    const qint64 number = quib::OrderedListCounter::leadingNumber(marker, &digits);
    return QString(QString::number(number == quib::OrderedListCounter::kLargest ? number : number + 1) % u". ");
}

} // namespace

bool QBNotesTextStorage::hasRepeatableNewLineStyleInRange(NSRange range, NSRange *stylerMarkerRange,
                                                          QString *stylerMarker) const
{
    const LineStyle *style = lineStyleIn(attributedString(), range, repeatableLineStyles(), stylerMarkerRange);
    if (style == nullptr) {
        *stylerMarkerRange = kNotFoundRange;
        stylerMarker->clear();
        return false;
    }
    *stylerMarker = style->construct == Construct::OrderedList
                        ? nextNumber(attributedString().stringInRange(*stylerMarkerRange))
                        : quib::syntax::stylerMarker(style->construct, m_noteStylersManager->syntax());
    return true;
}

bool QBNotesTextStorage::hasRepeatableNewLineStyleInRange(NSRange range, NSRange *stylerMarkerRange) const
{
    QString marker;
    return hasRepeatableNewLineStyleInRange(range, stylerMarkerRange, &marker);
}

bool QBNotesTextStorage::hasTabbableStyleInRange(NSRange range, NSRange *stylerMarkerRange) const
{
    if (lineStyleIn(attributedString(), range, tabbableLineStyles(), stylerMarkerRange) != nullptr) {
        return true;
    }
    *stylerMarkerRange = kNotFoundRange;
    return false;
}
