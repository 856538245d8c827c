#pragma once

#include <QString>
#include <QStringList>

namespace quib {

/// The name of the picture for a tag: that of the first keyword that a word of the leaf name is, and "tag" for all
/// others. Case and diacritics do not count. Any thread.
[[nodiscard]] QString iconNameForTagTitle(const QString &title);

/// All names that a tag can have, in alphabetical order, for whoever offers a choice.
[[nodiscard]] QStringList tagIconNames();

} // namespace quib
