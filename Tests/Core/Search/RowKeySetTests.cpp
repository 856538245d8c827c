#include <Search/RowKeySet.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <set>

using quib::RowKeySet;

// Whatever is made of sets of small keys, of large ones and of both holds what a plain set of them holds.
TEST(RowKeySet, JoinsAsPlainSetsDo)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](int bound) {
        return static_cast<qint64>(generator() % static_cast<unsigned>(bound));
    };
    constexpr qint64 kLarge = qint64{1} << 40;
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
        std::vector<qint64> all; // what is asked about
        for (qint64 key = 0; key < 300; ++key) {
            all.push_back(key);
            all.push_back(kLarge + key);
        }
        const auto anySet = [&] {
            const bool isLarge = random(4) == 0;
            std::vector<qint64> keys;
            for (qint64 n = random(200); n > 0; --n) {
                keys.push_back(random(300) + (isLarge && random(2) == 0 ? kLarge : 0));
            }
            return keys;
        };
        const auto first = anySet();
        std::set<qint64> model(first.begin(), first.end());
        RowKeySet set(first);
        for (int step = 0; step < 5; ++step) {
            const auto second = anySet();
            const std::set<qint64> other(second.begin(), second.end());
            const bool isInverted = random(2) == 0;
            const RowKeySet joining = isInverted ? RowKeySet(second).inverted() : RowKeySet(second);
            const bool isUnion = random(2) == 0;
            set = isUnion ? set.united(joining) : set.intersected(joining);
            std::set<qint64> next;
            for (const qint64 key : all) {
                const bool isIn = model.contains(key);
                const bool isInOther = other.contains(key) != isInverted;
                if (isUnion ? isIn || isInOther : isIn && isInOther) {
                    next.insert(key);
                }
            }
            model = next;
            for (const qint64 key : all) {
                ASSERT_EQ(set.contains(key), model.contains(key)) << key;
            }
        }
    }
    EXPECT_FALSE(RowKeySet({}).contains(0));
    EXPECT_FALSE(RowKeySet({1}).contains(-1));
    EXPECT_TRUE(RowKeySet({}).inverted().contains(7));
}
