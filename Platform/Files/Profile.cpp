#include "Profile.h"

#include "AtomicFile.h"

#include <QDir>
#include <QMutex>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

struct Root
{
    QMutex mutex;
    QString folder;
};

Root &installedRoot()
{
    static Root root;
    return root;
}

QString made(const QString &folder)
{
    // A failure shows at the first write into the folder, with its path and reason.
    static_cast<void>(ensureFolder(folder, nullptr));
    return folder;
}

/// One of the base folders: below the root, or where a variable says, or at its place in the home folder. A relative
/// path in a variable is not valid and counts as none.
QString baseFolder(const char *variable, QStringView inHome, QStringView inRoot)
{
    const QString root = Profile::root();
    if (!root.isEmpty()) {
        return inRoot.isEmpty() ? root : root % u'/' % inRoot;
    }
    const QString given = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(given) ? QDir::cleanPath(given) : QString(QDir::homePath() % u'/' % inHome);
}

QString dataHome()
{
    return baseFolder("XDG_DATA_HOME", u".local/share", u"");
}

} // namespace

void Profile::setRoot(const QString &folder)
{
    const QMutexLocker lock(&installedRoot().mutex);
    installedRoot().folder = folder.isEmpty() ? QString() : QDir::cleanPath(QDir().absoluteFilePath(folder));
}

QString Profile::root()
{
    {
        const QMutexLocker lock(&installedRoot().mutex);
        if (!installedRoot().folder.isEmpty()) {
            return installedRoot().folder;
        }
    }
    const QString given = qEnvironmentVariable("QUIB_PROFILE");
    return given.isEmpty() ? QString() : QDir::cleanPath(QDir().absoluteFilePath(given));
}

QString Profile::applicationGroupFolder()
{
    return made(dataHome() % u'/' % kGroupIdentifier);
}

QString Profile::persistentDataFolder()
{
    return made(applicationGroupFolder() % u"/Application Data");
}

QString Profile::applicationSupportFolder()
{
    return made(dataHome() % u'/' % kBundleIdentifier);
}

QString Profile::preferencesFolder()
{
    return made(baseFolder("XDG_CONFIG_HOME", u".config", u"config") % u'/' % kBundleIdentifier);
}

QString Profile::logsFolder()
{
    return made(baseFolder("XDG_STATE_HOME", u".local/state", u"state") % u"/Logs/Quib");
}

QString Profile::temporaryFolder()
{
    const QString root = Profile::root();
    return root.isEmpty() ? QDir::cleanPath(QDir::tempPath()) : made(root % u"/tmp");
}

QString Profile::documentsFolder()
{
    const QString root = Profile::root();
    return root.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                          : QString(root % u"/Documents");
}

} // namespace quib
