#include "QBNoteCodeInlineTextStyler.h"

#include "AttributeAdditions.h"
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
        AttributeSet lastOfText; ///< with the kern
    };
    std::optional<Attributes> set;
    quib::AttributeAdditions additions(attributedString);
    enumerateUnguardedMatches(*regularExpression(), attributedString, range, [&](const NSTextCheckingResult &match) {
        if (!set) {
            set = Attributes{textAttributes(), markerAttributes(), {}, {}};
            if (const auto &theme = themeManager()) {
                set->text.insert(NSFontAttributeName, theme->monospaceFontAttribute());
                set->kern.insert(NSKernAttributeName, theme->paragraphFontXHeight() / 2);
            }
            set->marker.insert(set->kern);
            set->lastOfText = set->text;
            set->lastOfText.insert(set->kern);
        }
        const NSRange opening = match.rangeAtIndex(1);
        const NSRange text = match.rangeAtIndex(2);
        // Room for the background: the character before a marker widens as well.
        if (opening.location > 0) {
            additions.add({opening.location - 1, 1}, set->kern);
        }
        additions.add(opening, set->marker);
        if (text.length > 0) {
            additions.add({text.location, text.length - 1}, set->text);
            additions.add({text.limit() - 1, 1}, set->lastOfText);
        }
        additions.add(match.rangeAtIndex(3), set->marker);
    });
    additions.flush();
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
