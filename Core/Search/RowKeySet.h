#pragma once

#include <QtGlobal>

#include <vector>

namespace quib {

/// A set of rows by their keys, asked far more often than made: a bit a key where the keys are the small numbers that a
/// store gives out, a sorted array otherwise. Immutable.
class RowKeySet
{
public:
    explicit RowKeySet(std::vector<qint64> keys);

    [[nodiscard]] bool contains(qint64 key) const;

private:
    std::vector<quint64> m_bits;
    std::vector<qint64> m_sorted; // empty where there are bits
};

} // namespace quib
