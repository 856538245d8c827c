#include "WindowFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <Window/EditorPane.h>
#include <Window/MessageBar.h>
#include <Window/SearchField.h>
#include <Window/SidebarModel.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class NoteList : public WindowFixture
{
};

TEST_F(NoteList, TypingInItSearches)
{
    launch({u"# Soup\nwith lentils"_s, u"# Bread\nsour"_s, u"# Soufflé"_s});
    window().noteList().setFocus();
    type(u"sou"_s);
    EXPECT_TRUE(window().searchField().hasFocus());
    EXPECT_EQ(window().searchField().text(), u"sou"_s);
    EXPECT_EQ(rows(), (QStringList{u"Soufflé"_s, u"Bread"_s, u"Soup"_s}));
    type(u"p"_s);
    EXPECT_EQ(rows(), QStringList{u"Soup"_s});
    EXPECT_EQ(window().editor().note()->title(), u"Soup"_s);
    press(Qt::Key_Down);
    EXPECT_TRUE(window().noteList().hasFocus());
    press(Qt::Key_Up);
    EXPECT_TRUE(window().searchField().hasFocus());
    press(Qt::Key_Escape);
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(NoteList, ALongTitleOfAnotherDirectionStaysInItsRow)
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    launch({u"# "_s + u"Donaudampfschiff"_s.repeated(8), u"# Other"_s});
    const QModelIndex index = window().noteList().model()->index(1, 0);
    const QRect row = window().noteList().visualRect(index);
    const QImage shown = window().noteList().viewport()->grab().toImage();
    const double scale = shown.devicePixelRatio();
    const auto pixel = [&](int x, int y) { return shown.pixel(int(x * scale), int(y * scale)); };
    // Nothing is drawn beyond the margin, where the age of the note ends.
    const QRgb ground = pixel(row.left() + 1, row.top() + 2);
    for (int y = row.top() + 2; y < row.top() + row.height() / 2; ++y) {
        for (int x = row.left(); x < row.left() + 8; ++x) {
            ASSERT_EQ(pixel(x, y), ground) << x << ' ' << y;
        }
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(NoteList, ASearchThatFindsNothingSaysSo)
{
    launch({u"# Soup"_s});
    window().setCurrentSearch(u"bread"_s);
    settle();
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_FALSE(window().editor().note());
}

TEST_F(NoteList, ArrowsChooseAndReturnEdits)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    selectRow(u"Three"_s);
    window().noteList().setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(window().editor().note()->title(), u"Two"_s);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), (QStringList{u"Two"_s, u"One"_s}));
    EXPECT_FALSE(window().editor().note()); // several: none is edited
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_TRUE(window().editor().textView().hasFocus());
    press(Qt::Key_Escape);
    EXPECT_TRUE(window().editor().textView().hasFocus()) << "who writes goes on writing";
    press(Qt::Key_2, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(window().noteList().hasFocus());
    press(Qt::Key_Left);
    EXPECT_TRUE(window().sidebar().hasFocus());
}

TEST_F(NoteList, DeleteMovesToTheTrashAndUndoTakesItBack)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    selectRow(u"Two"_s);
    window().noteList().setFocus();
    press(Qt::Key_Delete);
    EXPECT_EQ(rows(), (QStringList{u"Three"_s, u"One"_s}));
    EXPECT_EQ(selectedRows(), QStringList{u"One"_s}) << "what takes its place is selected next";
    EXPECT_EQ(window().editor().note()->title(), u"One"_s);
    EXPECT_TRUE(noteTitled(u"Two"_s)->isTrashed());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(rows(), (QStringList{u"Three"_s, u"Two"_s, u"One"_s}));
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(rows(), (QStringList{u"Three"_s, u"One"_s}));
}

TEST_F(NoteList, DeleteInATextDeletesNoNote)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    window().editor().focusEditor();
    window().editor().textView().setSelectedRange({3, 0});
    press(Qt::Key_Delete);
    EXPECT_EQ(notes().size(), 1);
    EXPECT_FALSE(notes().constFirst()->isTrashed());
}

TEST_F(NoteList, PermanentDeletionAsksInTheWindow)
{
    launch({u"# One"_s});
    noteTitled(u"One"_s)->trash();
    ASSERT_TRUE(moc().save());
    openList(u"QBNotesTrashSidebarItem"_s);
    selectRow(u"One"_s);
    window().noteList().setFocus();
    press(Qt::Key_Delete);
    EXPECT_TRUE(window().messages().isAsking());
    EXPECT_EQ(window().messages().text(), u"Are you sure you want to permanently delete the selected notes?"_s);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(notes().size(), 1);
    press(Qt::Key_Delete);
    window().messages().press(0);
    settle();
    EXPECT_TRUE(notes().isEmpty());
}

class Deletion : public NoteList
{
protected:
    /// Opens the trash with notes in it, and puts the keyboard there.
    void openTrashWith(const QStringList &titles)
    {
        QStringList texts;
        for (const QString &title : titles) {
            texts.append(QString(u"# "_s % title));
        }
        launch(texts);
        for (const QString &title : titles) {
            noteTitled(title)->trash();
        }
        ASSERT_TRUE(moc().save());
        openList(u"QBNotesTrashSidebarItem"_s);
        window().noteList().setFocus();
    }
    [[nodiscard]] QStringList buttons() const
    {
        QStringList texts;
        for (const auto *button : window().messages().findChildren<QPushButton *>()) {
            if (!button->isHidden()) {
                texts.append(button->text());
            }
        }
        return texts;
    }
    [[nodiscard]] MessageBar &bar() const { return window().messages(); }
};

TEST_F(Deletion, SaysWhatItDeletes)
{
    openTrashWith({u"Salt & Pepper"_s, u"Two"_s, u"Three"_s});
    selectRow(u"Salt & Pepper"_s);
    press(Qt::Key_Delete);
    EXPECT_EQ(buttons(), (QStringList{u"Delete “Salt && Pepper”"_s, u"Cancel"_s}));
    press(Qt::Key_Escape);
    window().noteList().selectRows({0, 1});
    settle();
    press(Qt::Key_Delete);
    EXPECT_EQ(buttons().constFirst(), u"Delete 2 Notes"_s);
}

TEST_F(Deletion, IsNotWhatReturnMeans)
{
    openTrashWith({u"One"_s, u"Two"_s});
    selectRow(u"One"_s);
    press(Qt::Key_Delete);
    EXPECT_TRUE(bar().isAsking());
    press(Qt::Key_Return);
    EXPECT_FALSE(bar().isAsking());
    EXPECT_EQ(notes().size(), 2);
    EXPECT_TRUE(window().noteList().hasFocus());
}

TEST_F(Deletion, IsOffWhenSomethingElseIsSelected)
{
    openTrashWith({u"One"_s, u"Two"_s});
    selectRow(u"One"_s);
    trigger(u"trash"_s);
    ASSERT_TRUE(bar().isAsking());
    selectRow(u"Two"_s);
    EXPECT_FALSE(bar().isAsking());
    window().noteList().setFocus();
    press(Qt::Key_Delete);
    EXPECT_EQ(notes().size(), 2);
    EXPECT_EQ(buttons().constFirst(), u"Delete “Two”"_s);
    bar().press(0);
    settle();
    EXPECT_EQ(rows(), QStringList{u"One"_s});
}

TEST_F(Deletion, IsOffWhenAnotherListIsOpened)
{
    openTrashWith({u"One"_s, u"Two"_s});
    selectRow(u"One"_s);
    press(Qt::Key_Delete);
    ASSERT_TRUE(bar().isAsking());
    window().sidebar().setFocus();
    openList(u"QBNotesSidebarItem"_s);
    EXPECT_FALSE(bar().isAsking());
    EXPECT_TRUE(window().sidebar().hasFocus()) << "the keyboard stays where it went";
    EXPECT_EQ(notes().size(), 2);
}

TEST_F(Deletion, OfAllInTheTrashIsAQuestionOfItsOwn)
{
    openTrashWith({u"One"_s, u"Two"_s, u"Three"_s});
    QBNotesPreferenceManager::sharedPreferenceManager()->savePreferenceValue(true,
                                                                             u"PermanentlyDeleteNoteSuppressionKey"_s);
    selectRow(u"One"_s);
    window().notes()->emptyTrash();
    settle();
    ASSERT_TRUE(bar().isAsking()) << "not to be asked about single notes says nothing of all";
    EXPECT_EQ(bar().text(), u"Are you sure you want to permanently delete all notes in the trash?"_s);
    EXPECT_EQ(buttons(), (QStringList{u"Delete 3 Notes"_s, u"Cancel"_s}));
    EXPECT_TRUE(bar().findChild<QCheckBox *>()->isHidden());
    bar().press(0);
    settle();
    EXPECT_TRUE(notes().isEmpty());
    window().notes()->emptyTrash();
    EXPECT_FALSE(bar().isAsking()) << "there is nothing to ask about";
}

TEST_F(NoteList, PinsSeveralAtOnceAndUndoesThatAsOne)
{
    launch({u"# One"_s, u"# Two"_s, u"# Three"_s});
    window().noteList().selectRows({1, 2});
    settle();
    window().noteList().setFocus();
    trigger(u"pin"_s);
    EXPECT_EQ(rows(), (QStringList{u"Two"_s, u"One"_s, u"Three"_s}));
    EXPECT_EQ(selectedRows(), (QStringList{u"Two"_s, u"One"_s}));
    EXPECT_EQ(window().action(u"undo"_s)->text(), u"Undo Pin notes"_s);
    trigger(u"undo"_s);
    EXPECT_EQ(rows(), (QStringList{u"Three"_s, u"Two"_s, u"One"_s}));
}

TEST_F(NoteList, NotesDroppedOnATagGetIt)
{
    launch({u"# One #garden"_s, u"# Two"_s, u"# Three"_s});
    window().noteList().selectRows({0, 1});
    settle();
    const std::unique_ptr<QMimeData> data(
        window().noteList().noteListModel().mimeData(window().noteList().selectionModel()->selectedIndexes()));
    SidebarModel &sidebar = window().sidebar().sidebarModel();
    const QModelIndex garden = sidebar.indexOfIdentifier(u"garden"_s);
    ASSERT_TRUE(sidebar.canDropMimeData(data.get(), Qt::CopyAction, -1, -1, garden));
    ASSERT_TRUE(sidebar.dropMimeData(data.get(), Qt::CopyAction, -1, -1, garden));
    settle();
    EXPECT_EQ(noteTitled(u"Two"_s)->tagsStrings(), QStringList{u"garden"_s});
    EXPECT_EQ(noteTitled(u"Three"_s)->tagsStrings(), QStringList{u"garden"_s});
    window().noteList().setFocus();
    trigger(u"undo"_s);
    EXPECT_TRUE(noteTitled(u"Two"_s)->tagsStrings().isEmpty());
    const QModelIndex untagged = sidebar.indexOfIdentifier(u"QBUntaggedSidebarItem"_s);
    EXPECT_FALSE(sidebar.canDropMimeData(data.get(), Qt::CopyAction, -1, -1, untagged));
}

} // namespace

} // namespace quib::tests
