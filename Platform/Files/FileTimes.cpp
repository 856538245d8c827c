#include "FileTimes.h"

#include <QFile>

#include <sys/stat.h>

namespace quib {

std::optional<NSDate> modificationDateOfFile(const QString &path)
{
    constexpr double kNanoseconds = 1e-9;
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(status.st_mtim.tv_sec) +
                                                 static_cast<double>(status.st_mtim.tv_nsec) * kNanoseconds);
}

} // namespace quib
