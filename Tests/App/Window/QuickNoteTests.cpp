#include "WindowFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Support/QtPrinters.h>
#include <Window/ChoicePanel.h>
#include <Window/DetachedWindow.h>
#include <Window/EditorPane.h>
#include <Window/QuickNoteWindow.h>
#include <Window/SearchField.h>

#include <QApplication>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class QuickNote : public WindowFixture
{
protected:
    void open() const
    {
        ASSERT_TRUE(window().showQuickNote());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window().quickNote()));
        settle();
    }
    [[nodiscard]] DetachedWindow *detached() const
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<DetachedWindow *>(widget); found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
};

TEST_F(QuickNote, KeepsWhatIsWrittenAndClosesByEscape)
{
    launch({u"# One"_s});
    open();
    type(u"Milk\nand bread #shopping"_s);
    press(Qt::Key_Escape);
    EXPECT_FALSE(window().quickNote()->isVisible());
    ASSERT_EQ(notes().size(), 2);
    EXPECT_TRUE(noteTitled(u"Milk"_s));
    EXPECT_TRUE(entries().contains(u"shopping"_s));
    open();
    EXPECT_TRUE(window().quickNote()->editor().note()->text().isEmpty()) << "the next one begins anew";
    type(u"Call Nora"_s);
    quit();
    launch();
    EXPECT_EQ(notes().size(), 3) << "the end keeps what was open";
}

TEST_F(QuickNote, LeavesNothingBehindWhereNothingWasWritten)
{
    launch({u"# One"_s});
    for (const QString &written : {QString(), u"  \n "_s}) {
        open();
        type(written);
        press(Qt::Key_Escape);
        EXPECT_EQ(rows(), QStringList{u"One"_s});
        EXPECT_EQ(notes().size(), 1);
    }
}

TEST_F(QuickNote, GoesOnInTheMainWindow)
{
    launch({u"# One"_s});
    open();
    type(u"A long story"_s);
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_FALSE(window().quickNote()->isVisible());
    EXPECT_EQ(window().editor().note()->text(), u"A long story"_s);
}

TEST_F(QuickNote, TakesNoRoomForBars)
{
    launch({u"# One"_s});
    open();
    const auto &view = window().quickNote()->editor().textView();
    EXPECT_GE(view.height(), window().quickNote()->height() - 60);
}

TEST_F(QuickNote, WindowsOfTheirOwnComeBackAtTheNextStart)
{
    launch({u"# One"_s, u"# Two"_s});
    selectRow(u"Two"_s);
    trigger(u"open-in-window"_s);
    ASSERT_NE(detached(), nullptr);
    detached()->setGeometry(100, 120, 700, 444);
    detached()->setFloating(true);
    settle();
    quit();
    launch();
    ASSERT_NE(detached(), nullptr);
    EXPECT_EQ(detached()->editor().note()->title(), u"Two"_s);
    EXPECT_EQ(detached()->size(), QSize(700, 444));
    EXPECT_TRUE(detached()->isFloating());
    detached()->close();
    settle();
    quit();
    launch();
    EXPECT_EQ(detached(), nullptr);
}

TEST_F(QuickNote, QuittingKeepsTheWindowsThatComeBack)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    trigger(u"open-in-window"_s);
    ASSERT_NE(detached(), nullptr);
    QTimer::singleShot(0, &window(), [this] { trigger(u"quit"_s); });
    QCoreApplication::exec();
    quit();
    launch();
    EXPECT_NE(detached(), nullptr);
}

TEST_F(QuickNote, AWindowOfItsOwnHasCommandsOfTheApplication)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    trigger(u"open-in-window"_s);
    DetachedWindow *own = detached();
    ASSERT_NE(own, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(own));
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(window().choices().isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    press(Qt::Key_Escape);
    own->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(own));
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    type(u"# Two"_s);
    trigger(u"focus-notes"_s);
    settle();
    window().saveNote(/*forceSave=*/true);
    EXPECT_NE(noteTitled(u"Two"_s), nullptr);
    EXPECT_EQ(own->editor().note()->text(), u"# One"_s);
}

TEST_F(QuickNote, AWindowOfItsOwnHasAPaletteOfItsCommands)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    trigger(u"open-in-window"_s);
    DetachedWindow *own = detached();
    ASSERT_NE(own, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(own));
    press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(own->choices().isVisible());
    EXPECT_FALSE(window().choices().isVisible());
    type(u"keepabove"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(own->isFloating());
}

TEST_F(QuickNote, SearchHelpPutsWordsIntoTheField)
{
    launch({u"# One\n- left"_s, u"# Two"_s});
    trigger(u"search-help"_s);
    type(u"somethinglefttodo"_s);
    ASSERT_EQ(window().choices().choices().size(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(window().searchField().text(), u"@todo"_s);
    EXPECT_EQ(rows(), QStringList{u"One"_s});
    EXPECT_TRUE(window().searchField().hasFocus());
}

} // namespace

} // namespace quib::tests
