#pragma once

#include <Foundation/NSError.h>
#include <Store/NSMappingModel.h>

#include <QList>
#include <QString>

#include <memory>

class MHWMigrationManager;
class NSManagedObjectModel;

/// Follows a migration, and may offer mappings of its own. Called on the queue of the migration.
class MHWMigrationManagerDelegate
{
public:
    virtual ~MHWMigrationManagerDelegate() = default;

    /// Units: from 0 to 1, anew at every step from one version to the next.
    virtual void migrationManager(MHWMigrationManager &manager, float migrationProgress);
    /// An empty list leaves the choice to the bundle.
    [[nodiscard]] virtual QList<NSMappingModel>
    migrationManagerMappingModelsForSourceModel(MHWMigrationManager &manager, const NSManagedObjectModel &sourceModel);
};

/// Walks a store through the model versions, one at a time, until it is the one asked for. After each step the file is
/// swapped for the new one in one move, so that at every instant there is a whole store in its place; the old one is
/// kept in the temporary directory. Used on one queue.
class MHWMigrationManager
{
public:
    /// The domain of the errors below.
    static constexpr QLatin1StringView kErrorDomain{"MHWMigrationManager"};
    /// No model in the bundle, or no mapping from the store's version.
    static constexpr qint64 kNoModelsError = 8001;

    /// Shape:   bundlePath is a folder with "momd" folders; empty for the program's own.
    explicit MHWMigrationManager(const QString &bundlePath = {});

    void setDelegate(const std::weak_ptr<MHWMigrationManagerDelegate> &delegate) { m_delegate = delegate; }

    /// Errors: false; the store is then of the version that the last whole step gave it, or as it was.
    [[nodiscard]] bool progressivelyMigrateURL(const QString &sourceStoreURL, QLatin1StringView ofType,
                                               const std::shared_ptr<const NSManagedObjectModel> &toModel,
                                               NSError *error);

private:
    struct Destination
    {
        std::shared_ptr<const NSManagedObjectModel> model;
        NSMappingModel mapping;
        QString modelName;
    };
    [[nodiscard]] std::optional<Destination> getDestinationModel(const NSManagedObjectModel &forSourceModel,
                                                                 NSError *error) const;
    [[nodiscard]] bool migrateOneStep(const QString &sourceStoreURL,
                                      const std::shared_ptr<const NSManagedObjectModel> &sourceModel, NSError *error);
    [[nodiscard]] static bool backupSourceStoreAtURL(const QString &sourceStoreURL,
                                                     const QString &movingDestinationStoreAtURL, NSError *error);

    NSModelBundle m_bundle;
    std::weak_ptr<MHWMigrationManagerDelegate> m_delegate;
};
