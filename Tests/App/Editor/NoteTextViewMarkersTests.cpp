// Where keys, clicks and the opening of a note leave the caret beside what lines begin with: not where the next letter
// would break a heading or a to-do.

#include "EditorPaneFixture.h"

#include <gtest/gtest.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace quib::tests {

class CaretAtMarkers : public EditorPaneFixture
{
protected:
    /// A note with the caret where "|" stands in its text.
    void showAt(const QString &marked)
    {
        const qsizetype caret = marked.indexOf(u'|');
        show(QString(marked).remove(u'|'));
        const auto &storage = view().textStorage();
        qint64 place = 0;
        while (place < storage.length() &&
               storage.stringWithExpandedTextAttachmentsWithRange({0, place}).size() < caret) {
            ++place;
        }
        view().setSelectedRange({place, 0});
    }
};

TEST_F(CaretAtMarkers, HomeGoesBehindTheMarkerAndThenBeforeIt)
{
    struct Case
    {
        bool isMarkdown;
        QString text, once, twice;
    };
    const Case cases[] = {
        {false, u"a\n# head|"_s, u"a\n# |head"_s, u"a\n|# head"_s},
        {false, u"### he|ad"_s, u"### |head"_s, u"|### head"_s},
        {false, u"a\n- mil|k\nb"_s, u"a\n- |milk\nb"_s, u"a\n|- milk\nb"_s},
        {false, u"+ milk|"_s, u"+ |milk"_s, u"|+ milk"_s},
        {false, u"a\n\t\t- c|"_s, u"a\n\t\t- |c"_s, u"a\n|\t\t- c"_s},
        {false, u"a\n\t* item|"_s, u"a\n\t* |item"_s, u"a\n|\t* item"_s},
        {false, u"a\n1. one|"_s, u"a\n1. |one"_s, u"a\n|1. one"_s},
        {false, u"a\n> said|"_s, u"a\n> |said"_s, u"a\n|> said"_s},
        {false, u"a\n* |"_s, u"a\n|* "_s, u"a\n* |"_s},
        {false, u"a\n|* item"_s, u"a\n* |item"_s, u"a\n|* item"_s},
        {false, u"a\n\tindented|"_s, u"a\n|\tindented"_s, u"a\n|\tindented"_s},
        {false, u"a\nplain|"_s, u"a\n|plain"_s, u"a\n|plain"_s},
        {false, u"a\n* \u05D0\u05D1\u05D2|"_s, u"a\n* |\u05D0\u05D1\u05D2"_s, u"a\n|* \u05D0\u05D1\u05D2"_s},
        {true, u"a\n## head|"_s, u"a\n## |head"_s, u"a\n|## head"_s},
        {true, u"a\n- [ ] milk|"_s, u"a\n- [ ] |milk"_s, u"a\n|- [ ] milk"_s},
        {true, u"a\n\t- [x] milk|"_s, u"a\n\t- [x] |milk"_s, u"a\n|\t- [x] milk"_s},
        {true, u"a\n- item|"_s, u"a\n- |item"_s, u"a\n|- item"_s},
        {true, u"a\n1. one|"_s, u"a\n1. |one"_s, u"a\n|1. one"_s},
        {true, u"a\n> said|"_s, u"a\n> |said"_s, u"a\n|> said"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.text.toStdString());
        preferences->setMarkdownCompatibilityMode(testCase.isMarkdown);
        showAt(testCase.text);
        press(Qt::Key_Home);
        EXPECT_EQ(marked(), testCase.once);
        press(Qt::Key_Home);
        EXPECT_EQ(marked(), testCase.twice);
    }
}

TEST_F(CaretAtMarkers, AWrappedLineHasTheMarkerOnItsFirstRowAlone)
{
    show(u"- "_s + u"many words "_s.repeated(40));
    const qint64 end = view().caret();
    press(Qt::Key_Home);
    EXPECT_GT(view().caret(), 100);
    EXPECT_LT(view().caret(), end);
    view().setSelectedRange({10, 0});
    press(Qt::Key_Home);
    EXPECT_EQ(view().caret(), 2);
}

TEST_F(CaretAtMarkers, HomeSelectsUpToTheMarkerAndThenWithIt)
{
    showAt(u"a\n- milk|"_s);
    press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(marked(), u"a\n- [milk]"_s);
    press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(marked(), u"a\n[- milk]"_s);
    showAt(u"# a\n- milk|"_s);
    press(Qt::Key_Home, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(marked(), u"[# a\n- milk]"_s);
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(marked(), u"# |a\n- milk"_s);
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(marked(), u"|# a\n- milk"_s);
}

TEST_F(CaretAtMarkers, ArrowsPassAMarkerAndItsBlankAsOne)
{
    struct Case
    {
        bool isMarkdown;
        QString text;
        std::vector<QString> places; ///< forwards, from the start of the text
    };
    const Case cases[] = {
        {false, u"\t\t- c"_s, {u"|\t\t- c"_s, u"\t|\t- c"_s, u"\t\t|- c"_s, u"\t\t- |c"_s, u"\t\t- c|"_s}},
        {false, u"# a\n* b"_s, {u"|# a\n* b"_s, u"# |a\n* b"_s, u"# a|\n* b"_s, u"# a\n|* b"_s, u"# a\n* |b"_s}},
        {false, u"+  c"_s, {u"|+  c"_s, u"+ | c"_s, u"+  |c"_s}},
        {false, u"* \u05D0\u05D1"_s, {u"|* \u05D0\u05D1"_s, u"* |\u05D0\u05D1"_s, u"* \u05D0|\u05D1"_s}},
        {true, u"- [ ] c"_s, {u"|- [ ] c"_s, u"- [ ] |c"_s, u"- [ ] c|"_s}},
        {true, u"- c"_s, {u"|- c"_s, u"- |c"_s}},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.text.toStdString());
        preferences->setMarkdownCompatibilityMode(testCase.isMarkdown);
        showAt(u'|' + testCase.text);
        const bool isRightToLeft = view().layoutManager().isRightToLeft(0);
        for (size_t i = 1; i < testCase.places.size(); ++i) {
            press(isRightToLeft ? Qt::Key_Left : Qt::Key_Right);
            EXPECT_EQ(marked(), testCase.places[i]);
        }
        for (size_t i = testCase.places.size() - 1; i-- > 0;) {
            press(isRightToLeft ? Qt::Key_Right : Qt::Key_Left);
            EXPECT_EQ(marked(), testCase.places[i]);
        }
    }
    showAt(u"a\n|- c"_s);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(marked(), u"a\n[- ]c"_s);
}

TEST_F(CaretAtMarkers, NeitherUpAndDownNorAClickGetBetweenAMarkerAndItsBlank)
{
    show(u"- one\n* two\n# head\n"_s + u"letters"_s);
    const auto isBetween = [this] {
        const qint64 caret = view().caret();
        return caret > 0 && buffer()[caret - 1] == QChar(0xFFFC) && buffer()[caret] == u' ';
    };
    const double width = view().viewport()->width();
    const double lines = view().caretRectInViewport(view().caret()).bottom();
    for (double y = view().caretRectInViewport(0).center().y(); y < lines; y += 4) {
        for (double x = 1; x < std::min(width, 200.0); ++x) {
            const QPointF point(x, y);
            if (view().layoutManager().attachmentAtPoint(point)) {
                continue; // a box would be ticked
            }
            QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, point.toPoint());
            ASSERT_FALSE(isBetween()) << x << ", " << y << ": " << marked().toStdString();
        }
    }
    for (int column = 0; column <= 7; ++column) {
        view().setSelectedRange({view().textStorage().length() - column, 0});
        for (int row = 0; row < 3; ++row) {
            press(Qt::Key_Up);
            ASSERT_FALSE(isBetween()) << marked().toStdString();
        }
    }
}

TEST_F(CaretAtMarkers, ANoteOpensWhereItsHeadingIsWrittenOn)
{
    struct Case
    {
        bool isMarkdown;
        QString text, expected;
    };
    const Case cases[] = {
        {false, u"# W1\ntext"_s, u"# x|W1\ntext"_s},
        {false, u"## W1"_s, u"## x|W1"_s},
        {false, u"- milk"_s, u"- x|milk"_s},
        {false, u"plain"_s, u"x|plain"_s},
        {false, u""_s, u"x|"_s},
        {false, u"# "_s, u"# x|"_s},
        {true, u"# W1\ntext"_s, u"# x|W1\ntext"_s},
        {true, u"- [ ] milk"_s, u"- [ ] x|milk"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.text.toStdString());
        preferences->setMarkdownCompatibilityMode(testCase.isMarkdown);
        const auto note = makeNote(testCase.text);
        save();
        pane->setNote(note);
        type(u"x"_s);
        EXPECT_EQ(marked(), testCase.expected);
    }
}

TEST_F(CaretAtMarkers, ANoteThatWasLeftBeforeItsMarkerIsThereAgain)
{
    const auto note = show(u"# One"_s);
    view().setSelectedRange({0, 0});
    show(u"# Two"_s);
    pane->setNote(note);
    EXPECT_EQ(marked(), u"|# One"_s);
}

TEST_F(CaretAtMarkers, ReturnAfterStepsFromTheStartKeepsBothLinesToDos)
{
    showAt(u"a\n\t\t- c|"_s);
    press(Qt::Key_Home);
    press(Qt::Key_Home);
    for (int step = 0; step < 3; ++step) {
        press(Qt::Key_Right);
    }
    press(Qt::Key_Return);
    EXPECT_EQ(shown(), u"a\n\t\t- \n\t\t- c"_s);
}

} // namespace quib::tests
