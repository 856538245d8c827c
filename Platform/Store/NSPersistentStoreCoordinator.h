#pragma once

#include "NSPersistentStore.h"

#include <Foundation/NSError.h>

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>

class NSManagedObject;

/// The kinds of store.
inline constexpr QLatin1StringView NSSQLiteStoreType{"SQLite"};
inline constexpr QLatin1StringView NSInMemoryStoreType{"InMemory"};

/// What a store is opened with.
struct NSPersistentStoreOptions
{
    /// Fail when the file is not there, instead of making it.
    bool mustExist = false;
    bool isReadOnly = false;
    /// Units: seconds to wait for another process's write before giving up.
    double busyTimeout = 10;
    /// The SQLite file layer to use, by name; empty for the system's. Tests name one that injects faults.
    QByteArray vfsName;
};

/// Which C++ class stands for which entity: entity name to a maker of bare objects. Entities without an entry get plain
/// NSManagedObjects, used by key.
using NSManagedObjectFactories = QHash<QString, std::function<NSManagedObject *()>>;

/// What a store file tells of itself.
struct NSStoreMetadata
{
    QString versionIdentifier;
    QByteArray versionHash;
    QString storeUUID;
};

/// Joins a model, the classes of its entities and one store. Shared by the contexts over it. Any thread.
class NSPersistentStoreCoordinator
{
public:
    NSPersistentStoreCoordinator(std::shared_ptr<const NSManagedObjectModel> model, NSManagedObjectFactories factories);
    ~NSPersistentStoreCoordinator();

    /// Opens the store, or makes it.
    /// Errors: null; kNSCocoaErrorDomain with PersistentStoreOpen, PersistentStoreCorrupt,
    /// PersistentStoreIncompatibleVersion (older or newer model), FileReadNoPermission, PersistentStoreTimeout; the
    /// message names the file.
    [[nodiscard]] NSPersistentStore *addPersistentStoreWithType(QLatin1StringView type, const QString &path,
                                                                const NSPersistentStoreOptions &options,
                                                                NSError *error);
    /// Errors: nullopt for a missing or unreadable file, or one that is not a store.
    [[nodiscard]] static std::optional<NSStoreMetadata> metadataForPersistentStore(const QString &path, NSError *error);
    [[nodiscard]] static bool isModelCompatible(const NSManagedObjectModel &model, const NSStoreMetadata &metadata);

    [[nodiscard]] const std::shared_ptr<const NSManagedObjectModel> &managedObjectModel() const { return m_model; }
    [[nodiscard]] NSPersistentStore *persistentStore() const { return m_store.get(); }
    [[nodiscard]] const NSManagedObjectFactories &factories() const { return m_factories; }

    /// "x-quib-store://UUID/Entity/p12"; temporary identities have "t" before their number.
    [[nodiscard]] QString uriForObjectID(const NSManagedObjectID &objectID) const;
    /// Errors: a null identity for text that is no such URI, or of another store.
    [[nodiscard]] NSManagedObjectID managedObjectIDForURI(const QString &uri) const;

    /// The permanent identity that a temporary one got, or the identity itself. Any thread.
    [[nodiscard]] NSManagedObjectID resolvedID(const NSManagedObjectID &objectID) const;
    void recordPermanentIDs(const QHash<NSManagedObjectID, NSManagedObjectID> &permanentIDs);

private:
    mutable std::mutex m_mutex;
    QHash<NSManagedObjectID, NSManagedObjectID> m_permanentIDs; // guarded by m_mutex
    std::shared_ptr<const NSManagedObjectModel> m_model;
    NSManagedObjectFactories m_factories;
    std::unique_ptr<NSPersistentStore> m_store;
};
