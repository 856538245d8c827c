#include "TitleFinder.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quib {

TitleFinder::TitleFinder(std::vector<Title> titles)
    : m_titles(std::move(titles))
    , m_candidates(m_titles.size())
{
    m_begins.reserve(m_titles.size() + 1);
    for (const Title &title : m_titles) {
        m_begins.push_back(m_folded.size());
        m_folded += FuzzyQuery::folded(title.title);
    }
    m_begins.push_back(m_folded.size());
    std::iota(m_candidates.begin(), m_candidates.end(), 0U);
}

std::vector<TitleFinder::Found> TitleFinder::find(const QString &query, size_t limit)
{
    // 1. What the query before did not find, a longer one does not.
    if (!query.startsWith(m_query)) {
        m_candidates.resize(m_titles.size());
        std::iota(m_candidates.begin(), m_candidates.end(), 0U);
    }
    m_query = query;
    FuzzyQuery fuzzy(query);
    // 2. The worth of each.
    struct Worth
    {
        int score;
        quint32 number;
    };
    std::vector<Worth> found;
    const QStringView folded(m_folded);
    std::erase_if(m_candidates, [&](quint32 number) {
        const qsizetype begin = m_begins[number];
        const auto score = fuzzy.score(m_titles[number].title, folded.sliced(begin, m_begins[number + 1] - begin));
        if (score) {
            found.push_back({fuzzy.isEmpty() ? 0 : *score, number});
        }
        return !score;
    });
    // 3. The best of them, with the places of the letters.
    const auto middle = found.begin() + static_cast<qsizetype>(std::min(limit, found.size()));
    std::partial_sort(found.begin(), middle, found.end(), [](const Worth &a, const Worth &b) {
        return a.score != b.score ? a.score > b.score : a.number < b.number;
    });
    std::vector<Found> best;
    for (auto each = found.begin(); each != middle; ++each) {
        const Title &title = m_titles[each->number];
        const auto match = FuzzyMatch::match(query, title.title);
        best.push_back({&title, match ? match->places : QList<int>()});
    }
    return best;
}

} // namespace quib
