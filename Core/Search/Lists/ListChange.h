#pragma once

#include "ObjectList.h"

#include <Store/NSFetchRequest.h>
#include <Store/NSManagedObjectContext.h>

#include <span>
#include <vector>

namespace quib {

/// The objects that one notification names, each once, in an order that does not hang on where they lie in memory:
/// that of their making. Borrowed from the notification.
struct ChangedObjects
{
    std::vector<NSManagedObject *> deleted;
    std::vector<NSManagedObject *> inserted;
    /// Updated and refreshed ones.
    std::vector<NSManagedObject *> updated;

    [[nodiscard]] static ChangedObjects from(const NSManagedObjectContext::Changes &changes);
};

/// What one notification does to a list. A value; holds references to the objects it names.
///
/// Invariants: (1) applying it to the list it was made for gives what copying that list, removing and appending, and
/// sorting stably gives; (2) an object is in one of the three lists at most.
struct ListChange
{
    struct Deleted
    {
        Ref<NSManagedObject> object;
        size_t index = 0; // in the list before
    };
    struct Inserted
    {
        Ref<NSManagedObject> object;
        size_t newIndex = 0; // in the list after
    };
    struct Updated
    {
        Ref<NSManagedObject> object;
        size_t index = 0;
        size_t newIndex = 0;
    };
    std::vector<Deleted> deleted;   // in sort order, equals as they stood
    std::vector<Inserted> inserted; // in the order of the list after
    std::vector<Updated> updated;   // in the order of the list after
    size_t oldSize = 0;
    /// Old indexes of what was deleted or updated, ascending.
    std::vector<size_t> removed;
    /// New indexes of what was inserted or updated, ascending.
    std::vector<ObjectList::Placed> placed;

    [[nodiscard]] bool isEmpty() const { return deleted.empty() && inserted.empty() && updated.empty(); }
    void applyTo(ObjectList &list) const { list.rearrange(removed, placed); }
    /// The old index of the object of this rank among those that the change does not name.
    [[nodiscard]] size_t oldIndexOfUnchanged(size_t rank) const;
    /// How many objects that the change does not name stand before a new index.
    [[nodiscard]] size_t unchangedBefore(size_t newIndex) const;

    /// Evaluates changed objects against a list that is in the request's order.
    /// Requires: entity is the request's.
    [[nodiscard]] static ListChange make(std::span<NSManagedObject *const> list, const ChangedObjects &changed,
                                         const NSFetchRequest &request, const NSEntityDescription *entity);
};

/// Whether an object is of the request's entity or one below, and meets its condition.
[[nodiscard]] bool isConformToFetchRequest(const NSManagedObject &object, const NSFetchRequest &request,
                                           const NSEntityDescription *entity);

} // namespace quib
