#pragma once

#include <Foundation/NSRange.h>

class NSMutableAttributedString;

/// Colours the code of blocks that name their language, at once or some time later. Called on the queue of the text.
class QBNoteCodeHighlighting
{
public:
    virtual ~QBNoteCodeHighlighting() = default;
    /// Asks for the blocks whose language's name stands in the range.
    virtual void highlightSyntaxInAttributedString(NSMutableAttributedString &attributedString, NSRange range) = 0;
};
