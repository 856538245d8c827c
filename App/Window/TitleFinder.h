#pragma once

#include "FuzzyMatch.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quib {

/// Titles of notes, to be found by what is typed in short. Made for a library of 100,000 notes and a frame for each
/// key: a query that goes on from the one before is looked for among its titles only. A value, one thread.
class TitleFinder
{
public:
    struct Title
    {
        QString identifier;
        QString title;
    };
    struct Found
    {
        const Title *title = nullptr; ///< lives as long as the finder
        QList<int> places;
    };

    TitleFinder() = default;
    explicit TitleFinder(std::vector<Title> titles);

    /// The best titles for a query, the best first, those of equal worth in the order in which they were given; of an
    /// empty query the first ones.
    [[nodiscard]] std::vector<Found> find(const QString &query, size_t limit);

private:
    std::vector<Title> m_titles;
    /// All titles behind one another in folded case, as far as they are looked at; where each begins, and the end.
    QString m_folded;
    std::vector<qsizetype> m_begins;
    /// Of the query before: the numbers of the titles that had its letters.
    QString m_query;
    std::vector<quint32> m_candidates;
};

} // namespace quib
