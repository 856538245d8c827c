#pragma once

#include "FuzzyMatch.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace quib {

/// Titles of notes, to be found by what is typed in short. Made for a library of 100,000 notes and a frame for each
/// key: of most titles a few marks tell that they lack a letter or cannot be among the best, and a query that goes on
/// from the one before is looked for among its titles only. A value, one thread.
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
        QString identifier;
        QString title;
        QList<int> places;
    };

    TitleFinder() = default;
    explicit TitleFinder(const std::vector<Title> &titles);

    /// The best titles for a query, the best first, those of equal worth in the order in which they were given; of an
    /// empty query the first ones.
    [[nodiscard]] std::vector<Found> find(const QString &query, size_t limit);

private:
    /// Texts behind one another in one block: made and let go of at once, however many.
    class Texts
    {
    public:
        void append(QStringView text);
        [[nodiscard]] QStringView at(size_t index) const;

    private:
        QString m_all;
        std::vector<qsizetype> m_ends;
    };

    [[nodiscard]] Found found(quint32 number, const QString &query) const;

    Texts m_identifiers;
    Texts m_titles;
    /// The titles in folded case, as far as they are looked at.
    Texts m_folded;
    std::vector<FuzzyMarks> m_marks;
    /// Of the query before: the numbers of the titles that may have its letters, ascending; all that have them.
    QString m_query;
    std::vector<quint32> m_candidates;
};

} // namespace quib
