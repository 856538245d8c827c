#pragma once

#include <Text/CaselessTermSearch.h>
#include <Text/NSRegularExpression.h>

#include <QString>

#include <memory>
#include <vector>

namespace quib {

/// The highlight pattern of one search, ready to be looked for in long texts. What it finds is what the pattern finds;
/// where a search holds nothing but words and plain phrases, it is found at the speed of memory. Immutable; any thread.
class SnippetSearch
{
public:
    /// regex: the search's highlight pattern, or null, which is found nowhere.
    SnippetSearch(const QString &searchString, std::shared_ptr<const NSRegularExpression> regex, LineFeeds lineFeeds);

    struct Hit
    {
        bool isFound = false;
        /// Where the search's first term stands; kNotFoundRange when the hit is another term's.
        NSRange firstTerm = kNotFoundRange;
    };
    /// The first match of the pattern.
    [[nodiscard]] Hit firstHitInString(QStringView string) const;

    [[nodiscard]] const std::shared_ptr<const NSRegularExpression> &regex() const { return m_regex; }
    [[nodiscard]] LineFeeds lineFeeds() const { return m_lineFeeds; }

private:
    std::shared_ptr<const NSRegularExpression> m_regex;
    LineFeeds m_lineFeeds;
    /// Empty where the pattern itself has to be asked.
    std::vector<CaselessTermSearch> m_terms;
};

} // namespace quib
