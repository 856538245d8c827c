#include "QBCoreDataStack.h"

#include "QBCoreDataStack_p.h"

#include <Files/Profile.h>
#include <Foundation/Assert.h>
#include <Logging/QBLogger.h>
#include <Store/ManagedObjectFactories.h>
#include <Store/SQLitePersistentStore.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

std::atomic<QBCoreDataStack *> s_sharedStack = nullptr;

} // namespace

void QBCoreDataStackDelegate::coreDataStackDidInitializeManagedObjectContext(
    [[maybe_unused]] QBCoreDataStack &coreDataStack, [[maybe_unused]] NSManagedObjectContext &managedObjectContext)
{
}

void QBCoreDataStackDelegate::coreDataStackDidBeginMigrationWithProgress(
    [[maybe_unused]] QBCoreDataStack &coreDataStack, [[maybe_unused]] const std::shared_ptr<NSProgress> &progress)
{
}

void QBCoreDataStackDelegate::coreDataStackDidEndMigration([[maybe_unused]] QBCoreDataStack &coreDataStack,
                                                           [[maybe_unused]] const NSError &migrationError)
{
}

QBCoreDataStack::QBCoreDataStack(const QString &folder)
    : m_d(std::make_shared<Private>())
{
    m_d->stack = this;
    m_d->folder = folder;
}

QBCoreDataStack::~QBCoreDataStack()
{
    m_d->cancelTimer();
    m_d->retryTimer.reset();
    m_d->stack = nullptr;
    if (s_sharedStack == this) {
        s_sharedStack = nullptr;
    }
}

QBCoreDataStack *QBCoreDataStack::sharedStack()
{
    return s_sharedStack;
}

void QBCoreDataStack::setSharedStack(QBCoreDataStack *stack)
{
    s_sharedStack = stack;
}

void QBCoreDataStack::setupStackWithDelegate(const std::weak_ptr<QBCoreDataStackDelegate> &delegate)
{
    m_d->delegate = delegate;
    if (isMigrationNeeded()) {
        m_d->migrate();
    } else {
        setupStack();
    }
}

bool QBCoreDataStack::isMigrationNeeded() const
{
    const auto metadata = NSPersistentStoreCoordinator::metadataForPersistentStore(persistentStoreURL(), nullptr);
    return metadata && managedObjectModel() &&
           !NSPersistentStoreCoordinator::isModelCompatible(*managedObjectModel(), *metadata);
}

void QBCoreDataStack::setupStack()
{
    initializeCoreData();
    initializeInMemoryContext();
    if (const auto delegate = m_d->delegate.lock(); delegate && m_d->context) {
        delegate->coreDataStackDidInitializeManagedObjectContext(*this, *m_d->context);
    }
}

void QBCoreDataStack::initializeCoreData()
{
    if (m_d->context || !managedObjectModel()) {
        return;
    }
    const auto coordinator =
        std::make_shared<NSPersistentStoreCoordinator>(managedObjectModel(), quib::managedObjectFactories());
    m_d->openError = {};
    NSPersistentStore *store = coordinator->addPersistentStoreWithType(persistentStoreType(), persistentStoreURL(),
                                                                       persistentStoreOptions(), &m_d->openError);
    if (store == nullptr) {
        QBLogError(u"Error while opening the store: "_s + m_d->openError.localizedDescription());
    } else if (auto *file = dynamic_cast<quib::SQLitePersistentStore *>(store)) {
        file->setObserver(m_d);
    }
    m_d->context =
        NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
    m_d->context->setMergePolicy(NSMergePolicy::MergeByPropertyStoreTrump);
    m_d->lossesToken = m_d->context->mergeLosses.add(quib::keepLostTexts);
}

void QBCoreDataStack::initializeInMemoryContext()
{
    if (m_d->inMemoryContext || !managedObjectModel()) {
        return;
    }
    const auto coordinator =
        std::make_shared<NSPersistentStoreCoordinator>(managedObjectModel(), quib::managedObjectFactories());
    NSError error;
    if (coordinator->addPersistentStoreWithType(NSInMemoryStoreType, {}, {}, &error) == nullptr) {
        QBLogError(u"Error while making the in-memory store: "_s + error.localizedDescription());
    }
    m_d->inMemoryContext =
        NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue, coordinator);
    m_d->inMemoryContext->setMergePolicy(NSMergePolicy::MergeByPropertyObjectTrump);
}

NSError QBCoreDataStack::openError() const
{
    return m_d->openError;
}

QString QBCoreDataStack::persistentStoreURL() const
{
    return (m_d->folder.isEmpty() ? quib::Profile::persistentDataFolder() : m_d->folder) + u"/database.sqlite"_s;
}

NSPersistentStoreOptions QBCoreDataStack::persistentStoreOptions() const
{
    return m_d->options;
}

void QBCoreDataStack::setPersistentStoreOptions(const NSPersistentStoreOptions &options)
{
    m_d->options = options;
}

QString QBCoreDataStack::managedObjectModelURL()
{
    return u":/Model.momd"_s;
}

const std::shared_ptr<const NSManagedObjectModel> &QBCoreDataStack::managedObjectModel() const
{
    if (!m_d->model) {
        const QString folder = managedObjectModelURL();
        QFile versions(folder + u"/VersionInfo.json"_s);
        if (versions.open(QIODevice::ReadOnly)) {
            const auto info = QJsonDocument::fromJson(versions.readAll()).object();
            m_d->model = NSManagedObjectModel::modelWithContentsOfFile(
                folder + u'/' + info.value("current"_L1).toString() + u".mom"_s, &m_d->openError);
        }
        QUIB_REQUIRE(m_d->model != nullptr); // built into the program
    }
    return m_d->model;
}

const std::shared_ptr<NSManagedObjectContext> &QBCoreDataStack::managedObjectContext() const
{
    return m_d->context;
}

const std::shared_ptr<NSManagedObjectContext> &QBCoreDataStack::inMemoryManagedObjectContext() const
{
    return m_d->inMemoryContext;
}

std::shared_ptr<NSManagedObjectContext> QBCoreDataStack::backgroundPrivateManagedObjectContext() const
{
    return NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, m_d->context);
}

void QBCoreDataStack::performBackgroundTask(std::function<void(NSManagedObjectContext &context)> callback)
{
    const auto context = backgroundPrivateManagedObjectContext();
    context->performBlock([context, callback = std::move(callback), d = m_d] {
        callback(*context);
        d->cancelTimer();
        d->saveNow();
    });
}
