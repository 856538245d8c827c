#include "QBSendToQuibService.h"

#include "FileMarker.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Foundation/NSPasteboard.h>
#include <Logging/QBLogger.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

/// The main context of the installed store; null, with an error, before it is open.
std::shared_ptr<NSManagedObjectContext> mainContext(NSError *error)
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    const QBCoreDataStack *const stack = QBCoreDataStack::sharedStack();
    auto context = stack != nullptr ? stack->managedObjectContext() : nullptr;
    if (!context) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PersistentStoreOpen),
                      u"the store is not open"_s);
    }
    return context;
}

Ref<QBNote> savedNote(const QString &text, NSManagedObjectContext &context, NSError *error)
{
    auto note = QBNote::noteWithText(text, quib::currentSyntax(), context);
    QBCoreDataStack *const stack = QBCoreDataStack::sharedStack();
    stack->saveUsingCoalescence(false);
    if (error != nullptr && stack->saveError().isSet()) {
        *error = stack->saveError();
    }
    return note;
}

} // namespace

bool QBSendToQuibService::sendToQuibService(const NSPasteboard &pasteboard, const QString &, NSError *error)
{
    NSError reason;
    Ref<QBNote> note;
    if (const QList<QUrl> files = pasteboard.urls(/*fileURLsOnly=*/true); !files.isEmpty()) {
        note = newNoteWithFiles(files, &reason);
    } else if (const QList<QUrl> urls = pasteboard.urls(/*fileURLsOnly=*/false); !urls.isEmpty()) {
        note = newNoteWithURLs(urls, &reason);
    } else if (QStringList strings = pasteboard.strings(); strings.removeAll(QString()), !strings.isEmpty()) {
        note = newNoteWithString(strings.constLast(), &reason);
    } else {
        reason = NSError(kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadUnknown),
                         u"there is nothing to make a note of"_s);
    }
    if (error != nullptr) {
        *error = reason;
    }
    return note && !reason.isSet();
}

Ref<QBNote> QBSendToQuibService::newNoteWithFiles(const QList<QUrl> &files, NSError *error)
{
    const auto context = mainContext(error);
    if (!context) {
        return {};
    }
    // 1. What can be taken is taken; one bad file does not keep the others out.
    QStringList markers;
    NSError lastError;
    for (const QUrl &url : files) {
        NSError fileError;
        if (const auto file = QBNoteFile::factoryNoteFileForFileURL(url, *context, &fileError)) {
            markers.append(quib::markerForFile(*file));
        } else {
            lastError = fileError.isSet()
                            ? fileError
                            : NSError(kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadUnknown),
                                      u"cannot attach %1"_s.arg(url.toLocalFile()));
            QBLogWarn(lastError.localizedDescription());
        }
    }
    if (error != nullptr && lastError.isSet()) {
        *error = lastError;
    }
    // 2. The note that holds them.
    return markers.isEmpty() ? Ref<QBNote>() : savedNote(markers.join(u"\n\n"_s), *context, error);
}

Ref<QBNote> QBSendToQuibService::newNoteWithURLs(const QList<QUrl> &urls, NSError *error)
{
    const auto context = mainContext(error);
    if (!context || urls.isEmpty()) {
        return {};
    }
    QStringList lines;
    for (const QUrl &url : urls) {
        lines.append(url.toString(QUrl::FullyEncoded));
    }
    return savedNote(lines.join(u'\n'), *context, error);
}

Ref<QBNote> QBSendToQuibService::newNoteWithString(const QString &string, NSError *error)
{
    const auto context = mainContext(error);
    return context ? savedNote(string, *context, error) : Ref<QBNote>();
}
