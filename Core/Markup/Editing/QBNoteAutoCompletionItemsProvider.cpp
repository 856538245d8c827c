#include "QBNoteAutoCompletionItemsProvider.h"

#include "StoreCompletionItem.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>

void QBNoteAutoCompletionItemsProvider::updateCompletionForPartiaString(const QString &partialString,
                                                                        const QString & /*fullText*/)
{
    const auto context = m_managedObjectContext.lock();
    if (context == nullptr) {
        setItemsForCompletion({}, partialString);
        return;
    }
    const auto limit = static_cast<qint64>(maxNumberOfCompletions());
    if (partialString.isEmpty()) {
        // The last changed one is the likeliest.
        setOrderedItemsForCompletion(quib::completionItems(QBNote::allNotesInManagedObjectContext(*context, limit)));
        return;
    }
    setItemsForCompletion(quib::completionItems(QBNote::findNotesForPartialtitle(partialString, *context, limit)),
                          partialString);
}
