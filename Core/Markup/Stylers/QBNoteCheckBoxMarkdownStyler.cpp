#include "QBNoteCheckBoxMarkdownStyler.h"

#include <Markup/Syntax/StylerSyntax.h>

using quib::syntax::Construct;

const NSRegularExpression &QBNoteCheckBoxMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Checkbox, /*syntax=*/1);
}

const NSRegularExpression &QBNoteCheckBoxMarkdownStyler::uncheckedRegularExpression()
{
    return quib::syntax::uncheckedRegularExpression(/*syntax=*/1);
}

const NSRegularExpression &QBNoteCheckBoxMarkdownStyler::checkedRegularExpression()
{
    return quib::syntax::checkedRegularExpression(/*syntax=*/1);
}

QString QBNoteCheckBoxMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Checkbox, /*syntax=*/1);
}

QString QBNoteCheckBoxMarkdownStyler::stylerMarkerChecked(bool isChecked)
{
    return quib::syntax::stylerMarkerChecked(isChecked, /*syntax=*/1);
}
