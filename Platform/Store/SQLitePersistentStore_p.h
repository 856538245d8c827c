#pragma once

#include "SQLiteDatabase_p.h"
#include "SQLitePersistentStore.h"

#include <string>
#include <string_view>
#include <vector>

namespace quib {

/// The last value of a column, kept to be shared: device names and clocks are the same in row after row. A column whose
/// values differ is soon left alone.
struct RepeatedValue
{
    static constexpr size_t kLongest = 256;
    static constexpr int kPatience = 8;
    std::string bytes;
    QString text;
    QByteArray blob;
    int misses = 0;

    /// Whether the value is the last one; if not, and if it is worth it, keeps the bytes for the next row.
    [[nodiscard]] bool isLast(std::string_view value)
    {
        if (misses >= kPatience || value.size() > kLongest) {
            return false;
        }
        if (!bytes.empty() && value == bytes) {
            misses = 0;
            return true;
        }
        ++misses;
        bytes = value;
        return false;
    }
};

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
    /// One a column.
    mutable std::vector<RepeatedValue> repeated;
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
inline void readSlot(const SQLiteStatement &statement, int column, RowSnapshot &row, int slot, RepeatedValue &repeated)
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
        if (statement.isNull(column)) {
            row.setStringAt(slot, QString());
        } else if (repeated.isLast(statement.view(column))) {
            row.setStringAt(slot, repeated.text);
        } else {
            repeated.text = statement.text(column);
            row.setStringAt(slot, repeated.text);
        }
        return;
    case NSAttributeType::Binary:
        if (statement.isNull(column)) {
            row.setValueAt(slot, {});
        } else if (repeated.isLast(statement.view(column))) {
            row.setValueAt(slot, repeated.blob);
        } else {
            repeated.blob = statement.bytes(column);
            row.setValueAt(slot, repeated.blob);
        }
        return;
    }
}

} // namespace quib
