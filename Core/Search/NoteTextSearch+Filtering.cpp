#include "NoteTextSearch.h"

#include "TextContainment.h"

#include <Store/NSPersistentStore.h>
#include <Store/QBNote.h>

#include <algorithm>

namespace quib {

namespace {

/// More remembered answers than one search line has terms.
constexpr qsizetype kMostStoredRows = 16;

bool namesText(const PredicateNode &node)
{
    return isTextContainment(node) || std::any_of(node.children.begin(), node.children.end(),
                                                  [](const PredicateNodeRef &child) { return namesText(*child); });
}

} // namespace

/// A condition on rows, as far as it is a question of their keys.
struct NoteTextSearch::Condition
{
    PredicateNode::Kind kind = PredicateNode::Kind::Comparison;
    std::vector<Condition> children = {};
    std::shared_ptr<const RowKeySet> rows = {}; // of a comparison

    [[nodiscard]] bool holds(qint64 key) const
    {
        const auto childHolds = [key](const Condition &child) { return child.holds(key); };
        switch (kind) {
        case PredicateNode::Kind::And:
            return std::all_of(children.begin(), children.end(), childHolds);
        case PredicateNode::Kind::Or:
            return std::any_of(children.begin(), children.end(), childHolds);
        case PredicateNode::Kind::Not:
            return !children.front().holds(key);
        default:
            return rows->contains(key);
        }
    }
};

std::shared_ptr<const RowKeySet> NoteTextSearch::storedRows(const PredicateNodeRef &node, NSError *error)
{
    if (auto keys = m_fields->keysMeeting(*node)) {
        return std::make_shared<const RowKeySet>(std::move(*keys));
    }
    auto &store = *m_context.persistentStoreCoordinator()->persistentStore();
    const auto counter = store.changeCounter(error);
    if (!counter) {
        return nullptr;
    }
    if (m_storedRowsCounter != *counter || m_storedRows.size() >= kMostStoredRows) {
        m_storedRows.clear();
        m_storedRowsCounter = *counter;
    }
    NSFetchRequest request{.entityName = m_entity->name()};
    request.predicate = std::make_shared<const NSPredicate>(node);
    std::shared_ptr<const RowKeySet> &rows = m_storedRows[request.predicate->predicateFormat()];
    if (rows == nullptr) {
        const auto identities = store.fetchIDs(request, error);
        if (!identities) {
            return nullptr;
        }
        std::vector<qint64> keys;
        keys.reserve(static_cast<size_t>(identities->size()));
        for (const NSManagedObjectID &identity : *identities) {
            keys.push_back(identity.key());
        }
        rows = std::make_shared<const RowKeySet>(std::move(keys));
    }
    return rows;
}

std::optional<NoteTextSearch::Condition> NoteTextSearch::conditionForNode(const PredicateNodeRef &node, NSError *error)
{
    if (!namesText(*node)) {
        auto rows = storedRows(node, error);
        return rows == nullptr ? std::nullopt : std::optional(Condition{.rows = std::move(rows)});
    }
    if (isTextContainment(*node)) {
        return Condition{.rows = std::make_shared<const RowKeySet>(
                             m_arena.keysOfTextsContainingAll({termOfTextContainment(*node)}))};
    }
    if (node->kind == PredicateNode::Kind::Not) {
        auto child = conditionForNode(node->children.constFirst(), error);
        return child ? std::optional(Condition{.kind = node->kind, .children = {std::move(*child)}}) : std::nullopt;
    }
    return joinedCondition(*node, error);
}

std::optional<NoteTextSearch::Condition> NoteTextSearch::joinedCondition(const PredicateNode &node, NSError *error)
{
    // What the store knows is asked for in one question; so are terms that must all be there.
    Condition joined{.kind = node.kind};
    QStringList terms;
    QList<PredicateNodeRef> stored;
    for (const PredicateNodeRef &child : node.children) {
        if (node.kind == PredicateNode::Kind::And && isTextContainment(*child)) {
            terms.append(termOfTextContainment(*child));
        } else if (!namesText(*child)) {
            stored.append(child);
        } else if (auto condition = conditionForNode(child, error)) {
            joined.children.push_back(std::move(*condition));
        } else {
            return std::nullopt;
        }
    }
    if (!terms.isEmpty()) {
        joined.children.push_back({.rows = std::make_shared<const RowKeySet>(m_arena.keysOfTextsContainingAll(terms))});
    }
    if (!stored.isEmpty()) {
        auto rows = storedRows(joinedNode(node.kind, stored), error);
        if (rows == nullptr) {
            return std::nullopt;
        }
        joined.children.push_back({.rows = std::move(rows)});
    }
    return joined;
}

std::optional<std::vector<NSManagedObject *>> NoteTextSearch::objectsMatching(std::span<NSManagedObject *const> objects,
                                                                              const NSPredicate::Ref &predicate)
{
    if (predicate == nullptr) {
        return std::nullopt;
    }
    // The tree is shared with the predicate; a handle that owns nothing stands for its root.
    const PredicateNodeRef root(predicate, &predicate->root());
    std::optional<Condition> condition;
    if (!m_isFilled) {
        if (auto rows = storedRows(root, nullptr)) {
            condition = Condition{.rows = std::move(rows)};
        }
    } else if (catchUp(nullptr)) {
        condition = conditionForNode(root, nullptr);
    }
    if (!condition) {
        return std::nullopt;
    }
    std::vector<NSManagedObject *> matching;
    matching.reserve(objects.size());
    // OPTIMIZATION: objects lie all over the memory, and are asked for this many before their turn.
    constexpr size_t kReadAhead = 24;
    for (size_t i = 0; i < objects.size(); ++i) {
        NSManagedObject *object = objects[i];
        if (i + kReadAhead < objects.size()) {
            __builtin_prefetch(objects[i + kReadAhead]);
        }
        const NSManagedObjectID identity = object->objectID();
        const bool isStored = !object->hasChanges() && identity.key() > 0 && identity.entity() == m_entity;
        if (isStored ? condition->holds(identity.key()) : predicate->evaluateWithObject(*object)) {
            matching.push_back(object);
        }
    }
    return matching;
}

} // namespace quib
