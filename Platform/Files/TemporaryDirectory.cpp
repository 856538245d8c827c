#include "TemporaryDirectory.h"

#include "AtomicFile.h"
#include "Descriptor.h"
#include "FileError.h"
#include "Profile.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <map>
#include <mutex>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr QLatin1StringView kPrefix{"QuibTemp."};

/// The folders that this process made, each with the lock that marks it as in use.
struct Owned
{
    std::mutex mutex;
    std::map<QString, Descriptor> folders;
};

Owned &owned()
{
    static Owned *folders = new Owned; // used by whoever ends last
    return *folders;
}

Descriptor openFolder(const QString &path)
{
    return Descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

} // namespace

QString makeTemporaryFolder(NSError *error)
{
    const QString parent = Profile::temporaryFolder();
    if (!ensureFolder(parent, error)) {
        return {};
    }
    QByteArray name = QFile::encodeName(parent % u'/' % kPrefix % u"XXXXXX");
    if (::mkdtemp(name.data()) == nullptr) {
        fillFileError(error, FileAccess::Write, errno, u"make a folder in", parent);
        return {};
    }
    const QString path = QFile::decodeName(name);
    Descriptor mark = openFolder(path);
    if (mark.isOpen()) {
        ::flock(mark.number(), LOCK_SH);
    }
    const std::lock_guard lock(owned().mutex);
    owned().folders.insert_or_assign(path, std::move(mark));
    return path;
}

void removeTemporaryFolders()
{
    {
        const std::lock_guard lock(owned().mutex);
        for (const auto &folder : owned().folders) {
            QDir(folder.first).removeRecursively();
        }
        owned().folders.clear();
    }
    const QString parent = Profile::temporaryFolder();
    const QStringList names =
        QDir(parent).entryList({QString(kPrefix % u"??????")}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names) {
        const QString path = parent % u'/' % name;
        const Descriptor folder = openFolder(path);
        struct stat status = {};
        if (folder.isOpen() && ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid() &&
            ::flock(folder.number(), LOCK_EX | LOCK_NB) == 0) {
            QDir(path).removeRecursively();
        }
    }
}

} // namespace quib
