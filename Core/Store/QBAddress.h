#pragma once

#include <Store/_QBAddress.h>

/// A contact kept with a note, carried for other devices. Confined to its context's queue.
class QBAddress : public _QBAddress
{
};
