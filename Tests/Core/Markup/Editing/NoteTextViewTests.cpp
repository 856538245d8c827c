#include "FakeTextView.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(NoteTextViewTest, ReplacingIsUndoneAndDoneAgainWithTheSelection)
{
    FakeTextView view(0, u"one [two] three");
    view.replaceCharactersInrange({4, 3}, NSAttributedString(u"2"_s), {4, 1});
    EXPECT_EQ(view.marked(), u"one [2] three"_s);
    view.insertText(u"II"_s, view.selectedRange());
    EXPECT_EQ(view.marked(), u"one II| three"_s);
    view.undoManager().undo();
    EXPECT_EQ(view.marked(), u"one [2] three"_s);
    view.undoManager().undo();
    EXPECT_EQ(view.marked(), u"one [two] three"_s);
    view.undoManager().redo();
    view.undoManager().redo();
    EXPECT_EQ(view.textStorage().string(), u"one II three"_s);
}

TEST(NoteTextViewTest, ARangePastTheTextIsCutToIt)
{
    FakeTextView view(0, u"abc|");
    view.replaceCharactersInrange({2, 50}, NSAttributedString(u"!"_s), {90, 4});
    EXPECT_EQ(view.marked(), u"ab!|"_s);
    view.undoManager().undo();
    EXPECT_EQ(view.marked(), u"abc|"_s);
    view.setSelectedRange({1, 0});
    view.replaceCharactersInrange({0, 1}, NSAttributedString(u"x"_s));
    EXPECT_EQ(view.marked(), u"x|bc"_s) << "the selection is the view's";
}

TEST(MarkedTextTest, PrintsWhatItParses)
{
    for (const QString &marked : {u"|"_s, u"a|b"_s, u"[ab]"_s, u"a[b]c\\[d\\]\\|\\\\"_s}) {
        EXPECT_EQ(MarkedText::parsed(marked).printed(), marked);
    }
}

} // namespace quib::tests
