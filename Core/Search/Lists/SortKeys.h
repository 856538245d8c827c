#pragma once

#include <Store/KeyValueObject.h>
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

    explicit SortKeys(QList<NSSortDescriptor> descriptors)
        : m_descriptors(std::move(descriptors))
    {
    }

    [[nodiscard]] Row row(const KeyValueObject &object) const;
    /// -1, 0 or 1 by the first descriptor that tells them apart.
    [[nodiscard]] int compare(const Row &a, const Row &b) const;
    /// The same, reading no more of the object than it takes.
    [[nodiscard]] int compare(const Row &a, const KeyValueObject &b) const;

private:
    QList<NSSortDescriptor> m_descriptors;
};

} // namespace quib
