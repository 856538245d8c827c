#pragma once

#include <QtGlobal>

#include <array>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class NSEntityDescription;

namespace quib {

/// Where the values of some slots of an entity lie in a packed row: a fetch that reads a few columns of many rows makes
/// room for those alone. Owned by its entity, immutable, any thread.
class RowLayout
{
public:
    /// slots: bit i stands for slot i of the entity.
    RowLayout(const NSEntityDescription *entity, quint64 slotMask);

    [[nodiscard]] const NSEntityDescription *entity() const { return m_entity; }
    [[nodiscard]] quint64 slotMask() const { return m_slotMask; }
    [[nodiscard]] bool hasSlot(int slot) const { return (m_slotMask >> slot & 1) != 0; }
    /// Units: bytes from the start of the packed values. Requires: hasSlot(slot).
    [[nodiscard]] quint32 offset(int slot) const { return m_offsets[static_cast<size_t>(slot)]; }
    /// Units: bytes of the packed values.
    [[nodiscard]] quint32 packedSize() const { return m_packedSize; }
    [[nodiscard]] const std::vector<int> &stringSlots() const { return m_stringSlots; }
    [[nodiscard]] const std::vector<int> &binarySlots() const { return m_binarySlots; }

private:
    const NSEntityDescription *m_entity;
    quint64 m_slotMask;
    quint32 m_packedSize = 0;
    std::array<quint16, 64> m_offsets{};
    std::vector<int> m_stringSlots;
    std::vector<int> m_binarySlots;
};

/// The layouts of one entity that were asked for: few, as few sets of columns are ever fetched. Any thread.
class RowLayouts
{
public:
    [[nodiscard]] const RowLayout *layoutOfSlots(const NSEntityDescription *entity, quint64 slotMask) const;

private:
    mutable std::mutex m_mutex;
    mutable std::map<quint64, std::unique_ptr<const RowLayout>> m_layouts;
};

} // namespace quib
