#include "CopyAndSortModel.h"

#include <Foundation/NSRange.h>

#include <algorithm>

namespace quib::tests {
namespace {

using Objects = CopyAndSortModel::Objects;

bool holds(const Objects &objects, const NSManagedObject *object)
{
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

qint64 indexIn(const Objects &objects, const NSManagedObject *object)
{
    return std::find(objects.begin(), objects.end(), object) - objects.begin();
}

/// In the order of their making, which a set does not keep.
Objects inOrder(const NSManagedObjectSet &set)
{
    Objects objects;
    for (const auto &object : set) {
        objects.push_back(object.get());
    }
    std::sort(objects.begin(), objects.end(), [](const NSManagedObject *a, const NSManagedObject *b) {
        const auto rank = [](const NSManagedObject *object) {
            const qint64 key = object->objectID().key();
            return std::pair(key < 0, key < 0 ? -key : key);
        };
        return rank(a) < rank(b);
    });
    return objects;
}

} // namespace

void CopyAndSortModel::sort(Objects *objects) const
{
    std::stable_sort(objects->begin(), objects->end(), [this](const NSManagedObject *a, const NSManagedObject *b) {
        return NSSortDescriptor::compare(m_request.sortDescriptors, *a, *b) < 0;
    });
}

QList<ListStep> CopyAndSortModel::take(const NSManagedObjectContext::Changes &changes)
{
    Objects copy = m_objects;
    Objects deleted;
    Objects inserted;
    Objects updated;
    const auto isIn = [this](const NSManagedObject *object) {
        return isConformToFetchRequest(*object, m_request, m_entity);
    };
    for (NSManagedObject *object : inOrder(changes.deleted)) {
        if (holds(m_objects, object)) {
            std::erase(copy, object);
            deleted.push_back(object);
        }
    }
    for (NSManagedObject *object : inOrder(changes.inserted)) {
        if (isIn(object)) {
            copy.push_back(object);
            inserted.push_back(object);
        }
    }
    for (NSManagedObject *object : inOrder(changes.updated + changes.refreshed)) {
        const bool wasIn = holds(m_objects, object);
        if (isIn(object)) {
            if (!wasIn) {
                copy.push_back(object);
            }
            (wasIn ? updated : inserted).push_back(object);
        } else if (wasIn) {
            std::erase(copy, object);
            deleted.push_back(object);
        }
    }
    if (deleted.empty() && inserted.empty() && updated.empty()) {
        return {};
    }
    const Objects before = std::exchange(m_objects, copy);
    sort(&m_objects);
    // Equal keys: as the list has them, the old one what left it, the new one the others.
    const auto as = [](const Objects &order) {
        return [&order](const NSManagedObject *a, const NSManagedObject *b) {
            return indexIn(order, a) < indexIn(order, b);
        };
    };
    std::sort(deleted.begin(), deleted.end(), as(before));
    std::sort(inserted.begin(), inserted.end(), as(m_objects));
    std::sort(updated.begin(), updated.end(), as(m_objects));
    sort(&deleted);
    sort(&inserted);
    sort(&updated);
    return steps(before, deleted, inserted, updated);
}

QList<ListStep> CopyAndSortModel::steps(const Objects &before, const Objects &deleted, const Objects &inserted,
                                        const Objects &updated) const
{
    QList<ListStep> steps;
    Objects table = before;
    for (NSManagedObject *object : deleted) {
        steps.append({object, indexIn(before, object), indexIn(table, object), MRTChangeType::Delete,
                      MRTChangeType::Delete, NSNotFound, NSNotFound});
        std::erase(table, object);
    }
    Objects pending = updated;
    for (NSManagedObject *object : inserted) {
        // The new index, or the nearest place to it that keeps the order of what does not move.
        const qint64 newIndex = indexIn(m_objects, object);
        qint64 low = 0;
        auto high = static_cast<qint64>(table.size());
        for (qint64 i = 0; i < static_cast<qint64>(table.size()); ++i) {
            NSManagedObject *other = table[static_cast<size_t>(i)];
            if (holds(pending, other)) {
                continue;
            }
            if (indexIn(m_objects, other) < newIndex) {
                low = i + 1;
            } else {
                high = i;
                break;
            }
        }
        const qint64 target = std::clamp(newIndex, low, high);
        steps.append({object, NSNotFound, NSNotFound, MRTChangeType::Insert, MRTChangeType::Insert, newIndex, target});
        table.insert(table.begin() + target, object);
    }
    qint64 lastNewIndex = -1;
    qint64 lastTarget = -1;
    for (NSManagedObject *object : updated) {
        const qint64 index = indexIn(before, object);
        const qint64 newIndex = indexIn(m_objects, object);
        const qint64 at = indexIn(table, object);
        qint64 target = newIndex;
        if (lastNewIndex != -1 || newIndex != 0) {
            target = lastNewIndex == newIndex - 1 ? lastTarget + 1
                                                  : indexIn(table, m_objects[static_cast<size_t>(newIndex - 1)]) + 1;
            target -= target > at ? 1 : 0;
        }
        lastTarget = target;
        lastNewIndex = newIndex;
        steps.append({object, index, at, index == newIndex ? MRTChangeType::Update : MRTChangeType::Move,
                      at == target ? MRTChangeType::Update : MRTChangeType::Move, newIndex, target});
        std::erase(table, object);
        table.insert(table.begin() + target, object);
    }
    return steps;
}

} // namespace quib::tests
