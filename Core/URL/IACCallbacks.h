#pragma once

#include "URLParameters.h"

#include <Foundation/NSError.h>

#include <functional>
#include <optional>

/// How an action ended well: with a result, with nothing, or cancelled. Called on the main queue.
using IACSuccessBlock = std::function<void(const std::optional<IACParameters> &result, bool cancelled)>;

/// How an action ended badly. The text for the caller stands in the error's domain. Called on the main queue.
using IACFailureBlock = std::function<void(const NSError &error)>;

/// Runs an action, and calls one of the callbacks then or later. Both are there always.
using IACActionBlock = std::function<void(const IACParameters &parameters, const IACSuccessBlock &success,
                                          const IACFailureBlock &failure)>;

/// Actions that no block is registered for.
class IACDelegate
{
public:
    virtual ~IACDelegate() = default;

    [[nodiscard]] virtual bool supportsIACAction(const QString &action) = 0;
    virtual void performIACAction(const QString &action, const IACParameters &parameters,
                                  const IACSuccessBlock &onSuccess, const IACFailureBlock &onFailure) = 0;
};

inline constexpr QLatin1StringView kIACManagerErrorDomain{"com.iac.manager.error"};
inline constexpr QLatin1StringView kIACClientErrorDomain{"com.iac.client.error"};

/// Codes of kIACManagerErrorDomain.
enum class IACManagerErrorCode : qint64
{
    AppNotInstalled = 1,
    ActionNotSupported = 2,
    ParameterTooLarge = 3,
};
