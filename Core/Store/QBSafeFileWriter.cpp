#include "QBSafeFileWriter.h"

#include <Files/FileError.h>
#include <Files/FileMoving.h>
#include <Text/NSStringHelpers.h>

#include <QDir>
#include <QFileInfo>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLongestSanitizedName = 245;

/// Where the extension, with its dot, begins; the name's size where it has none. A dot at the very beginning or end
/// makes no extension.
qsizetype extensionStart(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && dot + 1 < name.size() ? dot : name.size();
}

QString cut(const QString &text, qsizetype units)
{
    if (text.size() <= units) {
        return text;
    }
    const NSRange range = quib::rangeOfComposedCharacterSequencesForRange(text, NSRange{0, units});
    return text.left(range.limit());
}

/// The name with a suffix before its extension, made to fit into the bytes that a name may have.
QString fitted(const QString &name, const QString &suffix)
{
    const qsizetype start = extensionStart(name);
    const QString extension = name.sliced(start);
    const qsizetype room = quib::kLongestFileName - (suffix % extension).toUtf8().size();
    if (room < 1) {
        // An extension that leaves no room is none.
        return quib::cutToBytes(name, quib::kLongestFileName - suffix.toUtf8().size()) % suffix;
    }
    return quib::cutToBytes(name.left(start), room) % suffix % extension;
}

} // namespace

QBSafeFileWriter::QBSafeFileWriter(QString path)
    : m_path(std::move(path))
{
}

QBSafeFileWriter QBSafeFileWriter::safeFileWriterForFolderURL(const QUrl &folderURL)
{
    return QBSafeFileWriter(folderURL.toLocalFile());
}

QBSafeFileWriter QBSafeFileWriter::safeFileWriterForFolderPath(const QString &folderPath)
{
    return QBSafeFileWriter(folderPath);
}

QString QBSafeFileWriter::sanitizeFilename(const QString &filename)
{
    QString name = filename;
    name.removeIf([](QChar unit) { return unit == u'/' || unit == u':' || unit == u'\\'; });
    const qsizetype start = extensionStart(name);
    const QString extension = name.sliced(start);
    const qsizetype room = kLongestSanitizedName - extension.size();
    if (extension.isEmpty() || room < 1) {
        return cut(name, kLongestSanitizedName);
    }
    return cut(name.left(start), room) % extension;
}

QString QBSafeFileWriter::normalizedFilename(const QString &filename)
{
    return filename.toLower();
}

QString QBSafeFileWriter::pathWithIncreasedNumberCountForPath(const QString &path, qint64 currentCount)
{
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype start = nameStart + extensionStart(QStringView(path).sliced(nameStart));
    return path.left(start) % u' ' % QString::number(currentCount) % QStringView(path).sliced(start);
}

bool QBSafeFileWriter::readFolder(NSError *error)
{
    if (m_normalizedFilesPaths) {
        return true;
    }
    const QFileInfo folder(m_path);
    if (!folder.isDir() || !folder.isReadable()) {
        const int reason = !folder.exists() ? ENOENT : folder.isDir() ? EACCES : ENOTDIR;
        return quib::fillFileError(error, quib::FileAccess::Read, reason, u"read the folder", m_path);
    }
    QHash<QString, QString> paths;
    const QStringList names =
        QDir(m_path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        paths.insert(normalizedFilename(name), m_path % u'/' % name);
    }
    m_normalizedFilesPaths = std::move(paths);
    return true;
}

bool QBSafeFileWriter::isTaken(const QString &name) const
{
    // The folder is looked at too: another program may have written since it was read.
    const QFileInfo item(m_path % u'/' % name);
    return m_normalizedFilesPaths->contains(normalizedFilename(name)) || item.exists() || item.isSymLink();
}

QString QBSafeFileWriter::freeName(const QString &name)
{
    QString candidate = fitted(name, QString());
    // Counts that were taken once stay taken, so that many notes of one title cost the same each. The free one stays
    // the next until something was written under it.
    qint64 &count = m_nextCounts[normalizedFilename(candidate)];
    count = std::max<qint64>(count, 2);
    if (isTaken(candidate)) {
        candidate = fitted(name, u' ' % QString::number(count));
        while (isTaken(candidate)) {
            candidate = fitted(name, u' ' % QString::number(++count));
        }
    }
    return candidate;
}

bool QBSafeFileWriter::safelyWriteFilename(const QString &filename, const WriterBlock &writerBlock, NSError *error)
{
    // 1. A name that names nothing, or something outside of the folder, is refused.
    const QString name = sanitizeFilename(filename);
    if (!quib::isSafeFileName(name)) {
        return NSError::fill(error, kNSCocoaErrorDomain,
                             static_cast<qint64>(NSCocoaErrorCode::FileWriteInvalidFileName),
                             u"a file without a usable name cannot be written into %1"_s.arg(m_path));
    }
    // 2. The names that are there.
    if (!readFolder(error)) {
        return false;
    }
    // 3. A free one.
    const QString free = freeName(name);
    const QString path = m_path % u'/' % free;
    // 4. The file.
    if (!writerBlock(QUrl::fromLocalFile(path), error)) {
        return false;
    }
    m_normalizedFilesPaths->insert(normalizedFilename(free), path);
    return true;
}
