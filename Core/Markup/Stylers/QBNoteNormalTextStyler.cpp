#include "QBNoteNormalTextStyler.h"

#include "QBNoteTextStylerCommonAttributes.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<NSAttributeName> namesToRemove()
{
    std::vector<NSAttributeName> names{
        NSStrikethroughStyleAttributeName, NSLinkAttributeName, NSUnderlineStyleAttributeName,
        NSBaselineOffsetAttributeName,     NSKernAttributeName, NSBackgroundColorAttributeName,
    };
    std::ranges::copy(QBNoteTextStylerCommonAttributes::customAttributesNames(), std::back_inserter(names));
    return names;
}

} // namespace

void QBNoteNormalTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                 NSTextStorage * /*textStorage*/)
{
    static const std::vector<NSAttributeName> names = namesToRemove();
    attributedString.removeAttributes(names, range);
}

void QBNoteNormalTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    if (themeManager()) {
        attributedString.addAttributes(themeManager()->defaultTextAttributes(), range);
    }
}
