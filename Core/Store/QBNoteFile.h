#pragma once

#include <Store/NSFetchRequest.h>
#include <Store/_QBNoteFile.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <utility>

class NSManagedObjectContext;
class QBLocalFileManager;

/// An attachment: a marker in its note's text, this row, and the binary in a folder of its own on disk, named by the
/// row's identifier. Leaves in two stages: without its marker it is unused and without a note, and later the row is
/// deleted. The binary goes only once that deletion is durable, so a save that fails loses nothing. Confined to its
/// context's queue.
class QBNoteFile : public _QBNoteFile
{
public:
    // Import

    /// Whether one of the concrete classes takes the file.
    [[nodiscard]] static bool canImportFileURL(const QUrl &fileURL);
    /// A row of the first class that takes the file, with a copy of the file in its folder; the source stays.
    /// Errors: null when the file could not be copied; nothing is left of the row.
    static quib::Ref<QBNoteFile> factoryNoteFileForFileURL(const QUrl &fileURL,
                                                           NSManagedObjectContext &inManagedObjectContext,
                                                           NSError *error = nullptr);

    // Lookup. A fetch that fails is logged and finds nothing.

    [[nodiscard]] static quib::Ref<QBNoteFile>
    noteFileWithUniqueIdentifier(const QString &uniqueIdentifier, NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static QList<quib::Ref<QBNoteFile>>
    noteFilesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                   NSManagedObjectContext &inManagedObjectContext);
    [[nodiscard]] static QList<quib::Ref<QBNoteFile>>
    filesInManagedObjectContext(NSManagedObjectContext &moc, const NSPredicate::Ref &withPredicate);
    /// By the identifier in a marker.
    [[nodiscard]] static quib::Ref<QBNoteFile>
    noteFileWithTextRepresentation(const QString &textRepresentation, NSManagedObjectContext &inManagedObjectContext);
    /// What stands between the first ":" and the first "/"; null where there are no such.
    [[nodiscard]] static QString uniqueIdentifierFromTextRepresentation(QStringView textRepresentation);
    [[nodiscard]] static QList<quib::Ref<QBNoteFile>>
    noteFilesToDownloadInManagedObjectContext(NSManagedObjectContext &moc);
    /// Only those whose binary is there.
    [[nodiscard]] static QList<quib::Ref<QBNoteFile>>
    noteFilesToUploadInManagedObjectContext(NSManagedObjectContext &moc);
    static void deleteAllUnusedNoteFilesInManagedObjectContext(NSManagedObjectContext &moc);

    // Markers

    /// The files whose markers stand in a text and that belong to the note or to none; sets their index to the place
    /// of the marker. One fetch, however many markers.
    /// Units: indexes are UTF-16 code units into the text given.
    [[nodiscard]] static QSet<quib::Ref<QBNoteFile>> parseNoteFilesFromText(const QString &text, const QBNote &note);
    /// The text with each marker that stands for another replaced, in one pass.
    [[nodiscard]] static QString stringByReplacingMarkers(const QString &text,
                                                          const QList<std::pair<QString, QString>> &markers);
    /// The marker that stands for the file in a text; empty for a class without markers.
    [[nodiscard]] virtual QString textRepresentation() const { return {}; }

    // The binary

    /// Nothing without a file name, or with one that would leave the folder.
    [[nodiscard]] std::optional<QUrl> fileURL() const;
    /// Copies a file into the attachment's folder, durably, under its own name without what would break a marker.
    /// Errors: nullopt, with the reason; otherwise the name of the copy.
    [[nodiscard]] std::optional<QString> copyFileToLocalFolder(const QUrl &fileURL, NSError *error = nullptr) const;
    /// The folder of the class below the persistent data, a path of components.
    [[nodiscard]] virtual QString localFolderName() const;
    [[nodiscard]] QBLocalFileManager *localFileManager() const;
    /// What the record in the cloud tells of the file beside its bytes.
    [[nodiscard]] virtual QHash<QString, quib::Value> additionalFileData() const;
    /// Reads size and dates from the file.
    virtual void updateFileMetadata();

    /// Removes the small copies of the file's picture: it changed, or it goes.
    void deleteFileThumbnails() const;

    /// A row with an identifier, and a copy of the binary, of its own; not uploaded, without a note.
    quib::Ref<QBNoteFile> duplicate();
    void updateUniqueIdentifier();
    void permanentlyDelete();

protected:
    /// On the main thread: has the folder and the thumbnails removed as soon as the deletion is saved. Elsewhere the
    /// disk is left alone.
    void prepareForDeletion() override;

    /// The steps that every class shares: a row with an identifier gets its copy, its name and its metadata.
    /// Errors: false after the row was deleted.
    [[nodiscard]] bool importFile(const QUrl &fileURL, NSError *error);

private:
    /// The name under which the binary lies, and its extension.
    void takeName(const QString &name);
};
