#include "StoreFixture.h"

#include <Support/TestSeed.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace quib::tests {

class NoteState : public StoreFixture
{
};

TEST_F(NoteState, EachChangeStampsItsOwnDateOnSettingAndClearing)
{
    const auto note = makeNote(u"a"_s);
    const auto made = note->modificationDate();
    struct Step
    {
        void (QBNote::*change)();
        std::optional<NSDate> (_QBNote::*date)() const;
        bool (QBNote::*flag)() const;
        bool expected;
    };
    const Step steps[] = {
        {&QBNote::pin, &_QBNote::pinnedDate, &QBNote::isPinned, true},
        {&QBNote::unpin, &_QBNote::pinnedDate, &QBNote::isPinned, false},
        {&QBNote::trash, &_QBNote::trashedDate, &QBNote::isTrashed, true},
        {&QBNote::restoreFromTrash, &_QBNote::trashedDate, &QBNote::isTrashed, false},
        {&QBNote::archive, &_QBNote::archivedDate, &QBNote::isArchived, true},
        {&QBNote::unarchive, &_QBNote::archivedDate, &QBNote::isArchived, false},
    };
    for (const Step &step : steps) {
        clock.advance(5);
        ((*note).*(step.change))();
        EXPECT_EQ(((*note).*(step.date))(), NSDate::now());
        EXPECT_EQ(((*note).*(step.flag))(), step.expected);
        EXPECT_EQ(note->modificationDate(), made);
    }
}

TEST_F(NoteState, AnArchivedNoteIsNeverInTheTrash)
{
    const auto note = makeNote(u"a"_s);
    note->trash();
    clock.advance(5);
    note->archive();
    EXPECT_FALSE(note->isTrashed());
    EXPECT_EQ(note->trashedDate(), NSDate::now());
    EXPECT_FALSE(note->isEditable());
    note->unarchive();
    EXPECT_TRUE(note->isEditable());
    note->trash();
    EXPECT_FALSE(note->isEditable());
}

TEST_F(NoteState, FlagsTouchTheTagsOnlyWhenTheyChange)
{
    const auto note = makeNote(u"#t"_s);
    const auto tag = QBNoteTag::tagWithName(u"t"_s, moc());
    ASSERT_TRUE(tag);
    EXPECT_FALSE(tag->modificationDate());
    note->restoreFromTrash();
    EXPECT_FALSE(tag->modificationDate());
    note->trash();
    EXPECT_EQ(tag->modificationDate(), NSDate::now());
    clock.advance(5);
    note->trash();
    EXPECT_NE(tag->modificationDate(), NSDate::now());
    note->setValueForKey(false, u"trashed"_s); // by key, as sync does
    EXPECT_EQ(tag->modificationDate(), NSDate::now());
}

class ConflictGroup : public StoreFixture
{
protected:
    /// The members, by the order of their identifiers.
    [[nodiscard]] QList<Ref<QBNote>> group(const QBNote &note) const { return note.conflictedNotes(); }
};

TEST_F(ConflictGroup, TheRootComesFirstAndNewcomersLast)
{
    const auto root = makeNote(u"root"_s);
    const auto second = makeNote(u"second"_s);
    const auto third = makeNote(u"third"_s);
    second->markAsConflictedFromNote(*root);
    EXPECT_EQ(group(*root), (QList{root, second}));
    EXPECT_TRUE(root->isConflictRoot());
    EXPECT_FALSE(second->isConflictRoot());
    EXPECT_EQ(second->conflictedRootUUID(), root->uniqueIdentifier());
    third->markAsConflictedFromNote(*second);
    EXPECT_EQ(group(*third), (QList{root, second, third}));
    EXPECT_TRUE(third->conflictUniqueIdentifier().startsWith(root->uniqueIdentifier() + u'/'));
    EXPECT_EQ(QBNote::allConflictedNotesInManagedObjectContext(moc()).size(), 3);
}

TEST_F(ConflictGroup, AnIdentifierIsTheRootAndTheTimeWithMicroseconds)
{
    const auto note = makeNote(u"a"_s);
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(1'500'000'000.25));
    EXPECT_EQ(note->conflictedUUIDFromRootUUID(u"ROOT"_s), u"ROOT/1500000000.250000"_s);
    EXPECT_EQ(note->conflictedRootUUID(), note->uniqueIdentifier());
    EXPECT_FALSE(note->hasConflictedNotes());
}

TEST_F(ConflictGroup, TrashingOneOfTwoEndsTheConflict)
{
    const auto root = makeNote(u"root"_s);
    const auto copy = makeNote(u"copy"_s);
    copy->markAsConflictedFromNote(*root);
    clock.advance(5);
    copy->trash();
    for (const auto &note : {root, copy}) {
        EXPECT_FALSE(note->hasConflictedNotes());
        EXPECT_EQ(note->conflictUniqueIdentifierDate(), NSDate::now());
    }
}

TEST_F(ConflictGroup, TrashingTheRootOfThreeMakesTheSecondTheRoot)
{
    const auto root = makeNote(u"root"_s);
    const auto second = makeNote(u"second"_s);
    const auto third = makeNote(u"third"_s);
    second->markAsConflictedFromNote(*root);
    third->markAsConflictedFromNote(*root);
    root->trash();
    EXPECT_FALSE(root->hasConflictedNotes());
    EXPECT_TRUE(second->isConflictRoot());
    EXPECT_EQ(group(*second), (QList{second, third}));
}

TEST_F(ConflictGroup, DeletingByAnyPathLeavesTheGroup)
{
    const auto root = makeNote(u"root"_s);
    const auto copy = makeNote(u"copy"_s);
    copy->markAsConflictedFromNote(*root);
    save();
    QBNote::deleteNotesWithUniqueIdentifiers({copy->uniqueIdentifier()}, moc());
    EXPECT_FALSE(root->hasConflictedNotes());
}

TEST_F(ConflictGroup, RandomGroupsFollowAPlainModel)
{
    const TestSeed seed;
    auto random = seed.generator();
    QList<Ref<QBNote>> notes;
    for (int i = 0; i < 8; ++i) {
        notes.append(makeNote(QString::number(i)));
    }
    QList<QList<Ref<QBNote>>> groups; // the model: each in order
    const auto groupOf = [&groups](const Ref<QBNote> &note) {
        return std::find_if(groups.begin(), groups.end(), [&note](const auto &each) { return each.contains(note); });
    };
    for (int step = 0; step < 400; ++step) {
        const auto note = notes.at(static_cast<qsizetype>(random() % 8));
        const auto other = notes.at(static_cast<qsizetype>(random() % 8));
        if (random() % 3 == 0) {
            clock.advance(0.5);
        }
        if (random() % 2 == 0) {
            if (note == other || groupOf(note) != groups.end()) {
                continue;
            }
            note->markAsConflictedFromNote(*other);
            if (const auto found = groupOf(other); found != groups.end()) {
                found->append(note);
            } else {
                groups.append({other, note});
            }
        } else if (const auto found = groupOf(note); found != groups.end()) {
            note->trash();
            note->restoreFromTrash();
            found->removeAll(note);
            if (found->size() == 1) {
                groups.erase(found);
            }
        }
        for (const auto &each : notes) {
            const auto model = groupOf(each);
            ASSERT_EQ(each->hasConflictedNotes(), model != groups.end()) << "step " << step;
            if (model != groups.end()) {
                ASSERT_EQ(group(*each), *model) << "step " << step;
            }
        }
    }
}

} // namespace quib::tests
