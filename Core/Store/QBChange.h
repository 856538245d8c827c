#pragma once

#include <Store/_QBChange.h>

/// One recorded step of the change log that sync works off. Confined to its context's queue.
class QBChange : public _QBChange
{
};
