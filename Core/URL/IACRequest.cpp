#include "IACRequest.h"

IACRequest::IACRequest()
    : requestID(quib::stringWithUUID())
{
}
