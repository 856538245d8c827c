// Laws of the commands of formatting, over random texts and ranges.

#include "StyleCommand.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Syntax/SyntaxCharacters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

using namespace Qt::StringLiterals;
using quib::tests::FakeTextView;
using quib::tests::runStyleCommand;
using quib::tests::styleCommandResult;
using quib::tests::TestSeed;

namespace {

constexpr int kRounds = 60;

/// What markup is made of, in both syntaxes, and what breaks texts.
const QStringList &markupPieces()
{
    static const QStringList pieces{
        u"a"_s,
        u"word"_s,
        u" "_s,
        u"  "_s,
        u"\t"_s,
        u"\n"_s,
        u"\n\n"_s,
        u"\r\n"_s,
        u"*"_s,
        u"**"_s,
        u"/"_s,
        u"_"_s,
        u"~"_s,
        u"~~"_s,
        u"-"_s,
        u"---"_s,
        u"::"_s,
        u"`"_s,
        u"\n```\n"_s,
        u"```"_s,
        u"\n> "_s,
        u"\n# "_s,
        u"\n## "_s,
        u"\n* "_s,
        u"\n- "_s,
        u"\n+ "_s,
        u"\n\t* "_s,
        u"\n1. "_s,
        u"\n7. "_s,
        u"\n\t2. "_s,
        u"\n- [ ] "_s,
        u"\n- [x] "_s,
        u"#tag"_s,
        u"[t](http://a.b)"_s,
        u"[[w]]"_s,
        u"->"_s,
        u"."_s,
        u"(bold)"_s,
        u"*b*"_s,
        u"**b**"_s,
        u"/i/"_s,
        u"_u_"_s,
        u"::m::"_s,
        u"\u2028"_s,
        u"\u00A0"_s,
        u"\uFEFF"_s,
        u"\U0001F600"_s,
        QString(QChar(0xD83D)),
        QString(QChar(0)),
        QString(QChar(0xFFFC)),
    };
    return pieces;
}

/// Nothing of it, alone or together, is markup.
const QStringList &plainPieces()
{
    static const QStringList pieces{u"a"_s,  u"word"_s, u"12"_s,     u" "_s,      u" "_s,      u"  "_s,
                                    u"\t"_s, u"\n"_s,   u"\n"_s,     u"\n\n"_s,   u"\r\n"_s,   u"\u2029"_s,
                                    u","_s,  u"?"_s,    u"\u00E9"_s, u"\u00A0"_s, u"\uFEFF"_s, u"\U0001F600"_s};
    return pieces;
}

class Random
{
public:
    [[nodiscard]] qint64 upTo(qint64 last) { return std::uniform_int_distribution<qint64>(0, last)(m_generator); }
    [[nodiscard]] QString text(const QStringList &pieces, qint64 longest)
    {
        QString text;
        for (qint64 i = upTo(longest); i > 0; --i) {
            text += pieces[upTo(pieces.size() - 1)];
        }
        return text;
    }
    [[nodiscard]] NSRange rangeIn(qint64 length)
    {
        const qint64 a = upTo(length);
        const qint64 b = upTo(length);
        return {std::min(a, b), std::abs(a - b)};
    }

private:
    TestSeed m_seed;
    std::mt19937 m_generator = m_seed.generator();
};

QString text(FakeTextView &view)
{
    return view.textStorage().stringWithExpandedTextAttachments();
}

std::string told(int syntax, const QString &command, const QString &text, NSRange range)
{
    return QString(command % u" in syntax " % QString::number(syntax) % u" at " % QString::number(range.location) %
                   u"+" % QString::number(range.length) % u" of: " % text)
        .toStdString();
}

/// Runs a command on a random selection of a random plain text, and calls check with the text before and the view.
template <typename Check> void forPlainSelections(const QStringList &commands, const Check &check)
{
    Random random;
    for (int syntax : {0, 1}) {
        for (const QString &command : commands) {
            for (int round = 0; round < kRounds; ++round) {
                const QString plain = random.text(plainPieces(), 12);
                FakeTextView view(syntax, u""_s);
                view.textStorage().loadString(plain);
                view.setSelectedRange(random.rangeIn(plain.size()));
                SCOPED_TRACE(told(syntax, command, plain, view.selectedRange()));
                if (runStyleCommand(command, view)) {
                    check(command, plain, view);
                }
            }
        }
    }
}

TEST(StyleEditorProperty, ACommandTwiceGivesTheTextBack)
{
    const QStringList commands =
        u"bold italic marker code bullet box number quote h1 h2 h3 h4 h5 h6 fence"_s.split(u' ');
    forPlainSelections(commands, [](const QString &command, const QString &plain, FakeTextView &view) {
        if (view.textStorage().string().contains(QChar(0xFFFC)) && command == u"bold"_s) {
            return; // Four stars on a line of their own are a separator in Markdown.
        }
        ASSERT_NE(text(view), plain);
        ASSERT_TRUE(runStyleCommand(command, view));
        ASSERT_EQ(text(view).toStdString(), plain.toStdString());
    });
}

TEST(StyleEditorProperty, CommandsThatAddBlanksGiveTheTextBackButForThem)
{
    forPlainSelections(
        {u"underline"_s, u"strike"_s}, [](const QString &command, const QString &plain, FakeTextView &view) {
            const QString marked = text(view);
            ASSERT_TRUE(runStyleCommand(command, view));
            const QString blanked = text(view);
            ASSERT_EQ(blanked.simplified().remove(u' ').toStdString(), plain.simplified().remove(u' ').toStdString());
            // The blanks are there now: from here on it is exact.
            ASSERT_TRUE(runStyleCommand(command, view));
            ASSERT_EQ(text(view).toStdString(), marked.toStdString());
        });
}

TEST(StyleEditorProperty, NumberedLinesAreInOrder)
{
    forPlainSelections({u"number"_s}, [](const QString & /*command*/, const QString & /*plain*/, FakeTextView &view) {
        ASSERT_FALSE(runStyleCommand(u"renumber"_s, view)) << view.marked().toStdString();
    });
}

/// A text whose lines have a marker before their first and behind their last unit that is not blank.
QString plainlyMarked(const QString &string, const QString &marker)
{
    QString result;
    QString line;
    const auto endLine = [&] {
        const auto isNotBlank = [](QChar unit) { return !quib::syntax::isSpace(unit.unicode()); };
        const auto first = std::ranges::find_if(line, isNotBlank) - line.begin();
        qsizetype limit = line.size();
        while (limit > first && !isNotBlank(line[limit - 1])) {
            --limit;
        }
        const QString content = line.mid(first, limit - first);
        result += line.left(first) % (content.isEmpty() ? content : marker % content % marker) % line.mid(limit);
        line.clear();
    };
    for (const QChar unit : string) {
        if (quib::syntax::isLineTerminator(unit.unicode())) {
            endLine();
            result += unit;
        } else {
            line += unit;
        }
    }
    endLine();
    return result;
}

TEST(StyleEditorProperty, ASelectionIsItsLinesWithMarkersAroundWhatIsNotBlank)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const int syntax = round % 2;
        const QString plain = random.text(plainPieces(), 12);
        const NSRange range = random.rangeIn(plain.size());
        if (range.length == 0) {
            continue;
        }
        const QString expected =
            plain.left(range.location) %
            plainlyMarked(plain.mid(range.location, range.length), syntax == 1 ? u"**"_s : u"*"_s) %
            plain.mid(range.limit());
        FakeTextView view(syntax, u""_s);
        view.textStorage().loadString(plain);
        view.setSelectedRange(range);
        SCOPED_TRACE(told(syntax, u"bold"_s, plain, range));
        ASSERT_EQ(runStyleCommand(u"bold"_s, view), plain != expected);
        ASSERT_EQ(text(view).toStdString(), expected.toStdString());
    }
}

/// Numbers as a reader would give them: an item goes on after the nearest one above that is not further in, if that
/// stands as far in as itself; else it begins at 1.
QString plainlyNumbered(const QList<std::pair<qint64, qint64>> &items)
{
    QString result;
    QList<qint64> numbers;
    for (qsizetype i = 0; i < items.size(); ++i) {
        qsizetype above = i - 1;
        while (above >= 0 && items[above].first > items[i].first) {
            --above;
        }
        const bool goesOn = above >= 0 && items[above].first == items[i].first;
        numbers.append(i == 0 ? items[i].second : goesOn ? numbers[above] + 1 : 1);
        result += QString(items[i].first, u'\t') % QString::number(numbers[i]) % u". item\n";
    }
    return result;
}

TEST(StyleEditorProperty, RenumberingIsWhatAReaderWouldNumber)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        QList<std::pair<qint64, qint64>> items;
        QString list;
        for (qint64 i = random.upTo(12); i >= 0; --i) {
            items.append({random.upTo(3), random.upTo(120)});
            list += QString(items.last().first, u'\t') % QString::number(items.last().second) % u". item\n";
        }
        FakeTextView view(static_cast<int>(random.upTo(1)), u""_s);
        view.textStorage().loadString(list);
        view.setSelectedRange(random.rangeIn(list.size() - 1));
        const QString expected = plainlyNumbered(items);
        SCOPED_TRACE(list.toStdString());
        ASSERT_EQ(runStyleCommand(u"renumber"_s, view), list != expected);
        ASSERT_EQ(text(view).toStdString(), expected.toStdString());
        ASSERT_FALSE(runStyleCommand(u"renumber"_s, view));
    }
}

TEST(StyleEditorProperty, AnyCommandOnAnyTextIsUndoneToTheSameTextAndSelection)
{
    Random random;
    for (int syntax : {0, 1}) {
        for (const QString &command : quib::tests::styleCommands()) {
            for (int round = 0; round < kRounds / 3; ++round) {
                FakeTextView view(syntax, u""_s);
                view.textStorage().loadString(random.text(markupPieces(), 20));
                const QString before = text(view);
                const NSRange selection = random.rangeIn(view.textStorage().length());
                view.setSelectedRange(selection);
                SCOPED_TRACE(told(syntax, command, before, selection));
                if (!runStyleCommand(command, view)) {
                    continue;
                }
                const NSRange selected = view.selectedRange();
                ASSERT_EQ(quib::rangeCutToLength(selected, view.textStorage().length()), selected);
                const QString after = text(view);
                view.undoManager().undo();
                ASSERT_EQ(text(view).toStdString(), before.toStdString());
                ASSERT_EQ(view.selectedRange(), selection);
                view.undoManager().redo();
                ASSERT_EQ(text(view).toStdString(), after.toStdString());
            }
        }
    }
}

TEST(StyleEditorProperty, AnyRangeAndAnyAttributesAreTaken)
{
    // Attributes that no styler would leave so: what a command sees of a text that is not styled yet.
    const std::array names{
        QBNoteBoldTextStylerMarkerAttributeName,       QBNoteBoldTextStylerAttributeName,
        QBNoteItalicTextStylerMarkerAttributeName,     QBNoteUnderlineTextStylerMarkerAttributeName,
        QBNoteStrikedTextStylerMarkerAttributeName,    QBNoteHighlighterTextStylerMarkerAttributeName,
        QBNoteCodeInlineTextStylerMarkerAttributeName, QBNoteCodeTextStylerAttributeName,
        QBNoteCodeTextStylerMarkerAttributeName,       QBHeaderTextStylerAttributeName,
        QBHeaderTextStylerMarkerAttributeName,         QBNoteUnorderedListStylerAttributeName,
        QBNoteUnorderedListStylerMarkerAttributeName,  QBNoteOrderedListTextStylerAttributeName,
        QBNoteOrderedListStylerMArkerAttributeName,    QBNoteCheckboxStylerMarkerAttributeName,
        QBNoteQuoteTextStylerMarkerAttributeName};
    Random random;
    for (int round = 0; round < kRounds * 4; ++round) {
        QBNoteTextKitStack stack;
        stack.stylerManager()->setSyntax(round % 2);
        NSMutableAttributedString note(random.text(markupPieces(), 20));
        for (qint64 i = random.upTo(12); i > 0; --i) {
            note.addAttribute(names[static_cast<size_t>(random.upTo(names.size() - 1))], 1,
                              random.rangeIn(note.length()));
        }
        const NSMutableAttributedString before = note;
        const NSRange inside = random.rangeIn(note.length());
        for (const NSRange range : {inside, NSRange{inside.location, NSNotFound}, NSRange{note.length() + 5, 3},
                                    NSRange{-3, 5}, kNotFoundRange}) {
            for (const QString &command : quib::tests::styleCommands()) {
                SCOPED_TRACE(told(round % 2, command, note.string().toString(), range));
                const auto result = styleCommandResult(command, stack.styleEditor(), note, range);
                ASSERT_EQ(note, before);
                if (result) {
                    const NSRange replaced = result->replacementRange;
                    ASSERT_EQ(quib::rangeCutToLength(replaced, note.length()), replaced);
                    const qint64 length = note.length() - replaced.length + result->replamentAttributedString.length();
                    const NSRange selected = result->proposedSelectionRange;
                    ASSERT_EQ(quib::rangeCutToLength(selected, length), selected);
                }
            }
        }
    }
}

TEST(StyleEditorProperty, EveryLineOfAManyIsDone)
{
    constexpr int kLines = 20'000;
    const QString line = u"one line\n"_s;
    for (const QString &command : {u"bold"_s, u"bullet"_s, u"number"_s, u"quote"_s, u"fence"_s}) {
        FakeTextView view(0, u""_s);
        view.textStorage().loadString(line.repeated(kLines));
        view.setSelectedRange(view.textStorage().fullRange());
        ASSERT_TRUE(runStyleCommand(command, view));
        const QString after = text(view);
        EXPECT_EQ(after.count(command == u"fence"_s ? u'`' : u'\n'), command == u"fence"_s ? 6 : kLines);
        EXPECT_EQ(after.count(u"one line"_s), kLines);
        ASSERT_TRUE(runStyleCommand(command, view));
        EXPECT_EQ(text(view), line.repeated(kLines)) << command.toStdString();
    }
}

} // namespace
