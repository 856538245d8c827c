#include "RowKeySet.h"

#include <bit>
#include <iterator>

namespace quib {

namespace {

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
        m_sorted.erase(std::unique(m_sorted.begin(), m_sorted.end()), m_sorted.end());
        return;
    }
    m_bits.resize(static_cast<size_t>(*greatest / kBitsAWord) + 1);
    for (const qint64 key : keys) {
        m_bits[static_cast<size_t>(key / kBitsAWord)] |= quint64{1} << (key % kBitsAWord);
    }
}

std::vector<qint64> RowKeySet::namedKeys() const
{
    std::vector<qint64> keys = m_sorted;
    for (size_t i = 0; i < m_bits.size(); ++i) {
        for (quint64 word = m_bits[i]; word != 0; word &= word - 1) {
            keys.push_back(static_cast<qint64>(i) * kBitsAWord + std::countr_zero(word));
        }
    }
    return keys;
}

RowKeySet RowKeySet::joined(const RowKeySet &first, const RowKeySet &second, Joint joint)
{
    if (!first.m_sorted.empty() || !second.m_sorted.empty()) {
        const std::vector<qint64> a = first.namedKeys();
        const std::vector<qint64> b = second.namedKeys();
        std::vector<qint64> keys;
        if (joint == Joint::Both) {
            std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(keys));
        } else if (joint == Joint::FirstOnly) {
            std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(keys));
        } else {
            std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(keys));
        }
        return RowKeySet(std::move(keys));
    }
    RowKeySet set({});
    set.m_bits = first.m_bits;
    if (joint == Joint::Either) {
        set.m_bits.resize(std::max(first.m_bits.size(), second.m_bits.size()));
    }
    for (size_t i = 0; i < set.m_bits.size(); ++i) {
        const quint64 other = i < second.m_bits.size() ? second.m_bits[i] : 0;
        quint64 &word = set.m_bits[i];
        word = joint == Joint::Both ? word & other : joint == Joint::FirstOnly ? word & ~other : word | other;
    }
    return set;
}

RowKeySet RowKeySet::inverted() const
{
    RowKeySet set = *this;
    set.m_isInverted = !m_isInverted;
    return set;
}

RowKeySet RowKeySet::intersected(const RowKeySet &other) const
{
    if (m_isInverted && other.m_isInverted) {
        RowKeySet set = joined(*this, other, Joint::Either);
        set.m_isInverted = true;
        return set;
    }
    if (m_isInverted) {
        return joined(other, *this, Joint::FirstOnly);
    }
    return joined(*this, other, other.m_isInverted ? Joint::FirstOnly : Joint::Both);
}

RowKeySet RowKeySet::united(const RowKeySet &other) const
{
    return inverted().intersected(other.inverted()).inverted();
}

} // namespace quib
