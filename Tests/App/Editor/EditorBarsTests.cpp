#include "EditorPaneFixture.h"

#include <Editor/CompletionPopup.h>
#include <Editor/FindBar.h>
#include <Editor/FormatBar.h>
#include <Editor/InformationPanel.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QToolButton>

#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorBars : public EditorPaneFixture
{
protected:
    [[nodiscard]] static QString focused()
    {
        const QWidget *focus = QApplication::focusWidget();
        return focus == nullptr ? QString() : focus->objectName();
    }
    static void pressThere(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        processEvents();
    }
    [[nodiscard]] QStringList checkedCommands() const
    {
        QStringList names;
        for (const QAction *command : pane->actions()) {
            if (command->isChecked() && command->isCheckable() && command->objectName() != u"format-bar") {
                names.append(command->objectName());
            }
        }
        names.sort();
        return names;
    }
    [[nodiscard]] QToolButton *button(const QString &name) const
    {
        return pane->formatBar().findChild<QToolButton *>(u"format-"_s + name);
    }
    static QAccessibleInterface *accessible(QObject *object) { return QAccessible::queryAccessibleInterface(object); }
};

TEST_F(EditorBars, EachThingThatTakesTheKeyboardHasANameAndARole)
{
    const auto note = show(u"# Home\n## Garden\n"_s);
    pane->action(u"info"_s)->setChecked(true);
    pane->findBar().open(/*withReplacing=*/true);
    EXPECT_EQ(accessible(&pane->formatBar())->role(), QAccessible::ToolBar);
    EXPECT_EQ(accessible(&pane->findBar())->role(), QAccessible::ToolBar);
    EXPECT_EQ(accessible(&pane->informationPanel())->role(), QAccessible::Grouping);
    EXPECT_EQ(accessible(&pane->completionPopup())->role(), QAccessible::List);
    int count = 0;
    for (auto *widget : pane->findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || widget->parentWidget() == &view()) {
            continue;
        }
        SCOPED_TRACE(widget->objectName().toStdString());
        ++count;
        QAccessibleInterface *interface = accessible(widget);
        ASSERT_NE(interface, nullptr);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty());
        EXPECT_NE(interface->role(), QAccessible::NoRole);
        if (auto *pressed = qobject_cast<QToolButton *>(widget); pressed != nullptr) {
            EXPECT_TRUE(interface->role() == QAccessible::Button || interface->role() == QAccessible::CheckBox ||
                        interface->role() == QAccessible::ButtonMenu)
                << interface->role();
            EXPECT_FALSE(pressed->toolTip().isEmpty());
        }
    }
    EXPECT_GE(count, 25);
    pane->informationPanel().update();
    EXPECT_TRUE(accessible(pane->informationPanel().findChild<QLabel *>(u"words"_s))
                    ->text(QAccessible::Name)
                    .contains(u"Words: 2"_s));
}

TEST_F(EditorBars, AKeyLeadsFromPartToPartAndEscapeBack)
{
    const auto note = show(u"# Home\ntext\n"_s);
    const auto linking = makeNote(u"Trip\n[[Home]]"_s);
    pane->action(u"info"_s)->setChecked(true);
    pane->informationPanel().update();
    EXPECT_EQ(focused(), u"noteText"_s);
    pressThere(Qt::Key_F6);
    EXPECT_EQ(focused(), u"format-heading"_s);
    pressThere(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"format-bold"_s);
    pressThere(Qt::Key_Right);
    EXPECT_EQ(focused(), u"format-italic"_s);
    pressThere(Qt::Key_F6);
    EXPECT_EQ(focused(), u"headers"_s);
    pressThere(Qt::Key_F6);
    EXPECT_EQ(focused(), u"noteText"_s);
    pressThere(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), u"headers"_s);
    pressThere(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"links"_s);
    pressThere(Qt::Key_Escape);
    EXPECT_EQ(focused(), u"noteText"_s);
    pressThere(Qt::Key_F6);
    pressThere(Qt::Key_Escape);
    EXPECT_EQ(focused(), u"noteText"_s);
    // Without the information there are two parts.
    pane->action(u"info"_s)->setChecked(false);
    pressThere(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), u"format-heading"_s);
    pressThere(Qt::Key_F6);
    EXPECT_EQ(focused(), u"noteText"_s);
}

TEST_F(EditorBars, AListOfTheInformationIsWorkedByKeys)
{
    const auto note = show(u"# Home\ntext\n## Garden\nmore\n"_s);
    const auto linking = makeNote(u"Trip\n[[Home]]"_s);
    save();
    QString chosen;
    QObject::connect(pane.get(), &QBNoteEditorViewController::noteWasChosen,
                     [&chosen](const QString &identifier) { chosen = identifier; });
    pane->action(u"info"_s)->setChecked(true);
    pane->informationPanel().update();
    pressThere(Qt::Key_F6);
    pressThere(Qt::Key_F6);
    ASSERT_EQ(focused(), u"headers"_s);
    pressThere(Qt::Key_Down);
    pressThere(Qt::Key_Return);
    EXPECT_EQ(focused(), u"noteText"_s);
    EXPECT_EQ(marked().indexOf(u'|'), shown().indexOf(u"## Garden"_s));
    pressThere(Qt::Key_F6);
    pressThere(Qt::Key_F6);
    pressThere(Qt::Key_Tab);
    pressThere(Qt::Key_Home);
    pressThere(Qt::Key_Return);
    EXPECT_EQ(chosen, linking->uniqueIdentifier());
}

TEST_F(EditorBars, EmptyListsSaySo)
{
    show(u"no heading"_s);
    pane->action(u"info"_s)->setChecked(true);
    auto &panel = pane->informationPanel();
    panel.update();
    for (const auto &name : {u"headers"_s, u"links"_s}) {
        EXPECT_FALSE(panel.findChild<QListWidget *>(name)->isVisible());
        EXPECT_TRUE(panel.findChild<QLabel *>(name + u"Empty"_s)->isVisible());
    }
    view().replaceText({0, 0}, u"# Now one\n"_s);
    panel.update();
    EXPECT_TRUE(panel.findChild<QListWidget *>(u"headers"_s)->isVisible());
    EXPECT_FALSE(panel.findChild<QLabel *>(u"headersEmpty"_s)->isVisible());
}

TEST_F(EditorBars, WhatHasNoRoomStandsInAMenu)
{
    show(u"word"_s);
    auto &bar = pane->formatBar();
    EXPECT_FALSE(button(u"more"_s)->isVisible());
    QSet<QString> all;
    for (const auto *each : bar.findChildren<QToolButton *>()) {
        all.insert(each->objectName());
    }
    EXPECT_LE(pane->minimumSizeHint().width(), 320);
    pane->resize(330, 600);
    processEvents();
    ASSERT_TRUE(button(u"more"_s)->isVisible());
    EXPECT_TRUE(button(u"info"_s)->isVisible());
    EXPECT_TRUE(button(u"bold"_s)->isVisible());
    EXPECT_FALSE(button(u"attach"_s)->isVisible());
    for (const auto *each : bar.findChildren<QToolButton *>()) {
        if (each->isVisible()) {
            EXPECT_GE(each->width(), each->sizeHint().width()) << each->objectName().toStdString();
            EXPECT_LE(each->geometry().right(), bar.width()) << each->objectName().toStdString();
        }
    }
    QMenu *menu = button(u"more"_s)->menu();
    Q_EMIT menu->aboutToShow();
    EXPECT_TRUE(menu->actions().contains(pane->action(u"attach"_s)));
    EXPECT_FALSE(menu->actions().contains(pane->action(u"bold"_s)));
    pane->resize(1000, 600);
    processEvents();
    EXPECT_FALSE(button(u"more"_s)->isVisible());
    EXPECT_TRUE(button(u"attach"_s)->isVisible());
}

TEST_F(EditorBars, CommandsAreCheckedWhereTheirStyleIs)
{
    struct Case
    {
        QString text;
        NSRange selection;
        QStringList checked;
    };
    const std::vector<Case> cases = {
        {u"plain *bold* text"_s, {8, 0}, {u"bold"_s}},
        {u"plain *bold* text"_s, {7, 4}, {u"bold"_s}},
        {u"plain *bold* text"_s, {2, 6}, {}},
        {u"plain *bold*"_s, {11, 0}, {u"bold"_s}},
        {u"plain *bold*"_s, {12, 0}, {}},
        {u"plain *bold*"_s, {6, 6}, {u"bold"_s}},
        {u"plain *bold*"_s, {5, 7}, {}},
        {u"plain *bold* text"_s, {2, 0}, {}},
        {u"### Title"_s, {3, 0}, {u"heading-3"_s}},
        {u"- milk"_s, {3, 0}, {u"todo"_s}},
        {u"1. one"_s, {4, 0}, {u"numbered-list"_s}},
        {u"* one /two/"_s, {7, 0}, {u"bullet-list"_s, u"italic"_s}},
        {u"> said"_s, {3, 0}, {u"quote"_s}},
        {u""_s, {0, 0}, {}},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.text.toStdString());
        show(testCase.text);
        view().setSelectedRange(testCase.selection);
        EXPECT_EQ(checkedCommands(), testCase.checked);
    }
    show(u"word"_s);
    view().setSelectedRange({0, 4});
    pane->action(u"bold"_s)->trigger();
    EXPECT_EQ(checkedCommands(), QStringList{u"bold"_s});
    pane->action(u"bold"_s)->trigger();
    EXPECT_EQ(checkedCommands(), QStringList());
    EXPECT_EQ(shown(), u"word"_s);
}

TEST_F(EditorBars, TheFindBarIsWorkedByKeys)
{
    show(u"one two one"_s);
    view().setSelectedRange({0, 0});
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"findField"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"One"_s);
    auto &bar = pane->findBar();
    EXPECT_EQ(bar.status(), u"1 of 2"_s);
    EXPECT_EQ(accessible(&bar.findField())->text(QAccessible::Description), u"1 of 2"_s);
    pressThere(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(bar.status(), u"Not found"_s);
    EXPECT_TRUE(bar.options().isCaseSensitive);
    pressThere(Qt::Key_C, Qt::AltModifier);
    pressThere(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"replaceField"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"three"_s);
    pressThere(Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(shown(), u"three two three"_s);
    EXPECT_EQ(bar.status(), u"2 replaced"_s);
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        pressThere(Qt::Key_Tab);
        order.append(focused());
    }
    EXPECT_EQ(order, QStringList({u"match-case"_s, u"whole-words"_s, u"pattern"_s, u"find-previous"_s, u"find-next"_s,
                                  u"replace"_s, u"replace-all"_s, u"close"_s, u"noteText"_s}));
    EXPECT_TRUE(bar.isVisible());
    pressThere(Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(focused(), u"noteText"_s);
    view().undo();
    EXPECT_EQ(shown(), u"one two one"_s) << "all at once";
}

TEST_F(EditorBars, TheNextMatchIsFoundWithTheBarPutAway)
{
    show(u"one two one"_s);
    press(Qt::Key_F, Qt::ControlModifier);
    pane->findBar().findField().setText(u"one"_s);
    pressThere(Qt::Key_Escape);
    view().setSelectedRange({1, 0});
    press(Qt::Key_F3);
    EXPECT_EQ(marked(), u"one two [one]"_s);
    EXPECT_TRUE(pane->findBar().isVisible()) << "what is marked can be put away";
    EXPECT_EQ(focused(), u"noteText"_s);
}

TEST_F(EditorBars, CompletionsCanBeReadOut)
{
    const auto other = makeNote(u"Other #garden #gallery"_s);
    show(u"Mine "_s);
    type(u"#ga"_s);
    ASSERT_TRUE(pane->completionPopup().isOpen());
    QAccessibleInterface *list = accessible(&pane->completionPopup());
    ASSERT_EQ(list->childCount(), 2);
    for (int row = 0; row < 2; ++row) {
        EXPECT_EQ(list->child(row)->text(QAccessible::Name), pane->completionPopup().item(row)->text());
        EXPECT_EQ(list->child(row)->role(), QAccessible::ListItem);
        EXPECT_TRUE(list->child(row)->state().selected) << row;
        press(Qt::Key_Down);
        EXPECT_FALSE(list->child(row)->state().selected) << row;
    }
}

TEST_F(EditorBars, ALinkToANoteIsChosenFromTheList)
{
    const auto other = makeNote(u"Garden plan\ntext"_s);
    save();
    show(u"see "_s);
    pane->action(u"note-link"_s)->trigger();
    ASSERT_TRUE(pane->completionPopup().isOpen()) << shown().toStdString();
    press(Qt::Key_Return);
    EXPECT_TRUE(shown().startsWith(u"see [["_s) && shown().trimmed().endsWith(u"]]"_s)) << shown().toStdString();
}

} // namespace quib::tests
