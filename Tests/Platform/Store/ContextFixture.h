#pragma once

#include "StoreFixture.h"

#include <Store/NSManagedObjectContext.h>

/// Contexts over one file, each with a connection of its own, as two processes have.
class ContextTest : public testing::Test
{
protected:
    using Object = quib::Ref<NSManagedObject>;
    using Context = std::shared_ptr<NSManagedObjectContext>;

    Context open(NSMergePolicy policy = NSMergePolicy::MergeByPropertyStoreTrump,
                 const NSManagedObjectFactories &factories = {}, const NSPersistentStoreOptions &options = {})
    {
        const auto coordinator = std::make_shared<NSPersistentStoreCoordinator>(m_model, factories);
        NSError error;
        EXPECT_TRUE(coordinator->addPersistentStoreWithType(NSSQLiteStoreType, m_path, options, &error))
            << error.localizedDescription().toStdString();
        const auto context = NSManagedObjectContext::contextWithCoordinator(
            NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
        context->setMergePolicy(policy);
        return context;
    }
    /// A child that the main thread may use at once.
    static Context childOf(const Context &parent)
    {
        return NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::MainQueue, parent);
    }
    static Object note(NSManagedObjectContext &context, const QString &title)
    {
        return named(context, QStringLiteral("QBNote"), title);
    }
    static Object tag(NSManagedObjectContext &context, const QString &title)
    {
        return named(context, QStringLiteral("QBNoteTag"), title);
    }
    static Object named(NSManagedObjectContext &context, const QString &entity, const QString &title)
    {
        auto object = context.insertNewObjectForEntityForName(entity);
        object->setValueForKey(title, QStringLiteral("title"));
        return object;
    }
    static QString string(const Object &object, const QString &key)
    {
        return object ? quib::valueOr<QString>(object->valueForKey(key)) : QStringLiteral("no object");
    }
    static void expectSave(NSManagedObjectContext &context)
    {
        NSError error;
        EXPECT_TRUE(context.save(&error)) << error.localizedDescription().toStdString();
    }
    /// The objects that meet a condition.
    static QList<Object> all(NSManagedObjectContext &context, const QString &entity, const QString &condition = {})
    {
        NSFetchRequest request{.entityName = entity};
        NSError error;
        if (!condition.isEmpty()) {
            request.predicate = NSPredicate::predicateWithFormat(condition, {}, &error);
        }
        const auto objects = context.executeFetchRequest(request, &error);
        EXPECT_TRUE(objects) << error.localizedDescription().toStdString();
        return objects.value_or(QList<Object>());
    }

    quib::tests::TemporaryFolder m_folder;
    QString m_path = m_folder.path(QStringLiteral("s.sqlite"));
    std::shared_ptr<const NSManagedObjectModel> m_model = currentModel();
};
