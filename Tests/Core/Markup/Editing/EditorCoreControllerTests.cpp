#include "EditedNote.h"

#include <Text/NSMutableAttributedString.h>

#include <QStringList>
#include <QUrl>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
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

template <typename Command> void expectCommand(int syntax, const KeyCase &testCase, const Command &command)
{
    EditedNote note(syntax, testCase.before);
    note.run([&] { command(note); });
    EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(testCase.after).toStdString()) << testCase;
    if (note.undoManager().canUndo()) {
        note.undoManager().undo();
    }
    EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(testCase.before).toStdString()) << "undone";
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
        // Numbers go on, and those behind follow.
        {u"1. one|", u"1. one\n2. |"},
        {u"9. nine|", u"9. nine\n10. |"},
        {u"\t5. five|", u"\t5. five\n\t6. |"},
        {u"1. one|\n2. two\n3. three", u"1. one\n2. |\n3. two\n4. three"},
        {u"1. o|ne\n2. two", u"1. o\n2. |ne\n3. two"},
        {u"1. one\n2. |\n3. three", u"1. one\n|\n3. three"},
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

TEST(TabKeyTest, MovesLinesOfListsByALevel)
{
    const struct
    {
        KeyCase texts;
        bool backwards;
    } cases[] = {
        {{u"* one|", u"\t* one|"}, false},
        {{u"* |one", u"\t* |one"}, false},
        {{u"- o[n]e", u"\t- o[n]e"}, false},
        {{u"1. one|", u"\t1. one|"}, false},
        {{u"* o[ne\n* t]wo\n* three", u"\t* o[ne\n\t* t]wo\n* three"}, false},
        {{u"plain [a\n* b]", u"\tplain [a\n\t* b]"}, false},
        {{u"\t* one|", u"* one|"}, true},
        {{u"\t\t+ one|", u"\t+ one|"}, true},
        {{u"    * one|", u"* one|"}, true},
        {{u"     * one|", u" * one|"}, true},
        {{u"   * one|", u"* one|"}, true},
        {{u"  * one|", u"* one|"}, true},
        {{u" * one|", u"* one|"}, true},
        {{u" \t* one|", u"\t* one|"}, true},
        {{u"\t* o[ne\n* t\n  - wo]", u"* o[ne\n* t\n- wo]"}, true},
        {{u"a\n|\t* one", u"a\n|* one"}, true},
        {{u"a\n[\t* one]", u"a\n[* one]"}, true},
    };
    for (const auto &[texts, backwards] : cases) {
        expectCommand(0, texts, [&texts = texts, backwards = backwards](EditedNote &note) {
            EXPECT_TRUE(note.controller().indentTabbableStyle(backwards, note)) << texts;
        });
    }
}

TEST(TabKeyTest, IsAnOrdinaryKeyElsewhere)
{
    for (const char16_t *text : {u"plain|", u"# Title|", u"> quote|", u"|", u"```\n* one|\n```"}) {
        EditedNote note(0, text);
        EXPECT_FALSE(note.pressTab(/*backwards=*/true)) << KeyCase{text, text};
        EXPECT_EQ(note.marked(), QString::fromUtf16(text));
    }
}

TEST(ShiftTest, TakesAnyLines)
{
    const auto right = [](EditedNote &note) { note.controller().shiftSelectionRight(true, note); };
    const auto left = [](EditedNote &note) { note.controller().shiftSelectionRight(false, note); };
    for (const KeyCase &testCase : std::initializer_list<KeyCase>{
             {u"|", u"\t|"},
             {u"a\n|", u"a\n\t|"},
             {u"a|b\nc", u"\ta|b\nc"},
             {u"[a\n\nb]\n", u"\t[a\n\t\n\tb]\n"},
             {u"[a #tag b]", u"\t[a #tag b]"},
         }) {
        expectCommand(0, testCase, right);
    }
    for (const KeyCase &testCase : std::initializer_list<KeyCase>{
             {u"|", u"|"},
             {u"plain|", u"plain|"},
             {u"\ta|b\nc", u"a|b\nc"},
             {u"\t[a\n\n\tb]\n", u"[a\n\nb]\n"},
             {u"[\t\n\t]", u"[\n]"},
             {u"a\n |  b", u"a\n|b"},
         }) {
        expectCommand(0, testCase, left);
    }
}

TEST(MoveParagraphTest, ExchangesLinesAndTheSelectionGoesAlong)
{
    const auto up = [](EditedNote &note) { note.controller().moveParagraphUp(true, note); };
    const auto down = [](EditedNote &note) { note.controller().moveParagraphUp(false, note); };
    for (const KeyCase &testCase : std::initializer_list<KeyCase>{
             {u"a\nb|c\n", u"b|c\na\n"},
             {u"a\nb|c", u"b|c\na"},
             {u"|a\nb", u"|a\nb"},
             {u"a\n[b\nc]\nd", u"[b\nc]\na\nd"},
             {u"a\n[b\n]c", u"[b]\na\nc"},
             {u"a\n|", u"|\na"},
             {u"# A\n* b| #c", u"* b| #c\n# A"},
             {u"|", u"|"},
         }) {
        expectCommand(0, testCase, up);
    }
    for (const KeyCase &testCase : std::initializer_list<KeyCase>{
             {u"a|\nb\n", u"b\na|\n"},
             {u"a|\nb", u"b\na|"},
             {u"a\nb|", u"a\nb|"},
             {u"a\nb|\n", u"a\n\nb|\n"},
             {u"[a\nb]\nc\nd", u"c\n[a\nb]\nd"},
             {u"- x|\n\n- y", u"\n- x|\n- y"},
             {u"a\n|", u"a\n|"},
         }) {
        expectCommand(0, testCase, down);
    }
    EditedNote note(0, u"a\nb");
    note.setSelectedRange(kNotFoundRange);
    note.controller().moveParagraphUp(true, note);
    EXPECT_EQ(note.text(), u"a\nb"_s);
}

TEST(OrderedListTest, NumbersFollowEveryEdit)
{
    const auto deleteBackwards = [](EditedNote &note) { note.pressBackspace(); };
    const auto up = [](EditedNote &note) { note.run([&] { note.controller().moveParagraphUp(true, note); }); };
    const auto type = [](EditedNote &note) { note.type(u"1"_s); };
    const auto tab = [](EditedNote &note) { note.pressTab(); };
    const struct
    {
        KeyCase texts;
        std::function<void(EditedNote &)> edit;
    } cases[] = {
        {{u"1. a\n[2. b\n]3. c\n4. d", u"1. a\n|2. c\n3. d"}, deleteBackwards},
        {{u"5. a\n[6. b\n]7. c", u"5. a\n|6. c"}, deleteBackwards},
        {{u"8. a\n9. b\n|. c", u"8. a\n9. b\n10|. c"}, type},
        {{u"1. a\n2. b|\n3. c", u"2. b|\n3. a\n4. c"}, up},
        {{u"1. a\n2. b|\n3. c", u"1. a\n\t1. b|\n2. c"}, tab},
    };
    for (const auto &[texts, edit] : cases) {
        EditedNote note(0, texts.before);
        edit(note);
        EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(texts.after).toStdString()) << texts;
        note.undoManager().undo();
        EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(texts.before).toStdString()) << "undone";
        note.undoManager().redo();
        EXPECT_EQ(note.text().toStdString(), MarkedText::parsed(texts.after).text.toStdString()) << "done again";
    }
}

TEST(MoveParagraphTest, KeepsWhatEndsEachLine)
{
    EditedNote note(0, u"a\r\nb|\u2029c");
    note.run([&] { note.controller().moveParagraphUp(true, note); });
    EXPECT_EQ(note.marked(), u"b|\r\na\u2029c"_s);
}

TEST(TagSelectionTest, LeavesTheMiddleOfATag)
{
    // Between a tag's last character and its spacer what is typed belongs to the tag.
    EditedNote note(0, u"a #tag b");
    const qint64 end = note.textStorage().string().indexOf(u'g') + 1;
    note.setSelectedRange({end, 0});
    note.controller().correctTagSelectionAfterInsertionInTextView(note);
    EXPECT_EQ(note.selectedRange(), (NSRange{end + 1, 0}));
    note.setSelectedRange({end - 1, 0});
    note.controller().correctTagSelectionAfterInsertionInTextView(note);
    EXPECT_EQ(note.selectedRange(), (NSRange{end - 1, 0})) << "in the middle one edits the tag";
    note.setSelectedRange({0, end - 1});
    note.controller().correctTagSelectionAfterInsertionInTextView(note);
    EXPECT_EQ(note.selectedRange(), (NSRange{0, end + 1})) << "a selection takes the whole tag";
}

TEST(TagSelectionTest, LeavesOtherPlacesAlone)
{
    EditedNote note(0, u"a #tag b");
    for (const NSRange range : {NSRange{0, 0}, NSRange{1, 0}, NSRange{0, 2}, NSRange{8, 0}, NSRange{9, 0}}) {
        note.setSelectedRange(range);
        note.controller().correctTagSelectionAfterInsertionInTextView(note);
        EXPECT_EQ(note.selectedRange(), range) << range.location;
    }
}

TEST(ExtraRangeTest, TakesWhatBelongsToTheAttachments)
{
    const struct
    {
        const char16_t *buffer;
        const char16_t *widened;
    } cases[] = {
        {u"a [b] c", u"a [b] c"},
        {u"x\n[* o]ne\ny", u"x\n[* one\n]y"},
        {u"x\n# T\n- [y]", u"x\n# T\n- [y]"},
        {u"[x\n* o]ne\n- two", u"[x\n* one\n]- two"},
    };
    for (const auto &[buffer, widened] : cases) {
        EditedNote note(0, buffer);
        note.setSelectedRange(note.controller().extraAttachmentsRangeForRange(note.selectedRange()));
        EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(widened).toStdString());
    }
}

TEST(ExtraRangeTest, OfLinesThatMarkersBeginOnlyTheMarkersGo)
{
    const struct
    {
        const char16_t *buffer;
        const char16_t *taken;
    } cases[] = {
        {u"a [b] c", u"a [b] c"},   {u"x\n[* o]ne\ny", u"x\n[* o]ne\ny"}, {u"x[\n*] one\ny", u"x[\n* ]one\ny"},
        {u"[#] T\ny", u"[# ]T\ny"}, {u"x\n# T[\n-] y", u"x\n# T[\n- ]y"},
    };
    for (const auto &[buffer, taken] : cases) {
        EditedNote note(0, buffer);
        note.setSelectedRange(note.controller().rangeTakenWithRange(note.selectedRange()));
        EXPECT_EQ(note.marked().toStdString(), QString::fromUtf16(taken).toStdString());
    }
}

TEST(LinksTest, InternalOnesAreDisabledAndOthersStay)
{
    EditedNote note(0, u"#tag https://quib.example.com");
    const auto links = [&note] {
        QStringList found;
        note.textStorage().attributedString().enumerateAttribute(
            NSLinkAttributeName, note.textStorage().fullRange(), NSAttributedStringEnumerationOptions::Forward,
            [&found](const AttributeValue &value, NSRange, bool *) {
                if (value) {
                    found.append(value.urlValue().scheme());
                }
            });
        return found;
    };
    ASSERT_EQ(links(), (QStringList{u"quib"_s, u"https"_s}));
    note.controller().disableInternalURLsInRange(note.textStorage().fullRange());
    EXPECT_EQ(links(), QStringList{u"https"_s});
}

} // namespace quib::tests
