#pragma once

#include "NSManagedObjectContext.h"
#include "NSPersistentStore.h"
#include "UnopenedPersistentStore.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <optional>

/// What an object holds beyond its row: its changes, and the to-many relationships that were looked at.
struct NSManagedObject::Pending
{
    /// A to-many relationship: what the store or the parent has, where that was read, and the changes made here.
    struct ToMany
    {
        std::optional<QList<NSManagedObjectID>> base;
        QSet<NSManagedObjectID> added;
        QSet<NSManagedObjectID> removed;

        [[nodiscard]] bool hasChanges() const { return !added.isEmpty() || !removed.isEmpty(); }
    };

    /// The row before the changes; null for an inserted object and while no slot was changed.
    quib::RowSnapshotRef base;
    /// Bit i: slot i was changed here.
    quint64 changedSlots = 0;
    /// By relationship index. A map: an object has few of them, and there may be 100,000 objects with one each, for
    /// which a hash would take 3 KB each.
    QMap<int, ToMany> toMany;

    [[nodiscard]] bool hasChanges() const
    {
        return changedSlots != 0 ||
               std::any_of(toMany.begin(), toMany.end(), [](const ToMany &state) { return state.hasChanges(); });
    }
};

/// The insides of objects, for the context's own files.
struct NSManagedObjectAccess
{
    enum Flag : quint32
    {
        Inserted = 1,
        Updated = 2,
        Deleted = 4,
        /// prepareForDeletion is running or has run.
        Deleting = 8,
    };
    using Pending = NSManagedObject::Pending;
    using ToMany = NSManagedObject::Pending::ToMany;

    [[nodiscard]] static bool has(const NSManagedObject &object, Flag flag) { return (object.m_flags & flag) != 0; }
    static void set(NSManagedObject &object, Flag flag, bool isOn)
    {
        object.m_flags = isOn ? object.m_flags | flag : object.m_flags & ~static_cast<quint32>(flag);
    }
    [[nodiscard]] static quib::RowSnapshotRef &row(NSManagedObject &object) { return object.m_row; }
    [[nodiscard]] static const quib::RowSnapshotRef &row(const NSManagedObject &object) { return object.m_row; }
    [[nodiscard]] static std::unique_ptr<Pending> &pending(NSManagedObject &object) { return object.m_pending; }
    [[nodiscard]] static const Pending *pendingIfAny(const NSManagedObject &object) { return object.m_pending.get(); }
    [[nodiscard]] static Pending &ensurePending(NSManagedObject &object);
    static void setIdentity(NSManagedObject &object, const NSManagedObjectID &objectID)
    {
        object.m_objectID = objectID;
    }
    [[nodiscard]] static quint32 &flags(NSManagedObject &object) { return object.m_flags; }
    static void bind(NSManagedObject &object, NSManagedObjectContext *context) { object.m_context = context; }
    [[nodiscard]] static const quib::RowSnapshot *rowWithSlot(const NSManagedObject &object, int slot)
    {
        return object.rowWithSlot(slot);
    }
    static void awakeFromInsert(NSManagedObject &object) { object.awakeFromInsert(); }
    static void prepareForDeletion(NSManagedObject &object) { object.prepareForDeletion(); }
    static void willSave(NSManagedObject &object) { object.willSave(); }
    static void didSave(NSManagedObject &object) { object.didSave(); }
    [[nodiscard]] static bool isDerivedKey(const NSManagedObject &object, const QString &key)
    {
        return object.isDerivedKey(key);
    }
    [[nodiscard]] static NSManagedObject *makePlain() { return new NSManagedObject; }
    [[nodiscard]] static NSManagedObjectContext::Private &context(const NSManagedObject &object);

    // NSManagedObject+Relationships.cpp: changes without upkeep of the other side.
    [[nodiscard]] static ToMany &toMany(NSManagedObject &object, int index);
    static void loadBase(NSManagedObject &object, int index);
    [[nodiscard]] static QList<NSManagedObjectID> targets(const NSManagedObject &object, int index);
    static void addTarget(NSManagedObject &object, int index, const NSManagedObjectID &target);
    static void removeTarget(NSManagedObject &object, int index, const NSManagedObjectID &target);
    static void setTargetSlot(NSManagedObject &object, const NSRelationshipDescription &relationship,
                              const NSManagedObjectID &target);
    static void setSlot(NSManagedObject &object, int slot, const quib::Value &value);
    /// Takes the object out of, or into, the other side of a relationship, where that side exists.
    static void changeOtherSide(NSManagedObject &object, const NSRelationshipDescription &relationship,
                                NSManagedObject &target, bool isJoining);
    /// Brings the other side of a to-one relationship in line with a target that the store gave: no change made here.
    static void moveStoredTarget(NSManagedObject &object, const NSRelationshipDescription &relationship,
                                 const NSManagedObjectID &from, const NSManagedObjectID &to);
};

struct NSManagedObjectContext::Private
{
    NSManagedObjectContext *self = nullptr;
    std::shared_ptr<quib::DispatchQueue> queue;
    std::shared_ptr<NSPersistentStoreCoordinator> coordinator;
    std::shared_ptr<NSManagedObjectContext> parent;
    NSMergePolicy mergePolicy = NSMergePolicy::Error;

    /// Every living object of the context, by identity; weak, an object takes itself out when it dies.
    QHash<NSManagedObjectID, NSManagedObject *> registered;
    /// Objects that hold a Pending, so that identities inside can be brought up to date; weak like registered.
    QSet<NSManagedObject *> withPending;
    NSManagedObjectSet inserted;
    NSManagedObjectSet updated;
    NSManagedObjectSet deleted;
    /// What objectsDidChange has not told yet.
    Changes untold;
    bool isTellingScheduled = false;
    /// Targets reached through the key-value interface, kept until the end of the turn: nobody else may hold them.
    mutable QList<quib::Ref<NSManagedObject>> keptAlive;

    /// One that refuses everything where none could be opened; never null.
    [[nodiscard]] NSPersistentStore *store() const
    {
        NSPersistentStore *opened = coordinator->persistentStore();
        return opened != nullptr ? opened : quib::unopenedPersistentStore();
    }
    void assertQueue() const;
    [[nodiscard]] bool hasChanges() const { return !inserted.isEmpty() || !updated.isEmpty() || !deleted.isEmpty(); }

    // NSManagedObjectContext.cpp
    [[nodiscard]] quib::Ref<NSManagedObject> makeObject(const NSManagedObjectID &objectID, quib::RowSnapshotRef row);
    /// The object of an identity whose concrete entity is known, made as a fault where it is not registered.
    [[nodiscard]] quib::Ref<NSManagedObject> object(const NSManagedObjectID &objectID);
    [[nodiscard]] quib::Ref<NSManagedObject> objectForRow(const quib::StoredRow &row);
    /// The living object of an identity, also where one of the two has its permanent key already; null when none is.
    [[nodiscard]] NSManagedObject *known(const NSManagedObjectID &objectID);
    /// Takes an object that dies out of the tables.
    void unregister(NSManagedObject &object);
    void kill(NSManagedObject &object);
    void deleteTargets(const NSManagedObject &object, const NSRelationshipDescription &relationship);
    /// Puts a row that was read anew under the object's own changes.
    void takeRow(NSManagedObject &object, quib::RowSnapshotRef row);
    void noteInserted(NSManagedObject &object);
    /// Puts an object in or out of the updated ones, by whether it has changes.
    void markUpdated(const quib::Ref<NSManagedObject> &object);
    void noteUpdated(NSManagedObject &object);
    void noteDeleted(NSManagedObject &object);
    void noteRefreshed(NSManagedObject &object);
    /// An object that observers may know is none any more.
    void noteGone(const quib::Ref<NSManagedObject> &object);
    void scheduleTelling();
    void rekey(const QHash<NSManagedObjectID, NSManagedObjectID> &permanentIDs);
    /// A child learns which of its temporary identities became permanent above.
    void adoptPermanentIDs();

    // NSManagedObjectContext+Fetching.cpp
    /// Whether the request orders by a key that the entity's class works out itself.
    [[nodiscard]] bool isOrderedByDerivedKey(const NSFetchRequest &request) const;
    /// The object's row with every slot but lazy ones, where it was changed here; null where it was not.
    [[nodiscard]] quib::RowSnapshotRef changedRow(NSManagedObject &object);
    void mergeInto(QList<quib::StoredRow> *rows, QList<quib::Ref<NSManagedObject>> joining,
                   const NSFetchRequest &request);
    /// The row as this context sees it: pending changes, else the parent's, else the store's.
    [[nodiscard]] std::optional<quib::StoredRow> currentRow(const NSManagedObjectID &objectID, NSError *error);
    [[nodiscard]] std::optional<NSPersistentStore::LazyValue> currentLazyValue(const NSManagedObjectID &objectID,
                                                                               int slot, NSError *error);
    [[nodiscard]] std::optional<QList<NSManagedObjectID>> currentTargets(const NSManagedObjectID &objectID, int index,
                                                                         NSError *error);
    [[nodiscard]] std::optional<QList<quib::StoredRow>> fetchRows(const NSFetchRequest &request, NSError *error);
    [[nodiscard]] NSManagedObjectSet candidates(const NSFetchRequest &request, const NSEntityDescription *entity);
    /// One object a row, registered ones where there are.
    [[nodiscard]] QList<quib::Ref<NSManagedObject>> objectsForRows(QList<quib::StoredRow> rows);
    void prefetch(const NSFetchRequest &request, const QList<quib::Ref<NSManagedObject>> &objects);

    // NSManagedObjectContext+Saving.cpp
    [[nodiscard]] bool runWillSave(NSError *error);
    [[nodiscard]] bool saveToStore(NSError *error);
    [[nodiscard]] bool saveToParent(NSError *error);
    [[nodiscard]] quib::SaveRequest makeSaveRequest() const;
    [[nodiscard]] bool settle(const quib::SaveConflict &conflict, QList<NSMergeLoss> *losses, NSError *error);
    void finishSave(const quib::SaveResult *result, const Changes &changes);

    // NSManagedObjectContext+RemoteChanges.cpp
    void takeRemoteInsertion(const NSManagedObjectID &objectID);
    void takeRemoteUpdate(const NSManagedObjectID &objectID);
    /// Whether somebody else changed a property that was changed here too. Errors: true where that cannot be read.
    [[nodiscard]] bool isContested(const NSManagedObject &object, const quib::RowSnapshotRef &stored);
    /// Makes the other sides of many-to-many relationships be read again where such a row may have joined them.
    void forgetInverses(const QList<NSManagedObjectID> &objectIDs);
    void takeRemoteDeletions(const QList<NSManagedObjectID> &objectIDs);

    // NSManagedObjectContext+Merging.cpp
    void takeFromChild(Private &child);
    [[nodiscard]] quib::Ref<NSManagedObject> targetForChild(const NSManagedObjectID &objectID);
    void takeInserted(Private &child, QList<quib::Ref<NSManagedObject>> *kept);
    void takeUpdated(Private &child, QList<quib::Ref<NSManagedObject>> *kept);
    void takeJoins(const Private &child);
    void takeDeleted(Private &child);
    /// All pending changes, to go back to when a save fails after conflicts were settled.
    struct Changed
    {
        struct Object
        {
            quib::Ref<NSManagedObject> object;
            quib::RowSnapshotRef row;
            quint32 flags = 0;
            std::optional<NSManagedObject::Pending> pending;
        };
        QList<Object> objects;
        NSManagedObjectSet inserted;
        NSManagedObjectSet updated;
        NSManagedObjectSet deleted;
        Changes untold;
    };
    [[nodiscard]] Changed changed() const;
    void restore(const Changed &changed);

    QSet<NSManagedObjectID> forcedDeletions;
    QSet<NSManagedObjectID> reinsertions;
};
