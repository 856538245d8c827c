#pragma once

#include "QBCoreDataStack.h"

#include <Foundation/Clock.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/StoreObserver.h>

#include <array>
#include <mutex>

/// The stack's state, shared with blocks that are under way on other queues and may outlive the stack.
struct QBCoreDataStack::Private : std::enable_shared_from_this<Private>, quib::StoreObserver
{
    QBCoreDataStack *stack = nullptr; // main queue; null once the stack died
    QString folder;
    NSPersistentStoreOptions options;
    std::weak_ptr<QBCoreDataStackDelegate> delegate;
    std::shared_ptr<const NSManagedObjectModel> model;
    std::shared_ptr<NSManagedObjectContext> context;
    std::shared_ptr<NSManagedObjectContext> inMemoryContext;
    NSError openError;
    quib::ObservationToken lossesToken;

    mutable std::mutex mutex; // guards what follows
    std::unique_ptr<quib::TimerToken> coalescenceSaveTimer;
    quint64 timerGeneration = 0;
    NSError saveError;
    NSError damage;

    // Main queue.
    std::unique_ptr<quib::TimerToken> retryTimer;
    double retryPause = kFirstRetry;
    std::array<qint64, 2> toldCodes{}; ///< of saveError and damage

    void cancelTimer();
    void scheduleSave();
    void saveNow();
    void storeDidSave(const NSError &error) override;
    void storeDidFindDamage(const NSError &found) override;
    void updateHealth();
    void updateHealthLater();
    void retry();
    void coalescenceSaveTimerFired(quint64 generation);
    void migrate();
};

namespace quib {

/// Brings back the texts that a save lost to another writer, each as a note of its own, and saves them.
/// Queue: the context's.
void keepLostTexts(NSManagedObjectContext &moc, const QList<NSMergeLoss> &losses);

} // namespace quib
