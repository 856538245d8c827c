#include "QBNoteURLStyler.h"

#include "AttributeAdditions.h"
#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Text/NSDataDetector.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <optional>

const NSRegularExpression &QBNoteURLStyler::stylerRegularExpression()
{
    return NSDataDetector::sharedDetector(NSDataDetector::CheckingType::Link);
}

const NSAttributeName &QBNoteURLStyler::stylerAttributeName()
{
    return QBNoteURLTextStylerAttributeName;
}

const NSRegularExpression *QBNoteURLStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteURLStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                          NSTextStorage * /*textStorage*/)
{
    attributedString.removeAttribute(QBNoteURLTextStylerAttributeName, range);
}

void QBNoteURLStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                   NSTextStorage * /*textStorage*/)
{
    std::optional<quib::AttributeValue> color;
    quib::AttributeAdditions additions(attributedString);
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        if (!color) {
            color = themeManager() ? quib::colorValue(themeManager()->linkTextColor()) : quib::AttributeValue();
        }
        const quib::AttributeValue url(match.URL());
        quib::AttributeSet attributes{{NSLinkAttributeName, url}, {QBNoteURLTextStylerAttributeName, url}};
        attributes.insert(NSForegroundColorAttributeName, *color);
        additions.add(match.range(), attributes);
    });
    additions.flush();
}
