#include "NSSortDescriptor.h"

#include "PredicateNode.h"

#include <QStringList>

namespace {

quib::Value valueAtPath(const quib::KeyValueObject &object, const QString &key)
{
    const quib::KeyValueObject *at = &object;
    if (key.contains(u'.')) {
        const QStringList path = key.split(u'.');
        for (qsizetype i = 0; at != nullptr && i + 1 < path.size(); ++i) {
            at = at->kindOfKey(path[i]) == quib::KeyValueObject::KeyKind::ToOne ? at->targetForKey(path[i]) : nullptr;
        }
        return at != nullptr && at->kindOfKey(path.constLast()) == quib::KeyValueObject::KeyKind::Attribute
                   ? at->attributeForKey(path.constLast())
                   : quib::Value();
    }
    return at->kindOfKey(key) == quib::KeyValueObject::KeyKind::Attribute ? at->attributeForKey(key) : quib::Value();
}

} // namespace

int NSSortDescriptor::compareObject(const quib::KeyValueObject &object, const quib::KeyValueObject &toObject) const
{
    return compareValue(valueAtPath(object, m_key), valueAtPath(toObject, m_key));
}

quib::Value NSSortDescriptor::valueOfObject(const quib::KeyValueObject &object) const
{
    return valueAtPath(object, m_key);
}

int NSSortDescriptor::compareValue(const quib::Value &value, const quib::Value &toValue) const
{
    int order = 0;
    if (quib::isNothing(value) || quib::isNothing(toValue)) {
        order = static_cast<int>(quib::isNothing(toValue)) - static_cast<int>(quib::isNothing(value));
    } else if (const auto *left = std::get_if<QString>(&value), *right = std::get_if<QString>(&toValue);
               m_comparison == Comparison::LocalizedStandard && left != nullptr && right != nullptr) {
        order = quib::localizedStandardCompare(*left, *right);
    } else {
        order = quib::compareValues(value, toValue).value_or(0);
    }
    return m_ascending ? order : -order;
}

int NSSortDescriptor::compare(const QList<NSSortDescriptor> &descriptors, const quib::KeyValueObject &a,
                              const quib::KeyValueObject &b)
{
    for (const NSSortDescriptor &descriptor : descriptors) {
        if (const int order = descriptor.compareObject(a, b); order != 0) {
            return order < 0 ? -1 : 1;
        }
    }
    return 0;
}
