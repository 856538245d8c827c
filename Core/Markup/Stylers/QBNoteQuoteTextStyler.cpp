#include "QBNoteQuoteTextStyler.h"

#include "AttributeLayers.h"
#include "MarkedParagraphs.h"
#include "QBNoteTextStylerAttributes.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Syntax/StylerSyntax.h>

#include <array>

using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteQuoteTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Quote, /*syntax=*/0);
}

QString QBNoteQuoteTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Quote, /*syntax=*/0);
}

const NSAttributeName &QBNoteQuoteTextStyler::stylerAttributeName()
{
    return QBNoteQuoteTextStylerAttributeName;
}

const NSAttributeName &QBNoteQuoteTextStyler::stylerMarkerAttributeName()
{
    return QBNoteQuoteTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteQuoteTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteQuoteTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteQuoteTextStylerAttributeName, QBNoteQuoteTextStylerMarkerAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteQuoteTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                         NSTextStorage * /*textStorage*/)
{
    std::vector<quib::BlockMarker> markers;
    enumerateUnguardedMatches(stylerRegularExpression(), attributedString, range,
                              [&](const NSTextCheckingResult &match) {
                                  markers.push_back({match.rangeAtIndex(1), nullptr});
                              });
    AttributeSet marker{{QBNoteQuoteTextStylerMarkerAttributeName, 1}};
    if (themeManager()) {
        marker.insert(NSForegroundColorAttributeName, quib::attributeValue(NSColor::clearColor()));
    }
    quib::AttributeAdditions additions(attributedString);
    quib::AttributeLayers layers(attributedString, additions);
    quib::forEachMarkedParagraph(attributedString, markers, [&](NSRange paragraph, auto markersOfLine) {
        AttributeSet line{{QBNoteQuoteTextStylerAttributeName, 1}};
        line.insert(NSParagraphStyleAttributeName,
                    attachmentParagraphStyleForAttributeRange(quib::withBlank(markersOfLine.back().range),
                                                              attributedString, paragraph));
        layers.add(paragraph, std::move(line));
        for (const quib::BlockMarker &found : markersOfLine) {
            layers.add(quib::withBlank(found.range), marker);
        }
        layers.flush();
    });
    additions.flush();
}

std::shared_ptr<NSParagraphStyle> QBNoteQuoteTextStyler::attachmentParagraphStyleForAttributeRange(
    NSRange range, const NSAttributedString &attributedString, NSRange paragraphRange)
{
    return themeManager() ? m_paragraphStyles.attachmentParagraphStyleForAttributeRange(range, attributedString,
                                                                                        paragraphRange, *themeManager())
                          : nullptr;
}
