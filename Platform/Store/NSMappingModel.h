#pragma once

#include "NSManagedObjectModel.h"
#include "NSPersistentStoreCoordinator.h"

#include <Foundation/NSError.h>

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>

/// How the rows of one model version become those of another: properties of the same name carry over, and named
/// policies do what more an entity needs. Read from a "cdm" file (JSON). A value.
struct NSMappingModel
{
    QString sourceVersion;
    QString destinationVersion;
    /// Entity name to policy name; entities without one take the ordinary steps only.
    QHash<QString, QString> policies;

    /// Errors: nullopt for a file that is missing or no mapping.
    [[nodiscard]] static std::optional<NSMappingModel> mappingModelWithContentsOfFile(const QString &path,
                                                                                      NSError *error = nullptr);
};

/// A folder of models and mappings: "mom" files in "momd" folders and beside them, and "cdm" files.
class NSModelBundle
{
public:
    explicit NSModelBundle(QString folder)
        : m_folder(std::move(folder))
    {
    }
    /// The model files inside each "momd" folder first, then those at the top.
    [[nodiscard]] QStringList modelPaths() const;
    /// The model that a store was made with, or null when the bundle has none such.
    [[nodiscard]] std::shared_ptr<const NSManagedObjectModel>
    modelForStoreMetadata(const NSStoreMetadata &metadata) const;
    [[nodiscard]] std::optional<NSMappingModel> mappingModel(const NSManagedObjectModel &sourceModel,
                                                             const NSManagedObjectModel &destinationModel) const;

private:
    [[nodiscard]] QStringList paths(const QString &extension) const;
    QString m_folder;
};
