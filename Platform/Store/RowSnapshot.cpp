#include "RowSnapshot.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

namespace quib {

namespace {

template <typename T> T load(const char *address)
{
    T value;
    std::memcpy(&value, address, sizeof(T));
    return value;
}

template <typename T> void store(char *address, T value)
{
    std::memcpy(address, &value, sizeof(T));
}

QString *stringIn(char *address)
{
    return std::launder(reinterpret_cast<QString *>(address));
}

QByteArray *bytesIn(char *address)
{
    return std::launder(reinterpret_cast<QByteArray *>(address));
}

} // namespace

RowSnapshot::RowSnapshot(const NSEntityDescription *entity)
    : m_entity(entity)
{
    std::memset(reinterpret_cast<char *>(this + 1), 0, entity->packedSize());
    for (int slot = 0; slot < entity->slotCount(); ++slot) {
        const auto &layout = entity->slotLayout(slot);
        if (layout.type == NSAttributeType::String) {
            new (slotAddress(slot)) QString;
        } else if (layout.type == NSAttributeType::Binary) {
            new (slotAddress(slot)) QByteArray;
        }
    }
}

RowSnapshot::~RowSnapshot()
{
    for (int slot = 0; slot < m_entity->slotCount(); ++slot) {
        const auto &layout = m_entity->slotLayout(slot);
        if (layout.type == NSAttributeType::String) {
            stringIn(slotAddress(slot))->~QString();
        } else if (layout.type == NSAttributeType::Binary) {
            bytesIn(slotAddress(slot))->~QByteArray();
        }
    }
}

RowSnapshot *RowSnapshot::allocate(const NSEntityDescription *entity)
{
    static_assert(sizeof(RowSnapshot) % alignof(QString) == 0);
    void *block = ::operator new(sizeof(RowSnapshot) + entity->packedSize());
    return new (block) RowSnapshot(entity);
}

void RowSnapshot::destroy(RowSnapshot *row)
{
    row->~RowSnapshot();
    ::operator delete(row);
}

RowSnapshotRef RowSnapshot::make(const NSEntityDescription *entity)
{
    RowSnapshotRef made = makeEmpty(entity);
    RowSnapshot *row = made.edit();
    const auto &attributes = entity->attributes();
    for (const NSAttributeDescription &attribute : attributes) {
        row->setValueAt(attribute.slot, attribute.defaultValue);
    }
    for (int slot = static_cast<int>(attributes.size()); slot < entity->slotCount(); ++slot) {
        row->setTargetAt(slot, {});
    }
    return made;
}

RowSnapshotRef RowSnapshot::makeEmpty(const NSEntityDescription *entity)
{
    return RowSnapshotRef(allocate(entity));
}

RowSnapshotRef RowSnapshot::copy() const
{
    RowSnapshot *other = allocate(m_entity);
    other->m_version = m_version;
    other->m_present = m_present;
    other->m_null = m_null;
    for (int slot = 0; slot < m_entity->slotCount(); ++slot) {
        const auto &layout = m_entity->slotLayout(slot);
        if (layout.type == NSAttributeType::String) {
            *stringIn(other->slotAddress(slot)) = *stringIn(slotAddress(slot));
        } else if (layout.type == NSAttributeType::Binary) {
            *bytesIn(other->slotAddress(slot)) = *bytesIn(slotAddress(slot));
        } else if (layout.type == NSAttributeType::Boolean) {
            *other->slotAddress(slot) = *slotAddress(slot);
        } else if (layout.type == NSAttributeType::Int16) {
            std::memcpy(other->slotAddress(slot), slotAddress(slot), sizeof(qint16));
        } else {
            std::memcpy(other->slotAddress(slot), slotAddress(slot), sizeof(qint64));
        }
    }
    return RowSnapshotRef(other);
}

qint64 RowSnapshot::version() const
{
    return m_version;
}

void RowSnapshot::setVersion(qint64 version)
{
    m_version = version;
}

bool RowSnapshot::isPresent(int slot) const
{
    return (m_present & bit(slot)) != 0;
}

void RowSnapshot::setAbsent(int slot)
{
    setValueAt(slot, {});
    m_present &= ~bit(slot);
}

bool RowSnapshot::isNull(int slot) const
{
    return (m_null & bit(slot)) != 0;
}

bool RowSnapshot::boolAt(int slot) const
{
    return *slotAddress(slot) != 0;
}

qint64 RowSnapshot::integerAt(int slot) const
{
    return m_entity->slotLayout(slot).type == NSAttributeType::Int16 ? load<qint16>(slotAddress(slot))
                                                                     : load<qint64>(slotAddress(slot));
}

double RowSnapshot::doubleAt(int slot) const
{
    return load<double>(slotAddress(slot));
}

const QString &RowSnapshot::stringAt(int slot) const
{
    return *stringIn(slotAddress(slot));
}

const QByteArray &RowSnapshot::bytesAt(int slot) const
{
    return *bytesIn(slotAddress(slot));
}

NSDate RowSnapshot::dateAt(int slot) const
{
    return NSDate::dateWithTimeIntervalSince1970(load<double>(slotAddress(slot)));
}

qint64 RowSnapshot::targetKeyAt(int slot) const
{
    return load<qint64>(slotAddress(slot));
}

NSManagedObjectID RowSnapshot::targetAt(int slot) const
{
    const qint64 key = targetKeyAt(slot);
    return key == 0 ? NSManagedObjectID()
                    : NSManagedObjectID(m_entity->slotLayout(slot).relationship->destinationEntity, key);
}

Value RowSnapshot::valueAt(int slot) const
{
    if (isNull(slot)) {
        return {};
    }
    switch (m_entity->slotLayout(slot).type) {
    case NSAttributeType::Boolean:
        return boolAt(slot);
    case NSAttributeType::Int16:
    case NSAttributeType::Int64:
        return integerAt(slot);
    case NSAttributeType::Double:
        return doubleAt(slot);
    case NSAttributeType::Date:
        return dateAt(slot);
    case NSAttributeType::String:
        return stringAt(slot);
    case NSAttributeType::Binary:
        return bytesAt(slot);
    }
    return {};
}

void RowSnapshot::setValueAt(int slot, const Value &value)
{
    m_present |= bit(slot);
    m_null &= ~bit(slot);
    char *address = slotAddress(slot);
    const auto &layout = m_entity->slotLayout(slot);
    // Numbers of one kind stand for those of another, as a property list or a caller may give either.
    const auto integer = [&value]() -> qint64 {
        if (const bool *flag = std::get_if<bool>(&value)) {
            return *flag ? 1 : 0;
        }
        if (const double *number = std::get_if<double>(&value)) {
            return *number >= -9.2e18 && *number <= 9.2e18 ? static_cast<qint64>(*number) : 0;
        }
        return valueOr<qint64>(value);
    };
    switch (layout.type) {
    case NSAttributeType::Boolean:
        *address = integer() != 0 ? 1 : 0;
        return;
    case NSAttributeType::Int16:
        store(address, static_cast<qint16>(std::clamp<qint64>(integer(), INT16_MIN, INT16_MAX)));
        return;
    case NSAttributeType::Int64:
        store(address, integer());
        return;
    case NSAttributeType::Double: {
        const double *number = std::get_if<double>(&value);
        store(address, number != nullptr ? *number : static_cast<double>(integer()));
        return;
    }
    case NSAttributeType::Date: {
        const NSDate *date = std::get_if<NSDate>(&value);
        store(address, date != nullptr ? date->timeIntervalSince1970() : 0.0);
        if (date == nullptr) {
            m_null |= bit(slot);
        }
        return;
    }
    case NSAttributeType::String: {
        const QString *text = std::get_if<QString>(&value);
        *stringIn(address) = text != nullptr ? *text : QString();
        if (text == nullptr || text->isNull()) {
            m_null |= bit(slot);
        }
        return;
    }
    case NSAttributeType::Binary: {
        const QByteArray *bytes = std::get_if<QByteArray>(&value);
        *bytesIn(address) = bytes != nullptr ? *bytes : QByteArray();
        if (bytes == nullptr || bytes->isNull()) {
            m_null |= bit(slot);
        }
        return;
    }
    }
}

void RowSnapshot::setStringAt(int slot, QString value)
{
    m_present |= bit(slot);
    if (value.isNull()) {
        m_null |= bit(slot);
    } else {
        m_null &= ~bit(slot);
    }
    *stringIn(slotAddress(slot)) = std::move(value);
}

void RowSnapshot::setTargetAt(int slot, const NSManagedObjectID &target)
{
    m_present |= bit(slot);
    m_null = target.isNull() ? m_null | bit(slot) : m_null & ~bit(slot);
    store(slotAddress(slot), target.key());
}

void RowSnapshot::setBytesAt(int slot, QByteArray value)
{
    m_present |= bit(slot);
    m_null = value.isNull() ? m_null | bit(slot) : m_null & ~bit(slot);
    *bytesIn(slotAddress(slot)) = std::move(value);
}

bool RowSnapshot::slotEquals(int slot, const RowSnapshot &other) const
{
    if (!isPresent(slot) || !other.isPresent(slot) || isNull(slot) != other.isNull(slot)) {
        return false;
    }
    switch (m_entity->slotLayout(slot).type) {
    case NSAttributeType::String:
        return stringAt(slot) == other.stringAt(slot);
    case NSAttributeType::Binary:
        return bytesAt(slot) == other.bytesAt(slot);
    case NSAttributeType::Boolean:
        return boolAt(slot) == other.boolAt(slot);
    case NSAttributeType::Int16:
        return integerAt(slot) == other.integerAt(slot);
    default:
        return std::memcmp(slotAddress(slot), other.slotAddress(slot), sizeof(qint64)) == 0;
    }
}

RowSnapshotRef::RowSnapshotRef(RowSnapshot *row)
    : m_row(row)
{
    if (m_row != nullptr) {
        m_row->m_references.fetch_add(1, std::memory_order_relaxed);
    }
}

RowSnapshotRef::RowSnapshotRef(const RowSnapshotRef &other)
    : RowSnapshotRef(other.m_row)
{
}

RowSnapshotRef::~RowSnapshotRef()
{
    if (m_row != nullptr && m_row->m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        RowSnapshot::destroy(m_row);
    }
}

RowSnapshot *RowSnapshotRef::edit()
{
    QUIB_ASSERT(m_row != nullptr);
    if (m_row->m_references.load(std::memory_order_acquire) > 1) {
        *this = m_row->copy();
    }
    return m_row;
}

} // namespace quib
