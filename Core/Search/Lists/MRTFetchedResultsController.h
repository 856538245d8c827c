#pragma once

#include "MRTFetchedResultsControllerDelegate.h"
#include "ObjectList.h"

#include <Foundation/NSError.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectContext.h>

#include <QList>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace quib {
struct ListChange;
}

/// The result of one query, kept up to date in memory: follows the context's changes, evaluates the changed objects
/// against the query without a fetch, and tells its delegate just what moved. A second filter and order can be laid
/// over the result. A change of some objects costs binary searches and one move of memory, and gives the very array
/// and the very reports that copying and sorting the whole list would. Owned by whoever shows the list; lives on its
/// context's queue.
///
/// Objects with equal keys keep their order; those that come in stand behind their equals, in the order of their
/// making.
class MRTFetchedResultsController
{
public:
    MRTFetchedResultsController(std::shared_ptr<NSManagedObjectContext> managedObjectContext,
                                std::optional<NSFetchRequest> fetchRequest);
    ~MRTFetchedResultsController();
    MRTFetchedResultsController &operator=(const MRTFetchedResultsController &) = delete;
    /// A controller of its own with the same delegate, query, results, filter and order.
    [[nodiscard]] std::unique_ptr<MRTFetchedResultsController> copy() const;

    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &managedObjectContext() const { return m_context; }
    [[nodiscard]] const std::optional<NSFetchRequest> &fetchRequest() const { return m_fetchRequest; }
    /// Held weakly: it is taken out, by giving null, before it dies.
    [[nodiscard]] MRTFetchedResultsControllerDelegate *delegate() const { return m_delegate; }
    void setDelegate(MRTFetchedResultsControllerDelegate *delegate);

    /// Runs the query and follows the context from now on. Tells the delegate nothing.
    /// Errors: false, and nothing done, without a query. A query that fails gives an empty list that follows the
    /// context all the same, and the error.
    bool performFetch(NSError *error = nullptr);

    // The second view. Setters tell the delegate nothing; the caller reloads.

    [[nodiscard]] const NSPredicate::Ref &filterPredicate() const { return m_filterPredicate; }
    void setFilterPredicate(const NSPredicate::Ref &predicate);
    [[nodiscard]] const QList<NSSortDescriptor> &sortDescriptors() const { return m_sortDescriptors; }
    void setSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors);
    /// Answers the filter for a whole list at once, where an index knows more than each object tells: the objects that
    /// meet the predicate, in their order, or nullopt where the predicate has to be asked one by one.
    using BulkFilter = std::function<std::optional<std::vector<NSManagedObject *>>(
        std::span<NSManagedObject *const> objects, const NSPredicate::Ref &predicate)>;
    void setBulkFilter(BulkFilter bulkFilter) { m_bulkFilter = std::move(bulkFilter); }

    // What the list shows: the second view where there is one, else the result of the query.

    /// Valid until the list changes.
    [[nodiscard]] std::span<NSManagedObject *const> arrangedObjects() const { return shown().objects(); }
    /// The result of the query, whatever is laid over it. Valid until it changes.
    [[nodiscard]] std::span<NSManagedObject *const> fetchedObjects() const { return m_fetchedObjects.objects(); }
    [[nodiscard]] qint64 count() const { return static_cast<qint64>(shown().size()); }
    /// Requires: 0 <= index < count().
    [[nodiscard]] quib::Ref<NSManagedObject> objectAtIndex(qint64 index) const;
    /// The same typed; T must be the class of the query's entity or one above.
    template <typename T> [[nodiscard]] quib::Ref<T> objectAtIndex(qint64 index) const
    {
        return objectAtIndex(index).template moveTo<T>();
    }
    /// Requires: every index is one of the list.
    [[nodiscard]] QList<quib::Ref<NSManagedObject>> objectsAtIndexes(const QList<qint64> &indexes) const;
    /// By identity; NSNotFound for an object that is not in the list.
    [[nodiscard]] qint64 indexOfObject(const NSManagedObject *object) const;

private:
    MRTFetchedResultsController(const MRTFetchedResultsController &other);

    [[nodiscard]] const quib::ObjectList &shown() const
    {
        return m_arrangedObjects ? *m_arrangedObjects : m_fetchedObjects;
    }
    void updateArrangedObjects();
    void setupMocObserver();
    void observe();
    void managedObjectContextObjectsDidChange(const NSManagedObjectContext::Changes &changes);
    void react(const NSManagedObjectContext::Changes &changes);
    void tell(const quib::ListChange &change);
    void notifyChanges(const quib::ListChange &change);
    void notifyProgressively(const quib::ListChange &change);

    std::shared_ptr<NSManagedObjectContext> m_context;
    std::optional<NSFetchRequest> m_fetchRequest;
    quib::ObjectList m_fetchedObjects;
    NSPredicate::Ref m_filterPredicate;
    QList<NSSortDescriptor> m_sortDescriptors;
    std::optional<quib::ObjectList> m_arrangedObjects;
    /// Never executed: what an object must meet to be in m_arrangedObjects, and their order.
    std::optional<NSFetchRequest> m_arrangedObjectInMemoryFetchRequest;
    BulkFilter m_bulkFilter;
    MRTFetchedResultsControllerDelegate *m_delegate = nullptr;
    MRTFetchedResultsControllerDelegateHas m_delegateHas;
    quib::ObservationToken m_observer;
    bool m_isObserving = false;
    /// Count how often the query was run and the second view made, so that no report is about a list that is gone.
    quint64 m_fetch = 0;
    quint64 m_arrangement = 0;
    /// Changes that arrived while the delegate was being told of others.
    QList<NSManagedObjectContext::Changes> m_waiting;
    bool m_isTelling = false;
    /// Dies with the controller, which a delegate may let go in the middle of a report.
    std::shared_ptr<char> m_life = std::make_shared<char>();
};
