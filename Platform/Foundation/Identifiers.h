#pragma once

#include <QString>

#include <functional>

namespace quib {

/// A string that no other machine or moment gives: upper-case UUID, process and count, without "/".
[[nodiscard]] QString globallyUniqueString();

/// A random UUID in canonical upper-case form.
[[nodiscard]] QString uuidString();

/// Replaces the source of both, for tests; an empty function goes back to the system's.
void setIdentifierSource(std::function<QString()> make);

} // namespace quib
