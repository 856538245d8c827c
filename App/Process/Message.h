#pragma once

#include <QString>

namespace quib {

/// Writes a message to standard error, each line behind the program's name.
void tellUser(const QString &message);

} // namespace quib
