#include "NSMappingModel.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

std::optional<NSMappingModel> NSMappingModel::mappingModelWithContentsOfFile(const QString &path, NSError *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile),
                      u"%1: %2"_s.arg(path, file.errorString()));
        return std::nullopt;
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    NSMappingModel mapping;
    mapping.sourceVersion = object.value("source"_L1).toString();
    mapping.destinationVersion = object.value("destination"_L1).toString();
    const QJsonObject policies = object.value("policies"_L1).toObject();
    for (auto entry = policies.constBegin(); entry != policies.constEnd(); ++entry) {
        mapping.policies.insert(entry.key(), entry.value().toString());
    }
    if (mapping.sourceVersion.isEmpty() || mapping.destinationVersion.isEmpty()) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadCorruptFile),
                      u"%1: no mapping of versions"_s.arg(path));
        return std::nullopt;
    }
    return mapping;
}

QStringList NSModelBundle::paths(const QString &extension) const
{
    const QStringList pattern{u"*."_s + extension};
    QStringList found;
    const QDir top(m_folder);
    for (const QString &folder : top.entryList({u"*.momd"_s}, QDir::Dirs, QDir::Name)) {
        for (const QString &name : QDir(top.filePath(folder)).entryList(pattern, QDir::Files, QDir::Name)) {
            found.append(top.filePath(QString(folder % u'/' % name)));
        }
    }
    for (const QString &name : top.entryList(pattern, QDir::Files, QDir::Name)) {
        found.append(top.filePath(name));
    }
    return found;
}

QStringList NSModelBundle::modelPaths() const
{
    return paths(u"mom"_s);
}

std::shared_ptr<const NSManagedObjectModel> NSModelBundle::modelForStoreMetadata(const NSStoreMetadata &metadata) const
{
    for (const QString &path : modelPaths()) {
        auto model = NSManagedObjectModel::modelWithContentsOfFile(path);
        if (model && NSPersistentStoreCoordinator::isModelCompatible(*model, metadata)) {
            return model;
        }
    }
    return nullptr;
}

std::optional<NSMappingModel> NSModelBundle::mappingModel(const NSManagedObjectModel &sourceModel,
                                                          const NSManagedObjectModel &destinationModel) const
{
    for (const QString &path : paths(u"cdm"_s)) {
        auto mapping = NSMappingModel::mappingModelWithContentsOfFile(path);
        if (mapping && mapping->sourceVersion == sourceModel.versionIdentifier() &&
            mapping->destinationVersion == destinationModel.versionIdentifier()) {
            return mapping;
        }
    }
    return std::nullopt;
}
