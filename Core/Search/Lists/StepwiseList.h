#pragma once

#include <QHash>
#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace quib {

/// A list of numbers that is changed step by step while the places of its members are asked for, at a cost that grows
/// with the square root of its length: stretches of a few hundred members, and for each member the stretch it lies in.
/// Making one costs next to nothing, however long. What lists report to tables is counted on it. A value.
class StepwiseList
{
public:
    /// Holds 0, 1, ... count - 1 at first, and up to capacity members, numbers below capacity, later.
    StepwiseList(size_t count, size_t capacity);

    [[nodiscard]] size_t size() const { return m_size; }
    /// Requires: the member is in the list.
    [[nodiscard]] size_t indexOf(quint32 member) const;
    /// Requires: the member is in the list.
    void remove(quint32 member);
    /// Requires: the member is not in the list; index <= size().
    void insert(size_t index, quint32 member);

private:
    static constexpr size_t kUsualLength = 512;
    static constexpr size_t kLongestLength = 2 * kUsualLength;

    [[nodiscard]] size_t stretchOf(quint32 member) const;
    [[nodiscard]] std::vector<quint32> &ensureMembers(size_t stretch);
    void spread(const std::vector<quint32> &members);

    size_t m_size = 0;
    std::vector<quint32> m_lengths; // by stretch
    /// By stretch; empty for one that holds what it held at first.
    std::vector<std::vector<quint32>> m_members;
    /// True until the stretches are cut anew: a member that was not moved lies in the stretch of its number.
    bool m_isUncut = true;
    QHash<quint32, quint32> m_moved;  // uncut: the stretches of the others
    std::vector<quint32> m_stretchOf; // cut: by member
    size_t m_capacity;
};

} // namespace quib
