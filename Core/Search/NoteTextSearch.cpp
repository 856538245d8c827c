#include "NoteTextSearch.h"

#include "QBDateHelper.h"
#include "TextContainment.h"

#include <Store/NSPersistentStore.h>
#include <Store/QBNote.h>
#include <Text/Folding.h>

#include <QSet>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace quib {

bool isTextContainment(const PredicateNode &node)
{
    if (node.kind != PredicateNode::Kind::Comparison || node.isAny || node.operation != PredicateOperator::Contains ||
        node.fold != FoldOption::CaseAndDiacritic || node.left.kind != PredicateExpression::Kind::KeyPath ||
        !node.left.variable.isEmpty() || node.left.path != QStringList{u"text"_s} ||
        node.right.kind != PredicateExpression::Kind::Constant) {
        return false;
    }
    const auto *value = std::get_if<Value>(&node.right.constant);
    return value != nullptr && std::holds_alternative<QString>(*value);
}

QString termOfTextContainment(const PredicateNode &node)
{
    return std::get<QString>(std::get<Value>(node.right.constant));
}

std::shared_ptr<NoteTextSearch> NoteTextSearch::make(NSManagedObjectContext &context)
{
    const std::shared_ptr<NoteTextSearch> search(new NoteTextSearch(context));
    search->m_didSave = context.didSave.add(
        [search = search.get()](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) {
            search->follow(changes);
        });
    return search;
}

NoteTextSearch::NoteTextSearch(NSManagedObjectContext &context)
    : m_context(context)
    , m_entity(context.managedObjectModel().entityNamed(QBNote::entityName()))
    , m_textSlot(m_entity->attributeNamed(u"text"_s)->slot)
    , m_titles(context)
    , m_fields(context)
    , m_fillingQueue(DispatchQueue::serial(u"folded texts"_s))
{
}

void NoteTextSearch::startFilling()
{
    m_titles.startFilling(m_fillingQueue);
    m_fields.startFilling(m_fillingQueue);
    m_fillingQueue->async([weak = weak_from_this(), coordinator = m_context.persistentStoreCoordinator()] {
        if (const auto search = weak.lock()) {
            static_cast<void>(search->fillFrom(*coordinator->persistentStore(), nullptr));
        }
        // What reads dates is read from files by the first date in a search line, which took that key up to 60 ms.
        static_cast<void>(QBDateHelper::shortDateFromString(QStringLiteral("2001-01-01")));
    });
}

bool NoteTextSearch::fill(NSError *error)
{
    return m_fields.fill(error) && fillFrom(*m_context.persistentStoreCoordinator()->persistentStore(), error);
}

bool NoteTextSearch::fillFrom(NSPersistentStore &store, NSError *error)
{
    // Asked before the rows are read: what is written meanwhile moves the counter on, and is caught up with.
    const auto counter = store.changeCounter(error);
    if (!counter) {
        return false;
    }
    const bool isRead = store.enumerateLazyValues(
        m_entity, m_textSlot,
        [this](const NSManagedObjectID &objectID, qint64 version, const Value &value) {
            // A row that a save brought in meanwhile is newer than what was read here.
            const auto *text = std::get_if<QString>(&value);
            if (text != nullptr && m_arena.versionOfKey(objectID.key()) < version) {
                m_arena.setText(objectID.key(), version, *text);
            }
            return true;
        },
        error);
    if (!isRead) {
        return false;
    }
    m_changeCounter = *counter;
    m_isFilled = true;
    ::malloc_trim(0); // what every text took on its way would otherwise stay with the process
    return true;
}

void NoteTextSearch::follow(const NSManagedObjectContext::Changes &changes)
{
    if (!m_isFilled) {
        return; // the next search catches up
    }
    auto &store = *m_context.persistentStoreCoordinator()->persistentStore();
    const auto counter = store.changeCounter(nullptr);
    const qint64 before = m_changeCounter;
    for (const auto *set : {&changes.inserted, &changes.updated}) {
        for (const auto &object : *set) {
            if (const auto note = object.as<QBNote>()) {
                const QString text = note->text();
                if (text.isNull()) {
                    m_arena.remove(note->objectID().key());
                } else {
                    m_arena.setText(note->objectID().key(), m_context.rowVersion(*note), text);
                }
            }
        }
    }
    for (const auto &object : changes.deleted) {
        if (object->entity() == m_entity) {
            m_arena.remove(object->objectID().key());
        }
    }
    // Our own save moves the counter by one; any further and somebody else wrote too.
    m_changeCounter = counter && before >= 0 && *counter == before + 1 ? *counter : -1;
}

bool NoteTextSearch::catchUp(NSError *error)
{
    auto &store = *m_context.persistentStoreCoordinator()->persistentStore();
    const auto counter = store.changeCounter(error);
    if (!counter) {
        return false;
    }
    if (*counter == m_changeCounter) {
        return true;
    }
    NSFetchRequest request{.entityName = m_entity->name()};
    request.propertiesToFetch = {u"trashed"_s};
    const auto rows = store.fetch(request, error);
    if (!rows) {
        return false;
    }
    QSet<qint64> gone;
    for (const qint64 key : m_arena.keys()) {
        gone.insert(key);
    }
    for (const StoredRow &row : *rows) {
        const qint64 key = row.objectID.key();
        gone.remove(key);
        if (m_arena.versionOfKey(key) == row.snapshot->version()) {
            continue;
        }
        const auto lazy = store.lazyValue(row.objectID, m_textSlot, error);
        if (!lazy) {
            return false;
        }
        if (const auto *text = std::get_if<QString>(&lazy->value)) {
            m_arena.setText(key, lazy->version, *text);
        } else {
            m_arena.remove(key);
        }
    }
    for (const qint64 key : std::as_const(gone)) {
        m_arena.remove(key);
    }
    m_changeCounter = *counter;
    return true;
}

NSPredicate::Ref NoteTextSearch::answered(const NSPredicate::Ref &predicate) const
{
    struct Rewriter
    {
        const FoldedTextArena &arena;
        const NSEntityDescription *entity;

        [[nodiscard]] PredicateNodeRef found(const QStringList &terms) const
        {
            QList<NSManagedObjectID> identities;
            for (const qint64 key : arena.keysOfTextsContainingAll(terms)) {
                identities.append(NSManagedObjectID(entity, key));
            }
            auto node = std::make_shared<PredicateNode>();
            node->kind = PredicateNode::Kind::Comparison;
            node->operation = PredicateOperator::In;
            node->left.kind = PredicateExpression::Kind::KeyPath;
            node->right.constant = identities;
            return node;
        }

        [[nodiscard]] PredicateNodeRef operator()(const PredicateNodeRef &node) const
        {
            if (isTextContainment(*node)) {
                return found({termOfTextContainment(*node)});
            }
            if (node->children.isEmpty()) {
                return node;
            }
            // Terms that must all be there are looked for together.
            QList<PredicateNodeRef> children;
            QStringList terms;
            for (const PredicateNodeRef &child : node->children) {
                if (node->kind == PredicateNode::Kind::And && isTextContainment(*child)) {
                    terms.append(termOfTextContainment(*child));
                } else {
                    children.append((*this)(child));
                }
            }
            if (!terms.isEmpty()) {
                children.append(found(terms));
            }
            if (node->kind != PredicateNode::Kind::Not) {
                return joinedNode(node->kind, children);
            }
            auto copy = std::make_shared<PredicateNode>(*node);
            copy->children = children;
            return copy;
        }
    };
    // The tree is shared with the predicate; a handle that owns nothing stands for its root.
    const PredicateNodeRef root(predicate, &predicate->root());
    return std::make_shared<const NSPredicate>(Rewriter{m_arena, m_entity}(root));
}

std::optional<QList<Ref<NSManagedObject>>> NoteTextSearch::executeFetchRequest(const NSFetchRequest &request,
                                                                               NSError *error)
{
    m_context.processPendingChanges();
    const bool isAnswerable =
        m_isFilled && request.predicate && request.entityName == m_entity->name() && !m_context.hasChanges();
    if (!isAnswerable || !catchUp(error)) {
        return m_context.executeFetchRequest(request, error);
    }
    NSFetchRequest answeredRequest = request;
    answeredRequest.predicate = answered(request.predicate);
    return m_context.executeFetchRequest(answeredRequest, error);
}

} // namespace quib
