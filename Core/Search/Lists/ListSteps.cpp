#include "ListSteps.h"

#include "StepwiseList.h"

#include <Foundation/NSRange.h>

#include <algorithm>
#include <optional>

namespace quib {
namespace {

qint64 toIndex(size_t index)
{
    return static_cast<qint64>(index);
}

/// Follows the table through the reports. Members of the stepwise list are old indexes; objects that come in follow.
class Stepper
{
public:
    Stepper(const ListChange &change, const std::function<void(const ListStep &step)> &visit)
        : m_change(change)
        , m_visit(visit)
        , m_table(change.oldSize, change.oldSize + change.inserted.size())
    {
    }

    void stepDeletions()
    {
        for (const ListChange::Deleted &one : m_change.deleted) {
            const auto member = static_cast<quint32>(one.index);
            const size_t at = m_table.indexOf(member);
            m_table.remove(member);
            m_visit({one.object.get(), toIndex(one.index), toIndex(at), MRTChangeType::Delete, MRTChangeType::Delete,
                     NSNotFound, NSNotFound});
        }
    }

    void stepInsertions()
    {
        const size_t unchangedCount = m_change.oldSize - m_change.removed.size();
        auto member = static_cast<quint32>(m_change.oldSize);
        size_t lowest = 0; // behind the insertion before
        for (const ListChange::Inserted &one : m_change.inserted) {
            // The new index, where the table can take it: objects that are still to move may stand in front, and then
            // the place is the one nearest to it among the neighbours that stay.
            const size_t rank = m_change.unchangedBefore(one.newIndex);
            const size_t low = rank > 0 ? std::max(lowest, indexOfUnchanged(rank - 1) + 1) : lowest;
            const size_t high = rank < unchangedCount ? indexOfUnchanged(rank) : m_table.size();
            const size_t at = std::clamp(one.newIndex, low, high);
            m_table.insert(at, member++);
            lowest = at + 1;
            m_visit({one.object.get(), NSNotFound, NSNotFound, MRTChangeType::Insert, MRTChangeType::Insert,
                     toIndex(one.newIndex), toIndex(at)});
        }
    }

    void stepUpdates()
    {
        std::optional<size_t> lastNewIndex;
        size_t lastTarget = 0;
        auto inserted = m_change.inserted.begin();
        for (const ListChange::Updated &one : m_change.updated) {
            const auto member = static_cast<quint32>(one.index);
            const size_t at = m_table.indexOf(member);
            // 1. Right behind the object that stands before it in the list after; a run of updates needs no look-up.
            size_t target = 0;
            while (inserted != m_change.inserted.end() && inserted->newIndex + 1 < one.newIndex) {
                ++inserted;
            }
            if (one.newIndex == 0) {
                target = 0;
            } else if (lastNewIndex && *lastNewIndex + 1 == one.newIndex) {
                target = lastTarget + 1;
            } else if (inserted != m_change.inserted.end() && inserted->newIndex + 1 == one.newIndex) {
                target = m_table.indexOf(memberOf(inserted)) + 1;
            } else {
                target = indexOfUnchanged(m_change.unchangedBefore(one.newIndex) - 1) + 1;
            }
            // 2. Taking the object out moves what stands behind it, in a run as well.
            if (target > at) {
                --target;
            }
            lastTarget = target;
            lastNewIndex = one.newIndex;
            if (target != at) {
                m_table.remove(member);
                m_table.insert(target, member);
            }
            m_visit({one.object.get(), toIndex(one.index), toIndex(at),
                     one.index == one.newIndex ? MRTChangeType::Update : MRTChangeType::Move,
                     at == target ? MRTChangeType::Update : MRTChangeType::Move, toIndex(one.newIndex),
                     toIndex(target)});
        }
    }

private:
    [[nodiscard]] size_t indexOfUnchanged(size_t rank) const
    {
        return m_table.indexOf(static_cast<quint32>(m_change.oldIndexOfUnchanged(rank)));
    }
    [[nodiscard]] quint32 memberOf(std::vector<ListChange::Inserted>::const_iterator inserted) const
    {
        return static_cast<quint32>(m_change.oldSize + static_cast<size_t>(inserted - m_change.inserted.begin()));
    }

    const ListChange &m_change;
    const std::function<void(const ListStep &step)> &m_visit;
    StepwiseList m_table;
};

} // namespace

void forEachStep(const ListChange &change, const std::function<void(const ListStep &step)> &visit)
{
    if (change.deleted.size() + change.inserted.size() + change.updated.size() == 1) {
        // OPTIMIZATION: the list is the table, and nothing else moved before.
        for (const ListChange::Deleted &one : change.deleted) {
            visit({one.object.get(), toIndex(one.index), toIndex(one.index), MRTChangeType::Delete,
                   MRTChangeType::Delete, NSNotFound, NSNotFound});
        }
        for (const ListChange::Inserted &one : change.inserted) {
            visit({one.object.get(), NSNotFound, NSNotFound, MRTChangeType::Insert, MRTChangeType::Insert,
                   toIndex(one.newIndex), toIndex(one.newIndex)});
        }
        for (const ListChange::Updated &one : change.updated) {
            const auto type = one.index == one.newIndex ? MRTChangeType::Update : MRTChangeType::Move;
            visit({one.object.get(), toIndex(one.index), toIndex(one.index), type, type, toIndex(one.newIndex),
                   toIndex(one.newIndex)});
        }
        return;
    }
    Stepper stepper(change, visit);
    stepper.stepDeletions();
    stepper.stepInsertions();
    stepper.stepUpdates();
}

} // namespace quib
