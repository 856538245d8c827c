#include "QBNoteImageMarkdownStyler.h"

#include "ExpandedText.h"
#include "QBNoteTextStylerAttributes.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Text/NSStringHelpers.h>

#include <array>

using quib::AttributeValue;
using quib::syntax::Construct;

namespace {

/// The first run of an attribute in a range; kNotFoundRange for none.
NSRange firstRunOfAttribute(const NSAttributeName &name, const NSAttributedString &attributedString, NSRange inRange)
{
    NSRange first = kNotFoundRange;
    attributedString.enumerateAttribute(name, inRange, NSAttributedStringEnumerationOptions::Forward,
                                        [&](const AttributeValue &value, NSRange run, bool *stop) {
                                            if (value) {
                                                first = run;
                                                *stop = true;
                                            }
                                        });
    return first;
}

} // namespace

const NSRegularExpression &QBNoteImageMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::MarkdownImage, /*syntax=*/0);
}

QStringList QBNoteImageMarkdownStyler::stylerMarkerComponents()
{
    return quib::syntax::stylerMarkerComponents(Construct::MarkdownImage);
}

const NSAttributeName &QBNoteImageMarkdownStyler::stylerAttributeName()
{
    return QBMarkdownImageStylerAttributeName;
}

const NSAttributeName &QBNoteImageMarkdownStyler::stylerMarkerAttributeName()
{
    return QBMarkdownImageStylerAttributeMarker;
}

const NSRegularExpression &QBNoteImageMarkdownStyler::titleRegularExpression()
{
    return quib::syntax::markdownImageTitleRegularExpression();
}

const NSRegularExpression *QBNoteImageMarkdownStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteImageMarkdownStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                    NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBMarkdownImageStylerAttributeName, QBMarkdownImageStylerAttributeMarker,
                                  QBMarkdownImageStylerAttributeAlt, QBMarkdownImageStylerAttributeUrl,
                                  QBMarkdownImageStylerAttributeTitle};
    attributedString.removeAttributes(names, range);
}

void QBNoteImageMarkdownStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                             NSTextStorage * /*textStorage*/)
{
    const QStringView text = attributedString.string();
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        const NSRange whole = match.range();
        const NSRange alt = match.rangeAtIndex(1);
        const NSRange link = match.rangeAtIndex(2);
        attributedString.addAttribute(QBMarkdownImageStylerAttributeName, 1, whole);
        for (const NSRange marker : {NSRange{whole.location, alt.location - whole.location},
                                     NSRange{alt.limit(), link.location - alt.limit()}, NSRange{link.limit(), 1}}) {
            attributedString.addAttribute(QBMarkdownImageStylerAttributeMarker, 1, marker);
        }
        attributedString.addAttribute(QBMarkdownImageStylerAttributeAlt, 1, alt);
        attributedString.addAttribute(QBMarkdownImageStylerAttributeUrl, 1, link);
        if (const auto title = titleRegularExpression().firstMatchInString(text, 0, link)) {
            attributedString.addAttribute(QBMarkdownImageStylerAttributeTitle, 1, title->rangeAtIndex(1));
        }
    });
}

bool QBNoteImageMarkdownStyler::getUrl(QString *url, QString *title, QString *andAlt,
                                       const NSAttributedString &fromAttributedString, NSRange inRange)
{
    const NSRange link = firstRunOfAttribute(QBMarkdownImageStylerAttributeUrl, fromAttributedString, inRange);
    if (!link.isFound()) {
        return false;
    }
    const NSRange before{inRange.location, link.location - inRange.location};
    const NSRange alt = firstRunOfAttribute(QBMarkdownImageStylerAttributeAlt, fromAttributedString, before);
    *andAlt = alt.isFound() ? quib::expandedText(fromAttributedString, alt) : QString();
    // By now an attachment may stand for the link and its title.
    const QString text = quib::expandedText(fromAttributedString, link);
    const auto found = titleRegularExpression().firstMatchInString(text, 0, {0, text.size()});
    *title = found ? text.sliced(found->rangeAtIndex(1).location, found->rangeAtIndex(1).length) : QString();
    *url = quib::trimmedWhitespaceAndNewlines(QStringView(text).first(found ? found->range().location : text.size()));
    return true;
}
