// What is folded is never taken unseen, and found like any other text.

#include "EditorPaneFixture.h"

#include <Editor/FindBar.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Text/NSAttributeName.h>

#include <QAction>
#include <QLineEdit>

#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorFolds : public EditorPaneFixture
{
protected:
    Ref<QBNote> showFolded(const QString &text)
    {
        const auto note = show(text);
        pane->action(u"fold-completed"_s)->trigger();
        return note;
    }
    /// The places of the folds in the shown text.
    [[nodiscard]] std::vector<qint64> folds()
    {
        std::vector<qint64> places;
        const NSAttributedString &text = view().textStorage().attributedString();
        for (qint64 place = 0; place < text.length(); ++place) {
            if (text.attribute(NSAttachmentAttributeName, place).as<QBFoldTextAttachment>() != nullptr) {
                places.push_back(place);
            }
        }
        return places;
    }
    void findNext() { pane->action(u"find-next"_s)->trigger(); }
    void findPrevious() { pane->action(u"find-previous"_s)->trigger(); }
};

TEST_F(EditorFolds, AKeyBesideAFoldOpensItFirst)
{
    const QString text = u"- open\n+ done\n+ too\n- b"_s;
    struct Case
    {
        const char *name;
        bool isBehind;
        int key;
        Qt::KeyboardModifiers modifiers;
        QString opened, taken;
    };
    const Case cases[] = {
        {"Backspace", true, Qt::Key_Backspace, {}, u"- open\n+ done\n+ too|\n- b"_s, u"- open\n+ done\n+ to|\n- b"_s},
        {"a word backwards", true, Qt::Key_Backspace, Qt::ControlModifier, u"- open\n+ done\n+ too|\n- b"_s,
         u"- open\n+ done\n+ |\n- b"_s},
        {"Delete", false, Qt::Key_Delete, {}, u"- open\n|+ done\n+ too\n- b"_s, u"- open\n|done\n+ too\n- b"_s},
        {"a word", false, Qt::Key_Delete, Qt::ControlModifier, u"- open\n|+ done\n+ too\n- b"_s,
         u"- open\n|\n+ too\n- b"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        showFolded(text);
        ASSERT_EQ(folds().size(), 1U);
        view().setSelectedRange({folds().front() + (testCase.isBehind ? 1 : 0), 0});
        press(testCase.key, testCase.modifiers);
        EXPECT_EQ(marked(), testCase.opened);
        EXPECT_TRUE(folds().empty());
        press(testCase.key, testCase.modifiers);
        EXPECT_EQ(marked(), testCase.taken);
        view().undo();
        view().undo();
        EXPECT_EQ(folds().size(), 1U) << "undone, it is folded again";
        EXPECT_EQ(shown(), text);
    }
}

TEST_F(EditorFolds, OneThatIsSelectedGoesAtOnceAndComesBack)
{
    const QString text = u"- open\n+ done\n- b"_s;
    showFolded(text);
    view().setSelectedRange({folds().front(), 1});
    press(Qt::Key_Backspace);
    EXPECT_EQ(shown(), u"- open\n\n- b"_s);
    view().undo();
    EXPECT_EQ(shown(), text);
    EXPECT_EQ(folds().size(), 1U);
}

TEST_F(EditorFolds, TextThatIsDraggedPastThemLeavesThemFolded)
{
    const QString text = u"above\n+ done\n* item\n+ too\nword below"_s;
    struct Case
    {
        const char *name;
        QString moved;
        QString before; ///< the text that it is dropped before
        QString expected;
        qsizetype foldsLeft;
    };
    const Case cases[] = {
        {"up", u"word "_s, u"above"_s, u"|word above\n+ done\n* item\n+ too\nbelow"_s, 2},
        {"down", u"above"_s, u"below"_s, u"\n+ done\n* item\n+ too\nword |abovebelow"_s, 2},
        {"past one", u"item"_s, u"above"_s, u"|itemabove\n+ done\n* \n+ too\nword below"_s, 2},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        showFolded(text);
        ASSERT_EQ(folds().size(), 2U);
        const auto placeOf = [this](const QString &piece) { return buffer().indexOf(piece); };
        ASSERT_TRUE(view().moveText({placeOf(testCase.moved), testCase.moved.size()}, placeOf(testCase.before)));
        QString expected = testCase.expected;
        EXPECT_EQ(shown(), expected.remove(u'|'));
        EXPECT_EQ(qsizetype(folds().size()), testCase.foldsLeft);
        view().undo();
        EXPECT_EQ(shown(), text);
        EXPECT_EQ(folds().size(), 2U);
        view().redo();
        EXPECT_EQ(shown(), expected);
        EXPECT_EQ(qsizetype(folds().size()), testCase.foldsLeft);
    }
}

TEST_F(EditorFolds, AreDraggedFolded)
{
    showFolded(u"above\n+ done\nbelow"_s);
    const qint64 fold = folds().front();
    ASSERT_TRUE(view().moveText({fold, 2}, 0));
    EXPECT_EQ(shown(), u"+ done\nabove\nbelow"_s);
    EXPECT_EQ(folds(), std::vector<qint64>{0});
    view().undo();
    EXPECT_EQ(shown(), u"above\n+ done\nbelow"_s);
    EXPECT_EQ(folds(), std::vector<qint64>{fold});
}

TEST_F(EditorFolds, AreMarkedForWhatTheListIsSearchedFor)
{
    showFolded(u"- milk\n+ old milk, new milk\n- x\n+ bread"_s);
    pane->setSearchString(u"milk"_s);
    const auto places = folds();
    ASSERT_EQ(places.size(), 2U);
    const auto marks = view().searchHighlights();
    ASSERT_EQ(marks.size(), 3);
    EXPECT_EQ(marks[1], (NSRange{places[0], 1}));
    EXPECT_EQ(marks[2], (NSRange{places[0], 1}));
    // Who opens the fold sees what it was marked for.
    view().openAttachment(places[0]);
    const auto opened = view().searchHighlights();
    ASSERT_EQ(opened.size(), 3);
    EXPECT_EQ(buffer().sliced(opened[2].location, opened[2].length), u"milk"_s);
    pane->setSearchString({});
    EXPECT_TRUE(view().searchHighlights().isEmpty());
}

TEST_F(EditorFolds, AreOpenedByStepsThroughWhatTheListIsSearchedFor)
{
    showFolded(u"- milk\n+ old milk, new milk\n- x\n+ bread"_s);
    pane->setSearchString(u"milk"_s);
    view().setSelectedRange({0, 0});
    findNext();
    EXPECT_EQ(marked(), u"- [milk]\n+ old milk, new milk\n- x\n+ bread"_s);
    EXPECT_EQ(folds().size(), 2U);
    EXPECT_FALSE(pane->findBar().isVisible());
    findNext();
    EXPECT_EQ(marked(), u"- milk\n+ old [milk], new milk\n- x\n+ bread"_s);
    EXPECT_EQ(folds().size(), 1U) << "others stay folded";
    findNext();
    EXPECT_EQ(marked(), u"- milk\n+ old milk, new [milk]\n- x\n+ bread"_s);
    findNext();
    EXPECT_EQ(marked(), u"- [milk]\n+ old milk, new milk\n- x\n+ bread"_s);
    findPrevious();
    EXPECT_EQ(marked(), u"- milk\n+ old milk, new [milk]\n- x\n+ bread"_s);
}

TEST_F(EditorFolds, AreOpenedAtTheirLastPlaceByStepsBackwards)
{
    showFolded(u"x\n+ old milk, new milk\n- x"_s);
    pane->setSearchString(u"milk"_s);
    view().setSelectedRange({view().textStorage().length(), 0});
    findPrevious();
    EXPECT_EQ(marked(), u"x\n+ old milk, new [milk]\n- x"_s);
}

TEST_F(EditorFolds, OfANoteThatCannotBeChangedStandForWhatIsFound)
{
    preferences->setFoldCompletedTodo(true);
    const auto note = makeNote(u"a milk\n+ old milk, milk\nb"_s);
    note->trash();
    save();
    pane->setNote(note);
    pane->setSearchString(u"milk"_s);
    const auto places = folds();
    ASSERT_EQ(places.size(), 1U);
    view().setSelectedRange({0, 0});
    findNext();
    findNext();
    EXPECT_EQ(view().selectedRange(), (NSRange{places[0], 1}));
    findNext();
    EXPECT_EQ(view().selectedRange(), (NSRange{2, 4}));
}

TEST_F(EditorFolds, NothingIsSteppedThroughWhereTheFindBarIsOpenOrNothingIsFound)
{
    show(u"milk and bread"_s);
    pane->setSearchString(u"milk"_s);
    view().setSelectedRange({0, 0});
    pane->findBar().open(/*withReplacing=*/false);
    pane->findBar().findField().setText(u"bread"_s);
    findNext();
    EXPECT_EQ(marked(), u"milk and [bread]"_s);
    pane->findBar().close();
    pane->setSearchString(u"wine"_s);
    findNext();
    EXPECT_TRUE(pane->findBar().isVisible());
}

} // namespace quib::tests
