#include "NSPersistentStoreCoordinator.h"

#include "InMemoryPersistentStore.h"
#include "SQLitePersistentStore.h"

using namespace Qt::StringLiterals;

NSPersistentStoreCoordinator::NSPersistentStoreCoordinator(std::shared_ptr<const NSManagedObjectModel> model,
                                                           NSManagedObjectFactories factories)
    : m_model(std::move(model))
    , m_factories(std::move(factories))
{
}

NSPersistentStoreCoordinator::~NSPersistentStoreCoordinator() = default;

NSPersistentStore *NSPersistentStoreCoordinator::addPersistentStoreWithType(QLatin1StringView type, const QString &path,
                                                                            const NSPersistentStoreOptions &options,
                                                                            NSError *error)
{
    if (type == NSInMemoryStoreType) {
        m_store = std::make_unique<quib::InMemoryPersistentStore>(m_model);
    } else {
        m_store = quib::SQLitePersistentStore::open(path, m_model, options, error);
    }
    return m_store.get();
}

std::optional<NSStoreMetadata> NSPersistentStoreCoordinator::metadataForPersistentStore(const QString &path,
                                                                                        NSError *error)
{
    return quib::SQLitePersistentStore::readMetadata(path, error);
}

bool NSPersistentStoreCoordinator::isModelCompatible(const NSManagedObjectModel &model, const NSStoreMetadata &metadata)
{
    return model.versionHash() == metadata.versionHash;
}

QString NSPersistentStoreCoordinator::uriForObjectID(const NSManagedObjectID &objectID) const
{
    if (objectID.isNull() || !m_store) {
        return {};
    }
    const bool isTemporary = objectID.isTemporaryID();
    return u"x-quib-store://%1/%2/%3%4"_s.arg(m_store->identifier(), objectID.entity()->name(),
                                              isTemporary ? u"t"_s : u"p"_s,
                                              QString::number(isTemporary ? -objectID.key() : objectID.key()));
}

NSManagedObjectID NSPersistentStoreCoordinator::managedObjectIDForURI(const QString &uri) const
{
    const QString prefix = m_store ? u"x-quib-store://%1/"_s.arg(m_store->identifier()) : QString();
    if (prefix.isEmpty() || !uri.startsWith(prefix)) {
        return {};
    }
    const QStringList parts = uri.mid(prefix.size()).split(u'/');
    if (parts.size() != 2 || parts[1].size() < 2 || (parts[1][0] != u'p' && parts[1][0] != u't')) {
        return {};
    }
    bool isNumber = false;
    const qint64 key = QStringView(parts[1]).sliced(1).toLongLong(&isNumber);
    const auto *entity = m_model->entityNamed(parts[0]);
    if (!isNumber || key <= 0 || entity == nullptr) {
        return {};
    }
    return NSManagedObjectID(entity, parts[1][0] == u't' ? -key : key);
}

NSManagedObjectID NSPersistentStoreCoordinator::resolvedID(const NSManagedObjectID &objectID) const
{
    if (!objectID.isTemporaryID()) {
        return objectID;
    }
    const std::lock_guard lock(m_mutex);
    return m_permanentIDs.value(objectID, objectID);
}

void NSPersistentStoreCoordinator::recordPermanentIDs(const QHash<NSManagedObjectID, NSManagedObjectID> &permanentIDs)
{
    const std::lock_guard lock(m_mutex);
    m_permanentIDs.insert(permanentIDs);
}
