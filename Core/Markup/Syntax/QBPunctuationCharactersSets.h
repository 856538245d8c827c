#pragma once

#include <QString>
#include <QStringList>

/// The punctuation that may stand right behind a styled stretch of text.
class QBPunctuationCharactersSets
{
public:
    /// Nine class members of an expression: ; : U+060C , U+2026 U+3001 . ! ?
    [[nodiscard]] static QStringList allowedPunctuationCharactersAfterStyler();
    /// The same, joined without separator.
    [[nodiscard]] static QString allowedPunctuationCharactersAfterStylerString();
};
