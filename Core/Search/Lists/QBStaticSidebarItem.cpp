#include "QBStaticSidebarItem.h"

#include <Search/QBNoteSearchManager.h>
#include <Store/QBStaticNote.h>
#include <Store/StoreFetch.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString localized(const char *text)
{
    return QCoreApplication::translate("Sidebar", text);
}

} // namespace

bool QBStaticSidebarItem::hasNotesInManagedObjectContext(NSManagedObjectContext &moc) const
{
    const auto request = notesFetchRequestInManagedObjectContext(moc);
    if (!request) {
        return false;
    }
    // Any one note will do, in whatever order, and nothing of it is looked at.
    NSFetchRequest counted;
    counted.entityName = request->entityName;
    counted.predicate = request->predicate;
    counted.fetchLimit = 1;
    return moc.countForFetchRequest(counted).value_or(0) > 0;
}

std::optional<NSFetchRequest>
QBStaticSidebarItem::notesFetchRequestInManagedObjectContext(NSManagedObjectContext & /*moc*/) const
{
    const QString format = predicateFormat();
    if (format.isEmpty()) {
        return std::nullopt;
    }
    return requestWithPredicate(NSPredicate::predicateWithFormat(format), sortDescriptors());
}

// Notes

std::shared_ptr<QBNotesSidebarItem>
QBNotesSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBNotesSidebarItem>(std::move(moc));
}

QString QBNotesSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Notes"));
}

QString QBNotesSidebarItem::icon() const
{
    return u"sidebar-notes"_s;
}

QString QBNotesSidebarItem::uniqueIdentifier() const
{
    return u"QBNotesSidebarItem"_s;
}

QString QBNotesSidebarItem::predicateFormat() const
{
    return u"trashed == NO AND archived == NO"_s;
}

QList<NSSortDescriptor> QBNotesSidebarItem::sortDescriptors() const
{
    return QList{NSSortDescriptor(u"conflictUniqueIdentifier"_s, /*ascending=*/false)} + pinnedSortDescriptors();
}

void QBNotesSidebarItem::addNotes(const QList<quib::Ref<QBNote>> &notes)
{
    for (const auto &note : notes) {
        if (note->isTrashed()) {
            note->restoreFromTrash();
        }
        if (note->isArchived()) {
            note->unarchive();
        }
    }
    save();
}

// Archive

std::shared_ptr<QBArchiveSidebarItem>
QBArchiveSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBArchiveSidebarItem>(std::move(moc));
}

QString QBArchiveSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Archive"));
}

QString QBArchiveSidebarItem::icon() const
{
    return u"sidebar-archive"_s;
}

QString QBArchiveSidebarItem::uniqueIdentifier() const
{
    return u"QBArchiveSidebarItem"_s;
}

QString QBArchiveSidebarItem::predicateFormat() const
{
    return u"trashed == NO AND archived == YES"_s;
}

QStringList QBArchiveSidebarItem::notePropertiesToFetch() const
{
    return QBStaticSidebarItem::notePropertiesToFetch() +
           QStringList{u"trashed"_s, u"archived"_s, u"trashedDate"_s, u"archivedDate"_s};
}

void QBArchiveSidebarItem::addNotes(const QList<quib::Ref<QBNote>> &notes)
{
    for (const auto &note : notes) {
        note->archive();
    }
    save();
}

// Trash

std::shared_ptr<QBNotesTrashSidebarItem>
QBNotesTrashSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBNotesTrashSidebarItem>(std::move(moc));
}

QString QBNotesTrashSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Trash"));
}

QString QBNotesTrashSidebarItem::icon() const
{
    return u"sidebar-trash"_s;
}

QString QBNotesTrashSidebarItem::uniqueIdentifier() const
{
    return u"QBNotesTrashSidebarItem"_s;
}

QString QBNotesTrashSidebarItem::predicateFormat() const
{
    return u"trashed == YES"_s;
}

QList<NSSortDescriptor> QBNotesTrashSidebarItem::sortDescriptors() const
{
    return {NSSortDescriptor(u"trashedDate"_s, /*ascending=*/false)};
}

QStringList QBNotesTrashSidebarItem::notePropertiesToFetch() const
{
    return QBStaticSidebarItem::notePropertiesToFetch() + QStringList{u"trashed"_s, u"trashedDate"_s};
}

void QBNotesTrashSidebarItem::addNotes(const QList<quib::Ref<QBNote>> &notes)
{
    for (const auto &note : notes) {
        note->trash();
    }
    save();
}

// Untagged

std::shared_ptr<QBUntaggedSidebarItem>
QBUntaggedSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBUntaggedSidebarItem>(std::move(moc));
}

QString QBUntaggedSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Untagged"));
}

QString QBUntaggedSidebarItem::icon() const
{
    return u"sidebar-untagged"_s;
}

QString QBUntaggedSidebarItem::uniqueIdentifier() const
{
    return u"QBUntaggedSidebarItem"_s;
}

QString QBUntaggedSidebarItem::predicateFormat() const
{
    return u"trashed == NO AND archived == NO AND tags.@count == 0"_s;
}

// Todo

std::shared_ptr<QBTodoSidebarItem>
QBTodoSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBTodoSidebarItem>(std::move(moc));
}

QString QBTodoSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Todo"));
}

QString QBTodoSidebarItem::icon() const
{
    return u"sidebar-todo"_s;
}

QString QBTodoSidebarItem::uniqueIdentifier() const
{
    return u"QBTodoSidebarItem"_s;
}

QString QBTodoSidebarItem::predicateFormat() const
{
    return u"trashed == NO AND archived == NO AND todoIncompleted > 0"_s;
}

// Today

std::shared_ptr<QBTodaySidebarItem>
QBTodaySidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBTodaySidebarItem>(std::move(moc));
}

QString QBTodaySidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Today"));
}

QString QBTodaySidebarItem::icon() const
{
    return u"sidebar-today"_s;
}

QString QBTodaySidebarItem::uniqueIdentifier() const
{
    return u"QBTodaySidebarItem"_s;
}

QString QBTodaySidebarItem::predicateFormat() const
{
    return u"trashed == NO AND archived == NO AND "_s +
           QBNoteSearchManager::predicateStringForSpecialSearch(u"@today"_s);
}

// Sample notes

std::shared_ptr<QBSpecialNotesSidebarItem>
QBSpecialNotesSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBSpecialNotesSidebarItem>(std::move(moc));
}

QString QBSpecialNotesSidebarItem::title() const
{
    return localized(QT_TRANSLATE_NOOP("Sidebar", "Sample Notes"));
}

QString QBSpecialNotesSidebarItem::icon() const
{
    return u"sidebar-notes"_s;
}

QString QBSpecialNotesSidebarItem::uniqueIdentifier() const
{
    return u"QBSpecialNotesSidebarItem"_s;
}

std::optional<NSFetchRequest>
QBSpecialNotesSidebarItem::notesFetchRequestInManagedObjectContext(NSManagedObjectContext & /*moc*/) const
{
    // Sample notes have none of the attributes that lists of notes ask for: what they say, their items know.
    NSFetchRequest request;
    request.entityName = QBStaticNote::entityName();
    request.sortDescriptors = {NSSortDescriptor(u"order"_s, /*ascending=*/true)};
    return request;
}

// The gap

std::shared_ptr<QBNotesSpacerSidebarItem>
QBNotesSpacerSidebarItem::sidebarItemWithManagedObjectContext(std::shared_ptr<NSManagedObjectContext> moc)
{
    return make<QBNotesSpacerSidebarItem>(std::move(moc));
}

QString QBNotesSpacerSidebarItem::uniqueIdentifier() const
{
    return u"QBNotesSpacerSidebarItem"_s;
}
