#include "QBSidebarItem.h"

#include <Logging/QBLogger.h>
#include <Store/QBNotesPreferenceManager.h>

using namespace Qt::StringLiterals;

QBSidebarItem::QBSidebarItem(std::shared_ptr<NSManagedObjectContext> moc)
    : m_context(std::move(moc))
{
}

std::optional<NSFetchRequest> QBSidebarItem::notesFetchRequest() const
{
    return notesFetchRequestInManagedObjectContext(*m_context);
}

QStringList QBSidebarItem::notePropertiesToFetch() const
{
    return {u"title"_s,           u"pinned"_s,        u"modificationDate"_s,         u"subtitle"_s,
            u"todoIncompleted"_s, u"todoCompleted"_s, u"conflictUniqueIdentifier"_s, u"hasImages"_s,
            u"uniqueIdentifier"_s};
}

void QBSidebarItem::addNotes(const QList<quib::Ref<QBNote>> & /*notes*/) {}

void QBSidebarItem::deleteItem() {}

NSFetchRequest QBSidebarItem::requestWithPredicate(const NSPredicate::Ref &predicate,
                                                   const QList<NSSortDescriptor> &sortDescriptors) const
{
    NSFetchRequest request;
    request.entityName = QBNote::entityName();
    request.predicate = predicate;
    request.sortDescriptors = sortDescriptors;
    request.propertiesToFetch = notePropertiesToFetch();
    request.relationshipKeyPathsForPrefetching = {u"files"_s};
    return request;
}

NSSortDescriptor QBSidebarItem::userSortDescriptor()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const QString key = preferences != nullptr ? preferences->notesListSortBy() : QString();
    if (key.isEmpty()) {
        return {u"modificationDate"_s, /*ascending=*/false};
    }
    return {key, preferences->notesListSortAscending(),
            key == "title"_L1 ? NSSortDescriptor::Comparison::LocalizedStandard
                              : NSSortDescriptor::Comparison::Default};
}

QList<NSSortDescriptor> QBSidebarItem::pinnedSortDescriptors()
{
    return {NSSortDescriptor(u"pinned"_s, /*ascending=*/false), userSortDescriptor()};
}

void QBSidebarItem::save() const
{
    if (!m_context->hasChanges()) {
        return;
    }
    NSError error;
    if (!m_context->save(&error)) {
        QBLogError(u"Error while saving\n"_s + error.localizedDescription());
    }
}
