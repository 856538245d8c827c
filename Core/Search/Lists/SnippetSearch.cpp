#include "SnippetSearch.h"

#include <Search/QBNoteSearchManager.h>

namespace quib {

namespace {

/// More terms than anybody types are left to the pattern.
constexpr qsizetype kMostTerms = 64;

/// True for a phrase that means as an expression what it says.
bool isPlain(const QString &phrase)
{
    return NSRegularExpression::escapedPatternForString(phrase) == phrase;
}

} // namespace

SnippetSearch::SnippetSearch(const QString &searchString, std::shared_ptr<const NSRegularExpression> regex,
                             LineFeeds lineFeeds)
    : m_regex(std::move(regex))
    , m_lineFeeds(lineFeeds)
{
    if (m_regex == nullptr || m_regex->pattern() != QBNoteSearchManager::likeOrPatternForSearchString(searchString)) {
        return;
    }
    const auto terms = QBNoteSearchManager::highlightTermsForSearchString(searchString);
    if (terms.size() > kMostTerms) {
        return;
    }
    for (const auto &term : terms) {
        if (term.isExpression && !isPlain(term.text)) {
            m_terms.clear();
            return;
        }
        m_terms.emplace_back(term.text, lineFeeds);
    }
}

SnippetSearch::Hit SnippetSearch::firstHitInString(QStringView string) const
{
    if (m_regex == nullptr) {
        return {};
    }
    if (m_terms.empty()) {
        QString flat;
        if (m_lineFeeds == LineFeeds::AreBlanks && string.contains(u'\n')) {
            flat = string.toString().replace(u'\n', u' ');
            string = flat;
        }
        const auto match = m_regex->firstMatchInString(string, 0, {0, string.size()});
        return match ? Hit{true, match->rangeAtIndex(1)} : Hit{};
    }
    // At one place the terms are tried in their order, so the first term gives way to none but those further ahead.
    const NSRange first = m_terms.front().firstMatchInString(string);
    const qint64 limit = first.isFound() ? first.location : NSNotFound;
    for (size_t i = 1; i < m_terms.size(); ++i) {
        if (m_terms[i].firstMatchInString(string, limit).isFound()) {
            return {true, kNotFoundRange};
        }
    }
    return {first.isFound(), first};
}

} // namespace quib
