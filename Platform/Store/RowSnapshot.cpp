#include "RowSnapshot.h"

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

const QString *stringIn(const char *address)
{
    return std::launder(reinterpret_cast<const QString *>(address));
}

QByteArray *bytesIn(char *address)
{
    return std::launder(reinterpret_cast<QByteArray *>(address));
}

const QByteArray *bytesIn(const char *address)
{
    return std::launder(reinterpret_cast<const QByteArray *>(address));
}

} // namespace

RowSnapshot::RowSnapshot(const RowLayout *layout)
    : m_layout(layout)
{
    std::memset(reinterpret_cast<char *>(this + 1), 0, layout->packedSize());
    for (const int slot : layout->stringSlots()) {
        new (slotAddress(slot)) QString;
    }
    for (const int slot : layout->binarySlots()) {
        new (slotAddress(slot)) QByteArray;
    }
}

RowSnapshot::~RowSnapshot()
{
    for (const int slot : m_layout->stringSlots()) {
        stringIn(slotAddress(slot))->~QString();
    }
    for (const int slot : m_layout->binarySlots()) {
        bytesIn(slotAddress(slot))->~QByteArray();
    }
}

RowSnapshot *RowSnapshot::allocate(const RowLayout *layout)
{
    static_assert(sizeof(RowSnapshot) % alignof(QString) == 0);
    void *block = ::operator new(sizeof(RowSnapshot) + layout->packedSize());
    return new (block) RowSnapshot(layout);
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
    return makeNarrow(entity->wholeRowLayout());
}

RowSnapshotRef RowSnapshot::makeNarrow(const RowLayout *layout)
{
    return RowSnapshotRef(allocate(layout));
}

RowSnapshotRef RowSnapshot::copy() const
{
    RowSnapshot *other = allocate(entity()->wholeRowLayout());
    other->m_version = m_version;
    other->m_present = m_present;
    other->m_null = m_null;
    for (int slot = 0; slot < entity()->slotCount(); ++slot) {
        if (m_layout->hasSlot(slot)) {
            other->copyValue(slot, *this);
        }
    }
    return RowSnapshotRef(other);
}

void RowSnapshot::copyValue(int slot, const RowSnapshot &from)
{
    char *address = slotAddress(slot);
    switch (entity()->slotLayout(slot).type) {
    case NSAttributeType::String:
        *stringIn(address) = from.stringAt(slot);
        return;
    case NSAttributeType::Binary:
        *bytesIn(address) = from.bytesAt(slot);
        return;
    case NSAttributeType::Boolean:
        *address = *from.slotAddress(slot);
        return;
    case NSAttributeType::Int16:
        std::memcpy(address, from.slotAddress(slot), sizeof(qint16));
        return;
    default:
        std::memcpy(address, from.slotAddress(slot), sizeof(qint64));
    }
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
    return entity()->slotLayout(slot).type == NSAttributeType::Int16 ? load<qint16>(slotAddress(slot))
                                                                     : load<qint64>(slotAddress(slot));
}

double RowSnapshot::doubleAt(int slot) const
{
    return load<double>(slotAddress(slot));
}

const QString &RowSnapshot::stringAt(int slot) const
{
    static const QString nothing;
    return m_layout->hasSlot(slot) ? *stringIn(slotAddress(slot)) : nothing;
}

const QByteArray &RowSnapshot::bytesAt(int slot) const
{
    static const QByteArray nothing;
    return m_layout->hasSlot(slot) ? *bytesIn(slotAddress(slot)) : nothing;
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
                    : NSManagedObjectID(entity()->slotLayout(slot).relationship->destinationEntity, key);
}

Value RowSnapshot::valueAt(int slot) const
{
    if (isNull(slot)) {
        return {};
    }
    switch (entity()->slotLayout(slot).type) {
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
    const auto &layout = entity()->slotLayout(slot);
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
    switch (entity()->slotLayout(slot).type) {
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
    const bool isShared = m_row->m_references.load(std::memory_order_acquire) > 1;
    if (isShared || m_row->m_layout != m_row->entity()->wholeRowLayout()) {
        *this = m_row->copy();
    }
    return m_row;
}

RowSnapshot *RowSnapshotRef::fill()
{
    QUIB_ASSERT(m_row != nullptr && m_row->m_references.load(std::memory_order_acquire) == 1);
    return m_row;
}

void RowSnapshotRef::takeMissingSlots(const RowSnapshotRef &other)
{
    const quint64 missing = other.m_row->m_present & ~m_row->m_present;
    if (missing == 0) {
        return;
    }
    if ((m_row->m_present & ~other.m_row->m_present) == 0) {
        *this = other;
        return;
    }
    RowSnapshot *row = edit();
    for (int slot = 0; slot < row->entity()->slotCount(); ++slot) {
        if ((missing & RowSnapshot::bit(slot)) != 0) {
            row->copyValue(slot, *other.m_row);
        }
    }
    row->m_present |= missing;
    row->m_null |= other.m_row->m_null & missing;
}

} // namespace quib
