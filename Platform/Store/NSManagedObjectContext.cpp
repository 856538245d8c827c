#include "NSManagedObjectContext.h"

#include "NSManagedObjectContext_p.h"

#include <Foundation/Assert.h>

#include <atomic>

using namespace Qt::StringLiterals;
using Access = NSManagedObjectAccess;
using quib::Ref;

namespace {

qint64 nextTemporaryKey()
{
    static std::atomic<qint64> last = 0;
    return --last;
}

/// True when a slot that both rows hold is not the same in them.
bool differs(const quib::RowSnapshot &a, const quib::RowSnapshot &b)
{
    for (int slot = 0; slot < a.entity()->slotCount(); ++slot) {
        if (a.isPresent(slot) && b.isPresent(slot) && !a.slotEquals(slot, b)) {
            return true;
        }
    }
    return false;
}

} // namespace

NSManagedObjectContext::NSManagedObjectContext()
    : m_d(std::make_unique<Private>())
{
    m_d->self = this;
}

std::shared_ptr<NSManagedObjectContext>
NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType type,
                                               const std::shared_ptr<NSPersistentStoreCoordinator> &coordinator)
{
    const std::shared_ptr<NSManagedObjectContext> context(new NSManagedObjectContext);
    context->m_d->queue = type == NSManagedObjectContextConcurrencyType::MainQueue
                              ? quib::DispatchQueue::main()
                              : quib::DispatchQueue::serial(u"context"_s);
    context->m_d->coordinator = coordinator;
    return context;
}

std::shared_ptr<NSManagedObjectContext>
NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType type,
                                          const std::shared_ptr<NSManagedObjectContext> &parentContext)
{
    auto context = contextWithCoordinator(type, parentContext->m_d->coordinator);
    context->m_d->parent = parentContext;
    // What a child saved is decided; its parent's values give way.
    context->m_d->mergePolicy = NSMergePolicy::MergeByPropertyObjectTrump;
    return context;
}

NSManagedObjectContext::~NSManagedObjectContext()
{
    const auto forget = [this] { reset(); };
    if (m_d->queue->isCurrent()) {
        forget();
    } else {
        // The last holder let go elsewhere: nobody can be working on the objects any more.
        for (NSManagedObject *object : std::as_const(m_d->registered)) {
            Access::bind(*object, nullptr);
        }
    }
}

void NSManagedObjectContext::Private::assertQueue() const
{
    QUIB_ASSERT(queue->isCurrent());
}

void NSManagedObjectContext::performBlock(std::function<void()> block)
{
    m_d->queue->async([self = shared_from_this(), block = std::move(block)] { block(); });
}

void NSManagedObjectContext::performBlockAndWait(const std::function<void()> &block)
{
    m_d->queue->sync(block);
}

const std::shared_ptr<quib::DispatchQueue> &NSManagedObjectContext::queue() const
{
    return m_d->queue;
}

const std::shared_ptr<NSPersistentStoreCoordinator> &NSManagedObjectContext::persistentStoreCoordinator() const
{
    return m_d->coordinator;
}

const std::shared_ptr<NSManagedObjectContext> &NSManagedObjectContext::parentContext() const
{
    return m_d->parent;
}

const NSManagedObjectModel &NSManagedObjectContext::managedObjectModel() const
{
    return *m_d->coordinator->managedObjectModel();
}

NSMergePolicy NSManagedObjectContext::mergePolicy() const
{
    return m_d->mergePolicy;
}

void NSManagedObjectContext::setMergePolicy(NSMergePolicy policy)
{
    m_d->assertQueue();
    m_d->mergePolicy = policy;
}

// Objects

Ref<NSManagedObject> NSManagedObjectContext::Private::makeObject(const NSManagedObjectID &objectID,
                                                                 quib::RowSnapshotRef row)
{
    const auto &factories = coordinator->factories();
    const auto factory = factories.constFind(objectID.entity()->name());
    NSManagedObject *object = factory != factories.constEnd() ? (*factory)() : Access::makePlain();
    Access::setIdentity(*object, objectID);
    Access::bind(*object, self);
    Access::row(*object) = std::move(row);
    registered.insert(objectID, object);
    return Ref<NSManagedObject>(object);
}

Ref<NSManagedObject> NSManagedObjectContext::Private::object(const NSManagedObjectID &objectID)
{
    NSManagedObject *object = known(objectID);
    return object != nullptr ? Ref<NSManagedObject>(object) : makeObject(coordinator->resolvedID(objectID), {});
}

NSManagedObject *NSManagedObjectContext::Private::known(const NSManagedObjectID &objectID)
{
    const NSManagedObjectID resolved = coordinator->resolvedID(objectID);
    if (NSManagedObject *object = registered.value(resolved)) {
        return object;
    }
    if (objectID.isTemporaryID()) {
        return registered.value(objectID);
    }
    if (parent && parent->m_d->parent) {
        // The root may have given the key since this context looked, and told a context below of it.
        adoptPermanentIDs();
        return registered.value(resolved);
    }
    return nullptr;
}

void NSManagedObjectContext::Private::unregister(NSManagedObject &object)
{
    // Another object may bear the identity by now, when this one was deleted.
    const auto found = registered.constFind(object.objectID());
    if (found != registered.constEnd() && *found == &object) {
        registered.erase(found);
    }
    withPending.remove(&object);
}

Ref<NSManagedObject> NSManagedObjectContext::Private::objectForRow(const quib::StoredRow &row)
{
    NSManagedObject *known = this->known(row.objectID);
    if (known == nullptr) {
        return makeObject(coordinator->resolvedID(row.objectID), row.snapshot);
    }
    Ref<NSManagedObject> object(known);
    if (!row.snapshot || known->hasChanges()) {
        return object;
    }
    auto &held = Access::row(*known);
    const bool isOther = held && (held->version() != row.snapshot->version() ||
                                  (parent && !(held == row.snapshot) && differs(*held, *row.snapshot)));
    if (isOther) {
        noteRefreshed(*known);
    }
    // Somebody else wrote, or the parent's unsaved row was changed, which no version tells: an object without changes
    // of its own shows what is there, and reads again what a row does not tell.
    if (!held || isOther) {
        held = row.snapshot;
    } else if (!parent) {
        held.takeMissingSlots(row.snapshot);
    } else if (parent && !(held == row.snapshot)) {
        for (const NSAttributeDescription &attribute : known->entity()->attributes()) {
            if (attribute.isLazy && held->isPresent(attribute.slot) && !row.snapshot->isPresent(attribute.slot)) {
                held.edit()->setAbsent(attribute.slot);
            }
        }
    }
    if (auto &pending = Access::pending(*known); pending && (isOther || parent) && !pending->hasChanges()) {
        pending.reset();
        withPending.remove(known);
    }
    return object;
}

void NSManagedObjectContext::Private::kill(NSManagedObject &object)
{
    unregister(object);
    Access::bind(object, nullptr);
    Access::row(object) = {};
    Access::pending(object).reset();
}

Ref<NSManagedObject> NSManagedObjectContext::insertNewObjectForEntityForName(const QString &entityName)
{
    m_d->assertQueue();
    const auto *entity = managedObjectModel().entityNamed(entityName);
    QUIB_REQUIRE(entity != nullptr && !entity->isAbstract());
    const auto object = m_d->makeObject(NSManagedObjectID(entity, nextTemporaryKey()), quib::RowSnapshot::make(entity));
    m_d->noteInserted(*object);
    Access::awakeFromInsert(*object);
    return object;
}

Ref<NSManagedObject> NSManagedObjectContext::objectWithID(const NSManagedObjectID &objectID)
{
    m_d->assertQueue();
    if (objectID.isNull()) {
        return nullptr;
    }
    if (objectID.entity()->withSubentities().size() > 1) {
        // The class to make is known once the row was read.
        return existingObjectWithID(objectID);
    }
    return m_d->object(objectID);
}

Ref<NSManagedObject> NSManagedObjectContext::existingObjectWithID(const NSManagedObjectID &objectID)
{
    m_d->assertQueue();
    if (objectID.isNull()) {
        return nullptr;
    }
    if (NSManagedObject *object = m_d->known(objectID);
        object != nullptr && (Access::row(*object) || object->isDeleted())) {
        return object->isDeleted() ? nullptr : Ref<NSManagedObject>(object);
    }
    NSError error;
    const auto stored = m_d->currentRow(m_d->coordinator->resolvedID(objectID), &error);
    return stored && stored->snapshot ? m_d->objectForRow(*stored) : nullptr;
}

Ref<NSManagedObject> NSManagedObjectContext::registeredObjectForID(const NSManagedObjectID &objectID) const
{
    m_d->assertQueue();
    return Ref<NSManagedObject>(m_d->known(objectID));
}

qint64 NSManagedObjectContext::rowVersion(const NSManagedObject &object) const
{
    m_d->assertQueue();
    const auto &row = Access::row(object);
    return row ? row->version() : -1;
}

void NSManagedObjectContext::deleteObject(NSManagedObject *object)
{
    m_d->assertQueue();
    if (object == nullptr || object->managedObjectContext() != this || object->isDeleted() ||
        Access::has(*object, Access::Deleting)) {
        return;
    }
    const Ref<NSManagedObject> kept(object);
    for (const NSRelationshipDescription &relationship : object->entity()->relationships()) {
        if (relationship.deleteRule == NSDeleteRule::Deny &&
            (relationship.isToMany ? object->countForKey(relationship.name) > 0
                                   : static_cast<bool>(object->targetObjectForKey(relationship.name)))) {
            return;
        }
    }
    Access::set(*object, Access::Deleting, true);
    Access::prepareForDeletion(*object);
    for (const NSRelationshipDescription &relationship : object->entity()->relationships()) {
        if (relationship.deleteRule == NSDeleteRule::NoAction) {
            continue;
        }
        if (relationship.deleteRule == NSDeleteRule::Cascade) {
            // First, so that what goes along is prepared while it still knows whose it is.
            m_d->deleteTargets(*object, relationship);
        }
        if (relationship.isToMany) {
            object->setTargetObjectsForKey({}, relationship.name);
        } else {
            object->setTargetObjectForKey(nullptr, relationship.name);
        }
    }
    m_d->noteDeleted(*object);
}

void NSManagedObjectContext::Private::deleteTargets(const NSManagedObject &object,
                                                    const NSRelationshipDescription &relationship)
{
    if (!relationship.isToMany) {
        self->deleteObject(object.targetObjectForKey(relationship.name).get());
        return;
    }
    for (const auto &target : object.targetObjectsForKey(relationship.name)) {
        self->deleteObject(target.get());
    }
}

void NSManagedObjectContext::refreshObject(NSManagedObject *object, bool mergeChanges)
{
    m_d->assertQueue();
    if (object == nullptr || object->managedObjectContext() != this || object->isInserted()) {
        return;
    }
    const Ref<NSManagedObject> kept(object);
    auto &pending = Access::pending(*object);
    if (!mergeChanges) {
        pending.reset();
        m_d->withPending.remove(object);
        m_d->updated.remove(kept);
        m_d->deleted.remove(kept);
        m_d->untold.deleted.remove(kept); // it is back
        Access::set(*object, Access::Updated, false);
        Access::set(*object, Access::Deleted, false);
        Access::set(*object, Access::Deleting, false);
        Access::row(*object) = {};
        m_d->noteRefreshed(*object);
        return;
    }
    NSError error;
    const auto stored = m_d->currentRow(object->objectID(), &error);
    if (!stored || !stored->snapshot) {
        return;
    }
    m_d->takeRow(*object, stored->snapshot);
}

void NSManagedObjectContext::Private::takeRow(NSManagedObject &object, quib::RowSnapshotRef row)
{
    auto &pending = Access::pending(object);
    if (pending) {
        for (auto state = pending->toMany.begin(); state != pending->toMany.end(); ++state) {
            state->base.reset();
        }
        if (pending->changedSlots != 0) {
            const quib::RowSnapshotRef fresh = row;
            for (int slot = 0; slot < object.entity()->slotCount(); ++slot) {
                if ((pending->changedSlots & (quint64{1} << slot)) == 0) {
                    continue;
                }
                if (object.entity()->slotLayout(slot).relationship != nullptr) {
                    row.edit()->setTargetAt(slot, Access::row(object)->targetAt(slot));
                } else {
                    row.edit()->setValueAt(slot, Access::row(object)->valueAt(slot));
                }
                if (!fresh->isPresent(slot)) {
                    // A lazy value that was changed keeps the base it was changed from.
                    quib::RowSnapshotRef base = fresh;
                    base.edit()->setValueAt(slot, pending->base->valueAt(slot));
                    pending->base = base;
                }
            }
            if (pending->base->version() != fresh->version()) {
                pending->base = fresh;
            }
        }
    }
    Access::row(object) = row;
    noteRefreshed(object);
}

void NSManagedObjectContext::refreshAllObjects(bool mergeChanges)
{
    m_d->assertQueue();
    QList<Ref<NSManagedObject>> objects;
    for (NSManagedObject *object : std::as_const(m_d->registered)) {
        objects.append(Ref<NSManagedObject>(object));
    }
    for (const auto &object : std::as_const(objects)) {
        if (mergeChanges && !object->hasChanges()) {
            // Nothing to lay over: read again when asked for.
            Access::row(*object) = {};
            Access::pending(*object).reset();
            m_d->withPending.remove(object.get());
        } else {
            refreshObject(object.get(), mergeChanges);
        }
    }
}

void NSManagedObjectContext::reset()
{
    m_d->assertQueue();
    // Emptied before anything dies: a dying object must find no set that still names it.
    const auto inserted = std::exchange(m_d->inserted, {});
    const auto updated = std::exchange(m_d->updated, {});
    const auto deleted = std::exchange(m_d->deleted, {});
    const auto untold = std::exchange(m_d->untold, {});
    const auto keptAlive = std::exchange(m_d->keptAlive, {});
    const auto registered = std::exchange(m_d->registered, {});
    for (NSManagedObject *object : registered) {
        Access::bind(*object, nullptr);
        Access::row(*object) = {};
        Access::pending(*object).reset();
    }
    m_d->withPending.clear();
}

void NSManagedObjectContext::rollback()
{
    m_d->assertQueue();
    const auto inserted = std::exchange(m_d->inserted, {});
    const auto updated = m_d->updated;
    const auto deleted = m_d->deleted;
    for (const auto &object : updated) {
        refreshObject(object.get(), /*mergeChanges=*/false);
    }
    for (const auto &object : deleted) {
        refreshObject(object.get(), /*mergeChanges=*/false);
    }
    // Objects that were only pointed at hold relationship changes too.
    const auto holders = m_d->withPending;
    for (NSManagedObject *object : holders) {
        if (!object->isInserted()) {
            Access::pending(*object).reset();
            m_d->withPending.remove(object);
        }
    }
    for (const auto &object : inserted) {
        m_d->noteGone(object);
        m_d->kill(*object);
    }
    if (objectsDidChange.isEmpty()) {
        m_d->untold = {}; // nobody to tell, and nothing to hold
    }
}

bool NSManagedObjectContext::obtainPermanentIDsForObjects(const QList<Ref<NSManagedObject>> &objects, NSError *error)
{
    m_d->assertQueue();
    QList<NSManagedObjectID> temporaryIDs;
    for (const auto &object : objects) {
        if (object->objectID().isTemporaryID() &&
            !(m_d->coordinator->resolvedID(object->objectID()).isTemporaryID() == false)) {
            temporaryIDs.append(object->objectID());
        }
    }
    if (!temporaryIDs.isEmpty()) {
        const auto permanentIDs = m_d->store()->reserveIdentities(temporaryIDs, error);
        if (!permanentIDs) {
            return false;
        }
        m_d->coordinator->recordPermanentIDs(*permanentIDs);
        m_d->rekey(*permanentIDs);
        // Contexts above that know the objects already must not save them under another key.
        for (auto above = m_d->parent; above; above = above->m_d->parent) {
            above->performBlockAndWait([&] { above->m_d->rekey(*permanentIDs); });
        }
    }
    m_d->adoptPermanentIDs();
    return true;
}

void NSManagedObjectContext::Private::adoptPermanentIDs()
{
    QHash<NSManagedObjectID, NSManagedObjectID> permanentIDs;
    for (auto entry = registered.cbegin(); parent && entry != registered.cend(); ++entry) {
        if (entry.key().isTemporaryID()) {
            const NSManagedObjectID resolved = coordinator->resolvedID(entry.key());
            if (!resolved.isTemporaryID()) {
                permanentIDs.insert(entry.key(), resolved);
            }
        }
    }
    if (!permanentIDs.isEmpty()) {
        rekey(permanentIDs);
    }
}

void NSManagedObjectContext::Private::rekey(const QHash<NSManagedObjectID, NSManagedObjectID> &permanentIDs)
{
    for (auto entry = permanentIDs.cbegin(); entry != permanentIDs.cend(); ++entry) {
        if (NSManagedObject *object = registered.take(entry.key())) {
            Access::setIdentity(*object, entry.value());
            registered.insert(entry.value(), object);
        }
    }
    const auto fixedSet = [&permanentIDs](QSet<NSManagedObjectID> &identities) {
        for (const NSManagedObjectID &identity : QSet<NSManagedObjectID>(identities)) {
            if (const auto found = permanentIDs.constFind(identity); found != permanentIDs.constEnd()) {
                identities.remove(identity);
                identities.insert(*found);
            }
        }
    };
    const auto fixedRow = [&permanentIDs](quib::RowSnapshotRef &row) {
        if (!row) {
            return;
        }
        for (const NSRelationshipDescription &relationship : row->entity()->relationships()) {
            if (relationship.isToMany || !row->isPresent(relationship.slot) ||
                row->targetKeyAt(relationship.slot) >= 0) {
                continue;
            }
            const auto found = permanentIDs.constFind(row->targetAt(relationship.slot));
            if (found != permanentIDs.constEnd()) {
                row.edit()->setTargetAt(relationship.slot, *found);
            }
        }
    };
    for (NSManagedObject *object : std::as_const(withPending)) {
        auto &pending = *Access::pending(*object);
        for (auto state = pending.toMany.begin(); state != pending.toMany.end(); ++state) {
            fixedSet(state->added);
            fixedSet(state->removed);
            if (state->base) {
                for (NSManagedObjectID &identity : *state->base) {
                    identity = permanentIDs.value(identity, identity);
                }
            }
        }
        fixedRow(pending.base);
    }
    for (NSManagedObject *object : std::as_const(registered)) {
        if (object->hasChanges() || object->objectID().isTemporaryID() || withPending.contains(object)) {
            fixedRow(Access::row(*object));
        }
    }
    for (const auto &object : std::as_const(inserted)) {
        fixedRow(Access::row(*object));
    }
}

// Pending changes and their telling

bool NSManagedObjectContext::hasChanges() const
{
    m_d->assertQueue();
    return m_d->hasChanges();
}

NSManagedObjectSet NSManagedObjectContext::insertedObjects() const
{
    m_d->assertQueue();
    return m_d->inserted;
}

NSManagedObjectSet NSManagedObjectContext::updatedObjects() const
{
    m_d->assertQueue();
    return m_d->updated;
}

NSManagedObjectSet NSManagedObjectContext::deletedObjects() const
{
    m_d->assertQueue();
    return m_d->deleted;
}

void NSManagedObjectContext::Private::noteInserted(NSManagedObject &object)
{
    const Ref<NSManagedObject> reference(&object);
    Access::set(object, Access::Inserted, true);
    inserted.insert(reference);
    untold.inserted.insert(reference);
    scheduleTelling();
}

void NSManagedObjectContext::Private::markUpdated(const Ref<NSManagedObject> &object)
{
    if (object->isInserted() || object->isDeleted()) {
        return;
    }
    const auto *pending = Access::pendingIfAny(*object);
    const bool isChanged = pending != nullptr && pending->hasChanges();
    Access::set(*object, Access::Updated, isChanged);
    if (isChanged) {
        updated.insert(object);
    } else {
        updated.remove(object);
    }
}

void NSManagedObjectContext::Private::noteUpdated(NSManagedObject &object)
{
    if (object.isDeleted()) {
        return;
    }
    const Ref<NSManagedObject> reference(&object);
    markUpdated(reference);
    if (!untold.inserted.contains(reference)) {
        untold.updated.insert(reference);
    }
    scheduleTelling();
}

void NSManagedObjectContext::Private::noteDeleted(NSManagedObject &object)
{
    const Ref<NSManagedObject> reference(&object);
    untold.updated.remove(reference);
    untold.refreshed.remove(reference);
    Access::set(object, Access::Updated, false);
    updated.remove(reference);
    if (object.isInserted()) {
        // Never stored: nothing is left to delete, unless the parent knows it by an earlier save.
        Access::set(object, Access::Inserted, false);
        inserted.remove(reference);
        noteGone(reference);
        kill(object);
        return;
    }
    Access::set(object, Access::Deleted, true);
    deleted.insert(reference);
    untold.deleted.insert(reference);
    scheduleTelling();
}

void NSManagedObjectContext::Private::noteGone(const Ref<NSManagedObject> &object)
{
    untold.updated.remove(object);
    untold.refreshed.remove(object);
    if (!untold.inserted.remove(object)) {
        untold.deleted.insert(object);
    }
    scheduleTelling();
}

void NSManagedObjectContext::Private::noteRefreshed(NSManagedObject &object)
{
    if (self->objectsDidChange.isEmpty()) {
        return; // nobody to tell: an object is not held for it
    }
    const Ref<NSManagedObject> reference(&object);
    if (!untold.inserted.contains(reference) && !untold.updated.contains(reference) &&
        !untold.deleted.contains(reference)) {
        untold.refreshed.insert(reference);
    }
    scheduleTelling();
}

void NSManagedObjectContext::Private::scheduleTelling()
{
    if (isTellingScheduled || (self->objectsDidChange.isEmpty() && keptAlive.isEmpty())) {
        return;
    }
    isTellingScheduled = true;
    queue->async([weak = self->weak_from_this()] {
        if (const auto context = weak.lock()) {
            context->processPendingChanges();
        }
    });
}

void NSManagedObjectContext::processPendingChanges()
{
    m_d->assertQueue();
    m_d->isTellingScheduled = false;
    const auto kept = std::exchange(m_d->keptAlive, {});
    const Changes changes = std::exchange(m_d->untold, {});
    if (!changes.inserted.isEmpty() || !changes.updated.isEmpty() || !changes.deleted.isEmpty() ||
        !changes.refreshed.isEmpty()) {
        objectsDidChange.notify(*this, changes);
    }
}
