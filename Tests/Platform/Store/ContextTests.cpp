// Contexts by behaviour: what lives, what is told, what parents and children see of each other.

#include "ContextFixture.h"
#include "FaultVfs.h"

#include <QCoreApplication>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::Value;

namespace {

/// Counts its deletions.
class CountingFile : public NSManagedObject
{
public:
    static int &prepared()
    {
        static int count = 0;
        return count;
    }

protected:
    void prepareForDeletion() override
    {
        NSManagedObject::prepareForDeletion();
        EXPECT_TRUE(targetObjectForKey(u"note"_s) || valueForKey(u"url"_s) == Value(u"loose"_s))
            << "nothing may be cleared yet";
        ++prepared();
    }
};

class Contexts : public ContextTest
{
protected:
    static QStringList titles(const NSManagedObjectSet &objects)
    {
        QStringList names;
        for (const auto &object : objects) {
            names.append(string(object, u"title"_s));
        }
        names.sort();
        return names;
    }
};

} // namespace

TEST_F(Contexts, HoldOnlyWhatIsHeldOrChanged)
{
    const auto context = open();
    auto object = note(*context, u"a"_s);
    expectSave(*context);
    const NSManagedObjectID identity = object->objectID();
    object = nullptr;
    EXPECT_FALSE(context->registeredObjectForID(identity)) << "clean and unheld";
    object = context->existingObjectWithID(identity);
    object->setValueForKey(u"b"_s, u"title"_s);
    object = nullptr;
    EXPECT_TRUE(context->registeredObjectForID(identity)) << "changed";
    context->rollback();
    EXPECT_FALSE(context->registeredObjectForID(identity)) << "rolled back";
    object = context->existingObjectWithID(identity);
    EXPECT_EQ(string(object, u"title"_s), u"a"_s);
    context->refreshObject(object.get(), /*mergeChanges=*/false);
    object = nullptr;
    EXPECT_FALSE(context->registeredObjectForID(identity)) << "refreshed";
}

TEST_F(Contexts, TakeAnEqualValueAndTheWayBackForNoChange)
{
    const auto context = open();
    const auto object = note(*context, u"a"_s);
    expectSave(*context);
    object->setValueForKey(u"a"_s, u"title"_s);
    EXPECT_FALSE(context->hasChanges());
    object->setValueForKey(u"b"_s, u"title"_s);
    EXPECT_EQ(object->changedKeys(), QSet<QString>{u"title"_s});
    EXPECT_EQ(object->committedValueForKey(u"title"_s), Value(u"a"_s));
    object->setValueForKey(u"a"_s, u"title"_s);
    EXPECT_FALSE(context->hasChanges());
}

TEST_F(Contexts, PrepareForDeletionOnceOnEveryPath)
{
    const NSManagedObjectFactories factories = {{u"QBURL"_s, [] { return new CountingFile; }}};
    const auto main = open(NSMergePolicy::MergeByPropertyStoreTrump, factories);
    const auto makeNoteWithLink = [&] {
        auto owner = note(*main, u"n"_s);
        const auto link = main->insertNewObjectForEntityForName(u"QBURL"_s);
        link->setTargetObjectForKey(owner, u"note"_s);
        expectSave(*main);
        CountingFile::prepared() = 0;
        return std::pair(owner, link);
    };
    {
        const auto [owner, link] = makeNoteWithLink();
        main->deleteObject(link.get());
        main->deleteObject(link.get());
        EXPECT_EQ(CountingFile::prepared(), 1) << "direct";
        expectSave(*main);
        EXPECT_EQ(CountingFile::prepared(), 1) << "not again by the save";
        EXPECT_EQ(owner->targetObjectsForKey(u"urls"_s).size(), 0);
        EXPECT_EQ(string(link, u"url"_s), QString()) << "a dead object reads as nothing";
        link->setValueForKey(u"x"_s, u"url"_s);
        EXPECT_FALSE(main->hasChanges());
    }
    {
        const auto [owner, link] = makeNoteWithLink();
        main->deleteObject(owner.get());
        EXPECT_EQ(CountingFile::prepared(), 1) << "taken along";
        EXPECT_TRUE(link->isDeleted());
        main->rollback();
        EXPECT_EQ(link->targetObjectForKey(u"note"_s), owner);
        main->deleteObject(owner.get());
        EXPECT_EQ(CountingFile::prepared(), 2) << "deleted anew after a rollback";
        expectSave(*main);
    }
    {
        const auto [owner, link] = makeNoteWithLink();
        const auto child = childOf(main);
        child->deleteObject(child->existingObjectWithID(link->objectID()).get());
        EXPECT_EQ(CountingFile::prepared(), 1) << "in the child";
        expectSave(*child);
        EXPECT_TRUE(link->isDeleted());
        expectSave(*main);
        EXPECT_EQ(CountingFile::prepared(), 1) << "not again in the parent";
        EXPECT_EQ(all(*main, u"QBURL"_s).size(), 0);
    }
    const auto unsaved = main->insertNewObjectForEntityForName(u"QBURL"_s);
    unsaved->setValueForKey(u"loose"_s, u"url"_s);
    CountingFile::prepared() = 0;
    main->deleteObject(unsaved.get());
    EXPECT_EQ(CountingFile::prepared(), 1) << "never saved";
    EXPECT_FALSE(main->hasChanges());
}

TEST_F(Contexts, PutIntoTheSameSaveWhatItsObserversInsert)
{
    const auto context = open();
    const auto token = context->willSave.add([](NSManagedObjectContext &saving) {
        const auto change = saving.insertNewObjectForEntityForName(u"QBChange"_s);
        change->setValueForKey(qint64{saving.insertedObjects().size()}, u"order"_s);
    });
    NSManagedObjectContext::Changes saved;
    const auto didSave = context->didSave.add(
        [&saved](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) { saved = changes; });
    const auto object = note(*context, u"a"_s);
    expectSave(*context);
    EXPECT_EQ(saved.inserted.size(), 2);
    EXPECT_TRUE(saved.updated.isEmpty() && saved.deleted.isEmpty());
    EXPECT_EQ(all(*open(), u"QBChange"_s).size(), 1);
    expectSave(*context);
    EXPECT_EQ(all(*open(), u"QBChange"_s).size(), 1) << "nothing to save, nobody told";
}

TEST_F(Contexts, KeepEverythingPendingWhenASaveFails)
{
    quib::tests::FaultVfs disk;
    m_path = u"/disk/s.sqlite"_s;
    NSPersistentStoreOptions options;
    options.vfsName = disk.name();
    const auto context = open(NSMergePolicy::MergeByPropertyStoreTrump, {}, options);
    const auto changed = note(*context, u"changed"_s);
    const auto removed = note(*context, u"removed"_s);
    const auto label = tag(*context, u"tag"_s);
    expectSave(*context);
    const auto added = note(*context, u"added"_s);
    added->setTargetObjectsForKey({label}, u"tags"_s);
    changed->setValueForKey(u"changed now"_s, u"title"_s);
    context->deleteObject(removed.get());
    const NSManagedObjectID temporary = added->objectID();
    disk.arm(0, quib::tests::FaultVfs::Fault::FullDisk);
    NSError error;
    EXPECT_FALSE(context->save(&error));
    EXPECT_TRUE(error.isSet());
    disk.disarm();
    EXPECT_EQ(added->objectID(), temporary);
    EXPECT_EQ(context->insertedObjects(), NSManagedObjectSet{added});
    EXPECT_EQ(context->updatedObjects(), (NSManagedObjectSet{changed, label}));
    EXPECT_EQ(context->deletedObjects(), NSManagedObjectSet{removed});
    expectSave(*context);
    const auto fresh = open(NSMergePolicy::Error, {}, options);
    QStringList names;
    for (const auto &object : all(*fresh, u"QBNote"_s)) {
        names.append(string(object, u"title"_s) + u'/' +
                     QString::number(object->targetObjectsForKey(u"tags"_s).size()));
    }
    EXPECT_EQ(names, (QStringList{u"changed now/0"_s, u"added/1"_s}));
}

TEST_F(Contexts, TellChangesBeforeAFetchAndOnceATurn)
{
    const auto context = open();
    QStringList told;
    const auto token = context->objectsDidChange.add([&told](NSManagedObjectContext &,
                                                             const NSManagedObjectContext::Changes &changes) {
        told.append(u"+%1 ~%2 -%3 r%4"_s.arg(titles(changes.inserted).join(u','), titles(changes.updated).join(u','))
                        .arg(changes.deleted.size())
                        .arg(changes.refreshed.size()));
    });
    const auto a = note(*context, u"a"_s);
    const auto b = note(*context, u"b"_s);
    b->setValueForKey(u"c"_s, u"title"_s);
    EXPECT_EQ(told, QStringList());
    static_cast<void>(all(*context, u"QBNoteTag"_s));
    EXPECT_EQ(told, QStringList{u"+a,c ~ -0 r0"_s}) << "before a fetch";
    told.clear();
    a->setValueForKey(u"aa"_s, u"title"_s);
    a->setValueForKey(u"aaa"_s, u"title"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, QStringList{u"+ ~aaa -0 r0"_s}) << "once at the end of the turn";
    told.clear();
    expectSave(*context);
    context->refreshObject(a.get(), /*mergeChanges=*/true);
    context->deleteObject(b.get());
    context->processPendingChanges();
    EXPECT_EQ(told, QStringList{u"+ ~ -1 r1"_s});
}

TEST_F(Contexts, AChildSeesAnObjectWhoseRelationshipsAloneChangedAbove)
{
    const auto main = open();
    const auto label = tag(*main, u"tag"_s);
    const auto marked = note(*main, u"note"_s);
    expectSave(*main);
    main->refreshAllObjects(/*mergeChanges=*/true);
    ASSERT_TRUE(label->isFault());
    label->setTargetObjectsForKey({marked}, u"notes"_s);
    ASSERT_TRUE(label->isUpdated());
    const auto child = childOf(main);
    const auto seen = child->existingObjectWithID(label->objectID());
    EXPECT_EQ(string(seen, u"title"_s), u"tag"_s);
    EXPECT_EQ(all(*child, u"QBNoteTag"_s, u"notes.@count > 0"_s).size(), 1);
}

TEST_F(Contexts, AChildSeesWhatChangedAboveOnceItFetchesAnew)
{
    const auto main = open();
    const auto object = note(*main, u"old"_s);
    object->setValueForKey(u"old text"_s, u"text"_s);
    const auto label = tag(*main, u"tag"_s);
    expectSave(*main);
    const auto child = childOf(main);
    const auto seen = child->existingObjectWithID(object->objectID());
    ASSERT_EQ(string(seen, u"text"_s), u"old text"_s);
    ASSERT_EQ(seen->targetObjectsForKey(u"tags"_s).size(), 0);
    object->setValueForKey(u"new"_s, u"title"_s);
    object->setValueForKey(u"new text"_s, u"text"_s);
    object->setTargetObjectsForKey({label}, u"tags"_s);
    EXPECT_EQ(string(seen, u"title"_s), u"old"_s);
    static_cast<void>(all(*child, u"QBNote"_s));
    EXPECT_EQ(string(seen, u"title"_s), u"new"_s);
    EXPECT_EQ(string(seen, u"text"_s), u"new text"_s);
    EXPECT_EQ(seen->targetObjectsForKey(u"tags"_s).size(), 1);
    EXPECT_FALSE(child->hasChanges());
    main->rollback();
    static_cast<void>(all(*child, u"QBNote"_s));
    EXPECT_EQ(string(seen, u"title"_s), u"old"_s);
    EXPECT_EQ(string(seen, u"text"_s), u"old text"_s);
    EXPECT_EQ(seen->targetObjectsForKey(u"tags"_s).size(), 0);
}

TEST_F(Contexts, AChildsObjectsFollowTheirIdentitiesWhenTheParentSaves)
{
    const auto main = open();
    const auto child = childOf(main);
    auto owner = note(*child, u"owner"_s);
    const NSManagedObjectID temporary = owner->objectID();
    const auto file = child->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    expectSave(*child);
    EXPECT_EQ(main->registeredObjectForID(temporary)->objectID(), temporary) << "the same above";
    file->setTargetObjectForKey(owner, u"note"_s);
    owner = nullptr;
    expectSave(*main);
    EXPECT_FALSE(main->existingObjectWithID(temporary)->objectID().isTemporaryID());
    expectSave(*child);
    expectSave(*main);
    const auto fresh = open();
    EXPECT_EQ(string(all(*fresh, u"QBNoteImage"_s).value(0)->targetObjectForKey(u"note"_s), u"title"_s), u"owner"_s);
}

TEST_F(Contexts, ANewObjectsTargetSavedAboveMeanwhileIsStillItsTarget)
{
    const auto main = open();
    const auto child = childOf(main);
    auto owner = note(*child, u"owner"_s);
    expectSave(*child);
    const auto file = child->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    file->setTargetObjectForKey(owner, u"note"_s);
    owner = nullptr;
    expectSave(*main); // gives the owner its key
    expectSave(*child);
    expectSave(*main);
    const auto fresh = open();
    EXPECT_EQ(string(all(*fresh, u"QBNoteImage"_s).value(0)->targetObjectForKey(u"note"_s), u"title"_s), u"owner"_s);
}

TEST_F(Contexts, AnIdentityObtainedInAChildIsTheOneAbove)
{
    const auto main = open();
    const auto child = childOf(main);
    const auto object = note(*child, u"first"_s);
    expectSave(*child);
    NSError error;
    ASSERT_TRUE(child->obtainPermanentIDsForObjects({object}, &error)) << error.localizedDescription().toStdString();
    const NSManagedObjectID permanent = object->objectID();
    ASSERT_FALSE(permanent.isTemporaryID());
    object->setValueForKey(u"second"_s, u"title"_s);
    expectSave(*child);
    ASSERT_TRUE(main->registeredObjectForID(permanent));
    expectSave(*main);
    EXPECT_EQ(object->objectID(), permanent);
    const auto fresh = open();
    const auto stored = all(*fresh, u"QBNote"_s);
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored[0]->objectID().key(), permanent.key());
    EXPECT_EQ(string(stored[0], u"title"_s), u"second"_s);
}

TEST_F(Contexts, RelationshipsAgreeWhenParentAndChildMovedTheSameFile)
{
    const auto main = open();
    const QList<Object> owners = {note(*main, u"A"_s), note(*main, u"B"_s), note(*main, u"C"_s)};
    const auto file = main->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    file->setTargetObjectForKey(owners[0], u"note"_s);
    expectSave(*main);
    const auto child = childOf(main);
    child->existingObjectWithID(file->objectID())
        ->setTargetObjectForKey(child->existingObjectWithID(owners[1]->objectID()), u"note"_s);
    file->setTargetObjectForKey(owners[2], u"note"_s);
    expectSave(*child);
    EXPECT_EQ(file->targetObjectForKey(u"note"_s), owners[1]) << "the child's word is the later one";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(owners[i]->targetObjectsForKey(u"files"_s).size(), i == 1 ? 1 : 0) << i;
    }
}

TEST_F(Contexts, WhatAChildRelatesToAnObjectDeletedAboveIsRelatedToNothing)
{
    const auto main = open();
    const auto owner = note(*main, u"owner"_s);
    const auto loose = main->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    expectSave(*main);
    const auto child = childOf(main);
    const auto seen = child->existingObjectWithID(owner->objectID());
    const auto added = child->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    added->setTargetObjectForKey(seen, u"note"_s);
    child->existingObjectWithID(loose->objectID())->setTargetObjectForKey(seen, u"note"_s);
    const auto label = tag(*child, u"tag"_s);
    label->setTargetObjectsForKey({seen}, u"notes"_s);
    main->deleteObject(owner.get());
    expectSave(*child);
    for (const auto &file : all(*main, u"QBNoteFile"_s)) {
        EXPECT_FALSE(file->targetObjectForKey(u"note"_s));
    }
    EXPECT_EQ(all(*main, u"QBNoteTag"_s).value(0)->targetObjectsForKey(u"notes"_s).size(), 0);
    expectSave(*main);
    const auto fresh = open();
    EXPECT_EQ(all(*fresh, u"QBNoteFile"_s, u"note != nil"_s).size(), 0);
    EXPECT_EQ(all(*fresh, u"QBNoteTag"_s).value(0)->targetObjectsForKey(u"notes"_s).size(), 0);
}

TEST_F(Contexts, TakeInWhatAnotherProcessSaved)
{
    const auto main = open();
    const auto owner = note(*main, u"owner"_s);
    const auto doomed = note(*main, u"doomed"_s);
    expectSave(*main);
    ASSERT_EQ(owner->targetObjectsForKey(u"files"_s).size(), 0);
    const auto idIn = [this](const Object &object) {
        return NSManagedObjectID(m_model->entityNamed(object->entity()->name()), object->objectID().key());
    };
    const auto other = open();
    const auto theirs = other->existingObjectWithID(idIn(owner));
    theirs->setValueForKey(u"theirs"_s, u"subtitle"_s);
    const auto file = other->insertNewObjectForEntityForName(u"QBNoteImage"_s);
    file->setTargetObjectForKey(theirs, u"note"_s);
    other->deleteObject(other->existingObjectWithID(idIn(doomed)).get());
    expectSave(*other);
    owner->setValueForKey(u"mine"_s, u"title"_s);
    main->processPendingChanges();
    NSManagedObjectContext::Changes told;
    const auto token = main->objectsDidChange.add(
        [&told](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) { told = changes; });
    NSManagedObjectContext::mergeChangesFromRemoteContextSave({idIn(file)}, {idIn(theirs)}, {idIn(doomed)}, {main});
    EXPECT_EQ(told.inserted.size(), 1);
    EXPECT_EQ(told.refreshed, NSManagedObjectSet{owner});
    EXPECT_EQ(told.deleted, NSManagedObjectSet{doomed});
    EXPECT_EQ(string(owner, u"subtitle"_s), u"theirs"_s);
    EXPECT_EQ(string(owner, u"title"_s), u"mine"_s);
    EXPECT_EQ(owner->targetObjectsForKey(u"files"_s).size(), 1);
    EXPECT_EQ(doomed->managedObjectContext(), nullptr);
}

TEST_F(Contexts, AnObserverMayAskForTheObjectThatWasJustDeleted)
{
    const auto main = open();
    auto object = note(*main, u"a"_s);
    expectSave(*main);
    const NSManagedObjectID identity = object->objectID();
    Object asked;
    const auto token = main->didSave.add([&](NSManagedObjectContext &context, const NSManagedObjectContext::Changes &) {
        asked = context.objectWithID(identity);
    });
    main->deleteObject(object.get());
    expectSave(*main);
    object = nullptr;
    ASSERT_TRUE(asked);
    EXPECT_EQ(string(asked, u"title"_s), QString());
    EXPECT_EQ(main->registeredObjectForID(identity), asked) << "still the only one of its identity";
}

TEST_F(Contexts, ObjectsOfADeadContextAreDead)
{
    auto main = open();
    const auto object = note(*main, u"a"_s);
    const auto label = tag(*main, u"tag"_s);
    object->setTargetObjectsForKey({label}, u"tags"_s);
    main = nullptr;
    EXPECT_EQ(object->managedObjectContext(), nullptr);
    EXPECT_EQ(string(object, u"title"_s), QString());
    EXPECT_EQ(object->targetObjectsForKey(u"tags"_s).size(), 0);
    object->setValueForKey(u"b"_s, u"title"_s);
    object->setTargetObjectsForKey({label}, u"tags"_s);
    EXPECT_FALSE(object->isInserted());
    EXPECT_EQ(string(object, u"title"_s), QString());
}

TEST_F(Contexts, APrivateChildStaysUniqueWhileTheParentGivesKeys)
{
    constexpr int kRounds = 60;
    const auto main = open();
    const auto child =
        NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, main);
    std::atomic<bool> isDone = false;
    std::thread worker([&] {
        child->performBlockAndWait([&] {
            QList<Object> held;
            for (int round = 0; round < kRounds; ++round) {
                held.append(note(*child, u"n%1"_s.arg(round)));
                expectSave(*child);
                held.last()->setValueForKey(u"s"_s, u"subtitle"_s);
                const auto seen = all(*child, u"QBNote"_s);
                EXPECT_EQ(seen.size(), held.size());
                for (const auto &object : held) {
                    EXPECT_EQ(seen.count(object), 1) << "one object a row";
                }
            }
            expectSave(*child);
        });
        isDone = true;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] {}, Qt::QueuedConnection);
    });
    while (!isDone) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        expectSave(*main);
    }
    worker.join();
    expectSave(*main);
    EXPECT_EQ(all(*open(), u"QBNote"_s, u"subtitle == 's'"_s).size(), kRounds);
    child->performBlockAndWait([&] { child->reset(); });
}
