#pragma once

#include "QBNoteStrikedTextStyler.h"

/// Struck text of the Markdown syntax: `~~word~~`, also inside of a word.
class QBNoteStrikedTextMarkdownStyler final : public QBNoteStrikedTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
};
