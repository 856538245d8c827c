#pragma once

#include <Store/_QBURL.h>

/// A link that was found in a note, with what is known of its page. Confined to its context's queue.
class QBURL : public _QBURL
{
};
