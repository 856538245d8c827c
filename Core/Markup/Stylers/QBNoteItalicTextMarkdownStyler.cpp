#include "QBNoteItalicTextMarkdownStyler.h"

#include "QBNoteTextStylerAttributes.h"

#include <Markup/Syntax/StylerSyntax.h>

#include <array>

using quib::syntax::Construct;

QBNoteItalicTextMarkdownStyler::QBNoteItalicTextMarkdownStyler()
    : QBNoteItalicTextStyler(/*syntax=*/1)
{
}

const NSRegularExpression &QBNoteItalicTextMarkdownStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Italic, /*syntax=*/1);
}

QString QBNoteItalicTextMarkdownStyler::stylerMarker()
{
    return quib::syntax::stylerMarker(Construct::Italic, /*syntax=*/1);
}

std::span<const NSAttributeName> QBNoteItalicTextMarkdownStyler::refusedMarkerAttributeNames() const
{
    static const std::array names{NSLinkAttributeName, QBNoteBoldTextStylerMarkerAttributeName,
                                  QBNoteSkipStylingAttributeName};
    return names;
}
