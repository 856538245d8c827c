#pragma once

#include <Foundation/NSError.h>
#include <Store/Ref.h>

#include <QList>
#include <QString>
#include <QUrl>

class NSPasteboard;
class QBNote;

/// Makes a note of what another program has selected and hands over. Works on the installed store's main context and
/// saves it at once. Main queue.
class QBSendToQuibService
{
public:
    /// Makes a note of the first kind that the pasteboard holds: files, then other URLs, then plain text.
    /// Shape:   userData is what the desktop's entry was set up with; nothing depends on it.
    /// Errors:  false where no note was made, or it could not be saved; then as the operations below.
    bool sendToQuibService(const NSPasteboard &pasteboard, const QString &userData, NSError *error);

    // Each gives the note, or null where none was made. A note that could not be saved is there all the same, with an
    // error, and goes with the next save.

    /// A note with the markers of the files, an empty line between them.
    /// Errors: the last file that could not be taken, also where others were; null where none was.
    quib::Ref<QBNote> newNoteWithFiles(const QList<QUrl> &files, NSError *error = nullptr);
    /// A note with one URL a line.
    quib::Ref<QBNote> newNoteWithURLs(const QList<QUrl> &urls, NSError *error = nullptr);
    /// A note with the text as it stands.
    quib::Ref<QBNote> newNoteWithString(const QString &string, NSError *error = nullptr);
};
