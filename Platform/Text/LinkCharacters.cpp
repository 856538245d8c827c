#include "LinkCharacters.h"

namespace quib {

namespace {

bool endsLinksBelow128(char32_t character)
{
    switch (character) {
    case U'"':
    case U'<':
    case U'>':
    case U'\\':
    case U'`':
    case U'|':
    case 0x7F:
        return true;
    default:
        return character <= U' ';
    }
}

/// Marks of punctuation that close a clause in their scripts, and the dashes that stand without spaces around them.
bool endsClauses(char32_t character)
{
    switch (character) {
    case 0x060C: // Arabic comma
    case 0x061B: // Arabic semicolon
    case 0x061F: // Arabic question mark
    case 0x06D4: // Arabic full stop
    case 0x0964: // danda
    case 0x2014: // em dash
    case 0x2015: // horizontal bar
    case 0x2025: // two dot leader
    case 0x2026: // horizontal ellipsis
        return true;
    default:
        // CJK symbols and punctuation without the iteration mark and its neighbours, half- and full-width forms.
        return (character >= 0x3001 && character <= 0x3003) || (character >= 0x3008 && character <= 0x301F) ||
               (character >= 0xFF01 && character <= 0xFF0F) || (character >= 0xFF1A && character <= 0xFF20) ||
               (character >= 0xFF3B && character <= 0xFF3D) || (character >= 0xFF5B && character <= 0xFF65);
    }
}

} // namespace

CodePoint codePointAt(QStringView text, qsizetype index)
{
    const char16_t unit = text[index].unicode();
    if (QChar::isHighSurrogate(unit) && index + 1 < text.size() && text[index + 1].isLowSurrogate()) {
        return {QChar::surrogateToUcs4(unit, text[index + 1].unicode()), 2};
    }
    return {unit, 1};
}

CodePoint codePointBefore(QStringView text, qsizetype index)
{
    const char16_t unit = text[index - 1].unicode();
    if (QChar::isLowSurrogate(unit) && index > 1 && text[index - 2].isHighSurrogate()) {
        return {QChar::surrogateToUcs4(text[index - 2].unicode(), unit), 2};
    }
    return {unit, 1};
}

bool isWordCharacter(char32_t character)
{
    if (character < 128) {
        const auto unit = static_cast<char16_t>(character);
        return isAsciiLetter(unit) || isAsciiDigit(unit);
    }
    // The full-width forms of letters and digits are words too; the variation selectors of emoji are not.
    return QChar::isLetterOrNumber(character) ||
           (QChar::isMark(character) && !(character >= 0xFE00 && character <= 0xFE0F));
}

bool isWrittenWithoutSpaces(char32_t character)
{
    if (character < 0x0E00) {
        return false;
    }
    if (character == 0x30FC) { // the sign of long vowels belongs to both kana
        return true;
    }
    switch (QChar::script(character)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Hangul:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
        return true;
    default:
        return false;
    }
}

bool ScriptSeam::isBefore(char32_t character)
{
    if (!isWordCharacter(character)) {
        m_kind = character == U'-' ? m_kind : Kind::Open;
        return false;
    }
    if (character < 128 && isAsciiDigit(static_cast<char16_t>(character))) {
        return false;
    }
    const Kind kind = isWrittenWithoutSpaces(character) ? Kind::WithoutSpaces : Kind::Spaced;
    if (m_kind != Kind::Open && m_kind != kind) {
        return true;
    }
    m_kind = kind;
    return false;
}

bool endsLinks(char32_t character)
{
    if (character < 128) {
        return endsLinksBelow128(character);
    }
    constexpr char32_t kZeroWidthNonJoiner = 0x200C;
    constexpr char32_t kZeroWidthJoiner = 0x200D;
    constexpr char32_t kObjectReplacement = 0xFFFC;
    if (character == kZeroWidthNonJoiner || character == kZeroWidthJoiner) {
        return false; // parts of words in Persian and Indic scripts
    }
    if (character == kObjectReplacement || QChar::isNonCharacter(character) || endsClauses(character)) {
        return true;
    }
    switch (QChar::category(character)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Punctuation_InitialQuote:
    case QChar::Punctuation_FinalQuote:
    case QChar::Punctuation_Open:
    case QChar::Punctuation_Close:
        return true;
    default:
        return false;
    }
}

bool isTrailingPunctuation(char32_t character)
{
    switch (character) {
    case U'.':
    case U',':
    case U';':
    case U':':
    case U'!':
    case U'?':
    case U'\'':
    case U'*':
    case U'(':
    case U'[':
    case U'{':
        return true;
    default:
        return character >= 128 && (QChar::isPunct(character) || character == 0x200C || character == 0x200D);
    }
}

} // namespace quib
