#pragma once

#include <Foundation/NSDate.h>
#include <Foundation/NSError.h>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>
#include <variant>

namespace quib {

/// A value of a property list: nothing, truth, integer, real number, string, bytes, date, or a list or dictionary of
/// values. A value type. Nothing is not storable; it stands for "absent".
class PropertyValue
{
public:
    using Array = QList<PropertyValue>;
    using Dictionary = QMap<QString, PropertyValue>;
    enum class Type
    {
        Null,
        Boolean,
        Integer,  ///< fits a signed 64-bit integer
        Unsigned, ///< above the largest signed 64-bit integer
        Real,
        String,
        Data,
        Date,
        Array,
        Dictionary,
    };

    PropertyValue() = default;
    PropertyValue(bool value)
        : m_value(value)
    {
    }
    PropertyValue(int value)
        : m_value(static_cast<qint64>(value))
    {
    }
    PropertyValue(qint64 value)
        : m_value(value)
    {
    }
    PropertyValue(quint64 value);
    PropertyValue(double value)
        : m_value(value)
    {
    }
    PropertyValue(QString value)
        : m_value(std::move(value))
    {
    }
    PropertyValue(QByteArray value)
        : m_value(std::move(value))
    {
    }
    PropertyValue(NSDate value)
        : m_value(value)
    {
    }
    PropertyValue(Array value)
        : m_value(std::move(value))
    {
    }
    PropertyValue(Dictionary value)
        : m_value(std::move(value))
    {
    }
    PropertyValue(const void *) = delete;

    [[nodiscard]] Type type() const { return static_cast<Type>(m_value.index()); }
    [[nodiscard]] bool isNull() const { return type() == Type::Null; }
    [[nodiscard]] bool isNumber() const;

    // Lenient reading, as settings need it: another type gives the fallback.
    /// Numbers are true when not zero; strings when they begin with Y, y, T, t or a digit other than 0.
    [[nodiscard]] bool toBool(bool fallback = false) const;
    /// Whole part of reals, cut to the type's range; strings are read as decimal numbers.
    [[nodiscard]] qint64 toInteger(qint64 fallback = 0) const;
    [[nodiscard]] double toDouble(double fallback = 0) const;
    [[nodiscard]] QString toString() const;

    // Exact reading: another type gives nothing.
    [[nodiscard]] std::optional<quint64> asUnsigned() const;
    [[nodiscard]] std::optional<NSDate> asDate() const;
    [[nodiscard]] std::optional<QString> asString() const;
    [[nodiscard]] std::optional<QByteArray> asData() const;
    [[nodiscard]] const Array *asArray() const { return std::get_if<Array>(&m_value); }
    [[nodiscard]] const Dictionary *asDictionary() const { return std::get_if<Dictionary>(&m_value); }

    friend bool operator==(const PropertyValue &a, const PropertyValue &b);

private:
    std::variant<std::monostate, bool, qint64, quint64, double, QString, QByteArray, NSDate, Array, Dictionary> m_value;
};

bool operator==(const PropertyValue &a, const PropertyValue &b);

enum class PropertyListFormat
{
    Binary, ///< "bplist00"
    XML,
};

/// Bounds on what is read. Deeper or larger input is refused with an error, in time linear in its size.
inline constexpr int kPropertyListMaximumDepth = 128;
inline constexpr qint64 kPropertyListMaximumSize = 16 * 1024 * 1024;

/// Reads a property list of either format.
/// Shape:   every text survives in the binary format: NUL, lone surrogates, U+FEFF.
/// Errors:  PropertyListReadCorrupt, with a message that says what is wrong and where.
[[nodiscard]] std::optional<PropertyValue> readPropertyList(const QByteArray &bytes, NSError *error);

/// Writes a property list.
/// Errors:  PropertyListWriteInvalid for a value with nothing in it, nested too deep, or, in XML, with a character that
///          XML cannot hold.
[[nodiscard]] std::optional<QByteArray> writePropertyList(const PropertyValue &value, PropertyListFormat format,
                                                          NSError *error);

} // namespace quib
