#pragma once

#include "QBNoteUnorderedListStyler.h"

/// Items of lists in the Markdown syntax: "- " and "+ " too, but where the brackets of a todo follow.
class QBNoteUnorderedListMarkdownStyler final : public QBNoteUnorderedListStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

protected:
    [[nodiscard]] int syntax() const override { return 1; }
};
