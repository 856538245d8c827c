#pragma once

#include "QBCoreDataStackDelegate.h"

#include <Foundation/NSError.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSPersistentStoreCoordinator.h>

#include <QString>

#include <functional>
#include <memory>

class NSManagedObjectContext;
class NSManagedObjectModel;

/// Owns the object model, the store and its main context, and the in-memory context of sample notes; gathers saves, and
/// has an older store migrated before it is opened. One for the process, installed by the program's start or by a test.
/// Main queue, but for saveUsingCoalescence and the contexts it hands out.
///
/// A text that another writer of the same file replaced before this process could save its own does not vanish: it
/// comes back as a note of its own, in a conflict group with the other, and is saved at once.
class QBCoreDataStack
{
public:
    /// Nothing is read or made before setupStackWithDelegate.
    /// Shape:   an empty folder stands for the profile's persistent data.
    explicit QBCoreDataStack(const QString &folder = {});
    ~QBCoreDataStack();
    QBCoreDataStack(const QBCoreDataStack &) = delete;
    QBCoreDataStack &operator=(const QBCoreDataStack &) = delete;

    /// The installed stack, or null. Any thread.
    [[nodiscard]] static QBCoreDataStack *sharedStack();
    /// Installs a stack that the caller keeps alive.
    static void setSharedStack(QBCoreDataStack *stack);

    // Opening

    /// Opens the store, now or once a migration has ended. The delegate is held weakly.
    void setupStackWithDelegate(const std::weak_ptr<QBCoreDataStackDelegate> &delegate);
    /// True when there is a store of another model version. A missing or unreadable file needs none.
    [[nodiscard]] bool isMigrationNeeded() const;
    void setupStack();
    void initializeCoreData();
    void initializeInMemoryContext();
    /// What went wrong with opening the store or migrating it; not set when all is well. The contexts are there all the
    /// same after a failed opening, and can neither fetch nor save; after a failed migration there are none.
    [[nodiscard]] NSError openError() const;

    [[nodiscard]] QString persistentStoreURL() const;
    [[nodiscard]] static QLatin1StringView persistentStoreType() { return NSSQLiteStoreType; }
    [[nodiscard]] NSPersistentStoreOptions persistentStoreOptions() const;
    /// Changes what the store is opened with; before setupStackWithDelegate only.
    void setPersistentStoreOptions(const NSPersistentStoreOptions &options);
    /// The folder with all versions of the model.
    [[nodiscard]] static QString managedObjectModelURL();
    /// The current version, read at its first use.
    [[nodiscard]] const std::shared_ptr<const NSManagedObjectModel> &managedObjectModel() const;

    // Contexts

    /// Null before setupStack.
    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &managedObjectContext() const;
    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &inMemoryManagedObjectContext() const;
    /// A new child of the main context, on a queue of its own; its save reaches the main context only.
    /// Queue:   any, once the stack is set up.
    [[nodiscard]] std::shared_ptr<NSManagedObjectContext> backgroundPrivateManagedObjectContext() const;
    /// Calls callback later with such a context, on its queue, then saves the main context. What the callback wants
    /// kept it must save on its own context.
    void performBackgroundTask(std::function<void(NSManagedObjectContext &context)> callback);

    // Saving

    /// With coalescence: one save at the start of the next turn of the event loop, however many ask for it. Without:
    /// saves now, waiting for the main queue, and drops a save that was to come.
    /// Errors: kept in saveError and logged; all changes stay pending, and are tried again after pauses that grow from
    ///         kFirstRetry to kLastRetry.
    /// Queue:   main with coalescence, any without.
    void saveUsingCoalescence(bool coalescence);
    /// The error of the last save of the main context, whoever asked for it; not set when it succeeded, or when nothing
    /// is left to save. Any thread.
    [[nodiscard]] NSError saveError() const;
    /// Set once a read or a save met damage in the file, for good: nothing is written to it any more. Any thread.
    [[nodiscard]] NSError damage() const;
    /// After saveError or damage changed. Queue: main.
    quib::ObserverList<> healthDidChange;

    // Units: seconds.
    static constexpr double kFirstRetry = 2;
    static constexpr double kLastRetry = 60;

private:
    struct Private;
    std::shared_ptr<Private> m_d;
};
