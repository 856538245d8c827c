#pragma once

#include "QBNoteFile.h"

#include <Files/FileWatcher.h>

#include <QList>
#include <QStringList>

#include <memory>

class NSManagedObjectContext;

/// Notices attachments that other programs change on disk: their rows are to be uploaded again, their thumbnails go,
/// and QBNoteFilesDowloadedNotification is posted. Watches from its making until its end. Owned by the application;
/// main queue.
class QBLocalFileWatcher
{
public:
    explicit QBLocalFileWatcher(std::shared_ptr<NSManagedObjectContext> managedObjectContext);

    /// Looks at all attachments in a private child context; for what changed while nobody watched. The context takes
    /// the changes over and is saved.
    void checkAndUpdateLocalFilesInBackground();
    /// Has the attachments that came in and reached no text collected with the unused ones. All texts are read for
    /// that, in a private child context, but only where there may be such attachments. The context is saved.
    /// Requires: no text is waiting to be brought back: it may name one of them.
    void markForgottenFilesInBackground();
    /// Compares the rows with the disk and saves the context, later, on its queue. Attachments that are unknown on disk
    /// or not downloaded are left alone.
    /// Requires: the files are the context's.
    void updateNoteFiles(const QList<quib::Ref<QBNoteFile>> &noteFiles, NSManagedObjectContext &managedObjectContext);
    void updateNoteFilesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                              NSManagedObjectContext &managedObjectContext);

    /// What notices the changes below "Local Files".
    [[nodiscard]] quib::FileWatcher &fileWatcher() const { return *m_fileWatcher; }

private:
    void setupWatcher();

    std::shared_ptr<NSManagedObjectContext> m_managedObjectContext;
    std::unique_ptr<quib::FileWatcher> m_fileWatcher;
    std::shared_ptr<char> m_life = std::make_shared<char>(); ///< a check that is under way ends with the watcher
};
