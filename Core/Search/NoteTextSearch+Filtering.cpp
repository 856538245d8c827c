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

std::shared_ptr<const RowKeySet> NoteTextSearch::storedRows(const PredicateNodeRef &node, NSError *error)
{
    if (auto keys = m_fields.keysMeeting(*node)) {
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

std::shared_ptr<const RowKeySet> NoteTextSearch::rowsMeeting(const PredicateNodeRef &node, NSError *error)
{
    if (!namesText(*node)) {
        return storedRows(node, error);
    }
    if (isTextContainment(*node)) {
        return std::make_shared<const RowKeySet>(m_arena.keysOfTextsContainingAll({termOfTextContainment(*node)}));
    }
    if (node->kind == PredicateNode::Kind::Not) {
        const auto rows = rowsMeeting(node->children.constFirst(), error);
        return rows != nullptr ? std::make_shared<const RowKeySet>(rows->inverted()) : nullptr;
    }
    return rowsMeetingJoined(*node, error);
}

std::shared_ptr<const RowKeySet> NoteTextSearch::rowsMeetingJoined(const PredicateNode &node, NSError *error)
{
    // What the store knows is asked for in one question; so are terms that must all be there.
    std::vector<std::shared_ptr<const RowKeySet>> parts;
    QStringList terms;
    QList<PredicateNodeRef> stored;
    for (const PredicateNodeRef &child : node.children) {
        if (node.kind == PredicateNode::Kind::And && isTextContainment(*child)) {
            terms.append(termOfTextContainment(*child));
        } else if (!namesText(*child)) {
            stored.append(child);
        } else {
            parts.push_back(rowsMeeting(child, error));
        }
    }
    if (!terms.isEmpty()) {
        parts.push_back(std::make_shared<const RowKeySet>(m_arena.keysOfTextsContainingAll(terms)));
    }
    if (!stored.isEmpty()) {
        parts.push_back(storedRows(joinedNode(node.kind, stored), error));
    }
    std::shared_ptr<const RowKeySet> joined;
    for (const auto &part : parts) {
        if (part == nullptr) {
            return nullptr;
        }
        joined = joined == nullptr
                     ? part
                     : std::make_shared<const RowKeySet>(
                           node.kind == PredicateNode::Kind::And ? joined->intersected(*part) : joined->united(*part));
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
    std::shared_ptr<const RowKeySet> rows;
    if (!m_isFilled) {
        rows = storedRows(root, nullptr);
    } else if (catchUp(nullptr)) {
        rows = rowsMeeting(root, nullptr);
    }
    if (rows == nullptr) {
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
        if (isStored ? rows->contains(identity.key()) : predicate->evaluateWithObject(*object)) {
            matching.push_back(object);
        }
    }
    return matching;
}

} // namespace quib
