#include "ListChange.h"

#include "SortKeys.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>

namespace quib {
namespace {

constexpr size_t kNowhere = std::numeric_limits<size_t>::max();

/// The places of a few objects in a list of many, found in one pass over the list: a filter that stays in the
/// processor's nearest memory tells, for eight objects between two branches, that none is looked for.
class PlaceFinder
{
public:
    PlaceFinder(std::span<NSManagedObject *const> list, std::span<NSManagedObject *const> wanted)
        : m_wanted(wanted)
        , m_places(wanted.size(), kNowhere)
    {
        if (wanted.empty()) {
            return;
        }
        if (wanted.size() == 1) {
            m_places[0] = indexOfObject(list, wanted[0]).value_or(kNowhere);
            return;
        }
        m_shift = 64 - static_cast<int>(std::bit_width(std::max<size_t>(wanted.size() * 8, 64)));
        m_table.assign(size_t{1} << (64 - m_shift), 0);
        m_mask = m_table.size() - 1;
        for (size_t i = 0; i < wanted.size(); ++i) {
            size_t slot = hash(wanted[i]);
            while (m_table[slot] != 0) {
                slot = (slot + 1) & m_mask;
            }
            m_table[slot] = static_cast<quint32>(i + 1);
        }
        m_filterShift = 64 - std::min(static_cast<int>(std::bit_width(wanted.size() * 64)), 15);
        m_filter.assign(size_t{1} << (64 - m_filterShift), 0);
        for (const NSManagedObject *object : wanted) {
            m_filter[spread(object) >> m_filterShift] = 1;
        }
        constexpr size_t kStretch = 8;
        m_left = wanted.size();
        size_t at = 0;
        for (; at + kStretch <= list.size() && m_left > 0; at += kStretch) {
            unsigned any = 0;
            for (size_t i = 0; i < kStretch; ++i) {
                any |= m_filter[spread(list[at + i]) >> m_filterShift];
            }
            for (size_t i = 0; any != 0 && i < kStretch; ++i) {
                look(list[at + i], at + i);
            }
        }
        for (; at < list.size() && m_left > 0; ++at) {
            look(list[at], at);
        }
    }
    /// kNowhere for an object that the list does not hold. index: of the object among those wanted.
    [[nodiscard]] size_t place(size_t index) const { return m_places[index]; }

private:
    [[nodiscard]] static quint64 spread(const NSManagedObject *object)
    {
        return static_cast<quint64>(reinterpret_cast<quintptr>(object)) * 0x9E3779B97F4A7C15U;
    }
    [[nodiscard]] size_t hash(const NSManagedObject *object) const
    {
        return static_cast<size_t>(spread(object) >> m_shift);
    }
    void look(const NSManagedObject *object, size_t place)
    {
        for (size_t slot = hash(object); m_table[slot] != 0; slot = (slot + 1) & m_mask) {
            const size_t i = m_table[slot] - 1;
            if (m_wanted[i] == object) {
                m_places[i] = place;
                --m_left;
                return;
            }
        }
    }

    std::span<NSManagedObject *const> m_wanted;
    std::vector<size_t> m_places;
    std::vector<quint32> m_table; // index among the wanted, plus one; 0: free
    std::vector<quint8> m_filter; // 1 where some of the wanted may be
    size_t m_left = 0;            // not found yet
    size_t m_mask = 0;
    int m_shift = 0;
    int m_filterShift = 0;
};

/// An object that is to stand in the list afterwards.
struct Joining
{
    NSManagedObject *object = nullptr;
    /// What decides between equal keys: the old index, and for those that come in what follows the last one.
    size_t rank = 0;
    SortKeys::Row keys;
};

struct Span
{
    size_t start = 0;
    size_t limit = 0;
};

/// For each of some ordered objects, how many of the ranks stand before it. isBehind: whether the object stands behind
/// what has a rank.
template <typename IsBehind>
void searchPlaces(const std::vector<Joining> &joining, Span objects, Span ranks, const IsBehind &isBehind,
                  std::vector<size_t> *found)
{
    while (objects.start < objects.limit) {
        const size_t middle = objects.start + (objects.limit - objects.start) / 2;
        Span within = ranks;
        // Most changes lead to the front, where what was changed lately stands: whatever lies far behind is not even
        // looked at. In strides, so that a place at the end costs a few comparisons more at most.
        for (size_t stride = 1; within.start + stride < within.limit; stride *= 16) {
            const size_t rank = within.start + stride - 1;
            if (!isBehind(joining[middle], rank)) {
                within.limit = rank;
                break;
            }
            within.start = rank + 1;
        }
        while (within.start < within.limit) {
            const size_t rank = within.start + (within.limit - within.start) / 2;
            if (isBehind(joining[middle], rank)) {
                within.start = rank + 1;
            } else {
                within.limit = rank;
            }
        }
        (*found)[middle] = within.start;
        searchPlaces(joining, {objects.start, middle}, {ranks.start, within.start}, isBehind, found);
        objects.start = middle + 1;
        ranks.start = within.start;
    }
}

} // namespace

ChangedObjects ChangedObjects::from(const NSManagedObjectContext::Changes &changes)
{
    const auto isOlder = [](const NSManagedObject *a, const NSManagedObject *b) {
        const qint64 left = a->objectID().key();
        const qint64 right = b->objectID().key();
        // As fetches order what is equal: rows by key, then those that have no row yet, oldest first.
        return (left > 0) != (right > 0) ? left > 0 : std::abs(left) < std::abs(right);
    };
    const auto append = [&isOlder](std::vector<NSManagedObject *> &out, const NSManagedObjectSet &objects) {
        for (const Ref<NSManagedObject> &object : objects) {
            out.push_back(object.get());
        }
        std::sort(out.begin(), out.end(), isOlder);
    };
    ChangedObjects changed;
    append(changed.deleted, changes.deleted);
    append(changed.inserted, changes.inserted);
    changed.updated.reserve(static_cast<size_t>(changes.updated.size() + changes.refreshed.size()));
    for (const Ref<NSManagedObject> &object : changes.refreshed) {
        if (!changes.updated.contains(object)) {
            changed.updated.push_back(object.get());
        }
    }
    append(changed.updated, changes.updated);
    // One change an object: what is gone is neither new nor updated, what is new is not updated.
    std::erase_if(changed.inserted,
                  [&](NSManagedObject *object) { return changes.deleted.contains(Ref<NSManagedObject>(object)); });
    std::erase_if(changed.updated, [&](NSManagedObject *object) {
        const Ref<NSManagedObject> reference(object);
        return changes.deleted.contains(reference) || changes.inserted.contains(reference);
    });
    return changed;
}

bool isConformToFetchRequest(const NSManagedObject &object, const NSFetchRequest &request,
                             const NSEntityDescription *entity)
{
    const bool isOfEntity =
        object.entity() == entity || (request.includesSubentities && object.entity()->isKindOfEntity(entity));
    return isOfEntity && (!request.predicate || request.predicate->evaluateWithObject(object));
}

size_t ListChange::oldIndexOfUnchanged(size_t rank) const
{
    // removed[i] - i unchanged ones stand before the i-th of the removed.
    size_t low = 0;
    size_t high = removed.size();
    while (low < high) {
        const size_t middle = low + (high - low) / 2;
        if (removed[middle] - middle <= rank) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return rank + low;
}

size_t ListChange::unchangedBefore(size_t newIndex) const
{
    const auto behind = std::lower_bound(placed.begin(), placed.end(), newIndex,
                                         [](const ObjectList::Placed &one, size_t index) { return one.index < index; });
    return newIndex - static_cast<size_t>(behind - placed.begin());
}

ListChange ListChange::make(std::span<NSManagedObject *const> list, const ChangedObjects &changed,
                            const NSFetchRequest &request, const NSEntityDescription *entity)
{
    // 1. Only objects of the request's entity can be in the list, now or before.
    std::vector<NSManagedObject *> named;
    const auto takeOfEntity = [&named, entity](const std::vector<NSManagedObject *> &objects) {
        std::copy_if(objects.begin(), objects.end(), std::back_inserter(named),
                     [entity](const NSManagedObject *object) { return object->entity()->isKindOfEntity(entity); });
        return named.size();
    };
    const size_t deletedLimit = takeOfEntity(changed.deleted);
    takeOfEntity(changed.inserted);
    takeOfEntity(changed.updated);

    // 2. What is out, what is in, and what stays. An inserted object that the list has already counts as updated: the
    //    fetch that filled the list may have seen a row before its insertion was announced.
    ListChange change;
    change.oldSize = list.size();
    const PlaceFinder places(list, named);
    const SortKeys sortKeys(request.sortDescriptors, entity);
    std::vector<Joining> joining;
    size_t nextRank = list.size();
    for (size_t i = 0; i < named.size(); ++i) {
        NSManagedObject *object = named[i];
        const size_t place = places.place(i);
        const bool isIn = i >= deletedLimit && isConformToFetchRequest(*object, request, entity);
        if (place != kNowhere) {
            change.removed.push_back(place);
            if (!isIn) {
                change.deleted.push_back({Ref<NSManagedObject>(object), place});
            }
        }
        if (isIn) {
            joining.push_back({object, place != kNowhere ? place : nextRank++, sortKeys.row(*object)});
        }
    }
    std::sort(change.removed.begin(), change.removed.end());
    std::sort(change.deleted.begin(), change.deleted.end(),
              [](const Deleted &a, const Deleted &b) { return a.index < b.index; });
    std::stable_sort(change.deleted.begin(), change.deleted.end(), [&request](const Deleted &a, const Deleted &b) {
        return NSSortDescriptor::compare(request.sortDescriptors, *a.object, *b.object) < 0;
    });
    std::sort(joining.begin(), joining.end(), [&sortKeys](const Joining &a, const Joining &b) {
        const int order = sortKeys.compare(a.keys, b.keys);
        return order != 0 ? order < 0 : a.rank < b.rank;
    });

    // 3. The place of each among those that the change does not name: of the middle one first, which leaves the others
    //    less to search.
    std::vector<size_t> found(joining.size());
    const auto isBehind = [&](const Joining &one, size_t rank) {
        const size_t index = change.oldIndexOfUnchanged(rank);
        const int order = sortKeys.compare(one.keys, *list[index]);
        return order != 0 ? order > 0 : index < one.rank;
    };
    searchPlaces(joining, {0, joining.size()}, {0, list.size() - change.removed.size()}, isBehind, &found);
    for (size_t i = 0; i < joining.size(); ++i) {
        const Joining &one = joining[i];
        const size_t newIndex = found[i] + i;
        change.placed.push_back({one.object, newIndex});
        if (one.rank < list.size()) {
            change.updated.push_back({Ref<NSManagedObject>(one.object), one.rank, newIndex});
        } else {
            change.inserted.push_back({Ref<NSManagedObject>(one.object), newIndex});
        }
    }
    return change;
}

} // namespace quib
