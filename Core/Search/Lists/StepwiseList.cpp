#include "StepwiseList.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <numeric>

namespace quib {

StepwiseList::StepwiseList(size_t count, size_t capacity)
    : m_stretchOf(capacity)
{
    std::vector<quint32> members(count);
    std::iota(members.begin(), members.end(), 0U);
    spread(members);
}

void StepwiseList::spread(const std::vector<quint32> &members)
{
    m_size = members.size();
    m_stretches.clear();
    m_stretches.reserve(m_size / kUsualLength + 1);
    for (size_t at = 0; at < m_size || m_stretches.empty(); at += kUsualLength) {
        const size_t limit = std::min(at + kUsualLength, m_size);
        auto &stretch = m_stretches.emplace_back();
        stretch.reserve(kUsualLength + kUsualLength / 8);
        stretch.assign(members.begin() + static_cast<ptrdiff_t>(at), members.begin() + static_cast<ptrdiff_t>(limit));
        for (const quint32 member : stretch) {
            m_stretchOf[member] = static_cast<quint32>(m_stretches.size() - 1);
        }
    }
}

size_t StepwiseList::indexOf(quint32 member) const
{
    const size_t stretch = m_stretchOf[member];
    size_t index = 0;
    for (size_t i = 0; i < stretch; ++i) {
        index += m_stretches[i].size();
    }
    const auto &members = m_stretches[stretch];
    const auto found = std::find(members.begin(), members.end(), member);
    QUIB_ASSERT(found != members.end());
    return index + static_cast<size_t>(found - members.begin());
}

void StepwiseList::remove(quint32 member)
{
    auto &members = m_stretches[m_stretchOf[member]];
    const auto found = std::find(members.begin(), members.end(), member);
    QUIB_ASSERT(found != members.end());
    members.erase(found);
    --m_size;
}

void StepwiseList::insert(size_t index, quint32 member)
{
    QUIB_ASSERT(index <= m_size);
    size_t stretch = 0;
    while (index > m_stretches[stretch].size()) {
        index -= m_stretches[stretch].size();
        ++stretch;
    }
    auto &members = m_stretches[stretch];
    members.insert(members.begin() + static_cast<ptrdiff_t>(index), member);
    m_stretchOf[member] = static_cast<quint32>(stretch);
    ++m_size;
    if (members.size() > kLongestLength) {
        std::vector<quint32> all;
        all.reserve(m_size);
        for (const auto &one : m_stretches) {
            all.insert(all.end(), one.begin(), one.end());
        }
        spread(all);
    }
}

} // namespace quib
