#pragma once

#include <Store/_QBExternalChanges.h>

/// A change that another program left behind for this one to take up. Confined to its context's queue.
class QBExternalChanges : public _QBExternalChanges
{
};
