#include "StoreFixture.h"

#include <Foundation/NSProgress.h>
#include <Store/MHWMigrationManager.h>
#include <Store/NSManagedObjectModel.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

struct Follower : QBCoreDataStackDelegate
{
    void coreDataStackDidInitializeManagedObjectContext(QBCoreDataStack &, NSManagedObjectContext &) override
    {
        events.append(u"context"_s);
    }
    void coreDataStackDidBeginMigrationWithProgress(QBCoreDataStack &,
                                                    const std::shared_ptr<NSProgress> &begun) override
    {
        events.append(u"begin"_s);
        progress = begun;
        progress->setObserver([this](qint64 completed, qint64) {
            restarts += completed < last ? 1 : 0;
            last = completed;
        });
    }
    void coreDataStackDidEndMigration(QBCoreDataStack &, const NSError &migrationError) override
    {
        events.append(u"end"_s);
        error = migrationError;
    }
    QStringList events;
    NSError error;
    std::shared_ptr<NSProgress> progress;
    qint64 last = 0;
    int restarts = 0;
};

} // namespace

class StoreMigration : public StoreFixture
{
protected:
    /// Writes a store of an older version in the profile's place, by key.
    void makeOldStore(const QString &modelName, const std::function<void(NSManagedObjectContext &context)> &fill)
    {
        const QString path = stack->persistentStoreURL();
        close();
        ASSERT_TRUE(!QFileInfo::exists(path) || QFile::remove(path));
        const auto model = NSManagedObjectModel::modelWithContentsOfFile(QBCoreDataStack::managedObjectModelURL() +
                                                                         u'/' + modelName + u".mom"_s);
        ASSERT_TRUE(model);
        const auto coordinator = std::make_shared<NSPersistentStoreCoordinator>(model, NSManagedObjectFactories());
        NSError error;
        ASSERT_TRUE(coordinator->addPersistentStoreWithType(NSSQLiteStoreType, path, {}, &error))
            << error.localizedDescription().toStdString();
        const auto context = NSManagedObjectContext::contextWithCoordinator(
            NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
        fill(*context);
        ASSERT_TRUE(context->save(&error)) << error.localizedDescription().toStdString();
    }
    std::shared_ptr<Follower> migrate()
    {
        auto follower = std::make_shared<Follower>();
        stack = std::make_unique<QBCoreDataStack>();
        EXPECT_TRUE(stack->isMigrationNeeded());
        stack->setupStackWithDelegate(follower);
        EXPECT_EQ(stack->managedObjectContext(), nullptr) << "no context while the file is worked on";
        while (!follower->events.contains(u"end"_s)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return follower;
    }
    static Ref<NSManagedObject> oldNote(NSManagedObjectContext &context, const QString &identifier, const QString &text)
    {
        auto note = context.insertNewObjectForEntityForName(u"QBNote"_s);
        note->setValueForKey(identifier, u"uniqueIdentifier"_s);
        note->setValueForKey(text, u"text"_s);
        return note;
    }
};

TEST_F(StoreMigration, AVersion1StoreIsWalkedThroughVersion2)
{
    makeOldStore(u"Model"_s, [](NSManagedObjectContext &context) {
        const auto note = oldNote(context, u"A"_s, u"# Plan\nbody\n- one\n+ two\n```\ncode\n```\n"_s);
        const auto image = context.insertNewObjectForEntityForName(u"QBNoteImage"_s);
        image->setValueForKey(u"I"_s, u"uniqueIdentifier"_s);
        image->setTargetObjectForKey(note, u"note"_s);
        const auto tag = context.insertNewObjectForEntityForName(u"QBNoteTag"_s);
        tag->setValueForKey(u"old"_s, u"title"_s);
        note->setTargetObjectsForKey({tag}, u"tags"_s);
        const auto titled = oldNote(context, u"B"_s, u"# Text\nof B"_s);
        titled->setValueForKey(u"kept title"_s, u"title"_s);
    });
    const auto follower = migrate();
    EXPECT_FALSE(follower->error.isSet()) << follower->error.localizedDescription().toStdString();
    EXPECT_EQ(follower->events, (QStringList{u"begin"_s, u"end"_s, u"context"_s}));
    EXPECT_EQ(follower->progress->totalUnitCount(), 100);
    EXPECT_GE(follower->restarts, 1) << "the progress begins anew with the second step";
    EXPECT_FALSE(stack->isMigrationNeeded());

    const auto note = QBNote::noteWithUniqueIdentifier(u"A"_s, moc());
    ASSERT_TRUE(note);
    EXPECT_EQ(note->title(), u"Plan"_s);
    EXPECT_EQ(note->subtitle(), QBNote::parseSubtitleFromText(note->text()));
    EXPECT_EQ(note->todoIncompleted(), 1);
    EXPECT_EQ(note->todoCompleted(), 1);
    EXPECT_TRUE(note->hasSourceCode());
    EXPECT_TRUE(note->hasImages());
    EXPECT_FALSE(note->hasFiles());
    EXPECT_EQ(note->tagsStrings(), QStringList{u"old"_s});
    EXPECT_EQ(note->filesCount(), 1);
    const auto titled = QBNote::noteWithUniqueIdentifier(u"B"_s, moc());
    ASSERT_TRUE(titled);
    EXPECT_EQ(titled->title(), u"kept title"_s);
    EXPECT_EQ(titled->subtitle(), u"of B"_s);
    EXPECT_EQ(QDir(QFileInfo(stack->persistentStoreURL()).path()).entryList({u"*.sqlite*"_s}, QDir::Files),
              QStringList{u"database.sqlite"_s});
}

TEST_F(StoreMigration, AVersion2StoreKeepsWhatItHasAndALeftoverIsReplaced)
{
    makeOldStore(u"Model 2"_s, [](NSManagedObjectContext &context) {
        const auto note = oldNote(context, u"A"_s, u"T\nsub"_s);
        note->setValueForKey(u"kept"_s, u"title"_s);
        const auto lone = oldNote(context, u"L"_s, u"T\nx"_s + QChar(0xD800));
        lone->setValueForKey(u"T"_s, u"title"_s);
    });
    // What an attempt that was cut off left behind.
    const QString leftover = QFileInfo(QBCoreDataStack().persistentStoreURL()).path() + u"/database.Model 3.sqlite"_s;
    QFile file(leftover);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("half a store");
    file.close();
    const auto follower = migrate();
    EXPECT_FALSE(follower->error.isSet()) << follower->error.localizedDescription().toStdString();
    EXPECT_FALSE(QFileInfo::exists(leftover));
    EXPECT_EQ(QBNote::noteWithUniqueIdentifier(u"A"_s, moc())->title(), u"kept"_s);
    EXPECT_EQ(QBNote::noteWithUniqueIdentifier(u"A"_s, moc())->subtitle(), u"sub"_s);
    const auto lone = QBNote::noteWithUniqueIdentifier(u"L"_s, moc());
    EXPECT_TRUE(lone->subtitle().isNull()) << "half a surrogate pair has no form in UTF-8";
    EXPECT_EQ(lone->text(), u"T\nx"_s + QChar(0xD800));
}

TEST_F(StoreMigration, WithoutAMappingTheStoreStaysAsItWas)
{
    makeOldStore(u"Model"_s, [](NSManagedObjectContext &context) { oldNote(context, u"A"_s, u"text"_s); });
    const QBCoreDataStack later;
    const QString path = later.persistentStoreURL();
    const QString bundle = folder.path(u"bundle"_s);
    ASSERT_TRUE(QDir().mkpath(bundle + u"/Model.momd"_s));
    MHWMigrationManager empty(bundle);
    NSError error;
    EXPECT_FALSE(empty.progressivelyMigrateURL(path, NSSQLiteStoreType, later.managedObjectModel(), &error));
    EXPECT_TRUE(error.isSet());
    // A bundle with the models, but without a way from one to the other.
    ASSERT_TRUE(QFile::copy(u":/Model.momd/Model.mom"_s, bundle + u"/Model.momd/Model.mom"_s));
    MHWMigrationManager unmapped(bundle);
    EXPECT_FALSE(unmapped.progressivelyMigrateURL(path, NSSQLiteStoreType, later.managedObjectModel(), &error));
    EXPECT_EQ(error.code(), MHWMigrationManager::kNoModelsError);
    EXPECT_EQ(error.localizedDescription(), u"No mapping model found in bundle"_s);
    EXPECT_TRUE(later.isMigrationNeeded());
}

// The files under Tests/Data/Stores were written by the models as they were; a change of an old model, or of how files
// are read, shows here. QUIB_WRITE_STORE_FIXTURES=1 writes them anew, for a version that never left the house.
TEST_F(StoreMigration, CommittedStoresOfOldVersionsOpenWithEverythingInThem)
{
    const QString stores = QStringLiteral(QUIB_TEST_DATA "/Stores/");
    for (const QString &version : {u"1"_s, u"2"_s}) {
        SCOPED_TRACE(version.toStdString());
        const QString fixture = QString(stores % u"version" % version % u".sqlite");
        if (qEnvironmentVariableIsSet("QUIB_WRITE_STORE_FIXTURES")) {
            makeOldStore(version == u"1"_s ? u"Model"_s : u"Model 2"_s, [](NSManagedObjectContext &context) {
                const auto tag = context.insertNewObjectForEntityForName(u"QBNoteTag"_s);
                tag->setValueForKey(u"old tag"_s, u"title"_s);
                for (int i = 0; i < 20; ++i) {
                    const auto note = oldNote(context, u"N%1"_s.arg(i),
                                              u"# Note %1\nbody \uFEFFé😀\n- open\n+ done\n#old tag#"_s.arg(i));
                    note->setValueForKey(i % 2 == 0, u"pinned"_s);
                    note->setValueForKey(NSDate::dateWithTimeIntervalSince1970(1.5e9 + i), u"creationDate"_s);
                    note->setTargetObjectsForKey({tag}, u"tags"_s);
                    const auto file =
                        context.insertNewObjectForEntityForName(i % 2 == 0 ? u"QBNoteImage"_s : u"QBNoteGenericFile"_s);
                    file->setValueForKey(u"F%1"_s.arg(i), u"uniqueIdentifier"_s);
                    file->setTargetObjectForKey(note, u"note"_s);
                }
            });
            QDir().mkpath(stores);
            QFile::remove(fixture);
            ASSERT_TRUE(QFile::copy(QBCoreDataStack().persistentStoreURL(), fixture));
        }
        const QString path = QBCoreDataStack().persistentStoreURL();
        close();
        QFile::remove(path);
        ASSERT_TRUE(QFile::copy(fixture, path)) << fixture.toStdString();
        ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        const auto follower = migrate();
        ASSERT_FALSE(follower->error.isSet()) << follower->error.localizedDescription().toStdString();
        const auto notes = QBNote::allNotesInManagedObjectContext(moc());
        ASSERT_EQ(notes.size(), 20);
        for (const auto &note : notes) {
            const int i = note->uniqueIdentifier().mid(1).toInt();
            EXPECT_EQ(note->text(), u"# Note %1\nbody \uFEFFé😀\n- open\n+ done\n#old tag#"_s.arg(i));
            EXPECT_EQ(note->isPinned(), i % 2 == 0);
            EXPECT_EQ(note->creationDate(), NSDate::dateWithTimeIntervalSince1970(1.5e9 + i));
            EXPECT_EQ(note->tagsStrings(), QStringList{u"old tag"_s});
            EXPECT_EQ(note->hasImages(), i % 2 == 0);
            EXPECT_EQ(note->hasFiles(), i % 2 != 0);
            EXPECT_EQ(note->orderedFiles().constFirst()->uniqueIdentifier(), u"F%1"_s.arg(i));
            EXPECT_TRUE(note->subtitle().startsWith(u"body"));
            if (version == u"1"_s) {
                EXPECT_EQ(note->title(), u"Note %1"_s.arg(i));
                EXPECT_EQ(note->todoCompleted(), 1);
            }
        }
    }
}

} // namespace quib::tests
