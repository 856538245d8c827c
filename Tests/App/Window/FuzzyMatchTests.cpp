#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Window/FuzzyMatch.h>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// The definition: all letters, in order, whatever the case.
bool isSubsequence(const QString &query, const QString &text)
{
    qsizetype at = 0;
    for (const QChar c : text) {
        while (at < query.size() && query[at].isSpace()) {
            ++at;
        }
        if (at < query.size() && query[at].toCaseFolded() == c.toCaseFolded()) {
            ++at;
        }
    }
    while (at < query.size() && query[at].isSpace()) {
        ++at;
    }
    return at == query.size();
}

TEST(FuzzyMatch, FindsWhatHasTheLettersInOrderAndNothingElse)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto word = [&random](int longest) {
        QString made;
        for (int length = std::uniform_int_distribution<int>(0, longest)(random); length > 0; --length) {
            made += u"abAB "_s[std::uniform_int_distribution<qsizetype>(0, 4)(random)];
        }
        return made;
    };
    for (int i = 0; i < 20'000; ++i) {
        const QString query = word(5);
        const QString text = word(12);
        const auto match = FuzzyMatch::match(query, text);
        ASSERT_EQ(match.has_value(), isSubsequence(query, text))
            << query.toStdString() << " in " << (text).toStdString();
        if (!match) {
            continue;
        }
        // The places tell of letters of the query, in order.
        QString wanted = query;
        wanted.remove(u' ');
        ASSERT_EQ(match->places.size(), wanted.size());
        for (qsizetype letter = 0; letter < wanted.size(); ++letter) {
            ASSERT_EQ(text[match->places[letter]].toCaseFolded(), wanted[letter].toCaseFolded());
            ASSERT_TRUE(letter == 0 || match->places[letter - 1] < match->places[letter]);
        }
    }
}

struct Preference
{
    const char16_t *query;
    const char16_t *better;
    const char16_t *worse;
};

class FuzzyPreference : public testing::TestWithParam<Preference>
{
};

TEST_P(FuzzyPreference, Holds)
{
    const auto [query, better, worse] = GetParam();
    const auto good = FuzzyMatch::match(QStringView(query), QStringView(better));
    const auto bad = FuzzyMatch::match(QStringView(query), QStringView(worse));
    ASSERT_TRUE(good && bad);
    EXPECT_GT(good->score, bad->score);
}

INSTANTIATE_TEST_SUITE_P(, FuzzyPreference,
                         testing::Values(Preference{u"list", u"Reading list", u"Lost in transit"},
                                         Preference{u"nn", u"New Note", u"Announcement"},
                                         Preference{u"soup", u"Soup", u"Soup for a cold week, and what goes with it"},
                                         Preference{u"gar", u"Garden in October", u"The sugar"},
                                         Preference{u"mtt", u"Move to Trash", u"A matter of taste"},
                                         Preference{u"Red", u"Redcap", u"redeem"}));

/// What letters at given places are worth.
int worthOf(const QString &query, const QString &text, const QList<int> &places)
{
    int score = 0;
    for (qsizetype letter = 0; letter < places.size(); ++letter) {
        const int at = places[letter];
        score += 8 + (text[at] == query[letter] ? 1 : 0);
        const bool begins = at == 0 || (!text[at - 1].isLetterOrNumber() && text[at].isLetterOrNumber()) ||
                            (text[at - 1].isLower() && text[at].isUpper());
        score += at == 0 ? 12 : begins ? 10 : 0;
        if (letter == 0) {
            score -= std::min(at, 6);
        } else {
            const int gap = at - places[letter - 1] - 1;
            score += gap == 0 ? 9 : -gap;
        }
    }
    return score - int(text.size()) / 8;
}

int bestOfAllPlaces(const QString &query, const QString &text, QList<int> places = {})
{
    if (places.size() == query.size()) {
        return worthOf(query, text, places);
    }
    int best = -1'000'000;
    for (int at = places.isEmpty() ? 0 : places.last() + 1; at < text.size(); ++at) {
        if (text[at].toCaseFolded() == query[places.size()].toCaseFolded()) {
            best = std::max(best, bestOfAllPlaces(query, text, places + QList<int>{at}));
        }
    }
    return best;
}

TEST(FuzzyMatch, TakesTheBestPlacesThereAre)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto word = [&random](int shortest, int longest) {
        QString made;
        for (int length = std::uniform_int_distribution<int>(shortest, longest)(random); length > 0; --length) {
            made += u"abAB -"_s[std::uniform_int_distribution<qsizetype>(0, 5)(random)];
        }
        return made;
    };
    for (int i = 0; i < 5'000; ++i) {
        QString query = word(1, 4);
        query.remove(u' ');
        const QString text = word(0, 10);
        const auto match = FuzzyMatch::match(query, text);
        if (match && !query.isEmpty()) {
            ASSERT_EQ(match->score, bestOfAllPlaces(query, text))
                << query.toStdString() << " in " << text.toStdString();
            ASSERT_EQ(match->score, worthOf(query, text, match->places));
        }
    }
}

TEST(FuzzyMatch, TakesLongTextsInItsStride)
{
    const QString text(1'000'000, u'a');
    EXPECT_TRUE(FuzzyMatch::match(u"aaaa", text));
    EXPECT_FALSE(FuzzyMatch::match(u"ab", text));
}

} // namespace

} // namespace quib::tests
