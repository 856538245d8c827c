#pragma once

#include <Foundation/NSError.h>

#include <QString>
#include <QUrl>

/// The files of attachments below one folder: each identifier has a folder of its own, so that two attachments may have
/// the same file name. One instance a path component and profile, for the life of the process. Any thread; callers keep
/// one identifier to one thread at a time. Identifiers and names that could leave the folder are refused.
class QBLocalFileManager
{
public:
    /// The instance for a folder below the persistent data, such as "Local Files/Note Images".
    [[nodiscard]] static QBLocalFileManager *localFileManagerForPathComponent(const QString &pathComponent);

    explicit QBLocalFileManager(QUrl baseURL);

    [[nodiscard]] const QUrl &baseURL() const { return m_baseURL; }

    // The files of an identifier

    /// Where a file lies, or would lie; makes nothing. Empty for an identifier or a name that is none.
    [[nodiscard]] QUrl fileURLForUniqueID(const QString &uniqueID, const QString &filename) const;
    /// Copies a file into the identifier's folder, which is made if it is missing. The source stays. Durable.
    /// Errors: as for files; FileWriteInvalidFileName for names that are none; a folder cannot be copied. What was
    ///         there before stays as it was.
    [[nodiscard]] bool copyFileAtURL(const QUrl &url, const QString &toLocalFolderForUniqueID, const QString &filename,
                                     NSError *error = nullptr) const;
    /// Gives the folder of an identifier another one.
    /// Errors: as for files, among them that the other identifier has a folder with files in it.
    [[nodiscard]] bool moveFileForUniqueID(const QString &uniqueID, const QString &toUniqueId,
                                           NSError *error = nullptr) const;
    /// Removes the folder of an identifier with all in it. A failure is passed over.
    void deleteFileForUniqueID(const QString &uniqueID) const;

    // Folders. Each is made if it is missing.

    [[nodiscard]] static QUrl folderURLForPathComponent(const QString &pathComponent);
    [[nodiscard]] static QUrl applicationGroupURL();
    [[nodiscard]] static QUrl applicationPersistentDataURL();
    [[nodiscard]] static QUrl applicationSupportURL();

    // Temporary items

    /// The copy of a file, under its own name, in a new temporary folder; empty where it failed.
    [[nodiscard]] static QUrl copyFileURLToTemporaryDirectory(const QUrl &fileURL, NSError *error = nullptr);
    /// A new empty folder; empty where it failed.
    [[nodiscard]] static QUrl temporaryUniqueDirectoryURL(NSError *error = nullptr);
    [[nodiscard]] static QString temporaryUniqueDirectoryPath(NSError *error = nullptr);
    /// Removes our own temporary folders. The temporary directory belongs to all programs, so only folders named
    /// "QuibTemp.XXXXXX" go, and of those only the ones that no running process of ours uses.
    static void deleteTemporaryDirectoryContent();

private:
    /// The folder of an identifier; null for one that is none.
    [[nodiscard]] QString folderForUniqueID(const QString &uniqueID) const;

    QUrl m_baseURL;
};
