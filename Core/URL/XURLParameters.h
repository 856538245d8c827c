#pragma once

#include "URLParameters.h"

#include <QString>

/// The parameters that actions share, read without regard to the case of their values.
namespace quib {

// True unless the value is something else than "yes".

[[nodiscard]] bool xurlShowWindow(const IACParameters &parameters);     ///< "show_window"
[[nodiscard]] bool xurlOpenNote(const IACParameters &parameters);       ///< "open_note"
[[nodiscard]] bool xurlWait(const IACParameters &parameters);           ///< "wait"
[[nodiscard]] bool xurlExcludeTrashed(const IACParameters &parameters); ///< "exclude_trashed"

// True only for "yes".

[[nodiscard]] bool xurlNewWindow(const IACParameters &parameters);  ///< "new_window"
[[nodiscard]] bool xurlFloatOnTop(const IACParameters &parameters); ///< "float"
[[nodiscard]] bool xurlEditNote(const IACParameters &parameters);   ///< "edit"
[[nodiscard]] bool xurlPinNote(const IACParameters &parameters);    ///< "pin"

/// "appendurl": false only for "no".
[[nodiscard]] bool xurlAddURL(const IACParameters &parameters);
/// "noimages": true where it is missing, or is "no".
[[nodiscard]] bool xurlDownloadImages(const IACParameters &parameters);
/// "header" as it stands; null where it is missing.
[[nodiscard]] QString xurlHeader(const IACParameters &parameters);

} // namespace quib
