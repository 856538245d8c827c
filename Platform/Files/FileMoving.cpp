#include "FileMoving.h"

#include "AtomicFile.h"
#include "Descriptor.h"
#include "FileError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextBoundaryFinder>

#include <cerrno>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Units: bytes.
constexpr size_t kCopyBuffer = 1024 * 1024;

/// How many bytes of UTF-8 a code point takes; a lone surrogate becomes one of three or a "?".
qsizetype bytesOf(QStringView text)
{
    qsizetype bytes = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index].unicode();
        const bool isPair = QChar::isHighSurrogate(unit) && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        if (unit < 0x80) {
            bytes += 1;
        } else if (unit < 0x800) {
            bytes += 2;
        } else {
            bytes += isPair ? 4 : 3;
            index += isPair ? 1 : 0;
        }
    }
    return bytes;
}

/// 0, or the errno of what failed.
int copyBytes(int from, int to)
{
    const auto buffer = std::make_unique<char[]>(kCopyBuffer);
    for (;;) {
        const ssize_t count = ::read(from, buffer.get(), kCopyBuffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count < 0 ? errno : 0;
        }
        ssize_t done = 0;
        while (done < count) {
            const ssize_t written = ::write(to, buffer.get() + done, static_cast<size_t>(count - done));
            if (written < 0 && errno != EINTR) {
                return errno;
            }
            done += written > 0 ? written : 0;
        }
    }
}

/// Renames without replacing what came to stand there; 0, or the errno. File systems that cannot do that in one step
/// take a hard link first.
int renameToFreeName(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::link(from.constData(), to.constData()) != 0) {
        return errno;
    }
    ::unlink(from.constData());
    return 0;
}

bool copyTree(const QString &from, const QString &to, NSError *error)
{
    const QFileInfo source(from);
    if (source.isSymLink()) {
        return QFile::link(source.symLinkTarget(), to) ||
               fillFileError(error, FileAccess::Write, EIO, u"make the link", to);
    }
    if (!source.isDir()) {
        return copyFile(from, to, error);
    }
    if (!ensureFolder(to, error)) {
        return false;
    }
    const QStringList names =
        QDir(from).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (!copyTree(from % u'/' % name, to % u'/' % name, error)) {
            return false;
        }
    }
    syncFolder(to);
    return true;
}

bool moveAcrossFileSystems(const QString &from, const QString &to, NSError *error)
{
    const QString beside = to % u".quib-moving"_s;
    removeItem(beside);
    if (!copyTree(from, beside, error)) {
        removeItem(beside);
        return false;
    }
    if (::rename(QFile::encodeName(beside).constData(), QFile::encodeName(to).constData()) != 0) {
        const int failure = errno;
        removeItem(beside);
        return fillFileError(error, FileAccess::Write, failure, u"move to", to);
    }
    syncFolder(QFileInfo(to).path());
    removeItem(from);
    return true;
}

} // namespace

bool isSafeFileName(QStringView name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') && !name.contains(QChar(u'\0'));
}

QString cutToBytes(const QString &name, qsizetype bytes)
{
    if (bytesOf(name) <= bytes) {
        return name;
    }
    // Every unit takes at least one byte, so only the first units can be kept.
    const QString head = name.left(std::max<qsizetype>(bytes, 0) + 1);
    const auto fits = [&head, bytes](qsizetype units) { return bytesOf(QStringView(head).first(units)) <= bytes; };
    qsizetype kept = 0;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, head);
    for (qsizetype next = finder.toNextBoundary(); next > 0 && fits(next); next = finder.toNextBoundary()) {
        kept = next;
    }
    if (kept == 0) {
        // One character with more marks than fit: some of its marks go.
        while (kept < head.size() && fits(kept + 1)) {
            ++kept;
        }
        kept -= kept > 0 && head[kept - 1].isHighSurrogate() ? 1 : 0;
    }
    return head.first(kept);
}

bool copyFile(const QString &from, const QString &to, NSError *error)
{
    const Descriptor source(::open(QFile::encodeName(from).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!source.isOpen() || ::fstat(source.number(), &status) != 0) {
        return fillFileError(error, FileAccess::Read, errno, u"read", from);
    }
    if (!S_ISREG(status.st_mode)) {
        return fillFileError(error, FileAccess::Read, S_ISDIR(status.st_mode) ? EISDIR : EINVAL, u"copy", from);
    }
    QByteArray temporary = QFile::encodeName(QFileInfo(to).path() % u"/.quib-XXXXXX"_s);
    const Descriptor copy(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!copy.isOpen()) {
        return fillFileError(error, FileAccess::Write, errno, u"write", to);
    }
    int failure = copyBytes(source.number(), copy.number());
    const timespec times[] = {status.st_atim, status.st_mtim};
    if (failure == 0 && (::futimens(copy.number(), times) != 0 || ::fsync(copy.number()) != 0)) {
        failure = errno;
    }
    if (failure == 0) {
        failure = renameToFreeName(temporary, QFile::encodeName(to));
    }
    if (failure != 0) {
        ::unlink(temporary.constData());
        return fillFileError(error, FileAccess::Write, failure, u"write", to);
    }
    syncFolder(QFileInfo(to).path());
    return true;
}

bool moveItem(const QString &from, const QString &to, NSError *error)
{
    struct stat source = {};
    struct stat target = {};
    const QByteArray fromName = QFile::encodeName(from);
    const QByteArray toName = QFile::encodeName(to);
    if (::lstat(fromName.constData(), &source) != 0) {
        return fillFileError(error, FileAccess::Read, errno, u"move", from);
    }
    const bool isTaken = ::lstat(toName.constData(), &target) == 0;
    // Renaming a folder to an empty folder replaces it; to a full one fails. A file would be replaced without a word.
    if (isTaken && !(S_ISDIR(source.st_mode) && S_ISDIR(target.st_mode))) {
        return fillFileError(error, FileAccess::Write, EEXIST, u"move to", to);
    }
    if (::rename(fromName.constData(), toName.constData()) == 0) {
        syncFolder(QFileInfo(to).path());
        syncFolder(QFileInfo(from).path());
        return true;
    }
    if (errno == EXDEV) {
        return moveAcrossFileSystems(from, to, error);
    }
    return fillFileError(error, FileAccess::Write, errno, u"move to", to);
}

bool removeItem(const QString &path)
{
    const QFileInfo item(path);
    if (item.isDir() && !item.isSymLink()) {
        return QDir(path).removeRecursively();
    }
    return QFile::remove(path);
}

} // namespace quib
