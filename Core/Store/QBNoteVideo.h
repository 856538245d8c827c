#pragma once

#include <Store/_QBNoteVideo.h>

/// A film attached to a note on another device: it has no marker here and cannot be imported, only kept. Confined to
/// its context's queue.
class QBNoteVideo : public _QBNoteVideo
{
public:
    static quib::Ref<QBNoteVideo> insertInManagedObjectContext(NSManagedObjectContext &moc);
    [[nodiscard]] QString localFolderName() const override;
};
