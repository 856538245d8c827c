#pragma once

#include "QBNoteCheckBoxStyler.h"

/// Todos of the Markdown syntax: "- [ ] " open and "- [x] " done.
class QBNoteCheckBoxMarkdownStyler final : public QBNoteCheckBoxStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static const NSRegularExpression &uncheckedRegularExpression();
    [[nodiscard]] static const NSRegularExpression &checkedRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static QString stylerMarkerChecked(bool isChecked);

protected:
    [[nodiscard]] int syntax() const override { return 1; }
};
