#include "QBNoteLineSeparatorMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteLineSeparatorMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::LineSeparator, /*syntax=*/1);
}

QString QBNoteLineSeparatorMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::LineSeparator, /*syntax=*/1);
}
