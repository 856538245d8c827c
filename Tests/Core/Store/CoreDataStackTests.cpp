#include "StoreFixture.h"

#include <Foundation/NSProgress.h>
#include <Platform/Store/FaultVfs.h>
#include <Platform/Store/StoreDamage.h>
#include <Store/NSManagedObjectModel.h>
#include <Store/QBStaticNote.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <atomic>

using namespace Qt::StringLiterals;

namespace quib::tests {

class CoreDataStack : public StoreFixture
{
protected:
    template <typename Condition> static void turnUntil(Condition condition)
    {
        while (!condition()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
};

TEST_F(CoreDataStack, FirstRunNeedsNoMigrationAndMakesTheStore)
{
    EXPECT_FALSE(stack->isMigrationNeeded());
    EXPECT_TRUE(QFileInfo::exists(stack->persistentStoreURL()));
    EXPECT_TRUE(stack->persistentStoreURL().endsWith(u"/Application Data/database.sqlite"_s));
    EXPECT_EQ(moc().mergePolicy(), NSMergePolicy::MergeByPropertyStoreTrump);
    EXPECT_EQ(stack->inMemoryManagedObjectContext()->mergePolicy(), NSMergePolicy::MergeByPropertyObjectTrump);
    const auto *context = stack->managedObjectContext().get();
    stack->setupStack();
    EXPECT_EQ(stack->managedObjectContext().get(), context) << "a second opening changes nothing";
}

TEST_F(CoreDataStack, TheDelegateIsToldOfTheContext)
{
    struct Delegate : QBCoreDataStackDelegate
    {
        void coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack &, NSManagedObjectContext &context) override
        {
            told = &context;
        }
        NSManagedObjectContext *told = nullptr;
    };
    close();
    stack = std::make_unique<QBCoreDataStack>();
    EXPECT_EQ(stack->managedObjectContext(), nullptr);
    const auto delegate = std::make_shared<Delegate>();
    stack->setupStackWithDelegate(delegate);
    EXPECT_EQ(delegate->told, stack->managedObjectContext().get());
}

TEST_F(CoreDataStack, ABurstOfCoalescedSavesIsOneAtTheNextTurn)
{
    int saves = 0;
    const auto token = moc().didSave.add([&saves](auto &, const auto &) { ++saves; });
    const auto note = makeNote(u"a"_s);
    const size_t others = clock.waitingTimers();
    stack->saveUsingCoalescence(true);
    stack->saveUsingCoalescence(true);
    EXPECT_EQ(saves, 0);
    clock.advance(0);
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(clock.waitingTimers(), others);
    note->pin();
    stack->saveUsingCoalescence(true);
    stack->saveUsingCoalescence(false);
    EXPECT_EQ(saves, 2);
    clock.advance(0);
    EXPECT_EQ(saves, 2) << "the save at once leaves no timer";
    stack->saveUsingCoalescence(false);
    EXPECT_EQ(saves, 2) << "nothing to save";
}

TEST_F(CoreDataStack, ABackgroundTaskKeepsWhatItSaves)
{
    std::atomic<int> done = 0;
    for (const bool saves : {false, true}) {
        stack->performBackgroundTask([&done, saves](NSManagedObjectContext &context) {
            const auto note = QBNote::noteWithText(saves ? u"kept"_s : u"dropped"_s, 0, context);
            if (saves) {
                EXPECT_TRUE(context.save());
            }
            ++done;
        });
    }
    turnUntil([&] { return done == 2 && !QBNote::allNotesInManagedObjectContext(moc()).isEmpty(); });
    while (moc().hasChanges()) {
        QCoreApplication::processEvents();
    }
    reopen();
    const auto notes = QBNote::allNotesInManagedObjectContext(moc());
    ASSERT_EQ(notes.size(), 1);
    EXPECT_EQ(notes.constFirst()->text(), u"kept"_s);
}

TEST_F(CoreDataStack, SampleNotesNeverReachTheFile)
{
    const auto sample =
        QBStaticNote::staticNoteWithItem({u"ID"_s, u"text"_s, u"T"_s, u"S"_s}, *stack->inMemoryManagedObjectContext());
    EXPECT_TRUE(sample->isStatic());
    EXPECT_FALSE(sample->isEditable());
    EXPECT_EQ(sample->title(), u"T"_s);
    EXPECT_FALSE(moc().hasChanges());
}

TEST_F(CoreDataStack, OpeningErrorsNameTheFile)
{
    save();
    const QString path = stack->persistentStoreURL();
    close();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(QByteArray(8192, 'x'));
    file.close();
    stack = std::make_unique<QBCoreDataStack>();
    stack->setupStackWithDelegate({});
    ASSERT_TRUE(stack->openError().isSet());
    EXPECT_TRUE(stack->openError().localizedDescription().contains(path));
    // The contexts are there, find nothing and refuse to save.
    EXPECT_TRUE(QBNote::allNotesInManagedObjectContext(moc()).isEmpty());
    const auto note = makeNote(u"typed"_s);
    stack->saveUsingCoalescence(false);
    EXPECT_TRUE(stack->saveError().isSet());
    EXPECT_EQ(note->text(), u"typed"_s);
    EXPECT_TRUE(moc().hasChanges());
}

TEST_F(CoreDataStack, AReadOnlyStoreCanBeReadAndKeepsWhatIsTypedPending)
{
    const QString identifier = makeNote(u"there"_s)->uniqueIdentifier();
    save();
    close();
    stack = std::make_unique<QBCoreDataStack>();
    NSPersistentStoreOptions options;
    options.isReadOnly = true;
    stack->setPersistentStoreOptions(options);
    stack->setupStackWithDelegate({});
    EXPECT_FALSE(stack->openError().isSet());
    const auto note = QBNote::noteWithUniqueIdentifier(identifier, moc());
    ASSERT_TRUE(note);
    note->updateNoteWithText(u"typed"_s, 0);
    stack->saveUsingCoalescence(false);
    EXPECT_TRUE(stack->saveError().isSet());
    EXPECT_TRUE(stack->saveError().localizedDescription().contains(stack->persistentStoreURL()))
        << stack->saveError().localizedDescription().toStdString();
    EXPECT_EQ(note->text(), u"typed"_s);
    EXPECT_TRUE(moc().hasChanges());
}

TEST_F(CoreDataStack, AFailedSaveIsToldAndTriedAgainUntilItSucceeds)
{
    close();
    FaultVfs disk;
    stack = std::make_unique<QBCoreDataStack>();
    NSPersistentStoreOptions options;
    options.vfsName = disk.name();
    stack->setPersistentStoreOptions(options);
    stack->setupStackWithDelegate({});
    int tries = 0;
    const auto trying = moc().willSave.add([&tries](auto &) { ++tries; });
    QList<bool> told;
    const auto health = stack->healthDidChange.add([&told, this] { told.append(stack->saveError().isSet()); });
    const size_t others = clock.waitingTimers();

    disk.arm(0, FaultVfs::Fault::FullDisk);
    const auto note = makeNote(u"typed"_s);
    stack->saveUsingCoalescence(false);
    EXPECT_EQ(stack->saveError().code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteOutOfSpace));
    EXPECT_EQ(told, QList<bool>{true});
    // Each pause is twice as long as the one before, up to a minute; saves that others ask for change nothing of it.
    tries = 0;
    for (const double pause : {2.0, 4.0, 8.0, 16.0, 32.0, 60.0, 60.0}) {
        clock.advance(pause - 1);
        EXPECT_EQ(tries, 0) << "before " << pause;
        clock.advance(1);
        EXPECT_EQ(tries, 1) << "after " << pause;
        stack->saveUsingCoalescence(false);
        tries = 0;
    }
    EXPECT_EQ(told, QList<bool>{true}) << "the same failure is told once";
    EXPECT_TRUE(moc().hasChanges());

    disk.disarm();
    clock.advance(QBCoreDataStack::kLastRetry);
    EXPECT_FALSE(moc().hasChanges());
    EXPECT_FALSE(stack->saveError().isSet());
    EXPECT_EQ(told, (QList<bool>{true, false}));
    EXPECT_EQ(clock.waitingTimers(), others);
    // The next failure starts with short pauses again.
    disk.arm(0, FaultVfs::Fault::FullDisk);
    note->updateNoteWithText(u"typed more"_s, 0);
    stack->saveUsingCoalescence(false);
    disk.disarm();
    clock.advance(QBCoreDataStack::kFirstRetry);
    EXPECT_FALSE(moc().hasChanges());
    close(); // before its disk goes
}

TEST_F(CoreDataStack, ASaveThatNobodyAskedTheStackForIsToldTooAndTriedAgain)
{
    close();
    FaultVfs disk;
    stack = std::make_unique<QBCoreDataStack>();
    NSPersistentStoreOptions options;
    options.vfsName = disk.name();
    stack->setPersistentStoreOptions(options);
    stack->setupStackWithDelegate({});
    disk.arm(0, FaultVfs::Fault::FullDisk);
    bool isTold = false;
    const auto health = stack->healthDidChange.add([&isTold] { isTold = true; });
    const auto note = makeNote(u"typed"_s);
    NSError error;
    EXPECT_FALSE(moc().save(&error));
    EXPECT_EQ(stack->saveError().code(), error.code());
    QCoreApplication::processEvents();
    EXPECT_TRUE(isTold);
    disk.disarm();
    clock.advance(QBCoreDataStack::kFirstRetry);
    EXPECT_FALSE(note->hasChanges());
    EXPECT_FALSE(stack->saveError().isSet());
    close();
}

TEST_F(CoreDataStack, DamageIsToldAndNothingIsWrittenToTheFileAnyMore)
{
    const QString identifier = makeNote(u"there"_s)->uniqueIdentifier();
    save();
    const QString path = stack->persistentStoreURL();
    close();
    damageRows(path);
    const QByteArray before = folder.read(QDir(folder.path()).relativeFilePath(path));

    open(); // the damage is not in the way of that
    int told = 0;
    const auto health = stack->healthDidChange.add([&told] { ++told; });
    EXPECT_FALSE(stack->damage().isSet()) << "nothing was read yet";
    EXPECT_FALSE(QBNote::noteWithUniqueIdentifier(identifier, moc()));
    EXPECT_EQ(stack->damage().code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreCorrupt));
    EXPECT_TRUE(stack->damage().localizedDescription().contains(path));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    static_cast<void>(QBNote::allNotesInManagedObjectContext(moc()));
    const auto note = makeNote(u"typed"_s);
    stack->saveUsingCoalescence(false);
    EXPECT_EQ(stack->saveError().code(), static_cast<qint64>(NSCocoaErrorCode::PersistentStoreCorrupt));
    NSError error;
    EXPECT_FALSE(moc().save(&error)) << "by no other way either";
    EXPECT_EQ(note->text(), u"typed"_s);
    EXPECT_TRUE(moc().hasChanges());
    EXPECT_EQ(folder.read(QDir(folder.path()).relativeFilePath(path)), before);
    close();
}

TEST_F(CoreDataStack, AStoreOfAnUnknownVersionIsLeftAloneAndToldOf)
{
    struct Delegate : QBCoreDataStackDelegate
    {
        void coreDataStackDidEndMigration(QBCoreDataStack &, const NSError &migrationError) override
        {
            hasEnded = true;
            error = migrationError;
        }
        bool hasEnded = false;
        NSError error;
    };
    const QString path = stack->persistentStoreURL();
    close();
    ASSERT_TRUE(QFile::remove(path));
    QFile current(QBCoreDataStack::managedObjectModelURL() + u"/Model 3.mom"_s);
    ASSERT_TRUE(current.open(QIODevice::ReadOnly));
    const auto later = NSManagedObjectModel::modelWithData(
        current.readAll().replace("\"version\": \"3\"", "\"version\": \"4\"").replace("ogVideo", "ogAudio"));
    ASSERT_TRUE(later);
    NSError error;
    ASSERT_TRUE(
        NSPersistentStoreCoordinator(later, {}).addPersistentStoreWithType(NSSQLiteStoreType, path, {}, &error));
    const QByteArray before = folder.read(QDir(folder.path()).relativeFilePath(path));

    stack = std::make_unique<QBCoreDataStack>();
    const auto delegate = std::make_shared<Delegate>();
    stack->setupStackWithDelegate(delegate);
    turnUntil([&] { return delegate->hasEnded; });
    EXPECT_EQ(delegate->error.code(), static_cast<qint64>(NSCocoaErrorCode::MigrationMissingSourceModel));
    EXPECT_TRUE(stack->openError().localizedDescription().contains(path));
    EXPECT_EQ(stack->managedObjectContext(), nullptr);
    EXPECT_EQ(folder.read(QDir(folder.path()).relativeFilePath(path)), before);
}

TEST_F(CoreDataStack, ATextThatAnotherWriterReplacedComesBackAsAConflict)
{
    const auto note = makeNote(u"start #a"_s);
    save();
    QBCoreDataStack other;
    other.setupStackWithDelegate({});
    auto &otherMoc = *other.managedObjectContext();
    const auto theirs = QBNote::noteWithUniqueIdentifier(note->uniqueIdentifier(), otherMoc);
    ASSERT_TRUE(theirs);
    static_cast<void>(note->text()); // both have read the row
    static_cast<void>(theirs->text());

    clock.advance(5);
    theirs->updateNoteWithText(u"theirs #b"_s, 0);
    ASSERT_TRUE(otherMoc.save());
    note->updateNoteWithText(u"mine #c"_s, 0);
    save();

    EXPECT_FALSE(moc().hasChanges()) << "the lost text is durable at once";
    reopen();
    const auto kept = QBNote::noteWithUniqueIdentifier(theirs->uniqueIdentifier(), moc());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->text(), u"theirs #b"_s);
    EXPECT_EQ(sortedTags(*kept), QStringList{u"b"_s});
    const auto group = kept->conflictedNotes();
    ASSERT_EQ(group.size(), 2);
    EXPECT_EQ(group.constFirst(), kept);
    EXPECT_EQ(group.constLast()->text(), u"mine #c"_s);
    EXPECT_EQ(sortedTags(*group.constLast()), QStringList{u"c"_s});
}

TEST_F(CoreDataStack, ATextWrittenIntoANoteThatAnotherWriterDeletedStays)
{
    const auto note = makeNote(u"start"_s);
    save();
    QBCoreDataStack other;
    other.setupStackWithDelegate({});
    const auto theirs = QBNote::noteWithUniqueIdentifier(note->uniqueIdentifier(), *other.managedObjectContext());
    theirs->permanentlyDelete();
    ASSERT_TRUE(other.managedObjectContext()->save());
    note->updateNoteWithText(u"typed meanwhile"_s, 0);
    save();
    reopen();
    const auto notes = QBNote::allNotesInManagedObjectContext(moc());
    ASSERT_EQ(notes.size(), 1);
    EXPECT_EQ(notes.constFirst()->text(), u"typed meanwhile"_s);
}

} // namespace quib::tests
