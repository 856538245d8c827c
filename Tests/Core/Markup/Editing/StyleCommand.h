#pragma once

#include "FakeTextView.h"

#include <Markup/QBNoteStyleEditor.h>

#include <QString>
#include <QStringList>

namespace quib::tests {

/// Runs a command of formatting by its short name: bold, italic, underline, strike, marker, code, bullet, box, number,
/// quote, h1 to h6, plain (no header), fence, rule, renumber.
[[nodiscard]] QBNoteStyleEditor::Result styleCommandResult(const QString &command, const QBNoteStyleEditor &editor,
                                                           const NSAttributedString &text, NSRange range);
[[nodiscard]] const QStringList &styleCommands();

/// What a view does with a command: replaces, selects and styles, all undone as one. False when there was nothing to
/// do.
bool runStyleCommand(const QString &command, FakeTextView &view);
/// The same for a text with a caret; gives the text with the caret, or "nothing".
[[nodiscard]] QString styled(int syntax, const QString &command, const QString &marked);

} // namespace quib::tests
