#pragma once

#include "DelimitedTextStyler.h"

#include <QString>

/// Underlined text: `_word_`, between white space or punctuation.
class QBNoteUnderlineTextStyler : public quib::DelimitedTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;

protected:
    [[nodiscard]] Attributes attributes() const override;
    [[nodiscard]] std::span<const NSAttributeName> ownAttributeNames() const override;
};
