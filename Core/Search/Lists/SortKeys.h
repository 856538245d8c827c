#pragma once

#include <Store/NSManagedObject.h>
#include <Store/NSSortDescriptor.h>

#include <QList>

#include <vector>

namespace quib {

/// The values that an order goes by, read once for an object that is compared many times. A value; confined to the
/// queue of the objects.
class SortKeys
{
public:
    /// One value a descriptor.
    using Row = std::vector<Value>;

    /// entity: of the objects that rows are compared with, or one above; null where only rows are compared.
    explicit SortKeys(const QList<NSSortDescriptor> &descriptors, const NSEntityDescription *entity = nullptr);

    [[nodiscard]] Row row(const NSManagedObject &object) const;
    /// -1, 0 or 1 by the first descriptor that tells them apart.
    [[nodiscard]] int compare(const Row &a, const Row &b) const;
    /// The same, reading no more of the object than it takes.
    [[nodiscard]] int compare(const Row &a, const NSManagedObject &b) const;

private:
    struct Key
    {
        NSSortDescriptor descriptor;
        int slot = -1; // of an attribute of the objects themselves; -1: asked for by name
    };
    std::vector<Key> m_keys;
};

} // namespace quib
