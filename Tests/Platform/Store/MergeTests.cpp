// Two contexts with connections of their own write the same rows: what each keeps, what it loses, and that
// relationships agree on both sides afterwards.

#include "ContextFixture.h"
#include "FaultVfs.h"

using namespace Qt::StringLiterals;
using quib::Value;

namespace {

class Merge : public ContextTest
{
protected:
    /// Opens both, with one row that both have read.
    void openBoth(NSMergePolicy policy)
    {
        m_other = open();
        m_theirs = note(*m_other, u"old"_s);
        m_theirs->setValueForKey(u"old sub"_s, u"subtitle"_s);
        m_theirs->setValueForKey(u"old text"_s, u"text"_s);
        expectSave(*m_other);
        m_main = open(policy);
        m_mine = m_main->existingObjectWithID(idInMain(m_theirs));
        ASSERT_TRUE(m_mine);
        ASSERT_EQ(string(m_mine, u"title"_s), u"old"_s);
        m_token = m_main->mergeLosses.add([this](NSManagedObjectContext &, const QList<NSMergeLoss> &losses) {
            for (const NSMergeLoss &loss : losses) {
                m_losses.append(QString(loss.key % u'=' % quib::valueOr<QString>(loss.lostValue)));
            }
        });
    }
    NSManagedObjectID idInMain(const Object &object) const
    {
        return {m_model->entityNamed(object->entity()->name()), object->objectID().key()};
    }

    Context m_other;
    Context m_main;
    Object m_theirs;
    Object m_mine;
    QStringList m_losses;
    quib::ObservationToken m_token;
};

} // namespace

TEST_F(Merge, KeepsPropertiesChangedOnOneSideUnderEitherPolicy)
{
    for (const auto policy : {NSMergePolicy::MergeByPropertyStoreTrump, NSMergePolicy::MergeByPropertyObjectTrump}) {
        m_path = m_folder.path(u"s%1.sqlite"_s.arg(static_cast<int>(policy)));
        openBoth(policy);
        m_theirs->setValueForKey(u"their sub"_s, u"subtitle"_s);
        m_theirs->setValueForKey(u"their text"_s, u"text"_s);
        expectSave(*m_other);
        m_mine->setValueForKey(u"my title"_s, u"title"_s);
        expectSave(*m_main);
        EXPECT_EQ(string(m_mine, u"title"_s), u"my title"_s);
        EXPECT_EQ(string(m_mine, u"subtitle"_s), u"their sub"_s);
        EXPECT_EQ(string(m_mine, u"text"_s), u"their text"_s);
        EXPECT_EQ(m_losses, QStringList());
        const auto fresh = open();
        const auto stored = all(*fresh, u"QBNote"_s).value(0);
        EXPECT_EQ(string(stored, u"title"_s), u"my title"_s);
        EXPECT_EQ(string(stored, u"text"_s), u"their text"_s);
    }
}

TEST_F(Merge, SettlesAPropertyChangedOnBothSidesByThePolicy)
{
    struct Case
    {
        NSMergePolicy policy;
        QString title;
        QString text;
        QStringList losses;
    };
    const Case cases[] = {
        {NSMergePolicy::MergeByPropertyStoreTrump,
         u"their title"_s,
         u"their text"_s,
         {u"text=my text"_s, u"title=my title"_s}},
        {NSMergePolicy::MergeByPropertyObjectTrump, u"my title"_s, u"my text"_s, {}},
    };
    for (const Case &expected : cases) {
        m_path = m_folder.path(u"s%1.sqlite"_s.arg(static_cast<int>(expected.policy)));
        openBoth(expected.policy);
        m_mine->setValueForKey(u"my title"_s, u"title"_s);
        m_mine->setValueForKey(u"my text"_s, u"text"_s);
        m_theirs->setValueForKey(u"their title"_s, u"title"_s);
        m_theirs->setValueForKey(u"their text"_s, u"text"_s);
        expectSave(*m_other);
        m_losses.clear();
        expectSave(*m_main);
        m_losses.sort();
        EXPECT_EQ(m_losses, expected.losses);
        EXPECT_EQ(string(m_mine, u"title"_s), expected.title);
        EXPECT_EQ(string(m_mine, u"text"_s), expected.text);
        EXPECT_FALSE(m_main->hasChanges());
        const auto fresh = open();
        EXPECT_EQ(string(all(*fresh, u"QBNote"_s).value(0), u"text"_s), expected.text);
    }
}

TEST_F(Merge, TheErrorPolicyFailsTheSaveAndKeepsTheChanges)
{
    openBoth(NSMergePolicy::Error);
    m_mine->setValueForKey(u"my title"_s, u"title"_s);
    m_theirs->setValueForKey(u"their sub"_s, u"subtitle"_s);
    expectSave(*m_other);
    NSError error;
    EXPECT_FALSE(m_main->save(&error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::ManagedObjectMerge));
    EXPECT_EQ(m_mine->changedKeys(), QSet<QString>{u"title"_s});
    EXPECT_EQ(string(m_mine, u"title"_s), u"my title"_s);
}

TEST_F(Merge, ARowDeletedUnderneathGoesOrComesBackByThePolicy)
{
    openBoth(NSMergePolicy::MergeByPropertyStoreTrump);
    m_mine->setValueForKey(u"my title"_s, u"title"_s);
    m_other->deleteObject(m_theirs.get());
    expectSave(*m_other);
    expectSave(*m_main);
    EXPECT_EQ(m_losses, QStringList{u"title=my title"_s});
    EXPECT_EQ(m_mine->managedObjectContext(), nullptr);
    EXPECT_EQ(all(*m_main, u"QBNote"_s).size(), 0);

    m_path = m_folder.path(u"again.sqlite"_s);
    openBoth(NSMergePolicy::MergeByPropertyObjectTrump);
    ASSERT_EQ(string(m_mine, u"text"_s), u"old text"_s);
    m_mine->setValueForKey(u"my title"_s, u"title"_s);
    m_other->deleteObject(m_theirs.get());
    expectSave(*m_other);
    expectSave(*m_main);
    const auto fresh = open();
    const auto stored = all(*fresh, u"QBNote"_s).value(0);
    EXPECT_EQ(string(stored, u"title"_s), u"my title"_s);
    EXPECT_EQ(string(stored, u"subtitle"_s), u"old sub"_s);
    EXPECT_EQ(string(stored, u"text"_s), u"old text"_s);
}

TEST_F(Merge, RelationshipsAgreeOnBothSidesWhicheverSideWins)
{
    for (const auto policy : {NSMergePolicy::MergeByPropertyStoreTrump, NSMergePolicy::MergeByPropertyObjectTrump}) {
        for (const bool movesHere : {false, true}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(policy) << movesHere);
            m_path = m_folder.path(u"s%1%2.sqlite"_s.arg(static_cast<int>(policy)).arg(movesHere));
            openBoth(policy);
            QList<Object> theirNotes = {m_theirs, note(*m_other, u"B"_s), note(*m_other, u"C"_s)};
            const auto theirFile = m_other->insertNewObjectForEntityForName(u"QBNoteImage"_s);
            theirFile->setTargetObjectForKey(m_theirs, u"note"_s);
            expectSave(*m_other);

            QList<Object> notes;
            for (const auto &object : theirNotes) {
                notes.append(m_main->existingObjectWithID(idInMain(object)));
                static_cast<void>(notes.last()->targetObjectsForKey(u"files"_s)); // read and kept
            }
            const auto file = m_main->existingObjectWithID(idInMain(theirFile));
            file->setValueForKey(u"mine"_s, u"filename"_s);
            if (movesHere) {
                file->setTargetObjectForKey(notes[1], u"note"_s);
            }
            theirFile->setTargetObjectForKey(theirNotes[2], u"note"_s);
            expectSave(*m_other);
            expectSave(*m_main);

            const bool mineWins = movesHere && policy == NSMergePolicy::MergeByPropertyObjectTrump;
            EXPECT_EQ(file->targetObjectForKey(u"note"_s), notes[mineWins ? 1 : 2]);
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(notes[i]->targetObjectsForKey(u"files"_s).size(), i == (mineWins ? 1 : 2) ? 1 : 0) << i;
            }
            EXPECT_FALSE(m_main->hasChanges());
            const auto fresh = open();
            EXPECT_EQ(string(all(*fresh, u"QBNoteImage"_s).value(0)->targetObjectForKey(u"note"_s), u"title"_s),
                      mineWins ? u"B"_s : u"C"_s);
        }
    }
}

TEST_F(Merge, ASaveThatFailsAfterASettledConflictLeavesAllAsItWas)
{
    quib::tests::FaultVfs disk;
    m_path = u"/disk/s.sqlite"_s;
    NSPersistentStoreOptions options;
    options.vfsName = disk.name();
    options.busyTimeout = 0;
    int failed = 0;
    for (int call = 0; !HasFailure(); ++call) {
        SCOPED_TRACE(call);
        disk.setContents({});
        const auto other = open(NSMergePolicy::MergeByPropertyStoreTrump, {}, options);
        const auto theirs = note(*other, u"old"_s);
        const auto gone = note(*other, u"gone"_s);
        const auto theirTag = tag(*other, u"tag"_s);
        gone->setTargetObjectsForKey({theirTag}, u"tags"_s);
        expectSave(*other);
        const auto main = open(NSMergePolicy::MergeByPropertyStoreTrump, {}, options);
        const auto mine = main->existingObjectWithID(idInMain(theirs));
        const auto lost = main->existingObjectWithID(idInMain(gone));
        mine->setValueForKey(u"my title"_s, u"title"_s);
        mine->setValueForKey(u"my sub"_s, u"subtitle"_s);
        lost->setValueForKey(u"my gone"_s, u"title"_s);
        theirs->setValueForKey(u"their title"_s, u"title"_s);
        other->deleteObject(gone.get());
        expectSave(*other);
        int told = 0;
        const auto token = main->mergeLosses.add([&told](NSManagedObjectContext &, const QList<NSMergeLoss> &losses) {
            told += static_cast<int>(losses.size());
        });

        disk.arm(call, quib::tests::FaultVfs::Fault::IoError);
        NSError error;
        const bool isSaved = main->save(&error);
        const bool hasStruck = disk.hasStruck();
        disk.disarm();
        if (!isSaved) {
            ++failed;
            EXPECT_EQ(told, 0);
            EXPECT_EQ(main->updatedObjects(), (NSManagedObjectSet{mine, lost}));
            EXPECT_EQ(main->deletedObjects(), NSManagedObjectSet());
            EXPECT_EQ(string(mine, u"title"_s), u"my title"_s);
            EXPECT_EQ(string(lost, u"title"_s), u"my gone"_s);
            EXPECT_EQ(mine->changedKeys(), (QSet<QString>{u"title"_s, u"subtitle"_s}));
            EXPECT_EQ(mine->committedValueForKey(u"title"_s), Value(u"old"_s));
        } else {
            EXPECT_EQ(told, 2);
            EXPECT_EQ(string(mine, u"title"_s), u"their title"_s);
        }
        if (!hasStruck) {
            break;
        }
    }
    EXPECT_GT(failed, 3) << "the faults must meet the write after the conflict";
}
