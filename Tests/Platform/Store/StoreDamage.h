#pragma once

#include <QString>

namespace quib::tests {

/// Writes nonsense over the first page of every table and index of a store that is closed, but for those that its
/// opening reads: it opens, and none of its rows can be read.
void damageRows(const QString &path);

} // namespace quib::tests
