#include "QBNoteBoldTextMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteBoldTextMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Bold, /*syntax=*/1);
}

QString QBNoteBoldTextMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Bold, /*syntax=*/1);
}

const NSRegularExpression *QBNoteBoldTextMarkdownStyler::regularExpression() const
{
    return &stylerRegularExpression();
}
