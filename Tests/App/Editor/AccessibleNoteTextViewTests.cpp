// The view of a note as assistive programs meet it: what they read, where, and what they are told of.

#include "EditorFixture.h"

#include <Editor/AccessibleNoteTextView.h>
#include <Editor/SpokenNoteText.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QAccessible>

#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;
using namespace quib::tests;

namespace {

/// Keeps what assistive programs are told, one line an event.
class Recorder : public AccessibleNoteTextView
{
public:
    explicit Recorder(EditorFixture &editor)
        : AccessibleNoteTextView(editor.view())
    {
        (void)text(0, 1); // who listens has read before
    }
    QStringList take() { return std::exchange(m_told, {}); }

protected:
    void tell(QAccessibleEvent &event) override
    {
        if (const auto *inserted = dynamic_cast<QAccessibleTextInsertEvent *>(&event)) {
            m_told << u"insert %1 %2"_s.arg(inserted->changePosition()).arg(inserted->textInserted());
        } else if (const auto *removed = dynamic_cast<QAccessibleTextRemoveEvent *>(&event)) {
            m_told << u"remove %1 %2"_s.arg(removed->changePosition()).arg(removed->textRemoved());
        } else if (const auto *updated = dynamic_cast<QAccessibleTextUpdateEvent *>(&event)) {
            m_told << u"update %1 %2 > %3"_s.arg(updated->changePosition())
                          .arg(updated->textRemoved(), updated->textInserted());
        } else if (const auto *selected = dynamic_cast<QAccessibleTextSelectionEvent *>(&event)) {
            m_told << u"select %1-%2"_s.arg(selected->selectionStart()).arg(selected->selectionEnd());
        } else if (const auto *moved = dynamic_cast<QAccessibleTextCursorEvent *>(&event)) {
            m_told << u"caret %1"_s.arg(moved->cursorPosition());
        }
    }

private:
    QStringList m_told;
};

QAccessibleTextInterface &textOf(EditorFixture &editor)
{
    return *QAccessible::queryAccessibleInterface(&editor.view())->textInterface();
}

QString all(EditorFixture &editor)
{
    return textOf(editor).text(0, -1);
}

} // namespace

TEST(AccessibleNoteText, IsReadWithItsAttachmentsInWords)
{
    struct Case
    {
        QString text;
        QString read;
    };
    const Case cases[] = {
        {u"plain"_s, u"plain"_s},
        {u""_s, u""_s},
        {u"# Title\ntext"_s, u"heading 1 Title\ntext"_s},
        {u"### Deep"_s, u"heading 3 Deep"_s},
        {u"- milk\n+ bread"_s, u"unchecked item milk\nchecked item bread"_s},
        {u"* point"_s, u"\u2022 point"_s},
        {u"---\nbelow"_s, u"separator\nbelow"_s},
        {u"a #tag b"_s, u"a #tag b"_s},
        {u"[image:1/cat.png]"_s, u"picture cat.png"_s},
        {u"[file:2/plan.pdf]"_s, u"file plan.pdf"_s},
    };
    for (const Case &each : cases) {
        EditorFixture editor(0, each.text);
        EXPECT_EQ(all(editor), each.read) << each.text.toStdString();
        EXPECT_EQ(textOf(editor).characterCount(), each.read.size());
    }
}

TEST(AccessibleNoteText, SaysWhatItIs)
{
    EditorFixture editor(0, u"text"_s);
    QAccessibleInterface *found = QAccessible::queryAccessibleInterface(&editor.view());
    EXPECT_EQ(found->role(), QAccessible::EditableText);
    EXPECT_EQ(found->text(QAccessible::Name), u"Note"_s);
    EXPECT_EQ(found->text(QAccessible::Value), u"text"_s);
    EXPECT_TRUE(found->state().editable && found->state().multiLine && found->state().focused);
    EXPECT_NE(found->editableTextInterface(), nullptr);
    editor.view().setReadOnly(true);
    EXPECT_TRUE(found->state().readOnly && !found->state().editable);
    EXPECT_EQ(found->editableTextInterface(), nullptr);
}

TEST(AccessibleNoteText, HasItsCaretAndSelectionInTheWords)
{
    EditorFixture editor(0, u"- milk\n- bread"_s);
    QAccessibleTextInterface &text = textOf(editor);
    const auto milk = int(all(editor).indexOf(u"milk"));
    Recorder recorder(editor);
    text.setCursorPosition(milk);
    EXPECT_EQ(editor.view().caret(), editor.buffer().indexOf(u"milk"));
    EXPECT_EQ(text.cursorPosition(), milk);
    EXPECT_EQ(recorder.take(), QStringList{u"caret %1"_s.arg(milk)});
    editor.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(recorder.take(), (QStringList{u"caret %1"_s.arg(milk + 1), u"select %1-%2"_s.arg(milk).arg(milk + 1)}));
    int start = 0;
    int end = 0;
    EXPECT_EQ(text.selectionCount(), 1);
    text.selection(0, &start, &end);
    EXPECT_EQ(text.text(start, end), u"m"_s);
    // A box is selected as a whole.
    text.setSelection(0, 3, 6);
    text.selection(0, &start, &end);
    EXPECT_EQ(text.text(start, end), u""_s) << "both ends lie in the words of one attachment, before it";
    text.setSelection(0, 0, int(QStringView(u"unchecked item").size()));
    EXPECT_EQ(editor.view().selectedRange(), (NSRange{0, 1}));
    text.removeSelection(0);
    EXPECT_EQ(text.selectionCount(), 0);
}

TEST(AccessibleNoteText, IsToldOfEditsAsTheyAreRead)
{
    EditorFixture editor(0, u"ab"_s);
    Recorder recorder(editor);
    editor.press(Qt::Key_Right);
    editor.type(u"x"_s);
    EXPECT_EQ(recorder.take().filter(u"ert"_s), QStringList{u"insert 1 x"_s});
    editor.press(Qt::Key_Backspace);
    EXPECT_EQ(recorder.take().filter(u"remove"_s), QStringList{u"remove 1 x"_s});
    editor.view().setSelectedRange({0, 2});
    editor.type(u"-"_s);
    (void)recorder.take();
    editor.type(u" "_s);
    EXPECT_EQ(all(editor), u"unchecked item "_s);
    EXPECT_EQ(recorder.take().filter(u"item"_s), QStringList{u"update 0 - > unchecked item"_s});
}

TEST(AccessibleNoteText, HearsABoxThatIsTickedByAnyHand)
{
    EditorFixture editor(0, u"one\n- milk\n- bread"_s);
    const QString before = all(editor);
    QAccessibleActionInterface *actions = QAccessible::queryAccessibleInterface(&editor.view())->actionInterface();
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    textOf(editor).setCursorPosition(int(before.indexOf(u"bread")));
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    Recorder recorder(editor);
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(editor.text(), u"one\n- milk\n+ bread"_s);
    const auto place = before.lastIndexOf(u"unchecked");
    EXPECT_EQ(recorder.take(), QStringList{u"update %1 unchecked item > checked item"_s.arg(place)});
    editor.view().toggleCheckBox(4);
    EXPECT_EQ(recorder.take(), QStringList{u"update 4 unchecked item > checked item"_s});
    EXPECT_EQ(all(editor), u"one\nchecked item milk\nchecked item bread"_s);
}

TEST(AccessibleNoteText, IsReadByCharacterWordLineAndParagraph)
{
    EditorFixture editor(0, u"- ae\u0301 two. And three\nlast"_s);
    QAccessibleTextInterface &text = textOf(editor);
    const QString words = all(editor);
    const auto two = int(words.indexOf(u"two")) + 1;
    struct Case
    {
        QAccessible::TextBoundaryType by;
        QString before;
        QString at;
        QString after;
    };
    const Case cases[] = {
        {QAccessible::CharBoundary, u"t"_s, u"w"_s, u"o"_s},
        {QAccessible::WordBoundary, u" "_s, u"two"_s, u"."_s},
        {QAccessible::SentenceBoundary, u""_s, u"unchecked item ae\u0301 two. "_s, u"And three\n"_s},
        {QAccessible::LineBoundary, u""_s, words.left(words.indexOf(u'\n') + 1), u"last"_s},
        {QAccessible::ParagraphBoundary, u""_s, words.left(words.indexOf(u'\n') + 1), u"last"_s},
        {QAccessible::NoBoundary, u""_s, words, u""_s},
    };
    for (const Case &each : cases) {
        int start = 0;
        int end = 0;
        EXPECT_EQ(text.textAtOffset(two, each.by, &start, &end), each.at) << each.by;
        EXPECT_EQ(text.text(start, end), each.at);
        EXPECT_EQ(text.textBeforeOffset(two, each.by, &start, &end), each.before) << each.by;
        EXPECT_EQ(text.textAfterOffset(two, each.by, &start, &end), each.after) << each.by;
    }
    int start = 0;
    int end = 0;
    EXPECT_EQ(text.textAtOffset(int(words.indexOf(u'e', 15)), QAccessible::CharBoundary, &start, &end), u"e\u0301"_s);
    EXPECT_EQ(text.textAtOffset(99, QAccessible::CharBoundary, &start, &end), u""_s);
    EXPECT_EQ(start, -1);
}

TEST(AccessibleNoteText, LiesWhereItIsSeen)
{
    EditorFixture editor(0, u"- one two\nthree"_s);
    QAccessibleTextInterface &text = textOf(editor);
    const QString words = all(editor);
    QRect before;
    for (const QChar letter : u"onetw"_s) {
        const auto place = int(words.indexOf(letter, words.indexOf(u"one")));
        const QRect rect = text.characterRect(place);
        EXPECT_TRUE(editor.view().rect().contains(editor.view().mapFromGlobal(rect.center())));
        EXPECT_GT(rect.width(), 2);
        EXPECT_GE(rect.left(), before.right() - 1) << "letters follow each other";
        EXPECT_EQ(text.offsetAtPoint({rect.left() + 1, rect.center().y()}), place);
        before = rect;
    }
    EXPECT_GT(text.characterRect(int(words.indexOf(u"three"))).top(), before.bottom() - 3);
    EXPECT_GT(text.characterRect(0).width(), 5) << "a box has its own room";
    EXPECT_EQ(text.offsetAtPoint({-5000, -5000}), -1);
}

TEST(AccessibleNoteText, TellsHowItLooks)
{
    EditorFixture editor(0, u"plain *bold* and misspeld"_s);
    QAccessibleTextInterface &text = textOf(editor);
    int start = 0;
    int end = 0;
    EXPECT_TRUE(text.attributes(1, &start, &end).contains(u"font-weight:400"_s));
    EXPECT_EQ(start, 0);
    const QString bold = text.attributes(8, &start, &end);
    EXPECT_TRUE(bold.contains(u"font-weight:700"_s) || bold.contains(u"font-weight:600"_s)) << bold.toStdString();
    EXPECT_EQ(text.text(start, end), u"bold"_s);
    EXPECT_FALSE(bold.contains(u"invalid"_s));
    editor.view().setSpellingMarks({{17, 8}});
    EXPECT_TRUE(text.attributes(19, &start, &end).contains(u"invalid:spelling"_s));
}

TEST(AccessibleNoteText, IsEditedAsOneStepEach)
{
    EditorFixture editor(0, u"- milk\nend"_s);
    auto *editing = QAccessible::queryAccessibleInterface(&editor.view())->editableTextInterface();
    const auto milk = int(all(editor).indexOf(u"milk"));
    editing->insertText(milk, u"cold "_s);
    EXPECT_EQ(editor.text(), u"- cold milk\nend"_s);
    editing->replaceText(milk, milk + 4, u"warm"_s);
    EXPECT_EQ(editor.text(), u"- warm milk\nend"_s);
    editing->deleteText(int(all(editor).indexOf(u"\nend")), -1);
    EXPECT_EQ(editor.text(), u"- warm milk"_s);
    editor.view().undo();
    editor.view().undo();
    editor.view().undo();
    EXPECT_EQ(editor.text(), u"- milk\nend"_s);
}

TEST(AccessibleNoteText, FollowsAnyEditsAsIfItWereMadeAnew)
{
    auto random = TestSeed().generator();
    EditorFixture editor(0, u"# Title\n- one\n+ two #tag\n* three\n"_s);
    SpokenNoteText words(editor.view().textStorage().attributedString());
    const auto token = editor.view().textStorage().observeEdits([&](quint32, NSRange range, qint64 changeInLength) {
        QString before = words.string();
        if (const auto change = words.textDidEdit(range, changeInLength)) {
            ASSERT_EQ(before.mid(change->offset, change->removed.size()), change->removed);
            before.replace(change->offset, change->removed.size(), change->inserted);
        }
        ASSERT_EQ(before, words.string()) << "what is told is what happened";
    });
    for (int round = 0; round < 400; ++round) {
        const qint64 length = editor.view().textStorage().length();
        const qint64 start = qint64(random() % quint64(length + 1));
        const NSRange range = {start, std::min<qint64>(qint64(random() % 3), length - start)};
        constexpr QStringView kTyped = u"a -+*#\n[]x";
        editor.view().replaceText(range, QString(kTyped[qsizetype(random() % 10)]).repeated(int(random() % 3)));
        if (random() % 5 == 0) {
            editor.view().undo();
        }
        const SpokenNoteText anew(editor.view().textStorage().attributedString());
        ASSERT_EQ(words.string(), anew.string()) << "round " << round;
        for (qint64 location = 0; location <= editor.view().textStorage().length(); ++location) {
            ASSERT_EQ(words.offsetOfLocation(location), anew.offsetOfLocation(location));
            // A place that is read is found again; one that is only drawn is skipped.
            ASSERT_GE(words.locationOfOffset(words.offsetOfLocation(location)), location);
        }
    }
}
