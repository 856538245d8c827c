#include "QBNoteFile.h"

#include "AttachmentRemovals.h"
#include "FileMarkers.h"
#include "QBLocalFileManager.h"
#include "QBNote.h"
#include "QBNoteGenericFile.h"
#include "QBNoteImage.h"
#include "QBThumbFileManager.h"
#include "StoreFetch.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/Identifiers.h>
#include <Store/NSManagedObjectContext.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using quib::fetchLogged;
using quib::Ref;
using quib::requestFor;

namespace {

NSDate dateOfFileTime(const statx_timestamp &time)
{
    constexpr double kNanoseconds = 1e-9;
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(time.tv_sec) +
                                                 static_cast<double>(time.tv_nsec) * kNanoseconds);
}

} // namespace

bool QBNoteFile::canImportFileURL(const QUrl &fileURL)
{
    return QBNoteImage::canImportFileURL(fileURL) || QBNoteGenericFile::canImportFileURL(fileURL);
}

Ref<QBNoteFile> QBNoteFile::factoryNoteFileForFileURL(const QUrl &fileURL,
                                                      NSManagedObjectContext &inManagedObjectContext, NSError *error)
{
    if (QBNoteImage::canImportFileURL(fileURL)) {
        return QBNoteImage::noteFileForFileURL(fileURL, inManagedObjectContext, error);
    }
    return QBNoteGenericFile::noteFileForFileURL(fileURL, inManagedObjectContext, error);
}

Ref<QBNoteFile> QBNoteFile::noteFileWithUniqueIdentifier(const QString &uniqueIdentifier,
                                                         NSManagedObjectContext &inManagedObjectContext)
{
    const auto files =
        fetchLogged<QBNoteFile>(inManagedObjectContext, requestFor<QBNoteFile>(u"uniqueIdentifier == %@"_s,
                                                                               {predicateArgument(uniqueIdentifier)}));
    return files.isEmpty() ? Ref<QBNoteFile>() : files.constLast();
}

QList<Ref<QBNoteFile>> QBNoteFile::noteFilesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                                                  NSManagedObjectContext &inManagedObjectContext)
{
    return fetchLogged<QBNoteFile>(
        inManagedObjectContext,
        requestFor<QBNoteFile>(u"uniqueIdentifier IN %@"_s, {predicateArgument(uniqueIdentifiers)}));
}

QList<Ref<QBNoteFile>> QBNoteFile::filesInManagedObjectContext(NSManagedObjectContext &moc,
                                                               const NSPredicate::Ref &withPredicate)
{
    NSFetchRequest request;
    request.entityName = entityName();
    request.predicate = withPredicate;
    return fetchLogged<QBNoteFile>(moc, request);
}

Ref<QBNoteFile> QBNoteFile::noteFileWithTextRepresentation(const QString &textRepresentation,
                                                           NSManagedObjectContext &inManagedObjectContext)
{
    const QString identifier = uniqueIdentifierFromTextRepresentation(textRepresentation);
    return identifier.isEmpty() ? Ref<QBNoteFile>() : noteFileWithUniqueIdentifier(identifier, inManagedObjectContext);
}

QString QBNoteFile::uniqueIdentifierFromTextRepresentation(QStringView textRepresentation)
{
    const qsizetype colon = textRepresentation.indexOf(u':');
    const qsizetype slash = textRepresentation.indexOf(u'/');
    if (colon < 0 || slash < colon) {
        return {};
    }
    return textRepresentation.sliced(colon + 1, slash - colon - 1).toString();
}

QList<Ref<QBNoteFile>> QBNoteFile::noteFilesToDownloadInManagedObjectContext(NSManagedObjectContext &moc)
{
    return fetchLogged<QBNoteFile>(moc, requestFor<QBNoteFile>(u"downloaded == NO AND uploaded == YES"_s));
}

QList<Ref<QBNoteFile>> QBNoteFile::noteFilesToUploadInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto files = fetchLogged<QBNoteFile>(moc, requestFor<QBNoteFile>(u"uploaded == NO AND note != nil"_s));
    files.removeIf([](const Ref<QBNoteFile> &file) {
        const auto url = file->fileURL();
        return !url || !QFileInfo::exists(url->toLocalFile());
    });
    return files;
}

void QBNoteFile::deleteAllUnusedNoteFilesInManagedObjectContext(NSManagedObjectContext &moc)
{
    for (const auto &file : fetchLogged<QBNoteFile>(moc, requestFor<QBNoteFile>(u"unused == YES"_s))) {
        file->permanentlyDelete();
    }
}

QSet<Ref<QBNoteFile>> QBNoteFile::parseNoteFilesFromText(const QString &text, const QBNote &note)
{
    const auto markers = quib::fileMarkersInText(text);
    if (markers.isEmpty()) {
        return {};
    }
    QSet<QString> identifiers;
    for (const auto &marker : markers) {
        identifiers.insert(marker.uniqueIdentifier);
    }
    QHash<QString, Ref<QBNoteFile>> rows;
    const QStringList wanted(identifiers.cbegin(), identifiers.cend());
    for (const auto &file : noteFilesWithUniqueIdentifiers(wanted, *note.managedObjectContext())) {
        rows.insert(file->uniqueIdentifier(), file);
    }
    QSet<Ref<QBNoteFile>> files;
    for (const auto &marker : markers) {
        const Ref<QBNoteFile> file = rows.value(marker.uniqueIdentifier);
        if (!file) {
            continue;
        }
        const auto owner = file->note();
        if (!owner || owner.get() == &note || owner->uniqueIdentifier() == note.uniqueIdentifier()) {
            file->setIndex(marker.position);
            files.insert(file);
        }
    }
    return files;
}

QString QBNoteFile::stringByReplacingMarkers(const QString &text, const QList<std::pair<QString, QString>> &markers)
{
    QHash<QStringView, qsizetype> byIdentifier; // by the marker up to its slash
    qsizetype longest = 0;
    for (qsizetype i = 0; i < markers.size(); ++i) {
        const QStringView marker(markers.at(i).first);
        const qsizetype size = marker.indexOf(u'/') + 1;
        byIdentifier.insert(marker.first(size), i);
        longest = std::max(longest, size);
    }
    const QStringView view(text);
    QString replaced;
    qsizetype copied = 0;
    for (qsizetype start = byIdentifier.isEmpty() ? -1 : view.indexOf(u'['); start >= 0;
         start = view.indexOf(u'[', start + 1)) {
        const QStringView near = view.sliced(start, std::min(longest, view.size() - start));
        const auto found = byIdentifier.constFind(near.first(near.indexOf(u'/') + 1));
        if (found == byIdentifier.constEnd() || !view.sliced(start).startsWith(markers.at(*found).first)) {
            continue;
        }
        replaced += view.sliced(copied, start - copied);
        replaced += markers.at(*found).second;
        copied = start + markers.at(*found).first.size();
        start = copied - 1;
    }
    return copied == 0 ? text : replaced + view.sliced(copied);
}

std::optional<QUrl> QBNoteFile::fileURL() const
{
    const QString name = filename();
    if (name.isEmpty()) {
        return std::nullopt;
    }
    const QUrl url = localFileManager()->fileURLForUniqueID(uniqueIdentifier(), name);
    return url.isEmpty() ? std::nullopt : std::optional(url);
}

std::optional<QString> QBNoteFile::copyFileToLocalFolder(const QUrl &fileURL, NSError *error) const
{
    const QString name = quib::fileNameForMarker(fileURL.fileName(QUrl::FullyDecoded));
    if (!localFileManager()->copyFileAtURL(fileURL, uniqueIdentifier(), name, error)) {
        return std::nullopt;
    }
    return name;
}

QString QBNoteFile::localFolderName() const
{
    return u"Local Files"_s;
}

QBLocalFileManager *QBNoteFile::localFileManager() const
{
    return QBLocalFileManager::localFileManagerForPathComponent(localFolderName());
}

QHash<QString, quib::Value> QBNoteFile::additionalFileData() const
{
    return {};
}

void QBNoteFile::updateFileMetadata()
{
    const auto url = fileURL();
    struct statx status = {};
    if (!url || statx(AT_FDCWD, QFile::encodeName(url->toLocalFile()).constData(), 0, STATX_BASIC_STATS | STATX_BTIME,
                      &status) != 0) {
        return;
    }
    const NSDate changed = dateOfFileTime(status.stx_mtime);
    setFileSize(static_cast<qint64>(status.stx_size));
    setModificationDate(changed);
    // Not every file system knows when a file was made.
    setCreationDate((status.stx_mask & STATX_BTIME) != 0 ? dateOfFileTime(status.stx_btime) : changed);
}

void QBNoteFile::deleteFileThumbnails() const
{
    if (const auto url = fileURL()) {
        QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages)
            ->deleteAllThumbsForImageURL(*url);
    }
}

bool QBNoteFile::importFile(const QUrl &fileURL, NSError *error)
{
    const auto name = copyFileToLocalFolder(fileURL, error);
    if (!name) {
        managedObjectContext()->deleteObject(this);
        return false;
    }
    takeName(*name);
    setDownloaded(true);
    updateFileMetadata();
    return true;
}

void QBNoteFile::takeName(const QString &name)
{
    setFilename(name);
    setNormalizedFileExtension(QFileInfo(name).suffix().toLower());
}

Ref<QBNoteFile> QBNoteFile::duplicate()
{
    const auto object = managedObjectContext()->insertNewObjectForEntityForName(entity()->name());
    auto copy = object.as<QBNoteFile>();
    for (const auto &attribute : entity()->attributes()) {
        const quib::Value value = valueForKey(attribute.name);
        if (!quib::isNothing(value)) {
            copy->setValueForKey(value, attribute.name);
        }
    }
    copy->updateUniqueIdentifier();
    if (const auto url = fileURL(); url && QFileInfo::exists(url->toLocalFile())) {
        if (const auto name = copy->copyFileToLocalFolder(*url)) {
            copy->takeName(*name);
        } else {
            copy->setDownloaded(false);
        }
    }
    copy->setUploaded(false);
    copy->setUploadedDate(std::nullopt);
    return copy;
}

void QBNoteFile::updateUniqueIdentifier()
{
    setUniqueIdentifier(quib::globallyUniqueString());
}

void QBNoteFile::permanentlyDelete()
{
    managedObjectContext()->deleteObject(this);
}

void QBNoteFile::prepareForDeletion()
{
    _QBNoteFile::prepareForDeletion();
    if (quib::DispatchQueue::main()->isCurrent()) {
        quib::removeFolderWithDeletionOf(*this);
    }
}
