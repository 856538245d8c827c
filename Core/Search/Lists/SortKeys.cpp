#include "SortKeys.h"

namespace quib {
namespace {

template <typename T> int order(const T &a, const T &b)
{
    return a < b ? -1 : b < a ? 1 : 0;
}

/// OPTIMIZATION: a value against the same attribute of a row, compared where it lies. Gives what the descriptor gives
/// for the values.
int compareInRow(const NSSortDescriptor &descriptor, const Value &a, const RowSnapshot &row, int slot)
{
    const int sign = descriptor.ascending() ? 1 : -1;
    if (isNothing(a) || row.isNull(slot)) {
        return sign * (static_cast<int>(row.isNull(slot)) - static_cast<int>(isNothing(a)));
    }
    if (const auto *date = std::get_if<NSDate>(&a)) {
        return sign * order(*date, row.dateAt(slot));
    }
    if (const auto *flag = std::get_if<bool>(&a)) {
        return sign * (static_cast<int>(*flag) - static_cast<int>(row.boolAt(slot)));
    }
    if (const auto *whole = std::get_if<qint64>(&a)) {
        return sign * order(*whole, row.integerAt(slot));
    }
    return descriptor.compareValue(a, row.valueAt(slot));
}

} // namespace

SortKeys::SortKeys(const QList<NSSortDescriptor> &descriptors, const NSEntityDescription *entity)
{
    m_keys.reserve(static_cast<size_t>(descriptors.size()));
    for (const NSSortDescriptor &descriptor : descriptors) {
        const auto *attribute = entity != nullptr ? entity->attributeNamed(descriptor.key()) : nullptr;
        m_keys.push_back({descriptor, attribute != nullptr ? attribute->slot : -1});
    }
}

SortKeys::Row SortKeys::row(const NSManagedObject &object) const
{
    Row values;
    values.reserve(m_keys.size());
    for (const Key &key : m_keys) {
        values.push_back(key.descriptor.valueOfObject(object));
    }
    return values;
}

int SortKeys::compare(const Row &a, const Row &b) const
{
    for (size_t i = 0; i < m_keys.size(); ++i) {
        if (const int order = m_keys[i].descriptor.compareValue(a[i], b[i]); order != 0) {
            return order < 0 ? -1 : 1;
        }
    }
    return 0;
}

int SortKeys::compare(const Row &a, const NSManagedObject &b) const
{
    for (size_t i = 0; i < m_keys.size(); ++i) {
        const Key &key = m_keys[i];
        const RowSnapshot *row = key.slot >= 0 ? b.rowWithAttributeSlot(key.slot) : nullptr;
        const int order = row != nullptr ? compareInRow(key.descriptor, a[i], *row, key.slot)
                                         : key.descriptor.compareValue(a[i], key.descriptor.valueOfObject(b));
        if (order != 0) {
            return order < 0 ? -1 : 1;
        }
    }
    return 0;
}

} // namespace quib
