#include "QBNoteSidebarCoreControllerDelegate.h"

// What a delegate leaves out does nothing.

void QBNoteSidebarCoreControllerDelegate::sidebarControllerWillChangeContent(
    QBNoteSidebarCoreController & /*controller*/)
{
}

void QBNoteSidebarCoreControllerDelegate::sidebarControllerDidChangeObject(
    QBNoteSidebarCoreController & /*controller*/, const QBSidebarItem::Pointer & /*object*/, qint64 /*atIndex*/,
    qint64 /*progressiveIndex*/, MRTChangeType /*forChangeType*/, MRTChangeType /*progressiveChangeType*/,
    qint64 /*newIndex*/, qint64 /*newProgressiveIndex*/)
{
}

void QBNoteSidebarCoreControllerDelegate::sidebarControllerDidChangeContent(
    QBNoteSidebarCoreController & /*controller*/)
{
}

void QBNoteSidebarCoreControllerDelegate::sidebarControllerRedrawItems(QBNoteSidebarCoreController & /*controller*/,
                                                                       const QList<QBSidebarItem::Pointer> & /*items*/)
{
}

void QBNoteSidebarCoreControllerDelegate::sidebarControllerDidChangeNotesOrder(
    QBNoteSidebarCoreController & /*controller*/)
{
}
