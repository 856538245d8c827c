#pragma once

#include "MRTFetchedResultsControllerDelegate.h"
#include "QBSidebarItem.h"

class QBNoteSidebarCoreController;

/// Who shows the sidebar. Called on the main queue; each operation may be left out. Indexes are those of sidebarItems,
/// and mean what those of a live list mean.
class QBNoteSidebarCoreControllerDelegate
{
public:
    virtual ~QBNoteSidebarCoreControllerDelegate() = default;

    virtual void sidebarControllerWillChangeContent(QBNoteSidebarCoreController &controller);
    /// An update tells that everything below the item was made anew.
    virtual void sidebarControllerDidChangeObject(QBNoteSidebarCoreController &controller,
                                                  const QBSidebarItem::Pointer &object, qint64 atIndex,
                                                  qint64 progressiveIndex, MRTChangeType forChangeType,
                                                  MRTChangeType progressiveChangeType, qint64 newIndex,
                                                  qint64 newProgressiveIndex);
    virtual void sidebarControllerDidChangeContent(QBNoteSidebarCoreController &controller);
    /// Items that look different where they stand: by their picture, or by having notes.
    virtual void sidebarControllerRedrawItems(QBNoteSidebarCoreController &controller,
                                              const QList<QBSidebarItem::Pointer> &items);
    /// The user sorts notes by another key: what lists show is to be fetched anew.
    virtual void sidebarControllerDidChangeNotesOrder(QBNoteSidebarCoreController &controller);
};
