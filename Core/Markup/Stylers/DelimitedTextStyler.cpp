#include "DelimitedTextStyler.h"

#include "AttributeAdditions.h"

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
    AttributeAdditions additions(attributedString);
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        if (!set) {
            set = attributes();
            // Markers and content are painted over the whole.
            for (AttributeSet *const part : {&set->content, &set->markers}) {
                AttributeSet both = set->whole;
                both.insert(*part);
                *part = both;
            }
        }
        const NSRange opening = match.rangeAtIndex(1);
        const NSRange content = match.rangeAtIndex(2);
        const NSRange closing = match.rangeAtIndex(3);
        if (content.length == 0) {
            additions.add(match.range(), set->markers);
            return;
        }
        additions.add(opening, set->markers);
        additions.add(content, set->content);
        additions.add({content.limit(), closing.location - content.limit()}, set->whole);
        additions.add(closing, set->markers);
    });
    additions.flush();
}

} // namespace quib
