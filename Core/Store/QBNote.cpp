#include "QBNote.h"

#include "QBNoteFile.h"
#include "QBNoteGenericFile.h"
#include "QBNoteImage.h"
#include "QBNoteTag.h"

#include <Foundation/Identifiers.h>
#include <Logging/QBDeviceUUID.h>
#include <Store/NSManagedObjectContext.h>

#include <limits>

using quib::Ref;

namespace {

/// Numbers of 16 bits end there; a text may hold more items.
qint16 cutToInt16(qint64 number)
{
    return static_cast<qint16>(std::min<qint64>(number, std::numeric_limits<qint16>::max()));
}

/// A derived text is never "nothing": empty and absent differ in the store.
QString present(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

} // namespace

Ref<QBNote> QBNote::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto note = _QBNote::insertInManagedObjectContext(moc);
    const NSDate now = NSDate::now();
    note->setUniqueIdentifier(quib::globallyUniqueString());
    note->setCreationDate(now);
    note->setModificationDate(now);
    return note;
}

Ref<QBNote> QBNote::noteWithText(const QString &text, int syntax, NSManagedObjectContext &inManagedObjectContext)
{
    auto note = insertInManagedObjectContext(inManagedObjectContext);
    note->updateNoteWithText(text, syntax);
    return note;
}

void QBNote::updateNoteWithText(const QString &text, int syntax)
{
    updateNoteWithText(text, syntax, /*updateModificationDate=*/true);
}

void QBNote::updateNoteWithText(const QString &text, int syntax, bool updateModificationDate)
{
    setText(present(text));
    setTitle(present(parseTitleFromText(text)));
    setSubtitle(present(parseSubtitleFromText(text)));
    if (updateModificationDate) {
        setModificationDate(NSDate::now());
    }
    deriveFieldsFromText(text, syntax);
    updateNoteVectorClock();
    setLastEditingDevice(QBDeviceUUID::deviceName());
}

void QBNote::deriveFieldsFromText(const QString &text, int syntax)
{
    // Code counts for nothing: a hash, a checkbox or an attachment's marker in it is mere text.
    bool hasCodeBlocks = false;
    const QString withoutCode = removeCodeFromText(text, &hasCodeBlocks, syntax);
    setHasSourceCode(hasCodeBlocks);
    setTagsFromStrings(parseHashTagsFromText(withoutCode, syntax));
    setFilesFromText(withoutCode);
    setTodoCountsFromText(withoutCode, syntax);
}

void QBNote::setFilesFromText(const QString &textWithoutCode)
{
    const auto newFiles = QBNoteFile::parseNoteFilesFromText(textWithoutCode, *this);
    const auto oldFiles = files();
    for (const auto &file : oldFiles) {
        if (!newFiles.contains(file)) {
            file->setUnused(true);
        }
    }
    if (oldFiles != newFiles) {
        setFiles(newFiles);
    }
    bool hasImage = false;
    bool hasFile = false;
    for (const auto &file : newFiles) {
        file->setUnused(false);
        hasImage = hasImage || file.as<QBNoteImage>();
        hasFile = hasFile || file.as<QBNoteGenericFile>();
    }
    setHasImages(hasImage);
    setHasFiles(hasFile);
}

void QBNote::setTodoCountsFromText(const QString &text, int syntax)
{
    setTodoIncompleted(cutToInt16(parseTodoFromText(text, syntax)));
    setTodoCompleted(cutToInt16(parseCompletedTodoFromText(text, syntax)));
}

void QBNote::updateAttributesForNewSyntax(int syntax)
{
    setTodoCountsFromText(text(), syntax);
}

QStringList QBNote::repairDerivedFieldsWithSyntax(int syntax)
{
    const QString current = text();
    QStringList changed;
    const auto check = [&changed](bool isEqual, QLatin1StringView name) {
        if (!isEqual) {
            changed.append(name);
        }
    };
    const auto before = std::make_tuple(title(), subtitle(), hasSourceCode(), tags(), hasImages(), hasFiles());
    const auto filesBefore = orderedFiles();
    const auto countsBefore = std::make_pair(todoIncompleted(), todoCompleted());
    QList<std::pair<qint64, bool>> placesBefore;
    for (const auto &file : filesBefore) {
        placesBefore.append({file->index(), file->unused()});
    }
    setTitle(present(parseTitleFromText(current)));
    setSubtitle(present(parseSubtitleFromText(current)));
    deriveFieldsFromText(current, syntax);
    if (countsBefore != std::make_pair(todoIncompleted(), todoCompleted())) {
        // A change of the syntax and a migration count the items in code too; the next update leaves them out.
        const auto countsOfUpdate = std::make_pair(todoIncompleted(), todoCompleted());
        setTodoCountsFromText(current, syntax);
        if (countsBefore != std::make_pair(todoIncompleted(), todoCompleted())) {
            setTodoIncompleted(countsOfUpdate.first);
            setTodoCompleted(countsOfUpdate.second);
            changed.append(QBNoteAttributes::todoIncompleted);
        }
    }
    check(title() == std::get<0>(before), QBNoteAttributes::title);
    check(subtitle() == std::get<1>(before), QBNoteAttributes::subtitle);
    check(hasSourceCode() == std::get<2>(before), QBNoteAttributes::hasSourceCode);
    check(tags() == std::get<3>(before), QBNoteRelationships::tags);
    check(hasImages() == std::get<4>(before), QBNoteAttributes::hasImages);
    check(hasFiles() == std::get<5>(before), QBNoteAttributes::hasFiles);
    QList<std::pair<qint64, bool>> places;
    for (const auto &file : filesBefore) {
        places.append({file->index(), file->unused()});
    }
    const auto filesAfter = files();
    check(places == placesBefore && filesAfter == QSet(filesBefore.cbegin(), filesBefore.cend()),
          QBNoteRelationships::files);
    return changed;
}

void QBNote::pin()
{
    setPinned(true);
    setPinnedDate(NSDate::now());
}

void QBNote::unpin()
{
    setPinned(false);
    setPinnedDate(NSDate::now());
}

void QBNote::trash()
{
    setTrashed(true);
    setTrashedDate(NSDate::now());
    if (hasConflictedNotes()) {
        unmarkAsConflicted();
    }
}

void QBNote::restoreFromTrash()
{
    setTrashed(false);
    setTrashedDate(NSDate::now());
}

void QBNote::archive()
{
    setArchived(true);
    setArchivedDate(NSDate::now());
    restoreFromTrash();
}

void QBNote::unarchive()
{
    setArchived(false);
    setArchivedDate(NSDate::now());
}

void QBNote::permanentlyDelete()
{
    for (const auto &file : files()) {
        file->permanentlyDelete();
    }
    managedObjectContext()->deleteObject(this);
}

void QBNote::updateUniqueIdentifier()
{
    setUniqueIdentifier(quib::globallyUniqueString());
}

void QBNote::setTrashed(bool value)
{
    const bool changes = trashed() != value;
    _QBNote::setTrashed(value);
    if (changes) {
        for (const auto &tag : tags()) {
            tag->updateModificationDate();
        }
    }
}

void QBNote::setArchived(bool value)
{
    const bool changes = archived() != value;
    _QBNote::setArchived(value);
    if (changes) {
        for (const auto &tag : tags()) {
            tag->updateModificationDate();
        }
    }
}

void QBNote::prepareForDeletion()
{
    _QBNote::prepareForDeletion();
    if (hasConflictedNotes()) {
        unmarkAsConflicted();
    }
}
