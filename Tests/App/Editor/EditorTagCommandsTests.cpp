// Commands in lines with tags: the spacers around these come and go with each styling, and stand for no text.

#include "EditorPaneFixture.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorTagCommands : public EditorPaneFixture
{
protected:
    /// A note with this text, and in it the selection in brackets, whole tags with their spacers.
    void showMarked(const QString &marked)
    {
        QString text = marked;
        text.remove(u'[').remove(u']');
        show(text);
        const qsizetype start = marked.indexOf(u'[');
        const qsizetype limit = marked.indexOf(u']') - 1;
        const auto expanded = [this](qint64 place) {
            return view().textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
        };
        qint64 first = 0;
        while (expanded(first) < start) {
            ++first;
        }
        qint64 last = view().textStorage().length();
        while (expanded(last) > limit) {
            --last;
        }
        view().setSelectedRange({first, last - first});
    }
    void run(const QString &command, int times = 1)
    {
        for (; times > 0; --times) {
            pane->action(command)->trigger();
        }
    }
};

TEST_F(EditorTagCommands, TheSelectionStaysOnItsTextHoweverOftenACommandIsRun)
{
    struct Case
    {
        QString text;
        QString command;
        int times;
        QString expected;
    };
    const std::vector<Case> cases = {
        {u"[#plan\nbuy milk]\none\ntwo\nthree"_s, u"move-down"_s, 3, u"one\ntwo\nthree\n[#plan\nbuy milk]"_s},
        {u"[#tag\nb]\nc"_s, u"move-down"_s, 1, u"c\n[#tag\nb]"_s},
        {u"c\n[b\nx #tag]"_s, u"move-up"_s, 1, u"[b\nx #tag]\nc"_s},
        {u"[#tag]"_s, u"bold"_s, 1, u"[*#tag*]"_s},
        {u"[#tag]"_s, u"bold"_s, 2, u"[#tag]"_s},
        {u"[#tag]"_s, u"bold"_s, 3, u"[*#tag*]"_s},
        {u"[#tag\nx]"_s, u"code-block"_s, 1, u"```\n[#tag\nx]\n```"_s},
        {u"[#tag\nx]"_s, u"code-block"_s, 3, u"```\n[#tag\nx]\n```"_s},
        {u"[#tag\nx]"_s, u"todo"_s, 3, u"[- #tag\n- x]"_s},
        {u"a [#one #two] b"_s, u"marker"_s, 3, u"a [::#one #two::] b"_s},
        {u"[#a\n#b]"_s, u"indent"_s, 4, u"\t\t\t\t[#a\n\t\t\t\t#b]"_s},
    };
    for (const Case &each : cases) {
        showMarked(each.text);
        run(each.command, each.times);
        EXPECT_EQ(marked(), each.expected)
            << each.text.toStdString() << ", " << each.times << " " << each.command.toStdString();
    }
}

TEST_F(EditorTagCommands, LinesGoBackTheWayTheyCame)
{
    showMarked(u"[#tag\nb]\nc"_s);
    run(u"move-down"_s);
    run(u"move-up"_s);
    EXPECT_EQ(marked(), u"[#tag\nb]\nc"_s);
    showMarked(u"[#a\n* x]"_s);
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(shown(), u"\t\t\t\t#a\n\t\t\t\t* x"_s);
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Backtab);
    }
    EXPECT_EQ(shown(), u"#a\n* x"_s);
}

TEST_F(EditorTagCommands, ACommandWithNothingToDoLeavesUndoneStepsToBeDoneAgain)
{
    struct Case
    {
        QString text;
        QString command; ///< empty for a Tab backwards
    };
    const std::vector<Case> cases = {
        {u"#t a b"_s, u"move-up"_s},        {u"#t a b"_s, u"move-down"_s},        {u"#t a b"_s, u"outdent"_s},
        {u"#t a b"_s, u"fold-completed"_s}, {u"#t a b"_s, u"unfold-completed"_s}, {u"* a #t b"_s, QString()},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(QString(each.text % u' ' % each.command).toStdString());
        show(each.text);
        type(u"x"_s);
        view().undo();
        ASSERT_FALSE(view().undoManager().canUndo());
        ASSERT_TRUE(view().undoManager().canRedo());
        if (each.command.isEmpty()) {
            press(Qt::Key_Backtab);
        } else {
            run(each.command);
        }
        EXPECT_EQ(shown(), each.text);
        EXPECT_FALSE(view().undoManager().canUndo());
        view().redo();
        EXPECT_EQ(shown(), QString(each.text % u'x'));
    }
    // What does something is a step.
    show(u"* a #t b"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(shown(), u"\t* a #t b"_s);
    EXPECT_TRUE(view().undoManager().canUndo());
}

TEST_F(EditorTagCommands, BlanksBesideATagAreSeenThroughItsSpacers)
{
    struct Case
    {
        QString text;
        qint64 location; ///< of the selection, counted in the note's text, outside of spacers or inside
        bool isInside;
        qint64 length; ///< in the note's text
        QString command;
        QString expected;
    };
    const std::vector<Case> cases = {
        {u"x #tag"_s, 2, true, 4, u"strike"_s, u"x -#tag-"_s},
        {u"x #tag y"_s, 2, true, 4, u"underline"_s, u"x _#tag_ y"_s},
        {u"x #tag y"_s, 2, false, 4, u"underline"_s, u"x _#tag_ y"_s},
        {u"x #aabbcc y"_s, 2, false, 7, u"underline"_s, u"x _#aabbcc_ y"_s},
        {u"#tag y"_s, 0, true, 4, u"underline"_s, u"_#tag_ y"_s},
        {u"a\n#tag\nb"_s, 2, true, 4, u"strike"_s, u"a\n-#tag-\nb"_s},
        {u"x#y"_s, 1, false, 2, u"underline"_s, u"x _#y_"_s},
    };
    for (const Case &each : cases) {
        show(each.text);
        const auto expanded = [this](qint64 place) {
            return view().textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
        };
        qint64 first = 0;
        while (expanded(first) < each.location || (each.isInside && expanded(first + 1) == each.location)) {
            ++first;
        }
        qint64 last = first;
        while (expanded(last) < each.location + each.length) {
            ++last;
        }
        if (!each.isInside) {
            while (last < view().textStorage().length() && expanded(last + 1) == expanded(last)) {
                ++last;
            }
        }
        view().setSelectedRange({first, last - first});
        run(each.command);
        EXPECT_EQ(shown(), each.expected) << each.text.toStdString() << ", inside " << each.isInside;
        run(each.command);
        run(each.command);
        EXPECT_EQ(shown(), each.expected) << each.text.toStdString() << ", inside " << each.isInside;
    }
}

TEST_F(EditorTagCommands, ASelectedBlankIsNoMoreWithTheSpacerBehindIt)
{
    show(u"x #tag"_s);
    view().setSelectedRange({1, 2});
    ASSERT_EQ(marked(), u"x[ ]#tag"_s);
    run(u"bold"_s);
    EXPECT_EQ(shown(), u"x #tag"_s);
    EXPECT_FALSE(view().undoManager().canUndo());
}

TEST_F(EditorTagCommands, WhatIsPastedBesideATagKeepsApartByOneBlank)
{
    const auto paste = [this](const QString &text, qint64 location, bool asCode) {
        auto *data = new QMimeData;
        data->setText(u"word"_s);
        data->setData(u"application/x-quib-markup"_s, "word");
        data->setData(u"application/x-quib-words"_s, "1");
        show(text);
        QGuiApplication::clipboard()->setMimeData(data);
        view().setSelectedRange({location, 0});
        if (asCode) {
            run(u"paste-code"_s);
        } else {
            view().paste();
        }
        return shown();
    };
    // In front of a tag's opening spacer, which is at 2, and behind it.
    EXPECT_EQ(paste(u"x #tag"_s, 2, false), u"x word #tag"_s);
    EXPECT_EQ(paste(u"x #tag"_s, 3, false), u"x word #tag"_s);
    EXPECT_EQ(paste(u"#tag"_s, 1, false), u"word #tag"_s);
    EXPECT_EQ(paste(u"#tag y"_s, 6, false), u"#tag word y"_s);
    EXPECT_EQ(paste(u"#tag y"_s, 5, false), u"#tag word y"_s);
    // A fence has a line of its own, and takes no other.
    EXPECT_EQ(paste(u"#tag"_s, 1, true), u"```\nword\n```\n#tag"_s);
    EXPECT_EQ(paste(u"a\n#tag"_s, 3, true), u"a\n```\nword\n```\n#tag"_s);
    EXPECT_EQ(paste(u"#tag\nb"_s, 5, true), u"#tag\n```\nword\n```\nb"_s);
}

} // namespace quib::tests
