#pragma once

#include <Foundation/NSError.h>

#include <QString>

class NSManagedObjectContext;

namespace quib {

/// Fills an empty store with the sample notes of a folder: "notes.json" names their files, ages and states; lines like
/// "[picture:NAME]" in a text become pictures, drawn from the folder "Pictures".
/// Shape:   a store with notes is left alone, and that is no error.
/// Errors:  false, with the reason, for a file that is missing or no list of notes, or a save that failed.
[[nodiscard]] bool fillWithDemoNotes(NSManagedObjectContext &context, const QString &folder, NSError *error);

} // namespace quib
