#include "RowKeySet.h"

#include <algorithm>

namespace quib {

namespace {

constexpr qint64 kBitsAWord = 64;
/// Keys beyond stand in no bit set: it would be larger than what it answers for.
constexpr qint64 kLargestBit = 64 * 1024 * 1024;

} // namespace

RowKeySet::RowKeySet(std::vector<qint64> keys)
{
    const auto [least, greatest] = std::minmax_element(keys.begin(), keys.end());
    if (keys.empty()) {
        return;
    }
    if (*least < 0 || *greatest > kLargestBit) {
        m_sorted = std::move(keys);
        std::sort(m_sorted.begin(), m_sorted.end());
        return;
    }
    m_bits.resize(static_cast<size_t>(*greatest / kBitsAWord) + 1);
    for (const qint64 key : keys) {
        m_bits[static_cast<size_t>(key / kBitsAWord)] |= quint64{1} << (key % kBitsAWord);
    }
}

bool RowKeySet::contains(qint64 key) const
{
    if (!m_sorted.empty()) {
        return std::binary_search(m_sorted.begin(), m_sorted.end(), key);
    }
    const auto word = static_cast<size_t>(key / kBitsAWord);
    return key >= 0 && word < m_bits.size() && (m_bits[word] >> (key % kBitsAWord) & 1U) != 0;
}

} // namespace quib
