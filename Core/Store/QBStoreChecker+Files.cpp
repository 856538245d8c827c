#include "CurrentSyntax.h"
#include "ForgottenFiles.h"
#include "QBCoreDataStack.h"
#include "QBLocalFileManager.h"
#include "QBNote.h"
#include "QBNoteFile.h"
#include "QBNoteGenericFile.h"
#include "QBNoteImage.h"
#include "QBStoreChecker.h"

#include <Store/NSManagedObjectContext.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

using Kind = QBStoreFinding::Kind;

} // namespace

bool QBStoreChecker::checkBinaries(NSError *error)
{
    const auto identities = identitiesOf(QBNoteFile::entityName(), error);
    if (!identities) {
        return false;
    }
    auto &moc = *m_stack.managedObjectContext();
    for (const NSManagedObjectID &identity : *identities) {
        const auto file = moc.existingObjectWithID(identity).as<QBNoteFile>();
        if (!file) {
            continue;
        }
        m_fileIdentifiers.insert(file->uniqueIdentifier());
        const auto url = file->fileURL();
        if (!file->downloaded() || !url || QFileInfo::exists(url->toLocalFile())) {
            continue;
        }
        // One that the cloud has is fetched again; of another only the marker is left.
        const bool canBeFetched = file->uploaded();
        m_findings.append({Kind::MissingBinary, file->uniqueIdentifier(),
                           canBeFetched ? u"the attachment's file is missing and can be fetched again"_s
                                        : u"the attachment's file is missing"_s,
                           m_repair && canBeFetched});
        if (m_repair && canBeFetched) {
            file->setDownloaded(false);
        }
    }
    return saveRepairs(error);
}

bool QBStoreChecker::checkForgottenFiles(NSError *error)
{
    auto &moc = *m_stack.managedObjectContext();
    QSet<QString> forgotten = quib::possiblyForgottenFiles(moc);
    if (forgotten.isEmpty()) {
        return true;
    }
    const auto scratch = m_stack.backgroundPrivateManagedObjectContext();
    scratch->performBlockAndWait([&] { forgotten = quib::filesNamedInNoText(forgotten, *scratch); });
    for (const QString &identifier : std::as_const(forgotten)) {
        m_findings.append({Kind::ForgottenAttachment, identifier, u"no note has this attachment"_s, m_repair});
    }
    if (m_repair) {
        quib::markAsUnused(forgotten, moc);
    }
    return saveRepairs(error);
}

bool QBStoreChecker::checkFolders(NSError *error)
{
    for (const bool isImage : {true, false}) {
        const QString component = isImage ? u"Local Files/Note Images"_s : u"Local Files/Note Files"_s;
        auto *manager = QBLocalFileManager::localFileManagerForPathComponent(component);
        const QDir base(manager->baseURL().toLocalFile());
        for (const QString &name : base.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)) {
            if (m_fileIdentifiers.contains(name)) {
                continue;
            }
            const QString folder = base.filePath(name);
            if (m_markersWithoutRow.contains(name)) {
                const bool isRepaired = m_repair && restoreLostAttachment(name, folder, isImage);
                m_findings.append(
                    {Kind::LostAttachment, name, u"a note's attachment is on disk without a row"_s, isRepaired});
            } else if (quib::ageOfFolder(folder) > quib::kYoungestLeftBehind) {
                if (m_repair) {
                    manager->deleteFileForUniqueID(name);
                }
                m_findings.append({Kind::OrphanedFolder, folder, u"no note and no attachment knows this folder"_s,
                                   m_repair && !QFileInfo::exists(folder)});
            }
        }
    }
    return saveRepairs(error);
}

bool QBStoreChecker::restoreLostAttachment(const QString &uniqueIdentifier, const QString &folder, bool isImage)
{
    const QStringList names = QDir(folder).entryList(QDir::Files);
    auto &moc = *m_stack.managedObjectContext();
    const auto note = QBNote::noteWithUniqueIdentifier(m_markersWithoutRow.value(uniqueIdentifier), moc);
    if (names.size() != 1 || !note) {
        return false;
    }
    const Ref<QBNoteFile> file = isImage ? Ref<QBNoteFile>(QBNoteImage::insertInManagedObjectContext(moc))
                                         : Ref<QBNoteFile>(QBNoteGenericFile::insertInManagedObjectContext(moc));
    file->setUniqueIdentifier(uniqueIdentifier);
    file->setFilename(names.constFirst());
    file->setNormalizedFileExtension(QFileInfo(names.constFirst()).suffix().toLower());
    file->setDownloaded(true);
    file->updateFileMetadata();
    static_cast<void>(note->repairDerivedFieldsWithSyntax(quib::currentSyntax()));
    return true;
}
