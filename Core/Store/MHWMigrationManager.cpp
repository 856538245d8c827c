#include "MHWMigrationManager.h"

#include "MigrationPolicies.h"

#include <Files/AtomicFile.h>
#include <Files/FileError.h>
#include <Files/Profile.h>
#include <Foundation/Identifiers.h>
#include <Store/NSMigrationManager.h>

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A second name for a file, or a durable copy where the other name lies on another file system.
bool keepBackup(const QString &path, const QString &backupPath, NSError *error)
{
    const QByteArray to = QFile::encodeName(backupPath);
    if (::link(QFile::encodeName(path).constData(), to.constData()) == 0) {
        return true;
    }
    QFile source(path);
    if (!source.copy(backupPath)) {
        return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileWriteUnknown),
                             u"cannot keep %1 as %2: %3"_s.arg(path, backupPath, source.errorString()));
    }
    const int descriptor = ::open(to.constData(), O_RDONLY | O_CLOEXEC);
    const bool isSynced = descriptor >= 0 && ::fsync(descriptor) == 0;
    const int reason = errno;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (!isSynced) {
        QFile::remove(backupPath);
        return quib::fillFileError(error, quib::FileAccess::Write, reason, u"keep", backupPath);
    }
    return true;
}

} // namespace

void MHWMigrationManagerDelegate::migrationManager([[maybe_unused]] MHWMigrationManager &manager,
                                                   [[maybe_unused]] float migrationProgress)
{
}

QList<NSMappingModel> MHWMigrationManagerDelegate::migrationManagerMappingModelsForSourceModel(
    [[maybe_unused]] MHWMigrationManager &manager, [[maybe_unused]] const NSManagedObjectModel &sourceModel)
{
    return {};
}

MHWMigrationManager::MHWMigrationManager(const QString &bundlePath)
    : m_bundle(bundlePath.isEmpty() ? u":"_s : bundlePath)
{
}

bool MHWMigrationManager::progressivelyMigrateURL(const QString &sourceStoreURL, QLatin1StringView ofType,
                                                  const std::shared_ptr<const NSManagedObjectModel> &toModel,
                                                  NSError *error)
{
    // Each pass makes the store one version newer; a walk longer than the models there are goes round in a circle.
    for (qsizetype steps = m_bundle.modelPaths().size() + 1; steps > 0; --steps) {
        const auto metadata = NSPersistentStoreCoordinator::metadataForPersistentStore(sourceStoreURL, error);
        if (!metadata) {
            return false;
        }
        if (NSPersistentStoreCoordinator::isModelCompatible(*toModel, *metadata)) {
            if (error != nullptr) {
                *error = {};
            }
            return true;
        }
        const auto sourceModel = m_bundle.modelForStoreMetadata(*metadata);
        if (!sourceModel) {
            return NSError::fill(error, kNSCocoaErrorDomain,
                                 static_cast<qint64>(NSCocoaErrorCode::MigrationMissingSourceModel),
                                 u"%1 is of model version %2, which this program does not know"_s.arg(
                                     sourceStoreURL, metadata->versionIdentifier));
        }
        if (ofType != NSSQLiteStoreType || !migrateOneStep(sourceStoreURL, sourceModel, error)) {
            return false;
        }
    }
    return NSError::fill(error, kErrorDomain, kNoModelsError, u"No mapping model found in bundle"_s);
}

std::optional<MHWMigrationManager::Destination>
MHWMigrationManager::getDestinationModel(const NSManagedObjectModel &forSourceModel, NSError *error) const
{
    const QStringList paths = m_bundle.modelPaths();
    for (const QString &path : paths) {
        const auto model = NSManagedObjectModel::modelWithContentsOfFile(path);
        const auto mapping = model ? m_bundle.mappingModel(forSourceModel, *model) : std::nullopt;
        if (mapping) {
            return Destination{model, *mapping, QFileInfo(path).completeBaseName()};
        }
    }
    NSError::fill(error, kErrorDomain, kNoModelsError,
                  paths.isEmpty() ? u"No models found!"_s : u"No mapping model found in bundle"_s);
    return std::nullopt;
}

bool MHWMigrationManager::migrateOneStep(const QString &sourceStoreURL,
                                         const std::shared_ptr<const NSManagedObjectModel> &sourceModel, NSError *error)
{
    const auto destination = getDestinationModel(*sourceModel, error);
    if (!destination) {
        return false;
    }
    const auto delegate = m_delegate.lock();
    QList<NSMappingModel> mappings =
        delegate ? delegate->migrationManagerMappingModelsForSourceModel(*this, *sourceModel) : QList<NSMappingModel>();
    if (mappings.isEmpty()) {
        mappings = {destination->mapping};
    }
    const QFileInfo source(sourceStoreURL);
    const QString destinationURL =
        source.path() + u'/' + source.completeBaseName() + u'.' + destination->modelName + u'.' + source.suffix();
    if (QFileInfo::exists(destinationURL) && !QFile::remove(destinationURL)) {
        return quib::fillFileError(error, quib::FileAccess::Write, errno, u"remove", destinationURL);
    }
    QFile::remove(destinationURL + u"-journal"_s);
    NSMigrationManager manager(sourceModel, destination->model, quib::makeMigrationPolicy);
    manager.setProgressObserver([this, delegate](double migrationProgress) {
        if (delegate) {
            delegate->migrationManager(*this, static_cast<float>(migrationProgress));
        }
    });
    bool isMigrated = false;
    for (const NSMappingModel &mapping : mappings) {
        isMigrated = manager.migrateStoreFromURL(sourceStoreURL, mapping, destinationURL, error);
    }
    manager.setProgressObserver({});
    return isMigrated && backupSourceStoreAtURL(sourceStoreURL, destinationURL, error);
}

/// The old store gets its second name first; then one move puts the new store in its place, so that a crash in between
/// leaves either of the two there, whole.
bool MHWMigrationManager::backupSourceStoreAtURL(const QString &sourceStoreURL,
                                                 const QString &movingDestinationStoreAtURL, NSError *error)
{
    const QString backup = quib::Profile::temporaryFolder() + u'/' + quib::globallyUniqueString();
    if (!keepBackup(sourceStoreURL, backup, error)) {
        return false;
    }
    if (std::rename(QFile::encodeName(movingDestinationStoreAtURL).constData(),
                    QFile::encodeName(sourceStoreURL).constData()) != 0) {
        const int reason = errno;
        QFile::remove(backup);
        return quib::fillFileError(error, quib::FileAccess::Write, reason, u"replace", sourceStoreURL);
    }
    quib::syncFolder(QFileInfo(sourceStoreURL).path());
    return true;
}
