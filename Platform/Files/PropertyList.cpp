#include "PropertyList.h"

#include "PropertyList_p.h"

#include <QLocale>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// What keeps a value from being written; empty when it can be.
QString obstacle(const PropertyValue &value, int depth)
{
    if (depth > kPropertyListMaximumDepth) {
        return u"values are nested more than %1 deep"_s.arg(kPropertyListMaximumDepth);
    }
    if (value.isNull()) {
        return u"a value is absent"_s;
    }
    if (const auto date = value.asDate(); date && !std::isfinite(date->timeIntervalSince1970())) {
        return u"a date is not a number"_s;
    }
    if (const auto *items = value.asArray()) {
        for (const PropertyValue &item : *items) {
            if (QString found = obstacle(item, depth + 1); !found.isEmpty()) {
                return found;
            }
        }
    }
    if (const auto *items = value.asDictionary()) {
        for (const PropertyValue &item : *items) {
            if (QString found = obstacle(item, depth + 1); !found.isEmpty()) {
                return found;
            }
        }
    }
    return {};
}

} // namespace

PropertyValue::PropertyValue(quint64 value)
{
    if (value <= static_cast<quint64>(std::numeric_limits<qint64>::max())) {
        m_value = static_cast<qint64>(value);
    } else {
        m_value = value;
    }
}

bool PropertyValue::isNumber() const
{
    return type() >= Type::Boolean && type() <= Type::Real;
}

bool PropertyValue::toBool(bool fallback) const
{
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_value);
    case Type::Integer:
        return std::get<qint64>(m_value) != 0;
    case Type::Unsigned:
        return true;
    case Type::Real:
        return std::get<double>(m_value) != 0;
    case Type::String: {
        const QString text = std::get<QString>(m_value).trimmed();
        return !text.isEmpty() && u"YyTt123456789"_s.contains(text.front());
    }
    default:
        return fallback;
    }
}

qint64 PropertyValue::toInteger(qint64 fallback) const
{
    constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_value) ? 1 : 0;
    case Type::Integer:
        return std::get<qint64>(m_value);
    case Type::Unsigned:
        return kLargest;
    case Type::Real: {
        const double real = std::get<double>(m_value);
        if (std::isnan(real)) {
            return fallback;
        }
        if (real >= 0x1p63) {
            return kLargest;
        }
        return real <= -0x1p63 ? std::numeric_limits<qint64>::min() : static_cast<qint64>(real);
    }
    case Type::String: {
        bool isNumeric = false;
        const qint64 read = std::get<QString>(m_value).trimmed().toLongLong(&isNumeric);
        return isNumeric ? read : fallback;
    }
    default:
        return fallback;
    }
}

double PropertyValue::toDouble(double fallback) const
{
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_value) ? 1 : 0;
    case Type::Integer:
        return static_cast<double>(std::get<qint64>(m_value));
    case Type::Unsigned:
        return static_cast<double>(std::get<quint64>(m_value));
    case Type::Real:
        return std::get<double>(m_value);
    case Type::String: {
        bool isNumeric = false;
        const double read = std::get<QString>(m_value).trimmed().toDouble(&isNumeric);
        return isNumeric ? read : fallback;
    }
    default:
        return fallback;
    }
}

QString PropertyValue::toString() const
{
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_value) ? u"1"_s : u"0"_s;
    case Type::Integer:
        return QString::number(std::get<qint64>(m_value));
    case Type::Unsigned:
        return QString::number(std::get<quint64>(m_value));
    case Type::Real:
        return QString::number(std::get<double>(m_value), 'g', QLocale::FloatingPointShortest);
    case Type::String:
        return std::get<QString>(m_value);
    default:
        return {};
    }
}

std::optional<quint64> PropertyValue::asUnsigned() const
{
    if (type() == Type::Unsigned) {
        return std::get<quint64>(m_value);
    }
    if (type() == Type::Integer && std::get<qint64>(m_value) >= 0) {
        return static_cast<quint64>(std::get<qint64>(m_value));
    }
    return std::nullopt;
}

std::optional<NSDate> PropertyValue::asDate() const
{
    const auto *date = std::get_if<NSDate>(&m_value);
    return date != nullptr ? std::optional(*date) : std::nullopt;
}

std::optional<QString> PropertyValue::asString() const
{
    const auto *text = std::get_if<QString>(&m_value);
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<QByteArray> PropertyValue::asData() const
{
    const auto *bytes = std::get_if<QByteArray>(&m_value);
    return bytes != nullptr ? std::optional(*bytes) : std::nullopt;
}

bool operator==(const PropertyValue &a, const PropertyValue &b)
{
    return a.m_value == b.m_value;
}

std::optional<PropertyValue> readPropertyList(const QByteArray &bytes, NSError *error)
{
    if (bytes.size() > kPropertyListMaximumSize) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt),
                      u"a property list of %1 bytes is too large"_s.arg(bytes.size()));
        return std::nullopt;
    }
    return bytes.startsWith("bplist") ? readBinaryPropertyList(bytes, error) : readXMLPropertyList(bytes, error);
}

std::optional<QByteArray> writePropertyList(const PropertyValue &value, PropertyListFormat format, NSError *error)
{
    if (const QString found = obstacle(value, 1); !found.isEmpty()) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListWriteInvalid),
                      found);
        return std::nullopt;
    }
    if (format == PropertyListFormat::Binary) {
        return writeBinaryPropertyList(value);
    }
    return writeXMLPropertyList(value, error);
}

} // namespace quib
