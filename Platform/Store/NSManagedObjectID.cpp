#include "NSManagedObjectID.h"

#include "NSManagedObjectModel.h"

bool operator==(const NSManagedObjectID &a, const NSManagedObjectID &b)
{
    if (a.m_key != b.m_key) {
        return false;
    }
    if (a.m_entity == b.m_entity || a.m_key == 0) {
        return true;
    }
    return a.m_entity != nullptr && b.m_entity != nullptr && a.m_entity->rootEntity() == b.m_entity->rootEntity();
}

size_t qHash(const NSManagedObjectID &identity, size_t seed) noexcept
{
    return qHash(identity.m_key, seed);
}
