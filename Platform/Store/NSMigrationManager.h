#pragma once

#include "NSEntityMigrationPolicy.h"
#include "NSManagedObjectContext.h"
#include "NSMappingModel.h"

#include <Foundation/NSError.h>

#include <QHash>
#include <QList>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

/// Carries a store from one model version to another, into a new file; the source is only read. Rows go over in
/// batches, so that memory stays bounded however large the store is. Used on one thread; cancel may come from any.
class NSMigrationManager
{
public:
    using PolicyFactory = std::function<std::unique_ptr<NSEntityMigrationPolicy>(const QString &policyName)>;

    NSMigrationManager(std::shared_ptr<const NSManagedObjectModel> sourceModel,
                       std::shared_ptr<const NSManagedObjectModel> destinationModel, PolicyFactory policies);
    ~NSMigrationManager();

    /// Errors: false; the destination file may be there in part, the source is as it was.
    [[nodiscard]] bool migrateStoreFromURL(const QString &sourceURL, const NSMappingModel &withMappingModel,
                                           const QString &toDestinationURL, NSError *error);
    /// From 0 to 1.
    [[nodiscard]] double migrationProgress() const { return m_progress; }
    void setProgressObserver(std::function<void(double migrationProgress)> observer)
    {
        m_observer = std::move(observer);
    }
    void cancelMigration() { m_isCancelled = true; }

    // For policies.
    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &destinationContext() const { return m_context; }
    /// The destination objects made for source rows by an entity's mapping, in the rows' order.
    [[nodiscard]] QList<quib::Ref<NSManagedObject>>
    destinationInstancesForEntityMappingNamed(const QString &mappingName,
                                              const QList<NSManagedObjectID> &sourceInstances) const;

private:
    friend class NSEntityMigrationPolicy;
    [[nodiscard]] bool openStores(const QString &sourceURL, const QString &destinationURL, NSError *error);
    /// Calls step for every source row of an entity, and saves and lets go of objects every batch.
    [[nodiscard]] bool forEachRow(const NSEntityDescription *entity,
                                  const std::function<bool(const quib::StoredRow &row)> &step, NSError *error);
    [[nodiscard]] NSEntityMigrationPolicy &policyFor(const NSEntityDescription *entity, const NSMappingModel &mapping);
    void advance(qint64 rows);

    std::shared_ptr<const NSManagedObjectModel> m_sourceModel;
    std::shared_ptr<const NSManagedObjectModel> m_destinationModel;
    PolicyFactory m_makePolicy;
    std::unique_ptr<NSPersistentStoreCoordinator> m_source;
    std::shared_ptr<NSPersistentStoreCoordinator> m_destination;
    std::shared_ptr<NSManagedObjectContext> m_context;
    QHash<QString, std::shared_ptr<NSEntityMigrationPolicy>> m_policies;
    /// Source row to destination row.
    QHash<NSManagedObjectID, NSManagedObjectID> m_instances;
    /// The source row of the destination object at hand, for the relationship step.
    quib::StoredRow m_currentSource;
    /// Destination objects made since the last save, which have no permanent identity yet.
    QList<std::pair<NSManagedObjectID, quib::Ref<NSManagedObject>>> m_unsaved;
    std::atomic<bool> m_isCancelled = false;
    double m_progress = 0;
    qint64 m_rowsDone = 0;
    qint64 m_rowsToDo = 0;
    std::function<void(double)> m_observer;
};
