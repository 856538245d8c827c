#include "AtomicFile.h"

#include "Descriptor.h"
#include "FileError.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

bool writeAll(int descriptor, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += count > 0 ? count : 0;
    }
    return true;
}

bool holdsNul(const QString &path)
{
    return path.contains(QChar(u'\0'));
}

} // namespace

bool ensureFolder(const QString &path, NSError *error)
{
    if (path.isEmpty() || holdsNul(path)) {
        return fillFileError(error, FileAccess::Write, EINVAL, u"make the folder", path);
    }
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) == 0) {
        return S_ISDIR(status.st_mode) || fillFileError(error, FileAccess::Write, EEXIST, u"make the folder", path);
    }
    if (::mkdir(name.constData(), 0700) == 0) {
        return true;
    }
    if (errno == ENOENT) {
        const QString parent = QFileInfo(path).path();
        if (parent == path || !ensureFolder(parent, error)) {
            return parent == path ? fillFileError(error, FileAccess::Write, ENOENT, u"make the folder", path) : false;
        }
        if (::mkdir(name.constData(), 0700) == 0) {
            return true;
        }
    }
    // Another process may have been quicker.
    const int failure = errno;
    if (failure == EEXIST && QFileInfo(path).isDir()) {
        return true;
    }
    return fillFileError(error, FileAccess::Write, failure, u"make the folder", path);
}

void syncFolder(const QString &path)
{
    const Descriptor folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.number());
    }
}

bool writeFileAtomically(const QString &path, const QByteArray &bytes, NSError *error)
{
    const auto failed = [&path, error](int errorNumber) {
        return fillFileError(error, FileAccess::Write, errorNumber, u"write", path);
    };
    if (holdsNul(path)) {
        return failed(EINVAL);
    }
    const QFileInfo given(path);
    const QString resolved = given.isSymLink() ? given.canonicalFilePath() : QString();
    const QString target = resolved.isEmpty() ? path : resolved;
    const QString folder = QFileInfo(target).path();

    QByteArray temporary = QFile::encodeName(folder % u"/.quib-XXXXXX"_s);
    Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.isOpen()) {
        return failed(errno);
    }
    struct stat old = {};
    const bool replaces = ::stat(QFile::encodeName(target).constData(), &old) == 0;
    const mode_t mode = replaces ? (old.st_mode & 07777U) : 0600U;
    int failure = 0;
    if (!writeAll(file.number(), bytes) || ::fchmod(file.number(), mode) != 0 || ::fsync(file.number()) != 0) {
        failure = errno;
    }
    file.close();
    if (failure == 0 && ::rename(temporary.constData(), QFile::encodeName(target).constData()) != 0) {
        failure = errno;
    }
    if (failure != 0) {
        ::unlink(temporary.constData());
        return failed(failure);
    }
    syncFolder(folder);
    return true;
}

std::optional<QByteArray> readWholeFile(const QString &path, NSError *error, qint64 limit)
{
    const auto failed = [&path, error](int errorNumber) -> std::optional<QByteArray> {
        fillFileError(error, FileAccess::Read, errorNumber, u"read", path);
        return std::nullopt;
    };
    if (holdsNul(path)) {
        return failed(ENOENT);
    }
    const Descriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen()) {
        return failed(errno);
    }
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    QByteArray bytes("");
    bytes.reserve(static_cast<qsizetype>(std::min<qint64>(status.st_size, limit)));
    for (char buffer[65536];;) {
        const ssize_t count = ::read(file.number(), buffer, sizeof(buffer));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return failed(errno);
        }
        if (count == 0) {
            return bytes;
        }
        if (bytes.size() + count > limit) {
            return failed(EFBIG);
        }
        bytes.append(buffer, count);
    }
}

} // namespace quib
