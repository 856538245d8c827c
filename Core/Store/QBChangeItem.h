#pragma once

#include <Store/_QBChangeItem.h>

/// One object that changed in a step of the change log. Confined to its context's queue.
class QBChangeItem : public _QBChangeItem
{
};
