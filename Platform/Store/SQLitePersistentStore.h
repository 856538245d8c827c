#pragma once

#include "NSPersistentStore.h"
#include "NSPersistentStoreCoordinator.h"

#include <memory>
#include <mutex>

namespace quib {

class SQLiteDatabase;
class StoreObserver;
class SQLiteStatement;
enum class TieOrder : quint8;

/// The store that lies in one SQLite file, journal mode DELETE, synchronous EXTRA: what save() told as saved survives a
/// power loss. Every call is one short transaction; nothing stays open between calls, so that other processes are never
/// kept out for longer than a call. Any thread; calls are serialised.
class SQLitePersistentStore final : public NSPersistentStore
{
public:
    /// Opens the file, or makes it with the model's tables.
    /// Errors: null; see NSPersistentStoreCoordinator::addPersistentStoreWithType.
    [[nodiscard]] static std::unique_ptr<SQLitePersistentStore> open(const QString &path,
                                                                     std::shared_ptr<const NSManagedObjectModel> model,
                                                                     const NSPersistentStoreOptions &options,
                                                                     NSError *error);
    /// Errors: nullopt for a file that is missing, unreadable, or no store.
    [[nodiscard]] static std::optional<NSStoreMetadata> readMetadata(const QString &path, NSError *error);
    ~SQLitePersistentStore() override;

    /// Who hears of saves and damage from now on; held weakly.
    void setObserver(const std::weak_ptr<StoreObserver> &observer);

    [[nodiscard]] const std::shared_ptr<const NSManagedObjectModel> &model() const override { return m_model; }
    [[nodiscard]] QString identifier() const override { return m_metadata.storeUUID; }

    // SQLitePersistentStore+Fetching.cpp
    [[nodiscard]] std::optional<QList<StoredRow>> fetch(const NSFetchRequest &asked, NSError *error) override;
    [[nodiscard]] std::optional<QList<NSManagedObjectID>> fetchIDs(const NSFetchRequest &request,
                                                                   NSError *error) override;
    [[nodiscard]] std::optional<QList<RowVersion>> rowVersions(const QString &entityName, NSError *error) override;
    [[nodiscard]] std::optional<qint64> count(const NSFetchRequest &request, NSError *error) override;
    [[nodiscard]] std::optional<QList<QList<Value>>>
    fetchDictionaries(const NSFetchRequest &request, const QStringList &attributes, NSError *error) override;
    [[nodiscard]] std::optional<StoredRow> row(const NSManagedObjectID &objectID, NSError *error) override;
    [[nodiscard]] std::optional<LazyValue> lazyValue(const NSManagedObjectID &objectID, int slot,
                                                     NSError *error) override;
    [[nodiscard]] std::optional<QList<NSManagedObjectID>>
    targets(const NSManagedObjectID &objectID, const NSRelationshipDescription *relationship, NSError *error) override;
    [[nodiscard]] std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
    targetsForObjects(const QList<NSManagedObjectID> &objectIDs, const NSRelationshipDescription *relationship,
                      NSError *error) override;
    [[nodiscard]] bool enumerateLazyValues(const NSEntityDescription *entity, int slot, const LazyVisitor &visit,
                                           NSError *error) override;
    [[nodiscard]] bool enumerateRows(const NSEntityDescription *entity, const QStringList &attributes,
                                     const RowVisitor &visit, NSError *error) override;
    [[nodiscard]] std::optional<qint64> changeCounter(NSError *error) override;
    [[nodiscard]] std::optional<QStringList> integrityProblems(NSError *error) override;

    // SQLitePersistentStore+Saving.cpp
    [[nodiscard]] SaveResult save(const SaveRequest &request) override;
    [[nodiscard]] std::optional<QHash<NSManagedObjectID, NSManagedObjectID>>
    reserveIdentities(const QList<NSManagedObjectID> &temporaryIDs, NSError *error) override;

private:
    struct ColumnPlan;
    class Saver;
    explicit SQLitePersistentStore(std::shared_ptr<const NSManagedObjectModel> model);

    [[nodiscard]] SaveResult saveLocked(const SaveRequest &request);
    [[nodiscard]] bool createSchema(NSError *error);
    void createMissingIndexes();
    [[nodiscard]] bool checkMetadata(NSError *error);
    [[nodiscard]] const NSEntityDescription *entityWithCode(qint64 code, const NSEntityDescription *fallback) const;
    /// The request without sort keys that have no value on any row: they sort nothing, but keep an index from giving
    /// the order of the others.
    [[nodiscard]] NSFetchRequest withoutIdleOrder(NSFetchRequest request, const NSEntityDescription *entity) const;
    /// targetsForObjects by one read of the relationship from the first of the keys to the last.
    [[nodiscard]] std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
    scannedTargets(const QList<NSManagedObjectID> &objectIDs, const NSRelationshipDescription *relationship,
                   NSError *error);
    [[nodiscard]] const NSEntityDescription *requestedEntity(const NSFetchRequest &request, NSError *error) const;
    /// SELECT columns FROM ... WHERE ... ORDER BY ... LIMIT of a request, its values bound. Without ties: in no order.
    [[nodiscard]] SQLiteStatement select(const NSFetchRequest &request, const NSEntityDescription *entity,
                                         const QByteArray &columns, std::optional<TieOrder> ties, NSError *error);
    [[nodiscard]] ColumnPlan planFor(const NSEntityDescription *entity, const QStringList &properties) const;
    [[nodiscard]] StoredRow readRow(const SQLiteStatement &statement, const ColumnPlan &plan) const;
    [[nodiscard]] std::optional<StoredRow> readRowWithKey(const NSManagedObjectID &objectID, NSError *error);
    [[nodiscard]] std::optional<LazyValue> readLazyValue(const NSManagedObjectID &objectID, int slot, NSError *error);
    [[nodiscard]] bool allocateKeys(const QList<NSManagedObjectID> &temporaryIDs,
                                    QHash<NSManagedObjectID, NSManagedObjectID> *permanentIDs, NSError *error);

    std::shared_ptr<const NSManagedObjectModel> m_model;
    NSStoreMetadata m_metadata;
    std::mutex m_mutex;
    std::unique_ptr<SQLiteDatabase> m_database;
    qint64 m_changeCounter = 0;
    qint64 m_lastDataVersion = -1;
    std::weak_ptr<StoreObserver> m_observer;
    NSError m_damage; ///< the first that was met
};

} // namespace quib
