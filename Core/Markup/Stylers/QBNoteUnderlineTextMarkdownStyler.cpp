#include "QBNoteUnderlineTextMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteUnderlineTextMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Underline, /*syntax=*/1);
}

QString QBNoteUnderlineTextMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Underline, /*syntax=*/1);
}

const NSRegularExpression *QBNoteUnderlineTextMarkdownStyler::regularExpression() const
{
    return &stylerRegularExpression();
}
