#include "QBLocalFileWatcher.h"

#include "ForgottenFiles.h"
#include "QBLocalFileManager.h"
#include "QBNoteFilesDowloadedNotification.h"

#include <Files/FileTimes.h>
#include <Foundation/DispatchQueue.h>
#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>

#include <utility>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

/// Seconds between a change on disk and its being taken in.
constexpr double kLatency = 3.0;

/// A row keeps microseconds, a file system may keep more.
bool isLater(NSDate date, std::optional<NSDate> known)
{
    constexpr double kRounding = 2e-6;
    return !known || date.timeIntervalSinceDate(*known) > kRounding;
}

/// Takes over what changed on disk. Queue: the files'.
QStringList updateChangedFiles(const QList<Ref<QBNoteFile>> &noteFiles)
{
    QStringList changed;
    for (const auto &file : noteFiles) {
        const auto url = file->isDeleted() || !file->downloaded() ? std::nullopt : file->fileURL();
        const auto date = url ? quib::modificationDateOfFile(url->toLocalFile()) : std::nullopt;
        if (!date || !isLater(*date, file->modificationDate())) {
            continue;
        }
        file->setUploaded(false);
        file->setUploadedDate(std::nullopt);
        file->updateFileMetadata();
        file->deleteFileThumbnails();
        changed.append(file->uniqueIdentifier());
    }
    return changed;
}

bool saved(NSManagedObjectContext &moc)
{
    NSError error;
    if (moc.save(&error)) {
        return true;
    }
    QBLogError(u"the changed attachments could not be saved: "_s + error.localizedDescription());
    return false;
}

void saveAndPost(NSManagedObjectContext &moc, const QStringList &changed)
{
    if (!changed.isEmpty() && saved(moc)) {
        quib::DispatchQueue::main()->async([changed] { QBNoteFilesDowloadedNotification().notify(changed); });
    }
}

} // namespace

QBLocalFileWatcher::QBLocalFileWatcher(std::shared_ptr<NSManagedObjectContext> managedObjectContext)
    : m_managedObjectContext(std::move(managedObjectContext))
{
    setupWatcher();
}

void QBLocalFileWatcher::setupWatcher()
{
    const QUrl folder = QBLocalFileManager::localFileManagerForPathComponent(u"Local Files"_s)->baseURL();
    m_fileWatcher =
        std::make_unique<quib::FileWatcher>(folder.toLocalFile(), kLatency, [this](const QStringList &folders) {
            QStringList identifiers;
            for (const QString &changed : folders) {
                const QString identifier = changed.section(u'/', -1);
                QBLogInfo(u"LOCAL FILE MODIFIED -> "_s + identifier);
                identifiers.append(identifier);
            }
            updateNoteFilesWithUniqueIdentifiers(identifiers, *m_managedObjectContext);
        });
    if (!m_fileWatcher->isComplete()) {
        QBLogWarn(u"not all folders of attachments can be watched; the next launch finds what changes in the others"_s);
    }
}

void QBLocalFileWatcher::checkAndUpdateLocalFilesInBackground()
{
    const auto context = NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue,
                                                                   m_managedObjectContext);
    context->performBlock([context, life = std::weak_ptr<char>(m_life)] {
        const auto files = QBNoteFile::filesInManagedObjectContext(*context, {});
        // The store may be closed by now, and the watcher gone with it.
        const QStringList changed = life.expired() ? QStringList() : updateChangedFiles(files);
        if (!changed.isEmpty() && saved(*context)) {
            const auto parent = context->parentContext();
            parent->performBlock([parent, changed, life] {
                if (!life.expired()) {
                    saveAndPost(*parent, changed);
                }
            });
        }
    });
}

void QBLocalFileWatcher::markForgottenFilesInBackground()
{
    const QSet<QString> possible = quib::possiblyForgottenFiles(*m_managedObjectContext);
    if (possible.isEmpty()) {
        return;
    }
    const auto context = NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue,
                                                                   m_managedObjectContext);
    context->performBlock([context, possible, life = std::weak_ptr<char>(m_life)] {
        const QSet<QString> forgotten = life.expired() ? QSet<QString>() : quib::filesNamedInNoText(possible, *context);
        const auto parent = context->parentContext();
        parent->performBlock([parent, forgotten, life] {
            if (forgotten.isEmpty() || life.expired()) {
                return;
            }
            // One that came into a note meanwhile is none any more.
            auto stillForgotten = quib::possiblyForgottenFiles(*parent);
            quib::markAsUnused(stillForgotten.intersect(forgotten), *parent);
            static_cast<void>(saved(*parent));
        });
    });
}

void QBLocalFileWatcher::updateNoteFiles(const QList<Ref<QBNoteFile>> &noteFiles,
                                         NSManagedObjectContext &managedObjectContext)
{
    const auto context = managedObjectContext.shared_from_this();
    context->performBlock([context, noteFiles] { saveAndPost(*context, updateChangedFiles(noteFiles)); });
}

void QBLocalFileWatcher::updateNoteFilesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                                              NSManagedObjectContext &managedObjectContext)
{
    const auto context = managedObjectContext.shared_from_this();
    context->performBlock([context, uniqueIdentifiers] {
        const auto files = QBNoteFile::noteFilesWithUniqueIdentifiers(uniqueIdentifiers, *context);
        saveAndPost(*context, updateChangedFiles(files));
    });
}
