#include "NSManagedObjectContext.h"
#include "NSManagedObjectContext_p.h"

#include <Foundation/Assert.h>

using namespace Qt::StringLiterals;
using Access = NSManagedObjectAccess;
using quib::Ref;
using quib::SaveConflict;
using quib::SaveRequest;
using quib::SaveResult;

namespace {

/// How often handlers may change more before a save, and how often a save may meet another writer.
constexpr int kMaximumRounds = 100;
constexpr int kMaximumConflicts = 20;

constexpr quint64 bit(int slot)
{
    return quint64{1} << slot;
}

QList<Ref<NSManagedObject>> oldestFirst(const NSManagedObjectSet &objects)
{
    QList<Ref<NSManagedObject>> list(objects.cbegin(), objects.cend());
    std::sort(list.begin(), list.end(), [](const auto &a, const auto &b) {
        return std::abs(a->objectID().key()) < std::abs(b->objectID().key());
    });
    return list;
}

std::vector<bool> slotsOfMask(quint64 mask, int count)
{
    std::vector<bool> changed(static_cast<size_t>(count));
    for (int slot = 0; slot < count; ++slot) {
        changed[static_cast<size_t>(slot)] = (mask & bit(slot)) != 0;
    }
    return changed;
}

void copySlot(quib::RowSnapshotRef &to, const quib::RowSnapshot &from, int slot)
{
    if (from.entity()->slotLayout(slot).relationship != nullptr) {
        to.edit()->setTargetAt(slot, from.targetAt(slot));
    } else {
        to.edit()->setValueAt(slot, from.valueAt(slot));
    }
}

} // namespace

bool NSManagedObjectContext::save(NSError *error)
{
    QUIB_REQUIRE(m_d->queue->isCurrent());
    // Kept alive: an observer may let go of the context.
    const auto self = shared_from_this();
    processPendingChanges();
    if (!m_d->hasChanges()) {
        return true;
    }
    if (!m_d->runWillSave(error)) {
        return false;
    }
    if (!m_d->hasChanges()) {
        return true;
    }
    return m_d->parent ? m_d->saveToParent(error) : m_d->saveToStore(error);
}

bool NSManagedObjectContext::Private::runWillSave(NSError *error)
{
    const auto state = [this] {
        quint64 mask = 0;
        for (const auto *set : {&inserted, &updated}) {
            for (const auto &object : *set) {
                if (const auto *pending = Access::pendingIfAny(*object)) {
                    mask = mask * 31 + pending->changedSlots + static_cast<quint64>(pending->toMany.size());
                }
            }
        }
        return std::tuple(inserted, updated, deleted, mask);
    };
    // The observers speak once; the objects' own hooks run until nothing changes any more.
    self->willSave.notify(*self);
    for (int round = 0; round < kMaximumRounds; ++round) {
        const auto before = state();
        for (const auto &set : {inserted, updated, deleted}) {
            for (const auto &object : set) {
                if (object->hasChanges()) {
                    Access::willSave(*object);
                }
            }
        }
        if (state() == before) {
            self->processPendingChanges();
            return true;
        }
    }
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PersistentStoreSave),
                         u"objects keep changing before the save"_s);
}

SaveRequest NSManagedObjectContext::Private::makeSaveRequest() const
{
    SaveRequest request;
    for (const auto &object : oldestFirst(inserted)) {
        request.insertions.append({object->objectID(), Access::row(*object)});
    }
    const auto addJoins = [&request](const NSManagedObject &object) {
        const auto *pending = Access::pendingIfAny(object);
        if (pending == nullptr) {
            return;
        }
        for (auto state = pending->toMany.cbegin(); state != pending->toMany.cend(); ++state) {
            const auto &relationship = object.entity()->relationships()[static_cast<size_t>(state.key())];
            if (!relationship.isManyToMany() || !relationship.ownsJoinTable) {
                continue; // the other side, or the other row's key, tells the change
            }
            for (const NSManagedObjectID &target : state->added) {
                request.joinChanges.append({&relationship, object.objectID(), target, /*isInsertion=*/true});
            }
            for (const NSManagedObjectID &target : state->removed) {
                request.joinChanges.append({&relationship, object.objectID(), target, /*isInsertion=*/false});
            }
        }
    };
    for (const auto &object : oldestFirst(updated)) {
        const auto *pending = Access::pendingIfAny(*object);
        if (pending->changedSlots == 0) {
            continue;
        }
        if (reinsertions.contains(object->objectID())) {
            request.insertions.append({object->objectID(), Access::row(*object), /*isReinsertion=*/true});
        } else {
            request.updates.append({object->objectID(), Access::row(*object)->version(), Access::row(*object),
                                    slotsOfMask(pending->changedSlots, object->entity()->slotCount())});
        }
    }
    for (const auto *set : {&inserted, &updated}) {
        for (const auto &object : *set) {
            addJoins(*object);
        }
    }
    for (const auto &object : oldestFirst(deleted)) {
        if (object->objectID().isTemporaryID()) {
            continue;
        }
        const auto &row = Access::row(*object);
        request.deletions.append(
            {object->objectID(), row ? row->version() : 0, !row || forcedDeletions.contains(object->objectID())});
    }
    return request;
}

bool NSManagedObjectContext::Private::saveToStore(NSError *error)
{
    forcedDeletions.clear();
    reinsertions.clear();
    QList<NSMergeLoss> losses;
    std::optional<Changed> before; // settling changes what is pending, which a failure must not
    const auto fail = [&] {
        if (before) {
            restore(*before);
        }
        return false;
    };
    for (int attempt = 0; attempt < kMaximumConflicts; ++attempt) {
        const SaveRequest request = makeSaveRequest();
        const SaveResult result = store()->save(request);
        if (result.outcome == SaveResult::Outcome::Failed) {
            if (error != nullptr) {
                *error = result.error;
            }
            return fail();
        }
        if (result.outcome == SaveResult::Outcome::Saved) {
            Changes changes{inserted, updated, deleted, {}};
            finishSave(&result, changes);
            if (!losses.isEmpty()) {
                self->mergeLosses.notify(*self, losses);
            }
            return true;
        }
        if (!before) {
            before = changed();
        }
        for (const SaveConflict &conflict : result.conflicts) {
            if (!settle(conflict, &losses, error)) {
                return fail();
            }
        }
    }
    NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::ManagedObjectMerge),
                  u"other writers keep changing the same rows"_s);
    return fail();
}

bool NSManagedObjectContext::Private::settle(const SaveConflict &conflict, QList<NSMergeLoss> *losses, NSError *error)
{
    NSManagedObject *object = registered.value(conflict.objectID);
    QUIB_ASSERT(object != nullptr);
    if (mergePolicy == NSMergePolicy::Error) {
        return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::ManagedObjectMerge),
                             u"%1 was changed by another writer"_s.arg(object->entity()->name()));
    }
    if (object->isDeleted()) {
        // A deletion was asked for by name; what somebody else changed meanwhile goes with the row.
        forcedDeletions.insert(conflict.objectID);
        return true;
    }
    auto &pending = *Access::pending(*object);
    auto &mine = Access::row(*object);
    const auto *entity = object->entity();
    const bool storeWins = mergePolicy == NSMergePolicy::MergeByPropertyStoreTrump;
    const auto lose = [&](int slot) {
        const auto &attributes = entity->attributes();
        if (static_cast<size_t>(slot) < attributes.size()) {
            losses->append(
                {Ref<NSManagedObject>(object), attributes[static_cast<size_t>(slot)].name, mine->valueAt(slot)});
        }
    };
    if (!conflict.storeRow) {
        if (!storeWins) {
            reinsertions.insert(conflict.objectID);
            return true;
        }
        for (int slot = 0; slot < entity->slotCount(); ++slot) {
            if ((pending.changedSlots & bit(slot)) != 0) {
                lose(slot);
            }
        }
        const Ref<NSManagedObject> kept(object);
        // Gone from the store: gone here, together with what it was related to.
        for (const NSRelationshipDescription &relationship : entity->relationships()) {
            if (relationship.isToMany) {
                object->setTargetObjectsForKey({}, relationship.name);
            } else {
                object->setTargetObjectForKey(nullptr, relationship.name);
            }
        }
        Access::set(*object, Access::Updated, false);
        updated.remove(kept);
        untold.updated.remove(kept);
        Access::set(*object, Access::Deleted, true);
        deleted.insert(kept);
        untold.deleted.insert(kept);
        forcedDeletions.insert(conflict.objectID);
        return true;
    }
    // Three ways: what the row held when it was read here, what it holds here now, what the store holds now.
    const quib::RowSnapshot &theirs = *conflict.storeRow;
    quib::RowSnapshotRef merged = mine;
    const auto takeTheirs = [&](int slot) {
        if (const auto *relationship = entity->slotLayout(slot).relationship; relationship != nullptr) {
            const NSManagedObjectID from = mine->isPresent(slot) ? mine->targetAt(slot) : NSManagedObjectID();
            if (const NSManagedObjectID to = theirs.targetAt(slot); !(from == to)) {
                Access::moveStoredTarget(*object, entity->relationships()[static_cast<size_t>(relationship->index)],
                                         from, to);
            }
        }
        copySlot(merged, theirs, slot);
    };
    for (int slot = 0; slot < entity->slotCount(); ++slot) {
        const bool isMine = (pending.changedSlots & bit(slot)) != 0;
        if (!theirs.isPresent(slot)) {
            if (!isMine && merged->isPresent(slot)) {
                merged.edit()->setAbsent(slot); // a lazy value of the row as it was
            }
            continue;
        }
        if (!isMine) {
            takeTheirs(slot);
            continue;
        }
        const bool isTheirs = !pending.base || !theirs.slotEquals(slot, *pending.base);
        if (isTheirs && storeWins && !theirs.slotEquals(slot, *mine)) {
            lose(slot);
            takeTheirs(slot);
            pending.changedSlots &= ~bit(slot);
        }
    }
    merged.edit()->setVersion(theirs.version());
    mine = merged;
    pending.base = conflict.storeRow;
    noteUpdated(*object);
    return true;
}

void NSManagedObjectContext::Private::finishSave(const SaveResult *result, const Changes &changes)
{
    if (result != nullptr) {
        coordinator->recordPermanentIDs(result->permanentIDs);
        rekey(result->permanentIDs);
    }
    for (const auto &set : {changes.inserted, changes.updated}) {
        for (const auto &object : set) {
            if (object->managedObjectContext() != self) {
                continue;
            }
            Access::set(*object, Access::Inserted, false);
            Access::set(*object, Access::Updated, false);
            auto &pending = Access::pending(*object);
            if (pending) {
                for (auto state = pending->toMany.begin(); state != pending->toMany.end();) {
                    if (state->base) {
                        const auto current = Access::targets(*object, state.key());
                        state->base = current;
                        state->added.clear();
                        state->removed.clear();
                        ++state;
                    } else {
                        state = pending->toMany.erase(state);
                    }
                }
                pending->base = {};
                pending->changedSlots = 0;
                if (pending->toMany.isEmpty()) {
                    pending.reset();
                    withPending.remove(object.get());
                }
            }
            if (result != nullptr && result->adoptedIDs.contains(object->objectID())) {
                // Another writer's row: what it holds is read when asked for.
                Access::row(*object) = {};
                Access::pending(*object).reset();
                withPending.remove(object.get());
                continue;
            }
            if (result != nullptr) {
                const auto version = result->versions.constFind(object->objectID());
                if (version != result->versions.constEnd()) {
                    Access::row(*object).edit()->setVersion(*version);
                }
            }
        }
    }
    inserted.clear();
    updated.clear();
    deleted.clear();
    self->processPendingChanges();
    for (const auto &object : changes.deleted) {
        if (object->managedObjectContext() == self) {
            unregister(*object);
        }
    }
    self->didSave.notify(*self, changes);
    for (const auto &set : {changes.inserted, changes.updated, changes.deleted}) {
        for (const auto &object : set) {
            Access::didSave(*object);
        }
    }
    for (const auto &object : changes.deleted) {
        if (object->managedObjectContext() == self) {
            kill(*object);
        }
    }
}

bool NSManagedObjectContext::Private::saveToParent(NSError * /*error*/)
{
    adoptPermanentIDs();
    const Changes changes{inserted, updated, deleted, {}};
    parent->performBlockAndWait([this] { parent->m_d->takeFromChild(*this); });
    finishSave(nullptr, changes);
    return true;
}
