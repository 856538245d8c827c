#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

/// What a command of formatting asks for: one replacement, which is to be undone as one, and the selection after it. A
/// value.
struct QBNoteStyleEditorResult
{
    /// Spelled so. What stays of the old text keeps its attributes and attachments, new markers have none: they are
    /// styled after the edit.
    NSAttributedString replamentAttributedString;
    NSRange replacementRange;
    /// In the text as the replacement leaves it.
    NSRange proposedSelectionRange;
};
