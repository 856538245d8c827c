#pragma once

#include <Store/_QBLocation.h>

/// The place where a note was written, carried for other devices. Confined to its context's queue.
class QBLocation : public _QBLocation
{
};
