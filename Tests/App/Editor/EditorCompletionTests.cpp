#include "EditorPaneFixture.h"

#include <Editor/CompletionPopup.h>

#include <QAccessible>
#include <QAccessibleEditableTextInterface>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>

#include <functional>

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

TEST_F(EditorCompletion, ReturnEndsALineThatIsTypedWhole)
{
    const auto other = makeNote(u"Other #tag #tagged"_s);
    show({});
    type(u"about #tag"_s);
    ASSERT_TRUE(popup().isOpen());
    press(Qt::Key_Return);
    type(u"next"_s);
    EXPECT_EQ(shown(), u"about #tag\nnext"_s);
    // Another entry that was chosen is taken; so is the only one of a word that is not whole.
    type(u" #tag"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(shown(), u"about #tag\nnext #tagged "_s);
    type(u"#tagg"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(shown(), u"about #tag\nnext #tagged #tagged "_s);
    show({});
    type(u"```python"_s);
    ASSERT_TRUE(popup().isOpen());
    press(Qt::Key_Return);
    type(u"import os"_s);
    EXPECT_EQ(shown(), u"```python\nimport os"_s);
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

TEST_F(EditorCompletion, WhatIsNotTypedOpensNoList)
{
    const auto other = makeNote(u"Other #tomorrow #today"_s);
    const auto paste = [this](const QString &text) {
        auto *data = new QMimeData;
        data->setText(text);
        QGuiApplication::clipboard()->setMimeData(data);
        view().paste();
    };
    const auto run = [this](const QString &name) { pane->action(name)->trigger(); };
    const struct
    {
        QString text;
        std::function<void()> change;
        QString after;
    } cases[] = {
        {u"first\nsecond #to"_s, [&] { press(Qt::Key_Up, Qt::AltModifier); }, u"second #to|\nfirst"_s},
        {u"* a #to"_s, [&] { press(Qt::Key_Tab); }, u"\t* a #to|"_s},
        {u"\t* a #to"_s, [&] { press(Qt::Key_Backtab); }, u"* a #to|"_s},
        {u"a #to"_s, [&] { run(u"bullet-list"_s); }, u"* a #to|"_s},
        {u"a #to"_s, [&] { run(u"todo"_s); }, u"- a #to|"_s},
        {u"a #t"_s, [&] { paste(u"o"_s); }, u"a #to|"_s},
        {u"a #toX b"_s,
         [&] {
             view().setSelectedRange({6, 1});
             press(Qt::Key_X, Qt::ControlModifier);
         },
         u"a #to| b"_s},
        {u"a #toX b"_s,
         [&] {
             view().setSelectedRange({6, 0});
             press(Qt::Key_Delete);
         },
         u"a #to| b"_s},
        {u"to a #"_s,
         [&] {
             EXPECT_TRUE(view().moveText({0, 3}, view().textStorage().length()));
         },
         u"a #to |"_s},
        {u"a #tX"_s,
         [&] {
             view().replaceText({5, 1}, u"o"_s);
         }, // as a word that is corrected
         u"a #to|"_s},
        {u"a #to b"_s,
         [&] {
             view().setSelectedRange({6, 0});
             QAccessible::queryAccessibleInterface(&view())->editableTextInterface()->insertText(0, u"x"_s);
             EXPECT_EQ(marked(), u"x|a #to b"_s);
         },
         u"x|a #to b"_s},
    };
    for (const auto &[text, change, after] : cases) {
        show(text);
        change();
        EXPECT_EQ(marked(), after) << text.toStdString();
        EXPECT_FALSE(popup().isOpen()) << text.toStdString();
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_FALSE(popup().isOpen()) << "undone: " << text.toStdString();
        press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_FALSE(popup().isOpen()) << "done again: " << text.toStdString();
    }
}

TEST_F(EditorCompletion, WhateverWritesAtTheCaretIsTyping)
{
    const auto other = makeNote(u"Other #tomorrow #today"_s);
    const std::function<void()> cases[] = {
        [this] { type(u"o"_s); },
        [this] {
            type(u"ox"_s);
            EXPECT_FALSE(popup().isOpen());
            press(Qt::Key_Backspace);
        },
        [this] {
            QInputMethodEvent event;
            event.setCommitString(u"o"_s);
            QCoreApplication::sendEvent(&view(), &event);
        },
        [this] {
            auto *accessible = QAccessible::queryAccessibleInterface(&view());
            accessible->editableTextInterface()->insertText(accessible->textInterface()->cursorPosition(), u"o"_s);
        },
    };
    for (const auto &change : cases) {
        show(u"a #t"_s);
        change();
        EXPECT_TRUE(popup().isOpen()) << &change - cases;
        EXPECT_EQ(marked(), u"a #to|"_s);
        press(Qt::Key_Escape);
    }
}

TEST_F(EditorCompletion, AnotherChangeClosesTheList)
{
    const auto other = makeNote(u"Other #tomorrow #today"_s);
    const std::pair<QString, std::function<void(const Ref<QBNote> &note)>> cases[] = {
        {u"a line that moves"_s, [this](const auto &) { press(Qt::Key_Down, Qt::AltModifier); }},
        {u"a list"_s, [this](const auto &) { pane->action(u"bullet-list"_s)->trigger(); }},
        {u"an undone step"_s, [this](const auto &) { view().undo(); }},
        {u"a deletion"_s, [this](const auto &) { press(Qt::Key_Delete); }},
        {u"a ticked box"_s, [this](const auto &) { view().toggleCheckBox(0); }},
        {u"another writer"_s, [this](const auto &note) { changeElsewhere(note, u"- a b\nfirst"_s); }},
    };
    for (const auto &[what, change] : cases) {
        const auto note = show(u"- a b\nnext"_s);
        view().setSelectedRange({3, 0});
        type(u" #to"_s);
        ASSERT_TRUE(popup().isOpen()) << what.toStdString();
        change(note);
        EXPECT_FALSE(popup().isOpen()) << what.toStdString();
    }
}

TEST_F(EditorCompletion, TheListStaysWhileTheMiddleIsTyped)
{
    const auto other = makeNote(u"Other #garden"_s);
    const struct
    {
        QString text;
        qint64 place;
        QString typed;
        QString chosen;
    } cases[] = {
        {u"x #ge y"_s, 5, u"ard"_s, u"x #garden| y"_s},
        {u"#g d#"_s, 3, u"ard"_s, u"#garden |"_s},
        {u"```t\ncode\n```"_s, 3, u"swif"_s, u"```swift|\ncode\n```"_s},
    };
    for (const auto &[text, place, typed, chosen] : cases) {
        show(text);
        view().setSelectedRange({place, 0});
        for (const QChar key : typed) {
            type(key);
            processEvents();
            EXPECT_TRUE(popup().isOpen()) << text.toStdString() << " at " << key.toLatin1();
        }
        press(Qt::Key_Return);
        EXPECT_EQ(marked(), chosen);
    }
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
