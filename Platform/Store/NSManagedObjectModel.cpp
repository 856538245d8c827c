#include "NSManagedObjectModel.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMaximumSlots = 64;

struct TypeRow
{
    QLatin1StringView name;
    NSAttributeType type;
};

constexpr TypeRow kTypes[] = {
    {"boolean"_L1, NSAttributeType::Boolean}, {"int16"_L1, NSAttributeType::Int16},
    {"int64"_L1, NSAttributeType::Int64},     {"double"_L1, NSAttributeType::Double},
    {"date"_L1, NSAttributeType::Date},       {"string"_L1, NSAttributeType::String},
    {"binary"_L1, NSAttributeType::Binary},
};

quib::Value defaultForType(NSAttributeType type)
{
    switch (type) {
    case NSAttributeType::Boolean:
        return false;
    case NSAttributeType::Int16:
    case NSAttributeType::Int64:
        return qint64{0};
    case NSAttributeType::Double:
        return 0.0;
    default:
        return {};
    }
}

bool readDeleteRule(const QString &name, NSDeleteRule *rule)
{
    static const QHash<QString, NSDeleteRule> rules{{u"noAction"_s, NSDeleteRule::NoAction},
                                                    {u"nullify"_s, NSDeleteRule::Nullify},
                                                    {u"cascade"_s, NSDeleteRule::Cascade},
                                                    {u"deny"_s, NSDeleteRule::Deny}};
    const auto found = rules.constFind(name);
    if (found == rules.constEnd()) {
        return false;
    }
    *rule = *found;
    return true;
}

/// Indexes that a version got after stores of it existed.
QString laterIndexesKey()
{
    return u"laterIndexes"_s;
}

} // namespace

/// Builds a model from its file, step by step; the first fault ends it.
struct ModelReader
{
    NSManagedObjectModel *model;
    QString fault;

    bool fail(const QString &what)
    {
        fault = what;
        return false;
    }

    bool read(const QJsonObject &root)
    {
        model->m_versionIdentifier = root.value("version"_L1).toString();
        const QJsonArray entities = root.value("entities"_L1).toArray();
        if (model->m_versionIdentifier.isEmpty() || entities.isEmpty()) {
            return fail(u"no version or no entities"_s);
        }
        // 1. The entities by name, each below its parent, which stands before it.
        for (const auto &value : entities) {
            if (!addEntity(value.toObject())) {
                return false;
            }
        }
        // 2. The properties, those of the parent first.
        for (qsizetype i = 0; i < entities.size(); ++i) {
            if (!readProperties(*model->m_entities[static_cast<size_t>(i)], entities.at(i).toObject())) {
                return false;
            }
        }
        // 3. Destinations, inverses and the layout of rows, which need all properties.
        for (const auto &entity : model->m_entities) {
            if (!resolve(*entity)) {
                return false;
            }
        }
        return true;
    }

    bool addEntity(const QJsonObject &object)
    {
        auto entity = std::make_unique<NSEntityDescription>();
        entity->m_name = object.value("name"_L1).toString();
        entity->m_isAbstract = object.value("abstract"_L1).toBool();
        entity->m_code = static_cast<int>(model->m_entities.size()) + 1;
        if (entity->m_name.isEmpty() || model->m_entitiesByName.contains(entity->m_name)) {
            return fail(u"an entity without a name of its own: \"%1\""_s.arg(entity->m_name));
        }
        entity->m_rootEntity = entity.get();
        if (object.contains("parent"_L1)) {
            const QString parent = object.value("parent"_L1).toString();
            auto *above = const_cast<NSEntityDescription *>(model->m_entitiesByName.value(parent));
            if (above == nullptr) {
                return fail(u"%1: no entity \"%2\" before it"_s.arg(entity->m_name, parent));
            }
            entity->m_superentity = above;
            entity->m_rootEntity = above->m_rootEntity;
            above->m_subentities.append(entity.get());
        }
        model->m_entitiesByName.insert(entity->m_name, entity.get());
        model->m_entities.push_back(std::move(entity));
        return true;
    }

    bool readProperties(NSEntityDescription &entity, const QJsonObject &object)
    {
        if (entity.m_superentity != nullptr) {
            entity.m_attributes = entity.m_superentity->m_attributes;
            entity.m_relationships = entity.m_superentity->m_relationships;
        }
        for (const auto &value : object.value("attributes"_L1).toArray()) {
            const QJsonObject given = value.toObject();
            NSAttributeDescription attribute;
            attribute.name = given.value("name"_L1).toString();
            const QString typeName = given.value("type"_L1).toString();
            const auto *type = std::find_if(std::begin(kTypes), std::end(kTypes),
                                            [&typeName](const TypeRow &row) { return row.name == typeName; });
            if (attribute.name.isEmpty() || type == std::end(kTypes)) {
                return fail(u"%1: attribute \"%2\" of type \"%3\""_s.arg(entity.m_name, attribute.name, typeName));
            }
            attribute.type = type->type;
            attribute.defaultValue = defaultForType(type->type);
            attribute.isLazy = given.value("lazy"_L1).toBool();
            attribute.isIndexed = given.value("indexed"_L1).toBool();
            attribute.isFoldIndexed = given.value("foldIndexed"_L1).toBool();
            attribute.isUnique = attribute.isFoldIndexed && given.value("unique"_L1).toBool();
            entity.m_attributes.push_back(std::move(attribute));
        }
        for (const auto &value : object.value("relationships"_L1).toArray()) {
            const QJsonObject given = value.toObject();
            NSRelationshipDescription relationship;
            relationship.name = given.value("name"_L1).toString();
            relationship.destinationEntityName = given.value("destination"_L1).toString();
            relationship.inverseName = given.value("inverse"_L1).toString();
            relationship.isToMany = given.value("toMany"_L1).toBool();
            relationship.ownsJoinTable = given.value("ownsJoinTable"_L1).toBool();
            if (relationship.name.isEmpty() ||
                !readDeleteRule(given.value("deleteRule"_L1).toString(u"nullify"_s), &relationship.deleteRule)) {
                return fail(u"%1: relationship \"%2\""_s.arg(entity.m_name, relationship.name));
            }
            entity.m_relationships.push_back(std::move(relationship));
        }
        for (const QString &kind : {u"indexes"_s, laterIndexesKey()}) {
            for (const auto &value : object.value(kind).toArray()) {
                QStringList keys;
                for (const auto &key : value.toArray()) {
                    keys.append(key.toString());
                }
                entity.m_compoundIndexes.append(keys);
            }
        }
        const size_t toOne = static_cast<size_t>(
            std::count_if(entity.m_relationships.begin(), entity.m_relationships.end(),
                          [](const NSRelationshipDescription &relationship) { return !relationship.isToMany; }));
        if (entity.m_attributes.size() + toOne > kMaximumSlots) {
            return fail(u"%1: more than %2 properties"_s.arg(entity.m_name).arg(kMaximumSlots));
        }
        for (size_t i = 0; i < entity.m_attributes.size(); ++i) {
            entity.m_attributes[i].slot = static_cast<int>(i);
            entity.m_attributeIndex.insert(entity.m_attributes[i].name, static_cast<int>(i));
            entity.m_slots.push_back({entity.m_attributes[i].type, nullptr});
        }
        for (size_t i = 0; i < entity.m_relationships.size(); ++i) {
            NSRelationshipDescription &relationship = entity.m_relationships[i];
            relationship.entity = &entity;
            relationship.index = static_cast<int>(i);
            relationship.slot = -1;
            if (!relationship.isToMany) {
                relationship.slot = static_cast<int>(entity.m_slots.size());
                entity.m_slots.push_back({NSAttributeType::Int64, &relationship});
            }
            entity.m_relationshipIndex.insert(relationship.name, static_cast<int>(i));
        }
        if (static_cast<size_t>(entity.m_attributeIndex.size() + entity.m_relationshipIndex.size()) !=
            entity.m_attributes.size() + entity.m_relationships.size()) {
            return fail(u"%1: two properties of one name"_s.arg(entity.m_name));
        }
        const auto slotCount = entity.m_slots.size();
        entity.m_wholeRowLayout =
            entity.rowLayoutOfSlots(slotCount < kMaximumSlots ? (quint64{1} << slotCount) - 1 : ~quint64{0});
        return true;
    }

    bool resolve(NSEntityDescription &entity)
    {
        for (NSRelationshipDescription &relationship : entity.m_relationships) {
            const auto *destination = model->m_entitiesByName.value(relationship.destinationEntityName);
            if (destination == nullptr) {
                return fail(u"%1.%2: no entity \"%3\""_s.arg(entity.m_name, relationship.name,
                                                             relationship.destinationEntityName));
            }
            relationship.destinationEntity = destination;
            if (relationship.inverseName.isEmpty()) {
                if (relationship.isToMany) {
                    return fail(u"%1.%2: to many without an inverse"_s.arg(entity.m_name, relationship.name));
                }
                continue;
            }
            relationship.inverse = destination->relationshipNamed(relationship.inverseName);
            if (relationship.inverse == nullptr || relationship.inverse->inverseName != relationship.name ||
                !entity.isKindOfEntity(model->m_entitiesByName.value(relationship.inverse->destinationEntityName))) {
                return fail(u"%1.%2: inverse \"%3\" does not match"_s.arg(entity.m_name, relationship.name,
                                                                          relationship.inverseName));
            }
            if (relationship.isToMany && relationship.inverse->isToMany &&
                relationship.ownsJoinTable == relationship.inverse->ownsJoinTable) {
                return fail(u"%1.%2: one side must own the join table"_s.arg(entity.m_name, relationship.name));
            }
        }
        for (const QStringList &index : entity.m_compoundIndexes) {
            for (const QString &key : index) {
                if (entity.attributeNamed(key.startsWith(u'-') ? key.mid(1) : key) == nullptr) {
                    return fail(u"%1: index over \"%2\""_s.arg(entity.m_name, key));
                }
            }
        }
        return true;
    }
};

QList<const NSEntityDescription *> NSEntityDescription::withSubentities() const
{
    QList<const NSEntityDescription *> all{this};
    for (qsizetype i = 0; i < all.size(); ++i) {
        all += all[i]->m_subentities;
    }
    return all;
}

bool NSEntityDescription::isKindOfEntity(const NSEntityDescription *other) const
{
    for (const auto *entity = this; entity != nullptr; entity = entity->m_superentity) {
        if (entity == other) {
            return true;
        }
    }
    return false;
}

const NSAttributeDescription *NSEntityDescription::attributeNamed(const QString &name) const
{
    const auto found = m_attributeIndex.constFind(name);
    return found == m_attributeIndex.constEnd() ? nullptr : &m_attributes[static_cast<size_t>(*found)];
}

const NSRelationshipDescription *NSEntityDescription::relationshipNamed(const QString &name) const
{
    const auto found = m_relationshipIndex.constFind(name);
    return found == m_relationshipIndex.constEnd() ? nullptr : &m_relationships[static_cast<size_t>(*found)];
}

std::shared_ptr<const NSManagedObjectModel> NSManagedObjectModel::modelWithData(const QByteArray &data, NSError *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(data, &parseError);
    const auto model = std::make_shared<NSManagedObjectModel>();
    ModelReader reader{model.get(), {}};
    if (!document.isObject() || !reader.read(document.object())) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadCorruptFile),
                      u"not an object model: %1"_s.arg(document.isObject() ? reader.fault : parseError.errorString()));
        return nullptr;
    }
    // The digest is taken of the document's normal form: layout and order of keys in the file don't count. Nor do later
    // indexes, which a store makes when it is opened: they change how fast an answer comes, never what it is.
    QJsonObject described = document.object();
    QJsonArray entities;
    for (const QJsonValue &value : described.value(u"entities"_s).toArray()) {
        QJsonObject entity = value.toObject();
        entity.remove(laterIndexesKey());
        entities.append(entity);
    }
    described.insert(u"entities"_s, entities);
    model->m_versionHash =
        QCryptographicHash::hash(QJsonDocument(described).toJson(QJsonDocument::Compact), QCryptographicHash::Sha256)
            .toHex();
    return model;
}

std::shared_ptr<const NSManagedObjectModel> NSManagedObjectModel::modelWithContentsOfFile(const QString &path,
                                                                                          NSError *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile),
                      u"%1: %2"_s.arg(path, file.errorString()));
        return nullptr;
    }
    return modelWithData(file.readAll(), error);
}

const NSEntityDescription *NSManagedObjectModel::entityNamed(const QString &name) const
{
    return m_entitiesByName.value(name);
}
