#include "QBNoteBoldTextStyler.h"

#include "QBNoteTextStylerAttributes.h"
#include "ThemeValues.h"

#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <array>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteBoldTextStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Bold, /*syntax=*/0);
}

QString QBNoteBoldTextStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Bold, /*syntax=*/0);
}

const NSAttributeName &QBNoteBoldTextStyler::stylerAttributeName()
{
    return QBNoteBoldTextStylerAttributeName;
}

const NSAttributeName &QBNoteBoldTextStyler::stylerMarkerAttributeName()
{
    return QBNoteBoldTextStylerMarkerAttributeName;
}

const NSRegularExpression *QBNoteBoldTextStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

QBNoteBoldTextStyler::Attributes QBNoteBoldTextStyler::attributes() const
{
    Attributes set{.whole = {},
                   .content = {{QBNoteBoldTextStylerAttributeName, 1}},
                   .markers = {{QBNoteBoldTextStylerMarkerAttributeName, 1}}};
    if (const auto &theme = themeManager()) {
        set.content.insert(NSFontAttributeName, theme->paragraphBoldFontAttribute());
        set.markers.insert(NSForegroundColorAttributeName, quib::colorValue(theme->styleMarkerTextColor()));
    }
    return set;
}

std::span<const NSAttributeName> QBNoteBoldTextStyler::ownAttributeNames() const
{
    static const std::array names{QBNoteBoldTextStylerAttributeName, QBNoteBoldTextStylerMarkerAttributeName};
    return names;
}
