#include "StoreFixture.h"

#include <Store/NSMigrationManager.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

/// Marks what it saw of each note, before and after the relationships are there.
class MarkingPolicy final : public NSEntityMigrationPolicy
{
public:
    bool createDestinationInstancesForSourceInstance(const quib::StoredRow &sourceInstance,
                                                     const QString &entityMapping, NSMigrationManager &manager,
                                                     NSError *error) override
    {
        if (!NSEntityMigrationPolicy::createDestinationInstancesForSourceInstance(sourceInstance, entityMapping,
                                                                                  manager, error)) {
            return false;
        }
        const auto objects =
            manager.destinationInstancesForEntityMappingNamed(entityMapping, {sourceInstance.objectID});
        EXPECT_EQ(objects.size(), 1);
        objects.constLast()->setValueForKey(u"made"_s, u"lastEditingDevice"_s);
        return true;
    }
    bool createRelationshipsForDestinationInstance(NSManagedObject &destinationInstance, const QString &entityMapping,
                                                   NSMigrationManager &manager, NSError *error) override
    {
        const bool isDone = NSEntityMigrationPolicy::createRelationshipsForDestinationInstance(
            destinationInstance, entityMapping, manager, error);
        const qint64 files = destinationInstance.countForKey(u"files"_s);
        destinationInstance.setValueForKey(files, u"todoCompleted"_s);
        return isDone;
    }
};

} // namespace

TEST(StoreMigration, CarriesRowsTextsAndRelationshipsInBatchesAndRunsPolicies)
{
    constexpr int kNotes = 1203; // more than two batches
    const quib::tests::TemporaryFolder folder;
    const QString from = folder.path(u"one.sqlite"_s);
    const QString to = folder.path(u"two.sqlite"_s);
    const auto modelOne = currentModel(1);
    const auto modelTwo = currentModel(2);
    const QString text = u"body \uFEFF"_s + QChar(0xD800);
    {
        const auto coordinator = std::make_shared<NSPersistentStoreCoordinator>(modelOne, NSManagedObjectFactories());
        NSError error;
        ASSERT_TRUE(coordinator->addPersistentStoreWithType(NSSQLiteStoreType, from, {}, &error));
        const auto context = NSManagedObjectContext::contextWithCoordinator(
            NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
        const auto tag = context->insertNewObjectForEntityForName(u"QBNoteTag"_s);
        tag->setValueForKey(u"work"_s, u"title"_s);
        for (int i = 0; i < kNotes; ++i) {
            const auto note = context->insertNewObjectForEntityForName(u"QBNote"_s);
            note->setValueForKey(u"N%1"_s.arg(i), u"uniqueIdentifier"_s);
            note->setValueForKey(QString(text % QString::number(i)), u"text"_s);
            if (i % 3 == 0) {
                note->setTargetObjectsForKey({tag}, u"tags"_s);
                const auto image = context->insertNewObjectForEntityForName(u"QBNoteImage"_s);
                image->setTargetObjectForKey(note, u"note"_s);
                image->setValueForKey(qint64{640}, u"width"_s);
            }
        }
        ASSERT_TRUE(context->save(&error)) << error.localizedDescription().toStdString();
    }
    const NSModelBundle bundle(QStringLiteral(QUIB_SOURCE_DIR "/Resources/Model"));
    NSError error;
    const auto metadata = NSPersistentStoreCoordinator::metadataForPersistentStore(from, &error);
    ASSERT_TRUE(metadata);
    EXPECT_EQ(bundle.modelForStoreMetadata(*metadata)->versionIdentifier(), u"1"_s);
    EXPECT_EQ(bundle.modelPaths().size(), 3);
    const auto mapping = bundle.mappingModel(*modelOne, *modelTwo);
    ASSERT_TRUE(mapping);
    EXPECT_FALSE(bundle.mappingModel(*modelOne, *currentModel(3)));
    EXPECT_EQ(mapping->policies.value(u"QBNote"_s), u"Model1toModel2QBNoteMigrationPolicy"_s);

    QList<double> progress;
    NSMigrationManager manager(modelOne, modelTwo, [](const QString &name) {
        EXPECT_EQ(name, u"Model1toModel2QBNoteMigrationPolicy"_s);
        return std::make_unique<MarkingPolicy>();
    });
    manager.setProgressObserver([&progress](double value) { progress.append(value); });
    ASSERT_TRUE(manager.migrateStoreFromURL(from, *mapping, to, &error)) << error.localizedDescription().toStdString();
    EXPECT_EQ(progress.constFirst(), 0);
    EXPECT_EQ(progress.constLast(), 1);
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_EQ(NSPersistentStoreCoordinator::metadataForPersistentStore(from, &error)->versionIdentifier, u"1"_s);

    const auto coordinator = std::make_shared<NSPersistentStoreCoordinator>(modelTwo, NSManagedObjectFactories());
    ASSERT_TRUE(coordinator->addPersistentStoreWithType(NSSQLiteStoreType, to, {}, &error));
    const auto context =
        NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
    const auto notes = context->executeFetchRequest({.entityName = u"QBNote"_s}, &error);
    ASSERT_TRUE(notes);
    ASSERT_EQ(notes->size(), kNotes);
    for (const auto &note : *notes) {
        const QString identifier = quib::valueOr<QString>(note->valueForKey(u"uniqueIdentifier"_s));
        const int number = identifier.mid(1).toInt();
        EXPECT_EQ(quib::valueOr<QString>(note->valueForKey(u"text"_s)), QString(text % QString::number(number)));
        EXPECT_EQ(note->targetObjectsForKey(u"tags"_s).size(), number % 3 == 0 ? 1 : 0);
        EXPECT_EQ(note->targetObjectsForKey(u"files"_s).size(), number % 3 == 0 ? 1 : 0);
        EXPECT_EQ(quib::valueOr<qint64>(note->valueForKey(u"todoCompleted"_s)), number % 3 == 0 ? 1 : 0);
        EXPECT_EQ(quib::valueOr<QString>(note->valueForKey(u"lastEditingDevice"_s)), u"made"_s);
    }
}

TEST(StoreMigration, StopsWhenCancelled)
{
    const quib::tests::TemporaryFolder folder;
    const QString from = folder.path(u"one.sqlite"_s);
    NSError error;
    {
        const auto coordinator =
            std::make_shared<NSPersistentStoreCoordinator>(currentModel(1), NSManagedObjectFactories());
        ASSERT_TRUE(coordinator->addPersistentStoreWithType(NSSQLiteStoreType, from, {}, &error));
        const auto context = NSManagedObjectContext::contextWithCoordinator(
            NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
        context->insertNewObjectForEntityForName(u"QBNote"_s);
        ASSERT_TRUE(context->save(&error));
    }
    NSMigrationManager manager(currentModel(1), currentModel(2), nullptr);
    manager.cancelMigration();
    EXPECT_FALSE(manager.migrateStoreFromURL(from, {u"1"_s, u"2"_s, {}}, folder.path(u"two.sqlite"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::Migration));
}
