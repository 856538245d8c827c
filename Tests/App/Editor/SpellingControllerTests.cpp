// Which words of a note are marked as misspelt, and when: without a window, by queues and a clock that stand still.

#include <Editor/SpellingController.h>

#include <Markup/QBNoteTextKitStack.h>
#include <Platform/Spelling/SpellingFixture.h>
#include <Support/FakeClock.h>
#include <Support/HandQueue.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;
using namespace quib::tests;

namespace {

class SpellingOfNotes : public SpellingFixture, public SpellableView
{
protected:
    SpellingOfNotes()
        : service(options(), workQueue, answerQueue)
    {
        SpellingService::setSharedService(&service);
        stack.themeManager()->loadDefaultTheme();
        controller = std::make_unique<SpellingController>(stack.noteTextStorage(), *this);
    }

    void load(const QString &text)
    {
        stack.noteTextStorage().loadString(text);
        selection = {0, 0};
        marks.clear();
        visible = stack.noteTextStorage().fullRange();
        controller->textWasLoaded();
        settle();
    }
    /// Types at the caret, as the editor does: the text changes, is styled, and the caret moves.
    void type(const QString &text)
    {
        QBNotesTextStorage &storage = stack.noteTextStorage();
        for (const QChar unit : text) {
            const NSRange replaced = selection;
            moveMarks(replaced, 1);
            storage.replaceCharactersInRange(replaced, QStringView(&unit, 1));
            storage.applyStylingInRange(storage.rangeToStyle());
            moveCaret(replaced.location + 1);
        }
        visible = storage.fullRange();
    }
    void moveCaret(qint64 location)
    {
        selection = {location, 0};
        controller->selectionDidChange();
    }
    /// Until nothing is left to do.
    void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            clock.advance(SpellingController::kDelay);
            workQueue->run();
            answerQueue->run();
        }
        EXPECT_EQ(clock.waitingTimers() + workQueue->waiting() + answerQueue->waiting(), 0U);
    }
    /// The marked words, parted by blanks.
    [[nodiscard]] QString marked() const
    {
        QStringList words;
        for (const NSRange mark : marks) {
            words.append(stack.noteTextStorage().string().sliced(mark.location, mark.length).toString());
        }
        return words.join(u' ');
    }

    // SpellableView
    [[nodiscard]] NSRange visibleRange() override { return visible; }
    [[nodiscard]] NSRange selectedRange() const override { return selection; }
    [[nodiscard]] bool isEditable() const override { return editable; }
    void setSpellingMarks(std::vector<NSRange> newMarks, NSRange inRange) override
    {
        std::erase_if(marks, [inRange](NSRange mark) { return NSIntersectionRange(mark, inRange).length > 0; });
        marks.insert(marks.end(), newMarks.begin(), newMarks.end());
        std::ranges::sort(marks, {}, &NSRange::location);
        lengthChecked += inRange.length;
    }

    FakeClock clock;
    std::shared_ptr<HandQueue> workQueue = std::make_shared<HandQueue>();
    std::shared_ptr<HandQueue> answerQueue = std::make_shared<HandQueue>();
    SpellingService service;
    mutable QBNoteTextKitStack stack;
    std::unique_ptr<SpellingController> controller;
    NSRange visible;
    NSRange selection;
    bool editable = true;
    std::vector<NSRange> marks;
    qint64 lengthChecked = 0;

private:
    /// What the view does with its marks.
    void moveMarks(NSRange replaced, qint64 length)
    {
        std::erase_if(marks, [replaced](NSRange mark) { return NSIntersectionRange(mark, replaced).length > 0; });
        for (NSRange &mark : marks) {
            mark.location += mark.location >= replaced.limit() ? length - replaced.length : 0;
        }
    }
};

} // namespace

TEST_F(SpellingOfNotes, MarksMisspeltWords)
{
    load(u"the brwon fox\njumps ovr the lazy dog"_s);
    EXPECT_EQ(marked(), u"brwon ovr"_s);
}

TEST_F(SpellingOfNotes, LeavesAloneWhatIsNoProse)
{
    load(u"the quick brown fox `inlne` and #tgaone/tgatwo and #tag of wrods# well\n"
         u"```\nsurce coed\n```\nhttps://exmaple.com/pgae and [nmae](https://exmaple.com) and [[titel]] dgo\n"_s);
    EXPECT_EQ(marked(), u"dgo"_s);
}

TEST_F(SpellingOfNotes, LeavesTheWordAtTheCaretAloneUntilTheCaretLeaves)
{
    load(u"the quick brown fox \nthe lazy dog"_s);
    moveCaret(20);
    type(u"jmup"_s);
    settle();
    EXPECT_EQ(marked(), u""_s);
    type(u" "_s);
    settle();
    EXPECT_EQ(marked(), u"jmup"_s);
    type(u"ovr"_s);
    settle();
    EXPECT_EQ(marked(), u"jmup"_s);
    moveCaret(0);
    settle();
    EXPECT_EQ(marked(), u"jmup ovr"_s);
}

TEST_F(SpellingOfNotes, MarksAWordThatTheCaretIsPutAt)
{
    load(u"brwon fox jumps over the dog"_s);
    EXPECT_EQ(marked(), u"brwon"_s) << "nobody has typed it";
    moveCaret(3);
    settle();
    EXPECT_EQ(marked(), u"brwon"_s);
}

TEST_F(SpellingOfNotes, ForgetsNoWithheldWordWhenTheTextChangesElsewhere)
{
    load(u"the quick brown fox \nthe lazy dog"_s);
    moveCaret(20);
    type(u"jmup"_s);
    settle();
    stack.noteTextStorage().replaceCharactersInRange(NSRange{0, 0}, u"the ");
    visible = stack.noteTextStorage().fullRange();
    moveCaret(0);
    settle();
    EXPECT_EQ(marked(), u"jmup"_s);
}

TEST_F(SpellingOfNotes, MarksWhatBecomesProseAndUnmarksWhatBecomesCode)
{
    load(u"the lazy dog dgo over"_s);
    EXPECT_EQ(marked(), u"dgo"_s);
    moveCaret(16);
    type(u"`"_s);
    moveCaret(13);
    type(u"`"_s);
    moveCaret(0);
    settle();
    EXPECT_EQ(marked(), u""_s);
}

TEST_F(SpellingOfNotes, ChecksOnlyWhatIsSeenAndOnlyOnce)
{
    const QString line = u"the quick brwon fox jumps over the lazy dog\n"_s;
    load(line.repeated(100));
    lengthChecked = 0;
    controller->checkAgain();
    visible = {line.size() * 40 + 5, line.size() * 2};
    marks.clear();
    settle();
    EXPECT_EQ(lengthChecked, line.size() * 3) << "the paragraphs that are seen in part are checked too";
    EXPECT_EQ(marks.size(), 3U);
    controller->visibleRangeDidChange();
    settle();
    EXPECT_EQ(lengthChecked, line.size() * 3) << "nothing has changed";
    visible.location += line.size();
    controller->visibleRangeDidChange();
    settle();
    EXPECT_EQ(lengthChecked, line.size() * 4);
    moveCaret(line.size() * 41);
    type(u"x"_s);
    visible = {line.size() * 40, line.size() * 3};
    settle();
    EXPECT_EQ(lengthChecked, line.size() * 5 + 1) << "only the paragraph that changed";
}

TEST_F(SpellingOfNotes, ChecksAVeryLongParagraphWhereItIsSeen)
{
    const QString text = u"the quick brwon fox jumps over the lazy dog "_s.repeated(5000);
    load(text);
    marks.clear();
    lengthChecked = 0;
    controller->checkAgain();
    visible = {120'000, 1000};
    settle();
    EXPECT_GE(marks.size(), 1000U / 44);
    EXPECT_LE(lengthChecked, SpellingController::kLongestParagraph * 2);
    for (const NSRange mark : marks) {
        EXPECT_EQ(text.sliced(mark.location, mark.length), u"brwon"_s);
    }
}

TEST_F(SpellingOfNotes, ThrowsAwayAnswersAboutATextThatChanged)
{
    load(u"the lazy dog\n"_s);
    moveCaret(13);
    type(u"the dgo "_s);
    clock.advance(SpellingController::kDelay);
    workQueue->run();
    stack.noteTextStorage().replaceCharactersInRange(NSRange{0, 4}, u"");
    visible = stack.noteTextStorage().fullRange();
    answerQueue->run();
    EXPECT_EQ(marked(), u""_s);
    settle();
    EXPECT_EQ(marked(), u"dgo"_s);
}

TEST_F(SpellingOfNotes, TakesWordsOutOfTheMarksWhenTheyAreLearned)
{
    load(u"the brwon fox jmup over"_s);
    controller->learnWord(u"brwon"_s);
    controller->ignoreWord(u"jmup"_s);
    settle();
    EXPECT_EQ(marked(), u""_s);
    EXPECT_EQ(folder.read(u"own/words.txt"_s), "brwon\n");
}

TEST_F(SpellingOfNotes, OffersOtherWords)
{
    load(u"the brwon fox jumps over the dog"_s);
    QStringList offered;
    controller->findSuggestions(marks.front(), [&offered](const QStringList &words) { offered = words; });
    settle();
    EXPECT_TRUE(offered.contains(u"brown"_s)) << offered.join(u' ').toStdString();
    EXPECT_EQ(controller->wordInRange(marks.front()), u"brwon"_s);
}

TEST_F(SpellingOfNotes, CanBeTurnedOff)
{
    load(u"the brwon fox"_s);
    controller->setEnabled(false);
    EXPECT_EQ(marked(), u""_s);
    load(u"the brwon fox"_s);
    EXPECT_EQ(marked(), u""_s);
    controller->setEnabled(true);
    settle();
    EXPECT_EQ(marked(), u"brwon"_s);
    editable = false;
    load(u"the brwon fox"_s);
    EXPECT_EQ(marked(), u""_s) << "nobody can mend it";
}

TEST_F(SpellingOfNotes, EndsWithItsAnswersUnderWay)
{
    load(u"the lazy dog"_s);
    controller->checkAgain();
    clock.advance(0);
    bool isOffered = false;
    controller->findSuggestions({0, 3}, [&isOffered](const QStringList & /*words*/) { isOffered = true; });
    controller.reset();
    workQueue->run();
    answerQueue->run();
    EXPECT_FALSE(isOffered);
    SpellingService::setSharedService(nullptr);
    controller = std::make_unique<SpellingController>(stack.noteTextStorage(), *this);
    load(u"the brwon fox"_s);
    EXPECT_EQ(marked(), u""_s) << "nobody checks";
}

TEST_F(SpellingOfNotes, MarksAfterAnyEditsWhatAFreshTextWouldHave)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    static const QStringList kPieces{u"the "_s, u"dog "_s, u"dgo "_s, u"brwon"_s, u" "_s,      u"\n"_s,
                                     u"`"_s,    u"#"_s,    u"x"_s,    u"fox"_s,   u"\n```\n"_s};
    load(u"the quick brown fox\njumps ovr the lazy dgo\n"_s);
    for (int round = 0; round < 60; ++round) {
        const qint64 length = stack.noteTextStorage().length();
        const qint64 start = static_cast<qint64>(random() % static_cast<unsigned>(length + 1));
        selection = {start, std::min<qint64>(static_cast<qint64>(random() % 6), length - start)};
        controller->selectionDidChange();
        type(kPieces[static_cast<qsizetype>(random() % static_cast<unsigned>(kPieces.size()))]);
        if (random() % 3 == 0) {
            settle();
        }
    }
    selection = {0, 1};
    controller->selectionDidChange();
    settle();
    const auto kept = marks;
    marks.clear();
    controller->checkAgain();
    settle();
    EXPECT_EQ(kept, marks) << stack.noteTextStorage().string().toUtf8().toStdString();
}
