#include "QBNoteOrderedListTextStyler.h"

#include "AttributeLayers.h"
#include "MarkedParagraphs.h"
#include "QBNoteTextStylerAttributes.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>

using namespace Qt::StringLiterals;
using quib::AttributeSet;
using quib::syntax::Construct;

namespace {

constexpr double kPointAlpha = 0.6;

} // namespace

const NSRegularExpression &QBNoteOrderedListTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::OrderedList, /*syntax=*/0);
}

QString QBNoteOrderedListTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::OrderedList, /*syntax=*/0);
}

const NSAttributeName &QBNoteOrderedListTextStyler::stylerAttributeName()
{
    return QBNoteOrderedListTextStylerAttributeName;
}

const NSAttributeName &QBNoteOrderedListTextStyler::stylerMarkerAttributeName()
{
    return QBNoteOrderedListStylerMArkerAttributeName;
}

const NSRegularExpression *QBNoteOrderedListTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteOrderedListTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                      NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteOrderedListTextStylerAttributeName, QBNoteOrderedListStylerMArkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteOrderedListTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                               NSTextStorage * /*textStorage*/)
{
    std::vector<quib::BlockMarker> numbers;
    enumerateUnguardedMatches(stylerRegularExpression(), attributedString, range,
                              [&](const NSTextCheckingResult &match) {
                                  numbers.push_back({match.rangeAtIndex(1), nullptr});
                              });
    const AttributeSet marker{{QBNoteOrderedListStylerMArkerAttributeName, 1}};
    AttributeSet digits;
    AttributeSet point;
    if (themeManager()) {
        digits.insert(NSForegroundColorAttributeName, themeManager()->colorAttributeForKey(u"Accent Text Color"_s));
        if (const auto light = themeManager()->lightTextColor()) {
            point.insert(NSForegroundColorAttributeName,
                         quib::attributeValue(light->colorWithAlphaComponent(kPointAlpha)));
        }
        point.insert(NSKernAttributeName, themeManager()->fullLineAttachmentDefaultRightSpacing());
    }
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    quib::forEachMarkedParagraph(attributedString, numbers, [&](NSRange paragraph, auto numbersOfLine) {
        // Measured without the point's kern, which moves the line's text off the number and the column's edge.
        AttributeSet line{{QBNoteOrderedListTextStylerAttributeName, 1}};
        line.insert(NSParagraphStyleAttributeName,
                    attachmentParagraphStyleForAttributeRange(quib::withBlank(numbersOfLine.back().range),
                                                              attributedString, paragraph));
        layers.add(paragraph, std::move(line));
        for (const quib::BlockMarker &number : numbersOfLine) {
            layers.add(quib::withBlank(number.range), marker);
            layers.add(number.range, digits);
            layers.add({number.range.limit() - 1, 1}, point);
        }
        layers.flush();
    });
    additions.flush();
}

std::shared_ptr<NSParagraphStyle> QBNoteOrderedListTextStyler::attachmentParagraphStyleForAttributeRange(
    NSRange range, const NSAttributedString &attributedString, NSRange paragraphRange)
{
    return themeManager() ? m_paragraphStyles.attachmentParagraphStyleForAttributeRange(range, attributedString,
                                                                                        paragraphRange, *themeManager())
                          : nullptr;
}
