#include "QBNoteSidebarCoreController.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/NSRange.h>

#include <QSet>

using namespace Qt::StringLiterals;
using quib::Ref;
using Pointer = QBSidebarItem::Pointer;

namespace {

void collectTagItems(const QList<Pointer> &items, QList<Pointer> &out)
{
    for (const Pointer &item : items) {
        if (dynamic_cast<const QBTagSidebarItem *>(item.get()) != nullptr) {
            out.append(item);
            collectTagItems(item->childs(), out);
        }
    }
}

} // namespace

MRTFetchedResultsControllerDelegateHas QBNoteSidebarCoreController::delegateHas() const
{
    return {.controllerDidProgressivelyChangeObject = true};
}

void QBNoteSidebarCoreController::controllerWillChangeContent(MRTFetchedResultsController &controller)
{
    if (&controller == m_rootTagsfetchedResultController.get() && m_delegate != nullptr) {
        m_delegate->sidebarControllerWillChangeContent(*this);
    }
}

void QBNoteSidebarCoreController::controllerDidChangeContent(MRTFetchedResultsController &controller)
{
    if (&controller == m_rootTagsfetchedResultController.get() && m_delegate != nullptr) {
        m_delegate->sidebarControllerDidChangeContent(*this);
    }
}

void QBNoteSidebarCoreController::controllerDidProgressivelyChangeObject(
    MRTFetchedResultsController &controller, NSManagedObject &object, qint64 atIndex, qint64 progressiveIndex,
    MRTChangeType forChangeType, MRTChangeType forProgressiveChangeType, qint64 newIndex, qint64 newProgressiveIndex)
{
    auto &tag = static_cast<QBNoteTag &>(object);
    if (&controller == m_allTagsfetchedResultController.get()) {
        // Touching the root makes the controller of the roots report it, whose tree is then made anew.
        if (const auto root = tag.rootFatherTag()) {
            root->updateModificationDate();
        }
        return;
    }
    const auto shifted = [count = m_staticSidebarItems.size()](qint64 index) {
        return index == NSNotFound ? NSNotFound : index + count;
    };
    const qint64 from = shifted(progressiveIndex);
    const qint64 to = shifted(newProgressiveIndex);
    Pointer item;
    if (forProgressiveChangeType == MRTChangeType::Insert) {
        // What is below a root that comes back may have been announced already.
        const auto tagItem = QBTagSidebarItem::initWithTag(Ref<QBNoteTag>(&tag), nullptr, m_keyValueStore);
        tagItem->updateChilds();
        item = tagItem;
        m_sidebarItems.insert(to, item);
    } else {
        item = m_sidebarItems.takeAt(from);
        if (forProgressiveChangeType != MRTChangeType::Delete) {
            std::static_pointer_cast<QBTagSidebarItem>(item)->updateChilds();
            m_sidebarItems.insert(to, item);
        }
    }
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerDidChangeObject(*this, item, shifted(atIndex), from, forChangeType,
                                                     forProgressiveChangeType, shifted(newIndex), to);
    }
}

void QBNoteSidebarCoreController::updateTagsOrder()
{
    if (!m_context) {
        return;
    }
    setupRootTagsFetchedResultController();
    setupAllTagsFetchedResultController();
    const QList<Pointer> wanted = sidebarItemsFromRootTags(m_rootTagsfetchedResultController->arrangedObjects(),
                                                           m_allTagsfetchedResultController->arrangedObjects());
    const qsizetype first = m_staticSidebarItems.size();
    const QList<Pointer> before = m_sidebarItems.mid(first);
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerWillChangeContent(*this);
    }
    const auto indexOfTag = [](const QList<Pointer> &items, const Pointer &item, qsizetype from) {
        const auto *tag = static_cast<const QBTagSidebarItem *>(item.get())->tag().get();
        for (qsizetype i = from; i < items.size(); ++i) {
            if (static_cast<const QBTagSidebarItem *>(items[i].get())->tag().get() == tag) {
                return i;
            }
        }
        return qsizetype{-1};
    };
    // From the top down: whatever stands above a place is in order already. Known items stay the same objects.
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        const qsizetype at = indexOfTag(m_sidebarItems, wanted[i], first + i);
        const qsizetype old = indexOfTag(before, wanted[i], 0);
        const qsizetype target = first + i;
        if (at < 0 || old < 0) {
            m_sidebarItems.insert(target, wanted[i]);
            report(wanted[i], NSNotFound, NSNotFound, MRTChangeType::Insert, MRTChangeType::Insert, target, target);
            continue;
        }
        const Pointer item = m_sidebarItems.takeAt(at);
        item->setChilds(wanted[i]->childs());
        for (const Pointer &child : item->childs()) {
            child->setFather(item);
        }
        m_sidebarItems.insert(target, item);
        report(item, first + old, at, old == i ? MRTChangeType::Update : MRTChangeType::Move,
               at == target ? MRTChangeType::Update : MRTChangeType::Move, target, target);
    }
    while (m_sidebarItems.size() > first + wanted.size()) {
        const Pointer item = m_sidebarItems.takeLast();
        report(item, first + indexOfTag(before, item, 0), m_sidebarItems.size(), MRTChangeType::Delete,
               MRTChangeType::Delete, NSNotFound, NSNotFound);
    }
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerDidChangeContent(*this);
    }
}

void QBNoteSidebarCoreController::report(const Pointer &item, qint64 atIndex, qint64 progressiveIndex,
                                         MRTChangeType type, MRTChangeType progressiveType, qint64 newIndex,
                                         qint64 newProgressiveIndex)
{
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerDidChangeObject(*this, item, atIndex, progressiveIndex, type, progressiveType,
                                                     newIndex, newProgressiveIndex);
    }
}

void QBNoteSidebarCoreController::updateNotesOrder()
{
    if (m_delegate != nullptr) {
        m_delegate->sidebarControllerDidChangeNotesOrder(*this);
    }
}

void QBNoteSidebarCoreController::updateTagIcons()
{
    QList<Pointer> items;
    collectTagItems(m_sidebarItems, items);
    redraw(items);
}

void QBNoteSidebarCoreController::takeKeyValueStoreChange(
    const NSUbiquitousKeyValueStore::ChangeNotification &notification)
{
    if (notification.reason == NSUbiquitousKeyValueStore::QuotaViolationChange) {
        return;
    }
    QStringList identifiers;
    for (const QString &key : notification.changedKeys) {
        if (key.startsWith("QBTC_"_L1)) {
            identifiers.append(key.sliced(5));
        }
    }
    if (identifiers.isEmpty()) {
        return;
    }
    quib::DispatchQueue::main()->async([this, life = std::weak_ptr<char>(m_life), identifiers] {
        if (life.expired()) {
            return;
        }
        QList<Pointer> items;
        for (const QString &identifier : identifiers) {
            if (Pointer item = itemWithUniqueIdentifier(identifier)) {
                items.append(item);
            }
        }
        redraw(items);
    });
}

void QBNoteSidebarCoreController::redraw(const QList<Pointer> &items)
{
    if (!items.isEmpty() && m_delegate != nullptr) {
        m_delegate->sidebarControllerRedrawItems(*this, items);
    }
}
