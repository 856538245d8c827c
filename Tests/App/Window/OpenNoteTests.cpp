#include "WindowFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Support/QtPrinters.h>
#include <Window/EditorPane.h>
#include <Window/MessageBar.h>
#include <Window/SearchField.h>

#include <QAction>
#include <QApplication>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// The note that is written in stays the one that is written in, whatever becomes of its place in the list.
class OpenNote : public WindowFixture
{
protected:
    /// Puts the keyboard at the end of a note's text.
    void write(const QString &title) const
    {
        selectRow(title);
        window().editor().focusEditor();
        window().editor().moveToEnd();
    }
    /// What a pause in typing does.
    void pause() const
    {
        window().saveNote(/*forceSave=*/false);
        settle();
    }
    [[nodiscard]] QString openTitle() const
    {
        const Ref<QBNote> &note = window().editor().note();
        return note ? note->title() : QString();
    }
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const auto &note : notes()) {
            texts.append(note->text());
        }
        texts.sort();
        return texts;
    }
};

TEST_F(OpenNote, StaysOpenWhenWhatIsTypedTakesItOutOfTheList)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    openList(u"QBUntaggedSidebarItem"_s);
    write(u"Two"_s);
    type(u" #new more "_s);
    pause();
    ASSERT_EQ(rows(), (QStringList{u"Three"_s, u"One"_s}));
    EXPECT_TRUE(selectedRows().isEmpty());
    type(u"and on"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s, u"# Two #new more and on"_s}));
    EXPECT_TRUE(window().editor().textView().hasFocus());
    EXPECT_EQ(window().windowTitle(), u"Two #new more and on"_s);
}

TEST_F(OpenNote, StaysOpenWhenTheKeyboardGoesToTheListItLeft)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    openList(u"QBUntaggedSidebarItem"_s);
    write(u"Two"_s);
    type(u" #new "_s);
    window().noteList().setFocus(); // which saves it
    ASSERT_EQ(rows(), (QStringList{u"Three"_s, u"One"_s}));
    EXPECT_TRUE(window().noteList().hasFocus());
    EXPECT_TRUE(selectedRows().isEmpty());
    EXPECT_EQ(openTitle(), u"Two #new"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(selectedRows().size(), 1);
    EXPECT_NE(openTitle(), u"Two #new"_s);
}

TEST_F(OpenNote, HasItsRowAgainWhenItComesBack)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    openList(u"QBUntaggedSidebarItem"_s);
    write(u"Two"_s);
    type(u" #new "_s);
    pause();
    ASSERT_EQ(rows().size(), 2);
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_Backspace);
    }
    pause();
    EXPECT_EQ(rows(), (QStringList{u"Two"_s, u"Three"_s, u"One"_s}));
    EXPECT_EQ(selectedRows(), QStringList{u"Two"_s});
    EXPECT_EQ(openTitle(), u"Two"_s);
}

TEST_F(OpenNote, StaysOpenWhenItsSearchFindsItNoMore)
{
    launch({u"# Bread\nsour"_s, u"# Cake\nwith sugar"_s});
    noteTitled(u"Bread"_s)->trash();
    window().focusSearchField();
    type(u"sugar\n"_s);
    write(u"Cake"_s);
    press(Qt::Key_A, Qt::ControlModifier);
    type(u"rewritten"_s);
    pause();
    ASSERT_TRUE(rows().isEmpty());
    EXPECT_EQ(openTitle(), u"rewritten"_s);
    type(u" twice"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# Bread\nsour"_s, u"rewritten twice"_s}));
    // The end of the search gives the note its row again.
    window().searchField().clear();
    settle();
    EXPECT_EQ(selectedRows(), QStringList{u"rewritten twice"_s});
}

TEST_F(OpenNote, StaysOpenWhenItsListIsGone)
{
    launch({u"# One"_s, u"# Two #tag"_s, u"# Three"_s});
    openList(u"tag"_s);
    write(u"Two #tag"_s);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    pause();
    EXPECT_FALSE(entries().contains(u"tag"_s));
    EXPECT_EQ(window().editor().note()->text(), u"# Two #"_s);
    type(u"x"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s, u"# Two #x"_s}));
}

TEST_F(OpenNote, GivesWayToTheListThatIsChosen)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    openList(u"QBUntaggedSidebarItem"_s);
    write(u"Two"_s);
    type(u" #new "_s);
    pause();
    openList(u"QBNotesTrashSidebarItem"_s);
    EXPECT_FALSE(window().editor().note());
}

TEST_F(OpenNote, IsWhatCommandsAreAboutWithoutARow)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    openList(u"QBUntaggedSidebarItem"_s);
    write(u"Two"_s);
    type(u" #new "_s);
    pause();
    trigger(u"pin"_s);
    EXPECT_TRUE(noteTitled(u"Two #new"_s)->isPinned());
    trigger(u"trash"_s);
    EXPECT_TRUE(noteTitled(u"Two #new"_s)->isTrashed());
    EXPECT_FALSE(noteTitled(u"One"_s)->isTrashed());
    EXPECT_NE(openTitle(), u"Two #new"_s);
    EXPECT_TRUE(window().noteList().hasFocus());
}

TEST_F(OpenNote, IsReadOnlyWhenItWasTrashedElsewhere)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    write(u"Two"_s);
    noteTitled(u"Two"_s)->trash();
    ASSERT_TRUE(moc().save());
    settle();
    EXPECT_EQ(openTitle(), u"Two"_s);
    type(u"lost"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s, u"# Two"_s}));
    ASSERT_EQ(window().messages().text(), u"The note was put into the trash elsewhere."_s);
    window().messages().press(0);
    settle();
    EXPECT_EQ(selectedRows(), QStringList{u"Two"_s});
    window().editor().focusEditor();
    window().editor().moveToEnd();
    type(u" and on"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s, u"# Two and on"_s}));
}

TEST_F(OpenNote, GivesWayToNothingWhenItWasDeletedElsewhere)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    selectRow(u"One"_s);
    trigger(u"pin"_s);
    write(u"Two"_s);
    noteTitled(u"Two"_s)->permanentlyDelete();
    ASSERT_TRUE(moc().save());
    settle();
    EXPECT_FALSE(window().editor().note());
    EXPECT_TRUE(selectedRows().isEmpty());
    EXPECT_EQ(window().messages().text(), u"The note was deleted elsewhere."_s);
    type(u"lost"_s);
    press(Qt::Key_Delete);
    press(Qt::Key_Z, Qt::ControlModifier);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s}));
    EXPECT_EQ(window().searchField().text(), QString());
    EXPECT_TRUE(noteTitled(u"One"_s)->isPinned()) << "what was done to notes is not undone from beside a text";
}

TEST_F(OpenNote, IsWrittenOnInANewNoteWhenItWasDeletedElsewhere)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    write(u"Two"_s);
    type(u" typed"_s);
    noteTitled(u"Two"_s)->permanentlyDelete();
    ASSERT_TRUE(moc().save());
    settle();
    type(u" on"_s);
    pause();
    EXPECT_EQ(texts(), (QStringList{u"# One"_s, u"# Three"_s, u"# Two typed on"_s}));
    EXPECT_EQ(selectedRows(), QStringList{u"Two typed on"_s});
    EXPECT_EQ(window().messages().text(),
              u"The note was deleted elsewhere. What was not saved yet is in a new note."_s);
}

TEST_F(OpenNote, GivesWayToItsNeighbourWhereTheListHasTheKeyboard)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    selectRow(u"Two"_s);
    window().noteList().setFocus();
    noteTitled(u"Two"_s)->trash();
    ASSERT_TRUE(moc().save());
    settle();
    EXPECT_EQ(selectedRows(), QStringList{u"One"_s});
    EXPECT_EQ(openTitle(), u"One"_s);
}

TEST_F(OpenNote, IsNotFollowedByTheKeyboardIntoAnotherOneWhenItIsPutAway)
{
    for (const auto &command : {u"trash"_s, u"archive"_s}) {
        SCOPED_TRACE(command.toStdString());
        launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
        write(u"Two"_s);
        trigger(command);
        EXPECT_EQ(openTitle(), u"One"_s);
        EXPECT_TRUE(window().noteList().hasFocus());
        trigger(u"undo"_s);
        EXPECT_TRUE(rows().contains(u"Two"_s));
        for (const auto &note : notes()) {
            note->permanentlyDelete();
        }
        ASSERT_TRUE(moc().save());
        quit();
    }
}

} // namespace

} // namespace quib::tests
