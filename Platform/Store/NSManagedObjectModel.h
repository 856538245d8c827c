#pragma once

#include "RowLayout.h"
#include "Value.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class NSEntityDescription;

enum class NSAttributeType : quint8
{
    Boolean,
    Int16,
    Int64,
    Double,
    Date,
    String,
    Binary
};

enum class NSDeleteRule : quint8
{
    NoAction,
    Nullify,
    Cascade,
    Deny
};

/// One attribute of an entity. Immutable once its model is read.
struct NSAttributeDescription
{
    QString name;
    NSAttributeType type = NSAttributeType::String;
    /// Numbers and booleans: never nothing on a row, 0 and false by default. Others: optional, nothing by default.
    quib::Value defaultValue;
    /// Kept in a table of its own and read only when asked for.
    bool isLazy = false;
    /// Indexed by value.
    bool isIndexed = false;
    /// A hidden column holds the [cd]-folded form, indexed, for "==[cd]" and "BEGINSWITH[cd]".
    bool isFoldIndexed = false;
    /// Fold-indexed only: no two rows hold the same folded value. A row inserted with one that another writer inserted
    /// meanwhile becomes that other row.
    bool isUnique = false;
    /// Place among the entity's attributes, inherited ones first: the index of its slot in a RowSnapshot.
    int slot = -1;
};

/// One relationship of an entity. Immutable once its model is read.
struct NSRelationshipDescription
{
    QString name;
    QString destinationEntityName;
    /// Empty where the model has no inverse.
    QString inverseName;
    bool isToMany = false;
    NSDeleteRule deleteRule = NSDeleteRule::Nullify;
    /// Many to many only: true on the one side whose name the join table bears.
    bool ownsJoinTable = false;
    const NSEntityDescription *entity = nullptr;
    const NSEntityDescription *destinationEntity = nullptr;
    const NSRelationshipDescription *inverse = nullptr;
    /// Place among the entity's relationships, inherited ones first.
    int index = -1;
    /// To-one only: its slot in a RowSnapshot, after the attributes' slots.
    int slot = -1;

    [[nodiscard]] bool isManyToMany() const { return isToMany && inverse != nullptr && inverse->isToMany; }
};

/// One entity: its attributes and relationships, inherited ones included. Owned by its model, immutable, any thread.
class NSEntityDescription
{
public:
    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] bool isAbstract() const { return m_isAbstract; }
    [[nodiscard]] const NSEntityDescription *superentity() const { return m_superentity; }
    /// The entity at the top of the inheritance: its name is the name of the table.
    [[nodiscard]] const NSEntityDescription *rootEntity() const { return m_rootEntity; }
    /// This entity and everything below it.
    [[nodiscard]] QList<const NSEntityDescription *> withSubentities() const;
    [[nodiscard]] bool isKindOfEntity(const NSEntityDescription *other) const;
    /// Written in the discriminator column of a table that holds several entities; unique in the model, stable.
    [[nodiscard]] int code() const { return m_code; }

    [[nodiscard]] const std::vector<NSAttributeDescription> &attributes() const { return m_attributes; }
    [[nodiscard]] const std::vector<NSRelationshipDescription> &relationships() const { return m_relationships; }
    [[nodiscard]] const NSAttributeDescription *attributeNamed(const QString &name) const;
    [[nodiscard]] const NSRelationshipDescription *relationshipNamed(const QString &name) const;
    /// Slots of a RowSnapshot: one an attribute, then one a to-one relationship. At most 64.
    [[nodiscard]] int slotCount() const { return static_cast<int>(m_slots.size()); }
    /// How a RowSnapshot holds one slot.
    struct SlotLayout
    {
        NSAttributeType type = NSAttributeType::String;
        /// A key of the target row; type is Int64.
        const NSRelationshipDescription *relationship = nullptr;
    };
    [[nodiscard]] const SlotLayout &slotLayout(int slot) const { return m_slots[static_cast<size_t>(slot)]; }
    /// How a row with all slots is packed.
    [[nodiscard]] const quib::RowLayout *wholeRowLayout() const { return m_wholeRowLayout; }
    /// How a row with just some slots is packed; bit i stands for slot i. Valid as long as the entity.
    [[nodiscard]] const quib::RowLayout *rowLayoutOfSlots(quint64 slotMask) const
    {
        return m_rowLayouts.layoutOfSlots(this, slotMask);
    }

    /// Groups of attribute names covered by one index, in order; a leading "-" sorts descending.
    [[nodiscard]] const QList<QStringList> &compoundIndexes() const { return m_compoundIndexes; }

private:
    friend class NSManagedObjectModel;
    friend struct ModelReader;
    QString m_name;
    bool m_isAbstract = false;
    int m_code = 0;
    std::vector<SlotLayout> m_slots;
    const quib::RowLayout *m_wholeRowLayout = nullptr;
    quib::RowLayouts m_rowLayouts;
    const NSEntityDescription *m_rootEntity = nullptr;
    const NSEntityDescription *m_superentity = nullptr;
    QList<const NSEntityDescription *> m_subentities;
    std::vector<NSAttributeDescription> m_attributes;
    std::vector<NSRelationshipDescription> m_relationships;
    QHash<QString, int> m_attributeIndex;
    QHash<QString, int> m_relationshipIndex;
    QList<QStringList> m_compoundIndexes;
};

/// The description of all entities of one model version, read from a "mom" file (JSON). Immutable, any thread.
class NSManagedObjectModel
{
public:
    /// Errors: null for a file that is not a model: unknown types, missing destinations, inverses that don't match.
    [[nodiscard]] static std::shared_ptr<const NSManagedObjectModel> modelWithData(const QByteArray &data,
                                                                                   NSError *error = nullptr);
    [[nodiscard]] static std::shared_ptr<const NSManagedObjectModel> modelWithContentsOfFile(const QString &path,
                                                                                             NSError *error = nullptr);

    /// The version's number as text: "1", "2", "3".
    [[nodiscard]] const QString &versionIdentifier() const { return m_versionIdentifier; }
    /// A digest of everything that shapes the tables: equal digests mean compatible stores.
    [[nodiscard]] const QByteArray &versionHash() const { return m_versionHash; }
    [[nodiscard]] const std::vector<std::unique_ptr<NSEntityDescription>> &entities() const { return m_entities; }
    [[nodiscard]] const NSEntityDescription *entityNamed(const QString &name) const;

private:
    friend struct ModelReader;
    QString m_versionIdentifier;
    QByteArray m_versionHash;
    std::vector<std::unique_ptr<NSEntityDescription>> m_entities;
    QHash<QString, const NSEntityDescription *> m_entitiesByName;
};
