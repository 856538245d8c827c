#include "NSManagedObjectContext.h"
#include "NSManagedObjectContext_p.h"

using Access = NSManagedObjectAccess;
using quib::Ref;

// What another process wrote arrives here, in a context that may have changes of its own.

void NSManagedObjectContext::mergeChangesFromRemoteContextSave(
    const QList<NSManagedObjectID> &inserted, const QList<NSManagedObjectID> &updated,
    const QList<NSManagedObjectID> &deleted, const QList<std::shared_ptr<NSManagedObjectContext>> &intoContexts)
{
    const QSet<NSManagedObjectID> gone(deleted.cbegin(), deleted.cend());
    for (const auto &context : intoContexts) {
        context->performBlockAndWait([&] {
            auto &d = *context->m_d;
            QList<NSManagedObjectID> present;
            for (const NSManagedObjectID &objectID : inserted) {
                if (!gone.contains(objectID)) {
                    d.takeRemoteInsertion(objectID);
                    present.append(objectID);
                }
            }
            for (const NSManagedObjectID &objectID : updated) {
                if (!gone.contains(objectID)) {
                    d.takeRemoteUpdate(objectID);
                    present.append(objectID);
                }
            }
            d.forgetInverses(present);
            d.takeRemoteDeletions(deleted);
            context->processPendingChanges();
        });
    }
}

void NSManagedObjectContext::Private::takeRemoteInsertion(const NSManagedObjectID &objectID)
{
    const auto object = self->existingObjectWithID(objectID);
    if (!object) {
        return;
    }
    untold.inserted.insert(object);
    for (const NSRelationshipDescription &relationship : object->entity()->relationships()) {
        if (!relationship.isToMany && Access::row(*object)->isPresent(relationship.slot)) {
            Access::moveStoredTarget(*object, relationship, {}, Access::row(*object)->targetAt(relationship.slot));
        }
    }
}

void NSManagedObjectContext::Private::takeRemoteUpdate(const NSManagedObjectID &objectID)
{
    const Ref<NSManagedObject> object(known(objectID));
    if (!object) {
        // Observers may want an object that nobody held so far, such as a row that enters a list.
        if (const auto read = self->objectsDidChange.isEmpty() ? nullptr : self->existingObjectWithID(objectID)) {
            noteRefreshed(*read);
        }
        return;
    }
    if (object->isInserted() || object->isDeleted()) {
        return;
    }
    NSError error;
    const auto stored = currentRow(objectID, &error);
    if (!stored || !stored->snapshot) {
        return;
    }
    if (!object->hasChanges()) {
        Access::pending(*object).reset();
        withPending.remove(object.get());
    } else if (isContested(*object, stored->snapshot)) {
        return;
    }
    const quib::RowSnapshotRef former = Access::row(*object);
    takeRow(*object, stored->snapshot);
    for (const NSRelationshipDescription &relationship : object->entity()->relationships()) {
        if (former && !relationship.isToMany && former->isPresent(relationship.slot)) {
            const NSManagedObjectID from = former->targetAt(relationship.slot);
            const NSManagedObjectID to = Access::row(*object)->targetAt(relationship.slot);
            if (!(from == to)) {
                Access::moveStoredTarget(*object, relationship, from, to);
            }
        }
    }
}

bool NSManagedObjectContext::Private::isContested(const NSManagedObject &object, const quib::RowSnapshotRef &stored)
{
    const auto *pending = Access::pendingIfAny(object);
    if (pending == nullptr || pending->changedSlots == 0) {
        return false;
    }
    if (!pending->base || pending->base->version() == stored->version()) {
        return !pending->base;
    }
    quib::RowSnapshotRef theirs = stored;
    for (int slot = 0; slot < object.entity()->slotCount(); ++slot) {
        if ((pending->changedSlots >> slot & 1) == 0) {
            continue;
        }
        if (!theirs->isPresent(slot)) {
            NSError error;
            const auto lazy = currentLazyValue(object.objectID(), slot, &error);
            if (!lazy || lazy->version != stored->version()) {
                return true; // it is being written at this moment
            }
            theirs.edit()->setValueAt(slot, lazy->value);
        }
        if (!theirs->slotEquals(slot, *pending->base)) {
            return true;
        }
    }
    return false;
}

void NSManagedObjectContext::Private::forgetInverses(const QList<NSManagedObjectID> &objectIDs)
{
    QHash<const NSEntityDescription *, QList<NSManagedObjectID>> byEntity;
    for (const NSManagedObjectID &objectID : objectIDs) {
        byEntity[objectID.entity()].append(objectID);
    }
    for (auto group = byEntity.cbegin(); group != byEntity.cend(); ++group) {
        for (const NSRelationshipDescription &relationship : group.key()->relationships()) {
            const auto *inverse = relationship.inverse;
            const bool isCached = relationship.isManyToMany() && inverse != nullptr &&
                                  std::any_of(withPending.cbegin(), withPending.cend(), [&](NSManagedObject *object) {
                                      return object->entity()->isKindOfEntity(relationship.destinationEntity) &&
                                             Access::pendingIfAny(*object)->toMany.contains(inverse->index);
                                  });
            if (!isCached || parent) {
                continue;
            }
            NSError error;
            const auto targets = store()->targetsForObjects(group.value(), &relationship, &error);
            if (!targets) {
                continue;
            }
            for (const QList<NSManagedObjectID> &joined : *targets) {
                for (const NSManagedObjectID &targetID : joined) {
                    NSManagedObject *target = registered.value(targetID);
                    if (target == nullptr || !Access::pendingIfAny(*target)) {
                        continue;
                    }
                    auto &toMany = Access::pending(*target)->toMany;
                    const auto state = toMany.find(inverse->index);
                    if (state != toMany.end() && state->base) {
                        state->base.reset();
                        noteRefreshed(*target);
                    }
                }
            }
        }
    }
}

void NSManagedObjectContext::Private::takeRemoteDeletions(const QList<NSManagedObjectID> &objectIDs)
{
    QSet<NSManagedObjectID> killed;
    for (const NSManagedObjectID &objectID : objectIDs) {
        const Ref<NSManagedObject> object(known(objectID));
        if (!object || object->isInserted()) {
            continue;
        }
        const auto *pending = Access::pendingIfAny(*object);
        if (!object->isDeleted() && pending != nullptr && pending->changedSlots != 0) {
            continue; // its save finds the row gone and tells what was lost
        }
        updated.remove(object);
        deleted.remove(object);
        noteGone(object);
        killed.insert(object->objectID());
        kill(*object);
    }
    if (killed.isEmpty()) {
        return;
    }
    const auto isKilled = [&killed](const NSManagedObjectID &objectID) { return killed.contains(objectID); };
    QList<Ref<NSManagedObject>> holders;
    for (NSManagedObject *holder : std::as_const(withPending)) {
        bool isFound = false;
        for (auto &state : Access::pending(*holder)->toMany) {
            const qsizetype before = (state.base ? state.base->size() : 0) + state.added.size() + state.removed.size();
            if (state.base) {
                state.base->removeIf(isKilled);
            }
            state.added.removeIf(isKilled);
            state.removed.removeIf(isKilled);
            isFound =
                isFound || before != (state.base ? state.base->size() : 0) + state.added.size() + state.removed.size();
        }
        if (isFound) {
            holders.append(Ref<NSManagedObject>(holder));
        }
    }
    for (const auto &holder : std::as_const(holders)) {
        markUpdated(holder);
        noteRefreshed(*holder);
    }
}
