#pragma once

#include <QStringList>

namespace quib {

/// Whether a window can be shown: the toolkit ends the process where it is set to a display that does not answer, so
/// this is asked before the toolkit is made. It looks at the environment as the toolkit does.
/// Shape: a display of the Wayland kind counts where one of the plugin folders has what speaks to it.
[[nodiscard]] bool isDisplayReachable(const QStringList &pluginFolders);

} // namespace quib
