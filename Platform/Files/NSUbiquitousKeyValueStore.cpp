#include "NSUbiquitousKeyValueStore.h"

using namespace Qt::StringLiterals;
using quib::PropertyValue;

NSUbiquitousKeyValueStore::NSUbiquitousKeyValueStore()
    : NSUbiquitousKeyValueStore(NSUserDefaults::suite(u"UbiquitousKeyValueStore"_s))
{
}

NSUbiquitousKeyValueStore::NSUbiquitousKeyValueStore(std::shared_ptr<NSUserDefaults> file)
    : m_file(std::move(file))
{
}

void NSUbiquitousKeyValueStore::setObject(const PropertyValue &value, const QString &forKey)
{
    Dictionary after = values();
    after.insert(forKey, value);
    if (value.isNull()) {
        after.remove(forKey);
    }
    const auto bytes = quib::writePropertyList(PropertyValue(after), quib::PropertyListFormat::Binary, nullptr);
    if (after.size() > kMaximumKeys || !bytes || bytes->size() > kMaximumSize) {
        m_observers.notify({QuotaViolationChange, {forKey}});
        return;
    }
    m_file->setObject(value, forKey);
}

bool NSUbiquitousKeyValueStore::synchronize(NSError *error)
{
    const Dictionary before = values();
    const bool isDone = m_file->synchronize(error);
    const Dictionary after = values();
    QStringList changed;
    for (auto item = before.cbegin(); item != before.cend(); ++item) {
        if (!(after.value(item.key()) == *item)) {
            changed.append(item.key());
        }
    }
    for (auto item = after.cbegin(); item != after.cend(); ++item) {
        if (!before.contains(item.key())) {
            changed.append(item.key());
        }
    }
    if (!changed.isEmpty()) {
        m_observers.notify({ServerChange, changed});
    }
    return isDone;
}

void NSUbiquitousKeyValueStore::receiveValues(const Dictionary &values, int reason)
{
    QStringList changed;
    for (auto item = values.cbegin(); item != values.cend(); ++item) {
        if (reason == QuotaViolationChange) {
            changed.append(item.key());
        } else if (!(m_file->objectForKey(item.key()) == *item)) {
            m_file->setObject(*item, item.key());
            changed.append(item.key());
        }
    }
    if (changed.isEmpty()) {
        return;
    }
    static_cast<void>(m_file->synchronize(nullptr)); // tried again with the next change
    m_observers.notify({reason, changed});
}

NSUbiquitousKeyValueStore::Dictionary NSUbiquitousKeyValueStore::values() const
{
    Dictionary all;
    const QStringList keys = m_file->keys();
    for (const QString &key : keys) {
        all.insert(key, m_file->objectForKey(key));
    }
    return all;
}
