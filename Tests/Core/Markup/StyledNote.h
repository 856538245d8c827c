#pragma once

#include <Markup/QBNoteTextKitStack.h>
#include <Markup/StyledEdit.h>
#include <Markup/StyledTextDescription.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <random>

namespace quib::tests {

/// A note's text in the engine, as an editor has it, in the default theme.
class StyledNote
{
public:
    explicit StyledNote(int syntax, const QString &text = {})
    {
        m_stack.themeManager()->loadDefaultTheme();
        m_stack.stylerManager()->setSyntax(syntax);
        m_stack.noteTextStorage().loadString(text);
    }
    [[nodiscard]] QBNoteTextKitStack &stack() { return m_stack; }
    [[nodiscard]] QBNotesTextStorage &storage() { return m_stack.noteTextStorage(); }
    [[nodiscard]] QString buffer() { return storage().string().toString(); }
    [[nodiscard]] QString text() { return storage().stringWithExpandedTextAttachments(); }
    StyledEdit replace(NSRange range, const QString &string)
    {
        return StyledEdit::replaceCharactersInRange(storage(), range, string, {range.location + string.size(), 0});
    }
    /// What the text looks like: buffer, attachments and runs in words. Left out is what a restyle sets otherwise than
    /// a load: the identifiers of code blocks, which are made up for each; the place in a tag's identity, which counts
    /// from the start of what was styled; kerns, which inline code also gives to the unit before it: a line end that a
    /// restyle does not reach, or a spacer that it makes anew; and where the first line of a list's item begins, which
    /// the first item that was measured decides.
    [[nodiscard]] QString looks();

private:
    QBNoteTextKitStack m_stack;
};

/// Texts full of markup, made of pieces that open, close, nest and break constructs.
[[nodiscard]] QString randomMarkup(std::mt19937 &generator, int pieces);
[[nodiscard]] QString randomMarkupPiece(std::mt19937 &generator);

} // namespace quib::tests
