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
        NSManagedObject *object = above.known(objectID);
        const auto row = object != nullptr ? above.changedRow(*object) : quib::RowSnapshotRef();
        if (row || (object != nullptr && object->isDeleted())) {
            found = StoredRow{object->objectID(), row};
        } else {
            found = above.currentRow(coordinator->resolvedID(objectID), error);
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
        NSManagedObject *object = above.known(objectID);
        const auto *row = object != nullptr && object->hasChanges() ? Access::rowWithSlot(*object, slot) : nullptr;
        if (row != nullptr) {
            found = LazyValue{row->valueAt(slot), row->version(), true};
        } else {
            found = above.currentLazyValue(coordinator->resolvedID(objectID), slot, error);
        }
    });
    return found;
}

quib::RowSnapshotRef NSManagedObjectContext::Private::changedRow(NSManagedObject &object)
{
    // Relationships alone may have changed, which leaves the row as it is, or unread.
    if (object.isDeleted() || !object.hasChanges() || !Access::row(object)) {
        return {};
    }
    for (int slot = 0; slot < object.entity()->slotCount(); ++slot) {
        const auto &attributes = object.entity()->attributes();
        const bool isLazy =
            static_cast<size_t>(slot) < attributes.size() && attributes[static_cast<size_t>(slot)].isLazy;
        if (!isLazy && !Access::row(object)->isPresent(slot)) {
            static_cast<void>(Access::rowWithSlot(object, slot)); // reads all of them
        }
    }
    return Access::row(object);
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
        // Kept while asked: reading may let the last other reference go.
        const Ref<NSManagedObject> kept = parent->m_d->object(objectID);
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
        adoptPermanentIDs(); // the parent may have saved before its turn came
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
        NSManagedObject *object = known(row.objectID);
        return object != nullptr && (object->isDeleted() || moved.contains(Ref<NSManagedObject>(object)));
    });
    QList<Ref<NSManagedObject>> joining;
    for (const auto &object : moved) {
        if (!request.predicate || request.predicate->evaluateWithObject(*object)) {
            joining.append(object);
        }
    }
    mergeInto(&*rows, std::move(joining), request);
    if (request.fetchLimit > 0 && rows->size() > request.fetchLimit) {
        rows->resize(request.fetchLimit);
    }
    return rows;
}

void NSManagedObjectContext::Private::mergeInto(QList<StoredRow> *rows, QList<Ref<NSManagedObject>> joining,
                                                const NSFetchRequest &request)
{
    if (joining.isEmpty()) {
        return;
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
    QList<StoredRow> merged;
    merged.reserve(rows->size() + joining.size());
    qsizetype done = 0;
    for (const auto &object : std::as_const(joining)) {
        // Both lists are in order, so that each place is searched behind the one before.
        qsizetype low = done;
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
        std::move(rows->begin() + done, rows->begin() + low, std::back_inserter(merged));
        done = low;
        merged.append(StoredRow{object->objectID(), changedRow(*object)});
    }
    std::move(rows->begin() + done, rows->end(), std::back_inserter(merged));
    rows->swap(merged);
}

namespace {

/// Each value is worked out once; equals keep the order of their keys.
void orderObjects(QList<Ref<NSManagedObject>> &objects, const QList<NSSortDescriptor> &descriptors)
{
    struct Entry
    {
        Ref<NSManagedObject> object;
        std::vector<quib::Value> values;
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<size_t>(objects.size()));
    for (const auto &object : std::as_const(objects)) {
        Entry &entry = entries.emplace_back(Entry{object, {}});
        for (const NSSortDescriptor &descriptor : descriptors) {
            entry.values.push_back(descriptor.valueOfObject(*object));
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [&descriptors](const Entry &a, const Entry &b) {
        for (qsizetype i = 0; i < descriptors.size(); ++i) {
            const auto at = static_cast<size_t>(i);
            if (const int order = descriptors[i].compareValue(a.values[at], b.values[at]); order != 0) {
                return order < 0;
            }
        }
        return false;
    });
    std::transform(entries.begin(), entries.end(), objects.begin(), [](const Entry &entry) { return entry.object; });
}

} // namespace

std::optional<QList<Ref<NSManagedObject>>> NSManagedObjectContext::executeFetchRequest(const NSFetchRequest &request,
                                                                                       NSError *error)
{
    m_d->assertQueue();
    if (m_d->isOrderedByDerivedKey(request)) {
        NSFetchRequest unordered = request;
        unordered.sortDescriptors.clear();
        unordered.fetchLimit = 0;
        auto objects = executeFetchRequest(unordered, error);
        if (objects) {
            orderObjects(*objects, request.sortDescriptors);
            if (request.fetchLimit > 0 && objects->size() > request.fetchLimit) {
                objects->resize(request.fetchLimit);
            }
        }
        return objects;
    }
    processPendingChanges();
    auto rows = m_d->fetchRows(request, error);
    if (!rows) {
        return std::nullopt;
    }
    auto objects = m_d->objectsForRows(std::move(*rows));
    m_d->prefetch(request, objects);
    return objects;
}

bool NSManagedObjectContext::Private::isOrderedByDerivedKey(const NSFetchRequest &request) const
{
    const auto *entity = self->managedObjectModel().entityNamed(request.entityName);
    const auto isUnknown = [entity](const NSSortDescriptor &descriptor) {
        return entity != nullptr && !descriptor.key().contains(u'.') &&
               entity->attributeNamed(descriptor.key()) == nullptr &&
               entity->relationshipNamed(descriptor.key()) == nullptr;
    };
    const auto unknown = std::find_if(request.sortDescriptors.begin(), request.sortDescriptors.end(), isUnknown);
    if (unknown == request.sortDescriptors.end()) {
        return false;
    }
    const auto factory = coordinator->factories().constFind(entity->name());
    if (factory == coordinator->factories().constEnd()) {
        return false;
    }
    // Only an object of the class can tell; this one belongs to no context and dies at once.
    const Ref<NSManagedObject> sample((*factory)());
    return Access::isDerivedKey(*sample, unknown->key());
}

QList<Ref<NSManagedObject>> NSManagedObjectContext::Private::objectsForRows(QList<StoredRow> rows)
{
    QList<Ref<NSManagedObject>> objects;
    objects.reserve(rows.size());
    registered.reserve(registered.size() + rows.size());
    // OPTIMIZATION: of a row that nobody holds yet, the factory and the place in the table are looked up once, and the
    // snapshot is handed on: none of its memory is touched again.
    const auto &factories = coordinator->factories();
    const NSEntityDescription *entity = nullptr;
    NSManagedObjectFactories::const_iterator factory;
    for (StoredRow &row : rows) {
        NSManagedObject *&place = registered[row.objectID];
        if (place != nullptr) {
            objects.append(objectForRow(row));
            continue;
        }
        if (row.objectID.entity() != entity) {
            entity = row.objectID.entity();
            factory = factories.constFind(entity->name());
        }
        place = factory != factories.constEnd() ? (*factory)() : Access::makePlain();
        Access::setIdentity(*place, row.objectID);
        Access::bind(*place, self);
        Access::row(*place) = std::move(row.snapshot);
        objects.append(Ref<NSManagedObject>(place));
    }
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
        unread.reserve(objects.size());
        const NSRelationshipDescription *relationship = nullptr;
        const NSRelationshipDescription *named = nullptr;
        const NSEntityDescription *entity = nullptr;
        for (const auto &object : objects) {
            if (object->entity() != entity) {
                entity = object->entity();
                named = entity->relationshipNamed(key);
            }
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
        // Those without any stay unread: to ask for one of them later is quick, to remember nothing for 100,000 is not.
        for (auto found = targets->cbegin(); found != targets->cend(); ++found) {
            NSManagedObject *object = found->isEmpty() ? nullptr : registered.value(found.key());
            if (object != nullptr) {
                Access::toMany(*object, relationship->index).base = *found;
            }
        }
    }
}

std::optional<qint64> NSManagedObjectContext::countForFetchRequest(const NSFetchRequest &request, NSError *error)
{
    m_d->assertQueue();
    processPendingChanges();
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
