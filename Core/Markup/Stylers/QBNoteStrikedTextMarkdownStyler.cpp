#include "QBNoteStrikedTextMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteStrikedTextMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Strike, /*syntax=*/1);
}

QString QBNoteStrikedTextMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Strike, /*syntax=*/1);
}

const NSRegularExpression *QBNoteStrikedTextMarkdownStyler::regularExpression() const
{
    return &stylerRegularExpression();
}
