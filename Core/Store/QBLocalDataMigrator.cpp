#include "QBLocalDataMigrator.h"

#include "QBLocalFileManager.h"

#include <Files/AtomicFile.h>
#include <Files/FileMoving.h>
#include <Files/Profile.h>
#include <Logging/QBLogger.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kDatabase{"database.sqlite"};
constexpr QLatin1StringView kThumbs{"Thumbs"};

} // namespace

QUrl QBLocalDataMigrator::documentDataURL()
{
    return QUrl::fromLocalFile(quib::Profile::documentsFolder() % u"/Application Data");
}

bool QBLocalDataMigrator::migrateToCurrentVersion(NSError *error)
{
    static_cast<void>(migrateFromAppSupportToAppGroup(nullptr));
    return migrateFromDocumentToAppGroup(error);
}

bool QBLocalDataMigrator::migrateFromAppSupportToAppGroup(NSError *error)
{
    return migrateFromOldDataURL(QBLocalFileManager::applicationSupportURL(),
                                 QBLocalFileManager::applicationPersistentDataURL(), error);
}

bool QBLocalDataMigrator::migrateFromDocumentToAppGroup(NSError *error)
{
    return migrateFromOldDataURL(documentDataURL(), QBLocalFileManager::applicationPersistentDataURL(), error);
}

bool QBLocalDataMigrator::migrateFromOldDataURL(const QUrl &oldDataURL, const QUrl &toNewDataURL, NSError *error)
{
    const QString from = oldDataURL.toLocalFile();
    const QString to = toNewDataURL.toLocalFile();
    const QString database(kDatabase);
    // 1. and 2. Nothing to move, or data of its own at the new place: the old data is left where it is.
    if (!QFileInfo::exists(from % u'/' % database) || QFileInfo::exists(to % u'/' % database)) {
        return true;
    }
    // 3.
    QBLogInfo(u"Migrating data to "_s % to);
    // 4. Visible items only.
    QStringList names = QDir(from).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    names.removeAll(QString(kThumbs));
    // A journal beside the database belongs to it and must be there before it.
    names.removeAll(database);
    names.append(database);
    // 5.
    NSError moveError;
    bool isDone = quib::ensureFolder(to, &moveError);
    for (qsizetype index = 0; isDone && index < names.size(); ++index) {
        isDone = quib::moveItem(from % u'/' % names[index], to % u'/' % names[index], &moveError);
    }
    // 6.
    if (!isDone) {
        QBLogError(u"Error while migrating data: "_s % moveError.localizedDescription());
        if (error != nullptr) {
            *error = moveError;
        }
    }
    return isDone;
}
