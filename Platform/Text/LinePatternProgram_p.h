#pragma once

#include "LineAlphabet.h"
#include "LinePattern.h"

#include <QStringView>

#include <optional>
#include <vector>

namespace quib {

/// A pattern as places and ways between them. A value; place 0 is where a match begins.
struct LineProgram
{
    enum class Step : std::uint8_t
    {
        /// Reads one letter of the set, then goes to next.
        Letter,
        /// Goes to next and to other.
        Fork,
        /// Goes to next where the condition holds, reading nothing.
        AtStart,
        AtEnd,
        AtWordBoundary,
        NotBefore,
        /// The pattern is found.
        Found,
    };
    struct Place
    {
        Step step = Step::Found;
        std::uint16_t next = 0;
        std::uint16_t other = 0;
        LineAlphabet::Set set{};
    };
    std::vector<Place> places;

    /// Errors: nullopt for a pattern that is not of the dialect, or has more than kMostPlaces.
    [[nodiscard]] static std::optional<LineProgram> compiled(QStringView pattern, LinePattern::Case caseSensitivity);

    static constexpr size_t kMostPlaces = 2000;
};

} // namespace quib
