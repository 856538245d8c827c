#include "QBNoteSidebarCoreController.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Foundation/NSRange.h>
#include <Logging/QBLogger.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;
using Pointer = QBSidebarItem::Pointer;

namespace {

QString milliseconds(const QElapsedTimer &timer)
{
    return QString::number(static_cast<double>(timer.nsecsElapsed()) / 1e6, 'f', 6);
}

Pointer itemWithin(const QList<Pointer> &items, const QString &uniqueIdentifier)
{
    for (const Pointer &item : items) {
        if (item->uniqueIdentifier() == uniqueIdentifier) {
            return item;
        }
        if (Pointer found = itemWithin(item->childs(), uniqueIdentifier)) {
            return found;
        }
    }
    return nullptr;
}

Ref<QBNoteTag> tagOf(NSManagedObject *object)
{
    return Ref<QBNoteTag>(static_cast<QBNoteTag *>(object));
}

} // namespace

QBNoteSidebarCoreController::QBNoteSidebarCoreController(std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore)
    : m_keyValueStore(std::move(keyValueStore))
    , m_dayWatch([this] {
        if (m_context) {
            updateStaticSidebarItemStatus();
        }
    })
{
}

QBNoteSidebarCoreController::~QBNoteSidebarCoreController() = default;

void QBNoteSidebarCoreController::setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &moc)
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    m_context = moc;
    m_privateContext.reset();
    // What is being looked up is of the store before, and is not taken.
    m_isLookingUpStatus = false;
    m_isStatusStale = false;
    setupContent();
}

// Setting up

void QBNoteSidebarCoreController::setupContent()
{
    QElapsedTimer timer;
    timer.start();
    setupStaticSidebarItems();
    setupRootTagsFetchedResultController();
    setupAllTagsFetchedResultController();
    QBLogInfo(u"Sidebar query in "_s % milliseconds(timer) % u"ms"_s);
    timer.restart();
    setupSidebarItems();
    QBLogInfo(u"Sidebar setup in "_s % milliseconds(timer) % u"ms"_s);
    setupObserver();
}

void QBNoteSidebarCoreController::setupStaticSidebarItems()
{
    m_notesSidebarItem = QBNotesSidebarItem::sidebarItemWithManagedObjectContext(m_context);
    m_archiveSidebarItem = QBArchiveSidebarItem::sidebarItemWithManagedObjectContext(m_context);
    m_trashSidebarItem = QBNotesTrashSidebarItem::sidebarItemWithManagedObjectContext(m_context);
    const QList<Pointer> childs{QBUntaggedSidebarItem::sidebarItemWithManagedObjectContext(m_context),
                                QBTodoSidebarItem::sidebarItemWithManagedObjectContext(m_context),
                                QBTodaySidebarItem::sidebarItemWithManagedObjectContext(m_context)};
    for (const Pointer &child : childs) {
        child->setFather(m_notesSidebarItem);
    }
    m_notesSidebarItem->setChilds(childs);
    m_staticSidebarItems = {m_notesSidebarItem, m_trashSidebarItem,
                            QBNotesSpacerSidebarItem::sidebarItemWithManagedObjectContext(m_context)};
    updateStaticSidebarItemStatus();
}

std::unique_ptr<MRTFetchedResultsController>
QBNoteSidebarCoreController::tagsFetchedResultController(const NSPredicate::Ref &predicate)
{
    NSFetchRequest request;
    request.entityName = QBNoteTag::entityName();
    request.predicate = predicate;
    request.sortDescriptors = QBTagSidebarItem::tagsSortDescriptors();
    auto controller = std::make_unique<MRTFetchedResultsController>(m_context, request);
    NSError error;
    controller->performFetch(&error);
    if (error.isSet()) {
        QBLogError(u"Error while fetching\n"_s + error.localizedDescription());
    }
    controller->setDelegate(this);
    return controller;
}

void QBNoteSidebarCoreController::setupRootTagsFetchedResultController()
{
    m_rootTagsfetchedResultController = tagsFetchedResultController(QBNoteTag::rootTagsPredicate());
}

void QBNoteSidebarCoreController::setupAllTagsFetchedResultController()
{
    m_allTagsfetchedResultController = tagsFetchedResultController(QBNoteTag::populatedTagsPredicate());
}

void QBNoteSidebarCoreController::setupSidebarItems()
{
    m_sidebarItems =
        m_staticSidebarItems + sidebarItemsFromRootTags(m_rootTagsfetchedResultController->arrangedObjects(),
                                                        m_allTagsfetchedResultController->arrangedObjects());
}

void QBNoteSidebarCoreController::setupObserver()
{
    m_contextObserver = m_context->objectsDidChange.add(
        [this](NSManagedObjectContext & /*context*/, const NSManagedObjectContext::Changes &changes) {
            managedObjectContextObjectsDidChange(changes);
        });
    if (m_keyValueStore) {
        m_keyValueStoreObserver =
            m_keyValueStore->addObserver([this](const NSUbiquitousKeyValueStore::ChangeNotification &notification) {
                takeKeyValueStoreChange(notification);
            });
    }
    m_preferenceObservers.clear();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    // Observers are told on the thread of whoever wrote.
    const auto onMain = [this](void (QBNoteSidebarCoreController::*operation)()) {
        return [this, operation, life = std::weak_ptr<char>(m_life)](const QString & /*keyPath*/) {
            quib::DispatchQueue::main()->async([this, operation, life] {
                if (!life.expired()) {
                    (this->*operation)();
                }
            });
        };
    };
    for (const QString &key : {u"tagsListSortBy"_s, u"tagsListSortAscending"_s}) {
        m_preferenceObservers.push_back(
            preferences->addObserver(key, onMain(&QBNoteSidebarCoreController::updateTagsOrder)));
    }
    for (const QString &key : {u"notesListSortBy"_s, u"notesListSortAscending"_s}) {
        m_preferenceObservers.push_back(
            preferences->addObserver(key, onMain(&QBNoteSidebarCoreController::updateNotesOrder)));
    }
    m_preferenceObservers.push_back(preferences->addObserver(u"tagsListUsesCustomTagsIcons"_s,
                                                             onMain(&QBNoteSidebarCoreController::updateTagIcons)));
}

// The tree

QList<Pointer> QBNoteSidebarCoreController::sidebarItemsFromRootTags(std::span<NSManagedObject *const> rootTags,
                                                                     std::span<NSManagedObject *const> childTags) const
{
    Childs childsDictionary;
    for (NSManagedObject *object : childTags) {
        const auto tag = tagOf(object);
        if (const QString father = tag->normalizedFatherTagName(); !father.isEmpty()) {
            childsDictionary[father].append(tag);
        }
    }
    QList<Pointer> items;
    items.reserve(static_cast<qsizetype>(rootTags.size()));
    for (NSManagedObject *object : rootTags) {
        items.append(sidebarItemFromTag(tagOf(object), nullptr, childsDictionary));
    }
    return items;
}

std::shared_ptr<QBTagSidebarItem> QBNoteSidebarCoreController::sidebarItemFromTag(const Ref<QBNoteTag> &tag,
                                                                                  const Pointer &father,
                                                                                  const Childs &childsDictionary) const
{
    auto item = QBTagSidebarItem::initWithTag(tag, father, m_keyValueStore);
    const auto childTags = childsDictionary.constFind(tag->normalizedTitle());
    if (childTags != childsDictionary.constEnd()) {
        QList<Pointer> childs;
        for (const auto &child : *childTags) {
            childs.append(sidebarItemFromTag(child, item, childsDictionary));
        }
        item->setChilds(childs);
    }
    return item;
}

// Asking

Pointer QBNoteSidebarCoreController::itemWithUniqueIdentifier(const QString &uniqueIdentifier) const
{
    return itemWithin(m_sidebarItems, uniqueIdentifier);
}

QList<Pointer> QBNoteSidebarCoreController::relatedSidebarItemsForSidebarItem(const Pointer &item)
{
    if (dynamic_cast<const QBTagSidebarItem *>(item.get()) == nullptr) {
        return {};
    }
    QList<Pointer> related;
    if (const Pointer father = item->father()) {
        related.append(father);
    }
    return related + item->childs();
}

qint64 QBNoteSidebarCoreController::levelForItem(const QBSidebarItem &item)
{
    if (const auto *tagItem = dynamic_cast<const QBTagSidebarItem *>(&item)) {
        return tagItem->tag()->tagComponents().size() - 1;
    }
    return dynamic_cast<const QBNotesSidebarItem *>(item.father().get()) != nullptr ? 1 : 0;
}

// The fixed entries

void QBNoteSidebarCoreController::showArchiveSidebarItem(bool shows)
{
    const Pointer archive = m_archiveSidebarItem;
    const qint64 present = m_staticSidebarItems.indexOf(archive);
    if (shows == (present >= 0)) {
        return;
    }
    const qint64 index = shows ? m_staticSidebarItems.size() - 2 : present;
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerWillChangeContent(*this);
    }
    if (shows) {
        m_staticSidebarItems.insert(index, archive);
        m_sidebarItems.insert(index, archive);
    } else {
        m_staticSidebarItems.removeAt(index);
        m_sidebarItems.removeAt(index);
    }
    if (m_delegate != nullptr) {
        const auto type = shows ? MRTChangeType::Insert : MRTChangeType::Delete;
        const qint64 before = shows ? NSNotFound : index;
        const qint64 after = shows ? index : NSNotFound;
        m_delegate->sidebarControllerDidChangeObject(*this, archive, before, before, type, type, after, after);
        m_delegate->sidebarControllerDidChangeContent(*this);
    }
}

void QBNoteSidebarCoreController::updateStaticSidebarItemStatus()
{
    if (m_isLookingUpStatus) {
        m_isStatusStale = true;
        return;
    }
    m_isLookingUpStatus = true;
    m_isStatusStale = false;
    if (!m_privateContext) {
        m_privateContext =
            NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, m_context);
    }
    QList<std::shared_ptr<QBStaticSidebarItem>> items;
    for (const Pointer &child : m_notesSidebarItem->childs()) {
        items.append(std::static_pointer_cast<QBStaticSidebarItem>(child));
    }
    items.append(m_trashSidebarItem);
    m_privateContext->performBlock(
        [this, life = std::weak_ptr<char>(m_life), context = m_privateContext, items, archive = m_archiveSidebarItem] {
            QList<bool> haveNotes;
            for (const auto &item : items) {
                haveNotes.append(item->hasNotesInManagedObjectContext(*context));
            }
            const bool hasArchive = archive->hasNotesInManagedObjectContext(*context);
            // Nothing of what was found is kept: the next look-up asks the parent anew.
            context->reset();
            quib::DispatchQueue::main()->async([this, life, context, items, haveNotes, hasArchive] {
                if (!life.expired() && context == m_privateContext) {
                    takeStatus(items, haveNotes, hasArchive);
                }
            });
        });
}

void QBNoteSidebarCoreController::takeStatus(const QList<std::shared_ptr<QBStaticSidebarItem>> &items,
                                             const QList<bool> &haveNotes, bool hasArchive)
{
    m_isLookingUpStatus = false;
    QList<Pointer> changed;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items[i]->hasNotes() != haveNotes[i]) {
            items[i]->setHasNotes(haveNotes[i]);
            changed.append(items[i]);
        }
    }
    m_archiveSidebarItem->setHasNotes(hasArchive);
    const std::weak_ptr<char> life = m_life;
    if (!changed.isEmpty() && m_delegate != nullptr) {
        m_delegate->sidebarControllerRedrawItems(*this, changed);
    }
    if (!life.expired()) {
        showArchiveSidebarItem(hasArchive);
    }
    if (!life.expired() && m_isStatusStale) {
        updateStaticSidebarItemStatus();
    }
}

void QBNoteSidebarCoreController::managedObjectContextObjectsDidChange(const NSManagedObjectContext::Changes &changes)
{
    const auto *noteEntity = m_context->managedObjectModel().entityNamed(QBNote::entityName());
    const auto holdsNote = [noteEntity](const NSManagedObjectSet &objects) {
        return std::any_of(objects.begin(), objects.end(),
                           [noteEntity](const auto &object) { return object->entity() == noteEntity; });
    };
    if (holdsNote(changes.inserted) || holdsNote(changes.updated) || holdsNote(changes.deleted) ||
        holdsNote(changes.refreshed)) {
        updateStaticSidebarItemStatus();
    }
}
