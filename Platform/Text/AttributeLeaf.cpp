#include "AttributeLeaf.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace quib {

namespace {

constexpr qsizetype kFirstCapacity = 4;

/// Sets move by their bytes; what is left of them owns nothing and is not destroyed.
void moveSets(AttributeSet *to, const AttributeSet *from, qsizetype count)
{
    std::memmove(static_cast<void *>(to), static_cast<const void *>(from),
                 static_cast<size_t>(count) * sizeof(AttributeSet));
}

void moveLengths(qint64 *to, const qint64 *from, qsizetype count)
{
    std::memmove(to, from, static_cast<size_t>(count) * sizeof(qint64));
}

} // namespace

AttributeLeaf::~AttributeLeaf()
{
    std::destroy_n(m_sets, m_count);
    ::operator delete(m_lengths);
}

AttributeLeaf *AttributeLeaf::copy() const
{
    auto *leaf = new AttributeLeaf(m_capacity);
    std::uninitialized_copy_n(m_sets, m_count, leaf->m_sets);
    std::copy_n(m_lengths, m_count, leaf->m_lengths);
    leaf->m_count = m_count;
    leaf->m_names = m_names;
    return leaf;
}

void AttributeLeaf::reserve(qsizetype capacity)
{
    static_assert(alignof(AttributeSet) <= sizeof(qint64));
    QUIB_ASSERT(capacity <= kMostRuns);
    if (capacity <= m_capacity) {
        return;
    }
    const auto size = static_cast<size_t>(capacity);
    auto *const lengths = static_cast<qint64 *>(::operator new(size *(sizeof(qint64) + sizeof(AttributeSet))));
    auto *const sets = reinterpret_cast<AttributeSet *>(lengths + capacity);
    if (m_count > 0) {
        moveLengths(lengths, m_lengths, m_count);
        moveSets(sets, m_sets, m_count);
    }
    ::operator delete(m_lengths);
    m_lengths = lengths;
    m_sets = sets;
    m_capacity = static_cast<quint16>(capacity);
}

void AttributeLeaf::append(AttributeSet attributes, qint64 length)
{
    insert(m_count, std::move(attributes), length);
}

void AttributeLeaf::insert(qsizetype run, AttributeSet attributes, qint64 length)
{
    if (m_count == m_capacity) {
        reserve(std::clamp<qsizetype>(2 * m_capacity, kFirstCapacity, kMostRuns));
    }
    QUIB_ASSERT(run <= m_count && m_count < m_capacity);
    moveLengths(m_lengths + run + 1, m_lengths + run, m_count - run);
    moveSets(m_sets + run + 1, m_sets + run, m_count - run);
    new (m_sets + run) AttributeSet(std::move(attributes));
    m_lengths[run] = length;
    ++m_count;
}

void AttributeLeaf::erase(qsizetype first, qsizetype limit)
{
    QUIB_ASSERT(first <= limit && limit <= m_count);
    std::destroy(m_sets + first, m_sets + limit);
    moveLengths(m_lengths + first, m_lengths + limit, m_count - limit);
    moveSets(m_sets + first, m_sets + limit, m_count - limit);
    m_count = static_cast<quint16>(m_count - (limit - first));
}

void AttributeLeaf::appendMoved(AttributeLeaf &other, qsizetype first, qsizetype count)
{
    QUIB_ASSERT(first + count <= other.m_count && m_count + count <= m_capacity);
    moveLengths(m_lengths + m_count, other.m_lengths + first, count);
    moveSets(m_sets + m_count, other.m_sets + first, count);
    m_count = static_cast<quint16>(m_count + count);
}

void AttributeLeaf::moveTail(qsizetype first, AttributeLeaf &to)
{
    QUIB_ASSERT(to.m_count == 0);
    to.reserve(m_count - first);
    to.appendMoved(*this, first, m_count - first);
    m_count = static_cast<quint16>(first);
}

qsizetype AttributeLeaf::equalNeighbours() const
{
    qsizetype equal = 0;
    for (qsizetype run = 1; run < m_count; ++run) {
        equal += m_sets[run - 1] == m_sets[run] ? 1 : 0;
    }
    return equal;
}

void AttributeLeaf::joinEqual()
{
    qsizetype out = 0;
    for (qsizetype in = 1; in < m_count; ++in) {
        if (m_sets[out] == m_sets[in]) {
            m_lengths[out] += m_lengths[in];
        } else if (++out != in) {
            m_sets[out].swap(m_sets[in]);
            m_lengths[out] = m_lengths[in];
        }
    }
    erase(out + 1, m_count);
}

void AttributeLeaf::clear()
{
    std::destroy_n(m_sets, m_count);
    forget();
}

} // namespace quib
