#include "Commands.h"
#include "NoteDescription.h"
#include "Output.h"
#include "Session.h"

#include <Search/QBNoteSearchManager.h>
#include <Store/QBNoteTag.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

struct ListQuery
{
    NSPredicate::Ref predicate;
    ExitStatus status = ExitStatus::Done;
};

/// The condition of a list's name; a null one lists everything.
ListQuery queryForList(const QString &list, NSManagedObjectContext &context)
{
    static const QHash<QString, QString> formats{
        {u"notes"_s, u"trashed == NO AND archived == NO"_s},
        {u"untagged"_s, u"trashed == NO AND archived == NO AND tags.@count == 0"_s},
        {u"todo"_s, u"trashed == NO AND archived == NO AND todoIncompleted > 0"_s},
        {u"archive"_s, u"trashed == NO AND archived == YES"_s},
        {u"trash"_s, u"trashed == YES"_s},
        {u"conflicts"_s, u"conflictUniqueIdentifier != nil"_s},
    };
    if (list == u"all"_s) {
        return {};
    }
    if (list.startsWith(u"tag:"_s)) {
        const auto tag = QBNoteTag::tagWithName(QBNoteTag::sanitizeTagName(list.mid(4)), context);
        if (!tag) {
            complain(u"there is no tag \"%1\""_s.arg(singleLine(list.mid(4))));
            return {nullptr, ExitStatus::NotFound};
        }
        return {tag->untrashedNotesPredicate(), ExitStatus::Done};
    }
    const auto found = formats.constFind(list);
    if (found == formats.constEnd()) {
        complain(
            u"there is no list \"%1\": it is notes, untagged, todo, archive, trash, conflicts, all or tag:NAME"_s.arg(
                singleLine(list)));
        return {nullptr, ExitStatus::WrongUsage};
    }
    return {NSPredicate::predicateWithFormat(*found), ExitStatus::Done};
}

NSPredicate::Ref both(const NSPredicate::Ref &a, const NSPredicate::Ref &b)
{
    if (!a || !b) {
        return a ? a : b;
    }
    return NSPredicate::andPredicateWithSubpredicates({a, b});
}

ExitStatus listNotes(Session &session, const QCommandLineParser &parser, const QString &list, const QString &search)
{
    qint64 limit = 0;
    if (parser.isSet(u"limit"_s)) {
        bool isNumber = false;
        limit = parser.value(u"limit"_s).toLongLong(&isNumber);
        if (!isNumber || limit < 1) {
            complain(u"--limit needs a whole number above 0"_s);
            return ExitStatus::WrongUsage;
        }
    }
    NSManagedObjectContext *context = session.context();
    if (context == nullptr) {
        return ExitStatus::Failed;
    }
    const ListQuery query = queryForList(list, *context);
    if (query.status != ExitStatus::Done) {
        return query.status;
    }
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = both(query.predicate, QBNoteSearchManager::predicateForSearchString(search));
    const QString sortKey = preferences->notesListSortBy();
    request.sortDescriptors = {NSSortDescriptor(u"pinned"_s, /*ascending=*/false),
                               NSSortDescriptor(sortKey, preferences->notesListSortAscending(),
                                                sortKey == u"title"_s ? NSSortDescriptor::Comparison::LocalizedStandard
                                                                      : NSSortDescriptor::Comparison::Default)};
    request.fetchLimit = limit;
    NSError error;
    const auto notes = context->fetch<QBNote>(request, &error);
    if (!notes) {
        complain(error.localizedDescription());
        return ExitStatus::Failed;
    }
    QJsonArray array;
    for (const auto &note : *notes) {
        if (parser.isSet(u"json"_s)) {
            array.append(jsonForNote(*note, /*withText=*/false));
        } else {
            printLine(lineForNote(*note));
        }
    }
    if (parser.isSet(u"json"_s)) {
        printJson(array);
    }
    return ExitStatus::Done;
}

} // namespace

ExitStatus runList(Session &session, const QCommandLineParser &parser)
{
    return listNotes(session, parser, parser.isSet(u"in"_s) ? parser.value(u"in"_s) : u"notes"_s,
                     parser.value(u"search"_s));
}

ExitStatus runSearch(Session &session, const QCommandLineParser &parser)
{
    return listNotes(session, parser, u"notes"_s, parser.positionalArguments().join(u' '));
}

} // namespace quib::cli
