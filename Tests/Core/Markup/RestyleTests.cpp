// What is styled again after an edit: the range, the selection, and that the result is what a fresh load gives.

#include "StyledNote.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Support/TestSeed.h>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

/// The fence rule in plain words, on a list of fences instead of a text.
NSRange plainFenceRange(const NSAttributedString &text, NSRange paragraph)
{
    const QString string = text.string().toString();
    const auto styled = [&](qint64 place) {
        return text.attribute(QBNoteCodeTextStylerAttributeName, place).boolValue() ||
               text.attribute(QBNoteCodeTextStylerMarkerAttributeName, place).boolValue();
    };
    const auto fencesIn = [&](qint64 start, qint64 limit) {
        QList<qint64> places;
        const NSRegularExpression expression(u"^```"_s, NSRegularExpression::AnchorsMatchLines);
        for (const auto &match : expression.matchesInString(string, 0, {start, limit - start})) {
            places.append(match.range().location);
        }
        return places;
    };
    const qint64 length = string.size();
    const qint64 end = paragraph.limit();
    const qint64 previous = std::max<qint64>(paragraph.location - 1, 0);
    bool isStyledHere = false;
    for (qint64 place = paragraph.location; place < end; ++place) {
        isStyledHere = isStyledHere || styled(place);
    }
    const bool hasFence = !fencesIn(paragraph.location, end).isEmpty();
    const bool before = previous != 0 && styled(previous);
    const bool after = end < length && styled(end);
    const auto above = fencesIn(0, previous);
    const auto below = fencesIn(previous + paragraph.length, length);
    const auto isMarker = [&](qint64 place) {
        return text.attribute(QBNoteCodeTextStylerMarkerAttributeName, place).boolValue();
    };
    const auto from = [](qint64 start, qint64 limit) { return NSRange{start, limit - start}; };
    if (!isStyledHere && !hasFence && !before) {
        return kNotFoundRange;
    }
    if (!before && !after) {
        if (!hasFence) {
            return kNotFoundRange;
        }
        if (!above.isEmpty() && !isMarker(above.last())) {
            return from(above.last(), end);
        }
        if (below.isEmpty()) {
            return kNotFoundRange;
        }
        return from(previous, isMarker(below.first()) ? length : below.first() + 3);
    }
    if (before && after) {
        if (above.isEmpty()) {
            return kNotFoundRange;
        }
        return from(above.last(), hasFence || below.isEmpty() ? length : below.first() + 3);
    }
    if (after) {
        return from(paragraph.location, length);
    }
    const auto first = fencesIn(0, paragraph.location);
    return first.isEmpty() ? kNotFoundRange : from(first.first(), length);
}

TEST(Restyle, ReachesAsFarAsTheFencesAskFor)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const QStringList lines{u"text"_s, u"```"_s, u"```cpp"_s, u""_s, u" ```"_s, u"a ``` b"_s, u"* item"_s};
    const auto randomLines = [&](int most) {
        QStringList chosen;
        for (auto n = generator() % static_cast<unsigned>(most); n > 0; --n) {
            chosen.append(lines.at(static_cast<qsizetype>(generator() % static_cast<unsigned>(lines.size()))));
        }
        return chosen.join(u'\n');
    };
    int found = 0;
    for (int round = 0; round < 2'000; ++round) {
        StyledNote note(0, randomLines(9));
        auto &storage = note.storage();
        const qint64 location = static_cast<qint64>(generator() % static_cast<quint64>(storage.length() + 1));
        const qint64 length = std::min<qint64>(static_cast<qint64>(generator() % 5), storage.length() - location);
        // An edit whose styles are not set yet, as the rule meets it.
        storage.replaceCharactersInRange({location, length}, randomLines(3));
        const auto &text = storage.attributedString();
        const auto paragraph = text.paragraphRangeForRange({std::min<qint64>(location, text.length()), 0});
        const auto range =
            QBNotesTextStorage::multipleParagraphStyleRangeForEditedParagraphRange(paragraph, false, text);
        ASSERT_EQ(range, plainFenceRange(text, paragraph)) << text.string().toString().toStdString();
        found += range.isFound() ? 1 : 0;
    }
    EXPECT_GT(found, 300);
}

TEST(Restyle, TakesInTheNextParagraphBehindANewLine)
{
    StyledNote note(0, u"one\ntwo\nthree"_s);
    auto &storage = note.storage();
    storage.replaceCharactersInRange({3, 0}, u"\n");
    EXPECT_EQ(storage.rangeToStyle(), (NSRange{0, 5})) << "the edited paragraphs and the one behind them";
    StyledNote last(0, u"one"_s);
    last.storage().replaceCharactersInRange({3, 0}, u"\n");
    EXPECT_EQ(last.storage().rangeToStyle(), (NSRange{0, 4})) << "nothing stands behind the end";
    StyledNote deleting(0, u"one two"_s);
    EXPECT_FALSE(deleting.storage().lastEditDidDeleteText());
    deleting.storage().replaceCharactersInRange({3, 4}, u"");
    EXPECT_TRUE(deleting.storage().lastEditDidDeleteText());
}

/// Edits random texts made of pieces, and looks whether each edit gives what a load of the text gives.
struct Edits
{
    QStringList pieces; ///< of the texts
    QStringList typed;  ///< into them
    qint64 mostDeleted; ///< units, by each edit
    int rounds;
    int size; ///< pieces in a text
};

void expectEditsGiveWhatLoadsGive(const Edits &edits)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](qint64 bound) {
        return static_cast<qint64>(generator() % static_cast<quint64>(bound));
    };
    const auto randomOf = [&](const QStringList &pieces) { return pieces.at(random(pieces.size())); };
    for (int round = 0; round < edits.rounds; ++round) {
        const int syntax = round % 2;
        QString text;
        for (int i = 0; i < edits.size; ++i) {
            text += randomOf(edits.pieces);
        }
        StyledNote note(syntax, text);
        for (int edit = 0; edit < 12; ++edit) {
            const qint64 location = random(note.storage().length() + 1);
            const qint64 length = std::min<qint64>(random(edits.mostDeleted + 1), note.storage().length() - location);
            const QString typed = randomOf(edits.typed);
            const QString before = note.text();
            static_cast<void>(note.replace({location, length}, typed));
            StyledNote fresh(syntax, note.text());
            ASSERT_EQ(note.looks().toStdString(), fresh.looks().toStdString())
                << "round " << round << ", edit " << edit << ", \"" << typed.toStdString() << "\" for " << length
                << " at " << location << " of " << before.toStdString();
        }
    }
}

TEST(Restyle, GivesWhatAFreshLoadGives)
{
    // An attachment that stands hides the text behind it from the stylers that come before its own, which a load still
    // shows them: a "#" typed before the rule of a line makes a tag of it. So this law is one of texts whose
    // attachments nothing before them in the order would read: lists and todos, with all that is inline around them.
    const QStringList pieces{u"word"_s,
                             u"two words"_s,
                             u" "_s,
                             u" "_s,
                             u"\n"_s,
                             u"\n"_s,
                             u"*"_s,
                             u"**"_s,
                             u"/"_s,
                             u"_"_s,
                             u"~"_s,
                             u"~~"_s,
                             u"::"_s,
                             u"*bold*"_s,
                             u"/x y/"_s,
                             u" _under_ "_s,
                             u" -gone- "_s,
                             u"::mark::"_s,
                             u"\n* "_s,
                             u"\n+ "_s,
                             u"\n- "_s,
                             u"\n  12. "_s,
                             u"\n> "_s,
                             u"\n- [ ] "_s,
                             u"\n- [x] "_s,
                             u"1/2"_s,
                             u"a.b/c"_s,
                             u"https://example.com/a_b/c "_s,
                             u"me@example.com"_s,
                             u"\U0001F600"_s};
    expectEditsGiveWhatLoadsGive({.pieces = pieces, .typed = pieces, .mostDeleted = 2, .rounds = 150, .size = 25});
}

TEST(Restyle, OfOtherConstructsGivesWhatAFreshLoadGives)
{
    // Each kind among words and inline styles, where nothing that comes before it in the order reads what its
    // attachments stand for. Headers, tags and links are not cut: a header may come out of a tag, and links are
    // found around links. Colours are left out, whose codes become tags when they are cut, and blocks of code, of whose
    // closing fence no more than the marker is styled again.
    const QStringList plain{u"word"_s,
                            u"two words"_s,
                            u" "_s,
                            u" "_s,
                            u"\n"_s,
                            u"\n"_s,
                            u"*bold*"_s,
                            u" -gone- "_s,
                            u"/x y/"_s,
                            u" _under_ "_s,
                            u"::mark::"_s,
                            u"1/2"_s,
                            u"https://example.com/a_b/c "_s};
    const struct
    {
        const char *label;
        QStringList pieces;
        bool isCut = true; ///< whether edits take it apart
    } kinds[] = {
        {"headers", {u"\n# "_s, u"\n## "_s, u"\n###### "_s}, false},
        {"tags", {u" #tag "_s, u" #a/b "_s, u"#a tag#"_s}, false},
        {"inline code", {u" `code` "_s, u" `two words` "_s}},
        {"links", {u" [title](https://a.b/c) "_s, u" [[Note]] "_s}, false},
        {"separators", {u"\n---\n"_s, u"\n---\n"_s}},
        {"arrows", {u"word -> word"_s, u"word <- word"_s}},
        {"files", {u"[image:1/a.png]"_s, u" [file:2/b.txt] "_s}},
        {"odd blanks", {u"\u00a0"_s, u"\u200b"_s}},
    };
    for (const auto &kind : kinds) {
        SCOPED_TRACE(kind.label);
        QStringList pieces = plain + kind.pieces + kind.pieces;
        const QStringList words{u"z"_s, u"word"_s, u"*bold*"_s};
        if (kind.pieces.constFirst().contains(u'#')) {
            // Highlights come before tags, and would see what the spacers of tags are in the way of.
            pieces.removeAll(u"::mark::"_s);
        }
        expectEditsGiveWhatLoadsGive({.pieces = pieces,
                                      .typed = kind.isCut ? pieces : words,
                                      .mostDeleted = kind.isCut ? 2 : 0,
                                      .rounds = 30,
                                      .size = 14});
    }
}

TEST(Restyle, KeepsTheCaretWithItsText)
{
    struct Case
    {
        QString text;
        qint64 caret; ///< in the buffer
        QString typed;
        QString expected; ///< the buffer afterwards, with | where the caret belongs
    };
    const QList<Case> cases{
        {u"*one"_s, 1, u" "_s, u"\ufffc |one"_s},
        {u"* one"_s, 5, u"x"_s, u"\ufffc onex|"_s},
        {u"a #tag b"_s, 9, u"c"_s, u"a \ufffc#tag\ufffc c|b"_s},
        {u"[x](http://a.b"_s, 14, u")"_s, u"[x](\ufffc)|"_s},
        {u"# one"_s, 1, u"#"_s, u"\ufffc| one"_s},
    };
    for (const Case &test : cases) {
        StyledNote note(0, test.text);
        const auto edit = note.replace({test.caret, 0}, test.typed);
        QString after = note.buffer();
        after.insert(
            edit.proposedSelection.isFound() ? edit.proposedSelection.location : test.caret + test.typed.size(), u'|');
        EXPECT_EQ(after.toStdString(), test.expected.toStdString()) << test.text.toStdString();
    }
}

TEST(Restyle, KeepsTheCaretBehindTheTextThatStoodBeforeIt)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](qint64 bound) {
        return static_cast<qint64>(generator() % static_cast<quint64>(bound));
    };
    int replaced = 0;
    for (int round = 0; round < 400; ++round) {
        StyledNote note(round % 2, quib::tests::randomMarkup(generator, 20));
        auto &storage = note.storage();
        const qint64 location = random(storage.length() + 1);
        const QString piece = quib::tests::randomMarkupPiece(generator);
        const QString before = storage.stringWithExpandedTextAttachmentsWithRange({0, location}) % piece;
        const auto edit = note.replace({location, 0}, piece);
        if (!edit.isReplaced) {
            EXPECT_FALSE(edit.proposedSelection.isFound());
            continue;
        }
        ++replaced;
        ASSERT_EQ(edit.proposedSelection.length, 0);
        const QString now = storage.stringWithExpandedTextAttachmentsWithRange({0, edit.proposedSelection.location});
        bool canStandThere = false;
        for (qint64 place = 0; place <= storage.length() && !canStandThere; ++place) {
            canStandThere = storage.stringWithExpandedTextAttachmentsWithRange({0, place}).size() == before.size();
        }
        // Inside of what an attachment stands for there is no place; the caret then goes in front of it.
        if (canStandThere) {
            EXPECT_EQ(now, before);
        } else {
            EXPECT_TRUE(before.startsWith(now) && now.size() < before.size());
        }
    }
    EXPECT_GT(replaced, 50);
}

TEST(Restyle, InPlaceAfterUndoLeavesAttachmentsAlone)
{
    StyledNote note(0, u"* one\n*bold*"_s);
    const QString buffer = note.buffer();
    note.storage().applyStylingInRange(note.storage().fullRange());
    EXPECT_EQ(note.buffer(), buffer);
    EXPECT_EQ(note.looks(), StyledNote(0, u"* one\n*bold*"_s).looks());
}

} // namespace
