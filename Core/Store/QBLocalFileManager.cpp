#include "QBLocalFileManager.h"

#include <Files/AtomicFile.h>
#include <Files/FileMoving.h>
#include <Files/Profile.h>
#include <Files/TemporaryDirectory.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <memory>
#include <mutex>

using namespace Qt::StringLiterals;
using quib::Profile;

namespace {

bool refuse(NSError *error, const QString &name)
{
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileWriteInvalidFileName),
                         u"\"%1\" is no name of a file"_s.arg(name));
}

QUrl made(const QString &folder)
{
    // A failure shows at the first write into the folder.
    static_cast<void>(quib::ensureFolder(folder, nullptr));
    return QUrl::fromLocalFile(folder);
}

} // namespace

QBLocalFileManager *QBLocalFileManager::localFileManagerForPathComponent(const QString &pathComponent)
{
    struct Managers
    {
        std::mutex mutex;
        QHash<QString, std::shared_ptr<QBLocalFileManager>> byFolder;
    };
    static Managers managers;
    const QUrl folder = folderURLForPathComponent(pathComponent);
    const std::lock_guard lock(managers.mutex);
    auto &manager = managers.byFolder[folder.toLocalFile()];
    if (!manager) {
        manager = std::make_shared<QBLocalFileManager>(folder);
    }
    return manager.get();
}

QBLocalFileManager::QBLocalFileManager(QUrl baseURL)
    : m_baseURL(std::move(baseURL))
{
}

QString QBLocalFileManager::folderForUniqueID(const QString &uniqueID) const
{
    return quib::isSafeFileName(uniqueID) ? QString(m_baseURL.toLocalFile() % u'/' % uniqueID) : QString();
}

QUrl QBLocalFileManager::fileURLForUniqueID(const QString &uniqueID, const QString &filename) const
{
    const QString folder = folderForUniqueID(uniqueID);
    if (folder.isNull() || !quib::isSafeFileName(filename)) {
        return {};
    }
    return QUrl::fromLocalFile(folder % u'/' % filename);
}

bool QBLocalFileManager::copyFileAtURL(const QUrl &url, const QString &toLocalFolderForUniqueID,
                                       const QString &filename, NSError *error) const
{
    const QString folder = folderForUniqueID(toLocalFolderForUniqueID);
    if (folder.isNull()) {
        return refuse(error, toLocalFolderForUniqueID);
    }
    if (!quib::isSafeFileName(filename)) {
        return refuse(error, filename);
    }
    if (!quib::ensureFolder(folder, error)) {
        return false;
    }
    if (!quib::copyFile(url.toLocalFile(), folder % u'/' % filename, error)) {
        // An identifier without a file has no folder; a folder with files in it stays.
        QDir().rmdir(folder);
        return false;
    }
    quib::syncFolder(m_baseURL.toLocalFile());
    return true;
}

bool QBLocalFileManager::moveFileForUniqueID(const QString &uniqueID, const QString &toUniqueId, NSError *error) const
{
    const QString from = folderForUniqueID(uniqueID);
    const QString to = folderForUniqueID(toUniqueId);
    if (from.isNull() || to.isNull()) {
        return refuse(error, from.isNull() ? uniqueID : toUniqueId);
    }
    return quib::moveItem(from, to, error);
}

void QBLocalFileManager::deleteFileForUniqueID(const QString &uniqueID) const
{
    const QString folder = folderForUniqueID(uniqueID);
    if (!folder.isNull()) {
        quib::removeItem(folder);
    }
}

QUrl QBLocalFileManager::folderURLForPathComponent(const QString &pathComponent)
{
    return made(Profile::persistentDataFolder() % u'/' % pathComponent);
}

QUrl QBLocalFileManager::applicationGroupURL()
{
    return QUrl::fromLocalFile(Profile::applicationGroupFolder());
}

QUrl QBLocalFileManager::applicationPersistentDataURL()
{
    return QUrl::fromLocalFile(Profile::persistentDataFolder());
}

QUrl QBLocalFileManager::applicationSupportURL()
{
    return QUrl::fromLocalFile(Profile::applicationSupportFolder());
}

QUrl QBLocalFileManager::copyFileURLToTemporaryDirectory(const QUrl &fileURL, NSError *error)
{
    const QString name = QFileInfo(fileURL.toLocalFile()).fileName();
    if (!quib::isSafeFileName(name)) {
        refuse(error, name);
        return {};
    }
    const QString folder = temporaryUniqueDirectoryPath(error);
    const QString copy = folder % u'/' % name;
    if (folder.isNull() || !quib::copyFile(fileURL.toLocalFile(), copy, error)) {
        return {};
    }
    return QUrl::fromLocalFile(copy);
}

QUrl QBLocalFileManager::temporaryUniqueDirectoryURL(NSError *error)
{
    const QString path = temporaryUniqueDirectoryPath(error);
    return path.isNull() ? QUrl() : QUrl::fromLocalFile(path);
}

QString QBLocalFileManager::temporaryUniqueDirectoryPath(NSError *error)
{
    return quib::makeTemporaryFolder(error);
}

void QBLocalFileManager::deleteTemporaryDirectoryContent()
{
    quib::removeTemporaryFolders();
}
