#include <Search/FoldedTextArena.h>
#include <Support/TestSeed.h>
#include <Text/Folding.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>

using namespace Qt::StringLiterals;
using quib::FoldedTextArena;

namespace {

std::vector<qint64> scanned(const std::map<qint64, QString> &texts, const QString &term)
{
    const QByteArray needle = quib::foldedUtf8(term);
    std::vector<qint64> keys;
    for (const auto &[key, text] : texts) {
        if (quib::foldedUtf8(text).contains(needle)) {
            keys.push_back(key);
        }
    }
    return keys;
}

} // namespace

TEST(FoldedTextArena, FindsWhatComparingEveryTextFinds)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](int bound) {
        return static_cast<int>(generator() % static_cast<unsigned>(bound));
    };
    const QStringList pieces{u"a"_s,
                             u"A"_s,
                             u"à"_s,
                             u"e\u0301"_s,
                             u"é"_s,
                             u"É"_s,
                             u"ß"_s,
                             u"ss"_s,
                             u" "_s,
                             u"\n"_s,
                             u"x"_s,
                             u"Привет"_s,
                             u"日本"_s,
                             u"😀"_s,
                             QString(QChar(0xD83D)),
                             QString(QChar(0xDE00)),
                             u"\u0301"_s,
                             QString(QChar(0)),
                             u"the"_s,
                             u"@"_s,
                             u"7"_s,
                             u"\\"_s,
                             u"z"_s};
    const auto text = [&](int most) {
        QString made;
        for (int i = random(most); i >= 0; --i) {
            made += pieces[random(static_cast<int>(pieces.size()))];
        }
        return made;
    };
    FoldedTextArena arena;
    std::map<qint64, QString> texts;
    for (int step = 0; step < 4000 && !testing::Test::HasFailure(); ++step) {
        const qint64 key = 1 + random(60);
        switch (random(4)) {
        case 0:
            arena.remove(key);
            texts.erase(key);
            break;
        case 1:
        case 2:
            // Some longer than what is worth passing over behind a match.
            texts[key] = text(random(20) != 0 ? 12 : random(4) != 0 ? 300 : 40'000);
            arena.setText(key, step, texts[key]);
            EXPECT_EQ(arena.versionOfKey(key), step);
            break;
        default: {
            // A few units, or a stretch of some text, longer than what is compared at once.
            QString term = text(3);
            if (const auto some = texts.lower_bound(1 + random(60)); random(3) == 0 && some != texts.end()) {
                term = some->second.mid(random(static_cast<int>(some->second.size())), 1 + random(80));
            }
            const auto found = arena.keysOfTextsContaining(term);
            EXPECT_EQ(found, scanned(texts, term));
            const QString other = text(2);
            std::vector<qint64> both;
            const auto second = scanned(texts, other);
            std::set_intersection(found.begin(), found.end(), second.begin(), second.end(), std::back_inserter(both));
            EXPECT_EQ(arena.keysOfTextsContainingAll({other, term}), both);
            // As it is typed, from any end, and with another term beside it: what was found before narrows it down.
            for (qsizetype length = 1; length <= std::min<qsizetype>(term.size(), random(5)); ++length) {
                EXPECT_EQ(arena.keysOfTextsContaining(term.first(length)), scanned(texts, term.first(length)));
                EXPECT_EQ(arena.keysOfTextsContaining(term.last(length)), scanned(texts, term.last(length)));
            }
            EXPECT_EQ(arena.keysOfTextsContainingAll({term, other}), both);
            const QString longer = term + text(2);
            if (quib::foldedUtf8(longer).startsWith(quib::foldedUtf8(term))) {
                EXPECT_EQ(arena.keysOfTextsContaining(longer, found), scanned(texts, longer));
            }
        }
        }
    }
    EXPECT_EQ(arena.keysOfTextsContaining(u""_s), scanned(texts, u""_s));
    EXPECT_EQ(arena.count(), static_cast<qint64>(texts.size()));
}

// Enough to be gone through in pieces, with texts that reach over where one would end.
TEST(FoldedTextArena, FindsTheSameInPiecesOfALargeArena)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    FoldedTextArena arena;
    std::map<qint64, QString> texts;
    for (qint64 key = 1; key <= 200; ++key) {
        const qsizetype size = key % 90 == 0 ? 2'300'000 : static_cast<qsizetype>(generator() % 20'000);
        QString text(size, u'a');
        for (const QString &word : {u"one"_s, u"oneself"_s, u"two"_s}) {
            if (size > 20 && generator() % 3 == 0) {
                text.replace(static_cast<qsizetype>(generator() % static_cast<unsigned>(size - 10)), word.size(), word);
            }
        }
        texts[key] = text;
        arena.setText(key, 1, text);
    }
    const auto expectFound = [&] {
        for (const QString &term : {u"o"_s, u"on"_s, u"one"_s, u"ones"_s, u"tw"_s, u"a"_s, u"zz"_s, u"aone"_s}) {
            EXPECT_EQ(arena.keysOfTextsContaining(term), scanned(texts, term)) << term.toStdString();
        }
        // Where one term leaves few texts, and the other would be found in many more.
        arena.forgetFindings();
        for (const QString &other : {u"a"_s, u"on"_s, u"two"_s}) {
            for (const QString &term : {u"oneself"_s, u"selfa"_s, u"oneselfaaaa"_s}) {
                const auto first = scanned(texts, other);
                const auto second = scanned(texts, term);
                std::vector<qint64> both;
                std::set_intersection(first.begin(), first.end(), second.begin(), second.end(),
                                      std::back_inserter(both));
                EXPECT_EQ(arena.keysOfTextsContainingAll({other, term}), both)
                    << other.toStdString() << ' ' << term.toStdString();
                arena.forgetFindings();
            }
        }
    };
    expectFound();
    // Changed texts are not answered from before.
    for (qint64 key = 7; key <= 200; key += 31) {
        texts[key] = key % 2 == 0 ? u"one"_s : u"two"_s;
        arena.setText(key, 2, texts[key]);
    }
    arena.remove(40);
    texts.erase(40);
    expectFound();
}

TEST(FoldedTextArena, ReplacedTextsDoNotPileUp)
{
    FoldedTextArena arena;
    const QString text(100'000, u'y');
    for (int i = 0; i < 200; ++i) {
        arena.setText(1 + i % 3, i, text);
    }
    EXPECT_LT(arena.sizeInBytes(), 4'000'000);
    EXPECT_EQ(arena.keysOfTextsContaining(u"YYY"_s), (std::vector<qint64>{1, 2, 3}));
    EXPECT_TRUE(arena.keysOfTextsContaining(QString(text % u'y')).empty());
}
