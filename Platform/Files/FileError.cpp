#include "FileError.h"

#include <cerrno>
#include <system_error>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

NSCocoaErrorCode codeFor(FileAccess access, int errorNumber)
{
    switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
        return NSCocoaErrorCode::FileNoSuchFile;
    case EACCES:
    case EPERM:
        return access == FileAccess::Read ? NSCocoaErrorCode::FileReadNoPermission
                                          : NSCocoaErrorCode::FileWriteNoPermission;
    case EEXIST:
    case ENOTEMPTY:
        return NSCocoaErrorCode::FileWriteFileExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return NSCocoaErrorCode::FileWriteOutOfSpace;
    case EROFS:
        return NSCocoaErrorCode::FileWriteVolumeReadOnly;
    case ENAMETOOLONG:
    case EINVAL:
        return access == FileAccess::Read ? NSCocoaErrorCode::FileReadUnknown
                                          : NSCocoaErrorCode::FileWriteInvalidFileName;
    default:
        return access == FileAccess::Read ? NSCocoaErrorCode::FileReadUnknown : NSCocoaErrorCode::FileWriteUnknown;
    }
}

} // namespace

bool fillFileError(NSError *error, FileAccess access, int errorNumber, QStringView action, const QString &path)
{
    if (error == nullptr) {
        return false;
    }
    const QString reason = QString::fromStdString(std::generic_category().message(errorNumber)).toLower();
    const QString message = u"cannot %1 %2: %3"_s.arg(action.toString(), path, reason);
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(codeFor(access, errorNumber)), message,
                         errorNumber);
}

} // namespace quib
