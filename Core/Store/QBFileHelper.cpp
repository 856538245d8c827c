#include "QBFileHelper.h"

#include <Files/AtomicFile.h>
#include <Files/FileMoving.h>
#include <Files/Profile.h>

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// The path of a name; null, with an error, for a name that is none.
QString pathFor(const QString &name, NSError *error)
{
    if (!quib::isSafeFileName(name)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileWriteInvalidFileName),
                      u"\"%1\" is no name of a file"_s.arg(name));
        return {};
    }
    return quib::Profile::documentsFolder() % u'/' % name;
}

mode_t modeOfNewFiles()
{
    const mode_t mask = ::umask(0077);
    ::umask(mask);
    return 0666U & ~mask;
}

} // namespace

QBFileHelper &QBFileHelper::sharedHelper()
{
    static QBFileHelper helper;
    return helper;
}

bool QBFileHelper::createDirectoryWithName(const QString &name, NSError *error)
{
    const QString path = pathFor(name, error);
    return !path.isNull() && quib::ensureFolder(path, error);
}

QString QBFileHelper::getDirectoryPathWithName(const QString &name) const
{
    return quib::Profile::documentsFolder() % u'/' % name;
}

QString QBFileHelper::getDataPlistPath() const
{
    return quib::Profile::documentsFolder() % u"/data.plist";
}

bool QBFileHelper::writeFileWithName(const QString &name, const QString &andText, bool userFile, NSError *error)
{
    const QString path = pathFor(name, error);
    if (path.isNull() || !quib::ensureFolder(quib::Profile::documentsFolder(), error)) {
        return false;
    }
    const bool isNew = !QFileInfo::exists(path);
    if (!quib::writeFileAtomically(path, andText.toUtf8(), error)) {
        return false;
    }
    if (isNew && userFile) {
        ::chmod(QFile::encodeName(path).constData(), modeOfNewFiles());
    }
    return true;
}

std::optional<QString> QBFileHelper::loadFileForName(const QString &name, NSError *error) const
{
    const QString path = pathFor(name, error);
    const auto bytes = path.isNull() ? std::nullopt : quib::readWholeFile(path, error);
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

bool QBFileHelper::deleteFileForName(const QString &name)
{
    const QString path = pathFor(name, nullptr);
    return !path.isNull() && quib::removeItem(path);
}

bool QBFileHelper::renameFile(const QString &name, const QString &toNewName, NSError *error)
{
    const QString from = pathFor(name, error);
    const QString to = from.isNull() ? QString() : pathFor(toNewName, error);
    return !to.isNull() && quib::moveItem(from, to, error);
}

bool QBFileHelper::fileExistsWithName(const QString &name) const
{
    const QString path = pathFor(name, nullptr);
    return !path.isNull() && QFileInfo::exists(path);
}
