#pragma once

#include <Foundation/NSRange.h>

#include <QStringView>

class QBNotesTextStorage;

namespace quib {

/// What an edit of a styled text led to. A value.
struct StyledEdit
{
    /// The stretch that was styled again, in the text as the edit left it.
    NSRange rangeToStyle = kNotFoundRange;
    /// Whether attachments came or went, so that the stretch was replaced.
    bool isReplaced = false;
    /// Where the selection belongs now; not-found where it stays.
    NSRange proposedSelection = kNotFoundRange;

    /// Styles again what the last edit of a text calls for, outside of a view.
    [[nodiscard]] static StyledEdit performStylingInTextStorage(QBNotesTextStorage &storage, NSRange selection);
    /// Replaces a range, as typing or pasting does, and styles again what that calls for.
    [[nodiscard]] static StyledEdit replaceCharactersInRange(QBNotesTextStorage &storage, NSRange range,
                                                             QStringView withString, NSRange selection);
};

} // namespace quib
