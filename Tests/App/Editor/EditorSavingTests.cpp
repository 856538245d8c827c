#include "EditorPaneFixture.h"

#include <Editor/CompletionPopup.h>
#include <Markup/Editing/NoteTextMerge.h>
#include <Markup/Editing/UnsavedTextJournal.h>
#include <Support/TestSeed.h>

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

using EditorSaving = EditorPaneFixture;

TEST_F(EditorSaving, WhatIsTypedIsInTheStoreTwoSecondsLater)
{
    const auto note = show(u"Shopping\n"_s);
    type(u"Milk"_s);
    EXPECT_EQ(shown(), u"Shopping\nMilk"_s);
    EXPECT_TRUE(pane->hasUnsavedText());
    clock.advance(1.9);
    EXPECT_EQ(stored(note), u"Shopping\n"_s);
    clock.advance(0.2);
    EXPECT_EQ(stored(note), u"Shopping\nMilk"_s);
    EXPECT_FALSE(pane->hasUnsavedText());
    EXPECT_EQ(note->title(), u"Shopping"_s);
}

TEST_F(EditorSaving, AKeyWithinTwoSecondsPostponesTheSave)
{
    const auto note = show({});
    type(u"a"_s);
    clock.advance(1.5);
    type(u"b"_s);
    clock.advance(1.5);
    EXPECT_EQ(stored(note), u""_s);
    clock.advance(0.6);
    EXPECT_EQ(stored(note), u"ab"_s);
}

TEST_F(EditorSaving, SteadyTypingIsOnDiskBesideTheStore)
{
    const auto note = show({});
    const auto journals = [] { return QDir(UnsavedTextJournal::defaultFolder()).entryList(QDir::Files); };
    QString typed;
    for (int i = 0; i < 30; ++i) {
        type(u"x"_s);
        typed += u'x';
        clock.advance(0.3);
    }
    EXPECT_EQ(stored(note), u""_s) << "each key postpones the save";
    // A window of its own on the same files, as after a crash: it finds what is at most a second old.
    pane->waitForJournal();
    ASSERT_EQ(journals().size(), 1);
    const TemporaryFolder copies;
    QFile::copy(UnsavedTextJournal::defaultFolder() % u'/' % journals().first(), copies.path(u"copy.unsaved"_s));
    clock.advance(2.0);
    pane->waitForJournal();
    EXPECT_EQ(stored(note), typed);
    EXPECT_TRUE(journals().isEmpty());
    note->updateNoteWithText({}, 0);
    save();
    processEvents();
    EXPECT_EQ(shown(), u""_s);
    EXPECT_EQ(UnsavedTextJournal::recoverUnsavedTexts(moc(), copies.path()), 1);
    EXPECT_GE(stored(note).size(), typed.size() - 4);
    EXPECT_EQ(shown(), stored(note));
}

TEST_F(EditorSaving, CompletionsKeepNothingFromTheJournal)
{
    const auto other = makeNote(u"Other #garden"_s);
    const auto note = show(u"word "_s);
    type(u"#ga"_s);
    ASSERT_TRUE(pane->completionPopup().isOpen());
    clock.advance(5);
    EXPECT_EQ(stored(note), u"word "_s);
    pane->waitForJournal();
    EXPECT_EQ(QDir(UnsavedTextJournal::defaultFolder()).entryList(QDir::Files).size(), 1);
}

TEST_F(EditorSaving, AnotherNoteTheFocusAndTheEndSaveAtOnce)
{
    const auto first = show(u"one"_s);
    type(u"!"_s);
    const auto second = show(u"two"_s);
    EXPECT_EQ(stored(first), u"one!"_s);
    type(u"?"_s);
    QLineEdit other;
    other.show();
    other.activateWindow();
    other.setFocus();
    (void)QTest::qWaitForWindowActive(&other);
    EXPECT_EQ(stored(second), u"two?"_s);
    pane->activateWindow();
    pane->focusEditor();
    (void)QTest::qWaitForWindowActive(pane.get());
    type(u"."_s);
    const QString text = shown();
    pane.reset();
    EXPECT_EQ(stored(second), text);
    EXPECT_EQ(text.size(), 5);
}

TEST_F(EditorSaving, ANoteThatIsOnlyReadIsNotWritten)
{
    const QString strange = u"a\uFFFCb\0c"_s + QChar(0xD800) + u"\uFEFF"_s;
    const auto note = show(strange);
    const auto date = note->modificationDate();
    clock.advance(60);
    pane->setNote({});
    EXPECT_EQ(stored(note), strange);
    EXPECT_EQ(note->modificationDate(), date);
}

TEST_F(EditorSaving, ACheckboxThatIsClickedIsSaved)
{
    const auto note = show(u"- milk\n- bread"_s);
    const QRectF box = view().layoutManager().caretRect(0);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, (box.center() + QPointF(6, 0)).toPoint());
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"+ milk\n- bread"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"- milk\n- bread"_s);
}

TEST_F(EditorSaving, ListsGoOnAndAreIndented)
{
    struct Case
    {
        const char *name;
        QString text;
        std::vector<int> keys;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"a to-do goes on", u"- milk"_s, {Qt::Key_Return}, u"- milk\n- |"_s},
        {"a number goes on", u"9. nine"_s, {Qt::Key_Return}, u"9. nine\n10. |"_s},
        {"an empty item ends", u"* a"_s, {Qt::Key_Return, Qt::Key_Return}, u"* a\n|"_s},
        {"a tab indents", u"* a"_s, {Qt::Key_Tab}, u"\t* a|"_s},
        {"plain text goes on plainly", u"plain"_s, {Qt::Key_Return}, u"plain\n|"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        show(testCase.text);
        for (const int key : testCase.keys) {
            press(key);
        }
        EXPECT_EQ(marked(), testCase.expected);
    }
}

TEST_F(EditorSaving, EachNoteHasItsOwnStepsAndPlace)
{
    const auto first = show(u"one"_s);
    type(u" more"_s);
    const auto second = show(u"two"_s);
    type(u" too"_s);
    pane->setNote(first);
    EXPECT_EQ(marked(), u"one more|"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"one"_s);
    pane->setNote(second);
    EXPECT_EQ(shown(), u"two too"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"two"_s);
    clock.advance(2.1);
    EXPECT_EQ(stored(first), u"one"_s);
    EXPECT_EQ(stored(second), u"two"_s);
}

TEST_F(EditorSaving, ANoteLeftLongAgoStartsAnew)
{
    const auto first = show(u"one"_s);
    type(u"!"_s);
    const auto second = show(u"two"_s);
    clock.advance(16 * 60);
    pane->setNote(first);
    EXPECT_EQ(marked(), u"|one!"_s);
    EXPECT_FALSE(view().undoManager().canUndo());
}

TEST_F(EditorSaving, APlaceHoldsForTheTextThatItWasIn)
{
    const auto first = show(u"one\ntwo"_s);
    view().setSelectedRange({2, 3});
    const auto second = show(u"two"_s);
    first->updateNoteWithText(u"one\nTWO"_s, 0);
    save();
    pane->setNote(first);
    EXPECT_EQ(marked(), u"|one\nTWO"_s) << "another text has come since";
    view().setSelectedRange({2, 3});
    pane->setNote(second);
    second->updateNoteWithText(u"two!"_s, 0);
    save();
    pane->setNote(first);
    EXPECT_EQ(marked(), u"on[e\nT]WO"_s) << "another note's text is no matter";
}

TEST_F(EditorSaving, PlacesAreKeptWithTheWindow)
{
    QString text = u"start\n"_s;
    for (int i = 0; i < 400; ++i) {
        text += u"a line of a long note\n"_s;
    }
    const auto note = show(text);
    view().setSelectedRange({4000, 5});
    view().scrollRangeToVisible({4000, 5});
    const auto place = view().scrollPosition();
    ASSERT_GT(place.location, 0);
    const PropertyValue archive = pane->archivedStates();
    for (const bool isLate : {false, true}) {
        SCOPED_TRACE(isLate);
        clock.advance(isLate ? 16 * 60 : 5);
        pane = std::make_unique<QBNoteEditorViewController>();
        pane->resize(800, 600);
        pane->show();
        pane->unarchiveStates(archive);
        pane->setNote(note);
        EXPECT_EQ(view().selectedRange(), isLate ? NSRange() : NSRange({4000, 5}));
        EXPECT_EQ(view().scrollPosition().location, isLate ? 0 : place.location);
        EXPECT_EQ(view().scrollPosition().offset, isLate ? 0 : place.offset);
    }
    pane->unarchiveStates(PropertyValue(u"no archive"_s));
}

TEST_F(EditorSaving, WhoWroteInANoteGoesOnUnlessTheKeyboardIsElsewhere)
{
    const auto first = show(u"one"_s);
    ASSERT_TRUE(view().hasFocus());
    const auto written = makeNote(u"two"_s);
    save();
    const PropertyValue archive = pane->archivedStates();
    struct Case
    {
        bool isElsewhere;
        bool hasKeyboard;
    };
    for (const Case &testCase : {Case{false, true}, Case{true, false}}) {
        // As after a start: nothing has the keyboard yet, or something beside the pane has.
        QWidget window;
        QLineEdit beside(&window);
        auto *fresh = new QBNoteEditorViewController(&window);
        fresh->unarchiveStates(archive);
        if (testCase.isElsewhere) {
            beside.setFocus();
        }
        fresh->setNote(written);
        EXPECT_FALSE(window.focusWidget() == &fresh->textView()) << "nobody wrote there";
        fresh->setNote(first);
        EXPECT_EQ(window.focusWidget() == &fresh->textView(), testCase.hasKeyboard);
    }
}

TEST_F(EditorSaving, CompletedToDosAreFoldedWhereTheUserLikesThat)
{
    preferences->setFoldCompletedTodo(true);
    const auto note = show(u"- open\n+ done\n+ too\nrest"_s);
    EXPECT_FALSE(buffer().contains(u"done"_s));
    EXPECT_TRUE(buffer().contains(u"open"_s));
    EXPECT_FALSE(pane->hasUnsavedText());
    EXPECT_FALSE(view().undoManager().canUndo());
    type(u"!"_s);
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"- open\n+ done\n+ too\nrest!"_s);
    // Elsewhere one is completed.
    changeElsewhere(note, u"+ open\nx\n+ done\n+ too\nrest!"_s);
    EXPECT_FALSE(buffer().contains(u"open"_s));
    EXPECT_EQ(marked(), u"+ open\nx\n+ done\n+ too\nrest!|"_s);
    // The steps of a note that comes back folded are still its own.
    show(u"other"_s);
    pane->setNote(note);
    EXPECT_FALSE(buffer().contains(u"done"_s));
    EXPECT_EQ(shown(), u"+ open\nx\n+ done\n+ too\nrest!"_s);
    preferences->setFoldCompletedTodo(false);
    EXPECT_TRUE(buffer().contains(u"done"_s));
    preferences->setFoldCompletedTodo(true);
    EXPECT_FALSE(buffer().contains(u"done"_s));
    clock.advance(2.1);
    EXPECT_EQ(stored(note), u"+ open\nx\n+ done\n+ too\nrest!"_s);
}

TEST_F(EditorSaving, ANoteThatChangedElsewhereIsShown)
{
    const auto note = show(u"- first\nmiddle\nlast"_s);
    changeElsewhere(note, u"new line\n- first\nmiddle\nlast"_s);
    EXPECT_EQ(marked(), u"new line\n- first\nmiddle\nlast|"_s);
    EXPECT_FALSE(pane->hasUnsavedText());
    note->trash();
    save();
    processEvents();
    EXPECT_TRUE(view().isReadOnly());
}

TEST_F(EditorSaving, WhatIsTypedWhileTheNoteChangesElsewhereIsKept)
{
    const auto note = show(u"- first\nmiddle\nlast"_s);
    type(u" typed"_s);
    changeElsewhere(note, u"+ first\nmiddle\nlast"_s);
    EXPECT_EQ(marked(), u"+ first\nmiddle\nlast typed|"_s);
    clock.advance(4.1);
    EXPECT_EQ(stored(note), u"+ first\nmiddle\nlast typed"_s);
    EXPECT_EQ(texts().size(), 1);
}

TEST_F(EditorSaving, TwoTextsOfOnePlaceBecomeTwoNotes)
{
    const auto note = show(u"same place"_s);
    type(u" mine"_s);
    changeElsewhere(note, u"same place theirs"_s);
    EXPECT_EQ(shown(), u"same place mine"_s);
    EXPECT_EQ(stored(note), u"same place mine"_s);
    EXPECT_EQ(texts(), QStringList({u"same place mine"_s, u"same place theirs"_s}));
    EXPECT_TRUE(note->hasConflictedNotes());
}

TEST_F(EditorSaving, WhatWasTypedIntoADeletedNoteIsKept)
{
    const auto note = show(u"old"_s);
    type(u" new"_s);
    note->permanentlyDelete();
    save();
    processEvents();
    EXPECT_EQ(texts(), QStringList({u"old new"_s}));
    ASSERT_TRUE(pane->note());
    EXPECT_EQ(pane->note()->text(), u"old new"_s);
}

TEST_F(EditorSaving, ADeletedNoteThatWasOnlyReadIsGone)
{
    const auto note = show(u"old"_s);
    note->permanentlyDelete();
    save();
    processEvents();
    EXPECT_FALSE(pane->note());
    EXPECT_EQ(shown(), u""_s);
    EXPECT_TRUE(view().isReadOnly());
}

TEST_F(EditorSaving, TheOtherSyntaxShowsTheSameText)
{
    const auto note = show(u"**bold** text"_s);
    type(u"!"_s);
    preferences->setMarkdownCompatibilityMode(true);
    EXPECT_EQ(shown(), u"**bold** text!"_s);
    EXPECT_EQ(stored(note), u"**bold** text!"_s);
    EXPECT_EQ(view().textStorage().noteStylersManager()->syntax(), 1);
}

TEST_F(EditorSaving, TheOtherSyntaxLeavesTheCaretAndThePlaceWhereTheyAre)
{
    for (const bool isMarkdown : {true, false}) {
        SCOPED_TRACE(isMarkdown);
        const auto note = show(u"# Title\n- [ ] milk\n* **item** one\n"_s + u"a line\n"_s.repeated(300));
        const qint64 item = buffer().indexOf(u"item");
        view().setSelectedRange({item, 4});
        const QString before = marked();
        preferences->setMarkdownCompatibilityMode(isMarkdown);
        EXPECT_EQ(marked(), before);
        type(u"x"_s);
        EXPECT_EQ(shown(), QString(before).replace(u"[item]"_s, u"x"_s));
        const qint64 far = buffer().size() - 400;
        view().setSelectedRange({far, 0});
        view().scrollRangeToVisible({far, 0});
        const QString atCaret = marked();
        const auto topText = [this] {
            const auto &storage = view().textStorage();
            return storage.stringWithExpandedTextAttachmentsWithRange({0, view().scrollPosition().location}).size();
        };
        const qsizetype top = topText();
        ASSERT_GT(top, 100);
        preferences->setMarkdownCompatibilityMode(!isMarkdown);
        EXPECT_EQ(marked(), atCaret);
        EXPECT_EQ(topText(), top);
    }
}

TEST_F(EditorSaving, RandomTypingAndChangesElsewhereLoseNoCharacter)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto note = show(u"start\n\nmiddle\n\nend"_s);
    // Every character is written once only, so that each can be looked for afterwards.
    ushort next = 0x4E00;
    QString written;
    const auto fresh = [&] {
        const QChar character(next++);
        written.append(character);
        return character;
    };
    for (int step = 0; step < 120; ++step) {
        switch (random() % 4) {
        case 0:
            view().setSelectedRange(
                {static_cast<qint64>(random() % static_cast<quint64>(view().textStorage().length() + 1)), 0});
            break;
        case 1:
            view().typeText(fresh());
            break;
        case 2: {
            QString text = note->text();
            text.insert(static_cast<qsizetype>(random() % static_cast<quint64>(text.size() + 1)), fresh());
            changeElsewhere(note, text);
            break;
        }
        default:
            clock.advance(1.2);
            break;
        }
    }
    pane->saveNote(/*forceSave=*/true);
    const QString all = texts().join(u'\n');
    for (const QChar character : written) {
        ASSERT_TRUE(all.contains(character)) << "lost U+" << std::hex << int{character.unicode()};
    }
    EXPECT_EQ(stored(note), shown());
}

TEST(NoteTextMerge, TakesBothChangesWhereTheyAreApart)
{
    struct Case
    {
        const char *name;
        QString base, mine, theirs;
        std::optional<QString> expected;
    };
    const std::vector<Case> cases = {
        {"mine before theirs", u"abcdef"_s, u"aXbcdef"_s, u"abcdeYf"_s, u"aXbcdeYf"_s},
        {"theirs before mine", u"abcdef"_s, u"abcdeYf"_s, u"aXbcdef"_s, u"aXbcdeYf"_s},
        {"removed and added", u"abcdef"_s, u"def"_s, u"abcdefg"_s, u"defg"_s},
        {"only mine", u"abc"_s, u"abcd"_s, u"abc"_s, u"abcd"_s},
        {"only theirs", u"abc"_s, u"abc"_s, u"ab"_s, u"ab"_s},
        {"the same", u"abc"_s, u"xyz"_s, u"xyz"_s, u"xyz"_s},
        {"one place", u"abc"_s, u"abcX"_s, u"abcY"_s, std::nullopt},
        {"touching", u"abc"_s, u"aXc"_s, u"abYc"_s, std::nullopt},
        {"one within the other", u"abcdef"_s, u"af"_s, u"abXcdef"_s, std::nullopt},
        {"all of it", u"abc"_s, u""_s, u"xyz"_s, std::nullopt},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        EXPECT_EQ(mergedText(testCase.base, testCase.mine, testCase.theirs), testCase.expected);
    }
}

TEST(NoteTextMerge, NeverSplitsASurrogatePair)
{
    const auto difference = TextDifference::between(u"a\U0001F600b", u"a\U0001F601b");
    EXPECT_EQ(difference.location, 1);
    EXPECT_EQ(difference.oldLength, 2);
    EXPECT_EQ(difference.newLength, 2);
}

} // namespace quib::tests
