#include "QBNoteTextStyler.h"

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
    expression.enumerateMatchesInString(attributedString.string(), 0, range,
                                        [&](const NSTextCheckingResult &match, bool * /*stop*/) {
                                            if (!QBNoteTextStylerCommonAttributes::shouldSkipStylingInAttributedString(
                                                    attributedString, match.range())) {
                                                block(match);
                                            }
                                        });
}
