#include "MRTFetchedResultsController.h"

#include "ListChange.h"
#include "ListSteps.h"
#include "SortKeys.h"

#include <Foundation/Assert.h>
#include <Foundation/NSRange.h>
#include <Text/Folding.h>

#include <algorithm>

using quib::ListChange;
using quib::ObjectList;
using quib::Ref;

namespace {

/// The order of a whole list; equals keep theirs.
std::vector<NSManagedObject *> sorted(std::vector<NSManagedObject *> objects,
                                      const QList<NSSortDescriptor> &descriptors)
{
    struct Entry
    {
        NSManagedObject *object = nullptr;
        quib::SortKeys::Row keys;
    };
    // OPTIMIZATION: a natural comparison costs the same as making a key, so keys are made once and bytes compared.
    QList<NSSortDescriptor> byKey;
    for (const NSSortDescriptor &descriptor : descriptors) {
        byKey.append(NSSortDescriptor(descriptor.key(), descriptor.ascending()));
    }
    std::vector<Entry> entries;
    entries.reserve(objects.size());
    for (NSManagedObject *object : objects) {
        Entry entry{object, {}};
        for (const NSSortDescriptor &descriptor : descriptors) {
            quib::Value value = descriptor.valueOfObject(*object);
            const auto *text = std::get_if<QString>(&value);
            if (descriptor.comparison() == NSSortDescriptor::Comparison::LocalizedStandard && text != nullptr) {
                value = quib::localizedStandardSortKey(*text);
            }
            entry.keys.push_back(std::move(value));
        }
        entries.push_back(std::move(entry));
    }
    const quib::SortKeys keys(byKey);
    std::stable_sort(entries.begin(), entries.end(),
                     [&keys](const Entry &a, const Entry &b) { return keys.compare(a.keys, b.keys) < 0; });
    std::transform(entries.begin(), entries.end(), objects.begin(), [](const Entry &entry) { return entry.object; });
    return objects;
}

/// A request that names attributes reads just those that its condition and its order go by: a change is evaluated
/// without asking the store, and what the rows show is read as they come into view, which of a long list few ever do.
NSFetchRequest requestOfOwnKeys(NSFetchRequest request, const NSManagedObjectContext &context)
{
    const auto *entity = context.managedObjectModel().entityNamed(request.entityName);
    if (request.propertiesToFetch.isEmpty() || entity == nullptr) {
        return request;
    }
    QStringList keys;
    if (request.predicate) {
        keys = request.predicate->attributeKeys();
    }
    for (const NSSortDescriptor &descriptor : request.sortDescriptors) {
        keys.append(descriptor.key());
    }
    keys.removeIf([entity](const QString &key) {
        const auto *attribute = entity->attributeNamed(key);
        return attribute == nullptr || attribute->isLazy;
    });
    keys.removeDuplicates();
    if (keys.isEmpty()) {
        request.includesPropertyValues = false;
    }
    request.propertiesToFetch = keys;
    return request;
}

} // namespace

MRTFetchedResultsController::MRTFetchedResultsController(std::shared_ptr<NSManagedObjectContext> managedObjectContext,
                                                         std::optional<NSFetchRequest> fetchRequest)
    : m_context(std::move(managedObjectContext))
    , m_fetchRequest(std::move(fetchRequest))
{
}

MRTFetchedResultsController::MRTFetchedResultsController(const MRTFetchedResultsController &other)
    : m_context(other.m_context)
    , m_fetchRequest(other.m_fetchRequest)
    , m_fetchedObjects(other.m_fetchedObjects)
    , m_filterPredicate(other.m_filterPredicate)
    , m_sortDescriptors(other.m_sortDescriptors)
    , m_arrangedObjects(other.m_arrangedObjects)
    , m_arrangedObjectInMemoryFetchRequest(other.m_arrangedObjectInMemoryFetchRequest)
    , m_bulkFilter(other.m_bulkFilter)
    , m_delegate(other.m_delegate)
    , m_delegateHas(other.m_delegateHas)
    , m_waiting(other.m_waiting)
{
}

MRTFetchedResultsController::~MRTFetchedResultsController() = default;

std::unique_ptr<MRTFetchedResultsController> MRTFetchedResultsController::copy() const
{
    std::unique_ptr<MRTFetchedResultsController> copied(new MRTFetchedResultsController(*this));
    if (m_isObserving) {
        copied->observe();
    }
    return copied;
}

void MRTFetchedResultsController::setDelegate(MRTFetchedResultsControllerDelegate *delegate)
{
    m_delegate = delegate;
    m_delegateHas = delegate != nullptr ? delegate->delegateHas()
                                        : MRTFetchedResultsControllerDelegateHas{.controllerWillChangeContent = false,
                                                                                 .controllerDidChangeContent = false,
                                                                                 .controllerDidChangeObject = false};
}

bool MRTFetchedResultsController::performFetch(NSError *error)
{
    QUIB_ASSERT(m_context->queue()->isCurrent());
    if (!m_fetchRequest) {
        return false;
    }
    m_observer.reset();
    m_waiting.clear();
    ++m_fetch;
    const auto found = m_context->executeFetchRequest(requestOfOwnKeys(*m_fetchRequest, *m_context), error);
    ObjectList objects;
    if (found) {
        objects.reserve(static_cast<size_t>(found->size()));
        for (const Ref<NSManagedObject> &object : *found) {
            objects.append(object.get());
        }
    }
    m_fetchedObjects = std::move(objects);
    updateArrangedObjects();
    setupMocObserver();
    return true;
}

void MRTFetchedResultsController::setupMocObserver()
{
    // What was changed before the fetch is in its result, and is not told again.
    m_context->processPendingChanges();
    observe();
}

void MRTFetchedResultsController::observe()
{
    m_isObserving = true;
    m_observer = m_context->objectsDidChange.add(
        [this](NSManagedObjectContext & /*context*/, const NSManagedObjectContext::Changes &changes) {
            managedObjectContextObjectsDidChange(changes);
        });
}

void MRTFetchedResultsController::setFilterPredicate(const NSPredicate::Ref &predicate)
{
    m_filterPredicate = predicate;
    updateArrangedObjects();
}

void MRTFetchedResultsController::setSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors)
{
    m_sortDescriptors = sortDescriptors;
    updateArrangedObjects();
}

void MRTFetchedResultsController::updateArrangedObjects()
{
    ++m_arrangement;
    if (!m_filterPredicate && m_sortDescriptors.isEmpty()) {
        m_arrangedObjects.reset();
        m_arrangedObjectInMemoryFetchRequest.reset();
        return;
    }
    const auto fetched = m_fetchedObjects.objects();
    std::vector<NSManagedObject *> arranged;
    if (!m_filterPredicate) {
        arranged.assign(fetched.begin(), fetched.end());
    } else if (auto answered = m_bulkFilter ? m_bulkFilter(fetched, m_filterPredicate) : std::nullopt) {
        arranged = std::move(*answered);
    } else {
        std::copy_if(fetched.begin(), fetched.end(), std::back_inserter(arranged),
                     [this](const NSManagedObject *object) { return m_filterPredicate->evaluateWithObject(*object); });
    }
    if (!m_sortDescriptors.isEmpty()) {
        arranged = sorted(std::move(arranged), m_sortDescriptors);
    }
    // All of them are among those fetched.
    m_arrangedObjects = ObjectList::borrowing(std::move(arranged));

    NSFetchRequest request;
    request.sortDescriptors = m_sortDescriptors;
    request.predicate = m_filterPredicate;
    if (m_fetchRequest) {
        request.entityName = m_fetchRequest->entityName;
        request.includesSubentities = m_fetchRequest->includesSubentities;
        if (m_sortDescriptors.isEmpty()) {
            request.sortDescriptors = m_fetchRequest->sortDescriptors;
        }
        if (m_fetchRequest->predicate) {
            request.predicate =
                m_filterPredicate
                    ? NSPredicate::andPredicateWithSubpredicates({m_filterPredicate, m_fetchRequest->predicate})
                    : m_fetchRequest->predicate;
        }
    }
    m_arrangedObjectInMemoryFetchRequest = std::move(request);
}

Ref<NSManagedObject> MRTFetchedResultsController::objectAtIndex(qint64 index) const
{
    QUIB_REQUIRE(index >= 0 && index < count());
    return Ref<NSManagedObject>(shown()[static_cast<size_t>(index)]);
}

QList<Ref<NSManagedObject>> MRTFetchedResultsController::objectsAtIndexes(const QList<qint64> &indexes) const
{
    QList<Ref<NSManagedObject>> objects;
    objects.reserve(indexes.size());
    for (const qint64 index : indexes) {
        objects.append(objectAtIndex(index));
    }
    return objects;
}

qint64 MRTFetchedResultsController::indexOfObject(const NSManagedObject *object) const
{
    const auto index = quib::indexOfObject(shown().objects(), object);
    return index ? static_cast<qint64>(*index) : NSNotFound;
}

// Reacting to changes

void MRTFetchedResultsController::managedObjectContextObjectsDidChange(const NSManagedObjectContext::Changes &changes)
{
    if (!m_fetchRequest) {
        return;
    }
    m_waiting.append(changes);
    if (m_isTelling) {
        // A delegate changed something and had it announced at once: its turn comes once this change is told.
        return;
    }
    const std::weak_ptr<char> life = m_life;
    m_isTelling = true;
    while (!life.expired() && !m_waiting.isEmpty()) {
        react(m_waiting.takeFirst());
    }
    if (!life.expired()) {
        m_isTelling = false;
    }
}

void MRTFetchedResultsController::react(const NSManagedObjectContext::Changes &changes)
{
    const auto changed = quib::ChangedObjects::from(changes);
    const auto *entity = m_context->managedObjectModel().entityNamed(m_fetchRequest->entityName);
    if (entity == nullptr) {
        return;
    }
    if (!m_arrangedObjects) {
        tell(ListChange::make(m_fetchedObjects.objects(), changed, *m_fetchRequest, entity));
        return;
    }
    // With a second view only that one is told of. The query's own result goes first, so that a delegate finds both in
    // their new state.
    const auto change =
        ListChange::make(m_arrangedObjects->objects(), changed, *m_arrangedObjectInMemoryFetchRequest, entity);
    if (const auto beneath = ListChange::make(m_fetchedObjects.objects(), changed, *m_fetchRequest, entity);
        !beneath.isEmpty()) {
        beneath.applyTo(m_fetchedObjects);
    }
    tell(change);
}

void MRTFetchedResultsController::tell(const ListChange &change)
{
    if (change.isEmpty()) {
        return;
    }
    const std::weak_ptr<char> life = m_life;
    const quint64 arrangement = m_arrangement;
    const quint64 fetch = m_fetch;
    const bool wasArranged = m_arrangedObjects.has_value();
    if (m_delegate != nullptr && m_delegateHas.controllerWillChangeContent) {
        m_delegate->controllerWillChangeContent(*this);
    }
    if (life.expired()) {
        return;
    }
    if (m_arrangement == arrangement) {
        change.applyTo(m_arrangedObjects ? *m_arrangedObjects : m_fetchedObjects);
        if (m_delegate != nullptr && m_delegateHas.controllerDidProgressivelyChangeObject) {
            notifyProgressively(change);
        } else if (m_delegate != nullptr && m_delegateHas.controllerDidChangeObject) {
            notifyChanges(change);
        }
    } else if (!wasArranged && m_fetch == fetch) {
        // The delegate laid a second view over the list while it still showed its old state.
        change.applyTo(m_fetchedObjects);
        updateArrangedObjects();
    }
    if (!life.expired() && m_delegate != nullptr && m_delegateHas.controllerDidChangeContent) {
        m_delegate->controllerDidChangeContent(*this);
    }
}

void MRTFetchedResultsController::notifyChanges(const ListChange &change)
{
    const std::weak_ptr<char> life = m_life;
    const auto report = [this, &life](NSManagedObject &object, qint64 atIndex, MRTChangeType type, qint64 newIndex) {
        if (!life.expired() && m_delegate != nullptr) {
            m_delegate->controllerDidChangeObject(*this, object, atIndex, type, newIndex);
        }
    };
    for (const ListChange::Deleted &one : change.deleted) {
        report(*one.object, static_cast<qint64>(one.index), MRTChangeType::Delete, NSNotFound);
    }
    for (const ListChange::Inserted &one : change.inserted) {
        report(*one.object, NSNotFound, MRTChangeType::Insert, static_cast<qint64>(one.newIndex));
    }
    for (const ListChange::Updated &one : change.updated) {
        report(*one.object, static_cast<qint64>(one.index),
               one.index == one.newIndex ? MRTChangeType::Update : MRTChangeType::Move,
               static_cast<qint64>(one.newIndex));
    }
}

void MRTFetchedResultsController::notifyProgressively(const ListChange &change)
{
    const std::weak_ptr<char> life = m_life;
    quib::forEachStep(change, [this, &life](const quib::ListStep &step) {
        if (!life.expired() && m_delegate != nullptr) {
            m_delegate->controllerDidProgressivelyChangeObject(*this, *step.object, step.index, step.progressiveIndex,
                                                               step.type, step.progressiveType, step.newIndex,
                                                               step.newProgressiveIndex);
        }
    });
}
