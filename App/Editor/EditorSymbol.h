#pragma once

#include <QIcon>
#include <QString>

namespace quib {

/// A symbol of the editor's bars, a line drawing in the colour of the palette's text, sharp at any scale. Queue: main.
/// Shape: an empty icon for a name that there is none of.
[[nodiscard]] QIcon editorSymbol(const QString &name);

} // namespace quib
