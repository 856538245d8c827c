#pragma once

#include <Store/_QBNoteGenericFile.h>

/// A file of any kind attached to a note; its marker is "[file:IDENTIFIER/NAME]". Confined to its context's queue.
class QBNoteGenericFile : public _QBNoteGenericFile
{
public:
    static quib::Ref<QBNoteGenericFile> insertInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static bool canImportFileURL(const QUrl &fileURL);
    /// Errors: null when the file could not be copied; nothing is left of the row.
    static quib::Ref<QBNoteGenericFile>
    noteFileForFileURL(const QUrl &fileURL, NSManagedObjectContext &inManagedObjectContext, NSError *error = nullptr);

    [[nodiscard]] QString textRepresentation() const override;
    [[nodiscard]] QString localFolderName() const override;
    [[nodiscard]] QHash<QString, quib::Value> additionalFileData() const override;
};
