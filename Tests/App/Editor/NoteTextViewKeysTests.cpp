// Keys in the view of a note: what they do to the text, the selection and the steps that can be undone.

#include "EditorFixture.h"

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace quib::tests;

TEST(NoteTextViewKeys, TypingStylesAndIsUndoneInStretches)
{
    EditorFixture editor;
    editor.type(u"# Title"_s);
    editor.press(Qt::Key_Return);
    editor.type(u"some *bold* text #tag "_s);
    EXPECT_EQ(editor.text(), u"# Title\nsome *bold* text #tag "_s);
    EXPECT_TRUE(editor.buffer().startsWith(QChar(0xFFFC))) << "the header's marker is an attachment";
    QString last = editor.text();
    int steps = 0;
    for (; editor.view().undoManager().canUndo(); ++steps) {
        editor.press(Qt::Key_Z, Qt::ControlModifier);
        ASSERT_NE(editor.text(), last);
        last = editor.text();
    }
    EXPECT_EQ(editor.text(), u""_s);
    EXPECT_GE(steps, 3);
    EXPECT_LT(steps, 12);
    while (editor.view().undoManager().canRedo()) {
        editor.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    }
    EXPECT_EQ(editor.text(), u"# Title\nsome *bold* text #tag "_s);
}

TEST(NoteTextViewKeys, TheCaretGoesWhereKeysSay)
{
    struct Case
    {
        QKeyCombination key;
        qint64 from;
        qint64 anchor;
        qint64 caret;
    };
    const QString text = u"aaaaa aaaa aaaa\naaaaaa\n\naaaa aaaaa"_s;
    const qint64 end = text.size();
    const Case cases[] = {
        {Qt::Key_Right, 0, 1, 1},
        {Qt::Key_Left, 1, 0, 0},
        {Qt::Key_Left, 0, 0, 0},
        {Qt::Key_Right, 15, 16, 16},
        {Qt::Key_Left, 16, 15, 15},
        {Qt::Key_Right, end, end, end},
        {Qt::Key_Home, 8, 0, 0},
        {Qt::Key_End, 8, 15, 15},
        {Qt::Key_Down, 3, 19, 19},
        {Qt::Key_Up, 19, 3, 3},
        {Qt::Key_Up, 3, 0, 0},
        {Qt::Key_Down, 27, end, end},
        {Qt::CTRL | Qt::Key_Right, 0, 5, 5},
        {Qt::CTRL | Qt::Key_Left, 8, 6, 6},
        {Qt::CTRL | Qt::Key_Left, 16, 11, 11},
        {Qt::CTRL | Qt::Key_Right, 15, 22, 22},
        {Qt::CTRL | Qt::Key_Home, 20, 0, 0},
        {Qt::CTRL | Qt::Key_End, 2, end, end},
        {Qt::SHIFT | Qt::Key_Right, 4, 4, 5},
        {Qt::SHIFT | Qt::Key_Down, 3, 3, 19},
        {Qt::CTRL | Qt::SHIFT | Qt::Key_End, 3, 3, end},
        {Qt::SHIFT | Qt::Key_Home, 10, 10, 0},
        {Qt::CTRL | Qt::Key_A, 3, 0, end},
    };
    EditorFixture editor(0, text);
    for (const Case &each : cases) {
        editor.view().setSelectedRange({each.from, 0});
        editor.press(each.key.key(), each.key.keyboardModifiers());
        const NSRange expected = {std::min(each.anchor, each.caret), std::abs(each.caret - each.anchor)};
        EXPECT_EQ(editor.view().selectedRange(), expected)
            << QKeySequence(each.key).toString().toStdString() << " from " << each.from;
        EXPECT_EQ(editor.view().caret(), each.caret);
    }
}

TEST(NoteTextViewKeys, DeletingTakesWholeCharactersAndPassesWhatStandsForNothing)
{
    EditorFixture editor(0, u"ae\u0301\U0001F600 #tag end"_s);
    editor.view().setSelectedRange({5, 0});
    editor.press(Qt::Key_Backspace);
    EXPECT_EQ(editor.text(), u"ae\u0301 #tag end"_s);
    editor.press(Qt::Key_Backspace);
    EXPECT_EQ(editor.text(), u"a #tag end"_s);
    // From the end of the text every press takes a character, spacers around tags notwithstanding.
    editor.press(Qt::Key_End, Qt::ControlModifier);
    for (QString left = editor.text(); !left.isEmpty(); left = editor.text()) {
        editor.press(Qt::Key_Backspace);
        ASSERT_EQ(editor.text(), left.chopped(1));
    }
    editor.press(Qt::Key_Backspace);
    editor.press(Qt::Key_Delete);
    EXPECT_EQ(editor.text(), u""_s);
}

TEST(NoteTextViewKeys, CutCopyAndPasteKeepTheMarkup)
{
    EditorFixture editor(0, u"# One\n- two #tag\n"_s);
    editor.press(Qt::Key_A, Qt::ControlModifier);
    editor.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"# One\n- two #tag\n"_s);
    editor.press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(editor.text(), u""_s);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor.text(), u"# One\n- two #tag\n# One\n- two #tag\n"_s);
    editor.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.text(), u"# One\n- two #tag\n"_s);
    QGuiApplication::clipboard()->setText(u"a\r\nb\rc"_s);
    editor.press(Qt::Key_A, Qt::ControlModifier);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor.text(), u"a\nb\nc"_s);
}

TEST(NoteTextViewKeys, AnInputMethodComposesBeforeItWrites)
{
    EditorFixture editor(0, u"ab"_s);
    editor.view().setSelectedRange({1, 0});
    QInputMethodEvent composing(u"nihon"_s, {});
    QCoreApplication::sendEvent(&editor.view(), &composing);
    EXPECT_EQ(editor.text(), u"ab"_s);
    EXPECT_EQ(editor.view().inputMethodQuery(Qt::ImSurroundingText).toString(), u"ab"_s);
    EXPECT_EQ(editor.view().inputMethodQuery(Qt::ImCursorPosition).toInt(), 1);
    QInputMethodEvent committed;
    committed.setCommitString(u"\u65E5\u672C"_s);
    QCoreApplication::sendEvent(&editor.view(), &committed);
    EXPECT_EQ(editor.text(), u"a\u65E5\u672Cb"_s);
    QInputMethodEvent replacing;
    replacing.setCommitString(u"x"_s, -2, 2);
    QCoreApplication::sendEvent(&editor.view(), &replacing);
    EXPECT_EQ(editor.text(), u"axb"_s);
}

TEST(NoteTextViewKeys, AReadOnlyTextStaysAsItIs)
{
    EditorFixture editor(0, u"text"_s);
    editor.view().setReadOnly(true);
    editor.type(u"x"_s);
    editor.press(Qt::Key_Backspace);
    editor.press(Qt::Key_Return);
    editor.view().paste();
    EXPECT_EQ(editor.text(), u"text"_s);
    editor.press(Qt::Key_Right);
    EXPECT_EQ(editor.view().caret(), 1);
}

TEST(NoteTextViewKeys, RandomKeysLeaveTheTextThatAModelHas)
{
    auto random = TestSeed().generator();
    const int rounds = qEnvironmentVariableIntValue("QUIB_LONG_TESTS") > 0 ? 100'000 : 3'000;
    EditorFixture editor;
    QString model;
    for (int round = 0; round < rounds; ++round) {
        const NSRange selection = editor.view().selectedRange();
        const auto inText = [&](qint64 place) {
            return editor.view().textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
        };
        const qint64 start = inText(selection.location);
        const qint64 end = inText(selection.limit());
        if (random() % 3 != 0) {
            constexpr QStringView kTyped = u"ab #*/_-+1. `[]!:~<>";
            const QString typed = random() % 12 == 0 ? u"\n"_s : QString(kTyped[qsizetype(random() % 20)]);
            if (typed == u"\n") {
                editor.press(Qt::Key_Return);
            } else {
                editor.type(typed);
            }
            model.replace(start, end - start, typed);
        } else if (random() % 2 != 0) {
            constexpr int kKeys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
            editor.press(kKeys[random() % std::size(kKeys)], random() % 4 == 0 ? Qt::ShiftModifier : Qt::NoModifier);
        } else {
            editor.press(Qt::Key_Backspace);
            // How much goes with an attachment is the view's to say; it is one stretch, and it is where the caret was.
            const QString now = editor.text();
            EXPECT_LE(now.size(), model.size());
            const auto same = std::mismatch(now.begin(), now.end(), model.begin(), model.end());
            const qsizetype kept = same.first - now.begin();
            EXPECT_TRUE(model.endsWith(QStringView(now).sliced(kept))) << "round " << round;
            EXPECT_LE(std::min<qint64>(kept, start), end);
            model = now;
        }
        if (round % 97 == 0) {
            (void)editor.painted();
        }
        ASSERT_EQ(editor.text(), model) << "round " << round;
    }
    while (editor.view().undoManager().canUndo()) {
        editor.view().undo();
    }
    EXPECT_EQ(editor.text(), u""_s);
}
