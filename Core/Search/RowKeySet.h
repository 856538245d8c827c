#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

namespace quib {

/// A set of rows by their keys, or all rows but those, asked far more often than made: a bit a key where the keys are
/// the small numbers that a store gives out, a sorted array otherwise. Immutable.
class RowKeySet
{
public:
    explicit RowKeySet(std::vector<qint64> keys);

    // Conditions on keys joined are sets of keys, so that however long a condition is, a row is asked about once.
    [[nodiscard]] RowKeySet inverted() const;
    [[nodiscard]] RowKeySet intersected(const RowKeySet &other) const;
    [[nodiscard]] RowKeySet united(const RowKeySet &other) const;

    [[nodiscard]] bool contains(qint64 key) const { return isNamed(key) != m_isInverted; }

private:
    static constexpr qint64 kBitsAWord = 64;
    /// What is made of the keys that two sets name, whether inverted or not.
    enum class Joint
    {
        Both,
        FirstOnly,
        Either,
    };
    [[nodiscard]] static RowKeySet joined(const RowKeySet &first, const RowKeySet &second, Joint joint);
    [[nodiscard]] bool isNamed(qint64 key) const
    {
        if (!m_sorted.empty()) {
            return std::binary_search(m_sorted.begin(), m_sorted.end(), key);
        }
        const auto word = static_cast<size_t>(key / kBitsAWord);
        return key >= 0 && word < m_bits.size() && (m_bits[word] >> (key % kBitsAWord) & 1U) != 0;
    }
    [[nodiscard]] std::vector<qint64> namedKeys() const;

    std::vector<quint64> m_bits;
    std::vector<qint64> m_sorted; // empty where there are bits
    bool m_isInverted = false;
};

} // namespace quib
