#include <Search/Lists/StepwiseList.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using quib::StepwiseList;

TEST(StepwiseListTests, TellsTheSamePlacesAsAPlainList)
{
    const quib::tests::TestSeed seed;
    auto random = seed.generator();
    const auto below = [&random](size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); };
    for (const size_t count : {size_t{0}, size_t{1}, size_t{511}, size_t{512}, size_t{513}, size_t{3000}}) {
        const size_t capacity = count + 4000;
        StepwiseList list(count, capacity);
        std::vector<quint32> plain(count);
        std::iota(plain.begin(), plain.end(), 0U);
        auto next = static_cast<quint32>(count);
        for (int step = 0; step < 6000; ++step) {
            const size_t choice = below(10);
            if (choice < 5 && next < capacity) {
                // Often in one place, which is where a stretch grows too long.
                const size_t at = below(2) == 0 ? std::min<size_t>(plain.size(), 7) : below(plain.size() + 1);
                list.insert(at, next);
                plain.insert(plain.begin() + static_cast<ptrdiff_t>(at), next++);
            } else if (choice < 8 && !plain.empty()) {
                const size_t from = below(plain.size());
                const quint32 member = plain[from];
                list.remove(member);
                plain.erase(plain.begin() + static_cast<ptrdiff_t>(from));
                const size_t at = below(plain.size() + 1);
                list.insert(at, member);
                plain.insert(plain.begin() + static_cast<ptrdiff_t>(at), member);
            } else if (!plain.empty()) {
                const size_t at = below(plain.size());
                list.remove(plain[at]);
                plain.erase(plain.begin() + static_cast<ptrdiff_t>(at));
            }
            ASSERT_EQ(list.size(), plain.size());
            if (!plain.empty()) {
                const size_t at = below(plain.size());
                ASSERT_EQ(list.indexOf(plain[at]), at);
            }
        }
        for (size_t at = 0; at < plain.size(); ++at) {
            ASSERT_EQ(list.indexOf(plain[at]), at);
        }
    }
}

} // namespace
