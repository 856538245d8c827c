#pragma once

#include "NSManagedObjectID.h"
#include "NSManagedObjectModel.h"
#include "Value.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <utility>

namespace quib {

/// What a row held at one moment: one packed block, immutable once shared, counted, passed freely between contexts and
/// queues. Slot i is attribute i of the entity; the slots after the attributes are the to-one relationships. A slot may
/// be absent (not read yet): lazy attributes normally are, and it reads as nothing. A narrow snapshot has room for some
/// slots only.
///
/// Invariants: (1) the entity never changes; (2) a snapshot with more than one holder, or a narrow one that was filled,
/// is never written: copy() first.
class RowSnapshot
{
public:
    /// A snapshot of default values with every slot present.
    [[nodiscard]] static class RowSnapshotRef make(const NSEntityDescription *entity);
    /// A snapshot in which no slot is present.
    [[nodiscard]] static class RowSnapshotRef makeEmpty(const NSEntityDescription *entity);
    /// The same with room for the slots of a layout only. Written through RowSnapshotRef::fill().
    [[nodiscard]] static class RowSnapshotRef makeNarrow(const RowLayout *layout);
    /// With room for every slot.
    [[nodiscard]] class RowSnapshotRef copy() const;

    [[nodiscard]] const NSEntityDescription *entity() const { return m_layout->entity(); }
    /// The store's count of writes of this row when it was read; 0 for a row that was never saved.
    [[nodiscard]] qint64 version() const;
    void setVersion(qint64 version);

    [[nodiscard]] bool isPresent(int slot) const;
    void setAbsent(int slot);
    [[nodiscard]] bool isNull(int slot) const;

    // Typed reads; null gives 0, false, empty. Requires: the slot is present and of that type.
    [[nodiscard]] bool boolAt(int slot) const;
    [[nodiscard]] qint64 integerAt(int slot) const;
    [[nodiscard]] double doubleAt(int slot) const;
    [[nodiscard]] const QString &stringAt(int slot) const;
    [[nodiscard]] const QByteArray &bytesAt(int slot) const;
    [[nodiscard]] NSDate dateAt(int slot) const;
    /// To-one relationships: the key of the target row (negative when temporary), 0 for none.
    [[nodiscard]] qint64 targetKeyAt(int slot) const;
    /// To-one relationships: the target with its concrete entity where it is known, else the destination entity.
    [[nodiscard]] NSManagedObjectID targetAt(int slot) const;
    [[nodiscard]] Value valueAt(int slot) const;

    /// Writes; makes the slot present. Nothing in a number or boolean becomes its default.
    void setValueAt(int slot, const Value &value);
    void setStringAt(int slot, QString value);
    /// Booleans and whole numbers; out of an Int16 is cut to its bounds.
    void setNumberAt(int slot, qint64 value);
    void setDateAt(int slot, double secondsSince1970);
    void setTargetAt(int slot, const NSManagedObjectID &target);
    void setBytesAt(int slot, QByteArray value);
    /// Requires: the slot is still empty, and no number or boolean.
    void setNullAt(int slot)
    {
        assertRoom(slot);
        m_present |= bit(slot);
        m_null |= bit(slot);
    }

    /// True when both hold the same in a slot that is present in both.
    [[nodiscard]] bool slotEquals(int slot, const RowSnapshot &other) const;

    RowSnapshot(const RowSnapshot &) = delete;
    RowSnapshot &operator=(const RowSnapshot &) = delete;

private:
    friend class RowSnapshotRef;
    explicit RowSnapshot(const RowLayout *layout);
    ~RowSnapshot();
    static RowSnapshot *allocate(const RowLayout *layout);
    static void destroy(RowSnapshot *row);
    void assertRoom([[maybe_unused]] int slot) const { QUIB_ASSERT(m_layout->hasSlot(slot)); }
    [[nodiscard]] char *slotAddress(int slot)
    {
        assertRoom(slot);
        return reinterpret_cast<char *>(this + 1) + m_layout->offset(slot);
    }
    /// Of a slot that there is no room for: of a number that is nothing.
    [[nodiscard]] const char *slotAddress(int slot) const
    {
        return m_layout->hasSlot(slot) ? reinterpret_cast<const char *>(this + 1) + m_layout->offset(slot) : kNothing;
    }
    /// Takes over the value alone, not whether the slot is present.
    void copyValue(int slot, const RowSnapshot &from);
    [[nodiscard]] static constexpr quint64 bit(int slot) { return quint64{1} << slot; }
    void setFilled(int slot)
    {
        m_present |= bit(slot);
        m_null &= ~bit(slot);
    }

    alignas(qint64) static constexpr char kNothing[sizeof(qint64)] = {};

    // The packed values follow the object in the same block.
    mutable std::atomic<int> m_references{0};
    const RowLayout *m_layout;
    qint64 m_version = 0;
    quint64 m_present = 0; // bit i: slot i is present
    quint64 m_null = 0;    // bit i: slot i is nothing
};

// OPTIMIZATION: the setters that a fetch calls for most columns of every row stand here.
inline void RowSnapshot::setNumberAt(int slot, qint64 value)
{
    setFilled(slot);
    switch (entity()->slotLayout(slot).type) {
    case NSAttributeType::Boolean:
        *slotAddress(slot) = value != 0 ? 1 : 0;
        return;
    case NSAttributeType::Int16: {
        const auto cut = static_cast<qint16>(std::clamp<qint64>(value, INT16_MIN, INT16_MAX));
        std::memcpy(slotAddress(slot), &cut, sizeof(cut));
        return;
    }
    default:
        std::memcpy(slotAddress(slot), &value, sizeof(value));
    }
}

inline void RowSnapshot::setDateAt(int slot, double secondsSince1970)
{
    setFilled(slot);
    std::memcpy(slotAddress(slot), &secondsSince1970, sizeof(secondsSince1970));
}

/// A counted handle of a snapshot; null by default.
class RowSnapshotRef
{
public:
    RowSnapshotRef() = default;
    explicit RowSnapshotRef(RowSnapshot *row);
    RowSnapshotRef(const RowSnapshotRef &other);
    RowSnapshotRef(RowSnapshotRef &&other) noexcept
        : m_row(std::exchange(other.m_row, nullptr))
    {
    }
    RowSnapshotRef &operator=(RowSnapshotRef other) noexcept
    {
        std::swap(m_row, other.m_row);
        return *this;
    }
    ~RowSnapshotRef();

    [[nodiscard]] explicit operator bool() const { return m_row != nullptr; }
    [[nodiscard]] const RowSnapshot *operator->() const { return m_row; }
    [[nodiscard]] const RowSnapshot &operator*() const { return *m_row; }
    /// For writing: the block itself when this is its only holder and it has room for every slot, else a copy that this
    /// handle then holds.
    [[nodiscard]] RowSnapshot *edit();
    /// For writing the slots of a narrow snapshot that was just made. Requires: this is its only holder.
    [[nodiscard]] RowSnapshot *fill();
    /// Takes over the slots that the other has and this one lacks. Requires: both are the same version of one row.
    void takeMissingSlots(const RowSnapshotRef &other);
    friend bool operator==(const RowSnapshotRef &a, const RowSnapshotRef &b) = default;

private:
    RowSnapshot *m_row = nullptr;
};

} // namespace quib
