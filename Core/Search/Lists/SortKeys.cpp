#include "SortKeys.h"

namespace quib {

SortKeys::Row SortKeys::row(const KeyValueObject &object) const
{
    Row values;
    values.reserve(static_cast<size_t>(m_descriptors.size()));
    for (const NSSortDescriptor &descriptor : m_descriptors) {
        values.push_back(descriptor.valueOfObject(object));
    }
    return values;
}

int SortKeys::compare(const Row &a, const Row &b) const
{
    for (size_t i = 0; i < a.size(); ++i) {
        if (const int order = m_descriptors[static_cast<qsizetype>(i)].compareValue(a[i], b[i]); order != 0) {
            return order < 0 ? -1 : 1;
        }
    }
    return 0;
}

int SortKeys::compare(const Row &a, const KeyValueObject &b) const
{
    for (size_t i = 0; i < a.size(); ++i) {
        const NSSortDescriptor &descriptor = m_descriptors[static_cast<qsizetype>(i)];
        if (const int order = descriptor.compareValue(a[i], descriptor.valueOfObject(b)); order != 0) {
            return order < 0 ? -1 : 1;
        }
    }
    return 0;
}

} // namespace quib
