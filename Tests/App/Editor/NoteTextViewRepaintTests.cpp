// What the view of a note paints again: no more than what changed, and all of that.

#include "EditorFixture.h"
#include "PaintRecorder.h"

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace quib::tests;

namespace {

QString longText()
{
    QString text =
        u"# Title\nSome words in a paragraph that is long enough to be wrapped into a few lines of the view, "
        "and some more of them so that it surely is, with *bold* ones and a #tag among them.\n"_s;
    for (int i = 0; i < 40; ++i) {
        text += u"- item %1\n> a quote\n> goes on\n```\ncode %1\n```\nplain words %1\n"_s.arg(i);
    }
    return text;
}

/// What is on the screen now.
QImage seen(EditorFixture &editor)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    const QWidget *viewport = editor.view().viewport();
    return viewport->screen()
        ->grabWindow(editor.view().winId(), 0, 0, viewport->width(), viewport->height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

QImage paintedWhole(EditorFixture &editor)
{
    return editor.painted().convertToFormat(QImage::Format_RGB32);
}

void turnWheel(EditorFixture &editor, QPoint pixels, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPointF at(50, 50);
    QWheelEvent wheel(at, editor.view().viewport()->mapToGlobal(at), modifiers ? QPoint() : pixels, pixels,
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(editor.view().viewport(), &wheel);
}

/// Whether two pixels look different. A corner that is drawn as part of another shape may be a shade off.
bool isDifferent(QRgb a, QRgb b)
{
    constexpr int kShade = 12;
    return std::abs(qRed(a) - qRed(b)) > kShade || std::abs(qGreen(a) - qGreen(b)) > kShade ||
           std::abs(qBlue(a) - qBlue(b)) > kShade;
}

/// The rows where two pictures differ, as first and last; nothing where they are the same.
std::optional<std::pair<int, int>> differingRows(const QImage &a, const QImage &b)
{
    std::optional<std::pair<int, int>> rows;
    for (int y = 0; y < a.height(); ++y) {
        const auto *left = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *right = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        if (!std::equal(left, left + a.width(), right, [](QRgb one, QRgb other) { return !isDifferent(one, other); })) {
            rows = {rows ? rows->first : y, y};
        }
    }
    return rows;
}

} // namespace

TEST(NoteTextViewRepaint, TheScreenShowsWhatAPaintOfAllWould)
{
    auto random = TestSeed().generator();
    EditorFixture editor(0, longText(), {420, 360});
    ASSERT_FALSE(seen(editor).isNull());
    QStringList done;
    for (int round = 0; round < 250; ++round) {
        switch (random() % 16) {
        case 0:
            editor.press(Qt::Key_Return);
            done << u"return"_s;
            break;
        case 1:
            editor.press(Qt::Key_Backspace);
            done << u"backspace"_s;
            break;
        case 2:
        case 3: {
            constexpr int kKeys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_End};
            editor.press(kKeys[random() % 5], random() % 2 == 0 ? Qt::ShiftModifier : Qt::NoModifier);
            done << u"move"_s;
            break;
        }
        case 4: {
            const qint64 length = editor.view().textStorage().length();
            editor.view().setSelection(qint64(random() % quint64(length)), qint64(random() % quint64(length)));
            done << u"select"_s;
            break;
        }
        case 5:
        case 6:
        case 7: {
            const int distance = int(random() % 300) - 150;
            turnWheel(editor, {0, distance});
            done << u"scroll %1"_s.arg(distance);
            break;
        }
        case 8:
            editor.press(Qt::Key_PageDown);
            done << u"page"_s;
            break;
        case 9:
            editor.press(Qt::Key_Z, Qt::ControlModifier);
            done << u"undo"_s;
            break;
        case 10: {
            const qint64 caret = editor.view().caret();
            if (const auto box = editor.view().checkBoxInParagraph(caret)) {
                editor.view().toggleCheckBox(*box);
            }
            done << u"tick"_s;
            break;
        }
        case 11:
            editor.type(u"```"_s);
            done << u"fence"_s;
            break;
        case 12:
            if (random() % 4 == 0) {
                editor.view().resize(300 + int(random() % 200), 360);
                done << u"resize"_s;
            }
            break;
        default:
            editor.type(QString(u"ab c*#-"[random() % 7]));
            done << u"type"_s;
            break;
        }
        const QImage screen = seen(editor);
        const auto rows = differingRows(screen, paintedWhole(editor));
        if (rows && qEnvironmentVariableIsSet("QUIB_PICTURES")) {
            screen.save(qEnvironmentVariable("QUIB_PICTURES") + u"/screen.png"_s);
            paintedWhole(editor).save(qEnvironmentVariable("QUIB_PICTURES") + u"/whole.png"_s);
        }
        ASSERT_FALSE(rows) << "round " << round << ", rows " << rows->first << " to " << rows->second << " after "
                           << done.mid(std::max<qsizetype>(0, done.size() - 4)).join(u", "_s).toStdString();
        ASSERT_GE(editor.view().verticalScrollBar()->value(), 0);
    }
}

TEST(NoteTextViewRepaint, AKeyPaintsItsParagraphAndABlinkTheCaret)
{
    EditorFixture editor(0, longText());
    editor.view().setSelectedRange({editor.buffer().indexOf(u"plain words 0"), 0});
    editor.view().scrollRangeToVisible(editor.view().selectedRange());
    PaintRecorder recorder(editor);
    editor.type(u"a"_s);
    EXPECT_LT(recorder.take().boundingRect().height(), 100);
    editor.type(u"b"_s);
    const QRegion key = recorder.take();
    EXPECT_FALSE(key.isEmpty());
    EXPECT_LT(key.boundingRect().height(), 100);
    editor.press(Qt::Key_Left);
    const QRegion moved = recorder.take();
    EXPECT_FALSE(moved.isEmpty());
    EXPECT_LT(moved.boundingRect().width(), 40);
    EXPECT_LT(moved.boundingRect().height(), 50);
    editor.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_LT(recorder.take().boundingRect().height(), 60);
    editor.view().setSelection(editor.view().caret(), editor.view().caret());
    (void)recorder.take();
    editor.view().setSelectedRange(editor.view().selectedRange());
    EXPECT_TRUE(recorder.take().isEmpty()) << "nothing changed";
}

TEST(NoteTextViewRepaint, ScrollingPaintsWhatComesIntoView)
{
    EditorFixture editor(0, longText());
    PaintRecorder recorder(editor);
    turnWheel(editor, {0, -20});
    EXPECT_EQ(editor.view().verticalScrollBar()->value(), 20) << "the room above the text scrolls too";
    const QRegion strip = recorder.take();
    EXPECT_EQ(strip.boundingRect().bottom(), editor.view().viewport()->height() - 1);
    EXPECT_LE(strip.boundingRect().height(), 24);
    turnWheel(editor, {0, 200});
    EXPECT_EQ(editor.view().verticalScrollBar()->value(), 0);
    EXPECT_LE(recorder.take().boundingRect().height(), 24);
}

TEST(NoteTextViewRepaint, AnyWayOfAFineWheelPaintsNoMoreThanComesIntoView)
{
    // Where a pixel is no whole point, small ways add up to one that is whole pixels.
    EditorFixture editor(0, longText());
    PaintRecorder recorder(editor);
    int turned = 0;
    for (const int way : {7, 1, 1, 1, 13, 3, 2, 5, 9, 11, 1, 30}) {
        turnWheel(editor, {0, -way});
        turned += way;
        EXPECT_LE(recorder.take().boundingRect().height(), way + 8) << way;
        EXPECT_NEAR(editor.view().verticalScrollBar()->value(), turned, 4);
    }
    editor.press(Qt::Key_End, Qt::ControlModifier);
    (void)recorder.take();
    turnWheel(editor, {0, 17});
    EXPECT_LE(recorder.take().boundingRect().height(), 25) << "from the end too";
    EXPECT_EQ(differingRows(seen(editor), paintedWhole(editor)), std::nullopt);
}

TEST(NoteTextViewRepaint, ATickPaintsItsBox)
{
    EditorFixture editor(0, u"first\n- a task\n- another\n"_s + u"words\n"_s.repeated(30));
    PaintRecorder recorder(editor);
    const qint64 box = editor.buffer().indexOf(u"a task"_s) - 2;
    ASSERT_TRUE(editor.view().checkBoxInParagraph(box));
    editor.view().toggleCheckBox(*editor.view().checkBoxInParagraph(box));
    const QRegion painted = recorder.take();
    EXPECT_FALSE(painted.isEmpty());
    EXPECT_LT(painted.boundingRect().height(), 100);
    EXPECT_EQ(differingRows(seen(editor), paintedWhole(editor)), std::nullopt);
    (void)recorder.take();
    editor.view().setNeedsDisplay();
    EXPECT_TRUE(recorder.take().isEmpty()) << "nothing changed";
}

TEST(NoteTextViewRepaint, TheCaretTellsTheDirectionWhereBothAreWritten)
{
    const QString text = u"abc \u05D0\u05D1\u05D2 def"_s;
    EditorFixture editor(0, text + u"\nabc\n\u05D0\u05D1\u05D2"_s);
    // How much ink the caret has at its sides, in its upper part.
    const auto inkBeside = [&](qint64 location, bool right) {
        editor.view().setSelectedRange({editor.view().textStorage().length(), 0});
        const QImage without = paintedWhole(editor);
        editor.view().setSelectedRange({location, 0});
        const QImage with = paintedWhole(editor);
        const QRectF caret = editor.view().caretRectInViewport(location);
        int ink = 0;
        for (int step = 3; step <= 5; ++step) {
            const double ratio = editor.view().devicePixelRatioF();
            const QPoint at((QPointF(caret.left() + (right ? step : -step), caret.top() + 2.5) * ratio).toPoint());
            ink += isDifferent(with.pixel(at), without.pixel(at)) ? 1 : 0;
        }
        return ink;
    };
    EXPECT_GT(inkBeside(2, /*right=*/true), 0);
    EXPECT_EQ(inkBeside(2, /*right=*/false), 0);
    EXPECT_GT(inkBeside(6, /*right=*/false), 0);
    EXPECT_EQ(inkBeside(6, /*right=*/true), 0);
    const qint64 plain = text.size() + 2;
    EXPECT_EQ(inkBeside(plain, true) + inkBeside(plain, false), 0) << "one direction needs no mark";
    EXPECT_EQ(inkBeside(plain + 5, true) + inkBeside(plain + 5, false), 0);
    // What the mark was drawn on is painted again when the caret goes.
    for (qint64 location = 0; location < text.size(); ++location) {
        editor.view().setSelectedRange({location, 0});
        EXPECT_EQ(differingRows(seen(editor), paintedWhole(editor)), std::nullopt) << location;
    }
}

TEST(NoteTextViewRepaint, WhatIsSeenMovesByJustAsMuchAsIsScrolled)
{
    // Headers and boxes are higher than their estimates: from the end upwards, nothing may jump.
    EditorFixture editor(0, longText().repeated(3), {420, 360});
    editor.press(Qt::Key_End, Qt::ControlModifier);
    QImage before = seen(editor);
    for (int step = 0; step < 60; ++step) {
        turnWheel(editor, {0, 48});
        const QImage now = seen(editor);
        const int moved = qRound(48 * editor.view().devicePixelRatioF());
        const auto rows = differingRows(now.copy(0, moved, now.width(), now.height() - moved),
                                        before.copy(0, 0, now.width(), now.height() - moved));
        ASSERT_FALSE(rows) << "step " << step << ", rows " << rows->first << " to " << rows->second;
        before = now;
    }
}

TEST(NoteTextViewRepaint, AWheelOfStepsComesSmoothlyToItsPlace)
{
    EditorFixture editor(0, longText());
    const auto turn = [&](int steps) {
        const QPointF at(50, 50);
        QWheelEvent wheel(at, editor.view().viewport()->mapToGlobal(at), QPoint(), QPoint(0, 120 * steps), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(editor.view().viewport(), &wheel);
    };
    const QScrollBar &bar = *editor.view().verticalScrollBar();
    const int step = 3 * bar.singleStep();
    turn(-1);
    turn(-1); // what is left of the way is added to
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar.value() == 2 * step; })) << bar.value();
    turn(-1);
    turn(1); // back at once, whatever is left of the way
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar.value() <= 2 * step; })) << bar.value();
    for (int turns = 0; turns < 5; ++turns) {
        turn(1);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar.value() == 0; })) << bar.value();
    EXPECT_EQ(differingRows(seen(editor), paintedWhole(editor)), std::nullopt);
}

TEST(NoteTextViewRepaint, TheLineAtTheTopStaysThereWhenTheWidthChanges)
{
    EditorFixture editor(0, u"some words to be wrapped "_s.repeated(400), {600, 300});
    turnWheel(editor, {0, -500});
    const qint64 first = editor.view().locationAtViewportPoint({30, 4});
    for (const int width : {300, 800, 600}) {
        editor.view().resize(width, 300);
        const qint64 now = editor.view().locationAtViewportPoint({30, 4});
        EXPECT_LT(std::abs(now - first), 120) << width;
        EXPECT_EQ(differingRows(seen(editor), paintedWhole(editor)), std::nullopt);
    }
}

TEST(NoteTextViewRepaint, TheWheelWithControlAsksForOtherLetters)
{
    EditorFixture editor(0, longText());
    int asked = 0;
    QObject::connect(&editor.view(), &QBNoteTextView::zoomWasAsked, &editor.view(),
                     [&asked](int steps) { asked += steps; });
    turnWheel(editor, {0, 120}, Qt::ControlModifier);
    EXPECT_EQ(asked, 1);
    for (int part = 0; part < 8; ++part) {
        turnWheel(editor, {0, -30}, Qt::ControlModifier);
    }
    EXPECT_EQ(asked, -1) << "fine wheels add up";
    EXPECT_EQ(editor.view().verticalScrollBar()->value(), 0);
}
