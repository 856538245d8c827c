#include "NSManagedObjectContext.h"
#include "NSManagedObjectContext_p.h"

using Access = NSManagedObjectAccess;
using quib::Ref;

// What a child saves arrives here, in its parent, which may have moved on since the child read.

void NSManagedObjectContext::Private::takeFromChild(Private &child)
{
    adoptPermanentIDs();
    // Held until all is taken, so that both sides of a relationship are found.
    QList<Ref<NSManagedObject>> kept;
    takeInserted(child, &kept);
    takeUpdated(child, &kept);
    takeJoins(child);
    takeDeleted(child);
}

Ref<NSManagedObject> NSManagedObjectContext::Private::targetForChild(const NSManagedObjectID &objectID)
{
    NSManagedObject *object = objectID.isNull() ? nullptr : known(objectID);
    if (object != nullptr) {
        return object->isDeleted() ? nullptr : Ref<NSManagedObject>(object);
    }
    return self->existingObjectWithID(objectID);
}

void NSManagedObjectContext::Private::takeInserted(Private &child, QList<Ref<NSManagedObject>> *kept)
{
    const qsizetype first = kept->size();
    for (const auto &theirs : child.inserted) {
        kept->append(makeObject(theirs->objectID(), Access::row(*theirs)));
        noteInserted(*kept->last());
    }
    // All are there now: their targets may be among them, or deleted here meanwhile.
    for (qsizetype i = first; i < kept->size(); ++i) {
        NSManagedObject &object = *kept->at(i);
        for (const NSRelationshipDescription &relationship : object.entity()->relationships()) {
            const NSManagedObjectID wanted =
                relationship.isToMany ? NSManagedObjectID() : Access::row(object)->targetAt(relationship.slot);
            if (wanted.isNull()) {
                continue;
            }
            const auto target = targetForChild(wanted);
            const NSManagedObjectID found = target ? target->objectID() : NSManagedObjectID();
            if (!(found == wanted)) {
                Access::row(object).edit()->setTargetAt(relationship.slot, found);
            }
            if (target) {
                Access::changeOtherSide(object, relationship, *target, /*isJoining=*/true);
                kept->append(target);
            }
        }
    }
}

void NSManagedObjectContext::Private::takeUpdated(Private &child, QList<Ref<NSManagedObject>> *kept)
{
    for (const auto &theirs : child.updated) {
        const auto object = targetForChild(theirs->objectID());
        if (!object) {
            continue; // deleted here meanwhile
        }
        kept->append(object);
        const quint64 changedSlots = Access::pendingIfAny(*theirs)->changedSlots;
        const auto &row = Access::row(*theirs);
        for (int slot = 0; changedSlots >> slot != 0; ++slot) {
            if ((changedSlots >> slot & 1) == 0) {
                continue;
            }
            const auto *relationship = theirs->entity()->slotLayout(slot).relationship;
            if (relationship == nullptr) {
                Access::setSlot(*object, slot, row->valueAt(slot)); // the child's word is the later one
                continue;
            }
            const auto target = targetForChild(row->targetAt(slot));
            object->setTargetObjectForKey(target, relationship->name);
        }
    }
}

void NSManagedObjectContext::Private::takeJoins(const Private &child)
{
    for (const auto *set : {&child.inserted, &child.updated}) {
        for (const auto &theirs : *set) {
            NSManagedObject *object = known(theirs->objectID());
            const auto *pending = Access::pendingIfAny(*theirs);
            if (object == nullptr || pending == nullptr || object->isDeleted()) {
                continue;
            }
            for (auto state = pending->toMany.cbegin(); state != pending->toMany.cend(); ++state) {
                const auto &relationship = object->entity()->relationships()[static_cast<size_t>(state.key())];
                if (!relationship.isManyToMany()) {
                    continue; // the to-one side told it
                }
                // The child recorded both sides, and each is taken as it was recorded.
                for (const NSManagedObjectID &identity : state->added) {
                    const NSManagedObject *target = known(identity);
                    if (target != nullptr && !target->isDeleted()) {
                        Access::addTarget(*object, state.key(), target->objectID());
                    }
                }
                for (const NSManagedObjectID &identity : state->removed) {
                    Access::removeTarget(*object, state.key(), coordinator->resolvedID(identity));
                }
            }
        }
    }
}

void NSManagedObjectContext::Private::takeDeleted(Private &child)
{
    QList<Ref<NSManagedObject>> objects;
    for (const auto &theirs : child.deleted) {
        if (auto object = targetForChild(theirs->objectID())) {
            // Prepared in the child, and not again here.
            Access::set(*object, Access::Deleting, true);
            objects.append(std::move(object));
        }
    }
    for (const auto &object : std::as_const(objects)) {
        for (const NSRelationshipDescription &relationship : object->entity()->relationships()) {
            if (relationship.deleteRule == NSDeleteRule::Cascade) {
                deleteTargets(*object, relationship); // what came here since the child looked
            }
            if (relationship.isToMany) {
                object->setTargetObjectsForKey({}, relationship.name);
            } else {
                object->setTargetObjectForKey(nullptr, relationship.name);
            }
        }
        noteDeleted(*object);
    }
}

NSManagedObjectContext::Private::Changed NSManagedObjectContext::Private::changed() const
{
    Changed changed{{}, inserted, updated, deleted, untold};
    NSManagedObjectSet objects = inserted + updated + deleted;
    for (NSManagedObject *object : withPending) {
        objects.insert(Ref<NSManagedObject>(object));
    }
    for (const auto &object : std::as_const(objects)) {
        const auto *pending = Access::pendingIfAny(*object);
        changed.objects.append({object, Access::row(*object), Access::flags(*object),
                                pending != nullptr ? std::optional(*pending) : std::nullopt});
    }
    return changed;
}

void NSManagedObjectContext::Private::restore(const Changed &changed)
{
    // What was untouched before goes back to its row; all else is set below.
    for (NSManagedObject *object : QSet<NSManagedObject *>(withPending)) {
        auto &pending = Access::pending(*object);
        if (pending->changedSlots != 0 && pending->base) {
            Access::row(*object) = pending->base;
        }
        Access::set(*object, Access::Updated, false);
        pending.reset();
    }
    withPending.clear();
    for (const Changed::Object &state : changed.objects) {
        Access::row(*state.object) = state.row;
        Access::flags(*state.object) = state.flags;
        if (state.pending) {
            Access::pending(*state.object) = std::make_unique<NSManagedObject::Pending>(*state.pending);
            withPending.insert(state.object.get());
        }
    }
    // Kept until the end: the old sets may hold the last references.
    const auto settled = std::tuple(inserted, updated, deleted, untold);
    inserted = changed.inserted;
    updated = changed.updated;
    deleted = changed.deleted;
    untold = changed.untold;
}
