#pragma once

#include "MRTFetchedResultsController.h"
#include "QBNoteSidebarCoreControllerDelegate.h"
#include "QBStaticSidebarItem.h"
#include "QBTagSidebarItem.h"

#include <Files/NSUbiquitousKeyValueStore.h>
#include <Foundation/DayWatch.h>
#include <Foundation/NotificationCenter.h>

#include <QHash>
#include <QList>

#include <memory>
#include <span>
#include <vector>

/// The live list of the sidebar: the fixed entries, then the tags in use as a tree, without a window. Owned by whoever
/// shows the sidebar. Main queue; only the question which fixed entries have notes is answered on a queue of its own.
///
/// Invariants: (1) sidebarItems are staticSidebarItems followed by one item a root tag, in the order of the root tags'
/// controller; (2) the archive stands right before the trash, or is absent.
class QBNoteSidebarCoreController : private MRTFetchedResultsControllerDelegate
{
public:
    /// keyValueStore: what the user chose on all devices; may be null.
    explicit QBNoteSidebarCoreController(std::shared_ptr<NSUbiquitousKeyValueStore> keyValueStore = nullptr);
    ~QBNoteSidebarCoreController() override;
    QBNoteSidebarCoreController(const QBNoteSidebarCoreController &) = delete;
    QBNoteSidebarCoreController &operator=(const QBNoteSidebarCoreController &) = delete;

    [[nodiscard]] const std::shared_ptr<NSManagedObjectContext> &managedObjectContext() const { return m_context; }
    /// Fills the list from a context and follows it from now on. The delegate is told nothing.
    void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &moc);
    /// Held weakly: it is taken out, by giving null, before it dies.
    void setDelegate(QBNoteSidebarCoreControllerDelegate *delegate) { m_delegate = delegate; }

    [[nodiscard]] const QList<QBSidebarItem::Pointer> &staticSidebarItems() const { return m_staticSidebarItems; }
    [[nodiscard]] const QList<QBSidebarItem::Pointer> &sidebarItems() const { return m_sidebarItems; }
    [[nodiscard]] const std::shared_ptr<QBNotesSidebarItem> &notesSidebarItem() const { return m_notesSidebarItem; }
    [[nodiscard]] const std::shared_ptr<QBArchiveSidebarItem> &archiveSidebarItem() const
    {
        return m_archiveSidebarItem;
    }
    [[nodiscard]] const std::shared_ptr<QBNotesTrashSidebarItem> &trashSidebarItem() const
    {
        return m_trashSidebarItem;
    }

    /// Puts the archive in, or takes it out, and tells the delegate; nothing happens where it is so already.
    void showArchiveSidebarItem(bool shows);
    /// At any depth; null for an identifier that no item has.
    [[nodiscard]] QBSidebarItem::Pointer itemWithUniqueIdentifier(const QString &uniqueIdentifier) const;
    /// Of a tag's item the father and the children; of any other nothing.
    [[nodiscard]] static QList<QBSidebarItem::Pointer>
    relatedSidebarItemsForSidebarItem(const QBSidebarItem::Pointer &item);
    [[nodiscard]] static qint64 levelForItem(const QBSidebarItem &item);
    /// Looks up on a queue of its own which fixed entries have notes; the answer arrives on the main queue. Called for
    /// every change of a note; calls while an answer is on its way make one more look-up.
    void updateStaticSidebarItemStatus();
    /// Whether an answer is on its way.
    [[nodiscard]] bool isLookingUpStatus() const { return m_isLookingUpStatus; }

private:
    void setupContent();
    void setupStaticSidebarItems();
    void setupRootTagsFetchedResultController();
    void setupAllTagsFetchedResultController();
    void setupSidebarItems();
    void setupObserver();
    [[nodiscard]] std::unique_ptr<MRTFetchedResultsController>
    tagsFetchedResultController(const NSPredicate::Ref &predicate);
    [[nodiscard]] QList<QBSidebarItem::Pointer>
    sidebarItemsFromRootTags(std::span<NSManagedObject *const> rootTags,
                             std::span<NSManagedObject *const> childTags) const;
    using Childs = QHash<QString, QList<quib::Ref<QBNoteTag>>>;
    [[nodiscard]] std::shared_ptr<QBTagSidebarItem> sidebarItemFromTag(const quib::Ref<QBNoteTag> &tag,
                                                                       const QBSidebarItem::Pointer &father,
                                                                       const Childs &childsDictionary) const;
    void takeStatus(const QList<std::shared_ptr<QBStaticSidebarItem>> &items, const QList<bool> &haveNotes,
                    bool hasArchive);
    void takeKeyValueStoreChange(const NSUbiquitousKeyValueStore::ChangeNotification &notification);
    /// The user wants the tags in another order: each move is told like any other change.
    void updateTagsOrder();
    void updateNotesOrder();
    void updateTagIcons();
    void redraw(const QList<QBSidebarItem::Pointer> &items);
    void report(const QBSidebarItem::Pointer &item, qint64 atIndex, qint64 progressiveIndex, MRTChangeType type,
                MRTChangeType progressiveType, qint64 newIndex, qint64 newProgressiveIndex);
    void managedObjectContextObjectsDidChange(const NSManagedObjectContext::Changes &changes);

    // MRTFetchedResultsControllerDelegate
    [[nodiscard]] MRTFetchedResultsControllerDelegateHas delegateHas() const override;
    void controllerWillChangeContent(MRTFetchedResultsController &controller) override;
    void controllerDidChangeContent(MRTFetchedResultsController &controller) override;
    void controllerDidProgressivelyChangeObject(MRTFetchedResultsController &controller, NSManagedObject &object,
                                                qint64 atIndex, qint64 progressiveIndex, MRTChangeType forChangeType,
                                                MRTChangeType forProgressiveChangeType, qint64 newIndex,
                                                qint64 newProgressiveIndex) override;

    std::shared_ptr<NSUbiquitousKeyValueStore> m_keyValueStore;
    std::shared_ptr<NSManagedObjectContext> m_context;
    QBNoteSidebarCoreControllerDelegate *m_delegate = nullptr;
    std::shared_ptr<QBNotesSidebarItem> m_notesSidebarItem;
    std::shared_ptr<QBArchiveSidebarItem> m_archiveSidebarItem;
    std::shared_ptr<QBNotesTrashSidebarItem> m_trashSidebarItem;
    QList<QBSidebarItem::Pointer> m_staticSidebarItems;
    QList<QBSidebarItem::Pointer> m_sidebarItems;
    std::unique_ptr<MRTFetchedResultsController> m_rootTagsfetchedResultController;
    std::unique_ptr<MRTFetchedResultsController> m_allTagsfetchedResultController;
    /// A child of m_context, made on first use.
    std::shared_ptr<NSManagedObjectContext> m_privateContext;
    bool m_isLookingUpStatus = false;
    bool m_isStatusStale = false; // changed while an answer was on its way
    quib::ObservationToken m_contextObserver;
    quib::ObservationToken m_keyValueStoreObserver;
    std::vector<quib::ObservationToken> m_preferenceObservers;
    /// Dies with the controller: answers and notices that come later are dropped.
    std::shared_ptr<char> m_life = std::make_shared<char>();
    quib::DayWatch m_dayWatch; ///< "Today" has other notes on another day
};
