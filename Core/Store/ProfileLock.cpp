#include "ProfileLock.h"

#include <Files/AtomicFile.h>
#include <Files/FileError.h>
#include <Files/Profile.h>

#include <QFile>
#include <QThread>

#include <array>
#include <cerrno>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// The parts of the lock file, a byte each. The application's is taken for good; a companion that finds it free shares
// the other while it saves, and an application that starts passes through it.
constexpr off_t kApplicationByte = 0;
constexpr off_t kTurnByte = 1;

/// Longer than any save waits for the store, and short enough for a person who starts the application.
constexpr int kLongestWait = 15'000; // milliseconds
constexpr int kWaitStep = 5;         // milliseconds

QString folderOrProfile(const QString &folder)
{
    return folder.isEmpty() ? Profile::persistentDataFolder() : folder;
}

QString lockFile(const QString &folder)
{
    return folderOrProfile(folder) + u"/application.lock"_s;
}

Descriptor openLockFile(const QString &path, int flags)
{
    return Descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
}

struct flock lockOf(off_t byte, short type)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

/// 0, or errno. The locks belong to the open file, not to the process: two holders within one process exclude each
/// other too, and closing another descriptor of the file lets go of nothing.
int setLock(const Descriptor &file, off_t byte, short type)
{
    struct flock lock = lockOf(byte, type);
    int result = 0;
    do {
        result = ::fcntl(file.number(), F_OFD_SETLK, &lock);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : errno;
}

bool isRefusal(int errorNumber)
{
    return errorNumber == EAGAIN || errorNumber == EACCES;
}

bool isLocked(const Descriptor &file, off_t byte)
{
    struct flock lock = lockOf(byte, F_WRLCK);
    return ::fcntl(file.number(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

/// The process that wrote its number into the file, or 0.
qint64 writtenHolder(const Descriptor &file)
{
    std::array<char, 32> buffer{};
    const ssize_t size = ::pread(file.number(), buffer.data(), buffer.size(), 0);
    bool isNumber = false;
    const qint64 number = QByteArrayView(buffer.data(), std::max<ssize_t>(size, 0)).trimmed().toLongLong(&isNumber);
    return isNumber && number > 0 ? number : 0;
}

bool failLocked(NSError *error, const QString &message, qint64 holder)
{
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileLocking), message,
                         holder);
}

/// Waits until no companion is in a turn that began before.
/// Errors: false.
bool waitForTurns(const Descriptor &file, const QString &path, NSError *error)
{
    for (int waited = 0;; waited += kWaitStep) {
        const int refusal = setLock(file, kTurnByte, F_WRLCK);
        if (refusal == 0) {
            static_cast<void>(setLock(file, kTurnByte, F_UNLCK));
            return true;
        }
        if (!isRefusal(refusal)) {
            return fillFileError(error, FileAccess::Write, refusal, u"lock", path);
        }
        if (waited >= kLongestWait) {
            return failLocked(error, u"another program keeps writing to the profile of %1"_s.arg(path), 0);
        }
        QThread::msleep(kWaitStep);
    }
}

Descriptor openForLocking(const QString &folder, const QString &path, NSError *error)
{
    if (!ensureFolder(folderOrProfile(folder), error)) {
        return Descriptor();
    }
    Descriptor file = openLockFile(path, O_RDWR | O_CREAT);
    if (!file.isOpen()) {
        fillFileError(error, FileAccess::Write, errno, u"open", path);
    }
    return file;
}

} // namespace

std::optional<ProfileLock> ProfileLock::acquire(const QString &folder, NSError *error)
{
    const QString path = lockFile(folder);
    Descriptor file = openForLocking(folder, path, error);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    if (const int refusal = setLock(file, kApplicationByte, F_WRLCK); isRefusal(refusal)) {
        const qint64 holder = writtenHolder(file);
        failLocked(error,
                   holder != 0 ? u"the profile of %1 is in use by process %2"_s.arg(path).arg(holder)
                               : u"the profile of %1 is in use"_s.arg(path),
                   holder);
        return std::nullopt;
    } else if (refusal != 0) {
        fillFileError(error, FileAccess::Write, refusal, u"lock", path);
        return std::nullopt;
    }
    // Told for messages only; the lock itself is what holds.
    const QByteArray number = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    if (::ftruncate(file.number(), 0) != 0 ||
        ::pwrite(file.number(), number.constData(), static_cast<size_t>(number.size()), 0) < 0) {
        fillFileError(error, FileAccess::Write, errno, u"write", path);
        return std::nullopt;
    }
    if (!waitForTurns(file, path, error)) {
        return std::nullopt;
    }
    return ProfileLock(std::move(file));
}

bool ProfileLock::isHeld(const QString &folder)
{
    return holder(folder).has_value();
}

std::optional<qint64> ProfileLock::holder(const QString &folder)
{
    const Descriptor file = openLockFile(lockFile(folder), O_RDONLY);
    if (!file.isOpen() || !isLocked(file, kApplicationByte)) {
        return std::nullopt;
    }
    return writtenHolder(file);
}

std::optional<CompanionTurn> CompanionTurn::begin(const QString &folder, NSError *error)
{
    const QString path = lockFile(folder);
    Descriptor file = openForLocking(folder, path, error);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    // A turn is shared only while nobody holds the profile, so that a stream of companions cannot keep out an
    // application: once it has the profile, no new turn makes it wait.
    for (int waited = 0; !isLocked(file, kApplicationByte); waited += kWaitStep) {
        const int refusal = setLock(file, kTurnByte, F_RDLCK);
        if (refusal == 0) {
            if (isLocked(file, kApplicationByte)) {
                break;
            }
            return CompanionTurn(std::move(file));
        }
        if (!isRefusal(refusal) || waited >= kLongestWait) {
            fillFileError(error, FileAccess::Write, refusal, u"lock", path);
            return std::nullopt;
        }
        QThread::msleep(kWaitStep); // an application is passing through
    }
    return CompanionTurn(Descriptor());
}

} // namespace quib
