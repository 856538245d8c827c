#pragma once

#include "SQLiteDatabase_p.h"
#include "SQLitePersistentStore.h"

#include <Text/Folding.h>

#include <string>
#include <string_view>
#include <vector>

namespace quib {

/// A value of a column, kept to be shared: device names and clocks are the same in row after row. A column whose values
/// differ is soon left alone. Invariant: text or blob is what bytes say.
struct RepeatedValue
{
    static constexpr size_t kLongest = 256;
    static constexpr int kPatience = 8;
    std::string bytes;
    QString text;
    QByteArray blob;
    int misses = 0;

    [[nodiscard]] bool isLast(std::string_view value)
    {
        if (misses >= kPatience || bytes.empty() || value != bytes) {
            return false;
        }
        misses = 0;
        return true;
    }
    /// Whether a value that is not the last one is worth being kept; its bytes are then, and the rest is the caller's.
    [[nodiscard]] bool keep(std::string_view value)
    {
        if (misses >= kPatience || value.size() > kLongest) {
            return false;
        }
        ++misses;
        bytes = value;
        return true;
    }
};

/// Which columns a SELECT of whole rows has, and where each goes in a snapshot of each concrete entity.
struct SQLitePersistentStore::ColumnPlan
{
    struct Slots
    {
        const NSEntityDescription *entity = nullptr;
        std::vector<int> indexes; // -1: a column of a sibling entity
        const RowLayout *layout = nullptr;
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

/// Reads one column straight into a slot of a new snapshot, without a Value in between. Requires: the slot is nothing.
inline void readSlot(const SQLiteStatement &statement, int column, RowSnapshot &row, int slot, RepeatedValue &repeated)
{
    const auto &layout = row.entity()->slotLayout(slot);
    if (layout.type == NSAttributeType::Boolean || layout.type == NSAttributeType::Int16 ||
        layout.type == NSAttributeType::Int64) {
        const qint64 number = statement.integer(column);
        if (layout.relationship == nullptr) {
            row.setNumberAt(slot, number);
        } else if (number != 0) {
            row.setTargetAt(slot, NSManagedObjectID(layout.relationship->destinationEntity, number));
        } else {
            row.setNullAt(slot);
        }
        return;
    }
    sqlite3_value *value = statement.value(column);
    if (sqlite3_value_type(value) == SQLITE_NULL) {
        if (layout.type == NSAttributeType::Double) {
            row.setValueAt(slot, {}); // a number is never nothing
        } else {
            row.setNullAt(slot);
        }
        return;
    }
    if (layout.type == NSAttributeType::Double) {
        row.setValueAt(slot, sqlite3_value_double(value));
        return;
    }
    if (layout.type == NSAttributeType::Date) {
        row.setDateAt(slot, sqlite3_value_double(value));
        return;
    }
    const bool isText = layout.type == NSAttributeType::String;
    const auto *bytes = isText ? reinterpret_cast<const char *>(sqlite3_value_text(value))
                               : static_cast<const char *>(sqlite3_value_blob(value));
    const int size = sqlite3_value_bytes(value);
    const std::string_view view(bytes == nullptr ? "" : bytes, static_cast<size_t>(size));
    if (isText) {
        if (repeated.isLast(view)) {
            row.setStringAt(slot, repeated.text);
            return;
        }
        QString text = bytes == nullptr ? QString() : fromUtf8Lossless(bytes, size);
        if (repeated.keep(view)) {
            repeated.text = text;
        }
        row.setStringAt(slot, std::move(text));
        return;
    }
    if (repeated.isLast(view)) {
        row.setBytesAt(slot, repeated.blob);
        return;
    }
    QByteArray blob(view.data(), size); // nothing in it is not nothing
    if (repeated.keep(view)) {
        repeated.blob = blob;
    }
    row.setBytesAt(slot, std::move(blob));
}

} // namespace quib
