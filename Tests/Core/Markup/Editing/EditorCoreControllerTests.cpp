#include "EditedNote.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// A text with carets, a key or a command, and the text with carets that it leads to.
struct KeyCase
{
    const char16_t *before;
    const char16_t *after;
};

std::ostream &operator<<(std::ostream &stream, const KeyCase &testCase)
{
    return stream << QString::fromUtf16(testCase.before).toStdString();
}

void expectReturn(int syntax, const KeyCase &testCase, bool isHandled)
{
    EditedNote note(syntax, testCase.before);
    EXPECT_EQ(note.pressReturn(), isHandled) << testCase;
    EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(testCase.after).toStdString()) << testCase;
    note.undoManager().undo();
    EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(testCase.before).toStdString()) << "undone";
}

} // namespace

TEST(ReturnKeyTest, ContinuesAndEndsLinesOfLists)
{
    const KeyCase cases[] = {
        {u"* one|", u"* one\n* |"},
        {u"* one|two", u"* one\n* |two"},
        {u"• one|", u"• one\n* |"},
        {u"\t  * one|", u"\t  * one\n\t  * |"},
        {u"- open|", u"- open\n- |"},
        {u"+ done|", u"+ done\n- |"},
        {u"\t+ done|\nnext", u"\t+ done\n\t- |\nnext"},
        {u"> said|", u"> said\n> |"},
        {u"* #tag|", u"* #tag\n* |"},
        {u"* one [two]", u"* one \n* |"},
        {u"* a[b\nc]d", u"* a\n* |d"},
        // An empty one ends.
        {u"* |", u"|"},
        {u"one\n\t- |\ntwo", u"one\n|\ntwo"},
        {u"> |", u"|"},
    };
    for (const KeyCase &testCase : cases) {
        expectReturn(0, testCase, true);
    }
}

TEST(ReturnKeyTest, ContinuesAndEndsLinesOfListsInMarkdown)
{
    const KeyCase cases[] = {
        {u"* one|", u"* one\n* |"},
        {u"- one|", u"- one\n* |"},
        {u"- \\[x\\] done|", u"- \\[x\\] done\n- \\[ \\] |"},
        {u"\t- \\[ \\] open|", u"\t- \\[ \\] open\n\t- \\[ \\] |"},
        {u"> said|", u"> said\n> |"},
        {u"- \\[ \\] |", u"|"},
        {u"+ |", u"|"},
    };
    for (const KeyCase &testCase : cases) {
        expectReturn(1, testCase, true);
    }
}

TEST(ReturnKeyTest, IsAnOrdinaryKeyElsewhere)
{
    const KeyCase cases[] = {
        {u"one|", u"one\n|"},         {u"|* one", u"\n|* one"}, {u"\t|* one", u"\t\n|* one"},
        {u"# Title|", u"# Title\n|"}, {u"---|", u"---\n|"},     {u"```\n* one|\n```", u"```\n* one\n|\n```"},
        {u"*one|", u"*one\n|"},       {u"|", u"\n|"},
    };
    for (const KeyCase &testCase : cases) {
        expectReturn(0, testCase, false);
    }
}

TEST(ReturnKeyTest, WithShiftNeverContinues)
{
    EditedNote note(0, u"* one|");
    note.pressShiftReturn();
    EXPECT_EQ(note.marked(), u"* one\n|"_s);
}

TEST(ReturnKeyTest, LeavesASelectionPastTheTextAlone)
{
    EditedNote note(0, u"* one|");
    note.setSelectedRange({4, 90});
    EXPECT_FALSE(note.controller().matchRepeatableStyleOnNewLineInTextView(note));
    note.setSelectedRange(kNotFoundRange);
    EXPECT_FALSE(note.controller().matchRepeatableStyleOnNewLineInTextView(note));
    EXPECT_EQ(note.textStorage().stringWithExpandedTextAttachments(), u"* one"_s);
}

} // namespace quib::tests
