#pragma once

#include "PropertyList.h"

namespace quib {

inline constexpr char kBinaryMagic[] = "bplist00";
/// Seconds from 1970 to 2001, the epoch of stored dates.
inline constexpr double kSecondsTo2001 = 978307200;

// PropertyList+Binary.cpp
[[nodiscard]] std::optional<PropertyValue> readBinaryPropertyList(const QByteArray &bytes, NSError *error);
[[nodiscard]] QByteArray writeBinaryPropertyList(const PropertyValue &value);

// PropertyList+XML.cpp
[[nodiscard]] std::optional<PropertyValue> readXMLPropertyList(const QByteArray &bytes, NSError *error);
[[nodiscard]] std::optional<QByteArray> writeXMLPropertyList(const PropertyValue &value, NSError *error);

} // namespace quib
