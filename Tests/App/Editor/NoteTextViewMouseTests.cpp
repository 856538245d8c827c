// The mouse in the view of a note, and what is painted.

#include "EditorFixture.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Support/QtPrinters.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quib::tests;

namespace {

QPoint pointOf(EditorFixture &editor, qint64 location)
{
    const QRectF caret = editor.view().caretRectInViewport(location);
    return QPointF(caret.left() + 2, caret.center().y()).toPoint();
}

void click(EditorFixture &editor, qint64 location, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mouseClick(editor.view().viewport(), Qt::LeftButton, modifiers, pointOf(editor, location));
}

} // namespace

TEST(NoteTextViewMouse, ClicksSelectCharactersWordsAndParagraphs)
{
    EditorFixture editor(0, u"one two three\nnext paragraph"_s);
    click(editor, 5);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{5, 0}));
    click(editor, 9, Qt::ShiftModifier);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{5, 4}));
    QTest::mouseDClick(editor.view().viewport(), Qt::LeftButton, {}, pointOf(editor, 5));
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{4, 3}));
    click(editor, 5);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{0, 14})) << "a third click takes the paragraph";
}

TEST(NoteTextViewMouse, ADragSelectsAndScrollsBeyondTheEdge)
{
    QString text;
    for (int i = 0; i < 200; ++i) {
        text += u"line %1\n"_s.arg(i);
    }
    EditorFixture editor(0, text);
    QWidget *viewport = editor.view().viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, pointOf(editor, 2));
    QTest::mouseMove(viewport, pointOf(editor, 12));
    QMouseEvent move(QEvent::MouseMove, pointOf(editor, 12), viewport->mapToGlobal(pointOf(editor, 12)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{2, 10}));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, pointOf(editor, 12));
}

TEST(NoteTextViewMouse, ADragAfterADoubleClickTakesWholeWords)
{
    EditorFixture editor(0, u"one two three four five"_s);
    QWidget *viewport = editor.view().viewport();
    const auto dragTo = [&](qint64 location) {
        const QPointF at = pointOf(editor, location);
        QMouseEvent move(QEvent::MouseMove, at, viewport->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &move);
    };
    const QPointF press = pointOf(editor, 9);
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, press, viewport->mapToGlobal(press), Qt::LeftButton,
                            Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &doubleClick);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{8, 5}));
    dragTo(15);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{8, 10})) << "three four";
    dragTo(5);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{4, 9})) << "two three";
    EXPECT_EQ(editor.view().caret(), 4);
    dragTo(10);
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{8, 5}));
}

TEST(NoteTextViewMouse, ADropNearTheEdgeScrolls)
{
    EditorFixture editor(0, u"line of words\n"_s.repeated(200));
    QMimeData text;
    text.setText(u"new"_s);
    const QPoint low(80, editor.view().viewport()->height() - 4);
    QDragEnterEvent enter(low, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(editor.view().viewport(), &enter);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.view().verticalScrollBar()->value() > 60; }));
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(editor.view().viewport(), &leave);
    const int left = editor.view().verticalScrollBar()->value();
    QCoreApplication::processEvents();
    EXPECT_EQ(editor.view().verticalScrollBar()->value(), left);
    EXPECT_FALSE(editor.text().contains(u"new"_s));
}

TEST(NoteTextViewMouse, APictureIsAsWideAsTheColumnAtMostAndKeepsItsProportions)
{
    EditorFixture editor(0, u"[image:1/cat.png]\nbelow"_s);
    const auto placed = [&] {
        return editor.view().layoutManager().paragraphOfLocation(0).layout->attachments().at(0);
    };
    auto &image = dynamic_cast<QBImageTextAttachment &>(*placed().attachment);
    image.setAttachmentImageSize({2000, 1000});
    editor.view().layoutManager().invalidateLayoutForRange({0, 1});
    editor.view().setNeedsDisplay();
    const QRectF wide = placed().rect;
    const double below = editor.view().caretRectInViewport(editor.buffer().size()).top();
    EXPECT_LE(wide.width(), editor.view().layoutManager().columnWidth());
    EXPECT_NEAR(wide.width(), 2 * wide.height(), 1);
    editor.view().resize(320, 480);
    EXPECT_LT(placed().rect.width(), wide.width());
    EXPECT_NEAR(placed().rect.width(), 2 * placed().rect.height(), 1);
    EXPECT_LT(editor.view().caretRectInViewport(editor.buffer().size()).top(), below) << "what is below moves up";
}

TEST(NoteTextViewMouse, ACheckboxIsToggledAndTheTextSaysSo)
{
    EditorFixture editor(0, u"- milk\n- bread"_s);
    const auto box = editor.view().layoutManager().paragraphOfLocation(0).layout->attachments().at(0);
    const auto paragraph = editor.view().layoutManager().paragraphOfLocation(0);
    const QPoint center = box.rect.translated(paragraph.origin).center().toPoint();
    QTest::mouseClick(editor.view().viewport(), Qt::LeftButton, {}, center);
    EXPECT_EQ(editor.text(), u"+ milk\n- bread"_s);
    QTest::mouseClick(editor.view().viewport(), Qt::LeftButton, {}, center);
    EXPECT_EQ(editor.text(), u"- milk\n- bread"_s);
}

TEST(NoteTextViewMouse, LinksAreFollowedWithControlAlone)
{
    EditorFixture editor(0, u"see https://example.org/a and #work/plan or [[Other note]] here"_s);
    const QString buffer = editor.buffer();
    click(editor, buffer.indexOf(u"example") + 1);
    EXPECT_TRUE(editor.opened.isEmpty());
    click(editor, buffer.indexOf(u"example") + 1, Qt::ControlModifier);
    click(editor, buffer.indexOf(u"work") + 1, Qt::ControlModifier);
    click(editor, buffer.indexOf(u"Other") + 1, Qt::ControlModifier);
    ASSERT_EQ(editor.opened.size(), 3);
    EXPECT_EQ(editor.opened[0], u"https://example.org/a"_s);
    EXPECT_TRUE(editor.opened[1].startsWith(u"quib://x-callback-url/open-tag?name=work"_s));
    EXPECT_TRUE(editor.opened[2].startsWith(u"quib://x-callback-url/open-note?title=Other"_s));
    click(editor, 1, Qt::ControlModifier);
    EXPECT_EQ(editor.opened.size(), 3);
}

TEST(NoteTextViewPainting, ShowsTheTextTheSelectionAndTheCaret)
{
    EditorFixture editor(0, u"# Title\nSome text with `code` and #tag/sub here.\n\n> A quote\n\n- item\n+ done\n"_s);
    const QImage plain = editor.painted();
    const QColor paper = plain.pixelColor(3, 3);
    int inked = 0;
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            inked += plain.pixelColor(x, y) != paper ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 1500);
    const QRectF caret = editor.view().caretRectInViewport(0);
    EXPECT_NE(plain.pixelColor(caret.center().toPoint()), paper);
    editor.view().selectAll();
    EXPECT_NE(editor.painted(), plain);
    editor.view().setSelectedRange({0, 0});
    EXPECT_EQ(editor.painted(), plain);
    editor.view().setSearchHighlights({{5, 3}}, 0);
    EXPECT_NE(editor.painted(), plain);
    if (const QString folder = qEnvironmentVariable("QUIB_PICTURES"); !folder.isEmpty()) {
        plain.save(folder + u"/editor.png");
    }
}

TEST(NoteTextViewPainting, ScrollsToTheEndOfAVeryLongNoteAndStaysThereWhenTheTopChanges)
{
    QString text;
    for (int i = 0; i < 30'000; ++i) {
        text += u"Line %1 of a long note with some words to fill it.\n"_s.arg(i);
    }
    EditorFixture editor(0, text);
    editor.press(Qt::Key_End, Qt::ControlModifier);
    (void)editor.painted();
    const QRectF caret = editor.view().caretRectInViewport(editor.view().caret());
    EXPECT_GE(caret.top(), 0);
    EXPECT_LE(caret.bottom(), editor.view().viewport()->height());
    const QImage before = editor.painted();
    editor.view().textStorage().replaceCharactersInRange({0, 4}, u"Much longer text\nin the first line");
    EXPECT_EQ(editor.painted(), before);
    editor.press(Qt::Key_Home, Qt::ControlModifier);
    (void)editor.painted();
    EXPECT_EQ(editor.view().verticalScrollBar()->value(), 0);
}

TEST(NoteTextViewPainting, FollowsTheThemeAndTheWidth)
{
    EditorFixture editor(0, u"# Title\nSome text that is wrapped when the window becomes narrow enough for it."_s);
    const double wide = editor.view().layoutManager().height();
    editor.view().resize(260, 480);
    (void)editor.painted();
    EXPECT_GT(editor.view().layoutManager().height(), wide);
    const double small = editor.view().layoutManager().height();
    editor.stack().themeManager()->setZoomedBaseFontSize(30);
    (void)editor.painted();
    EXPECT_GT(editor.view().layoutManager().height(), small * 1.3);
}

TEST(NoteTextViewDrops, TextIsMovedWithinAndCopiedFromElsewhere)
{
    EditorFixture editor(0, u"one two three"_s);
    QMimeData foreign;
    foreign.setText(u"new "_s);
    QDragEnterEvent enter(pointOf(editor, 4), Qt::CopyAction, &foreign, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(editor.view().viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(pointOf(editor, 4), Qt::CopyAction, &foreign, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(editor.view().viewport(), &drop);
    EXPECT_EQ(editor.text(), u"one new two three"_s);
    editor.view().undo();
    EXPECT_EQ(editor.text(), u"one two three"_s);
}
