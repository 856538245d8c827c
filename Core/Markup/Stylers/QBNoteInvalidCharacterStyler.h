#pragma once

#include "QBNoteTextStyler.h"

#include <QList>

/// Underlines the look-alikes of a blank, in guarded text too.
class QBNoteInvalidCharacterStyler final : public QBNoteTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QList<char16_t> invalidUnicodeCharacterHexValues();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;
};
