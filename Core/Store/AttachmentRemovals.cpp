#include "AttachmentRemovals.h"

#include "QBLocalFileManager.h"
#include "QBNoteFile.h"
#include "QBThumbFileManager.h"
#include "StoreFetch.h"

#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

struct Removal
{
    NSManagedObjectID objectID;
    QString uniqueIdentifier;
    QString localFolderName;
    QUrl fileURL; ///< empty for a row without a file
};

/// What waits for saves of one root context.
struct Waiting
{
    std::weak_ptr<NSManagedObjectContext> context;
    QList<Removal> removals;
    ObservationToken token;
};

using WaitingByContext = QHash<const NSManagedObjectContext *, std::shared_ptr<Waiting>>;

WaitingByContext &waitingByContext()
{
    static WaitingByContext shared; // main thread only
    return shared;
}

/// The files, then their thumbnails: those go in one pass over the folder that all have in common.
void removeFilesOf(const QList<Removal> &removals)
{
    QList<QUrl> pictures;
    for (const Removal &removal : removals) {
        QBLogInfo(u"Deleting attachment "_s + removal.uniqueIdentifier);
        QBLocalFileManager::localFileManagerForPathComponent(removal.localFolderName)
            ->deleteFileForUniqueID(removal.uniqueIdentifier);
        if (!removal.fileURL.isEmpty()) {
            pictures.append(removal.fileURL);
        }
    }
    QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages)
        ->deleteAllThumbsForImageURLs(pictures);
}

/// A folder goes only when no other row, made by whoever, bears its name.
bool isStillUsed(const Removal &removal, NSManagedObjectContext &moc)
{
    const auto request =
        requestFor<QBNoteFile>(u"uniqueIdentifier == %@"_s, {predicateArgument(removal.uniqueIdentifier)});
    const auto count = moc.countForFetchRequest(request);
    return !count || *count > 0;
}

void removeSavedDeletions(Waiting &waiting, NSManagedObjectContext &moc, const NSManagedObjectSet &deleted)
{
    QSet<NSManagedObjectID> identities;
    for (const auto &object : deleted) {
        identities.insert(object->objectID());
    }
    QList<Removal> stillWaiting;
    QList<Removal> saved;
    for (const Removal &removal : std::exchange(waiting.removals, {})) {
        if (identities.contains(removal.objectID)) {
            if (!isStillUsed(removal, moc)) {
                saved.append(removal);
            }
            continue;
        }
        const auto object = moc.registeredObjectForID(removal.objectID);
        if (object && object->isDeleted()) {
            stillWaiting.append(removal);
        }
    }
    waiting.removals += stillWaiting;
    if (!saved.isEmpty()) {
        removeFilesOf(saved);
    }
}

Waiting &waitingForContext(NSManagedObjectContext &root)
{
    WaitingByContext &all = waitingByContext();
    all.removeIf([](const auto &each) { return each.value()->context.expired(); });
    auto &waiting = all[&root];
    if (!waiting) {
        waiting = std::make_shared<Waiting>();
        waiting->context = root.weak_from_this();
        waiting->token =
            root.didSave.add([weak = std::weak_ptr(waiting)](NSManagedObjectContext &moc,
                                                             const NSManagedObjectContext::Changes &changes) {
                if (const auto self = weak.lock(); self && !self->removals.isEmpty()) {
                    removeSavedDeletions(*self, moc, changes.deleted);
                }
            });
    }
    return *waiting;
}

} // namespace

void removeFolderWithDeletionOf(const QBNoteFile &file)
{
    const Removal removal{file.objectID(), file.uniqueIdentifier(), file.localFolderName(),
                          file.fileURL().value_or(QUrl())};
    if (removal.uniqueIdentifier.isEmpty()) {
        return;
    }
    if (removal.objectID.isTemporaryID()) {
        removeFilesOf({removal});
        return;
    }
    NSManagedObjectContext *root = file.managedObjectContext();
    while (root->parentContext()) {
        root = root->parentContext().get();
    }
    waitingForContext(*root).removals.append(removal);
}

} // namespace quib
