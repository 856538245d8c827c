#include "TitleFinder.h"

#include <algorithm>
#include <numeric>

namespace quib {

void TitleFinder::Texts::append(QStringView text)
{
    m_all += text;
    m_ends.push_back(m_all.size());
}

QStringView TitleFinder::Texts::at(size_t index) const
{
    const qsizetype begin = index > 0 ? m_ends[index - 1] : 0;
    return QStringView(m_all).sliced(begin, m_ends[index] - begin);
}

TitleFinder::TitleFinder(const std::vector<Title> &titles)
    : m_candidates(titles.size())
{
    m_marks.reserve(titles.size());
    for (const Title &title : titles) {
        m_identifiers.append(title.identifier);
        m_titles.append(title.title);
        const QString folded = FuzzyQuery::folded(title.title);
        m_folded.append(folded);
        m_marks.emplace_back(title.title, folded);
    }
    std::iota(m_candidates.begin(), m_candidates.end(), 0U);
}

TitleFinder::Found TitleFinder::found(quint32 number, const QString &query) const
{
    const QString title = m_titles.at(number).toString();
    const auto match = FuzzyMatch::match(query, title);
    return {m_identifiers.at(number).toString(), title, match ? match->places : QList<int>()};
}

std::vector<TitleFinder::Found> TitleFinder::find(const QString &query, size_t limit)
{
    // 1. What the query before did not find, a longer one does not.
    if (!query.startsWith(m_query)) {
        m_candidates.resize(m_marks.size());
        std::iota(m_candidates.begin(), m_candidates.end(), 0U);
    }
    m_query = query;
    FuzzyQuery fuzzy(query);
    std::vector<Found> all;
    if (fuzzy.isEmpty() || limit == 0) {
        for (size_t i = 0; i < std::min(limit, m_candidates.size()); ++i) {
            all.push_back(found(m_candidates[i], query));
        }
        return all;
    }
    // 2. The best, a heap with the worst of them in front. A title that cannot be better than that one is passed over:
    //    of those of equal worth the first is the best.
    struct Worth
    {
        int score;
        quint32 number;
    };
    const auto isBetter = [](const Worth &a, const Worth &b) {
        return a.score != b.score ? a.score > b.score : a.number < b.number;
    };
    std::vector<Worth> best;
    std::erase_if(m_candidates, [&](quint32 number) {
        const FuzzyMarks &marks = m_marks[number];
        if (!fuzzy.mayMatch(marks)) {
            return true;
        }
        const bool isFull = best.size() == limit;
        if (isFull && fuzzy.mostScore(marks) <= best.front().score) {
            return false;
        }
        const auto score = fuzzy.score(m_titles.at(number), m_folded.at(number));
        if (score && (!isFull || *score > best.front().score)) {
            if (isFull) {
                std::ranges::pop_heap(best, isBetter);
                best.pop_back();
            }
            best.push_back({*score, number});
            std::ranges::push_heap(best, isBetter);
        }
        return !score;
    });
    // 3. In order, with the places of the letters.
    std::ranges::sort_heap(best, isBetter);
    for (const Worth &each : best) {
        all.push_back(found(each.number, query));
    }
    return all;
}

} // namespace quib
