#include "RowLayout.h"

#include "NSManagedObjectModel.h"

#include <QByteArray>
#include <QString>

#include <initializer_list>

namespace quib {

namespace {

quint16 sizeOfType(NSAttributeType type)
{
    switch (type) {
    case NSAttributeType::String:
        return sizeof(QString);
    case NSAttributeType::Binary:
        return sizeof(QByteArray);
    case NSAttributeType::Boolean:
        return 1;
    case NSAttributeType::Int16:
        return sizeof(qint16);
    default:
        return sizeof(qint64);
    }
}

} // namespace

RowLayout::RowLayout(const NSEntityDescription *entity, quint64 slotMask)
    : m_entity(entity)
    , m_slotMask(slotMask)
{
    static_assert(sizeof(QString) == 24 && sizeof(QByteArray) == 24);
    // Widest values first, so that every value is aligned without gaps.
    quint32 end = 0;
    for (const quint16 size : std::initializer_list<quint16>{24, 8, 2, 1}) {
        for (int slot = 0; slot < entity->slotCount(); ++slot) {
            const NSAttributeType type = entity->slotLayout(slot).type;
            if (!hasSlot(slot) || sizeOfType(type) != size) {
                continue;
            }
            m_offsets[static_cast<size_t>(slot)] = static_cast<quint16>(end);
            end += size;
            if (type == NSAttributeType::String) {
                m_stringSlots.push_back(slot);
            } else if (type == NSAttributeType::Binary) {
                m_binarySlots.push_back(slot);
            }
        }
    }
    m_packedSize = (end + 7) / 8 * 8;
}

const RowLayout *RowLayouts::layoutOfSlots(const NSEntityDescription *entity, quint64 slotMask) const
{
    const std::lock_guard lock(m_mutex);
    std::unique_ptr<const RowLayout> &layout = m_layouts[slotMask];
    if (layout == nullptr) {
        layout = std::make_unique<const RowLayout>(entity, slotMask);
    }
    return layout.get();
}

} // namespace quib
