#pragma once

#include "NSFetchRequest.h"
#include "NSManagedObject.h"
#include "NSPersistentStoreCoordinator.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/NSError.h>
#include <Foundation/NotificationCenter.h>

#include <QList>
#include <QSet>

#include <memory>

enum class NSMergePolicy : quint8
{
    /// A conflict fails the save.
    Error,
    /// Per property: changed on both sides, the store's value wins.
    MergeByPropertyStoreTrump,
    /// Per property: changed on both sides, the context's value wins.
    MergeByPropertyObjectTrump,
};

enum class NSManagedObjectContextConcurrencyType : quint8
{
    MainQueue,
    PrivateQueue
};

using NSManagedObjectSet = QSet<quib::Ref<NSManagedObject>>;

/// A property whose value in this context lost against another writer's in a save.
struct NSMergeLoss
{
    quib::Ref<NSManagedObject> object;
    QString key;
    quib::Value lostValue;
};

/// A set of objects being worked on: unique by identity, with its pending changes, confined to one queue. A root
/// context saves to the store; a child saves to its parent only. Every public function but those that say otherwise
/// asserts the queue. Fetches see the context's own pending changes.
///
/// Invariants: (1) an object is in at most one of the inserted, updated and deleted sets; (2) inverses of relationships
/// agree after every operation; (3) a failed save leaves all pending changes as they were.
class NSManagedObjectContext : public std::enable_shared_from_this<NSManagedObjectContext>
{
public:
    [[nodiscard]] static std::shared_ptr<NSManagedObjectContext>
    contextWithCoordinator(NSManagedObjectContextConcurrencyType type,
                           const std::shared_ptr<NSPersistentStoreCoordinator> &coordinator);
    [[nodiscard]] static std::shared_ptr<NSManagedObjectContext>
    contextWithParent(NSManagedObjectContextConcurrencyType type,
                      const std::shared_ptr<NSManagedObjectContext> &parentContext);
    ~NSManagedObjectContext();

    // Queue: any for these.
    void performBlock(std::function<void()> block);
    void performBlockAndWait(const std::function<void()> &block);
    [[nodiscard]] const std::shared_ptr<quib::DispatchQueue> &queue() const;
    [[nodiscard]] const std::shared_ptr<NSPersistentStoreCoordinator> &persistentStoreCoordinator() const;
    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &parentContext() const;
    [[nodiscard]] const NSManagedObjectModel &managedObjectModel() const;

    [[nodiscard]] NSMergePolicy mergePolicy() const;
    void setMergePolicy(NSMergePolicy policy);

    // Objects
    /// Requires: a concrete entity of the model.
    quib::Ref<NSManagedObject> insertNewObjectForEntityForName(const QString &entityName);
    /// Runs prepareForDeletion, the delete rules, and takes the object out of every relationship. An object that a
    /// relationship with the rule deny still needs is not deleted.
    void deleteObject(NSManagedObject *object);
    /// The object, possibly a fault whose row does not exist; null for a null identity.
    [[nodiscard]] quib::Ref<NSManagedObject> objectWithID(const NSManagedObjectID &objectID);
    /// The object when its row exists (here, in the parent or in the store), else null.
    [[nodiscard]] quib::Ref<NSManagedObject> existingObjectWithID(const NSManagedObjectID &objectID);
    /// The object when it is held or changed in this context now, else null.
    [[nodiscard]] quib::Ref<NSManagedObject> registeredObjectForID(const NSManagedObjectID &objectID) const;
    /// mergeChanges false: drops the object's pending changes and makes it a fault. True: reads the row anew and lays
    /// the pending changes over it.
    void refreshObject(NSManagedObject *object, bool mergeChanges);
    /// Every object as refreshObject would, for those without changes when mergeChanges is true.
    void refreshAllObjects(bool mergeChanges);
    /// Forgets all objects and pending changes; held references become dead objects.
    void reset();
    /// Drops all pending changes.
    void rollback();
    [[nodiscard]] bool obtainPermanentIDsForObjects(const QList<quib::Ref<NSManagedObject>> &objects, NSError *error);

    // Fetching
    /// Errors: nullopt, with the store's error; the context is unchanged.
    [[nodiscard]] std::optional<QList<quib::Ref<NSManagedObject>>> executeFetchRequest(const NSFetchRequest &request,
                                                                                       NSError *error = nullptr);
    [[nodiscard]] std::optional<qint64> countForFetchRequest(const NSFetchRequest &request, NSError *error = nullptr);
    /// Dictionary results: the named attributes of each row, in their order; committed rows only.
    [[nodiscard]] std::optional<QList<QList<quib::Value>>> executeDictionaryFetchRequest(const NSFetchRequest &request,
                                                                                         const QStringList &attributes,
                                                                                         NSError *error = nullptr);
    /// The same objects typed. T::entityName() must be the request's entity or one above.
    template <typename T>
    [[nodiscard]] std::optional<QList<quib::Ref<T>>> fetch(const NSFetchRequest &request, NSError *error = nullptr)
    {
        auto objects = executeFetchRequest(request, error);
        if (!objects) {
            return std::nullopt;
        }
        QList<quib::Ref<T>> typed;
        typed.reserve(objects->size());
        for (auto &object : *objects) {
            typed.append(std::move(object).template moveTo<T>());
        }
        return typed;
    }

    // Saving
    [[nodiscard]] bool hasChanges() const;
    [[nodiscard]] NSManagedObjectSet insertedObjects() const;
    [[nodiscard]] NSManagedObjectSet updatedObjects() const;
    [[nodiscard]] NSManagedObjectSet deletedObjects() const;
    /// A root context: one durable transaction in the store. A child: into its parent, on the parent's queue, waiting.
    /// Conflicts are settled by the merge policy; what this context's values lost is told by mergeLosses.
    /// Errors: false; all changes stay pending and nothing was written.
    [[nodiscard]] bool save(NSError *error = nullptr);

    // Notifications. Queue: the context's.
    /// Before a save with changes; observers may insert, change and delete, which goes into the same save.
    quib::ObserverList<NSManagedObjectContext &> willSave;
    struct Changes
    {
        NSManagedObjectSet inserted;
        NSManagedObjectSet updated;
        NSManagedObjectSet deleted;
        /// Rows taken anew from outside, without a change made here.
        NSManagedObjectSet refreshed;
    };
    /// After a save that succeeded, with what was written.
    quib::ObserverList<NSManagedObjectContext &, const Changes &> didSave;
    /// After changes in memory: once at the end of an event-loop turn or before a save or fetch, coalesced.
    quib::ObserverList<NSManagedObjectContext &, const Changes &> objectsDidChange;
    /// Tells the pending in-memory changes to objectsDidChange now.
    void processPendingChanges();
    /// After a save in which this context's values lost.
    quib::ObserverList<NSManagedObjectContext &, const QList<NSMergeLoss> &> mergeLosses;

    /// True when nobody else wrote since the row of the object was read; for telling stale objects.
    [[nodiscard]] qint64 rowVersion(const NSManagedObject &object) const;

    /// Takes in what another process or coordinator wrote: refreshes the updated, forgets the deleted, tells observers.
    /// Identities without a row are passed over. Changes made here stay; an object with changes that contradict what
    /// was written stays as it is until its save, which settles them by the merge policy and tells what is lost.
    static void mergeChangesFromRemoteContextSave(const QList<NSManagedObjectID> &inserted,
                                                  const QList<NSManagedObjectID> &updated,
                                                  const QList<NSManagedObjectID> &deleted,
                                                  const QList<std::shared_ptr<NSManagedObjectContext>> &intoContexts);

private:
    friend class NSManagedObject;
    friend struct NSManagedObjectAccess;
    struct Private;
    NSManagedObjectContext();
    std::unique_ptr<Private> m_d;
};
