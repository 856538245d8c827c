#include "WindowFixture.h"

#include <Preferences/CommandGroup.h>
#include <Store/NSManagedObjectContext.h>
#include <Support/QtPrinters.h>
#include <Window/EditorPane.h>
#include <Window/SearchField.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class EditMenu : public WindowFixture
{
protected:
    /// The names of those of the menu's first commands that are enabled while it is open.
    [[nodiscard]] QStringList offered() const
    {
        QMenu *menu = window().menuBar()->actions()[1]->menu();
        Q_EMIT menu->aboutToShow();
        QStringList names;
        for (const auto &name : {u"undo"_s, u"redo"_s, u"cut"_s, u"copy"_s, u"paste"_s}) {
            if (window().action(name)->isEnabled()) {
                names.append(name);
            }
        }
        m_undo = window().action(u"undo"_s)->text();
        Q_EMIT menu->aboutToHide();
        return names;
    }
    mutable QString m_undo; ///< as the menu named it last
};

TEST_F(EditMenu, OffersWhatTheWidgetWithTheKeyboardCanDo)
{
    launch({u"# One"_s, u"# Two"_s});
    QApplication::clipboard()->clear();
    selectRow(u"Two"_s);
    window().noteList().setFocus();
    EXPECT_EQ(offered(), QStringList{u"copy"_s});
    trigger(u"pin"_s);
    EXPECT_EQ(offered(), (QStringList{u"undo"_s, u"copy"_s}));
    EXPECT_EQ(m_undo, u"Undo Pin notes"_s);
    window().editor().focusEditor();
    EXPECT_EQ(offered(), QStringList());
    EXPECT_EQ(m_undo, u"Undo"_s);
    type(u"x"_s);
    EXPECT_EQ(offered(), QStringList{u"undo"_s});
    QApplication::clipboard()->setText(u"copied"_s);
    trigger(u"select-all"_s);
    EXPECT_EQ(offered(), (QStringList{u"undo"_s, u"cut"_s, u"copy"_s, u"paste"_s}));
    trigger(u"undo"_s);
    EXPECT_EQ(window().editor().note()->text(), u"# Two"_s);
    EXPECT_TRUE(noteTitled(u"Two"_s)->isPinned());
    window().searchField().setFocus();
    EXPECT_EQ(offered(), QStringList{u"paste"_s});
    type(u"t"_s);
    EXPECT_EQ(offered(), (QStringList{u"undo"_s, u"paste"_s}));
}

TEST_F(EditMenu, ClosedItDisablesNoKey)
{
    launch({u"# One"_s});
    selectRow(u"One"_s);
    window().noteList().setFocus();
    EXPECT_FALSE(offered().contains(u"undo"_s));
    for (const auto &name : {u"undo"_s, u"redo"_s, u"cut"_s, u"copy"_s, u"paste"_s}) {
        EXPECT_TRUE(window().action(name)->isEnabled()) << name.toStdString();
    }
    trigger(u"pin"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(noteTitled(u"One"_s)->isPinned());
}

TEST_F(EditMenu, ReachedByKeysSpeaksOfWhereTheKeyboardWas)
{
    launch({u"# One"_s});
    QApplication::clipboard()->clear();
    selectRow(u"One"_s);
    trigger(u"pin"_s);
    window().editor().focusEditor();
    type(u"x"_s);
    window().menuBar()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(offered(), QStringList{u"undo"_s});
    EXPECT_EQ(m_undo, u"Undo"_s);
}

TEST_F(EditMenu, CommandsAreListedByTheirNames)
{
    launch({u"# One"_s});
    const auto names = [this] {
        QStringList found;
        for (const CommandGroup &group : commandGroupsOfMenuBar(*window().menuBar())) {
            for (const QAction *command : group.commands) {
                found.append(nameOfCommand(*command));
            }
        }
        return found;
    };
    const QStringList before = names();
    EXPECT_TRUE(before.contains(u"Undo"_s));
    selectRow(u"One"_s);
    window().noteList().setFocus();
    trigger(u"pin"_s);
    ASSERT_EQ(window().action(u"undo"_s)->text(), u"Undo Pin notes"_s);
    ASSERT_EQ(window().action(u"pin"_s)->text(), u"Unpin"_s);
    EXPECT_EQ(names(), before);
}

} // namespace

} // namespace quib::tests
