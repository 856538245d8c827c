#include "StoreFixture.h"

#include <Support/TestSeed.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

class NoteText : public StoreFixture
{
protected:
    struct Case
    {
        QString before;
        QString given;
        QString after;
    };
    template <typename Operation> void expectCases(const QList<Case> &cases, Operation operation)
    {
        for (const Case &each : cases) {
            const auto note = makeNote(each.before);
            operation(*note, each.given);
            EXPECT_EQ(note->text(), each.after) << each.before.toStdString() << " with " << each.given.toStdString();
        }
    }
};

TEST_F(NoteText, PrependGoesBehindATitle)
{
    expectCases(
        {
            {u""_s, u"x"_s, u"x"_s},
            {u"a"_s, u"x"_s, u"x\na"_s},
            {u"a"_s, u"x\n"_s, u"x\na"_s},
            {u"\na"_s, u"x"_s, u"x\na"_s},
            {u"# T"_s, u"x"_s, u"# T\nx"_s},
            {u"# T\nb"_s, u"x"_s, u"# T\nx\nb"_s},
            {u"# T\nb"_s, u"\nx"_s, u"# T\nx\nb"_s},
            {u"## T\nb"_s, u"x"_s, u"x\n## T\nb"_s}, // only a heading of the first level is a title
            {u"# T\nb"_s, u""_s, u"# T\nb"_s},
        },
        [](QBNote &note, const QString &given) { note.prependNoteWithText(given, 0); });
}

TEST_F(NoteText, AppendKeepsAClosingTagLineLast)
{
    expectCases(
        {
            {u""_s, u"x"_s, u"x"_s},
            {u"a"_s, u""_s, u"a"_s},
            {u"a"_s, u"x"_s, u"a\nx"_s},
            {u"a\n"_s, u"x"_s, u"a\nx"_s},
            {u"a"_s, u"\nx"_s, u"a\nx"_s},
            {u"a\n#tag"_s, u"x"_s, u"a\nx\n\n#tag"_s},
            {u"a\n#tag"_s, u"x\n"_s, u"a\nx\n\n#tag"_s},
            {u"a\n#tag"_s, u"x\n\n"_s, u"a\nx\n\n#tag"_s},
            {u"a\n#tag"_s, u"x\n\ny\n\n"_s, u"a\nx\n\ny\n\n\n#tag"_s}, // the first empty line is looked at
            {u"a\n#tag\n"_s, u"x"_s, u"a\n#tag\nx"_s},
            {u"a\n#one #two"_s, u"x"_s, u"a\n#one #two\nx"_s},
            {u"#tag"_s, u"x"_s, u"x\n\n#tag"_s},
            {u"a\n#Other"_s, u"x"_s, u"a\nx\n\n#Other"_s},
        },
        [](QBNote &note, const QString &given) { note.appendNoteWithText(given, 0); });
}

TEST_F(NoteText, ATagLineCountsOnlyWhenSpelledAsTheTag)
{
    // "Tag" came first and stays the title, so a line "#tag" is not "exactly one of the tags".
    const auto first = makeNote(u"#Tag"_s);
    const auto note = makeNote(u"a\n#tag"_s);
    note->appendNoteWithText(u"x"_s, 0);
    EXPECT_EQ(note->text(), u"a\n#tag\nx"_s);
}

TEST_F(NoteText, ReplaceKeepsAHeadingAboveOtherLines)
{
    expectCases(
        {
            {u"# T\nb"_s, u"x"_s, u"# T\nx"_s},
            {u"## T\nb\nc"_s, u"x"_s, u"## T\nx"_s},
            {u"### T\n"_s, u"x"_s, u"### T\nx"_s},
            {u"#### T\nb"_s, u"x"_s, u"\nx"_s},
            {u"# One line"_s, u"x"_s, u"\nx"_s}, // without a line end nothing is kept
            {u"a\nb"_s, u"x"_s, u"\nx"_s},
            {u""_s, u"x"_s, u"\nx"_s},
        },
        [](QBNote &note, const QString &given) { note.replaceNoteWithText(given, 0); });
}

TEST_F(NoteText, SectionsAreReplacedAppendedAndPrepended)
{
    const QString text = u"# A\none\n## B\ntwo\n### C\n"_s;
    const auto section = [](const QBNote &note, int index) { return note.noteSections().at(index); };
    expectCases({{text, u"x"_s, u"# A\none\n## B\nx\n### C\n"_s}, {text, u"x\n"_s, u"# A\none\n## B\nx\n### C\n"_s}},
                [&](QBNote &note, const QString &given) { note.replaceSection(section(note, 1), given, 0); });
    expectCases({{text, u"x"_s, u"# A\none\n## B\ntwo\nx\n### C\n"_s},
                 {text, u"\nx"_s, u"# A\none\n## B\ntwo\nx\n### C\n"_s},
                 {text, u""_s, text}},
                [&](QBNote &note, const QString &given) { note.appendSection(section(note, 1), given, 0); });
    expectCases({{text, u"x"_s, u"# A\none\n## B\nx\ntwo\n### C\n"_s},
                 {text, u"x\n"_s, u"# A\none\n## B\nx\ntwo\n### C\n"_s},
                 {u"# A\n\none"_s, u"x\n"_s, u"# A\nx\none"_s},
                 {u"# A\none"_s, u"x"_s, u"# A\nx\none"_s}},
                [&](QBNote &note, const QString &given) {
                    const auto sections = note.noteSections();
                    note.prependSection(sections.size() > 1 ? sections.at(1) : sections.at(0), given, 0);
                });
    // A heading that ends the text without a line end takes the text on its own line.
    expectCases({{u"# A"_s, u"x"_s, u"# Ax\n"_s}},
                [&](QBNote &note, const QString &given) { note.replaceSection(section(note, 0), given, 0); });
    // An empty body takes the text as it is.
    expectCases({{text, u"x"_s, text + u"x\n"_s}},
                [&](QBNote &note, const QString &given) { note.appendSection(section(note, 2), given, 0); });
}

TEST_F(NoteText, SectionEditsKeepEveryOtherCharacter)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QStringList lines{u"# H"_s, u"## I"_s, u"### J"_s, u"#### no"_s, u"text"_s, u""_s, u"#tag"_s, u"#"_s};
    for (int round = 0; round < 200; ++round) {
        QStringList chosen;
        for (auto left = 1 + random() % 12; left > 0; --left) {
            chosen.append(lines.at(static_cast<qsizetype>(random() % static_cast<unsigned>(lines.size()))));
        }
        const QString text = chosen.join(u'\n');
        const auto note = makeNote(text);
        const auto sections = note->noteSections();
        if (sections.isEmpty()) {
            continue;
        }
        const auto section = sections.at(static_cast<qsizetype>(random() % static_cast<unsigned>(sections.size())));
        const NSRange range = section.sectionRange();
        const QString before = text.left(range.location);
        const QString body = text.mid(range.location, range.length);
        const QString after = text.mid(range.limit());
        SCOPED_TRACE(text.toStdString());
        switch (random() % 3) {
        case 0:
            note->replaceSection(section, u"NEW"_s, 0);
            ASSERT_EQ(note->text(), before + u"NEW\n"_s + after);
            break;
        case 1:
            note->appendSection(section, u"NEW"_s, 0);
            ASSERT_TRUE(note->text().startsWith(before + body));
            ASSERT_TRUE(note->text().endsWith(u"NEW\n"_s + after));
            break;
        default:
            note->prependSection(section, u"NEW"_s, 0);
            ASSERT_TRUE(note->text().startsWith(before + u"NEW"_s));
            ASSERT_TRUE(note->text().endsWith(body + after));
        }
    }
}

TEST_F(NoteText, DuplicateCopiesAllButIdentityAndDates)
{
    const auto note = makeNote(u"# T #tag\nbody"_s);
    note->pin();
    note->setOrder(5);
    clock.advance(60);
    const auto copy = note->duplicateWithSyntax(0);
    EXPECT_NE(copy->uniqueIdentifier(), note->uniqueIdentifier());
    EXPECT_EQ(copy->text(), note->text());
    EXPECT_EQ(copy->tagsStrings(), note->tagsStrings());
    EXPECT_TRUE(copy->isPinned());
    EXPECT_EQ(copy->pinnedDate(), note->pinnedDate());
    EXPECT_EQ(copy->order(), 5);
    EXPECT_EQ(copy->modificationDate(), NSDate::now());
    EXPECT_EQ(copy->creationDate(), NSDate::now());
    EXPECT_NE(note->creationDate(), NSDate::now());
}

TEST_F(NoteText, MergeJoinsByTheEndsOfTheTexts)
{
    const std::pair<QStringList, QString> cases[] = {
        {{u"a"_s, u"b"_s}, u"a\n\nb"_s},
        {{u"a\n"_s, u"b"_s}, u"a\n\nb"_s},
        {{u"a\n\n"_s, u"b"_s}, u"a\n\n\n\nb"_s}, // the end of the text that comes is looked at
        {{u"a"_s, u"b\n\n"_s}, u"ab\n\n"_s},     // and so this one gets no separator
        {{u"a"_s, u"b\n\n"_s, u"c"_s}, u"ab\n\n\n\nc"_s},
        {{u""_s, u"b"_s}, u"b"_s},
        {{u"a"_s, u""_s, u"c"_s}, u"a\n\n\n\nc"_s},
    };
    for (const auto &[texts, merged] : cases) {
        QList<Ref<QBNote>> notes;
        for (const QString &text : texts) {
            notes.append(makeNote(text));
        }
        const auto result = QBNote::mergeNotes(notes, 0);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->text(), merged);
        EXPECT_FALSE(result->isPinned());
        for (const auto &note : notes) {
            EXPECT_TRUE(note->isTrashed());
        }
    }
}

TEST_F(NoteText, MergeOfOneDoesNothingAndPinsOnlyWhenAllArePinned)
{
    const auto a = makeNote(u"a"_s);
    EXPECT_FALSE(QBNote::mergeNotes({a}, 0));
    EXPECT_FALSE(QBNote::mergeNotes({}, 0));
    EXPECT_FALSE(a->isTrashed());
    const auto b = makeNote(u"b"_s);
    a->pin();
    b->pin();
    const auto result = QBNote::mergeNotes({a, b}, 0);
    EXPECT_TRUE(result->isPinned());
    EXPECT_FALSE(result->pinnedDate());
}

} // namespace quib::tests
