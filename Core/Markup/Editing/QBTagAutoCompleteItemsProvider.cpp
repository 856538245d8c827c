#include "QBTagAutoCompleteItemsProvider.h"

#include "StoreCompletionItem.h"

#include <Store/NSManagedObjectContext.h>

void QBTagAutoCompleteItemsProvider::updateCompletionForPartiaString(const QString &partialString,
                                                                     const QString &fullText)
{
    updateCompletionForPartiaTagString(partialString, fullText, /*excludeTags=*/{});
}

void QBTagAutoCompleteItemsProvider::updateCompletionForPartiaTagString(const QString &partialTagString,
                                                                        const QString & /*noteText*/,
                                                                        const QList<quib::Ref<QBNoteTag>> &excludeTags)
{
    const auto context = m_managedObjectContext.lock();
    if (context == nullptr) {
        setItemsForCompletion({}, partialTagString);
        return;
    }
    const auto limit = static_cast<qint64>(maxNumberOfCompletions());
    if (partialTagString.isEmpty()) {
        // Their popularity is their order.
        setOrderedItemsForCompletion(
            quib::completionItems(QBNoteTag::popularTagsInManagedObjectContext(*context, excludeTags, limit)));
        return;
    }
    setItemsForCompletion(
        quib::completionItems(QBNoteTag::findTagsForPartialString(partialTagString, *context, excludeTags, limit)),
        partialTagString);
}
