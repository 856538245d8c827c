#include "QBXurlCoreController.h"
#include "XURLParameters.h"
#include "XurlReports.h"

#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Text/NSStringHelpers.h>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::reportFailure;
using quib::reportSuccess;

namespace {

/// The note of a title, where it may have to be outside of the trash.
Ref<QBNote> noteWithTitle(const QString &title, const IACParameters &parameters, NSManagedObjectContext &moc)
{
    return quib::xurlExcludeTrashed(parameters) ? QBNote::untrashedNoteWithTitle(title, moc)
                                                : QBNote::noteWithTitle(title, moc);
}

/// The note of an identifier; null also for one in the trash, where such are excluded.
Ref<QBNote> noteWithIdentifier(const QString &identifier, const IACParameters &parameters, NSManagedObjectContext &moc)
{
    auto note = QBNote::noteWithUniqueIdentifier(identifier, moc);
    return note && note->isTrashed() && quib::xurlExcludeTrashed(parameters) ? Ref<QBNote>() : note;
}

QString headerForInterface(const std::optional<QBNoteSection> &section)
{
    return section ? section->titleForXURL() : QString();
}

} // namespace

void QBXurlCoreController::handleOpenNote(const Parameters &parameters, const IACSuccessBlock &success,
                                          const IACFailureBlock &failure, const UpdateNote &updateInterface)
{
    const QString identifier = parameters.value(u"id"_s);
    const QString title = parameters.value(u"title"_s);
    // 1. Something must name the note.
    if (identifier.isEmpty() && title.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, quib::kNoteUnnamed);
        return;
    }
    // 2. The identifier goes before the title.
    const auto note = !identifier.isEmpty() ? noteWithIdentifier(identifier, parameters, moc())
                                            : noteWithTitle(title, parameters, moc());
    // 3. There must be such a note.
    if (!note) {
        reportFailure(failure, ErrorCode::NotFound, quib::kNoteMissing);
        return;
    }
    // 4. A header that is not there is told, and the note opens at its beginning: the caller hears of both.
    const QString header = quib::xurlHeader(parameters);
    const auto section = sectionForNote(*note, header);
    if (!header.isEmpty() && !section) {
        reportFailure(failure, ErrorCode::Parameter, "The note header could not be found"_L1);
    }
    // 5. The window.
    if (updateInterface) {
        updateInterface(note->uniqueIdentifier(), headerForInterface(section), parameters.value(u"attachment"_s));
    }
    // 6. The answer.
    reportSuccess(success, {{u"note"_s, note->text()},
                            {u"identifier"_s, note->uniqueIdentifier()},
                            {u"title"_s, note->title()},
                            {u"is_trashed"_s, note->isTrashed() ? u"yes"_s : u"no"_s},
                            {u"modificationDate"_s, formatDateForXURL(note->modificationDate())},
                            {u"creationDate"_s, formatDateForXURL(note->creationDate())}});
}

void QBXurlCoreController::handleAddText(const Parameters &parameters, const IACSuccessBlock &success,
                                         const IACFailureBlock &failure, const UpdateNote &updateInterface)
{
    const QString identifier = parameters.value(u"id"_s);
    const QString title = parameters.value(u"title"_s);
    // 1. Something must name the note.
    if (identifier.isEmpty() && title.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, quib::kNoteUnnamed);
        return;
    }
    // 2. and 3. The text with its tags; tags alone are a text too.
    const QString text = quib::textWithTags(parameters.value(u"text"_s), parameters.value(u"tags"_s));
    if (text.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, "Text provided empty"_L1);
        return;
    }
    // 4. and 5. The note; a title that no note has makes one.
    auto note = !identifier.isEmpty() ? noteWithIdentifier(identifier, parameters, moc())
                                      : noteWithTitle(title, parameters, moc());
    if (!note && identifier.isEmpty()) {
        note = QBNote::noteWithText(QString(u"# " % title % u'\n'), quib::currentSyntax(), moc());
    }
    if (!note) {
        reportFailure(failure, ErrorCode::NotFound, quib::kNoteMissing);
        return;
    }
    // 6. The section.
    const QString header = quib::xurlHeader(parameters);
    const auto section = sectionForNote(*note, header);
    if (!header.isEmpty() && !section) {
        saveLater();
        reportFailure(failure, ErrorCode::Parameter, quib::kNoteMissing);
        return;
    }
    // 7. A mode that is none is reported twice: by the helper, and as a note that was not written.
    if (!addText(text, *note, section, parameters.value(u"mode"_s), failure)) {
        saveLater();
        reportFailure(failure, ErrorCode::Internal, quib::kNoteNotWritten);
        return;
    }
    // 8. Durable before it is told.
    if (!save(failure)) {
        return;
    }
    reportSuccess(success, {{u"note"_s, note->text()}, {u"title"_s, note->title()}});
    if (updateInterface) {
        updateInterface(note->uniqueIdentifier(), headerForInterface(section), {});
    }
}

void QBXurlCoreController::handleAddFile(const Parameters &parameters, const IACSuccessBlock &success,
                                         const IACFailureBlock &failure, const UpdateNote &updateInterface)
{
    // 1. and 2. The file.
    const QString file = parameters.value(u"file"_s);
    if (file.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, "Base64 file not provided"_L1);
        return;
    }
    const auto data = dataFromBase64(file);
    if (!data) {
        reportFailure(failure, ErrorCode::Parameter, quib::kFileNotBase64);
        return;
    }
    // 3. Its name.
    const QString filename = parameters.value(u"filename"_s);
    if (filename.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, "File name not provied"_L1);
        return;
    }
    // 4. The note; trashed ones count. Without a name for one it is a new one.
    const QString identifier = parameters.value(u"id"_s);
    const QString title = parameters.value(u"title"_s);
    Ref<QBNote> note;
    if (!identifier.isEmpty()) {
        note = QBNote::noteWithUniqueIdentifier(identifier, moc());
    } else if (!quib::trimmedWhitespace(title).isEmpty()) {
        note = QBNote::noteWithTitle(title, moc());
    } else {
        note = QBNote::noteWithText(u""_s, quib::currentSyntax(), moc());
    }
    if (!note) {
        reportFailure(failure, ErrorCode::NotFound, quib::kNoteMissing);
        return;
    }
    // 5. The section is looked up before the file is stored: a file that no note takes should not be there.
    const QString header = quib::xurlHeader(parameters);
    const auto section = sectionForNote(*note, header);
    if (!header.isEmpty() && !section) {
        saveLater();
        reportFailure(failure, ErrorCode::Parameter, quib::kNoteMissing);
        return;
    }
    // 6. and 7. The marker goes into the note. A mode that is none is reported twice.
    const auto marker = saveFileWithData(*data, filename, moc());
    if (!marker || !addText(*marker, *note, section, parameters.value(u"mode"_s), failure)) {
        if (const auto left = marker ? QBNoteFile::noteFileWithTextRepresentation(*marker, moc()) : nullptr) {
            left->permanentlyDelete();
        }
        saveLater();
        reportFailure(failure, ErrorCode::Internal, quib::kNoteNotWritten);
        return;
    }
    // 8. Durable before it is told.
    if (!save(failure)) {
        return;
    }
    reportSuccess(success, {{u"note"_s, note->text()}});
    if (updateInterface) {
        updateInterface(note->uniqueIdentifier(), headerForInterface(section), {});
    }
}
