#pragma once

#include <QStringView>

#include <bitset>
#include <cstdint>
#include <vector>

namespace quib {

/// What line patterns tell apart in a text: each ASCII character, the few others whose case folding is ASCII, the right
/// quotation mark, and the rest by what classes of characters say of it. A letter is a number below kEnd; kEnd itself
/// stands behind the last character of a line.
class LineAlphabet
{
public:
    using Letter = std::uint8_t;

    static constexpr int kAscii = 128;
    static constexpr int kSpecial = 12;
    /// Word, white space, end of line, combining: every combination of four properties.
    static constexpr int kRest = 16;
    static constexpr int kEnd = kAscii + kSpecial + kRest;
    using Set = std::bitset<kEnd>;

    static const LineAlphabet &shared();

    [[nodiscard]] Letter letterOf(char32_t character) const;
    /// Writes the line in letters, a surrogate pair as one; what letters held before is gone.
    void spell(QStringView line, std::vector<Letter> &letters) const;

    /// \w, \s, and everything but the ends of lines.
    [[nodiscard]] const Set &word() const { return m_word; }
    [[nodiscard]] const Set &space() const { return m_space; }
    [[nodiscard]] const Set &anything() const { return m_anything; }
    [[nodiscard]] const Set &lineEnd() const { return m_lineEnd; }
    /// What belongs to the character before it: no word begins or ends there.
    [[nodiscard]] const Set &combining() const { return m_combining; }

    /// A character that is not of ASCII and has a letter of its own.
    struct Special
    {
        char32_t character = 0;
        /// What it becomes when case is folded: one to three ASCII letters; empty for one without case.
        QStringView folded;
    };
    /// The special characters; that at index i has the letter kAscii + i.
    [[nodiscard]] static const Special &special(int index);

private:
    LineAlphabet();

    Set m_word;
    Set m_space;
    Set m_anything;
    Set m_lineEnd;
    Set m_combining;
};

} // namespace quib
