#include "EditorPaneFixture.h"

#include <Editor/FindBar.h>
#include <Support/TestSeed.h>

#include <QAction>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorFind : public EditorPaneFixture
{
protected:
    [[nodiscard]] FindBar &bar() { return pane->findBar(); }
    void find(const QString &text, const FindOptions &options = {})
    {
        bar().setOptions(options);
        bar().findField().setText(text);
    }
};

TEST_F(EditorFind, OpensByKeyFindsAndGoesRound)
{
    show(u"one two\none three\nONE"_s);
    view().setSelectedRange({0, 0});
    press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(bar().isVisible());
    QTest::keyClicks(&bar().findField(), u"one"_s);
    EXPECT_EQ(bar().status(), u"1 of 3"_s);
    EXPECT_EQ(view().searchHighlights(), QList<NSRange>({{0, 3}, {8, 3}, {18, 3}}));
    EXPECT_EQ(marked(), u"[one] two\none three\nONE"_s);
    QTest::keyClick(&bar().findField(), Qt::Key_Return);
    EXPECT_EQ(marked(), u"one two\n[one] three\nONE"_s);
    QTest::keyClick(&bar().findField(), Qt::Key_Return);
    QTest::keyClick(&bar().findField(), Qt::Key_Return);
    EXPECT_EQ(bar().status(), u"1 of 3"_s);
    QTest::keyClick(&bar().findField(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(bar().status(), u"3 of 3"_s);
    QTest::keyClick(&bar().findField(), Qt::Key_Escape);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(view().searchHighlights().isEmpty());
}

TEST_F(EditorFind, OptionsTellWhatIsFound)
{
    struct Case
    {
        const char *name;
        QString text, query;
        FindOptions options;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"any case", u"Ab ab"_s, u"AB"_s, {}, u"1 of 2"_s},
        {"that case", u"Ab ab"_s, u"ab"_s, {.isCaseSensitive = true}, u"1 of 1"_s},
        {"whole words", u"art artful"_s, u"art"_s, {.findsWholeWords = true}, u"1 of 1"_s},
        {"a pattern", u"a1 b22"_s, u"[a-z]\\d+"_s, {.isRegularExpression = true}, u"1 of 2"_s},
        {"a dot is a dot", u"a.c abc"_s, u"a.c"_s, {}, u"1 of 1"_s},
        {"lines have starts", u"x\nx"_s, u"^x"_s, {.isRegularExpression = true}, u"1 of 2"_s},
        {"nothing there", u"abc"_s, u"d"_s, {}, u"Not found"_s},
        {"no pattern", u"abc"_s, u"(("_s, {.isRegularExpression = true}, u"Not a valid pattern"_s},
        {"empty matches are none", u"abc"_s, u"z*"_s, {.isRegularExpression = true}, u"Not found"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        show(testCase.text);
        bar().open(/*withReplacing=*/false);
        find({});
        find(testCase.query, testCase.options);
        EXPECT_EQ(bar().status(), testCase.expected);
    }
}

TEST_F(EditorFind, AViciousPatternEnds)
{
    show(QString(4000, u'a') + u'!');
    bar().open(/*withReplacing=*/false);
    find(u"(a+)+$x"_s, {.isRegularExpression = true});
    EXPECT_EQ(bar().status(), u"Not found"_s);
}

TEST_F(EditorFind, ReplacesOneAfterAnotherAndUndoes)
{
    const auto note = show(u"cat dog cat"_s);
    view().setSelectedRange({0, 0});
    press(Qt::Key_H, Qt::ControlModifier);
    find(u"cat"_s);
    bar().replaceField().setText(u"cow"_s);
    bar().replaceCurrent();
    EXPECT_EQ(marked(), u"cow dog [cat]"_s);
    bar().replaceCurrent();
    EXPECT_EQ(shown(), u"cow dog cow"_s);
    EXPECT_EQ(bar().status(), u"Not found"_s);
    view().undo();
    EXPECT_EQ(shown(), u"cow dog cat"_s);
    view().undo();
    EXPECT_EQ(shown(), u"cat dog cat"_s);
    view().redo();
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"cow dog cat"_s);
}

TEST_F(EditorFind, ReplacesAllAsOneStepAndKeepsTheMarkup)
{
    const QString text = u"# A title\n- cat and *cat*\n+ cat done\n#cat [[cat]]\n"_s;
    show(text);
    bar().open(/*withReplacing=*/true);
    find(u"cat"_s);
    bar().replaceField().setText(u"c$1ow"_s);
    bar().replaceAll();
    EXPECT_EQ(shown(), QString(text).replace(u"cat"_s, u"c$1ow"_s));
    view().undo();
    EXPECT_EQ(shown(), text);
}

TEST_F(EditorFind, ReplacesAllHoweverMany)
{
    show(u"x "_s.repeated(30'000));
    bar().open(/*withReplacing=*/true);
    find(u"x"_s);
    bar().replaceField().setText(u"yy"_s);
    bar().replaceAll();
    EXPECT_EQ(shown(), u"yy "_s.repeated(30'000));
    EXPECT_EQ(bar().status(), u"30000 replaced"_s);
    // What no note could hold is not begun with.
    find(u"y"_s);
    bar().replaceField().setText(QString(10'000, u'z'));
    bar().replaceAll();
    EXPECT_EQ(bar().status(), u"Too much to replace"_s);
    EXPECT_EQ(shown(), u"yy "_s.repeated(30'000));
}

TEST_F(EditorFind, OpenedAgainItKeepsWhatIsLookedFor)
{
    show(u"a.b and acb"_s);
    view().setSelectedRange({0, 0});
    press(Qt::Key_F, Qt::ControlModifier);
    find(u"a(.)b"_s, {.isRegularExpression = true});
    EXPECT_EQ(marked(), u"[a.b] and acb"_s);
    QTest::keyClick(&bar().findField(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(bar().findField().text(), u"a(.)b"_s);
    // From the text the selection is taken, for what it says.
    view().setFocus();
    press(Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(bar().findField().text(), u"a\\.b"_s);
    EXPECT_EQ(bar().status(), u"1 of 1"_s);
}

TEST_F(EditorFind, TemplatesOfPatternsAreExpanded)
{
    show(u"John Smith\nJane Doe"_s);
    bar().open(/*withReplacing=*/true);
    find(u"^(\\w+) (\\w+)$"_s, {.isRegularExpression = true});
    bar().replaceField().setText(u"$2, $1\\t\\$"_s);
    bar().replaceAll();
    EXPECT_EQ(shown(), u"Smith, John\t$\nDoe, Jane\t$"_s);
}

TEST_F(EditorFind, MarksFollowWhatIsTypedAndTheNote)
{
    show(u"one two one"_s);
    bar().open(/*withReplacing=*/false);
    find(u"one"_s);
    view().replaceText({4, 3}, u"one"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return view().searchHighlights().size() == 3; }));
    show(u"none"_s);
    EXPECT_EQ(view().searchHighlights(), QList<NSRange>({{1, 3}}));
}

TEST_F(EditorFind, ANoteThatCannotBeChangedIsNotReplacedIn)
{
    const auto note = makeNote(u"one"_s);
    note->trash();
    save();
    pane->setNote(note);
    bar().open(/*withReplacing=*/true);
    find(u"one"_s);
    bar().replaceField().setText(u"two"_s);
    bar().replaceAll();
    bar().replaceCurrent();
    EXPECT_EQ(shown(), u"one"_s);
}

TEST_F(EditorFind, WhatIsFoldedIsOpenedWhereSomethingIsFoundInIt)
{
    show(u"- milk\n+ old milk\n- x\n+ bread\n- new milk"_s);
    pane->action(u"fold-completed"_s)->trigger();
    ASSERT_FALSE(buffer().contains(u"bread"_s));
    view().setSelectedRange({0, 0});
    bar().open(/*withReplacing=*/true);
    find(u"milk"_s);
    EXPECT_EQ(bar().status(), u"1 of 3"_s);
    EXPECT_FALSE(buffer().contains(u"old"_s)) << "what is not gone to stays folded";
    bar().findNext();
    EXPECT_EQ(bar().status(), u"2 of 3"_s);
    EXPECT_EQ(marked(), u"- milk\n+ old [milk]\n- x\n+ bread\n- new milk"_s);
    EXPECT_TRUE(buffer().contains(u"old milk"_s));
    EXPECT_FALSE(buffer().contains(u"bread"_s));
    bar().findNext();
    EXPECT_EQ(bar().status(), u"3 of 3"_s);
    EXPECT_EQ(marked(), u"- milk\n+ old milk\n- x\n+ bread\n- new [milk]"_s);
    bar().findPrevious();
    bar().replaceField().setText(u"tea"_s);
    bar().replaceCurrent();
    EXPECT_EQ(marked(), u"- milk\n+ old tea\n- x\n+ bread\n- new [milk]"_s);
    find(u"bread"_s);
    EXPECT_EQ(marked(), u"- milk\n+ old tea\n- x\n+ [bread]\n- new milk"_s);
    view().undo();
    EXPECT_FALSE(buffer().contains(u"bread"_s)) << "as it can be folded again";
}

TEST_F(EditorFind, ReplacingAllReachesIntoFoldsAndIsOneStep)
{
    struct Case
    {
        const char *name;
        QString text, query, replacement, expected;
    };
    const std::vector<Case> cases = {
        {"in one fold", u"+ a cat\n- b"_s, u"cat"_s, u"cow"_s, u"+ a cow\n- b"_s},
        {"in folds and around them", u"cat\n+ cat cat\n- b #tag\n+ dog\n+ cat\ncat"_s, u"cat"_s, u"cow"_s,
         u"cow\n+ cow cow\n- b #tag\n+ dog\n+ cow\ncow"_s},
        {"before a fold", u"cat\n+ dog\n"_s, u"cat"_s, u"cow"_s, u"cow\n+ dog\n"_s},
        {"behind a fold", u"x\n+ dog\n- cat"_s, u"cat"_s, u""_s, u"x\n+ dog\n- "_s},
        {"at both ends of folds", u"+ cat x\n+ x cat"_s, u"cat"_s, u"cow"_s, u"+ cow x\n+ x cow"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        show(testCase.text);
        pane->action(u"fold-completed"_s)->trigger();
        ASSERT_NE(buffer(), testCase.text);
        const QString folded = buffer();
        bar().open(/*withReplacing=*/true);
        find(testCase.query);
        bar().close();
        bar().open(/*withReplacing=*/true);
        bar().replaceField().setText(testCase.replacement);
        while (buffer() != folded) {
            view().undo(); // what was gone to was opened
        }
        bar().replaceAll();
        EXPECT_EQ(shown(), testCase.expected);
        view().undo();
        EXPECT_EQ(shown(), testCase.text);
        EXPECT_EQ(buffer(), folded);
    }
}

TEST_F(EditorFind, InANoteThatCannotBeChangedAFoldStandsForWhatIsFoundInIt)
{
    preferences->setFoldCompletedTodo(true);
    const auto note = makeNote(u"a\n+ word\nb"_s);
    note->trash();
    save();
    pane->setNote(note);
    bar().open(/*withReplacing=*/false);
    find(u"word"_s);
    EXPECT_EQ(bar().status(), u"1 of 1"_s);
    EXPECT_EQ(view().selectedRange(), (NSRange{2, 1}));
}

TEST_F(EditorFind, ReplacingAllIsReplacingInTheText)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const QString letters = u"ab#-*+ \n[`"_s;
    for (int round = 0; round < 30; ++round) {
        QString text;
        for (int i = 0; i < 60; ++i) {
            text += letters[static_cast<qsizetype>(random() % static_cast<quint64>(letters.size()))];
        }
        SCOPED_TRACE(text.toStdString());
        show(text);
        if (round % 2 == 0) {
            pane->action(u"fold-completed"_s)->trigger();
        }
        bar().open(/*withReplacing=*/true);
        find(u"ab"_s);
        bar().replaceField().setText(u"xyz"_s);
        bar().replaceAll();
        EXPECT_EQ(shown(), QString(text).replace(u"ab"_s, u"xyz"_s));
        bar().close();
    }
}

} // namespace quib::tests
