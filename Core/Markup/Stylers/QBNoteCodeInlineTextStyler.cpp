#include "QBNoteCodeInlineTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>
#include <optional>

using quib::AttributeSet;
using quib::syntax::Construct;

const NSRegularExpression &QBNoteCodeInlineTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::CodeInline, /*syntax=*/0);
}

QString QBNoteCodeInlineTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::CodeInline, /*syntax=*/0);
}

const NSAttributeName &QBNoteCodeInlineTextStyler::stylerAttributeName()
{
    return QBNoteCodeInlineTextStylerAttributeName;
}

const NSAttributeName &QBNoteCodeInlineTextStyler::stylerMarkerAttributeName()
{
    return QBNoteCodeInlineTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteCodeInlineTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

void QBNoteCodeInlineTextStyler::removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                                     NSTextStorage * /*textStorage*/)
{
    static const std::array names{QBNoteCodeInlineTextStylerAttributeName,
                                  QBNoteCodeInlineTextStylerMarkerAttributeName,
                                  QBNoteCodeInlineTextStylerBackgroundAttributeName};
    attributedString.removeAttributes(names, range);
}

void QBNoteCodeInlineTextStyler::applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                              NSTextStorage * /*textStorage*/)
{
    struct Attributes
    {
        AttributeSet text;
        AttributeSet marker;
        AttributeSet kern;
    };
    std::optional<Attributes> set;
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        if (!set) {
            set = Attributes{textAttributes(), markerAttributes(), {}};
            if (const auto &theme = themeManager()) {
                set->text.insert(NSFontAttributeName, theme->monospaceFontAttribute());
                set->kern.insert(NSKernAttributeName, theme->paragraphFontXHeight() / 2);
            }
        }
        const NSRange opening = match.rangeAtIndex(1);
        const NSRange closing = match.rangeAtIndex(3);
        attributedString.addAttributes(set->text, match.rangeAtIndex(2));
        attributedString.addAttributes(set->marker, opening);
        attributedString.addAttributes(set->marker, closing);
        // Room for the background: the character before a marker widens as well.
        const qint64 before = opening.location > 0 ? 1 : 0;
        attributedString.addAttributes(set->kern, {opening.location - before, opening.length + before});
        attributedString.addAttributes(set->kern, {closing.location - 1, closing.length + 1});
    });
}

AttributeSet QBNoteCodeInlineTextStyler::textAttributes() const
{
    AttributeSet attributes{
        {QBNoteCodeInlineTextStylerAttributeName, 1},      {QBNoteCodeInlineTextStylerBackgroundAttributeName, 1},
        {QBNoteSkipAttachmentReplacementAttributeName, 1}, {QBNoteSkipStylingAttributeName, 1},
        {QBNoteSkipSpellCheckerAttributeName, 1},
    };
    if (const auto &theme = themeManager()) {
        attributes.insert(NSForegroundColorAttributeName, quib::colorValue(theme->codeFontColor()));
    }
    return attributes;
}

AttributeSet QBNoteCodeInlineTextStyler::markerAttributes() const
{
    AttributeSet attributes{
        {QBNoteCodeInlineTextStylerMarkerAttributeName, 1},
        {QBNoteCodeInlineTextStylerBackgroundAttributeName, 1},
        {QBNoteSkipSpellCheckerAttributeName, 1},
    };
    if (const auto &theme = themeManager()) {
        attributes.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
        attributes.insert(NSFontAttributeName, theme->paragraphFontAttribute());
    }
    return attributes;
}
