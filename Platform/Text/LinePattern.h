#pragma once

#include "LineAlphabet.h"

#include <QStringView>

#include <cstdint>
#include <memory>
#include <span>

namespace quib {

/// Tells whether a regular expression is found in a line, in time linear in the line, whatever line and pattern are:
/// where a backtracking matcher tries one way after the other, this one goes all ways at once. The answer is that of
/// NSRegularExpression for the same pattern, whose case folding it shares ("ss" is found in "ß").
///
/// Patterns are made of literals, ".", sets of characters and ranges, \w, \s, \n, groups, alternatives, the quantifiers
/// * + ? {n} {n,}, and the conditions ^, \b, (?!c) of one character, and $ at the pattern's end.
///
/// A value that learns while it works: what it found out about a line helps with the next. One thread at a time.
class LinePattern
{
public:
    enum class Case
    {
        Sensitive,
        Insensitive,
    };

    /// A pattern that is not made of the above is not valid and found nowhere.
    LinePattern(QStringView pattern, Case caseSensitivity);
    LinePattern(LinePattern &&) noexcept;
    LinePattern &operator=(LinePattern &&) noexcept;
    ~LinePattern();

    [[nodiscard]] bool isValid() const;
    /// line: as spelled by LineAlphabet.
    [[nodiscard]] bool isFoundIn(std::span<const LineAlphabet::Letter> line);

    /// How many sets of places it keeps; beyond that it forgets all of them.
    static constexpr size_t kMostStates = 512;

private:
    class Machine;

    std::unique_ptr<Machine> m_machine;
};

} // namespace quib
