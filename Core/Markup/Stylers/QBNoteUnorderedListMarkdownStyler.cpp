#include "QBNoteUnorderedListMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteUnorderedListMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::UnorderedList, /*syntax=*/1);
}

QString QBNoteUnorderedListMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::UnorderedList, /*syntax=*/1);
}
