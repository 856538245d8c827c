#pragma once

#include <QHashFunctions>
#include <QString>

class NSEntityDescription;

/// The identity of a row in a store. A value, valid on any queue. Temporary identities (key below 0) are given to
/// inserted objects until their first save and are unique in the process.
class NSManagedObjectID
{
public:
    constexpr NSManagedObjectID() = default;
    /// key: the row's primary key, above 0; below 0 for a temporary identity.
    constexpr NSManagedObjectID(const NSEntityDescription *entity, qint64 key)
        : m_entity(entity)
        , m_key(key)
    {
    }

    [[nodiscard]] constexpr bool isNull() const { return m_key == 0; }
    [[nodiscard]] constexpr bool isTemporaryID() const { return m_key < 0; }
    /// The concrete entity of the object.
    [[nodiscard]] constexpr const NSEntityDescription *entity() const { return m_entity; }
    [[nodiscard]] constexpr qint64 key() const { return m_key; }

    /// Two identities are equal when they name the same row of the same table.
    friend bool operator==(const NSManagedObjectID &a, const NSManagedObjectID &b);
    friend size_t qHash(const NSManagedObjectID &identity, size_t seed) noexcept;

private:
    const NSEntityDescription *m_entity = nullptr;
    qint64 m_key = 0;
};
