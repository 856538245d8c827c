#include "EditorPaneFixture.h"

#include <Editor/CompletionPopup.h>

#include <QAction>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorCompletion : public EditorPaneFixture
{
protected:
    [[nodiscard]] CompletionPopup &popup() { return pane->completionPopup(); }
};

TEST_F(EditorCompletion, ATagIsCompletedByKeys)
{
    const auto other = makeNote(u"Other #garden #gallery"_s);
    const auto note = show(u"Mine "_s);
    type(u"#ga"_s);
    ASSERT_TRUE(popup().isOpen());
    EXPECT_EQ(popup().count(), 2);
    press(Qt::Key_Down);
    const QString chosen = popup().currentItem()->text();
    press(Qt::Key_Return);
    EXPECT_FALSE(popup().isOpen());
    EXPECT_TRUE(shown().contains(chosen)) << shown().toStdString();
    EXPECT_FALSE(shown().contains(u'\n'));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"Mine #ga"_s);
}

TEST_F(EditorCompletion, AClosedTagIsLeftAsItIs)
{
    const auto other = makeNote(u"Other #garden #gallery #At Work#"_s);
    show(u"x "_s);
    type(u"#multi word"_s);
    type(u"#"_s);
    EXPECT_FALSE(popup().isOpen());
    type(u" "_s);
    EXPECT_FALSE(popup().isOpen());
    press(Qt::Key_Backspace);
    EXPECT_FALSE(popup().isOpen());
    press(Qt::Key_Return);
    EXPECT_EQ(shown(), u"x #multi word#\n"_s);
}

TEST_F(EditorCompletion, ALinkToANoteIsCompleted)
{
    const auto other = makeNote(u"Garden plan\ntext"_s);
    show({});
    type(u"see [[gar"_s);
    ASSERT_TRUE(popup().isOpen());
    press(Qt::Key_Tab);
    EXPECT_EQ(shown().trimmed(), u"see [[Garden plan]]"_s);
}

TEST_F(EditorCompletion, TheListGoesWithWhatItIsFor)
{
    const auto other = makeNote(u"Other #garden"_s);
    show(u"word "_s);
    type(u"#ga"_s);
    ASSERT_TRUE(popup().isOpen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(popup().isOpen());
    type(u"r"_s);
    EXPECT_TRUE(popup().isOpen());
    press(Qt::Key_Home);
    processEvents();
    EXPECT_FALSE(popup().isOpen());
    preferences->setAutocompleteEnabled(false);
    press(Qt::Key_End);
    type(u"d"_s);
    EXPECT_FALSE(popup().isOpen());
}

TEST_F(EditorCompletion, SavingWaitsWhileTheListIsOpen)
{
    const auto other = makeNote(u"Other #garden"_s);
    const auto note = show(u"word "_s);
    type(u"#ga"_s);
    ASSERT_TRUE(popup().isOpen());
    clock.advance(5);
    EXPECT_EQ(stored(note), u"word "_s);
    press(Qt::Key_Escape);
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"word #ga"_s);
}

} // namespace quib::tests
