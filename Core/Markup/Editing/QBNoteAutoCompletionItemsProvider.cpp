#include "QBNoteAutoCompletionItemsProvider.h"

#include "StoreCompletionItem.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>

QBNoteAutoCompletionItemsProvider::QBNoteAutoCompletionItemsProvider(
    std::weak_ptr<NSManagedObjectContext> managedObjectContext, NoteFinder noteFinder)
    : m_managedObjectContext(std::move(managedObjectContext))
    , m_noteFinder(std::move(noteFinder))
{
    if (const auto context = m_managedObjectContext.lock()) {
        m_contextObserver = context->objectsDidChange.add(
            [this](NSManagedObjectContext & /*context*/, const NSManagedObjectContext::Changes & /*changes*/) {
                m_missing.clear();
            });
    }
}

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
    if (!m_missing.isEmpty() && partialString.startsWith(m_missing)) {
        setItemsForCompletion({}, partialString);
        return;
    }
    const auto known = m_noteFinder ? m_noteFinder(partialString, limit) : std::nullopt;
    const auto found = known ? *known : QBNote::findNotesForPartialtitle(partialString, *context, limit);
    m_missing = found.isEmpty() ? partialString : QString();
    setItemsForCompletion(quib::completionItems(found), partialString);
}
