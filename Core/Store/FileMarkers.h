#pragma once

#include <QList>
#include <QString>

namespace quib {

/// One attachment's marker in a text.
struct FileMarker
{
    QString uniqueIdentifier;
    /// Units: UTF-16 code units from the start of the text.
    qint64 position = 0;
};

/// The markers of a text: all of pictures first, then all of other files, each in text order. Pure, any thread.
[[nodiscard]] QList<FileMarker> fileMarkersInText(const QString &text);

/// A file's name as an attachment bears it: without what would end its marker or break it in two. Brackets end it; it
/// reaches over no end of a line, of whatever kind; a backtick begins code, in which it is mere text; U+FFFC is taken
/// out of texts. Other controls go too.
/// Shape: "file" where nothing is left that names a file. Pure, any thread.
[[nodiscard]] QString fileNameForMarker(const QString &name);

} // namespace quib
