#include "StepwiseList.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <numeric>

namespace quib {

StepwiseList::StepwiseList(size_t count, size_t capacity)
    : m_size(count)
    , m_lengths(std::max<size_t>((count + kUsualLength - 1) / kUsualLength, 1), kUsualLength)
    , m_members(m_lengths.size())
    , m_capacity(capacity)
{
    m_lengths.back() = static_cast<quint32>(count - (m_lengths.size() - 1) * kUsualLength);
}

size_t StepwiseList::stretchOf(quint32 member) const
{
    return m_isUncut ? m_moved.value(member, static_cast<quint32>(member / kUsualLength)) : m_stretchOf[member];
}

std::vector<quint32> &StepwiseList::ensureMembers(size_t stretch)
{
    auto &members = m_members[stretch];
    if (members.empty() && m_isUncut && m_lengths[stretch] > 0) {
        members.resize(m_lengths[stretch]);
        std::iota(members.begin(), members.end(), static_cast<quint32>(stretch * kUsualLength));
    }
    return members;
}

void StepwiseList::spread(const std::vector<quint32> &members)
{
    m_isUncut = false;
    m_moved.clear();
    m_stretchOf.resize(m_capacity);
    m_lengths.clear();
    m_members.clear();
    for (size_t at = 0; at < members.size(); at += kUsualLength) {
        const size_t limit = std::min(at + kUsualLength, members.size());
        auto &stretch = m_members.emplace_back(members.begin() + static_cast<ptrdiff_t>(at),
                                               members.begin() + static_cast<ptrdiff_t>(limit));
        m_lengths.push_back(static_cast<quint32>(stretch.size()));
        for (const quint32 member : stretch) {
            m_stretchOf[member] = static_cast<quint32>(m_members.size() - 1);
        }
    }
}

size_t StepwiseList::indexOf(quint32 member) const
{
    const size_t stretch = stretchOf(member);
    const size_t index =
        std::accumulate(m_lengths.begin(), m_lengths.begin() + static_cast<ptrdiff_t>(stretch), size_t{0});
    const auto &members = m_members[stretch];
    if (members.empty()) {
        return index + member - stretch * kUsualLength;
    }
    const auto found = std::find(members.begin(), members.end(), member);
    QUIB_ASSERT(found != members.end());
    return index + static_cast<size_t>(found - members.begin());
}

void StepwiseList::remove(quint32 member)
{
    const size_t stretch = stretchOf(member);
    auto &members = ensureMembers(stretch);
    const auto found = std::find(members.begin(), members.end(), member);
    QUIB_ASSERT(found != members.end());
    members.erase(found);
    --m_lengths[stretch];
    --m_size;
}

void StepwiseList::insert(size_t index, quint32 member)
{
    QUIB_ASSERT(index <= m_size);
    size_t stretch = 0;
    while (index > m_lengths[stretch]) {
        index -= m_lengths[stretch];
        ++stretch;
    }
    auto &members = ensureMembers(stretch);
    members.insert(members.begin() + static_cast<ptrdiff_t>(index), member);
    if (m_isUncut) {
        m_moved.insert(member, static_cast<quint32>(stretch));
    } else {
        m_stretchOf[member] = static_cast<quint32>(stretch);
    }
    ++m_lengths[stretch];
    ++m_size;
    if (members.size() > kLongestLength) {
        std::vector<quint32> all;
        all.reserve(m_size);
        for (size_t i = 0; i < m_members.size(); ++i) {
            const auto &one = ensureMembers(i);
            all.insert(all.end(), one.begin(), one.end());
        }
        spread(all);
    }
}

} // namespace quib
