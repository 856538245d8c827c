#include "QBNoteMarkerTextStyler.h"

#include "AttributeAdditions.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>
#include <optional>

using quib::AttributeSet;
using quib::AttributeValue;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteMarkerTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Highlighter, /*syntax=*/0);
}

QString QBNoteMarkerTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Highlighter, /*syntax=*/0);
}

const NSAttributeName &QBNoteMarkerTextStyler::stylerAttributeName()
{
    return QBNoteHighlighterTextStylerAttributeName;
}

const NSAttributeName &QBNoteMarkerTextStyler::stylerMarkerAttributeName()
{
    return QBNoteHighlighterTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteMarkerTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteMarkerTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                 NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteHighlighterTextStylerAttributeName,
                                  QBNoteHighlighterTextStylerMarkerAttributeName,
                                  QBNoteHighlighterTextStylerBackgroundAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteMarkerTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    struct Attributes
    {
        AttributeSet text;
        AttributeSet marker;
    };
    std::optional<Attributes> set;
    quib::AttributeAdditions additions(attributedString);
    regularExpression()->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool * /*stop*/) {
            const NSRange opening = match.rangeAtIndex(1);
            const NSRange closing = match.rangeAtIndex(3);
            const std::vector<NSRange> painted = pieces(match.range(), attributedString);
            if (painted.empty() || markerInsideSkipStyleAttribute(opening, attributedString) ||
                markerInsideSkipStyleAttribute(closing, attributedString)) {
                return;
            }
            if (!set) {
                set = Attributes{textAttributes(), markerAttributes()};
            }
            // The markers themselves are not painted as text.
            const NSRange inner{opening.limit(), closing.location - opening.limit()};
            additions.add(opening, set->marker);
            for (const NSRange piece : painted) {
                additions.add(NSIntersectionRange(piece, inner), set->text);
            }
            additions.add(closing, set->marker);
        });
    additions.flush();
}

AttributeSet QBNoteMarkerTextStyler::textAttributes() const
{
    return {{QBNoteHighlighterTextStylerAttributeName, 1}, {QBNoteHighlighterTextStylerBackgroundAttributeName, 1}};
}

AttributeSet QBNoteMarkerTextStyler::markerAttributes() const
{
    AttributeSet attributes{{QBNoteHighlighterTextStylerMarkerAttributeName, 1},
                            {QBNoteHighlighterTextStylerBackgroundAttributeName, 1}};
    if (const auto &theme = themeManager()) {
        attributes.insert(NSForegroundColorAttributeName, quib::colorValue(theme->highlighterMarkerColor()));
        attributes.insert(NSFontAttributeName, theme->monospaceFontAttribute());
    }
    return attributes;
}

bool QBNoteMarkerTextStyler::markerInsideSkipStyleAttribute(NSRange range, const NSAttributedString &withAttrString)
{
    return withAttrString.attribute(QBNoteSkipStylingAttributeName, range.location).boolValue();
}

std::vector<NSRange> QBNoteMarkerTextStyler::pieces(NSRange match, const NSAttributedString &attributedString)
{
    const auto isBlankAt = [&](qint64 place) {
        return place < attributedString.length() && attributedString.characterAtIndex(place) == u' ';
    };
    std::vector<NSRange> found;
    qint64 cursor = match.location;
    attributedString.enumerateAttribute(QBNoteSkipStylingAttributeName, match,
                                        NSAttributedStringEnumerationOptions::Forward,
                                        [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                            if (!value.boolValue()) {
                                                return;
                                            }
                                            const qint64 gap = run.location - cursor;
                                            if (gap > 1) {
                                                // The unit before the run is its marker; a blank before that goes too.
                                                const qint64 leftOut = isBlankAt(run.location - 2) ? 2 : 1;
                                                if (gap > leftOut) {
                                                    found.push_back({cursor, gap - leftOut});
                                                }
                                            }
                                            cursor = run.limit() + 1;
                                            if (isBlankAt(cursor)) {
                                                ++cursor;
                                            }
                                        });
    if (cursor < match.limit()) {
        found.push_back({cursor, match.limit() - cursor});
    }
    return found;
}
