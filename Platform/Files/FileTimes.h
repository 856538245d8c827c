#pragma once

#include <Foundation/NSDate.h>

#include <QString>

#include <optional>

namespace quib {

/// When the content of a file was changed last, as its file system tells; nothing where there is no file to ask.
[[nodiscard]] std::optional<NSDate> modificationDateOfFile(const QString &path);

} // namespace quib
