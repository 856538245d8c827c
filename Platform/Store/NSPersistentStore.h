#pragma once

#include "NSFetchRequest.h"
#include "NSManagedObjectID.h"
#include "NSManagedObjectModel.h"
#include "RowSnapshot.h"

#include <Foundation/NSError.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quib {

/// One row as the store answers it.
struct StoredRow
{
    NSManagedObjectID objectID;
    RowSnapshotRef snapshot;
};

/// A change of one many-to-many relationship: pairs seen from the owning side. Applied as they stand: adding what is
/// there and removing what is gone are no errors, so two writers' changes join.
struct JoinChange
{
    const NSRelationshipDescription *relationship = nullptr; // the owning side
    NSManagedObjectID source;
    NSManagedObjectID target;
    bool isInsertion = false;
};

/// One save: everything or nothing. Rows name other new rows by temporary identities.
struct SaveRequest
{
    struct Insertion
    {
        /// A permanent identity reserved before is kept.
        NSManagedObjectID temporaryID;
        RowSnapshotRef row;
        /// A row that was there before comes back under its own identity.
        bool isReinsertion = false;
    };
    struct Update
    {
        NSManagedObjectID objectID;
        /// What the writer believes the row held: its version must still be the store's.
        qint64 expectedVersion = 0;
        RowSnapshotRef row;
        /// Slots to write; others keep what the store holds.
        std::vector<bool> changedSlots;
    };
    struct Deletion
    {
        NSManagedObjectID objectID;
        qint64 expectedVersion = 0;
        /// Delete whatever version the store holds; a row already gone is no error.
        bool isForced = false;
    };
    QList<Insertion> insertions;
    QList<Update> updates;
    QList<Deletion> deletions;
    QList<JoinChange> joinChanges;
};

/// A row that the store holds in another version than the writer believed, or no longer.
struct SaveConflict
{
    NSManagedObjectID objectID;
    /// Null when the row is gone. Slots that the update changes are present, lazy ones too.
    RowSnapshotRef storeRow;
};

/// Where a row is and in which version: what tells a changed row without reading it.
struct RowVersion
{
    NSManagedObjectID objectID;
    qint64 version = 0;
};

struct SaveResult
{
    enum class Outcome : quint8
    {
        Saved,
        Conflicts,
        Failed
    };
    Outcome outcome = Outcome::Failed;
    /// Permanent identities of the insertions.
    QHash<NSManagedObjectID, NSManagedObjectID> permanentIDs;
    /// Insertions that became a row which another writer had inserted with the same unique value: its identity, which
    /// permanentIDs names too. What it holds is read anew.
    QSet<NSManagedObjectID> adoptedIDs;
    /// The new version of every inserted and updated row.
    QHash<NSManagedObjectID, qint64> versions;
    /// Outcome Conflicts: nothing was written.
    QList<SaveConflict> conflicts;
    NSError error;
};

} // namespace quib

/// Where rows lie: an SQLite file or memory. Every call is complete in itself, may come from any thread and is
/// serialised inside. A failing call leaves the store as it was.
class NSPersistentStore
{
public:
    virtual ~NSPersistentStore() = default;

    [[nodiscard]] virtual const std::shared_ptr<const NSManagedObjectModel> &model() const = 0;
    /// A UUID made with the store; part of identities' URIs.
    [[nodiscard]] virtual QString identifier() const = 0;

    /// The rows that meet a request, in its order; ties by ascending key. Reads committed rows only.
    /// Errors: nullopt; also for a condition on keys that the entity lacks.
    [[nodiscard]] virtual std::optional<QList<quib::StoredRow>> fetch(const NSFetchRequest &request,
                                                                      NSError *error) = 0;
    /// The keys alone, with their concrete entities, in the request's order.
    [[nodiscard]] virtual std::optional<QList<NSManagedObjectID>> fetchIDs(const NSFetchRequest &request,
                                                                           NSError *error) = 0;
    [[nodiscard]] virtual std::optional<qint64> count(const NSFetchRequest &request, NSError *error) = 0;
    /// Every row of an entity and those below it, ascending by key.
    [[nodiscard]] virtual std::optional<QList<quib::RowVersion>> rowVersions(const QString &entityName,
                                                                             NSError *error) = 0;
    /// The named attributes of each row, in their order.
    [[nodiscard]] virtual std::optional<QList<QList<quib::Value>>>
    fetchDictionaries(const NSFetchRequest &request, const QStringList &attributes, NSError *error) = 0;

    /// The present row with every slot but lazy ones present, and its concrete entity; a null snapshot when there is
    /// no such row.
    [[nodiscard]] virtual std::optional<quib::StoredRow> row(const NSManagedObjectID &objectID, NSError *error) = 0;
    /// One lazy attribute of a row and the row's version at that moment.
    struct LazyValue
    {
        quib::Value value;
        qint64 version = 0;
        bool rowExists = false;
    };
    [[nodiscard]] virtual std::optional<LazyValue> lazyValue(const NSManagedObjectID &objectID, int slot,
                                                             NSError *error) = 0;
    /// The targets of a to-many relationship, ascending by key.
    [[nodiscard]] virtual std::optional<QList<NSManagedObjectID>>
    targets(const NSManagedObjectID &objectID, const NSRelationshipDescription *relationship, NSError *error) = 0;
    /// The same for many objects in few reads: one list an object; those without any may be left out.
    [[nodiscard]] virtual std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
    targetsForObjects(const QList<NSManagedObjectID> &objectIDs, const NSRelationshipDescription *relationship,
                      NSError *error) = 0;

    /// Writes a save as one durable transaction, or nothing.
    [[nodiscard]] virtual quib::SaveResult save(const quib::SaveRequest &request) = 0;
    /// Reserves permanent identities for rows that a later save inserts.
    [[nodiscard]] virtual std::optional<QHash<NSManagedObjectID, NSManagedObjectID>>
    reserveIdentities(const QList<NSManagedObjectID> &temporaryIDs, NSError *error) = 0;

    /// Streams one lazy attribute of all rows of an entity, in batches short enough that a writer in between is never
    /// refused. visit gives false to stop.
    using LazyVisitor =
        std::function<bool(const NSManagedObjectID &objectID, qint64 version, const quib::Value &value)>;
    [[nodiscard]] virtual bool enumerateLazyValues(const NSEntityDescription *entity, int slot,
                                                   const LazyVisitor &visit, NSError *error) = 0;
    /// Streams all rows of an entity and those below it, ascending by key, with these attributes present and no lazy
    /// one; in batches like those.
    using RowVisitor = std::function<bool(const quib::StoredRow &row)>;
    [[nodiscard]] virtual bool enumerateRows(const NSEntityDescription *entity, const QStringList &attributes,
                                             const RowVisitor &visit, NSError *error) = 0;
    /// A number that any committed write by anyone changes: cheap to ask, for telling that something changed outside.
    [[nodiscard]] virtual std::optional<qint64> changeCounter(NSError *error) = 0;
    /// What is wrong with the file itself, a line each; empty for a sound one.
    [[nodiscard]] virtual std::optional<QStringList> integrityProblems(NSError *error) = 0;
};
