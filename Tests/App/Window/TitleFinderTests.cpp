#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Window/TitleFinder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

QStringList identifiers(const std::vector<TitleFinder::Found> &found)
{
    QStringList all;
    for (const auto &each : found) {
        all.append(each.identifier);
    }
    return all;
}

/// Every title matched for itself, then all sorted.
QStringList byMatchingAll(const std::vector<TitleFinder::Title> &titles, const QString &query, size_t limit)
{
    std::vector<std::pair<int, QString>> found;
    for (const auto &title : titles) {
        if (const auto match = FuzzyMatch::match(query, title.title)) {
            found.emplace_back(query.trimmed().isEmpty() ? 0 : -match->score, title.identifier);
        }
    }
    std::ranges::stable_sort(found, {}, [](const auto &each) { return each.first; });
    QStringList all;
    for (const auto &each : found) {
        all.append(each.second);
    }
    return all.first(std::min<qsizetype>(all.size(), qsizetype(limit)));
}

TEST(TitleFinder, FindsTheBestWhateverWasLookedForBefore)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto below = [&random](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    const auto word = [&below](int longest) {
        QString made;
        for (int length = below(longest + 1); length > 0; --length) {
            made += u"abcABC -É1\u0345\u0399"_s[below(12)];
        }
        return made;
    };
    for (int round = 0; round < 60; ++round) {
        std::vector<TitleFinder::Title> titles;
        for (int i = 0; i < 200; ++i) {
            titles.push_back({QString::number(i), word(12)});
        }
        TitleFinder finder(titles);
        QString query;
        for (int key = 0; key < 40; ++key) {
            // Typed on, taken back, and begun anew.
            const int kind = below(6);
            query = kind == 0   ? word(3)
                    : kind == 1 ? query.chopped(std::min<qsizetype>(1, query.size()))
                                : query + word(1);
            const size_t limit = static_cast<size_t>(below(30));
            ASSERT_EQ(identifiers(finder.find(query, limit)), byMatchingAll(titles, query, limit))
                << query.toStdString();
        }
    }
}

TEST(TitleFinder, TellsWhereTheLettersAre)
{
    TitleFinder finder({{u"1"_s, u"Reading List"_s}});
    const auto found = finder.find(u"rl"_s, 10);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].places, (QList<int>{0, 8}));
    EXPECT_TRUE(finder.find(u"rx"_s, 10).empty());
    EXPECT_EQ(finder.find(u""_s, 10).size(), 1U);
    EXPECT_TRUE(TitleFinder().find(u"a"_s, 10).empty());
}

} // namespace

} // namespace quib::tests
