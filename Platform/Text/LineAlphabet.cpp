#include "LineAlphabet.h"

#include <QChar>

#include <array>
#include <optional>

#include <unicode/uchar.h>

namespace quib {

namespace {

enum Property : unsigned
{
    Word = 1,
    Space = 2,
    LineEnd = 4,
    Combining = 8,
};

constexpr std::array<LineAlphabet::Special, LineAlphabet::kSpecial> kSpecials{{
    {0x00DF, u"ss"},
    {0x017F, u"s"},
    {0x1E9E, u"ss"},
    {0x2019, u""},
    {0x212A, u"k"},
    {0xFB00, u"ff"},
    {0xFB01, u"fi"},
    {0xFB02, u"fl"},
    {0xFB03, u"ffi"},
    {0xFB04, u"ffl"},
    {0xFB05, u"st"},
    {0xFB06, u"st"},
}};

unsigned propertiesOf(char32_t character)
{
    const auto c = static_cast<UChar32>(character);
    unsigned properties = 0;
    const unsigned category = U_MASK(u_charType(c));
    if ((category & (U_GC_M_MASK | U_GC_ND_MASK | U_GC_PC_MASK)) != 0 || c == 0x200C || c == 0x200D ||
        u_hasBinaryProperty(c, UCHAR_ALPHABETIC) != 0) {
        properties |= Word;
    }
    if (u_hasBinaryProperty(c, UCHAR_WHITE_SPACE) != 0) {
        properties |= Space;
    }
    if ((c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029) {
        properties |= LineEnd;
    }
    if ((category & U_GC_CF_MASK) != 0 || u_hasBinaryProperty(c, UCHAR_GRAPHEME_EXTEND) != 0) {
        properties |= Combining;
    }
    return properties;
}

std::optional<LineAlphabet::Letter> specialLetterOf(char32_t character)
{
    for (size_t i = 0; i < kSpecials.size(); ++i) {
        if (kSpecials[i].character == character) {
            return static_cast<LineAlphabet::Letter>(LineAlphabet::kAscii + i);
        }
    }
    return std::nullopt;
}

} // namespace

const LineAlphabet &LineAlphabet::shared()
{
    static const LineAlphabet alphabet;
    return alphabet;
}

const LineAlphabet::Special &LineAlphabet::special(int index)
{
    return kSpecials[static_cast<size_t>(index)];
}

LineAlphabet::LineAlphabet()
{
    const auto put = [this](size_t letter, unsigned properties) {
        m_word[letter] = (properties & Word) != 0;
        m_space[letter] = (properties & Space) != 0;
        m_lineEnd[letter] = (properties & LineEnd) != 0;
        m_anything[letter] = (properties & LineEnd) == 0;
        m_combining[letter] = (properties & Combining) != 0;
    };
    for (size_t c = 0; c < kAscii; ++c) {
        put(c, propertiesOf(static_cast<char32_t>(c)));
    }
    for (size_t i = 0; i < kSpecials.size(); ++i) {
        put(kAscii + i, propertiesOf(kSpecials[i].character));
    }
    for (unsigned properties = 0; properties < kRest; ++properties) {
        put(kAscii + kSpecial + properties, properties);
    }
}

LineAlphabet::Letter LineAlphabet::letterOf(char32_t character) const
{
    if (character < kAscii) {
        return static_cast<Letter>(character);
    }
    if (const auto special = specialLetterOf(character)) {
        return *special;
    }
    return static_cast<Letter>(kAscii + kSpecial + static_cast<int>(propertiesOf(character)));
}

void LineAlphabet::spell(QStringView line, std::vector<Letter> &letters) const
{
    letters.clear();
    letters.reserve(static_cast<size_t>(line.size()));
    const qsizetype size = line.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = line[i].unicode();
        if (unit < kAscii) {
            letters.push_back(static_cast<Letter>(unit));
            continue;
        }
        char32_t character = unit;
        if (QChar::isHighSurrogate(unit) && i + 1 < size && line[i + 1].isLowSurrogate()) {
            character = QChar::surrogateToUcs4(unit, line[++i].unicode());
        }
        letters.push_back(letterOf(character));
    }
}

} // namespace quib
