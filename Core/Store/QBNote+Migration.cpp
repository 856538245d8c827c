#include "CurrentSyntax.h"
#include "QBNote.h"
#include "QBNoteGenericFile.h"
#include "QBNoteImage.h"

using quib::Value;

namespace {

QString textOf(const NSManagedObject &note)
{
    return quib::valueOr<QString>(note.valueForKey(QBNoteAttributes::text));
}

Value present(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

} // namespace

void QBNote::migrateManagedObjectToVersion2(NSManagedObject &managedObject)
{
    if (!quib::isNothing(managedObject.valueForKey(QBNoteAttributes::title))) {
        return;
    }
    const QString text = textOf(managedObject);
    const int syntax = quib::currentSyntax();
    managedObject.setValueForKey(present(parseTitleFromText(text)), QBNoteAttributes::title);
    managedObject.setValueForKey(parseCompletedTodoFromText(text, syntax), QBNoteAttributes::todoCompleted);
    managedObject.setValueForKey(parseTodoFromText(text, syntax), QBNoteAttributes::todoIncompleted);
    managedObject.setValueForKey(parseContainSourceCodeFromText(text, syntax), QBNoteAttributes::hasSourceCode);
}

void QBNote::migrateManagedObjectToVersion3(NSManagedObject &managedObject)
{
    if (!quib::isNothing(managedObject.valueForKey(QBNoteAttributes::subtitle))) {
        return;
    }
    // Half of a surrogate pair has no form in UTF-8; such a subtitle waits for the next update of the note.
    if (const QString subtitle = parseSubtitleFromText(textOf(managedObject)); subtitle.isValidUtf16()) {
        managedObject.setValueForKey(present(subtitle), QBNoteAttributes::subtitle);
    }
    for (const auto &file : managedObject.targetObjectsForKey(QBNoteRelationships::files)) {
        const QString entityName = file->entity()->name();
        if (entityName == QBNoteImage::entityName()) {
            managedObject.setValueForKey(true, QBNoteAttributes::hasImages);
        } else if (entityName == QBNoteGenericFile::entityName()) {
            managedObject.setValueForKey(true, QBNoteAttributes::hasFiles);
        }
    }
}

void QBNote::migrateDataToCurrentVersion()
{
    migrateManagedObjectToVersion2(*this);
    migrateManagedObjectToVersion3(*this);
}
