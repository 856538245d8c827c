#include "QBNoteInvalidCharacterStyler.h"

#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <optional>

using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteInvalidCharacterStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::InvalidCharacter, /*syntax=*/0);
}

QList<char16_t> QBNoteInvalidCharacterStyler::invalidUnicodeCharacterHexValues()
{
    return quib::syntax::invalidUnicodeCharacterHexValues();
}

const NSRegularExpression *QBNoteInvalidCharacterStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteInvalidCharacterStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                NSTextStorage * /*textStorage*/)
{
    std::optional<AttributeSet> attributes;
    regularExpression()->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool * /*stop*/) {
            if (!attributes) {
                attributes = AttributeSet{{NSUnderlineStyleAttributeName, 1}};
                if (const auto &theme = themeManager()) {
                    attributes->insert(NSFontAttributeName, theme->monospaceFontAttribute());
                    attributes->insert(NSUnderlineColorAttributeName, quib::colorValue(theme->invalidCharacterColor()));
                    attributes->insert(NSBaselineOffsetAttributeName, -theme->basePointSizeForCurrentBaseFontSize());
                }
            }
            attributedString.addAttributes(*attributes, match.range());
        });
}
