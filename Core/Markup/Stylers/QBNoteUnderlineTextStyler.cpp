#include "QBNoteUnderlineTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteUnderlineTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Underline, /*syntax=*/0);
}

QString QBNoteUnderlineTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Underline, /*syntax=*/0);
}

const NSAttributeName &QBNoteUnderlineTextStyler::stylerAttributeName()
{
    return QBNoteUnderlineTextStylerAttributeName;
}

const NSAttributeName &QBNoteUnderlineTextStyler::stylerMarkerAttributeName()
{
    return QBNoteUnderlineTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteUnderlineTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

QBNoteUnderlineTextStyler::Attributes QBNoteUnderlineTextStyler::attributes() const
{
    Attributes set{.whole = {},
                   .content = {{NSUnderlineStyleAttributeName, 1}, {QBNoteUnderlineTextStylerAttributeName, 1}},
                   // A line that does not show keeps the line's height the same under the markers.
                   .markers = {{NSUnderlineStyleAttributeName, 1},
                               {NSUnderlineColorAttributeName, quib::invisibleColorValue()},
                               {QBNoteUnderlineTextStylerMarkerAttributeName, 1}}};
    if (const auto &theme = themeManager()) {
        set.content.insert(NSUnderlineColorAttributeName, quib::colorValue(theme->accentTextColor()));
        set.markers.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
        set.markers.insert(NSBaselineOffsetAttributeName, theme->basePointSizeForCurrentBaseFontSize());
    }
    return set;
}

std::span<const NSAttributeName> QBNoteUnderlineTextStyler::ownAttributeNames() const
{
    static const std::array names{QBNoteUnderlineTextStylerAttributeName, QBNoteUnderlineTextStylerMarkerAttributeName,
                                  NSUnderlineColorAttributeName};
    return names;
}
