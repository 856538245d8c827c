#pragma once

#include "QBNoteLineSeparatorStyler.h"

/// Line separators of the Markdown syntax: three or more dashes, underscores or stars alone on a line.
class QBNoteLineSeparatorMarkdownStyler final : public QBNoteLineSeparatorStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

protected:
    [[nodiscard]] int syntax() const override { return 1; }
};
