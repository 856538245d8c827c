#include "AttributeValue.h"

#include <QHashFunctions>

#include <bit>
#include <cmath>

namespace quib {

namespace {

/// Up to here every whole double is an integer of the same value.
constexpr double kWholeLimit = 9007199254740992.0;

} // namespace

AttributeObject::~AttributeObject() = default;

AttributeValue::AttributeValue(double value)
{
    if (std::abs(value) <= kWholeLimit && std::trunc(value) == value) {
        m_value = static_cast<qint64>(value);
    } else {
        m_value = value;
    }
}

bool AttributeValue::boolValue() const
{
    const auto *integer = std::get_if<qint64>(&m_value);
    return integer != nullptr ? *integer != 0 : std::holds_alternative<double>(m_value);
}

qint64 AttributeValue::integerValue() const
{
    if (const auto *integer = std::get_if<qint64>(&m_value)) {
        return *integer;
    }
    const auto *number = std::get_if<double>(&m_value);
    return number != nullptr && std::abs(*number) <= kWholeLimit ? static_cast<qint64>(*number) : 0;
}

double AttributeValue::doubleValue() const
{
    if (const auto *integer = std::get_if<qint64>(&m_value)) {
        return static_cast<double>(*integer);
    }
    const auto *number = std::get_if<double>(&m_value);
    return number != nullptr ? *number : 0;
}

QString AttributeValue::stringValue() const
{
    const auto *string = std::get_if<QString>(&m_value);
    return string != nullptr ? *string : QString();
}

QUrl AttributeValue::urlValue() const
{
    const auto *url = std::get_if<QUrl>(&m_value);
    return url != nullptr ? *url : QUrl();
}

std::shared_ptr<AttributeObject> AttributeValue::objectValue() const
{
    const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&m_value);
    return object != nullptr ? *object : nullptr;
}

bool operator==(const AttributeValue &a, const AttributeValue &b)
{
    if (a.m_value.index() != b.m_value.index()) {
        return false;
    }
    if (const auto *number = std::get_if<double>(&a.m_value)) {
        // By their bits, so that what is not a number equals itself.
        return std::bit_cast<quint64>(*number) == std::bit_cast<quint64>(std::get<double>(b.m_value));
    }
    if (const auto *object = std::get_if<std::shared_ptr<AttributeObject>>(&a.m_value)) {
        const auto &other = std::get<std::shared_ptr<AttributeObject>>(b.m_value);
        return *object == other || ((*object)->kind() == other->kind() && (*object)->isEqual(*other));
    }
    return a.m_value == b.m_value;
}

size_t qHash(const AttributeValue &value, size_t seed) noexcept
{
    switch (value.m_value.index()) {
    case 1:
        return ::qHash(std::get<qint64>(value.m_value), seed);
    case 2:
        return ::qHash(std::bit_cast<quint64>(std::get<double>(value.m_value)), seed);
    case 3:
        return ::qHash(std::get<QString>(value.m_value), seed);
    case 4:
        return ::qHash(std::get<QUrl>(value.m_value), seed);
    case 5:
        return ::qHash(std::get<std::shared_ptr<AttributeObject>>(value.m_value)->hash(), seed);
    default:
        return seed;
    }
}

} // namespace quib
