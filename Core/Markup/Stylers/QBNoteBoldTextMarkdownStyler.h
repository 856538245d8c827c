#pragma once

#include "QBNoteBoldTextStyler.h"

/// Bold text of the Markdown syntax: `**word**` or `__word__`.
class QBNoteBoldTextMarkdownStyler final : public QBNoteBoldTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
};
