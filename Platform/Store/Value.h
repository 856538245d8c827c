#pragma once

#include <Foundation/NSDate.h>

#include <QByteArray>
#include <QString>

#include <variant>

namespace quib {

/// The value of one attribute: nothing, boolean, whole number, number, string, instant, bytes. A value. Whole numbers
/// of every width are qint64 here; the model says how wide they are.
using Value = std::variant<std::monostate, bool, qint64, double, QString, NSDate, QByteArray>;

[[nodiscard]] inline bool isNothing(const Value &value)
{
    return std::holds_alternative<std::monostate>(value);
}

/// The value of type T, or T's default where the value is nothing or of another type.
template <typename T> [[nodiscard]] T valueOr(const Value &value, T fallback = {})
{
    const T *held = std::get_if<T>(&value);
    return held != nullptr ? *held : fallback;
}

} // namespace quib
