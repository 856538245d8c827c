#include "QBExternalChanges.h"

#include "StoreFetch.h"

#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>

#include <array>

using namespace Qt::StringLiterals;
using quib::Ref;

QList<Ref<QBExternalChanges>> QBExternalChanges::externalChangesInManagedObjectContext(NSManagedObjectContext &moc,
                                                                                       qint64 atMost)
{
    return quib::fetchLogged<QBExternalChanges>(moc, {.entityName = entityName(), .fetchLimit = atMost});
}

void QBExternalChanges::updateExternalChangesInManagedObjectContext(NSManagedObjectContext &moc)
{
    const auto inserted = moc.insertedObjects();
    for (const auto &object : inserted) {
        if (object.as<QBExternalChanges>()) {
            moc.deleteObject(object.get()); // of a save that failed
        }
    }
    NSManagedObjectSet insertedObjects = moc.insertedObjects();
    NSManagedObjectSet updatedObjects = moc.updatedObjects();
    NSManagedObjectSet deletedObjects = moc.deletedObjects();
    QList<Ref<NSManagedObject>> objects;
    for (auto *set : {&insertedObjects, &updatedObjects, &deletedObjects}) {
        // The table does not tell of itself.
        set->removeIf([](const Ref<NSManagedObject> &object) { return object.as<QBExternalChanges>() != nullptr; });
        objects.append(QList<Ref<NSManagedObject>>(set->cbegin(), set->cend()));
    }
    NSError error;
    if (!moc.obtainPermanentIDsForObjects(objects, &error)) {
        QBLogError(u"Error while trying to save object from extension "_s + error.localizedDescription());
        return;
    }
    newExternalChangesForInsertedObjects(insertedObjects, updatedObjects, deletedObjects, moc);
}

void QBExternalChanges::newExternalChangesForInsertedObjects(const QSet<Ref<NSManagedObject>> &insertedObjects,
                                                             const QSet<Ref<NSManagedObject>> &updatedObjects,
                                                             const QSet<Ref<NSManagedObject>> &deletedObjects,
                                                             NSManagedObjectContext & /*inManagedObjectContext*/)
{
    for (const auto &object : insertedObjects) {
        newExternalChangeForModelObject(*object, Inserted);
    }
    for (const auto &object : updatedObjects) {
        newExternalChangeForModelObject(*object, Updated);
    }
    for (const auto &object : deletedObjects) {
        newExternalChangeForModelObject(*object, Deleted);
    }
}

Ref<QBExternalChanges> QBExternalChanges::newExternalChangeForModelObject(const NSManagedObject &object,
                                                                          ChangeType changeType)
{
    NSManagedObjectContext &moc = *object.managedObjectContext();
    auto change = insertInManagedObjectContext(moc);
    change->setItemChange(changeType);
    change->setItemEntity(object.entity()->name());
    change->setItemObjectID(moc.persistentStoreCoordinator()->uriForObjectID(object.objectID()));
    return change;
}

std::optional<QList<NSManagedObjectID>>
QBExternalChanges::mergeExternalChangesInManagedObjectContext(NSManagedObjectContext &moc, qint64 atMost)
{
    const auto changes = externalChangesInManagedObjectContext(moc, atMost);
    if (changes.isEmpty()) {
        return std::nullopt;
    }
    std::array<QList<NSManagedObjectID>, 3> byType;
    for (const auto &change : changes) {
        const qint16 type = change->itemChange();
        const NSManagedObjectID objectID = type >= Inserted && type <= Deleted
                                               ? change->managedObjectIDInManagedObjectContext(moc)
                                               : NSManagedObjectID();
        if (!objectID.isNull() && !objectID.isTemporaryID()) {
            byType[static_cast<size_t>(type)].append(objectID);
        }
    }
    const auto &[inserted, updated, deleted] = byType;
    NSManagedObjectContext::mergeChangesFromRemoteContextSave(inserted, updated, deleted, {moc.shared_from_this()});
    for (const auto &change : changes) {
        moc.deleteObject(change.get());
    }
    return inserted + updated + deleted;
}

NSManagedObjectID QBExternalChanges::managedObjectIDInManagedObjectContext(const NSManagedObjectContext &moc) const
{
    return moc.persistentStoreCoordinator()->managedObjectIDForURI(itemObjectID());
}
