#pragma once

#include <Foundation/NSError.h>

#include <QUrl>

/// Moves the data folder from where earlier versions kept it. Runs before the store is opened, on the main queue.
class QBLocalDataMigrator
{
public:
    QBLocalDataMigrator() = delete;

    /// Runs both moves below; the result is that of the second.
    [[nodiscard]] static bool migrateToCurrentVersion(NSError *error);
    /// From the application's support folder to the group's.
    [[nodiscard]] static bool migrateFromAppSupportToAppGroup(NSError *error);
    /// From the user's documents to the group's folder.
    [[nodiscard]] static bool migrateFromDocumentToAppGroup(NSError *error);
    /// Moves every visible item of a folder that holds a store, but for "Thumbs", to a folder that holds none. Nothing
    /// to move is success.
    /// Errors: that of the first item that could not be moved; what was moved stays moved. The database goes last, so
    ///         that a second run takes up where the first one failed.
    [[nodiscard]] static bool migrateFromOldDataURL(const QUrl &oldDataURL, const QUrl &toNewDataURL, NSError *error);
    /// "Application Data" below the user's documents.
    [[nodiscard]] static QUrl documentDataURL();
};
