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

} // namespace quib
