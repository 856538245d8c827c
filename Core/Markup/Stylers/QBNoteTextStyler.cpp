#include "QBNoteTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "QBNoteTextStylerCommonAttributes.h"

QBNoteTextStyler::~QBNoteTextStyler() = default;

void QBNoteTextStyler::styleTextInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                                   NSTextStorage *textStorage)
{
    removeUnusedStyleIn(attributedString, range, textStorage);
    applyStyleIn(attributedString, range, textStorage);
}

void QBNoteTextStyler::removeUnusedStyleIn(NSMutableAttributedString & /*attributedString*/, NSRange & /*range*/,
                                           NSTextStorage * /*textStorage*/)
{
}

void QBNoteTextStyler::applyStyleIn(NSMutableAttributedString & /*attributedString*/, NSRange & /*range*/,
                                    NSTextStorage * /*textStorage*/)
{
}

void QBNoteTextStyler::enumerateUnguardedMatches(const NSRegularExpression &expression,
                                                 const NSAttributedString &attributedString, NSRange range,
                                                 const std::function<void(const NSTextCheckingResult &match)> &block)
{
    // OPTIMIZATION: most texts guard nothing from most stylers, and a block guards no more than its own match.
    const bool hasGuards = attributedString.containsAttribute(QBNoteSkipStylingAttributeName, range);
    expression.enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool * /*stop*/) {
            if (!hasGuards || !QBNoteTextStylerCommonAttributes::shouldSkipStylingInAttributedString(attributedString,
                                                                                                     match.range())) {
                block(match);
            }
        });
}
