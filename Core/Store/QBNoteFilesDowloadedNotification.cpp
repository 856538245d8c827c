#include "QBNoteFilesDowloadedNotification.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>

quib::ObserverList<const QStringList &> &QBNoteFilesDowloadedNotification()
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    static quib::ObserverList<const QStringList &> shared;
    return shared;
}
