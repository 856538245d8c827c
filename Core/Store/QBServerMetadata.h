#pragma once

#include <Store/_QBServerMetadata.h>

/// What sync remembers of the record zone. Confined to its context's queue.
class QBServerMetadata : public _QBServerMetadata
{
};
