#pragma once

#include "IACCallbacks.h"

#include <QString>

#include <memory>

class IACClient;

/// One action that was sent, or is to be sent, to another application. Its identifier tells its answer from others'.
/// A value but for the client; main queue.
struct IACRequest
{
    /// With a fresh identifier.
    IACRequest();

    QString requestID;
    std::shared_ptr<IACClient> client;
    QString action;
    IACParameters parameters;
    IACSuccessBlock successCalback; ///< may be empty
    IACFailureBlock errorCalback;   ///< may be empty
};
