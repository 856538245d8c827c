#pragma once

#include <Foundation/NSError.h>

namespace quib {

/// Hears what becomes of a store's file, whoever reads and writes it. Called on whichever thread does, while the store
/// is locked: it must not ask the store for anything.
class StoreObserver
{
public:
    virtual ~StoreObserver() = default;
    /// A save ended; the error is not set when it is on disk.
    virtual void storeDidSave(const NSError &error) = 0;
    /// A read or a save met a place in the file that makes no sense. Called once: from then on the store refuses to
    /// save, so that it gets no worse.
    virtual void storeDidFindDamage(const NSError &damage) = 0;
};

} // namespace quib
