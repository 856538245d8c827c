#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace quib {

/// How well a text answers what was typed in short: every letter of the query occurs in the text, in order, whatever
/// the case; better where letters begin words or follow one another, and where the text is short. A value.
struct FuzzyMatch
{
    int score = 0;
    /// Where the letters were found, ascending. Units: UTF-16 code units.
    QList<int> places;

    /// Nothing where a letter is missing. An empty query, and blanks in it, match everything.
    [[nodiscard]] static std::optional<FuzzyMatch> match(QStringView query, QStringView text);
};

} // namespace quib
