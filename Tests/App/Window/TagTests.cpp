#include "WindowFixture.h"

#include <Search/Lists/TagIcons.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteTag.h>
#include <Support/QtPrinters.h>
#include <Window/EditorPane.h>
#include <Window/MessageBar.h>
#include <Window/SidebarModel.h>
#include <Window/SymbolPicker.h>

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class Tags : public WindowFixture
{
protected:
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const auto &note : notes()) {
            texts.append(note->text());
        }
        texts.sort();
        return texts;
    }
    [[nodiscard]] QString symbolOf(const QString &tag) const
    {
        return model().indexOfIdentifier(tag).data(SidebarModel::IconRole).toString();
    }
    [[nodiscard]] SidebarModel &model() const { return window().sidebar().sidebarModel(); }
    void rename(const QString &tag, const QString &name) const
    {
        ASSERT_TRUE(model().setData(model().indexOfIdentifier(tag), name, Qt::EditRole));
        settle();
    }
};

TEST_F(Tags, AreRenamedInTheirPlaceAndInAllTexts)
{
    launch({u"# One #garden/roses"_s, u"# Two #garden"_s});
    openList(u"garden"_s);
    rename(u"garden"_s, u"park"_s);
    EXPECT_EQ(noteTitled(u"One #park/roses"_s)->text(), u"# One #park/roses"_s);
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"park"_s);
    EXPECT_EQ(rows().size(), 2);
    EXPECT_FALSE(entries().contains(u"garden"_s));
}

TEST_F(Tags, ARenameIsTakenBackToTheLetter)
{
    // The name is another tag's, so that the two become one; a second renaming could not part them again.
    launch({u"# One\n#Garden and #park"_s, u"# Two\n#garden/roses"_s, u"# Three\n#park"_s});
    const QStringList before = texts();
    openList(u"Garden"_s);
    rename(u"Garden"_s, u"park"_s);
    EXPECT_FALSE(entries().contains(u"garden"_s));
    window().messages().press(0); // the message offers to undo
    settle();
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"Garden"_s);
    window().sidebar().setFocus();
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(entries().contains(u"garden"_s));
}

TEST_F(Tags, AreDeletedAtOnceAndComeBackWhereTheyStood)
{
    launch({u"# One\n#garden in the middle"_s, u"# Two #garden/roses\nend"_s, u"# Three"_s});
    const QStringList before = texts();
    openList(u"garden"_s);
    trigger(u"delete-tag"_s);
    EXPECT_FALSE(window().messages().isAsking());
    EXPECT_FALSE(entries().contains(u"garden"_s));
    EXPECT_EQ(notes().size(), 3);
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"QBNotesSidebarItem"_s);
    EXPECT_EQ(window().messages().text(), u"The tag #garden was taken out of 2 note(s)."_s);
    window().messages().press(0);
    settle();
    EXPECT_EQ(texts(), before);
    EXPECT_TRUE(entries().contains(u"roses"_s));
}

TEST_F(Tags, WhatWasWrittenSinceIsNotTakenBack)
{
    launch({u"# One\n#garden"_s, u"# Two\n#garden"_s});
    openList(u"garden"_s);
    trigger(u"delete-tag"_s);
    noteTitled(u"One"_s)->updateNoteWithText(u"# One\nand more"_s, /*syntax=*/0, /*updateModificationDate=*/true);
    ASSERT_TRUE(moc().save());
    window().noteList().setFocus();
    trigger(u"undo"_s);
    EXPECT_EQ(texts(), (QStringList{u"# One\nand more"_s, u"# Two\n#garden"_s}));
}

TEST_F(Tags, AnOfferToUndoIsForTheLastThingDoneOnly)
{
    launch({u"# One\n#garden"_s, u"# Two"_s});
    openList(u"garden"_s);
    trigger(u"delete-tag"_s);
    selectRow(u"Two"_s);
    trigger(u"pin"_s);
    window().messages().press(0);
    settle();
    EXPECT_TRUE(noteTitled(u"Two"_s)->isPinned());
    EXPECT_FALSE(entries().contains(u"garden"_s));
}

TEST_F(Tags, AnOfferToUndoEndsWithTheNextStep)
{
    launch({u"# One\n#books"_s, u"# Two\n#cooking"_s});
    const QStringList before = texts();
    rename(u"books"_s, u"bookz"_s);
    rename(u"cooking"_s, u"cookz"_s);
    ASSERT_EQ(window().messages().text(), u"The tag #cooking is #cookz now."_s);
    window().noteList().setFocus();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window().messages().text(), QString());
    window().messages().press(0);
    settle();
    EXPECT_EQ(texts(), (QStringList{u"# One\n#bookz"_s, before[1]}));
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    window().messages().press(0);
    settle();
    EXPECT_EQ(texts(), (QStringList{u"# One\n#bookz"_s, u"# Two\n#cookz"_s}));
}

TEST_F(Tags, ARenameLeavesTheKeyboardWithTheTag)
{
    launch({u"# One\n#books and #zoo"_s});
    openList(u"books"_s);
    trigger(u"rename-tag"_s);
    auto *field = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    field->selectAll();
    testing::internal::CaptureStderr();
    type(u"bookz\n"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"bookz"_s);
    EXPECT_TRUE(window().sidebar().hasFocus());
    press(Qt::Key_Down);
    EXPECT_EQ(window().sidebar().selectedIdentifier(), u"zoo"_s);
}

TEST_F(Tags, ARenameTakenBackLeadsToTheTagAgain)
{
    launch({u"# One\n#garden/roses and #garden/herbs"_s, u"# Two\n#garden/roses/old"_s});
    for (const auto &[tag, name] : {std::pair(u"garden/roses"_s, u"garden/tulips"_s), std::pair(u"garden"_s, u"park"_s),
                                    std::pair(u"garden/roses/old"_s, u"old"_s)}) {
        SCOPED_TRACE(tag.toStdString());
        openList(tag);
        rename(tag, name);
        EXPECT_EQ(window().sidebar().selectedIdentifier(), name);
        window().sidebar().setFocus();
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(window().sidebar().selectedIdentifier(), tag);
        press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(window().sidebar().selectedIdentifier(), name);
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(window().sidebar().selectedIdentifier(), tag);
    }
}

TEST_F(Tags, HaveTheSymbolThatIsChosenForThem)
{
    launch({u"# One #garden/roses"_s});
    openList(u"garden"_s);
    EXPECT_EQ(symbolOf(u"garden"_s), u"tag-plant"_s);
    trigger(u"tag-symbol"_s);
    auto *picker = qobject_cast<SymbolPicker *>(QApplication::activePopupWidget());
    ASSERT_NE(picker, nullptr);
    auto *list = picker->findChild<QListView *>();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Right);
    QTest::keyClick(list, Qt::Key_Return);
    settle();
    EXPECT_EQ(symbolOf(u"garden"_s), u"tag-animal"_s);
    rename(u"garden"_s, u"park"_s);
    EXPECT_EQ(symbolOf(u"park"_s), u"tag-animal"_s) << "the choice goes with the name";
    quit();
    launch();
    EXPECT_EQ(symbolOf(u"park"_s), u"tag-animal"_s);
    openList(u"park"_s);
    trigger(u"tag-symbol"_s);
    picker = qobject_cast<SymbolPicker *>(QApplication::activePopupWidget());
    ASSERT_NE(picker, nullptr);
    picker->findChild<QPushButton *>()->click();
    settle();
    EXPECT_EQ(symbolOf(u"park"_s), u"tag"_s);
    window().sidebar().setFocus();
    trigger(u"undo"_s);
    EXPECT_EQ(symbolOf(u"park"_s), u"tag-animal"_s);
}

TEST_F(Tags, EverySymbolHasANameOfItsOwn)
{
    QStringList names;
    for (const QString &symbol : tagIconNames()) {
        names.append(SymbolPicker::nameOfSymbol(symbol));
        EXPECT_NE(names.constLast(), symbol);
    }
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_F(Tags, CountTheirNotes)
{
    launch({u"# One #garden/roses"_s, u"# Two #garden"_s, u"# Three"_s});
    const auto count = [this](const QString &identifier) {
        return model().indexOfIdentifier(identifier).data(SidebarModel::CountRole).toInt();
    };
    waitForCounts();
    EXPECT_EQ(count(u"garden"_s), 2);
    EXPECT_EQ(count(u"garden/roses"_s), 1);
    EXPECT_EQ(count(u"QBNotesSidebarItem"_s), 3);
    EXPECT_EQ(count(u"QBUntaggedSidebarItem"_s), 1);
    noteTitled(u"Three"_s)->trash();
    ASSERT_TRUE(moc().save());
    waitForCounts();
    EXPECT_EQ(count(u"QBNotesSidebarItem"_s), 2);
    EXPECT_EQ(count(u"QBNotesTrashSidebarItem"_s), 1);
}

} // namespace

} // namespace quib::tests
