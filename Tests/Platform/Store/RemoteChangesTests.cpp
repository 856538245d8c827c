// Another process's save, told to a context that holds objects and changes of its own: what is seen at once, what of
// its own stays, and that nothing of either side is lost.

#include "ContextFixture.h"

#include <Store/NSPersistentStore.h>

using namespace Qt::StringLiterals;

namespace {

class RemoteChanges : public ContextTest
{
protected:
    RemoteChanges()
    {
        m_lossToken = m_main->mergeLosses.add([this](NSManagedObjectContext &, const QList<NSMergeLoss> &losses) {
            for (const NSMergeLoss &loss : losses) {
                m_losses.append(QString(loss.key % u'=' % quib::valueOr<QString>(loss.lostValue)));
            }
        });
        m_toldToken = m_main->objectsDidChange.add(
            [this](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) { m_told = changes; });
    }
    /// The identity of an object of one context in the main one.
    NSManagedObjectID idInMain(const Object &object) const
    {
        return {m_model->entityNamed(object->entity()->name()), object->objectID().key()};
    }
    /// The object that the main context has of one that the other made.
    Object mine(const Object &theirs) { return m_main->existingObjectWithID(idInMain(theirs)); }
    void merge(const QList<NSManagedObjectID> &inserted, const QList<NSManagedObjectID> &updated,
               const QList<NSManagedObjectID> &deleted = {})
    {
        m_main->processPendingChanges();
        m_told = {};
        NSManagedObjectContext::mergeChangesFromRemoteContextSave(inserted, updated, deleted, {m_main});
    }
    Object theirNote()
    {
        const auto object = note(*m_other, u"title"_s);
        object->setValueForKey(u"subtitle"_s, u"subtitle"_s);
        object->setValueForKey(u"text"_s, u"text"_s);
        expectSave(*m_other);
        return object;
    }

    Context m_other = open();
    Context m_main = open();
    QStringList m_losses;
    NSManagedObjectContext::Changes m_told;
    quib::ObservationToken m_lossToken;
    quib::ObservationToken m_toldToken;
};

} // namespace

TEST_F(RemoteChanges, AnUnsavedChangeOfAnotherPropertyStaysAndWins)
{
    const auto theirs = theirNote();
    const auto object = mine(theirs);
    object->setValueForKey(u"my text"_s, u"text"_s);
    theirs->setValueForKey(u"their subtitle"_s, u"subtitle"_s);
    expectSave(*m_other);
    merge({}, {idInMain(theirs)});
    EXPECT_EQ(string(object, u"text"_s), u"my text"_s);
    EXPECT_EQ(string(object, u"subtitle"_s), u"their subtitle"_s);
    expectSave(*m_main);
    EXPECT_EQ(m_losses, QStringList());
    const auto fresh = open();
    const auto stored = all(*fresh, u"QBNote"_s).constFirst();
    EXPECT_EQ(string(stored, u"text"_s), u"my text"_s);
    EXPECT_EQ(string(stored, u"subtitle"_s), u"their subtitle"_s);
}

TEST_F(RemoteChanges, ThePropertyThatBothChangedIsSettledBySavingNotByMerging)
{
    // A merge that took the other's row as the base of the change made here would let it overwrite theirs untold.
    for (const QString &key : {u"text"_s, u"title"_s}) {
        m_losses.clear();
        const auto theirs = theirNote();
        const auto object = mine(theirs);
        object->setValueForKey(u"mine"_s, key);
        theirs->setValueForKey(u"theirs"_s, key);
        expectSave(*m_other);
        merge({}, {idInMain(theirs)});
        EXPECT_EQ(string(object, key), u"mine"_s);
        EXPECT_TRUE(object->hasChanges());
        expectSave(*m_main);
        EXPECT_EQ(string(object, key), u"theirs"_s);
        EXPECT_EQ(m_losses, QStringList{key + u"=mine"_s});
    }
}

TEST_F(RemoteChanges, AnObjectChangedHereIsNotTakenAwayByADeletion)
{
    const auto theirs = theirNote();
    const auto theirSecond = theirNote();
    const auto edited = mine(theirs);
    const auto untouched = mine(theirSecond);
    edited->setValueForKey(u"mine"_s, u"text"_s);
    const QList<NSManagedObjectID> identities{idInMain(theirs), idInMain(theirSecond)};
    m_other->deleteObject(theirs.get());
    m_other->deleteObject(theirSecond.get());
    expectSave(*m_other);
    merge({}, {}, identities);
    EXPECT_EQ(string(edited, u"text"_s), u"mine"_s);
    EXPECT_EQ(untouched->managedObjectContext(), nullptr);
    EXPECT_EQ(m_told.deleted, NSManagedObjectSet{untouched});
    expectSave(*m_main);
    EXPECT_EQ(m_losses, QStringList{u"text=mine"_s});
}

TEST_F(RemoteChanges, AnObjectThatNobodyHeldIsToldToo)
{
    const auto theirs = theirNote();
    theirs->setValueForKey(u"new"_s, u"title"_s);
    expectSave(*m_other);
    merge({}, {idInMain(theirs)});
    ASSERT_EQ(m_told.refreshed.size(), 1);
    EXPECT_EQ(string(*m_told.refreshed.cbegin(), u"title"_s), u"new"_s);
}

TEST_F(RemoteChanges, IdentitiesWithoutARowAreHarmless)
{
    const auto *entity = m_model->entityNamed(u"QBNote"_s);
    const NSManagedObjectID none(entity, 4711);
    const auto fault = m_main->objectWithID(NSManagedObjectID(entity, 4712));
    merge({none, {}}, {none, fault->objectID(), {}}, {none, {}});
    EXPECT_TRUE(m_told.inserted.isEmpty() && m_told.updated.isEmpty() && m_told.refreshed.isEmpty());
}

TEST_F(RemoteChanges, BothSidesOfManyToManyRelationshipsAgree)
{
    const auto theirTag = tag(*m_other, u"tag"_s);
    const auto theirFirst = theirNote();
    theirFirst->setTargetObjectsForKey({theirTag}, u"tags"_s);
    expectSave(*m_other);
    const auto myTag = mine(theirTag);
    const auto myFirst = mine(theirFirst);
    ASSERT_EQ(myTag->targetObjectsForKey(u"notes"_s), QList<Object>{myFirst});

    // A note comes in; only the note is told, not the tag.
    const auto theirSecond = theirNote();
    theirSecond->setTargetObjectsForKey({theirTag}, u"tags"_s);
    expectSave(*m_other);
    merge({idInMain(theirSecond)}, {});
    EXPECT_EQ(myTag->targetObjectsForKey(u"notes"_s).size(), 2);

    // A note goes; the tag forgets it, with changes of its own in place.
    const auto third = note(*m_main, u"third"_s);
    third->setTargetObjectsForKey({myTag}, u"tags"_s);
    const NSManagedObjectID doomed = idInMain(theirFirst);
    m_other->deleteObject(theirFirst.get());
    expectSave(*m_other);
    merge({}, {}, {doomed});
    const auto notes = myTag->targetObjectsForKey(u"notes"_s);
    EXPECT_EQ(notes.size(), 2);
    EXPECT_TRUE(notes.contains(third));
    expectSave(*m_main);
    EXPECT_EQ(all(*open(), u"QBNote"_s, u"tags.@count == 1"_s).size(), 2);
}

TEST_F(RemoteChanges, BothSidesOfToOneRelationshipsAgree)
{
    const auto theirFirst = theirNote();
    const auto theirSecond = theirNote();
    const auto theirFile = m_other->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    theirFile->setTargetObjectForKey(theirFirst, u"note"_s);
    expectSave(*m_other);
    const auto first = mine(theirFirst);
    const auto second = mine(theirSecond);
    const auto file = mine(theirFile);
    ASSERT_EQ(first->targetObjectsForKey(u"files"_s).size(), 1);
    ASSERT_EQ(second->targetObjectsForKey(u"files"_s).size(), 0);
    theirFile->setTargetObjectForKey(theirSecond, u"note"_s);
    expectSave(*m_other);
    merge({}, {idInMain(theirFile)});
    EXPECT_EQ(first->targetObjectsForKey(u"files"_s).size(), 0);
    EXPECT_EQ(second->targetObjectsForKey(u"files"_s), QList<Object>{file});
}

TEST_F(RemoteChanges, ATagWithAReservedIdentityStillBecomesTheOneOfTheSameName)
{
    const auto theirTag = tag(*m_other, u"Tag"_s);
    const auto theirs = theirNote();
    theirs->setTargetObjectsForKey({theirTag}, u"tags"_s);
    const auto myTag = tag(*m_main, u"tag"_s);
    const auto myNote = note(*m_main, u"mine"_s);
    myNote->setTargetObjectsForKey({myTag}, u"tags"_s);
    NSError error;
    ASSERT_TRUE(m_main->obtainPermanentIDsForObjects({myTag, myNote}, &error));
    expectSave(*m_other);
    expectSave(*m_main);
    EXPECT_EQ(string(myTag, u"title"_s), u"Tag"_s);
    const auto fresh = open();
    const auto tags = all(*fresh, u"QBNoteTag"_s);
    ASSERT_EQ(tags.size(), 1);
    EXPECT_EQ(tags.constFirst()->targetObjectsForKey(u"notes"_s).size(), 2);
}

TEST_F(RemoteChanges, VersionsTellWhichRowsChanged)
{
    const auto kept = theirNote();
    const auto changed = theirNote();
    const auto image = m_other->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    expectSave(*m_other);
    NSError error;
    auto *store = m_main->persistentStoreCoordinator()->persistentStore();
    const auto before = store->rowVersions(u"QBNote"_s, &error);
    ASSERT_TRUE(before);
    ASSERT_EQ(before->size(), 2);
    changed->setValueForKey(u"new"_s, u"text"_s); // a lazy value counts
    expectSave(*m_other);
    const auto after = store->rowVersions(u"QBNote"_s, &error);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->at(0).objectID, idInMain(kept));
    EXPECT_EQ(after->at(0).version, before->at(0).version);
    EXPECT_NE(after->at(1).version, before->at(1).version);
    const auto files = store->rowVersions(u"QBNoteFile"_s, &error);
    ASSERT_TRUE(files);
    ASSERT_EQ(files->size(), 1);
    EXPECT_EQ(files->constFirst().objectID.entity()->name(), u"QBNoteImage"_s);
    EXPECT_FALSE(store->rowVersions(u"NoSuchEntity"_s, &error));
}
