#pragma once

#include <Files/PropertyList.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSRange.h>
#include <Store/MRVectorClock.h>

#include <QString>

#include <cstddef>
#include <memory>
#include <optional>

class NSUndoManager;

/// Where the user was in a note: it is shown again like this when the user comes back soon and nobody else wrote it
/// meanwhile. A value; the undo manager is shared. Main queue.
struct QBEditorState
{
    /// Fewer whole minutes than these have passed since a state that still holds.
    static constexpr qint64 kValidMinutes = 16;

    /// The note's identifier.
    QString UUID;
    /// The note's clock when the state was taken. Without one the state never holds.
    std::optional<MRVectorClock> vectorClock;
    NSDate date;
    /// What can be undone in the note. Not archived: it ends with the process.
    std::shared_ptr<NSUndoManager> undoManager;
    /// Of the text as it lay in memory, attachments and all: what can be undone fits no other. Not archived.
    std::size_t undoHash = 0;
    /// The selection.
    NSRange editRange = kNotFoundRange;
    /// How far the first paragraph to be seen is scrolled away. Units: points.
    double scrollPosition = 0;
    /// The width of the column that the position was measured in. In another one the paragraph's start is seen.
    double scrollWidth = 0;
    /// The first paragraph to be seen: heights above it are estimates, so that it alone tells the place.
    NSRange firstParagraphRange = kNotFoundRange;
    bool isFirstResponder = false;

    [[nodiscard]] bool isValidForDate(NSDate date) const;
    /// Whether the note is as the state knows it.
    [[nodiscard]] bool isValidForVectorClock(const MRVectorClock &vectorClock) const;

    [[nodiscard]] quib::PropertyValue archived() const;
    /// Nothing for what is no archive of a state. Values that are missing or of another kind are as in a new state.
    [[nodiscard]] static std::optional<QBEditorState> unarchived(const quib::PropertyValue &archive);
};
