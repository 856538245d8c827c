#pragma once

#include <QString>

class QBNoteFile;

namespace quib {

/// The marker that stands for an attachment in a text: a picture's for the extensions of pictures
/// that the markup shows, a file's for all others.
[[nodiscard]] QString markerForFile(const QBNoteFile &file);

} // namespace quib
