#include "NSManagedObject.h"
#include "NSManagedObjectContext_p.h"

#include <Foundation/Assert.h>

using Access = NSManagedObjectAccess;
using quib::Ref;

// The sides of a relationship are changed together, by the functions at the end; what stands first changes one side.

Access::ToMany &Access::toMany(NSManagedObject &object, int index)
{
    return ensurePending(object).toMany[index];
}

void Access::loadBase(NSManagedObject &object, int index)
{
    ToMany &state = toMany(object, index);
    if (state.base) {
        return;
    }
    if (has(object, Inserted)) {
        state.base.emplace();
        return;
    }
    NSError error;
    auto stored = context(object).currentTargets(object.m_objectID, index, &error);
    // The reading may have made the object hold more; the reference from before is not used again.
    toMany(object, index).base = stored ? std::move(*stored) : QList<NSManagedObjectID>();
}

QList<NSManagedObjectID> Access::targets(const NSManagedObject &object, int index)
{
    auto &self = const_cast<NSManagedObject &>(object);
    loadBase(self, index);
    const ToMany &state = toMany(self, index);
    if (!state.hasChanges()) {
        return *state.base;
    }
    QList<NSManagedObjectID> current;
    current.reserve(state.base->size() + state.added.size());
    for (const NSManagedObjectID &target : *state.base) {
        if (!state.removed.contains(target)) {
            current.append(target);
        }
    }
    QList<NSManagedObjectID> added(state.added.cbegin(), state.added.cend());
    if (!state.base->isEmpty()) {
        const QSet<NSManagedObjectID> base(state.base->cbegin(), state.base->cend());
        added.removeIf([&base](const NSManagedObjectID &target) { return base.contains(target); });
    }
    // Newest last: temporary keys count downwards.
    std::sort(added.begin(), added.end(), [](const NSManagedObjectID &a, const NSManagedObjectID &b) {
        return a.isTemporaryID() != b.isTemporaryID() ? b.isTemporaryID() : std::abs(a.key()) < std::abs(b.key());
    });
    return current + added;
}

void Access::addTarget(NSManagedObject &object, int index, const NSManagedObjectID &target)
{
    ToMany &state = toMany(object, index);
    const bool wasRemoved = state.removed.remove(target);
    if (!wasRemoved || (state.base && !state.base->contains(target))) {
        if (!state.base || !state.base->contains(target)) {
            state.added.insert(target);
        }
    }
    context(object).noteUpdated(object);
}

void Access::removeTarget(NSManagedObject &object, int index, const NSManagedObjectID &target)
{
    ToMany &state = toMany(object, index);
    const bool wasAdded = state.added.remove(target);
    if (!wasAdded || (state.base && state.base->contains(target))) {
        if (!state.base || state.base->contains(target)) {
            state.removed.insert(target);
        }
    }
    context(object).noteUpdated(object);
}

void Access::changeOtherSide(NSManagedObject &object, const NSRelationshipDescription &relationship,
                             NSManagedObject &target, bool isJoining)
{
    const auto *inverse = relationship.inverse;
    if (inverse == nullptr) {
        return;
    }
    if (inverse->isToMany) {
        if (isJoining) {
            Access::addTarget(target, inverse->index, object.objectID());
        } else {
            Access::removeTarget(target, inverse->index, object.objectID());
        }
        return;
    }
    const NSManagedObjectID now = target.targetObjectForKey(inverse->name)
                                      ? target.targetObjectForKey(inverse->name)->objectID()
                                      : NSManagedObjectID();
    if (isJoining) {
        if (!now.isNull() && !(now == object.objectID())) {
            // The target leaves the one it belonged to.
            if (const auto former = target.targetObjectForKey(inverse->name)) {
                if (relationship.isToMany) {
                    Access::removeTarget(*former, relationship.index, target.objectID());
                } else {
                    Access::setTargetSlot(*former, relationship, {});
                }
            }
        }
        Access::setTargetSlot(target, *inverse, object.objectID());
    } else if (now == object.objectID()) {
        Access::setTargetSlot(target, *inverse, {});
    }
}

void Access::moveStoredTarget(NSManagedObject &object, const NSRelationshipDescription &relationship,
                              const NSManagedObjectID &from, const NSManagedObjectID &to)
{
    const auto *inverse = relationship.inverse;
    if (inverse == nullptr || !inverse->isToMany) {
        return;
    }
    auto &owner = context(object);
    const auto change = [&](const NSManagedObjectID &targetID, bool isJoining) {
        NSManagedObject *target = targetID.isNull() ? nullptr : owner.known(targetID);
        const auto found = target != nullptr && target->m_pending ? target->m_pending->toMany.find(inverse->index)
                                                                  : QMap<int, ToMany>::iterator();
        if (target == nullptr || !target->m_pending || found == target->m_pending->toMany.end()) {
            return; // not read yet, so that nothing can be out of date
        }
        found->added.remove(object.m_objectID);
        found->removed.remove(object.m_objectID);
        if (found->base) {
            found->base->removeAll(object.m_objectID);
            if (isJoining) {
                found->base->append(object.m_objectID);
            }
        }
        const Ref<NSManagedObject> kept(target);
        owner.markUpdated(kept);
        owner.noteRefreshed(*target);
    };
    change(from, /*isJoining=*/false);
    change(to, /*isJoining=*/true);
}

Ref<NSManagedObject> NSManagedObject::targetAtIndex(int relationship) const
{
    const auto *row =
        isAlive() ? rowWithSlot(entity()->relationships()[static_cast<size_t>(relationship)].slot) : nullptr;
    if (row == nullptr) {
        return nullptr;
    }
    const NSManagedObjectID target = row->targetAt(entity()->relationships()[static_cast<size_t>(relationship)].slot);
    return target.isNull() ? nullptr : m_context->existingObjectWithID(target);
}

void NSManagedObject::setTargetAtIndex(int relationship, NSManagedObject *target)
{
    if (!isAlive() || isDeleted()) {
        return;
    }
    const auto &description = entity()->relationships()[static_cast<size_t>(relationship)];
    QUIB_ASSERT(target == nullptr || target->m_context == m_context);
    QUIB_ASSERT(target == nullptr || target->entity()->isKindOfEntity(description.destinationEntity));
    const Ref<NSManagedObject> former = targetAtIndex(relationship);
    if (former.get() == target) {
        return;
    }
    const Ref<NSManagedObject> kept(this);
    if (former) {
        Access::changeOtherSide(*this, description, *former, /*isJoining=*/false);
    }
    Access::setTargetSlot(*this, description, target != nullptr ? target->objectID() : NSManagedObjectID());
    if (target != nullptr) {
        Access::changeOtherSide(*this, description, *target, /*isJoining=*/true);
    }
}

QList<Ref<NSManagedObject>> NSManagedObject::targetsAtIndex(int relationship) const
{
    QList<Ref<NSManagedObject>> objects;
    if (!isAlive()) {
        return objects;
    }
    for (const NSManagedObjectID &target : Access::targets(*this, relationship)) {
        if (auto object = m_context->m_d->object(target)) {
            objects.append(std::move(object));
        }
    }
    return objects;
}

qint64 NSManagedObject::countAtIndex(int relationship) const
{
    return isAlive() ? Access::targets(*this, relationship).size() : 0;
}

void NSManagedObject::setTargetsAtIndex(int relationship, const QList<NSManagedObject *> &targets)
{
    if (!isAlive() || isDeleted()) {
        return;
    }
    QSet<NSManagedObjectID> wanted;
    for (const NSManagedObject *target : targets) {
        wanted.insert(target->objectID());
    }
    // What is there and what is wanted are both known as sets, so that the work is linear however many targets.
    const auto &description = entity()->relationships()[static_cast<size_t>(relationship)];
    const auto now = Access::targets(*this, relationship);
    const QSet<NSManagedObjectID> before(now.cbegin(), now.cend());
    const auto &stored = *Access::toMany(*this, relationship).base;
    const QSet<NSManagedObjectID> base(stored.cbegin(), stored.cend());
    bool changes = false;
    for (const NSManagedObjectID &target : now) {
        const auto object = wanted.contains(target) ? nullptr : m_context->m_d->object(target);
        if (object) {
            Access::changeOtherSide(*this, description, *object, /*isJoining=*/false);
            auto &state = Access::toMany(*this, relationship);
            state.added.remove(target);
            if (base.contains(target)) {
                state.removed.insert(target);
            }
            changes = true;
        }
    }
    for (NSManagedObject *target : targets) {
        if (before.contains(target->objectID()) || target->isDeleted()) {
            continue;
        }
        QUIB_ASSERT(target->m_context == m_context);
        QUIB_ASSERT(target->entity()->isKindOfEntity(description.destinationEntity));
        Access::changeOtherSide(*this, description, *target, /*isJoining=*/true);
        auto &state = Access::toMany(*this, relationship);
        if (!state.removed.remove(target->objectID())) {
            state.added.insert(target->objectID());
        }
        changes = true;
    }
    if (changes) {
        m_context->m_d->noteUpdated(*this);
    }
}

void NSManagedObject::addTargetAtIndex(int relationship, NSManagedObject *target)
{
    if (!isAlive() || isDeleted() || target == nullptr || target->isDeleted()) {
        return;
    }
    const auto &description = entity()->relationships()[static_cast<size_t>(relationship)];
    QUIB_ASSERT(target->m_context == m_context);
    QUIB_ASSERT(target->entity()->isKindOfEntity(description.destinationEntity));
    if (Access::targets(*this, relationship).contains(target->objectID())) {
        return;
    }
    Access::changeOtherSide(*this, description, *target, /*isJoining=*/true);
    Access::addTarget(*this, relationship, target->objectID());
}

void NSManagedObject::removeTargetAtIndex(int relationship, NSManagedObject *target)
{
    if (!isAlive() || target == nullptr) {
        return;
    }
    const auto &description = entity()->relationships()[static_cast<size_t>(relationship)];
    if (!Access::targets(*this, relationship).contains(target->objectID())) {
        return;
    }
    Access::changeOtherSide(*this, description, *target, /*isJoining=*/false);
    Access::removeTarget(*this, relationship, target->objectID());
}

Ref<NSManagedObject> NSManagedObject::targetObjectForKey(const QString &key) const
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(key) : nullptr;
    return relationship != nullptr && !relationship->isToMany ? targetAtIndex(relationship->index) : nullptr;
}

void NSManagedObject::setTargetObjectForKey(const Ref<NSManagedObject> &object, const QString &key)
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(key) : nullptr;
    if (relationship != nullptr && !relationship->isToMany) {
        setTargetAtIndex(relationship->index, object.get());
    }
}

QList<Ref<NSManagedObject>> NSManagedObject::targetObjectsForKey(const QString &key) const
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(key) : nullptr;
    return relationship != nullptr && relationship->isToMany ? targetsAtIndex(relationship->index)
                                                             : QList<Ref<NSManagedObject>>();
}

void NSManagedObject::setTargetObjectsForKey(const QList<Ref<NSManagedObject>> &objects, const QString &key)
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(key) : nullptr;
    if (relationship == nullptr || !relationship->isToMany) {
        return;
    }
    QList<NSManagedObject *> targets;
    for (const auto &object : objects) {
        targets.append(object.get());
    }
    setTargetsAtIndex(relationship->index, targets);
}

const quib::KeyValueObject *NSManagedObject::targetForKey(const QString &key) const
{
    auto target = targetObjectForKey(key);
    if (!target) {
        return nullptr;
    }
    const auto *pointer = target.get();
    m_context->m_d->keptAlive.append(std::move(target));
    m_context->m_d->scheduleTelling();
    return pointer;
}

qint64 NSManagedObject::countForKey(const QString &toManyKey) const
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(toManyKey) : nullptr;
    return relationship != nullptr && relationship->isToMany ? countAtIndex(relationship->index) : 0;
}

bool NSManagedObject::relationContains(const QString &toManyKey, const NSManagedObjectID &target) const
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(toManyKey) : nullptr;
    return relationship != nullptr && relationship->isToMany &&
           Access::targets(*this, relationship->index).contains(m_context->m_d->coordinator->resolvedID(target));
}

void NSManagedObject::forEachTarget(const QString &toManyKey,
                                    const std::function<bool(const quib::KeyValueObject &target)> &visit) const
{
    const auto *relationship = isAlive() ? entity()->relationshipNamed(toManyKey) : nullptr;
    if (relationship == nullptr || !relationship->isToMany) {
        return;
    }
    // Made one by one: who looks for a first target makes no others.
    for (const NSManagedObjectID &identity : Access::targets(*this, relationship->index)) {
        if (const auto target = m_context->m_d->object(identity); target && !visit(*target)) {
            return;
        }
    }
}
