// Keys in the view of a note: what they do to the text, the selection and the steps that can be undone.

#include "EditorFixture.h"

#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>
#include <cstdlib>
#include <vector>

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

TEST(NoteTextViewKeys, WhatIsDeletedIsUndoneApartFromWhatIsTyped)
{
    struct Case
    {
        const char *name;
        QString text;
        qint64 caret;
        QString typed;
        std::vector<QKeyCombination> keys;
        QStringList undone; ///< the text after each step back
    };
    const std::vector<QKeyCombination> sentence(22, Qt::Key_Backspace);
    const Case cases[] = {
        {"backwards", {}, 0, u"precious sentence here"_s, sentence, {u"precious sentence here"_s, u""_s}},
        {"forwards", u"def"_s, 0, u"abc"_s, {Qt::Key_Delete, Qt::Key_Delete}, {u"abcdef"_s, u"def"_s}},
        {"both ways", u"abcd"_s, 2, {}, {Qt::Key_Backspace, Qt::Key_Delete}, {u"acd"_s, u"abcd"_s}},
        {"and typing again", u"ab"_s, 2, {}, {Qt::Key_Backspace, Qt::Key_X, Qt::Key_Y}, {u"a"_s, u"ab"_s}},
        {"a word backwards", {}, 0, u"one two"_s, {Qt::CTRL | Qt::Key_Backspace}, {u"one two"_s, u""_s}},
        {"words", u"a b"_s, 0, u"one "_s, {Qt::CTRL | Qt::Key_Delete, Qt::Key_Backspace}, {u"one  b"_s, u"one a b"_s}},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        EditorFixture editor(0, testCase.text);
        editor.view().setSelectedRange({testCase.caret, 0});
        editor.type(testCase.typed);
        for (const QKeyCombination key : testCase.keys) {
            editor.press(key.key(), key.keyboardModifiers());
        }
        const QString last = editor.text();
        for (const QString &expected : testCase.undone) {
            editor.view().undo();
            EXPECT_EQ(editor.text(), expected);
        }
        while (editor.view().undoManager().canRedo()) {
            editor.view().redo();
        }
        EXPECT_EQ(editor.text(), last);
    }
}

TEST(NoteTextViewKeys, KeysThatAreNoLettersTypeNone)
{
    struct Case
    {
        Qt::KeyboardModifiers modifiers;
        bool isTyped;
    };
    const Case cases[] = {
        {Qt::NoModifier, true},
        {Qt::ShiftModifier, true},
        {Qt::AltModifier, false},
        {Qt::AltModifier | Qt::ShiftModifier, false},
        {Qt::ControlModifier, false},
        {Qt::MetaModifier, false},
        {Qt::MetaModifier | Qt::AltModifier, false},
        {Qt::ControlModifier | Qt::AltModifier, true}, // the third letter on a key
        {Qt::GroupSwitchModifier, true},
        {Qt::GroupSwitchModifier | Qt::AltModifier, true},
    };
    for (const Case &testCase : cases) {
        EditorFixture editor;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Q, testCase.modifiers, u"@"_s);
        QCoreApplication::sendEvent(&editor.view(), &key);
        EXPECT_EQ(editor.text(), testCase.isTyped ? u"@"_s : u""_s) << int(testCase.modifiers);
        EXPECT_EQ(key.isAccepted(), testCase.isTyped) << int(testCase.modifiers);
    }
}

TEST(NoteTextViewKeys, ATabMovesSelectedLinesAndReplacesNone)
{
    struct Case
    {
        QString text;
        NSRange selection;
        bool isBackwards;
        QString expected;
    };
    const Case cases[] = {
        {u"one\ntwo\nthree"_s, {1, 5}, false, u"\tone\n\ttwo\nthree"_s},
        {u"one\ntwo"_s, {0, 4}, false, u"\tone\ntwo"_s},
        {u"\tone\n    two\nthree"_s, {0, 15}, true, u"one\ntwo\nthree"_s},
        {u"```\na\nb\n```"_s, {4, 3}, false, u"```\n\ta\n\tb\n```"_s},
        {u"one two"_s, {0, 3}, false, u"\t two"_s},
        {u"\tone"_s, {2, 1}, true, u"\tone"_s},
    };
    for (const int syntax : {0, 1}) {
        for (const Case &testCase : cases) {
            SCOPED_TRACE(testCase.text.toStdString());
            EditorFixture editor(syntax, testCase.text);
            editor.view().setSelectedRange(testCase.selection);
            testCase.isBackwards ? editor.press(Qt::Key_Backtab, Qt::ShiftModifier) : editor.press(Qt::Key_Tab);
            EXPECT_EQ(editor.text(), testCase.expected);
            editor.view().undo();
            EXPECT_EQ(editor.text(), testCase.text);
        }
    }
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

TEST(NoteTextViewKeys, NothingIsWrittenIntoACharacter)
{
    EditorFixture editor(0, u"a\U0001F600b"_s);
    editor.view().setSelectedRange({2, 0});
    editor.type(u"x"_s);
    EXPECT_EQ(editor.text(), u"ax\U0001F600b"_s);
    editor.view().setSelection(3, 5);
    editor.press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(editor.text(), u"ax"_s);
    // An edit elsewhere leaves the caret where a character is now.
    editor.view().loadString(u"abcd"_s);
    editor.view().setSelectedRange({2, 0});
    editor.view().textStorage().replaceCharactersInRange({1, 2}, u"\U0001F600");
    editor.view().typeText(u"x"_s);
    EXPECT_TRUE(editor.text().isValidUtf16()) << editor.text().toStdString();
}

TEST(NoteTextViewKeys, WordsAreTakenOneByOne)
{
    struct Case
    {
        QString text;
        qint64 caret;
        int key;
        QString expected;
    };
    const Case cases[] = {
        {u"one two three"_s, 3, Qt::Key_Delete, u"one three"_s},
        {u"one two three"_s, 7, Qt::Key_Backspace, u"one  three"_s},
        {u"_one two"_s, 0, Qt::Key_Delete, u" two"_s},
        {u"one _two"_s, 8, Qt::Key_Backspace, u"one "_s},
        {u"a -> _b c"_s, 1, Qt::Key_Delete, u"a c"_s},
        {u"\U00010400\U00010401 b"_s, 0, Qt::Key_Delete, u" b"_s},
        {u"one\n\ntwo"_s, 3, Qt::Key_Delete, u"one"_s},
        {u"one\n\ntwo"_s, 5, Qt::Key_Backspace, u"two"_s},
    };
    for (const Case &testCase : cases) {
        EditorFixture editor(0, testCase.text);
        editor.view().setSelectedRange({testCase.caret, 0});
        editor.press(testCase.key, Qt::ControlModifier);
        EXPECT_EQ(editor.text(), testCase.expected) << testCase.text.toStdString();
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

TEST(NoteTextViewKeys, DeletingTakesSignsThatAreWrittenAsSeveralCharactersAsOne)
{
    const QString germany = u"\U0001F1E9\U0001F1EA"_s;
    const QString france = u"\U0001F1EB\U0001F1F7"_s;
    const QString family = u"\U0001F469\u200D\U0001F469\u200D\U0001F467"_s;
    const QString thumb = u"\U0001F44D\U0001F3FD"_s;
    const QString key = u"1\uFE0F\u20E3"_s;
    const QString letter = u"e\u0301\u0323"_s;
    for (const QString &start : {u""_s, u"a "_s, u"# "_s, u"a\n- "_s, u"*b* "_s, u"#tag "_s, u"\u05D0 "_s}) {
        const QStringList signs{germany, france, germany, family, thumb, key, letter};
        SCOPED_TRACE(start.toStdString());
        EditorFixture editor(0, start);
        editor.press(Qt::Key_End, Qt::ControlModifier);
        for (const uint character : signs.join(QString()).toUcs4()) {
            editor.view().typeText(QString::fromUcs4(reinterpret_cast<const char32_t *>(&character), 1));
        }
        const qint64 first = editor.view().caret() - signs.join(QString()).size();
        for (qsizetype left = signs.size(); left-- > 0;) {
            editor.press(Qt::Key_Backspace);
            EXPECT_EQ(editor.text(), start + signs.first(left).join(QString()));
        }
        editor.view().undo();
        editor.view().setSelectedRange({first, 0});
        for (qsizetype taken = 1; taken <= signs.size(); ++taken) {
            editor.press(Qt::Key_Delete);
            EXPECT_EQ(editor.text(), start + signs.sliced(taken).join(QString()));
        }
    }
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

TEST(NoteTextViewKeys, WhatIsComposedStandsInItsLineAndIsNoText)
{
    EditorFixture editor(0, u"before after"_s);
    editor.view().setSelectedRange({7, 0});
    const double line = editor.view().caretRectInViewport(0).top();
    const double after = editor.view().caretRectInViewport(8).left();
    const QImage plain = editor.painted();
    QInputMethodEvent composing(u"nihongo"_s, {{QInputMethodEvent::Cursor, 2, 1, {}}});
    QCoreApplication::sendEvent(&editor.view(), &composing);
    EXPECT_EQ(editor.text(), u"before after"_s);
    EXPECT_GT(editor.view().caretRectInViewport(8).left(), after + 20) << "the text behind makes room";
    const QRectF caret = editor.view().caretRectInViewport(7);
    EXPECT_GT(caret.left(), editor.view().caretRectInViewport(6).left());
    EXPECT_LT(caret.left(), editor.view().caretRectInViewport(8).left()) << "the caret is within what is composed";
    EXPECT_EQ(editor.view().caretRectInViewport(0).top(), line);
    EXPECT_NE(editor.painted(), plain);
    // A click in what is composed, and behind it, finds places of the text.
    EXPECT_EQ(editor.view().locationAtViewportPoint(caret.center()), 7);
    EXPECT_EQ(editor.view().locationAtViewportPoint(editor.view().caretRectInViewport(12).center()), 12);
    QInputMethodEvent dropped;
    QCoreApplication::sendEvent(&editor.view(), &dropped);
    EXPECT_EQ(editor.painted(), plain);
    // Longer than a line, it is wrapped.
    QInputMethodEvent wrapped(u"many words to compose "_s.repeated(12), {});
    QCoreApplication::sendEvent(&editor.view(), &wrapped);
    EXPECT_GT(editor.view().caretRectInViewport(8).top(), line + 20);
    QInputMethodEvent committed;
    committed.setCommitString(u"x"_s);
    QCoreApplication::sendEvent(&editor.view(), &committed);
    EXPECT_EQ(editor.text(), u"before xafter"_s);
    EXPECT_EQ(editor.view().caretRectInViewport(8).top(), line);
}

TEST(NoteTextViewKeys, ArrowsGoWhereTheyPointInAnyDirectionOfWriting)
{
    const QString texts[] = {u"abc \u05D0\u05D1\u05D2 def"_s, u"\u05D0\u05D1\u05D2 abc \u05D3\u05D4"_s,
                             u"\u0645\u0631\u062D\u0628\u0627 12 abc"_s, u"abc"_s,
                             u"x\u05D0\u05D1"_s + u" word"_s.repeated(30) + u"\u05D2"_s};
    for (const QString &text : texts) {
        EditorFixture editor(0, u"first\n"_s + text + u"\nlast"_s);
        const qint64 start = 6;
        const qint64 end = start + text.size();
        const bool isRightToLeft = editor.view().layoutManager().isRightToLeft(start);
        const int forwards = isRightToLeft ? Qt::Key_Left : Qt::Key_Right;
        const int backwards = isRightToLeft ? Qt::Key_Right : Qt::Key_Left;
        for (const bool isForwards : {true, false}) {
            editor.view().setSelectedRange({isForwards ? start : end, 0});
            QRectF before = editor.view().caretRectInViewport(editor.view().caret());
            int steps = 0;
            for (; editor.view().caret() >= start && editor.view().caret() <= end; ++steps) {
                ASSERT_LE(steps, 2 * text.size() + 2) << "goes round in circles in " << text.toStdString();
                editor.press(isForwards ? forwards : backwards);
                const QRectF now = editor.view().caretRectInViewport(editor.view().caret());
                if (std::abs(now.top() - before.top()) < 1) {
                    EXPECT_EQ(now.left() > before.left(), isForwards != isRightToLeft)
                        << text.toStdString() << ", step " << steps;
                }
                before = now;
            }
            EXPECT_EQ(editor.view().caret(), isForwards ? end + 1 : start - 1);
            EXPECT_GE(steps, 3);
        }
    }
}

TEST(NoteTextViewKeys, PageKeysGoByWhatIsSeenAndBack)
{
    EditorFixture editor(0, u"line of words\n"_s.repeated(300));
    std::vector<qint64> places = {0};
    for (int page = 0; page < 4; ++page) {
        editor.press(Qt::Key_PageDown);
        EXPECT_GT(editor.view().caret(), places.back() + 14 * 5);
        const QRectF caret = editor.view().caretRectInViewport(editor.view().caret());
        EXPECT_TRUE(editor.view().viewport()->rect().contains(caret.center().toPoint()));
        places.push_back(editor.view().caret());
    }
    for (int page = 0; page < 3; ++page) {
        places.pop_back();
        editor.press(Qt::Key_PageUp);
        EXPECT_LE(std::abs(editor.view().caret() - places.back()), 3 * 14) << "a few lines off at most";
    }
    editor.press(Qt::Key_PageUp);
    editor.press(Qt::Key_PageUp);
    EXPECT_EQ(editor.view().caret(), 0);
    for (int page = 0; page < 40; ++page) {
        editor.press(Qt::Key_PageDown, Qt::ShiftModifier);
    }
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{0, editor.buffer().size()}));
}
