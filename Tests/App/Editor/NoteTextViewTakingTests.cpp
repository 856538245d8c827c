// What goes when text is taken out of a note by a key, to the clipboard or by a drag: what was selected, what belongs
// to it, and nothing else.

#include "EditorFixture.h"

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace quib::tests;

namespace {

constexpr QChar kStart = u'«';
constexpr QChar kLimit = u'»';
constexpr QChar kCaret = u'‸';
constexpr QChar kTarget = u'¦';

/// The place of the view that a place of the spelled out text has.
qint64 placeOf(EditorFixture &editor, qint64 inText)
{
    const auto &storage = editor.view().textStorage();
    for (qint64 place = 0; place < storage.length(); ++place) {
        if (storage.stringWithExpandedTextAttachmentsWithRange({0, place}).size() >= inText) {
            return place;
        }
    }
    return storage.length();
}

enum class Act
{
    Backspace,
    Delete,
    Cut,
    CutAndPaste,
    Drag, ///< to the target
    Type,
    Return,
    Tab,
    Paste,
    Commit, ///< what an input method has composed
    Drop,   ///< onto the target, from elsewhere
};

/// What is written over the selection by those that write.
QString written()
{
    return u"XY"_s;
}

void dropOnto(QBNoteTextView &view, qint64 place, const QString &text)
{
    QMimeData data;
    data.setText(text);
    const QPointF at = view.caretRectInViewport(place).center();
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enter);
    QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &event);
}

void write(EditorFixture &editor, Act act, qint64 target)
{
    QInputMethodEvent commit;
    commit.setCommitString(written());
    switch (act) {
    case Act::Type:
        editor.type(written());
        break;
    case Act::Return:
        editor.press(Qt::Key_Return);
        break;
    case Act::Tab:
        editor.press(Qt::Key_Tab);
        break;
    case Act::Paste:
        QGuiApplication::clipboard()->setText(written());
        editor.press(Qt::Key_V, Qt::ControlModifier);
        break;
    case Act::Commit:
        QCoreApplication::sendEvent(&editor.view(), &commit);
        break;
    case Act::Drop:
        dropOnto(editor.view(), target, written());
        break;
    default:
        break;
    }
}

struct Case
{
    const char *name;
    const char16_t *text; ///< with the selection, or the caret, and the target of a drag
    Act act;
    const char16_t *expected;
    int syntax = 0;
};

QString outcome(const Case &testCase)
{
    QString text = QString::fromUtf16(testCase.text);
    const qsizetype target = QString(text).remove(kStart).remove(kLimit).indexOf(kTarget);
    text.remove(kTarget);
    const qsizetype caret = text.indexOf(kCaret);
    text.remove(kCaret);
    const qsizetype start = caret >= 0 ? caret : text.indexOf(kStart);
    text.remove(kStart);
    const qsizetype limit = caret >= 0 ? caret : text.indexOf(kLimit);
    text.remove(kLimit);
    EditorFixture editor(testCase.syntax, text);
    const qint64 from = placeOf(editor, start);
    editor.view().setSelectedRange({from, placeOf(editor, limit) - from});
    switch (testCase.act) {
    case Act::Backspace:
        editor.press(Qt::Key_Backspace);
        break;
    case Act::Delete:
        editor.press(Qt::Key_Delete);
        break;
    case Act::Cut:
        editor.press(Qt::Key_X, Qt::ControlModifier);
        break;
    case Act::CutAndPaste:
        editor.press(Qt::Key_X, Qt::ControlModifier);
        editor.press(Qt::Key_V, Qt::ControlModifier);
        break;
    case Act::Drag:
        (void)editor.view().moveText(editor.view().selectedRange(), placeOf(editor, target));
        break;
    default:
        write(editor, testCase.act, placeOf(editor, target));
        break;
    }
    const QString left = editor.text();
    if (left != text) {
        editor.view().undo();
        EXPECT_EQ(editor.text(), testCase.act == Act::CutAndPaste ? editor.text() : text) << "one step back";
    }
    return left;
}

/// A text with something of every kind.
QString randomText(std::mt19937 &random)
{
    static const QStringList pieces = {u"a"_s,
                                       u"word "_s,
                                       u" "_s,
                                       u"\n"_s,
                                       u"\n"_s,
                                       u"\n# "_s,
                                       u"\n### Head"_s,
                                       u"\n* item"_s,
                                       u"\n\t* deep"_s,
                                       u"\n- box"_s,
                                       u"\n+ done"_s,
                                       u"\n- [ ] md"_s,
                                       u"\n- [x] md"_s,
                                       u"\n1. one"_s,
                                       u"\n> quote"_s,
                                       u"\n---\n"_s,
                                       u"\n```\ncode\n```\n"_s,
                                       u"*bold*"_s,
                                       u" /it/ "_s,
                                       u"`code`"_s,
                                       u" #tag "_s,
                                       u"#two words#"_s,
                                       u"[t](http://a.example/x)"_s,
                                       u"[t](quib://x-callback-url/open-note?id=1)"_s,
                                       u"[[wiki]]"_s,
                                       u" #ff8000 "_s,
                                       u" -> "_s,
                                       u"[file:id/f.txt]"_s,
                                       u"\n[image:id/f.png]\n"_s,
                                       u"http://b.example"_s,
                                       u"e\u0301"_s,
                                       u"\U0001F600"_s};
    QString text;
    for (size_t count = 1 + random() % 12; count > 0; --count) {
        text += pieces[qsizetype(random() % size_t(pieces.size()))];
    }
    return text;
}

} // namespace

TEST(NoteTextViewTaking, TakesWhatIsSelectedAndWhatBelongsToIt)
{
    const Case cases[] = {
        {"from a line into an item", u"# Probe\nline «foo\n* b»ar\nend", Act::Cut, u"# Probe\nline ar\nend"},
        {"and back", u"# Probe\nline «foo\n* b»ar\nend", Act::CutAndPaste, u"# Probe\nline foo\n* bar\nend"},
        {"by key", u"# Probe\nline «foo\n* b»ar\nend", Act::Backspace, u"# Probe\nline ar\nend"},
        {"by the other key", u"a\n«- t»o do\nb", Act::Delete, u"a\no do\nb"},
        {"a heading's start", u"a\n## «He»ad\nb", Act::Cut, u"a\n## ad\nb"},
        {"a heading's start with its marker", u"a\n«## He»ad\nb", Act::Cut, u"a\nad\nb"},
        {"a marker that is selected takes its blank", u"a«\n*» bar", Act::Delete, u"abar"},
        {"a marker behind an indent", u"a\n\t«* b»ar", Act::Delete, u"a\n\tar"},
        {"a quote", u"a\n«> q»uote", Act::Cut, u"a\nuote"},
        {"a number", u"a\n«1. o»ne\n2. two", Act::Cut, u"a\nne\n2. two"},
        {"a box that is done", u"a «b\n+ d»one", Act::Cut, u"a one"},
        {"a box of the other syntax", u"a «b\n- [x] d»one", Act::Cut, u"a one", 1},
        {"a bullet of the other syntax", u"a «b\n+ d»one", Act::Cut, u"a one", 1},
        {"Delete in front of a bullet", u"a\n‸* bar\nb", Act::Delete, u"a\nbar\nb"},
        {"Delete in front of a heading", u"‸## Second\nb", Act::Delete, u"Second\nb"},
        {"Backspace behind a heading's marker", u"a\n# ‸Second\nb", Act::Backspace, u"a\nSecond\nb"},
        {"Backspace behind a bullet", u"a\n* ‸bar", Act::Backspace, u"a\nbar"},
        {"Backspace behind a box", u"a\n- ‸bar", Act::Backspace, u"a\nbar"},
        {"Backspace behind a box of the other syntax", u"a\n- [ ] ‸bar", Act::Backspace, u"a\nbar", 1},
        {"Backspace behind an empty item", u"a\n* ‸\nb", Act::Backspace, u"a\n\nb"},
        {"Backspace behind a second blank", u"a\n*  ‸bar", Act::Backspace, u"a\n* bar"},
        {"Backspace in an item", u"a\n* b‸ar", Act::Backspace, u"a\n* ar"},
        {"Backspace in front of an item", u"a\n‸* bar", Act::Backspace, u"a* bar"},
        {"Delete at the end of a line before an item", u"a‸\n* bar", Act::Delete, u"a* bar"},
        {"a link that is touched", u"see [tit«le](http://a.example/) a»nd", Act::Cut, u"see nd"},
        {"a link's title", u"see [ti«tl»e](http://a.example/)", Act::Cut, u"see [tie](http://a.example/)"},
        {"a line is dragged within itself", u"a\n«* b»ar baz¦\nc", Act::Drag, u"a\nar baz* b\nc"},
        {"to its own end", u"a\n«* ba»r¦\nc", Act::Drag, u"a\nr* ba\nc"},
        {"into itself", u"a\n«* b¦a»r\nc", Act::Drag, u"a\n* bar\nc"},
        {"up", u"a¦\n* one\n* «two»\nc", Act::Drag, u"atwo\n* one\n* \nc"},
        {"down over lines of all kinds", u"# T\n«* one\n»- two #tag\n[t](http://a.example/)\n¦+ c", Act::Drag,
         u"# T\n- two #tag\n[t](http://a.example/)\n* one\n+ c"},
        {"up over lines of all kinds", u"¦# T\n- two #tag\n[t](http://a.example/)\n«* one\n»+ c", Act::Drag,
         u"* one\n# T\n- two #tag\n[t](http://a.example/)\n+ c"},
        {"within a line with a tag", u"«one »two #tag¦ three", Act::Drag, u"two #tagone  three"},
    };
    for (const Case &testCase : cases) {
        EXPECT_EQ(outcome(testCase), QString::fromUtf16(testCase.expected)) << testCase.name;
    }
}

TEST(NoteTextViewTaking, WhatIsWrittenOverASelectionTakesWhatDeleteWould)
{
    const Case cases[] = {
        {"a link that is touched", u"see [tit«le](http://a.example/) a»nd", Act::Type, u"see XYnd"},
        {"by pasting", u"see [tit«le](http://a.example/) a»nd", Act::Paste, u"see XYnd"},
        {"by a new line", u"see [tit«le](http://a.example/) a»nd", Act::Return, u"see \nnd"},
        {"by a tab", u"see [tit«le](http://a.example/) a»nd", Act::Tab, u"see \tnd"},
        {"by an input method", u"see [tit«le](http://a.example/) a»nd", Act::Commit, u"see XYnd"},
        {"a link's title", u"see [ti«tl»e](http://a.example/)", Act::Type, u"see [tiXYe](http://a.example/)"},
        {"a marker takes its blank", u"a\n«*» bar", Act::Type, u"a\nXYbar"},
        {"from a line into an item", u"line «foo\n* b»ar", Act::Paste, u"line XYar"},
        {"a heading's start", u"a\n«# He»ad", Act::Commit, u"a\nXYad"},
        {"a box that is done", u"a «b\n+ d»one", Act::Return, u"a \none"},
        {"in the other syntax", u"a «b\n- [x] d»one", Act::Type, u"a XYone", 1},
        {"a drop takes nothing", u"see [tit«le](http://a.example/) a¦n»d", Act::Drop,
         u"see [title](http://a.example/) aXYnd"},
        {"nor at the selection's edge", u"see «on¦»e", Act::Drop, u"see onXYe"},
    };
    for (const Case &testCase : cases) {
        EXPECT_EQ(outcome(testCase), QString::fromUtf16(testCase.expected)) << testCase.name;
    }
}

TEST(NoteTextViewTaking, AnInputMethodReplacesTheLettersThatItNames)
{
    EditorFixture editor(0, u"see [title](http://a.example/) x"_s);
    const qint64 caret = editor.buffer().indexOf(u"title") + 5;
    editor.view().setSelectedRange({caret, 0});
    QInputMethodEvent commit;
    commit.setCommitString(u"name"_s, /*replaceFrom=*/-5, /*replaceLength=*/5);
    QCoreApplication::sendEvent(&editor.view(), &commit);
    EXPECT_EQ(editor.text(), u"see [name](http://a.example/) x");
}

TEST(NoteTextViewTaking, ACopyHasWhatACutTakes)
{
    const char16_t *cases[] = {u"a\n«* b»ar", u"see [tit«le](http://a.example/) a»nd", u"«#» x", u"a «#ff8000 b» c"};
    for (const char16_t *marked : cases) {
        QString text = QString::fromUtf16(marked);
        const qsizetype start = text.indexOf(kStart);
        const qsizetype limit = text.remove(kStart).indexOf(kLimit);
        EditorFixture editor(0, text.remove(kLimit));
        const qint64 from = placeOf(editor, start);
        editor.view().setSelectedRange({from, placeOf(editor, limit) - from});
        editor.press(Qt::Key_C, Qt::ControlModifier);
        const QString copied = QGuiApplication::clipboard()->text();
        editor.press(Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), copied);
        EXPECT_EQ(editor.text().size() + copied.size(), text.size()) << text.toStdString();
    }
}

TEST(NoteTextViewTaking, ADoubleClickOnAMarkerSelectsWhatItBegins)
{
    EditorFixture editor(0, u"a\n* one two\nb"_s);
    const QRectF marker = editor.view().caretRectInViewport(2);
    QTest::mouseDClick(editor.view().viewport(), Qt::LeftButton, {},
                       QPointF(marker.left() + 3, marker.center().y()).toPoint());
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{2, 10}));
}

TEST(NoteTextViewTaking, WhatIsCutAndPastedInItsPlaceIsThereAgain)
{
    static const QRegularExpression emptyHeading(u"(^|\\n)#{1,6} #*$"_s);
    const TestSeed seed;
    auto random = seed.generator();
    const auto number = [&random](qsizetype limit) { return qsizetype(random() % size_t(limit)); };
    EditorFixture native(0);
    EditorFixture markdown(1);
    for (int round = 0; round < 2000; ++round) {
        const QString text = randomText(random);
        EditorFixture &editor = round % 2 == 0 ? native : markdown;
        editor.view().loadString(text);
        ASSERT_EQ(editor.text(), text);
        const qint64 length = editor.view().textStorage().length();
        const qint64 one = number(length + 1);
        const qint64 other = number(length + 1);
        const auto &storage = editor.view().textStorage();
        const qsizetype start = storage.stringWithExpandedTextAttachmentsWithRange({0, std::min(one, other)}).size();
        editor.view().setSelection(one, other);
        editor.press(Qt::Key_X, Qt::ControlModifier);
        if (editor.text() == text) {
            continue; // nothing was selected, or nothing that can be taken
        }
        const QString taken = QGuiApplication::clipboard()->text();
        const QString left = editor.text();
        const auto isFrom = [&](qsizetype place) { return QString(left).insert(place, taken) == text; };
        qsizetype place = start;
        while (place > 0 && !isFrom(place)) {
            --place;
        }
        ASSERT_TRUE(isFrom(place)) << "round " << round << ": what is gone is what was copied: " << taken.toStdString();
        if (storage.stringWithExpandedTextAttachmentsWithRange({0, editor.view().caret()}).size() != place) {
            continue; // what was on either side has become one attachment, and the caret is beside it
        }
        if (taken.startsWith(u'#') && emptyHeading.match(text.first(place)).hasMatch()) {
            continue; // a heading that is pasted there takes the marker's place
        }
        editor.press(Qt::Key_V, Qt::ControlModifier);
        ASSERT_EQ(editor.text(), text) << "round " << round << ", " << taken.toStdString();
        editor.view().undo();
        editor.view().undo();
        ASSERT_EQ(editor.text(), text) << "round " << round;
    }
}

TEST(NoteTextViewTaking, WhatIsWrittenStandsWhereTheCopiedTextWas)
{
    const TestSeed seed;
    auto random = seed.generator();
    const auto number = [&random](qsizetype limit) { return qsizetype(random() % size_t(limit)); };
    constexpr Act kActs[] = {Act::Type, Act::Paste, Act::Commit, Act::Tab};
    EditorFixture native(0);
    EditorFixture markdown(1);
    for (int round = 0; round < 2000; ++round) {
        const QString text = randomText(random);
        EditorFixture &editor = round % 2 == 0 ? native : markdown;
        editor.view().loadString(text);
        const auto &storage = editor.view().textStorage();
        editor.view().setSelection(number(storage.length() + 1), number(storage.length() + 1));
        const NSRange selection = editor.view().selectedRange();
        if (selection.length == 0 || !storage.canEditTextInRange(selection)) {
            continue;
        }
        const qsizetype start = storage.stringWithExpandedTextAttachmentsWithRange({0, selection.location}).size();
        editor.press(Qt::Key_C, Qt::ControlModifier);
        const QString taken = QGuiApplication::clipboard()->text();
        const Act act = kActs[number(std::size(kActs))];
        if (act == Act::Tab && storage.string().sliced(selection.location, selection.length).contains(u'\n')) {
            continue; // several lines are moved
        }
        const QString with = act == Act::Tab ? u"\t"_s : written();
        write(editor, act, 0);
        const QString now = editor.text();
        bool isInPlace = false;
        for (qsizetype place = start; place >= 0 && !isInPlace; --place) {
            isInPlace = text.sliced(place, std::min(taken.size(), text.size() - place)) == taken &&
                        QString(text).replace(place, taken.size(), with) == now;
        }
        ASSERT_TRUE(isInPlace) << "round " << round << ": in place of \"" << taken.toStdString() << "\" from " << start
                               << " in\n"
                               << text.toStdString() << "\nthere is\n"
                               << now.toStdString();
        editor.view().undo();
        ASSERT_EQ(editor.text(), text) << "round " << round << ": one step back";
    }
}
