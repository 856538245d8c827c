#pragma once

#include "QBNoteUnderlineTextStyler.h"

/// Underlined text of the Markdown syntax: `~word~`, also inside of a word.
class QBNoteUnderlineTextMarkdownStyler final : public QBNoteUnderlineTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
};
