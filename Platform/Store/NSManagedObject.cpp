#include "NSManagedObject.h"

#include "NSManagedObjectContext_p.h"

#include <Foundation/Assert.h>

using quib::Value;

namespace {

/// How often a row that others keep writing is read again for one of its lazy values.
constexpr int kMostLazyReads = 10;

constexpr quint64 bit(int slot)
{
    return quint64{1} << slot;
}

/// Equal values that also agree on whether there is a string or only an empty one.
bool isSame(const Value &a, const Value &b)
{
    const auto *left = std::get_if<QString>(&a);
    const auto *right = std::get_if<QString>(&b);
    return a == b && (left == nullptr || right == nullptr || left->isNull() == right->isNull());
}

} // namespace

NSManagedObject::NSManagedObject() = default;
NSManagedObject::~NSManagedObject() = default;

NSManagedObjectContext::Private &NSManagedObjectAccess::context(const NSManagedObject &object)
{
    return *object.m_context->m_d;
}

NSManagedObjectAccess::Pending &NSManagedObjectAccess::ensurePending(NSManagedObject &object)
{
    if (!object.m_pending) {
        object.m_pending = std::make_unique<Pending>();
        context(object).withPending.insert(&object);
    }
    return *object.m_pending;
}

void NSManagedObject::release()
{
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    if (isAlive()) {
        auto &context = *m_context->m_d;
        context.assertQueue();
        context.unregister(*this);
    }
    delete this;
}

bool NSManagedObject::isInserted() const
{
    return isAlive() && NSManagedObjectAccess::has(*this, NSManagedObjectAccess::Inserted);
}

bool NSManagedObject::isUpdated() const
{
    return isAlive() && NSManagedObjectAccess::has(*this, NSManagedObjectAccess::Updated);
}

bool NSManagedObject::isDeleted() const
{
    return NSManagedObjectAccess::has(*this, NSManagedObjectAccess::Deleted);
}

bool NSManagedObject::hasChanges() const
{
    return isInserted() || isUpdated() || (isAlive() && isDeleted());
}

const quib::RowSnapshot *NSManagedObject::rowWithSlot(int slot) const
{
    if (!isAlive()) {
        return nullptr;
    }
    auto &context = *m_context->m_d;
    context.assertQueue();
    // A fault is fulfilled behind a const face: what the object stands for does not change.
    auto *self = const_cast<NSManagedObject *>(this);
    NSError error;
    const auto &attributes = entity()->attributes();
    const bool isLazy = static_cast<size_t>(slot) < attributes.size() && attributes[static_cast<size_t>(slot)].isLazy;
    if (!m_row || (!isLazy && !m_row->isPresent(slot))) {
        const auto stored = context.currentRow(m_objectID, &error);
        if (!stored || !stored->snapshot) {
            return nullptr;
        }
        if (m_pending && m_pending->changedSlots != 0) {
            // A partial row was changed: what was missing comes from the row, what was changed stays.
            quib::RowSnapshotRef merged = stored->snapshot;
            quib::RowSnapshot *writable = merged.edit();
            // The version stays that of the row the changes were made to: what others wrote since is a conflict.
            writable->setVersion(m_row->version());
            for (int i = 0; i < entity()->slotCount(); ++i) {
                if ((m_pending->changedSlots & bit(i)) == 0) {
                    continue;
                }
                if (entity()->slotLayout(i).relationship != nullptr) {
                    writable->setTargetAt(i, m_row->targetAt(i));
                } else {
                    writable->setValueAt(i, m_row->valueAt(i));
                }
            }
            self->m_row = merged;
        } else if (m_row && m_row->version() == stored->snapshot->version()) {
            self->m_row.takeMissingSlots(stored->snapshot); // what was read lazily stays
        } else {
            if (m_row) {
                // The row moved on under an unchanged object, and an order may go by what was read of it.
                context.noteRefreshed(*self);
            }
            self->m_row = stored->snapshot;
        }
    }
    if (m_row->isPresent(slot)) {
        return &*m_row;
    }
    if (!isLazy) {
        return nullptr;
    }
    const bool isChanged = m_pending && m_pending->changedSlots != 0;
    for (int attempt = 0;; ++attempt) {
        const auto lazy = context.currentLazyValue(m_objectID, slot, &error);
        if (!lazy || !lazy->rowExists) {
            return nullptr;
        }
        if (lazy->version == m_row->version() || isChanged || attempt == kMostLazyReads) {
            self->m_row.edit()->setValueAt(slot, lazy->value);
            return &*m_row;
        }
        // The row moved on under an unchanged object: all of it is taken anew, until its parts fit together.
        const auto stored = context.currentRow(m_objectID, &error);
        if (!stored || !stored->snapshot) {
            return nullptr;
        }
        self->m_row = stored->snapshot;
        context.noteRefreshed(*self);
        if (m_row->isPresent(slot)) {
            return &*m_row;
        }
    }
}

QString NSManagedObject::stringAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr ? row->stringAt(slot) : QString();
}

std::optional<NSDate> NSManagedObject::dateAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr && !row->isNull(slot) ? std::optional(row->dateAt(slot)) : std::nullopt;
}

QByteArray NSManagedObject::bytesAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr ? row->bytesAt(slot) : QByteArray();
}

bool NSManagedObject::boolAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr && row->boolAt(slot);
}

qint64 NSManagedObject::integerAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr ? row->integerAt(slot) : 0;
}

double NSManagedObject::doubleAtSlot(int slot) const
{
    const auto *row = rowWithSlot(slot);
    return row != nullptr ? row->doubleAt(slot) : 0;
}

void NSManagedObject::setValueAtSlot(int slot, const Value &value)
{
    if (isAlive() && !isDeleted()) {
        NSManagedObjectAccess::setSlot(*this, slot, value);
    }
}

namespace {

/// Makes the row writable and remembers what it held before. Errors: false where there is no row.
bool beginChange(NSManagedObject &object, int slot)
{
    // Read first, lazy slots too: a later conflict is told by what the row held.
    if (NSManagedObjectAccess::rowWithSlot(object, slot) == nullptr) {
        return false;
    }
    auto &pending = NSManagedObjectAccess::ensurePending(object);
    if (!NSManagedObjectAccess::has(object, NSManagedObjectAccess::Inserted)) {
        if (!pending.base || pending.changedSlots == 0) {
            pending.base = NSManagedObjectAccess::row(object);
        } else if (!pending.base->isPresent(slot)) {
            // Read after the first change: the base did not have the slot yet.
            const auto &row = *NSManagedObjectAccess::row(object);
            if (object.entity()->slotLayout(slot).relationship != nullptr) {
                pending.base.edit()->setTargetAt(slot, row.targetAt(slot));
            } else {
                pending.base.edit()->setValueAt(slot, row.valueAt(slot));
            }
        }
    }
    return true;
}

/// Brings the mask and the set of updated objects in line after a slot was written.
void endChange(NSManagedObject &object, int slot)
{
    auto &pending = *NSManagedObjectAccess::pending(object);
    const bool isBack = pending.base && NSManagedObjectAccess::row(object)->slotEquals(slot, *pending.base);
    pending.changedSlots = isBack ? pending.changedSlots & ~bit(slot) : pending.changedSlots | bit(slot);
    NSManagedObjectAccess::context(object).noteUpdated(object);
}

} // namespace

void NSManagedObjectAccess::setSlot(NSManagedObject &object, int slot, const Value &value)
{
    context(object).assertQueue();
    const auto *row = rowWithSlot(object, slot);
    if (row == nullptr) {
        return;
    }
    const Value before = row->valueAt(slot);
    if (isSame(before, value) || !beginChange(object, slot)) {
        return;
    }
    // In place where nobody shares the row any more: an object that is set up copies it once.
    object.m_row.edit()->setValueAt(slot, value);
    if (!isSame(before, object.m_row->valueAt(slot))) {
        endChange(object, slot);
    }
}

void NSManagedObjectAccess::setTargetSlot(NSManagedObject &object, const NSRelationshipDescription &relationship,
                                          const NSManagedObjectID &target)
{
    context(object).assertQueue();
    // The place of a relationship is that in the object's own entity, whose attributes may be more than its parent's.
    const int slot = object.entity()->relationships()[static_cast<size_t>(relationship.index)].slot;
    if (!beginChange(object, slot) || object.m_row->targetKeyAt(slot) == target.key()) {
        return;
    }
    object.m_row.edit()->setTargetAt(slot, target);
    endChange(object, slot);
}

Value NSManagedObject::valueForKey(const QString &key) const
{
    const auto *attribute = isAlive() ? entity()->attributeNamed(key) : nullptr;
    const auto *row = attribute != nullptr ? rowWithSlot(attribute->slot) : nullptr;
    return row != nullptr ? row->valueAt(attribute->slot) : Value();
}

void NSManagedObject::setValueForKey(const Value &value, const QString &key)
{
    const auto *attribute = isAlive() ? entity()->attributeNamed(key) : nullptr;
    if (attribute != nullptr) {
        setValueAtSlot(attribute->slot, value);
    }
}

Value NSManagedObject::committedValueForKey(const QString &key) const
{
    const auto *attribute = isAlive() ? entity()->attributeNamed(key) : nullptr;
    if (attribute == nullptr || isInserted()) {
        return {};
    }
    const auto *row = rowWithSlot(attribute->slot);
    if (m_pending && (m_pending->changedSlots & bit(attribute->slot)) != 0) {
        row = &*m_pending->base;
    }
    return row != nullptr ? row->valueAt(attribute->slot) : Value();
}

QSet<QString> NSManagedObject::changedKeys() const
{
    QSet<QString> keys;
    if (!m_pending) {
        return keys;
    }
    for (const NSAttributeDescription &attribute : entity()->attributes()) {
        if ((m_pending->changedSlots & bit(attribute.slot)) != 0) {
            keys.insert(attribute.name);
        }
    }
    for (const NSRelationshipDescription &relationship : entity()->relationships()) {
        const bool isChanged = relationship.isToMany ? m_pending->toMany.value(relationship.index).hasChanges()
                                                     : (m_pending->changedSlots & bit(relationship.slot)) != 0;
        if (isChanged) {
            keys.insert(relationship.name);
        }
    }
    return keys;
}

quib::KeyValueObject::KeyKind NSManagedObject::kindOfKey(const QString &key) const
{
    if (!isAlive()) {
        return KeyKind::Unknown;
    }
    if (entity()->attributeNamed(key) != nullptr) {
        return KeyKind::Attribute;
    }
    const auto *relationship = entity()->relationshipNamed(key);
    if (relationship == nullptr) {
        return isDerivedKey(key) ? KeyKind::Attribute : KeyKind::Unknown;
    }
    return relationship->isToMany ? KeyKind::ToMany : KeyKind::ToOne;
}

Value NSManagedObject::attributeForKey(const QString &key) const
{
    return isAlive() && entity()->attributeNamed(key) == nullptr && isDerivedKey(key) ? derivedValueForKey(key)
                                                                                      : valueForKey(key);
}
