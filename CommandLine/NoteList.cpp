#include "NoteList.h"

#include "Output.h"

#include <Search/Lists/QBStaticSidebarItem.h>
#include <Search/Lists/QBTagSidebarItem.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNote.h>
#include <Store/QBNoteTag.h>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

template <typename Item> QBSidebarItem::Pointer makeItem(const std::shared_ptr<NSManagedObjectContext> &context)
{
    return Item::sidebarItemWithManagedObjectContext(context);
}

/// The entry of the sidebar that a name stands for, so that the terminal shows the very lists of the window.
/// Errors: null for a name that no entry has.
QBSidebarItem::Pointer itemNamed(const QString &list, const std::shared_ptr<NSManagedObjectContext> &context)
{
    using Maker = QBSidebarItem::Pointer (*)(const std::shared_ptr<NSManagedObjectContext> &);
    static const QHash<QString, Maker> makers{
        {u"notes"_s, makeItem<QBNotesSidebarItem>},     {u"untagged"_s, makeItem<QBUntaggedSidebarItem>},
        {u"todo"_s, makeItem<QBTodoSidebarItem>},       {u"today"_s, makeItem<QBTodaySidebarItem>},
        {u"archive"_s, makeItem<QBArchiveSidebarItem>}, {u"trash"_s, makeItem<QBNotesTrashSidebarItem>},
    };
    const Maker maker = makers.value(list);
    return maker != nullptr ? maker(context) : nullptr;
}

} // namespace

std::optional<NSFetchRequest> requestForList(const QString &list, const QString &search,
                                             NSManagedObjectContext &context, ExitStatus *status)
{
    const auto shared = context.shared_from_this();
    QBSidebarItem::Pointer item = itemNamed(list, shared);
    NSPredicate::Ref condition;
    if (list.startsWith(u"tag:"_s)) {
        const auto tag = QBNoteTag::tagWithName(QBNoteTag::sanitizeTagName(list.mid(4)), context);
        if (!tag) {
            complain(u"there is no tag \"%1\""_s.arg(singleLine(list.mid(4))));
            *status = ExitStatus::NotFound;
            return std::nullopt;
        }
        item = QBTagSidebarItem::initWithTag(tag);
    } else if (list == u"conflicts"_s) {
        condition = NSPredicate::predicateWithFormat(u"conflictUniqueIdentifier != nil"_s);
    } else if (!item && list != u"all"_s) {
        complain(
            u"there is no list \"%1\": it is notes, untagged, todo, today, archive, trash, conflicts, all or tag:NAME"_s
                .arg(singleLine(list)));
        *status = ExitStatus::WrongUsage;
        return std::nullopt;
    }
    // What the sidebar does not have is ordered as the whole of the notes is.
    const auto model = (item ? item : itemNamed(u"notes"_s, shared))->notesFetchRequest();
    if (!model) {
        *status = ExitStatus::Failed;
        return std::nullopt;
    }
    NSFetchRequest request = *model;
    request.propertiesToFetch.clear(); // all of them are printed
    request.relationshipKeyPathsForPrefetching = {QBNoteRelationships::tags, QBNoteRelationships::files};
    if (!item) {
        request.predicate = condition;
    }
    if (const auto found = QBNoteSearchManager::predicateForSearchString(search)) {
        request.predicate =
            request.predicate ? NSPredicate::andPredicateWithSubpredicates({request.predicate, found}) : found;
    }
    return request;
}

} // namespace quib::cli
