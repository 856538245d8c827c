#pragma once

#include <Store/_QBNoteFileServerData.h>

/// The system fields of an attachment's record in the cloud. Lives and dies with its attachment. Confined to its
/// context's queue.
class QBNoteFileServerData : public _QBNoteFileServerData
{
};
