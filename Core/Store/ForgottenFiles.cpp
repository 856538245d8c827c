#include "ForgottenFiles.h"

#include "QBLocalFileManager.h"
#include "QBNote.h"
#include "QBNoteFile.h"
#include "QBNoteFileServerData.h"
#include "StoreFetch.h"

#include <Foundation/NSDate.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Notes read at once.
constexpr qsizetype kBatchSize = 200;

/// Takes those out that a text names. Broken markers count: only what stands before the name is looked at.
void removeNamedInText(QSet<QString> &identifiers, QStringView text, qsizetype longest)
{
    for (qsizetype colon = text.indexOf(u':'); colon >= 0; colon = text.indexOf(u':', colon + 1)) {
        const QStringView near = text.sliced(colon + 1, std::min(longest + 1, text.size() - colon - 1));
        const qsizetype slash = near.indexOf(u'/');
        if (slash > 0) {
            identifiers.remove(near.first(slash).toString());
        }
    }
}

} // namespace

double ageOfFolder(const QString &folder)
{
    const QFileInfo own(folder);
    qint64 milliseconds = own.exists() ? own.lastModified().toMSecsSinceEpoch() : 0;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden)) {
        milliseconds = std::max(milliseconds, file.lastModified().toMSecsSinceEpoch());
    }
    constexpr double kMillisecondsPerSecond = 1000;
    const auto changed =
        NSDate::dateWithTimeIntervalSince1970(static_cast<double>(milliseconds) / kMillisecondsPerSecond);
    return NSDate::now().timeIntervalSinceDate(changed);
}

QSet<QString> possiblyForgottenFiles(NSManagedObjectContext &moc)
{
    QSet<QString> identifiers;
    const auto request = requestFor<QBNoteFile>(u"note == nil AND unused == NO AND uploaded == NO"_s);
    for (const auto &file : fetchLogged<QBNoteFile>(moc, request)) {
        if (file->serverData() || file->textRepresentation().isEmpty() || file->uniqueIdentifier().isEmpty()) {
            continue;
        }
        const QString folder = file->localFileManager()->baseURL().toLocalFile() % u'/' % file->uniqueIdentifier();
        if (ageOfFolder(folder) > kYoungestLeftBehind) {
            identifiers.insert(file->uniqueIdentifier());
        }
    }
    return identifiers;
}

QSet<QString> filesNamedInNoText(const QSet<QString> &identifiers, NSManagedObjectContext &moc)
{
    NSFetchRequest request;
    request.entityName = QBNote::entityName();
    const auto notes = moc.executeFetchRequest(request);
    if (!notes || identifiers.isEmpty()) {
        return {};
    }
    QList<NSManagedObjectID> identities;
    identities.reserve(notes->size());
    for (const auto &note : *notes) {
        identities.append(note->objectID());
    }
    qsizetype longest = 0;
    for (const QString &identifier : identifiers) {
        longest = std::max(longest, identifier.size());
    }
    QSet<QString> left = identifiers;
    for (qsizetype i = 0; i < identities.size() && !left.isEmpty(); ++i) {
        if (i % kBatchSize == 0) {
            moc.reset();
        }
        const auto note = moc.existingObjectWithID(identities.at(i)).as<QBNote>();
        if (!note) {
            return {}; // gone meanwhile, or out of reach: another time
        }
        removeNamedInText(left, note->text(), longest);
    }
    moc.reset();
    return left;
}

void markAsUnused(const QSet<QString> &identifiers, NSManagedObjectContext &moc)
{
    const QStringList wanted(identifiers.cbegin(), identifiers.cend());
    for (const auto &file : QBNoteFile::noteFilesWithUniqueIdentifiers(wanted, moc)) {
        file->setUnused(true);
    }
}

} // namespace quib
