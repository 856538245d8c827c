#pragma once

#include <QString>
#include <QStringList>

/// The building blocks that the patterns of the markup are put together from.
class QBNoteTextStylerRegexHelper
{
public:
    /// What may stand before an inline construct: a line's start, white space, opening punctuation.
    [[nodiscard]] static QString inlineBeginPattern();
    /// What may stand behind one: a line's end, white space, closing punctuation.
    [[nodiscard]] static QString inlineEndPattern();
    /// Content that does not begin or end in white space; may be empty.
    [[nodiscard]] static QString inlineContentWithoutBoundarySpaces();
    [[nodiscard]] static QString inlineNonEmptyContentWithoutBoundarySpaces();
    /// The same without the given characters, written as members of a class.
    [[nodiscard]] static QString
    inlineNonEmptyContentWithoutBoundarySpacesExludingCharacters(const QString &characters);
    /// "#" and six hexadecimal digits.
    [[nodiscard]] static QString hexColorPattern();
    /// Members of a class: [ ( " { '
    [[nodiscard]] static QStringList allowedPunctuationCharactersBeforeInlineStyler();
    /// Members of a class: ; : U+060C , U+2026 U+3001 . ! ) ? } ] ' "
    [[nodiscard]] static QStringList allowedPunctuationCharactersAfterInlineStyler();
};
