#include "QBNoteNormalTextStyler.h"

#include "QBNoteTextStylerCommonAttributes.h"

#include <Themes/QBNotesTextThemeManager.h>

void QBNoteNormalTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                 NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttributes(QBNoteTextStylerCommonAttributes::attributesNamesOfNormalText(), range);
}

void QBNoteNormalTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    if (themeManager()) {
        attributedString.addAttributes(themeManager()->defaultTextAttributes(), range);
    }
}
