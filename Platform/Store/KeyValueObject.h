#pragma once

#include "NSManagedObjectID.h"
#include "Value.h"

#include <functional>

namespace quib {

/// What a predicate or a sort descriptor can be asked of: an object with attributes and relationships reached by name.
/// Managed objects are such; tests bring plain ones. Used on the queue of whoever owns the object.
class KeyValueObject
{
public:
    enum class KeyKind : quint8
    {
        Unknown,
        Attribute,
        ToOne,
        ToMany
    };

    virtual ~KeyValueObject() = default;
    [[nodiscard]] virtual NSManagedObjectID objectID() const = 0;
    [[nodiscard]] virtual KeyKind kindOfKey(const QString &key) const = 0;
    /// Requires: key is an attribute.
    [[nodiscard]] virtual Value attributeForKey(const QString &key) const = 0;
    /// The target of a to-one relationship, or null. Valid while this object lives and is not changed.
    [[nodiscard]] virtual const KeyValueObject *targetForKey(const QString &key) const = 0;
    [[nodiscard]] virtual qint64 countForKey(const QString &toManyKey) const = 0;
    [[nodiscard]] virtual bool relationContains(const QString &toManyKey, const NSManagedObjectID &target) const = 0;
    /// Calls visit for each target of a to-many relationship until it returns false.
    virtual void forEachTarget(const QString &toManyKey,
                               const std::function<bool(const KeyValueObject &target)> &visit) const = 0;
};

} // namespace quib
