#pragma once

class QBNoteFile;

namespace quib {

/// Has the folder of an attachment that is being deleted, and its thumbnails, removed from disk: at once for a row that
/// no save ever wrote, else right after the save that makes the deletion durable. A rolled back or failing deletion
/// removes nothing; a crash in between leaves an orphaned folder, which a check of the store finds. Main thread only.
void removeFolderWithDeletionOf(const QBNoteFile &file);

} // namespace quib
