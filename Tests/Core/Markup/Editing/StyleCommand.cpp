#include "StyleCommand.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

QBNoteStyleEditor::Result styleCommandResult(const QString &command, const QBNoteStyleEditor &editor,
                                             const NSAttributedString &text, NSRange range)
{
    using Command = QBNoteStyleEditor::Result (QBNoteStyleEditor::*)(const NSAttributedString &, NSRange) const;
    static const QHash<QString, Command> commands{
        {u"bold"_s, &QBNoteStyleEditor::applyBoldStyleInAttributedString},
        {u"italic"_s, &QBNoteStyleEditor::applyItalicStyleInAttributedString},
        {u"underline"_s, &QBNoteStyleEditor::applyUnderlineStyleInAttributedString},
        {u"strike"_s, &QBNoteStyleEditor::applyStrikedStyleInAttributedString},
        {u"marker"_s, &QBNoteStyleEditor::applyMarkerStyleInAttributedString},
        {u"code"_s, &QBNoteStyleEditor::applyInlineCodeStyleInAttributedString},
        {u"bullet"_s, &QBNoteStyleEditor::applyUnorderedListInAttributedString},
        {u"box"_s, &QBNoteStyleEditor::applyCheckboxInAttributedString},
        {u"number"_s, &QBNoteStyleEditor::applyOrderedListInAttributedString},
        {u"quote"_s, &QBNoteStyleEditor::applyQuoteInAttributedString},
        {u"fence"_s, &QBNoteStyleEditor::applyMultilineCodeStyleInAttributedString},
        {u"rule"_s, &QBNoteStyleEditor::applyLineSeparatorInAttributedString},
        {u"renumber"_s, &QBNoteStyleEditor::ensureOrderedListOrderInAttributedString},
    };
    if (const Command found = commands.value(command)) {
        return (editor.*found)(text, range);
    }
    const int level = command == u"plain" ? -1 : command.mid(1).toInt();
    return editor.applyHeaderLevel(level, text, range);
}

const QStringList &styleCommands()
{
    static const QStringList commands =
        u"bold italic underline strike marker code bullet box number quote h1 h2 h3 h4 h5 h6 plain fence rule renumber"_s
            .split(u' ');
    return commands;
}

bool runStyleCommand(const QString &command, FakeTextView &view)
{
    QBNotesTextStorage &storage = view.textStorage();
    const auto result =
        styleCommandResult(command, view.stack().styleEditor(), storage.attributedString(), view.selectedRange());
    if (!result) {
        return false;
    }
    view.undoManager().beginUndoGrouping();
    view.replaceCharactersInrange(result->replacementRange, result->replamentAttributedString,
                                  result->proposedSelectionRange);
    NSRange proposed = kNotFoundRange;
    const NSRange range = storage.rangeToStyle();
    if (const auto styled = storage.styleTextInRange(range, view.selectedRange(), &proposed)) {
        view.replaceCharactersInrange(range, *styled, proposed);
    }
    view.undoManager().endUndoGrouping();
    return true;
}

QString styled(int syntax, const QString &command, const QString &marked)
{
    FakeTextView view(syntax, marked);
    const QString before = view.textStorage().stringWithExpandedTextAttachments();
    if (!runStyleCommand(command, view)) {
        return u"nothing"_s;
    }
    const QString after = view.marked();
    // One step back, whatever the styling did.
    view.undoManager().undo();
    EXPECT_EQ(view.textStorage().stringWithExpandedTextAttachments(), before) << command.toStdString();
    EXPECT_FALSE(view.undoManager().canUndo());
    return after;
}

} // namespace quib::tests
