#pragma once

#include "KeyValueObject.h"
#include "NSManagedObjectID.h"
#include "NSManagedObjectModel.h"
#include "Ref.h"
#include "RowSnapshot.h"

#include <QSet>

#include <atomic>
#include <memory>

class NSManagedObjectContext;

/// One object of a context: a row seen through the context, with the changes made in it. Made by the context only,
/// which keeps it unique for its identity. A fault has not read its row yet; reading any property does. Confined to the
/// context's queue. After its context died, or after its deletion was saved, reads give nothing and writes do nothing.
class NSManagedObject : public quib::KeyValueObject
{
public:
    NSManagedObject(const NSManagedObject &) = delete;
    NSManagedObject &operator=(const NSManagedObject &) = delete;

    [[nodiscard]] NSManagedObjectContext *managedObjectContext() const { return m_context; }
    [[nodiscard]] const NSEntityDescription *entity() const { return m_objectID.entity(); }
    [[nodiscard]] NSManagedObjectID objectID() const final { return m_objectID; }
    [[nodiscard]] bool isFault() const { return !m_row; }
    [[nodiscard]] bool isInserted() const;
    [[nodiscard]] bool isUpdated() const;
    [[nodiscard]] bool isDeleted() const;
    [[nodiscard]] bool hasChanges() const;

    // By key. Keys that the entity lacks read as nothing, and writing them is ignored.
    [[nodiscard]] quib::Value valueForKey(const QString &key) const;
    /// Generated classes send this through their setters, so that an overridden setter is not bypassed.
    virtual void setValueForKey(const quib::Value &value, const QString &key);
    /// The value that the store last gave, before this context's changes.
    [[nodiscard]] quib::Value committedValueForKey(const QString &key) const;
    /// Names of properties changed in this context since the last save.
    [[nodiscard]] QSet<QString> changedKeys() const;
    [[nodiscard]] quib::Ref<NSManagedObject> targetObjectForKey(const QString &key) const;
    void setTargetObjectForKey(const quib::Ref<NSManagedObject> &object, const QString &key);
    [[nodiscard]] QList<quib::Ref<NSManagedObject>> targetObjectsForKey(const QString &key) const;
    void setTargetObjectsForKey(const QList<quib::Ref<NSManagedObject>> &objects, const QString &key);

    /// The object's row with an attribute's slot in it, read now if needed; null where there is no such row. For
    /// whoever compares many objects by the same attributes. Valid until the object changes or dies.
    [[nodiscard]] const quib::RowSnapshot *rowWithAttributeSlot(int slot) const { return rowWithSlot(slot); }

    // KeyValueObject
    [[nodiscard]] KeyKind kindOfKey(const QString &key) const final;
    [[nodiscard]] quib::Value attributeForKey(const QString &key) const final;
    [[nodiscard]] const quib::KeyValueObject *targetForKey(const QString &key) const final;
    [[nodiscard]] qint64 countForKey(const QString &toManyKey) const final;
    [[nodiscard]] bool relationContains(const QString &toManyKey, const NSManagedObjectID &target) const final;
    void forEachTarget(const QString &toManyKey,
                       const std::function<bool(const quib::KeyValueObject &target)> &visit) const final;

    void retain() { m_references.fetch_add(1, std::memory_order_relaxed); }
    void release();

protected:
    NSManagedObject();
    ~NSManagedObject() override;

    // Life cycle, for subclasses; each calls its base first.
    /// Once, right after the object was inserted for the first time (not when a child's insertion reaches its parent).
    virtual void awakeFromInsert() {}
    /// Once a deletion, on every path that deletes the object, before anything of it is cleared. Not run again when a
    /// child's deletion reaches the parent.
    virtual void prepareForDeletion() {}
    /// Before each save that writes the object; may change it.
    virtual void willSave() {}
    virtual void didSave() {}

    // Keys that a subclass works out from others: orders and conditions on objects read them like attributes. No row
    // holds them; a fetch ordered by one orders the objects that it found.
    [[nodiscard]] virtual bool isDerivedKey(const QString & /*key*/) const { return false; }
    /// Requires: isDerivedKey(key).
    [[nodiscard]] virtual quib::Value derivedValueForKey(const QString & /*key*/) const { return {}; }

    // Access by slot, for generated classes. Reading fires the fault, and reads a lazy attribute when asked for.
    [[nodiscard]] QString stringAtSlot(int slot) const;
    [[nodiscard]] std::optional<NSDate> dateAtSlot(int slot) const;
    [[nodiscard]] QByteArray bytesAtSlot(int slot) const;
    [[nodiscard]] bool boolAtSlot(int slot) const;
    [[nodiscard]] qint64 integerAtSlot(int slot) const;
    [[nodiscard]] double doubleAtSlot(int slot) const;
    /// Marks the property changed only when the value differs.
    void setValueAtSlot(int slot, const quib::Value &value);
    [[nodiscard]] quib::Ref<NSManagedObject> targetAtIndex(int relationship) const;
    void setTargetAtIndex(int relationship, NSManagedObject *target);
    [[nodiscard]] QList<quib::Ref<NSManagedObject>> targetsAtIndex(int relationship) const;
    [[nodiscard]] qint64 countAtIndex(int relationship) const;
    void setTargetsAtIndex(int relationship, const QList<NSManagedObject *> &targets);
    void addTargetAtIndex(int relationship, NSManagedObject *target);
    void removeTargetAtIndex(int relationship, NSManagedObject *target);

private:
    friend class NSManagedObjectContext;
    friend struct NSManagedObjectAccess; // the context's own files

    std::atomic<int> m_references{0};
    quint32 m_flags = 0;
    NSManagedObjectContext *m_context = nullptr;
    NSManagedObjectID m_objectID;
    quib::RowSnapshotRef m_row;
    struct Pending;
    std::unique_ptr<Pending> m_pending; // changes, relationship caches; null while there are none

    [[nodiscard]] bool isAlive() const { return m_context != nullptr; }
    /// The row with the slot present, read now if needed; null where there is no such row.
    [[nodiscard]] const quib::RowSnapshot *rowWithSlot(int slot) const;
};
