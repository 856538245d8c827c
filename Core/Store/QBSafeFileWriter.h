#pragma once

#include <Foundation/NSError.h>

#include <QHash>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

/// Writes files into one folder under names that are safe and not taken yet, compared without regard to case. Nothing
/// is ever overwritten. Confined to the queue of its owner.
class QBSafeFileWriter
{
public:
    /// Writes the file at the URL; false with an error where it could not.
    using WriterBlock = std::function<bool(const QUrl &url, NSError *error)>;

    [[nodiscard]] static QBSafeFileWriter safeFileWriterForFolderURL(const QUrl &folderURL);
    [[nodiscard]] static QBSafeFileWriter safeFileWriterForFolderPath(const QString &folderPath);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] QUrl url() const { return QUrl::fromLocalFile(m_path); }

    /// Without "/", ":" and "\", and of at most 245 UTF-16 units, the extension included and kept. A name is cut behind
    /// a whole composed character, which may reach over the limit.
    [[nodiscard]] static QString sanitizeFilename(const QString &filename);
    /// The form in which names are compared: lower case.
    [[nodiscard]] static QString normalizedFilename(const QString &filename);
    /// The path with " COUNT" between its name and its extension.
    [[nodiscard]] static QString pathWithIncreasedNumberCountForPath(const QString &path, qint64 currentCount);

    /// Calls the block with the URL of a free name: the sanitised one, or with the first free count from 2 on. The name
    /// is made shorter where it would take more than the 255 bytes that a name may have here, between characters.
    /// Errors:  FileWriteInvalidFileName for a missing name, or one that is "." or ".." or holds NUL once sanitised;
    ///          that of reading the folder; that of the block. The name then stays free.
    [[nodiscard]] bool safelyWriteFilename(const QString &filename, const WriterBlock &writerBlock, NSError *error);

private:
    explicit QBSafeFileWriter(QString path);
    [[nodiscard]] bool readFolder(NSError *error);
    [[nodiscard]] bool isTaken(const QString &name) const;
    /// A free name made from a sanitised one.
    [[nodiscard]] QString freeName(const QString &name);

    QString m_path;
    std::optional<QHash<QString, QString>> m_normalizedFilesPaths; ///< lower-case name to path; filled on first use
    QHash<QString, qint64> m_nextCounts;                           ///< by lower-case name: all counts below are taken
};
