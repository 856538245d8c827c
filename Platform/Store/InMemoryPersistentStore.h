#pragma once

#include "NSPersistentStore.h"

#include <QMap>

#include <mutex>

namespace quib {

/// The store that lies in memory and is gone with its coordinator: rows are kept as snapshots, conditions and orders
/// are evaluated on them. For small sets, such as the sample notes. Any thread; calls are serialised.
class InMemoryPersistentStore final : public NSPersistentStore
{
public:
    explicit InMemoryPersistentStore(std::shared_ptr<const NSManagedObjectModel> model);

    [[nodiscard]] const std::shared_ptr<const NSManagedObjectModel> &model() const override { return m_model; }
    [[nodiscard]] QString identifier() const override { return m_identifier; }
    [[nodiscard]] std::optional<QList<StoredRow>> fetch(const NSFetchRequest &request, NSError *error) override;
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
    [[nodiscard]] SaveResult save(const SaveRequest &request) override;
    [[nodiscard]] std::optional<QHash<NSManagedObjectID, NSManagedObjectID>>
    reserveIdentities(const QList<NSManagedObjectID> &temporaryIDs, NSError *error) override;
    [[nodiscard]] bool enumerateLazyValues(const NSEntityDescription *entity, int slot, const LazyVisitor &visit,
                                           NSError *error) override;
    [[nodiscard]] bool enumerateRows(const NSEntityDescription *entity, const QStringList &attributes,
                                     const RowVisitor &visit, NSError *error) override;
    [[nodiscard]] std::optional<qint64> changeCounter(NSError *error) override;
    [[nodiscard]] std::optional<QStringList> integrityProblems(NSError *error) override;

private:
    class StoredObject;
    friend class StoredObject;
    using Rows = QMap<qint64, StoredRow>;
    using Joins = QSet<std::pair<qint64, qint64>>;

    [[nodiscard]] QList<NSManagedObjectID> targetsOf(const NSManagedObjectID &objectID,
                                                     const NSRelationshipDescription *relationship) const;
    [[nodiscard]] std::optional<QList<StoredRow>> select(const NSFetchRequest &request, NSError *error) const;
    void allocate(const QList<NSManagedObjectID> &temporaryIDs, QHash<NSManagedObjectID, NSManagedObjectID> *permanent);
    void removeRow(const NSManagedObjectID &objectID);

    std::shared_ptr<const NSManagedObjectModel> m_model;
    QString m_identifier;
    mutable std::mutex m_mutex;
    QHash<const NSEntityDescription *, Rows> m_rows;         // by root entity
    QHash<const NSRelationshipDescription *, Joins> m_joins; // by owning side: source, target
    QHash<const NSEntityDescription *, qint64> m_lastKeys;   // by root entity
    qint64 m_changeCounter = 0;
};

} // namespace quib
