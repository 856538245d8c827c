#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

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

/// What of a text tells in a few words that a query is not in it, or how well it can do at most. A value.
struct FuzzyMarks
{
    FuzzyMarks() = default;
    /// folded: FuzzyQuery::folded(text)
    FuzzyMarks(QStringView text, QStringView folded);

    /// A bit for each unit that occurs in the folded text; some share theirs.
    quint64 units = 0;
    /// The bits of those that begin a word, of the first unit aside.
    quint64 wordBegins = 0;
    char16_t first = 0;
    quint16 length = 0;
    /// Whether a word begins right behind a letter or digit, as in "camelCase".
    bool hasInnerWords = false;
};

/// A query that many texts are held against. A value with room of its own to work in; one thread.
class FuzzyQuery
{
public:
    explicit FuzzyQuery(QStringView query);

    /// Whether the query has no letter.
    [[nodiscard]] bool isEmpty() const { return m_wanted.empty(); }
    /// A text in folded case, unit for unit, as far as it is looked at.
    [[nodiscard]] static QString folded(QStringView text);
    /// The score of FuzzyMatch::match.
    /// @param folded folded(text)
    [[nodiscard]] std::optional<int> score(QStringView text, QStringView folded);
    /// Whether a text of such marks can match: true for every one that does.
    [[nodiscard]] bool mayMatch(const FuzzyMarks &marks) const { return (marks.units & m_units) == m_units; }
    /// No text of such marks has a higher score. Requires: the query has a letter.
    [[nodiscard]] int mostScore(const FuzzyMarks &marks) const;
    /// Of the last text whose score was told.
    [[nodiscard]] QList<int> places() const;

private:
    /// A letter of the query at a place of the text.
    struct Hit
    {
        int place;
        int score; ///< the best of the letters up to this one
        int from;  ///< the hit of the letter before, an index of m_hits; -1 for the first letter
    };

    std::vector<QChar> m_wanted;
    std::vector<char16_t> m_wantedFolded;
    quint64 m_units = 0;     ///< their bits in FuzzyMarks
    std::vector<Hit> m_hits; ///< letter by letter, of each from left to right
    int m_best = -1;         ///< the hit of the last letter that makes the score
};

} // namespace quib
