#pragma once

#include <Store/_QBFolder.h>

/// A folder of the first object model. No note is put in one any more.
class QBFolder : public _QBFolder
{
};
