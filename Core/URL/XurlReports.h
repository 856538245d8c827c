#pragma once

#include "QBXurlCoreController.h"

#include <Foundation/NSError.h>

namespace quib {

/// Reports a failure, where somebody listens. The message stands in the error's domain.
inline void reportFailure(const IACFailureBlock &failure, QBXurlCoreController::ErrorCode code,
                          QLatin1StringView message)
{
    if (failure) {
        failure(NSError(message, static_cast<qint64>(code), {}));
    }
}

/// Reports a success, where somebody listens.
inline void reportSuccess(const IACSuccessBlock &success, const IACParameters &result = {})
{
    if (success) {
        success(result, /*cancelled=*/false);
    }
}

/// The messages that more than one action has.
inline constexpr QLatin1StringView kNoteMissing{"The note could not be found"};
inline constexpr QLatin1StringView kTagMissing{"The tag could not be found"};
inline constexpr QLatin1StringView kNoteUnnamed{"Note identifier or title required"};
inline constexpr QLatin1StringView kFileNotBase64{"File not in a valid base64 form"};
inline constexpr QLatin1StringView kTokenInvalid{"The provided token is not valid"};
inline constexpr QLatin1StringView kTokenRequired{"A valid token is required"};
inline constexpr QLatin1StringView kNoteNotWritten{"Unable to write note"};
inline constexpr QLatin1StringView kResultsNotFetched{"Error fetching the results"};
inline constexpr QLatin1StringView kNotSaved{"Internal error while saving"};

/// The text with the tags of a comma-separated list behind it.
[[nodiscard]] QString textWithTags(const QString &text, const QString &tags);

} // namespace quib
