#include "MHWMigrationManager.h"
#include "QBCoreDataStack.h"
#include "QBCoreDataStack_p.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/NSProgress.h>
#include <Logging/QBLogger.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kProgressUnits = 100;

/// Counts the units of one progress object from what a migration tells.
class ProgressOfMigration : public MHWMigrationManagerDelegate
{
public:
    explicit ProgressOfMigration(std::shared_ptr<NSProgress> progress)
        : m_progress(std::move(progress))
    {
    }
    void migrationManager([[maybe_unused]] MHWMigrationManager &manager, float migrationProgress) override
    {
        m_progress->setCompletedUnitCount(static_cast<qint64>(migrationProgress * static_cast<float>(kProgressUnits)));
    }

private:
    std::shared_ptr<NSProgress> m_progress;
};

} // namespace

void QBCoreDataStack::Private::migrate()
{
    const auto progress = std::make_shared<NSProgress>(kProgressUnits);
    progress->setCancellable(false);
    if (const auto told = delegate.lock()) {
        told->coreDataStackDidBeginMigrationWithProgress(*stack, progress);
    }
    const auto migrationQueue = quib::DispatchQueue::serial(u"migrationQueue"_s);
    const QString storeURL = stack->persistentStoreURL();
    const auto currentModel = stack->managedObjectModel();
    migrationQueue->async([self = shared_from_this(), progress, storeURL, currentModel] {
        const auto follower = std::make_shared<ProgressOfMigration>(progress);
        MHWMigrationManager manager;
        manager.setDelegate(follower);
        NSError error;
        const bool isMigrated = manager.progressivelyMigrateURL(storeURL, persistentStoreType(), currentModel, &error);
        quib::DispatchQueue::main()->async([self, isMigrated, error] {
            if (self->stack == nullptr) {
                return;
            }
            if (!isMigrated) {
                self->openError = error;
                QBLogError(u"Error while migrating the store: "_s + error.localizedDescription());
            }
            if (const auto told = self->delegate.lock()) {
                told->coreDataStackDidEndMigration(*self->stack, isMigrated ? NSError() : error);
            }
            if (isMigrated) {
                self->stack->setupStack();
            }
        });
    });
}
