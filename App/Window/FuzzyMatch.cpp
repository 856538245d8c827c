#include "FuzzyMatch.h"

#include <algorithm>
#include <vector>

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

} // namespace

std::optional<FuzzyMatch> FuzzyMatch::match(QStringView query, QStringView text)
{
    text = text.first(std::min(text.size(), kLongestText));
    std::vector<QChar> wanted;
    for (const QChar c : query) {
        if (!c.isSpace()) {
            wanted.push_back(c);
        }
    }
    if (wanted.empty()) {
        return FuzzyMatch{.score = -int(text.size()) / 8, .places = {}};
    }
    // The best score of the letters so far with the last of them at each place; one row a letter.
    constexpr int kNone = -1'000'000;
    const size_t width = static_cast<size_t>(text.size());
    if (wanted.size() > width) {
        return std::nullopt;
    }
    std::vector<std::vector<int>> best(wanted.size(), std::vector<int>(width, kNone));
    std::vector<std::vector<int>> from(wanted.size(), std::vector<int>(width, -1));
    for (size_t letter = 0; letter < wanted.size(); ++letter) {
        int before = kNone; // the best of the row above, up to two places back, less what the gap costs
        int beforePlace = -1;
        for (size_t i = letter; i < width; ++i) {
            if (letter > 0 && i >= 2) {
                before = before == kNone ? kNone : before - 1;
                const int candidate = best[letter - 1][i - 2];
                if (candidate != kNone && candidate - 1 > before) {
                    before = candidate - 1;
                    beforePlace = int(i) - 2;
                }
            }
            const QChar c = text[qsizetype(i)];
            if (c.toCaseFolded() != wanted[letter].toCaseFolded()) {
                continue;
            }
            int worth = kFound + (c == wanted[letter] ? kSameCase : 0);
            if (beginsWord(text, qsizetype(i))) {
                worth += i == 0 ? kBeginsText : kBeginsWord;
            }
            if (letter == 0) {
                best[0][i] = worth - std::min(int(i), kMostGap);
                continue;
            }
            const int next = i >= 1 && best[letter - 1][i - 1] != kNone ? best[letter - 1][i - 1] + kFollows : kNone;
            if (next == kNone && before == kNone) {
                continue;
            }
            const bool follows = next >= before;
            best[letter][i] = worth + (follows ? next : before);
            from[letter][i] = follows ? int(i) - 1 : beforePlace;
        }
    }
    const auto &last = best.back();
    const auto found = std::max_element(last.begin(), last.end());
    if (*found == kNone) {
        return std::nullopt;
    }
    FuzzyMatch match{.score = *found - int(width) / 8, .places = {}};
    int place = int(found - last.begin());
    for (size_t letter = wanted.size(); letter-- > 0;) {
        match.places.prepend(place);
        place = from[letter][static_cast<size_t>(place)];
    }
    return match;
}

} // namespace quib
