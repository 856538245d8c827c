#include "QBNoteStrikedTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteStrikedTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Strike, /*syntax=*/0);
}

QString QBNoteStrikedTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Strike, /*syntax=*/0);
}

const NSAttributeName &QBNoteStrikedTextStyler::stylerAttributeName()
{
    return QBNoteStrikedTextStylerAttributeName;
}

const NSAttributeName &QBNoteStrikedTextStyler::stylerMarkerAttributeName()
{
    return QBNoteStrikedTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteStrikedTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

QBNoteStrikedTextStyler::Attributes QBNoteStrikedTextStyler::attributes() const
{
    Attributes set{.whole = {},
                   .content = {{NSStrikethroughStyleAttributeName, 1}, {QBNoteStrikedTextStylerAttributeName, 1}},
                   .markers = {{NSStrikethroughStyleAttributeName, 1},
                               {NSStrikethroughColorAttributeName, quib::invisibleColorValue()},
                               {QBNoteStrikedTextStylerMarkerAttributeName, 1}}};
    if (const auto &theme = themeManager()) {
        set.whole.insert(NSForegroundColorAttributeName, quib::colorValue(theme->lightTextColor()));
        set.markers.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
    }
    return set;
}

std::span<const NSAttributeName> QBNoteStrikedTextStyler::ownAttributeNames() const
{
    static const std::array names{QBNoteStrikedTextStylerAttributeName, QBNoteStrikedTextStylerMarkerAttributeName,
                                  NSStrikethroughColorAttributeName};
    return names;
}
