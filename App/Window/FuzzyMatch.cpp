#include "FuzzyMatch.h"

#include <algorithm>

namespace quib {

namespace {

// Points. A letter that begins a word is worth more than one that follows another, so that initials win.
constexpr int kFound = 8;
constexpr int kBeginsText = 12;
constexpr int kBeginsWord = 10;
constexpr int kFollows = 9;
constexpr int kSameCase = 1;
constexpr int kMostGap = 6;
/// Longer texts are matched by their beginnings.
constexpr qsizetype kLongestText = 256;

bool beginsWord(QStringView text, qsizetype i)
{
    return i == 0 || (!text[i - 1].isLetterOrNumber() && text[i].isLetterOrNumber()) ||
           (text[i - 1].isLower() && text[i].isUpper());
}

/// Bits for letters and digits each, and some for all others.
quint64 bitOf(char16_t unit)
{
    if (unit >= u'a' && unit <= u'z') {
        return quint64{1} << (unit - u'a');
    }
    if (unit >= u'0' && unit <= u'9') {
        return quint64{1} << (unit - u'0' + 26);
    }
    return quint64{1} << (36 + unit % 28);
}

} // namespace

FuzzyMarks::FuzzyMarks(QStringView text, QStringView folded)
    : first(folded.isEmpty() ? u'\0' : folded.front().unicode())
    , length(static_cast<quint16>(folded.size()))
{
    for (qsizetype i = 0; i < folded.size(); ++i) {
        const quint64 bit = bitOf(folded[i].unicode());
        units |= bit;
        if (i > 0 && beginsWord(text, i)) {
            wordBegins |= bit;
            hasInnerWords |= folded[i - 1].isLetterOrNumber();
        }
    }
}

std::optional<FuzzyMatch> FuzzyMatch::match(QStringView query, QStringView text)
{
    FuzzyQuery fuzzy(query);
    const auto score = fuzzy.score(text, FuzzyQuery::folded(text));
    return score ? std::optional(FuzzyMatch{.score = *score, .places = fuzzy.places()}) : std::nullopt;
}

FuzzyQuery::FuzzyQuery(QStringView query)
{
    for (const QChar c : query) {
        if (!c.isSpace()) {
            m_wanted.push_back(c);
            m_wantedFolded.push_back(c.toCaseFolded().unicode());
            m_units |= bitOf(m_wantedFolded.back());
        }
    }
}

QString FuzzyQuery::folded(QStringView text)
{
    QString folded = text.first(std::min(text.size(), kLongestText)).toString();
    for (QChar &c : folded) {
        c = c.toCaseFolded();
    }
    return folded;
}

int FuzzyQuery::mostScore(const FuzzyMarks &marks) const
{
    constexpr int kAnyLetter = kFound + kSameCase;
    // A letter that does not follow the one before pays for the gap, and then at least one that begins a word is worth
    // no more than one that follows.
    static_assert(kFollows >= kBeginsWord - 1 && kBeginsText > kBeginsWord && kMostGap > 0);
    int most = kAnyLetter - marks.length / 8;
    if (marks.first == m_wantedFolded.front()) {
        most += kBeginsText;
    } else {
        most += ((marks.wordBegins & bitOf(m_wantedFolded.front())) != 0 ? kBeginsWord : 0) - 1;
    }
    for (size_t i = 1; i < m_wantedFolded.size(); ++i) {
        most += kAnyLetter + kFollows;
        // It does both only where a word begins right behind what the letter before stands for.
        if (marks.hasInnerWords || !QChar(m_wantedFolded[i - 1]).isLetterOrNumber()) {
            most += kBeginsWord;
        }
    }
    return most;
}

std::optional<int> FuzzyQuery::score(QStringView text, QStringView folded)
{
    m_hits.clear();
    m_best = -1;
    const int forLength = static_cast<int>(folded.size()) / 8;
    if (m_wanted.empty()) {
        return -forLength;
    }
    // 1. All letters in order? Most texts go here, by searches for one unit.
    qsizetype end = 0;
    for (const char16_t letter : m_wantedFolded) {
        end = folded.indexOf(QChar(letter), end) + 1;
        if (end == 0) {
            return std::nullopt;
        }
    }
    // 2. The places of each letter, each with the best way to it. What lies between two letters costs a point a unit.
    size_t before = 0; // the hits of the letter before: from here to `beforeEnd`
    size_t beforeEnd = 0;
    for (size_t letter = 0; letter < m_wanted.size(); ++letter) {
        const size_t begin = m_hits.size();
        size_t next = before; // the first hit of the letter before that is not two places back yet
        int bestBefore = -1;  // of those that are, the one with the best way from it
        for (qsizetype i = folded.indexOf(QChar(m_wantedFolded[letter]), static_cast<qsizetype>(letter)); i >= 0;
             i = folded.indexOf(QChar(m_wantedFolded[letter]), i + 1)) {
            const int place = static_cast<int>(i);
            int worth = kFound + (text[i] == m_wanted[letter] ? kSameCase : 0);
            if (beginsWord(text, i)) {
                worth += i == 0 ? kBeginsText : kBeginsWord;
            }
            if (letter == 0) {
                m_hits.push_back({place, worth - std::min(place, kMostGap), -1});
                continue;
            }
            for (; next < beforeEnd && m_hits[next].place <= place - 2; ++next) {
                const auto gain = [this](size_t hit) { return m_hits[hit].score + m_hits[hit].place; };
                if (bestBefore < 0 || gain(next) > gain(static_cast<size_t>(bestBefore))) {
                    bestBefore = static_cast<int>(next);
                }
            }
            int from = -1;
            int score = 0;
            if (bestBefore >= 0) {
                const Hit &hit = m_hits[static_cast<size_t>(bestBefore)];
                from = bestBefore;
                score = hit.score - (place - 1 - hit.place);
            }
            if (next < beforeEnd && m_hits[next].place == place - 1 &&
                (from < 0 || m_hits[next].score + kFollows >= score)) {
                from = static_cast<int>(next);
                score = m_hits[next].score + kFollows;
            }
            if (from >= 0) {
                m_hits.push_back({place, worth + score, from});
            }
        }
        before = begin;
        beforeEnd = m_hits.size();
    }
    // 3. The best end.
    for (size_t hit = before; hit < beforeEnd; ++hit) {
        if (m_best < 0 || m_hits[hit].score > m_hits[static_cast<size_t>(m_best)].score) {
            m_best = static_cast<int>(hit);
        }
    }
    return m_best < 0 ? std::nullopt : std::optional(m_hits[static_cast<size_t>(m_best)].score - forLength);
}

QList<int> FuzzyQuery::places() const
{
    QList<int> places;
    for (int hit = m_best; hit >= 0; hit = m_hits[static_cast<size_t>(hit)].from) {
        places.prepend(m_hits[static_cast<size_t>(hit)].place);
    }
    return places;
}

} // namespace quib
