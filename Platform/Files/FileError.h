#pragma once

#include <Foundation/NSError.h>

#include <QString>

namespace quib {

/// What was being done when a system call failed; it chooses the code where errno alone does not.
enum class FileAccess
{
    Read,
    Write,
};

/// Fills an out error from errno: the code of the domain, a message of the form "cannot ACTION PATH: REASON", errno as
/// the cause. Gives false.
bool fillFileError(NSError *error, FileAccess access, int errorNumber, QStringView action, const QString &path);

} // namespace quib
