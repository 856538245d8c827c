#include "DelimitedTextStyler.h"

#include <optional>

namespace quib {

void DelimitedTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                              NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttributes(ownAttributeNames(), range);
}

void DelimitedTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                       NSTextStorage * /*textStorage*/)
{
    std::optional<Attributes> set;
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        if (!set) {
            set = attributes();
        }
        if (!set->whole.isEmpty()) {
            attributedString.addAttributes(set->whole, match.range());
        }
        if (match.rangeAtIndex(2).length == 0) {
            attributedString.addAttributes(set->markers, match.range());
            return;
        }
        attributedString.addAttributes(set->content, match.rangeAtIndex(2));
        attributedString.addAttributes(set->markers, match.rangeAtIndex(1));
        attributedString.addAttributes(set->markers, match.rangeAtIndex(3));
    });
}

} // namespace quib
