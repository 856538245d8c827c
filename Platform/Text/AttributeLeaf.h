#pragma once

#include "AttributeSet.h"

#include <Foundation/Assert.h>

#include <QtGlobal>

#include <atomic>
#include <utility>

namespace quib {

/// Runs that stand beside each other in a text. Their lengths lie apart from their attributes: most walks look at
/// lengths alone, and are bound by the memory that they touch. Counted by the texts that share it, and changed only
/// while it has one owner; sharing is for any thread.
class AttributeLeaf
{
public:
    static constexpr qsizetype kMostRuns = 128;

    explicit AttributeLeaf(qsizetype capacity = 0) { reserve(capacity); }
    AttributeLeaf(const AttributeLeaf &) = delete;
    AttributeLeaf &operator=(const AttributeLeaf &) = delete;

    static void retain(AttributeLeaf *leaf) { leaf->m_references.fetch_add(1, std::memory_order_relaxed); }
    static void release(AttributeLeaf *leaf) noexcept
    {
        if (leaf->m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete leaf;
        }
    }
    [[nodiscard]] bool isShared() const { return m_references.load(std::memory_order_acquire) > 1; }
    /// The same runs for one owner.
    [[nodiscard]] AttributeLeaf *copy() const;

    [[nodiscard]] qsizetype count() const { return m_count; }
    [[nodiscard]] qsizetype capacity() const { return m_capacity; }
    [[nodiscard]] const qint64 *lengths() const { return m_lengths; }
    [[nodiscard]] qint64 *lengths() { return m_lengths; }
    [[nodiscard]] const AttributeSet *sets() const { return m_sets; }
    [[nodiscard]] AttributeSet *sets() { return m_sets; }
    [[nodiscard]] qint64 lengthOf(qsizetype run) const
    {
        QUIB_ASSERT(run >= 0 && run < m_count);
        return m_lengths[run];
    }
    [[nodiscard]] const AttributeSet &attributesOf(qsizetype run) const
    {
        QUIB_ASSERT(run >= 0 && run < m_count);
        return m_sets[run];
    }
    /// At least the names of its runs.
    [[nodiscard]] AttributeNameMask names() const { return m_names; }
    void setNames(AttributeNameMask names) { m_names = names; }
    void addNames(AttributeNameMask names) { m_names |= names; }

    void prefetch() const
    {
        __builtin_prefetch(m_lengths);
        __builtin_prefetch(m_sets);
        __builtin_prefetch(reinterpret_cast<const char *>(m_sets) + 64);
        __builtin_prefetch(reinterpret_cast<const char *>(m_sets) + 128);
    }

    // Runs; their names are the caller's to add.

    void reserve(qsizetype capacity);
    /// Requires: capacity for it.
    void appendReserved(AttributeSet attributes, qint64 length)
    {
        QUIB_ASSERT(m_count < m_capacity);
        new (m_sets + m_count) AttributeSet(std::move(attributes));
        m_lengths[m_count] = length;
        ++m_count;
    }
    void append(AttributeSet attributes, qint64 length);
    void insert(qsizetype run, AttributeSet attributes, qint64 length);
    void erase(qsizetype first, qsizetype limit);
    /// Adds some runs of another leaf, which has what is left of them to forget.
    /// Requires: capacity for them.
    void appendMoved(AttributeLeaf &other, qsizetype first, qsizetype count);
    /// Cuts off the runs from one on, which become those of an empty leaf.
    void moveTail(qsizetype first, AttributeLeaf &to);
    /// How many runs have the attributes of the one before.
    [[nodiscard]] qsizetype equalNeighbours() const;
    /// Makes one run of equal neighbours.
    void joinEqual();
    void clear();
    /// Leaves it empty. Requires: every set was moved away.
    void forget()
    {
        m_count = 0;
        m_names = {};
    }

private:
    ~AttributeLeaf();

    std::atomic<int> m_references{1};
    quint16 m_count = 0;
    quint16 m_capacity = 0;
    /// Both in one block of memory, which begins with the lengths.
    qint64 *m_lengths = nullptr;
    AttributeSet *m_sets = nullptr;
    AttributeNameMask m_names;
};

} // namespace quib
