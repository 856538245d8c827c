#pragma once

#include "QBNoteItalicTextStyler.h"

/// Italic text of the Markdown syntax: `*word*` or `_word_`. The marker of bold text, a link's text and guarded text
/// hold no marker of italics.
class QBNoteItalicTextMarkdownStyler final : public QBNoteItalicTextStyler
{
public:
    QBNoteItalicTextMarkdownStyler();

    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

protected:
    [[nodiscard]] std::span<const NSAttributeName> refusedMarkerAttributeNames() const override;
};
