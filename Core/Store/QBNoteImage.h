#pragma once

#include <Store/_QBNoteImage.h>

/// A picture attached to a note; its marker is "[image:IDENTIFIER/NAME]". Confined to its context's queue.
class QBNoteImage : public _QBNoteImage
{
public:
    static quib::Ref<QBNoteImage> insertInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] static bool canImportFileURL(const QUrl &fileURL);
    /// Errors: null when the file could not be copied; nothing is left of the row.
    static quib::Ref<QBNoteImage>
    noteFileForFileURL(const QUrl &fileURL, NSManagedObjectContext &inManagedObjectContext, NSError *error = nullptr);

    [[nodiscard]] QString textRepresentation() const override;
    [[nodiscard]] QString localFolderName() const override;
    [[nodiscard]] QHash<QString, quib::Value> additionalFileData() const override;
    /// Reads the picture's size in pixels too; one that cannot be read keeps the size that it had.
    void updateFileMetadata() override;
};
