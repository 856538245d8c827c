// Words that are marked as misspelt in the view of a note: where their marks go when the text is edited, and what is
// painted again.

#include "EditorFixture.h"
#include "PaintRecorder.h"

#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib::tests;

TEST(NoteTextViewMarks, GoWithTheTextThatTheyStandUnder)
{
    struct Case
    {
        const char *what;
        NSRange replaced;
        QString by;
        std::vector<NSRange> left;
    };
    const Case cases[] = {
        {"an insertion before moves them", {0, 0}, u"xx"_s, {{6, 3}, {12, 4}}},
        {"one between moves the later", {8, 0}, u"x"_s, {{4, 3}, {11, 4}}},
        {"one within makes it longer", {5, 0}, u"x"_s, {{4, 4}, {11, 4}}},
        {"one at its start moves it", {4, 0}, u"x"_s, {{5, 3}, {11, 4}}},
        {"one at its end leaves it", {7, 0}, u"x"_s, {{4, 3}, {11, 4}}},
        {"taking its start cuts it", {3, 2}, u""_s, {{3, 2}, {8, 4}}},
        {"taking its end cuts it", {6, 2}, u""_s, {{4, 2}, {8, 4}}},
        {"taking it takes it", {3, 5}, u"abc"_s, {{8, 4}}},
        {"taking from one into the other cuts both", {6, 6}, u"-"_s, {{4, 2}, {7, 2}}},
        {"what replaces its middle belongs to it", {5, 1}, u"xyz"_s, {{4, 5}, {12, 4}}},
    };
    for (const Case &each : cases) {
        EditorFixture editor(0, u"one twq or thrr four"_s);
        editor.view().setSpellingMarks({{10, 4}, {4, 3}, {18, 9}, {-1, 2}, {2, 0}});
        ASSERT_EQ(editor.view().spellingMarks(), (std::vector<NSRange>{{4, 3}, {10, 4}}));
        editor.view().textStorage().replaceCharactersInRange(each.replaced, each.by);
        EXPECT_EQ(editor.view().spellingMarks(), each.left) << each.what;
    }
}

TEST(NoteTextViewMarks, EveryCharacterThatStaysKeepsWhetherItIsMarked)
{
    auto random = TestSeed().generator();
    const auto isMarked = [](const std::vector<NSRange> &marks, qint64 place) {
        return std::ranges::any_of(marks,
                                   [place](NSRange mark) { return mark.location <= place && place < mark.limit(); });
    };
    EditorFixture editor;
    for (int round = 0; round < 300; ++round) {
        QString text;
        std::vector<NSRange> marks;
        for (int word = 0; word < 12; ++word) {
            const NSRange range = {text.size(), 1 + qint64(random() % 4)};
            text += QString(range.length, QChar(u'a' + word)) + u' ';
            if (random() % 2 != 0) {
                marks.push_back(range);
            }
        }
        editor.view().loadString(text);
        editor.view().setSpellingMarks(marks);
        const qint64 start = qint64(random() % quint64(text.size()));
        const NSRange replaced = {start, qint64(random() % quint64(text.size() - start))};
        const QString by(qsizetype(random() % 4), u'.');
        editor.view().textStorage().replaceCharactersInRange(replaced, by);
        const std::vector<NSRange> &left = editor.view().spellingMarks();
        for (qint64 place = 0; place < text.size(); ++place) {
            if (place < replaced.location || place >= replaced.limit()) {
                const qint64 now = place < replaced.location ? place : place + by.size() - replaced.length;
                ASSERT_EQ(isMarked(left, now), isMarked(marks, place)) << "round " << round << ", place " << place;
            }
        }
    }
}

TEST(NoteTextViewMarks, AreReplacedInARangeAlone)
{
    EditorFixture editor(0, u"one two three four"_s);
    editor.view().setSpellingMarks({{0, 3}, {4, 3}, {8, 5}});
    editor.view().setSpellingMarks({{5, 1}}, {4, 4});
    EXPECT_EQ(editor.view().spellingMarks(), (std::vector<NSRange>{{0, 3}, {5, 1}, {8, 5}}));
    EXPECT_EQ(editor.view().spellingMarkAtLocation(9), (NSRange{8, 5}));
    EXPECT_EQ(editor.view().spellingMarkAtLocation(14), std::nullopt);
    editor.view().loadString(u"other"_s);
    EXPECT_TRUE(editor.view().spellingMarks().empty());
}

TEST(NoteTextViewMarks, ArePaintedAndNothingElseIs)
{
    QString text = u"A few wrods\n"_s;
    for (int line = 0; line < 60; ++line) {
        text += u"and more of them\n"_s;
    }
    EditorFixture editor(0, text);
    const QImage plain = editor.painted();
    PaintRecorder recorder(editor);
    (void)recorder.take();
    editor.view().setSpellingMarks({{6, 5}, {text.size() - 5, 4}});
    const QRegion painted = recorder.take();
    const QImage marked = editor.painted();
    EXPECT_NE(marked, plain);
    QRegion different;
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            if (plain.pixelColor(x, y) != marked.pixelColor(x, y)) {
                different += QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_TRUE(different.subtracted(painted).isEmpty()) << "all that looks different was painted";
    EXPECT_LT(painted.boundingRect().height(), 60) << "and little more than the word";
    (void)recorder.take();
    editor.view().setSpellingMarks({{6, 5}, {text.size() - 5, 4}});
    EXPECT_TRUE(recorder.take().isEmpty()) << "the same marks paint nothing";
    editor.view().setSpellingMarks({});
    EXPECT_FALSE(recorder.take().isEmpty());
    EXPECT_EQ(editor.painted(), plain);
}
