#pragma once

class QBNote;
class QBNotesTextStorage;

namespace quib {

/// Gives each file marker of a note's text a file of its own, before the text is saved: a marker that stands there
/// twice, or that came from another note, gets a copy of its file, what is folded too. The text keeps its length, the
/// attachment stands for another marker. Markers without a row stay as they are. Queue: that of the note's context.
void fixTextAttachmentsForNote(QBNote &note, QBNotesTextStorage &inTextStorage);

} // namespace quib
