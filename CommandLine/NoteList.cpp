#include "NoteList.h"

#include "Output.h"

#include <Search/QBNoteSearchManager.h>
#include <Store/QBNote.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

NSPredicate::Ref both(const NSPredicate::Ref &a, const NSPredicate::Ref &b)
{
    if (!a || !b) {
        return a ? a : b;
    }
    return NSPredicate::andPredicateWithSubpredicates({a, b});
}

/// The condition of a list's name; a null one lists everything.
/// Errors: false after the reason was told.
bool findCondition(const QString &list, NSManagedObjectContext &context, NSPredicate::Ref *condition,
                   ExitStatus *status)
{
    static const QHash<QString, QString> formats{
        {u"notes"_s, u"trashed == NO AND archived == NO"_s},
        {u"untagged"_s, u"trashed == NO AND archived == NO AND tags.@count == 0"_s},
        {u"todo"_s, u"trashed == NO AND archived == NO AND todoIncompleted > 0"_s},
        {u"today"_s, u"trashed == NO AND archived == NO"_s},
        {u"archive"_s, u"trashed == NO AND archived == YES"_s},
        {u"trash"_s, u"trashed == YES"_s},
        {u"conflicts"_s, u"conflictUniqueIdentifier != nil"_s},
    };
    if (list == u"all"_s) {
        return true;
    }
    if (list.startsWith(u"tag:"_s)) {
        const auto tag = QBNoteTag::tagWithName(QBNoteTag::sanitizeTagName(list.mid(4)), context);
        if (!tag) {
            complain(u"there is no tag \"%1\""_s.arg(singleLine(list.mid(4))));
            *status = ExitStatus::NotFound;
            return false;
        }
        *condition = tag->untrashedNotesPredicate();
        return true;
    }
    const auto found = formats.constFind(list);
    if (found == formats.constEnd()) {
        complain(
            u"there is no list \"%1\": it is notes, untagged, todo, today, archive, trash, conflicts, all or tag:NAME"_s
                .arg(singleLine(list)));
        *status = ExitStatus::WrongUsage;
        return false;
    }
    *condition = NSPredicate::predicateWithFormat(*found);
    if (list == u"today"_s) {
        *condition = both(*condition, QBNoteSearchManager::predicateForSearchString(u"@today"_s));
    }
    return true;
}

/// As the window shows the list.
QList<NSSortDescriptor> orderOfList(const QString &list)
{
    if (list == u"trash"_s) {
        return {NSSortDescriptor(u"trashedDate"_s, /*ascending=*/false)};
    }
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const QString sortKey = preferences->notesListSortBy();
    QList<NSSortDescriptor> order{NSSortDescriptor(u"pinned"_s, /*ascending=*/false),
                                  NSSortDescriptor(sortKey, preferences->notesListSortAscending(),
                                                   sortKey == u"title"_s
                                                       ? NSSortDescriptor::Comparison::LocalizedStandard
                                                       : NSSortDescriptor::Comparison::Default)};
    if (list == u"notes"_s) {
        // Notes in conflict stand together, above all others.
        order.prepend(NSSortDescriptor(u"conflictUniqueIdentifier"_s, /*ascending=*/false));
    }
    return order;
}

} // namespace

std::optional<NSFetchRequest> requestForList(const QString &list, const QString &search,
                                             NSManagedObjectContext &context, ExitStatus *status)
{
    NSFetchRequest request{.entityName = QBNote::entityName()};
    if (!findCondition(list, context, &request.predicate, status)) {
        return std::nullopt;
    }
    request.predicate = both(request.predicate, QBNoteSearchManager::predicateForSearchString(search));
    request.sortDescriptors = orderOfList(list);
    return request;
}

} // namespace quib::cli
