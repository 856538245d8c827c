#pragma once

#include "SQLiteDatabase_p.h"
#include "SQLitePersistentStore.h"

#include <vector>

namespace quib {

/// Which columns a SELECT of whole rows has, and where each goes in a snapshot of each concrete entity.
struct SQLitePersistentStore::ColumnPlan
{
    struct Slots
    {
        const NSEntityDescription *entity = nullptr;
        std::vector<int> indexes; // -1: a column of a sibling entity
    };
    const NSEntityDescription *entity = nullptr;
    bool hasEntityColumn = false;
    QByteArray columns;
    std::vector<Slots> slotsOf;
};

[[nodiscard]] inline Value readValue(const SQLiteStatement &statement, int column, NSAttributeType type)
{
    if (statement.isNull(column)) {
        return {};
    }
    switch (type) {
    case NSAttributeType::Boolean:
        return statement.integer(column) != 0;
    case NSAttributeType::Int16:
    case NSAttributeType::Int64:
        return statement.integer(column);
    case NSAttributeType::Double:
        return statement.real(column);
    case NSAttributeType::Date:
        return NSDate::dateWithTimeIntervalSince1970(statement.real(column));
    case NSAttributeType::String:
        return statement.text(column);
    case NSAttributeType::Binary:
        return statement.bytes(column);
    }
    return {};
}

/// Reads one column straight into a snapshot's slot, without a Value in between.
inline void readSlot(const SQLiteStatement &statement, int column, RowSnapshot &row, int slot)
{
    const auto &layout = row.entity()->slotLayout(slot);
    switch (layout.type) {
    case NSAttributeType::Boolean:
    case NSAttributeType::Int16:
    case NSAttributeType::Int64:
        if (layout.relationship != nullptr) {
            const qint64 key = statement.integer(column);
            row.setTargetAt(slot, key == 0 ? NSManagedObjectID()
                                           : NSManagedObjectID(layout.relationship->destinationEntity, key));
        } else {
            row.setNumberAt(slot, statement.integer(column));
        }
        return;
    case NSAttributeType::Double:
        row.setValueAt(slot, statement.real(column));
        return;
    case NSAttributeType::Date:
        if (statement.isNull(column)) {
            row.setValueAt(slot, {});
        } else {
            row.setDateAt(slot, statement.real(column));
        }
        return;
    case NSAttributeType::String:
        row.setStringAt(slot, statement.isNull(column) ? QString() : statement.text(column));
        return;
    case NSAttributeType::Binary:
        row.setValueAt(slot, readValue(statement, column, layout.type));
        return;
    }
}

} // namespace quib
