#pragma once

#include <Store/_QBNoteServerData.h>

/// The system fields of a note's record in the cloud. Lives and dies with its note. Confined to its context's queue.
class QBNoteServerData : public _QBNoteServerData
{
};
