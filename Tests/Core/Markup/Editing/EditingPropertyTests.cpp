// What holds for every text: no key and no command loses text that it does not name, and undoing gives the text back.

#include "EditedNote.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Support/TestSeed.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

const QStringList &pieces()
{
    static const QStringList list{
        u"* "_s,
        u"- "_s,
        u"+ "_s,
        u"- [ ] "_s,
        u"- [x] "_s,
        u"1. "_s,
        u"2. "_s,
        u"9. "_s,
        u"> "_s,
        u"# "_s,
        u"---"_s,
        u"```"_s,
        u"\n"_s,
        u"\n"_s,
        u"\n"_s,
        u"\t"_s,
        u"    "_s,
        u" "_s,
        u"a"_s,
        u"word"_s,
        u"#tag"_s,
        u"#a b#"_s,
        u"[[n]]"_s,
        u"[t](http://u.de)"_s,
        u"*b*"_s,
        u"`c`"_s,
        u"->"_s,
        u"#123456"_s,
        u"\r\n"_s,
        u"\u2029"_s,
        u"\U0001F600"_s,
        u"\uFFFC"_s,
        QString(QChar(0xD800)),
        QString(QChar(u'\0')),
    };
    return list;
}

QString randomText(std::mt19937 &random, unsigned most)
{
    QString text;
    for (auto count = random() % most; count > 0; --count) {
        text += pieces()[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces().size()))];
    }
    return text;
}

NSRange randomRange(std::mt19937 &random, qint64 length)
{
    const auto place = [&] { return static_cast<qint64>(random() % static_cast<unsigned>(length + 1)); };
    const qint64 a = place();
    const qint64 b = random() % 2 == 0 ? a : place();
    return {std::min(a, b), std::max(a, b) - std::min(a, b)};
}

/// A note with a random text and selection.
struct RandomNote
{
    explicit RandomNote(std::mt19937 &random)
        : text(randomText(random, 30))
        , note(static_cast<int>(random() % 2))
    {
        note.textStorage().loadString(text);
        note.setSelectedRange(randomRange(random, note.textStorage().length()));
    }

    QString text;
    EditedNote note;
};

bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\t';
}

/// The lines without what they are indented by, and without numbers, which follow every change.
QStringList bareLines(const QString &text)
{
    QStringList lines;
    QString line;
    const auto finish = [&] {
        qsizetype start = 0;
        while (start < line.size() && (isBlank(line[start]) || line[start].isDigit())) {
            ++start;
        }
        lines.append(line.sliced(start));
        line.clear();
    };
    for (const QChar unit : text) {
        if (unit == u'\n' || unit == u'\r' || unit == QChar(0x2029)) {
            finish();
        } else {
            line += unit;
        }
    }
    finish();
    return lines;
}

QStringList sorted(QStringList lines)
{
    lines.sort();
    return lines;
}

} // namespace

TEST(EditingPropertyTest, IndentingChangesIndentationsAlone)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int i = 0; i < 800; ++i) {
        RandomNote of(random);
        const bool right = random() % 2 == 0;
        of.note.run([&] { of.note.controller().shiftSelectionRight(right, of.note); });
        EXPECT_EQ(bareLines(of.note.text()), bareLines(of.text)) << of.text.toStdString();
        const NSRange selection = of.note.selectedRange();
        ASSERT_TRUE(selection.location >= 0 && selection.length >= 0 &&
                    selection.limit() <= of.note.textStorage().length());
    }
}

TEST(EditingPropertyTest, StylingLeavesTheSelectionOnItsText)
{
    const TestSeed seed;
    auto random = seed.generator();
    const auto expanded = [](EditedNote &note, qint64 place) {
        return note.textStorage().stringWithExpandedTextAttachmentsWithRange({0, place}).size();
    };
    int compared = 0;
    for (int i = 0; i < 800; ++i) {
        RandomNote of(random);
        EditedNote &note = of.note;
        const bool isBack = random() % 2 == 0;
        note.undoManager().beginUndoGrouping();
        if (random() % 2 == 0) {
            note.controller().shiftSelectionRight(isBack, note);
        } else {
            note.controller().moveParagraphUp(isBack, note);
        }
        const QString text = note.text();
        const qint64 start = expanded(note, note.selectedRange().location);
        const qint64 limit = expanded(note, note.selectedRange().limit());
        note.controller().performStylingInTextView(note);
        note.undoManager().endUndoGrouping();
        if (note.text() != text) {
            continue; // numbers followed
        }
        ++compared;
        // An edge within what became an attachment has gone to its edge.
        const NSRange selection = note.selectedRange();
        const qint64 newStart = expanded(note, selection.location);
        const qint64 newLimit = expanded(note, selection.limit());
        EXPECT_TRUE(newStart == start || (newStart < start && start < expanded(note, selection.location + 1)))
            << text.toStdString() << "\nat " << start << ", now " << newStart;
        EXPECT_TRUE(newLimit == limit || selection.length == 0 ||
                    (newLimit > limit && limit > expanded(note, selection.limit() - 1)))
            << text.toStdString() << "\nto " << limit << ", now " << newLimit;
    }
    EXPECT_GT(compared, 400);
}

TEST(EditingPropertyTest, MovingLinesKeepsThemAll)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int i = 0; i < 800; ++i) {
        RandomNote of(random);
        const bool up = random() % 2 == 0;
        of.note.run([&] { of.note.controller().moveParagraphUp(up, of.note); });
        QStringList lines = sorted(bareLines(of.note.text()));
        const QStringList before = sorted(bareLines(of.text));
        // Past the text's end a new line is made.
        if (!up && lines.size() == before.size() + 1) {
            ASSERT_TRUE(lines.removeOne(QString()));
        }
        EXPECT_EQ(lines, before) << of.text.toStdString();
    }
}

TEST(EditingPropertyTest, ReturnAddsALineAndTakesNothingButTheSelection)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int i = 0; i < 800; ++i) {
        RandomNote of(random);
        of.note.setSelectedRange({of.note.selectedRange().location, 0});
        const QString before =
            of.text.left(of.note.textStorage()
                             .stringWithExpandedTextAttachmentsWithRange({0, of.note.selectedRange().location})
                             .size());
        const QString behind = of.text.sliced(before.size());
        of.note.pressReturn();
        // An empty item loses its marker; all else is still there.
        const QStringList lines = bareLines(of.note.text());
        const qsizetype linesBefore = bareLines(before).size() - 1;
        const qsizetype linesBehind = bareLines(behind).size() - 1;
        EXPECT_EQ(lines.first(linesBefore), bareLines(before).first(linesBefore)) << of.text.toStdString();
        EXPECT_EQ(lines.last(linesBehind), bareLines(behind).last(linesBehind)) << of.text.toStdString();
        const QString line = bareLines(of.text)[linesBefore];
        if (lines.size() > linesBefore + 1 + linesBehind) {
            EXPECT_EQ(lines.size(), linesBefore + 2 + linesBehind) << of.text.toStdString();
            EXPECT_TRUE(lines[linesBefore + 1].endsWith(bareLines(behind).first())) << of.text.toStdString();
        } else {
            EXPECT_LE(line.size(), 6) << of.text.toStdString();
        }
    }
}

TEST(EditingPropertyTest, FoldingAndUnfoldingGivesBackTheText)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int i = 0; i < 600; ++i) {
        RandomNote of(random);
        const bool hasView = random() % 2 == 0;
        NoteTextView *view = hasView ? &of.note : nullptr;
        const NSAttributedString before = of.note.textStorage().attributedString();
        QBNoteEditorCoreController &controller = of.note.controller();
        const NSRange range = randomRange(random, of.note.textStorage().length());
        controller.foldTextInRange(range, u"f"_s, view);
        EXPECT_EQ(of.note.text(), of.text);
        controller.foldTextWithAttributeName(QBNoteCheckboxStylerAttributeName, of.note.textStorage().fullRange(),
                                             view);
        EXPECT_EQ(of.note.text(), of.text);
        controller.unfoldTextWithFoldIdentifier(QBNoteCheckboxStylerAttributeName.string(),
                                                of.note.textStorage().fullRange(), view);
        controller.unfoldTextWithFoldIdentifier(u"f"_s, of.note.textStorage().fullRange(), view);
        EXPECT_EQ(of.note.text(), of.text);
        EXPECT_EQ(of.note.textStorage().string(), before.string());
    }
}

TEST(EditingPropertyTest, UndoingGivesBackEveryTextAndRedoingToo)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int i = 0; i < 150; ++i) {
        RandomNote of(random);
        EditedNote &note = of.note;
        QBNoteEditorCoreController &controller = note.controller();
        const std::vector<std::function<void()>> edits{
            [&] { note.type(pieces()[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces().size()))]); },
            [&] { note.pressReturn(); },
            [&] { note.pressBackspace(); },
            [&] { note.pressTab(random() % 2 == 0); },
            [&] { note.run([&] { controller.shiftSelectionRight(random() % 2 == 0, note); }); },
            [&] { note.run([&] { controller.moveParagraphUp(random() % 2 == 0, note); }); },
            [&] {
                note.run([&] {
                    controller.setCheckboxAttachmentsState(random() % 2 == 0, note.textStorage().fullRange(), note);
                });
            },
            [&] {
                note.run([&] {
                    controller.foldTextWithAttributeName(QBNoteCheckboxStylerCheckedAttributeName,
                                                         note.textStorage().fullRange(), &note);
                });
            },
            [&] {
                note.run([&] {
                    controller.unfoldTextWithFoldIdentifier(QBNoteCheckboxStylerCheckedAttributeName.string(),
                                                            note.textStorage().fullRange(), &note);
                });
            },
        };
        // The text after each step that left something to undo.
        QStringList texts{of.text};
        for (int step = 0; step < 12; ++step) {
            note.setSelectedRange(randomRange(random, note.textStorage().length()));
            edits[random() % edits.size()]();
            texts.append(note.text());
        }
        qsizetype position = texts.size() - 1;
        while (note.undoManager().canUndo()) {
            note.undoManager().undo();
            // Steps that changed nothing left nothing to undo.
            const QString text = note.text();
            while (position > 0 && texts[position] != text) {
                --position;
            }
            ASSERT_EQ(texts[position].toStdString(), text.toStdString()) << of.text.toStdString();
        }
        ASSERT_EQ(note.text().toStdString(), of.text.toStdString());
        while (note.undoManager().canRedo()) {
            note.undoManager().redo();
        }
        ASSERT_EQ(note.text().toStdString(), texts.last().toStdString());
    }
}

} // namespace quib::tests
