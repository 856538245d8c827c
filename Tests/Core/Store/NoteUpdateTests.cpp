#include "StoreFixture.h"

#include <Foundation/Identifiers.h>
#include <Logging/QBDeviceUUID.h>
#include <Store/MRVectorClock.h>
#include <Support/TestSeed.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

class NoteUpdate : public StoreFixture
{
};

TEST_F(NoteUpdate, NewNoteHasAnIdentifierAndOneInstant)
{
    const auto note = QBNote::insertInManagedObjectContext(moc());
    const auto other = QBNote::insertInManagedObjectContext(moc());
    EXPECT_FALSE(note->uniqueIdentifier().isEmpty());
    EXPECT_FALSE(note->uniqueIdentifier().contains(u'/'));
    EXPECT_NE(note->uniqueIdentifier(), other->uniqueIdentifier());
    EXPECT_EQ(note->creationDate(), NSDate::now());
    EXPECT_EQ(note->modificationDate(), NSDate::now());
}

struct Derived
{
    QString text;
    QString title;
    QString subtitle;
    QString tags; // sorted, joined by blanks
    bool hasSourceCode = false;
    int incompleted = 0;
    int completed = 0;
};

TEST_F(NoteUpdate, DerivesEveryFieldFromTheText)
{
    const Derived cases[] = {
        {u""_s, u""_s, u""_s, u""_s},
        {u"one line"_s, u"one line"_s, u""_s, u""_s},
        {u"# Plan\nfirst\nsecond #work"_s, u"Plan"_s, u"first second #work"_s, u"work"_s},
        {u"# **Title**"_s, u"**Title**"_s, u""_s, u""_s},
        {u"# x #a/b/c d"_s, u"x #a/b/c d"_s, u""_s, u"a a/b a/b/c"_s},
        {u"x\n```\n#code\n- todo\n```\n#real"_s, u"x"_s, u"#code - todo #real"_s, u"real"_s, true},
        {u"x\n- open\n+ done\n- more"_s, u"x"_s, u"- open + done - more"_s, u""_s, false, 2, 1},
        {u"x `#inline` #b"_s, u"x #inline #b"_s, u""_s, u"b"_s},
        {u"# head #tag"_s, u"head #tag"_s, u""_s, u"tag"_s},
        {u"#two words# end"_s, u"#two words# end"_s, u""_s, u"two words"_s},
    };
    for (const Derived &each : cases) {
        SCOPED_TRACE(each.text.toStdString());
        const auto note = makeNote(each.text);
        EXPECT_EQ(note->text(), each.text);
        EXPECT_EQ(note->title(), each.title);
        EXPECT_EQ(note->subtitle(), each.subtitle);
        EXPECT_EQ(sortedTags(*note).join(u' '), each.tags);
        EXPECT_EQ(note->hasSourceCode(), each.hasSourceCode);
        EXPECT_EQ(note->todoIncompleted(), each.incompleted);
        EXPECT_EQ(note->todoCompleted(), each.completed);
        EXPECT_FALSE(note->title().isNull());
        EXPECT_FALSE(note->subtitle().isNull());
    }
}

TEST_F(NoteUpdate, ListsTagsDeepestFirstWithAllAncestors)
{
    const std::pair<QString, QStringList> cases[] = {
        {u"#a/b/c"_s, {u"a/b/c"_s, u"a/b"_s, u"a"_s}},
        {u"#a//b"_s, {u"a/b"_s, u"a"_s}},
        {u"#a/"_s, {u"a"_s}},
        {u"#x #x"_s, {u"x"_s, u"x"_s}},
        {u"#123 #1-2 #/a # ## x"_s, {}},
        {u"#aabbcc alone"_s, {}},
        {u"::#marked:: #seen"_s, {u"seen"_s}},
        {u"[#link](http://x.org) #seen"_s, {u"seen"_s}},
        {u"[file:ID/#name.txt] #seen"_s, {u"seen"_s}},
        {u"word#two words#"_s, {u"two words"_s}},
    };
    for (const auto &[text, tags] : cases) {
        EXPECT_EQ(QBNote::parseHashTagsFromText(text, 0), tags) << text.toStdString();
    }
}

TEST_F(NoteUpdate, BoundsTheLevelsOfOnePath)
{
    // A path of many levels would otherwise ask for the square of its length.
    const QString deep = u"#a"_s + u"/a"_s.repeated(200'000);
    const QStringList tags = QBNote::parseHashTagsFromText(deep, 0);
    EXPECT_EQ(tags.size(), 64);
    EXPECT_EQ(tags.constLast(), u"a"_s);
    EXPECT_EQ(tags.constFirst(), u"a"_s + u"/a"_s.repeated(63));
}

TEST_F(NoteUpdate, StampsModificationOnlyWhenAsked)
{
    const auto note = makeNote(u"a"_s);
    const auto made = note->modificationDate();
    clock.advance(10);
    note->updateNoteWithText(u"b"_s, 0, /*updateModificationDate=*/false);
    EXPECT_EQ(note->modificationDate(), made);
    EXPECT_EQ(note->text(), u"b"_s);
    note->updateNoteWithText(u"b"_s, 0); // no comparison: the same text counts as a write
    EXPECT_EQ(note->modificationDate(), NSDate::now());
}

TEST_F(NoteUpdate, EveryWriteOfTheTextTicksTheClockAndNothingElseDoes)
{
    const QString device = QBDeviceUUID::deviceUUID().value_or(QString());
    const auto note = makeNote(u"a"_s);
    ASSERT_TRUE(note->noteVectorClock());
    EXPECT_EQ(note->noteVectorClock()->clockValueForID(device), 1U);
    note->updateNoteWithText(u"b"_s, 0);
    note->pin();
    note->trash();
    note->archive();
    EXPECT_EQ(note->noteVectorClock()->clockValueForID(device), 2U);
    EXPECT_EQ(note->lastEditingDevice(), QBDeviceUUID::deviceName());

    MRVectorClock other;
    other.updateClockValueForID(u"OTHER"_s, 7);
    note->mergeVectorClockWithClock(other);
    EXPECT_EQ(note->noteVectorClock()->clockValueForID(u"OTHER"_s), 7U);
    EXPECT_EQ(note->noteVectorClock()->clockValueForID(device), 2U);

    note->setVectorClock("no clock at all");
    EXPECT_FALSE(note->noteVectorClock());
    note->updateNoteWithText(u"c"_s, 0);
    EXPECT_EQ(note->noteVectorClock()->clockValueForID(device), 1U);
}

TEST_F(NoteUpdate, SyntaxChangeCountsCodeTooAndNothingElse)
{
    const auto note = makeNote(u"x #t\n```\n- in code\n```\n- out"_s);
    EXPECT_EQ(note->todoIncompleted(), 1);
    const auto clockBefore = note->vectorClock();
    note->updateAttributesForNewSyntax(0);
    EXPECT_EQ(note->todoIncompleted(), 2);
    EXPECT_EQ(note->vectorClock(), clockBefore);
    EXPECT_EQ(note->tagsStrings(), QStringList{u"t"_s});
}

TEST_F(NoteUpdate, CountsAreCutToSixteenBits)
{
    const auto note = makeNote(u"- x\n"_s.repeated(40'000));
    EXPECT_EQ(note->todoIncompleted(), 32'767);
}

TEST_F(NoteUpdate, AnyTextComesBackAfterReopening)
{
    const QString texts[] = {
        QString(QChar(u'\0')) + QString::fromUtf16(u"a\0b", 3),
        QString(QChar(0xD800)) + u"lone"_s + QChar(0xDC00),
        u"\uFEFFbom"_s,
        QString(QChar(QChar::ObjectReplacementCharacter)),
        u""_s,
        QString(300'000, u'x'),
    };
    QStringList identifiers;
    for (const QString &text : texts) {
        identifiers.append(makeNote(text)->uniqueIdentifier());
    }
    reopen();
    for (qsizetype i = 0; i < identifiers.size(); ++i) {
        const auto note = QBNote::noteWithUniqueIdentifier(identifiers.at(i), moc());
        ASSERT_TRUE(note);
        EXPECT_EQ(note->text(), texts[i]);
        EXPECT_EQ(note->title(), QBNote::parseTitleFromText(texts[i]));
    }
}

TEST_F(NoteUpdate, RepairFindsWhatIsOutOfStepAndLeavesTheTextAlone)
{
    const auto note = makeNote(u"# T\nbody #tag\n- x"_s);
    EXPECT_EQ(note->repairDerivedFieldsWithSyntax(0), QStringList());
    const auto vectorClock = note->vectorClock();
    note->setTitle(u"wrong"_s);
    note->setTags({});
    note->setTodoIncompleted(9);
    const QStringList changed = note->repairDerivedFieldsWithSyntax(0);
    EXPECT_TRUE(changed.contains(u"title"_s));
    EXPECT_TRUE(changed.contains(u"tags"_s));
    EXPECT_TRUE(changed.contains(u"todoIncompleted"_s));
    EXPECT_EQ(note->title(), u"T"_s);
    EXPECT_EQ(note->tagsStrings(), QStringList{u"tag"_s});
    EXPECT_EQ(note->todoIncompleted(), 1);
    EXPECT_EQ(note->vectorClock(), vectorClock);
}

TEST_F(NoteUpdate, UpdatingTwiceIsUpdatingOnce)
{
    // Whatever the note was before, its fields are those of the last text.
    const TestSeed seed;
    auto random = seed.generator();
    const QStringList pieces{u"#a "_s, u"#a/b "_s, u"#x y# "_s, u"\n"_s, u"```\n"_s, u"- t\n"_s,      u"+ t\n"_s,
                             u"`"_s,   u"word "_s, u"::"_s,     u"# "_s, u"**"_s,    u"[file:A/b] "_s};
    const auto note = makeNote(u""_s);
    for (int round = 0; round < 300; ++round) {
        QString text;
        for (auto left = random() % 20; left > 0; --left) {
            text += pieces.at(static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size())));
        }
        note->updateNoteWithText(text, 0);
        const auto fresh = makeNote(text);
        SCOPED_TRACE(text.toStdString());
        ASSERT_EQ(sortedTags(*note), sortedTags(*fresh));
        ASSERT_EQ(note->title(), fresh->title());
        ASSERT_EQ(note->subtitle(), fresh->subtitle());
        ASSERT_EQ(note->todoIncompleted(), fresh->todoIncompleted());
        ASSERT_EQ(note->hasSourceCode(), fresh->hasSourceCode());
    }
}

TEST_F(NoteUpdate, ViewsOfANote)
{
    const auto note = makeNote(u"# My: plan/a\n- a\n+ b\n+ c"_s);
    note->setUniqueIdentifier(u"ID &1"_s);
    EXPECT_EQ(note->completedToDoPercentage(), 66);
    EXPECT_EQ(note->filename(), u"My plana"_s);
    EXPECT_EQ(note->openNoteXCallbackURLString(), u"quib://x-callback-url/open-note?id=ID%20%261"_s);
    EXPECT_EQ(note->openNoteWithTitleXCallbackURLString(), u"quib://x-callback-url/open-note?title=My%3A%20plan%2Fa"_s);
    EXPECT_EQ(note->openNoteInNewWindowXCallbackURLString(),
              u"quib://x-callback-url/open-note?new_window=yes&id=ID%20%261"_s);
    EXPECT_EQ(note->openNoteXCallbackURLStringWithHeader(u" Head \n"_s),
              u"quib://x-callback-url/open-note?id=ID%20%261&header=Head"_s);
    EXPECT_EQ(note->autoCompleteItemTextRepresentation(), u"[[My: plan/a]]"_s);
    EXPECT_EQ(note->noteInfoItems().constFirst(), u"Creation Date: "_s + note->creationDate()->iso8601String());
    const auto untitled = makeNote(u""_s);
    EXPECT_EQ(untitled->completedToDoPercentage(), 0);
    EXPECT_EQ(untitled->filename(), untitled->modificationDate()->iso8601String().remove(u':'));
}

TEST_F(NoteUpdate, LookupsFollowTheirConditions)
{
    const auto plain = makeNote(u"Café"_s);
    clock.advance(1);
    const auto newer = makeNote(u"cafe"_s);
    EXPECT_EQ(QBNote::noteWithTitle(u"CAFE"_s, moc()), newer);
    plain->pin();
    EXPECT_EQ(QBNote::noteWithTitle(u"CAFE"_s, moc()), plain);
    plain->trash();
    EXPECT_EQ(QBNote::untrashedNoteWithTitle(u"cafe"_s, moc()), newer);
    EXPECT_EQ(QBNote::allTrashedNotesInManagedObjectContext(moc()), QList{plain});
    EXPECT_EQ(QBNote::allUntrashedNotesInManagedObjectContext(moc()), QList{newer});
    newer->archive();
    EXPECT_EQ(QBNote::allArchivedNotesInManagedObjectContext(moc()), QList{newer});
    EXPECT_EQ(QBNote::allNotesInManagedObjectContext(moc()).size(), 2);
    EXPECT_TRUE(QBNote::watchNotesInManagedObjectContext(moc()).isEmpty());
    EXPECT_EQ(QBNote::noteContainingFileTextRepresentation(u"afé"_s, moc()), plain);
    QBNote::deleteNotesWithUniqueIdentifiers({plain->uniqueIdentifier()}, moc());
    EXPECT_EQ(QBNote::allNotesInManagedObjectContext(moc()), QList{newer});
}

} // namespace quib::tests
