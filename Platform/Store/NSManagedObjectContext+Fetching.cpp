#include "NSManagedObjectContext.h"
#include "NSManagedObjectContext_p.h"

#include "PredicateNode.h"

using namespace Qt::StringLiterals;
using Access = NSManagedObjectAccess;
using quib::Ref;
using quib::StoredRow;

std::optional<StoredRow> NSManagedObjectContext::Private::currentRow(const NSManagedObjectID &objectID, NSError *error)
{
    if (!parent) {
        return objectID.isTemporaryID() ? StoredRow{objectID, {}} : store()->row(objectID, error);
    }
    std::optional<StoredRow> found;
    parent->performBlockAndWait([&] {
        auto &above = *parent->m_d;
        const NSManagedObjectID resolved = coordinator->resolvedID(objectID);
        NSManagedObject *object = above.registered.value(resolved);
        if (object == nullptr) {
            object = above.registered.value(objectID);
        }
        // An object whose relationships alone changed may not have read its row.
        const bool isOwn = object != nullptr && (object->isDeleted() || (object->hasChanges() && Access::row(*object)));
        if (isOwn) {
            found = StoredRow{object->objectID(), object->isDeleted() ? quib::RowSnapshotRef() : Access::row(*object)};
        } else {
            found = above.currentRow(resolved, error);
        }
    });
    return found;
}

std::optional<NSPersistentStore::LazyValue>
NSManagedObjectContext::Private::currentLazyValue(const NSManagedObjectID &objectID, int slot, NSError *error)
{
    using LazyValue = NSPersistentStore::LazyValue;
    if (!parent) {
        return objectID.isTemporaryID() ? LazyValue{} : store()->lazyValue(objectID, slot, error);
    }
    std::optional<LazyValue> found;
    parent->performBlockAndWait([&] {
        auto &above = *parent->m_d;
        const NSManagedObjectID resolved = coordinator->resolvedID(objectID);
        NSManagedObject *object = above.registered.value(resolved);
        if (object == nullptr) {
            object = above.registered.value(objectID);
        }
        const auto *row = object != nullptr && object->hasChanges() ? Access::rowWithSlot(*object, slot) : nullptr;
        if (row != nullptr) {
            found = LazyValue{row->valueAt(slot), row->version(), true};
        } else {
            found = above.currentLazyValue(resolved, slot, error);
        }
    });
    return found;
}

std::optional<QList<NSManagedObjectID>>
NSManagedObjectContext::Private::currentTargets(const NSManagedObjectID &objectID, int index, NSError *error)
{
    if (!parent) {
        const auto *relationship = &objectID.entity()->relationships()[static_cast<size_t>(index)];
        auto targets =
            objectID.isTemporaryID() ? QList<NSManagedObjectID>() : store()->targets(objectID, relationship, error);
        return targets;
    }
    std::optional<QList<NSManagedObjectID>> found;
    parent->performBlockAndWait([&] {
        auto &above = *parent->m_d;
        const NSManagedObjectID resolved = coordinator->resolvedID(objectID);
        NSManagedObject *object = above.registered.value(resolved);
        if (object == nullptr) {
            object = above.registered.value(objectID);
        }
        // Kept while asked: reading may let the last other reference go.
        const Ref<NSManagedObject> kept = object != nullptr ? Ref<NSManagedObject>(object) : above.object(resolved);
        found = Access::targets(*kept, index);
    });
    return found;
}

NSManagedObjectSet NSManagedObjectContext::Private::candidates(const NSFetchRequest &request,
                                                               const NSEntityDescription *entity)
{
    NSManagedObjectSet found;
    const auto consider = [&](const Ref<NSManagedObject> &object) {
        const bool isWanted =
            request.includesSubentities ? object->entity()->isKindOfEntity(entity) : object->entity() == entity;
        if (isWanted && !object->isDeleted()) {
            found.insert(object);
        }
    };
    for (const auto *changed : {&inserted, &updated}) {
        for (const auto &object : *changed) {
            consider(object);
        }
    }
    if (!request.predicate) {
        return found;
    }
    // A change of a related object can move others in or out: those it is related to now, on the other side.
    for (const QString &key : request.predicate->relationshipKeys()) {
        const auto *relationship = entity->relationshipNamed(key);
        if (relationship == nullptr || relationship->inverse == nullptr) {
            continue;
        }
        for (const auto *changed : {&inserted, &updated}) {
            for (const auto &object : *changed) {
                if (!object->entity()->isKindOfEntity(relationship->destinationEntity)) {
                    continue;
                }
                if (relationship->inverse->isToMany) {
                    for (const auto &other : object->targetObjectsForKey(relationship->inverseName)) {
                        consider(other);
                    }
                } else if (const auto other = object->targetObjectForKey(relationship->inverseName)) {
                    consider(other);
                }
            }
        }
    }
    return found;
}

std::optional<QList<StoredRow>> NSManagedObjectContext::Private::fetchRows(const NSFetchRequest &request,
                                                                           NSError *error)
{
    const auto *entity = coordinator->managedObjectModel()->entityNamed(request.entityName);
    if (entity == nullptr) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadUnknown),
                      u"no entity \"%1\""_s.arg(request.entityName));
        return std::nullopt;
    }
    adoptPermanentIDs();
    const NSManagedObjectSet moved = hasChanges() ? candidates(request, entity) : NSManagedObjectSet();
    NSFetchRequest below = request;
    if (below.fetchLimit > 0) {
        below.fetchLimit += moved.size() + deleted.size();
    }
    std::optional<QList<StoredRow>> rows;
    if (parent) {
        parent->performBlockAndWait([&] { rows = parent->m_d->fetchRows(below, error); });
        // The parent may have saved in between: what it gave keys to is known by them from here on.
        adoptPermanentIDs();
        if (rows) {
            for (StoredRow &row : *rows) {
                row.objectID = coordinator->resolvedID(row.objectID);
            }
        }
    } else if (request.includesPropertyValues) {
        rows = store()->fetch(below, error);
    } else if (const auto identities = store()->fetchIDs(below, error)) {
        rows.emplace();
        for (const NSManagedObjectID &objectID : *identities) {
            rows->append({objectID, {}});
        }
    }
    if (!rows || (moved.isEmpty() && deleted.isEmpty())) {
        return rows;
    }
    rows->removeIf([&](const StoredRow &row) {
        NSManagedObject *object = registered.value(row.objectID);
        return object != nullptr && (object->isDeleted() || moved.contains(Ref<NSManagedObject>(object)));
    });
    QList<Ref<NSManagedObject>> joining;
    for (const auto &object : moved) {
        if (!request.predicate || request.predicate->evaluateWithObject(*object)) {
            joining.append(object);
        }
    }
    const auto isBefore = [&request](const NSManagedObject &a, const NSManagedObject &b) {
        const int order = NSSortDescriptor::compare(request.sortDescriptors, a, b);
        if (order != 0) {
            return order < 0;
        }
        // Ties by key, as the store breaks them; rows that have none yet come last, oldest first.
        const qint64 left = a.objectID().key();
        const qint64 right = b.objectID().key();
        return (left > 0) != (right > 0) ? left > 0 : std::abs(left) < std::abs(right);
    };
    std::sort(joining.begin(), joining.end(), [&isBefore](const auto &a, const auto &b) { return isBefore(*a, *b); });
    for (const auto &object : std::as_const(joining)) {
        qsizetype low = 0;
        qsizetype high = rows->size();
        while (low < high) {
            const qsizetype middle = low + (high - low) / 2;
            const auto other = objectForRow(rows->at(middle));
            if (isBefore(*object, *other)) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        if (!Access::row(*object)) {
            static_cast<void>(Access::rowWithSlot(*object, 0)); // a fault whose relationships alone changed
        }
        rows->insert(low, StoredRow{object->objectID(), Access::row(*object)});
    }
    if (request.fetchLimit > 0 && rows->size() > request.fetchLimit) {
        rows->resize(request.fetchLimit);
    }
    return rows;
}

std::optional<QList<Ref<NSManagedObject>>> NSManagedObjectContext::executeFetchRequest(const NSFetchRequest &request,
                                                                                       NSError *error)
{
    m_d->assertQueue();
    processPendingChanges();
    const auto rows = m_d->fetchRows(request, error);
    if (!rows) {
        return std::nullopt;
    }
    QList<Ref<NSManagedObject>> objects;
    objects.reserve(rows->size());
    m_d->registered.reserve(m_d->registered.size() + rows->size());
    for (const StoredRow &row : *rows) {
        objects.append(m_d->objectForRow(row));
    }
    m_d->prefetch(request, objects);
    return objects;
}

void NSManagedObjectContext::Private::prefetch(const NSFetchRequest &request,
                                               const QList<Ref<NSManagedObject>> &objects)
{
    if (parent) {
        return;
    }
    for (const QString &key : request.relationshipKeyPathsForPrefetching) {
        QList<NSManagedObjectID> unread;
        const NSRelationshipDescription *relationship = nullptr;
        for (const auto &object : objects) {
            const auto *named = object->entity()->relationshipNamed(key);
            const auto *pending = Access::pendingIfAny(*object);
            if (named != nullptr && named->isToMany && !object->isInserted() &&
                (pending == nullptr || !pending->toMany.value(named->index).base)) {
                relationship = named;
                unread.append(object->objectID());
            }
        }
        NSError error;
        const auto targets =
            relationship != nullptr ? store()->targetsForObjects(unread, relationship, &error) : std::nullopt;
        if (!targets) {
            continue;
        }
        for (const NSManagedObjectID &objectID : std::as_const(unread)) {
            if (NSManagedObject *object = registered.value(objectID)) {
                Access::toMany(*object, relationship->index).base = targets->value(objectID);
            }
        }
    }
}

std::optional<qint64> NSManagedObjectContext::countForFetchRequest(const NSFetchRequest &request, NSError *error)
{
    m_d->assertQueue();
    bool isUntouched = !m_d->hasChanges();
    for (auto above = m_d->parent; above && isUntouched; above = above->m_d->parent) {
        above->performBlockAndWait([&] { isUntouched = !above->m_d->hasChanges(); });
    }
    if (isUntouched) {
        return m_d->store()->count(request, error);
    }
    const auto rows = m_d->fetchRows(request, error);
    return rows ? std::optional<qint64>(rows->size()) : std::nullopt;
}

std::optional<QList<QList<quib::Value>>>
NSManagedObjectContext::executeDictionaryFetchRequest(const NSFetchRequest &request, const QStringList &attributes,
                                                      NSError *error)
{
    m_d->assertQueue();
    return m_d->store()->fetchDictionaries(request, attributes, error);
}
