#pragma once

#include <Foundation/NSError.h>

#include <QString>

namespace quib {

/// Makes an empty folder "QuibTemp.XXXXXX", mode 0700, in the temporary directory. It is marked as in use until this
/// process ends or removes it. Any thread.
/// Errors: as for files; the result is then null.
[[nodiscard]] QString makeTemporaryFolder(NSError *error);

/// Removes the temporary folders of this process, and those that ended processes left behind. Other programs' files,
/// other users' folders and folders that another running process uses stay: the temporary directory is shared.
void removeTemporaryFolders();

} // namespace quib
