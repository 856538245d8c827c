#include "QBNoteTag.h"

#include "StoreFetch.h"

#include <Store/NSManagedObjectContext.h>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using quib::Ref;

// Which tags the editor offers while one is typed.

namespace {

/// So many tags at most are counted for their popularity: each costs a query.
constexpr qint64 kRankedTags = 100;

QList<NSManagedObjectID> identitiesOf(const QList<Ref<QBNoteTag>> &tags)
{
    QList<NSManagedObjectID> identities;
    identities.reserve(tags.size());
    for (const auto &tag : tags) {
        identities.append(tag->objectID());
    }
    return identities;
}

QString inUseAndNotExcluded()
{
    return u"SUBQUERY(notes, $note, $note.trashed == NO AND $note.archived == NO).@count > 0 AND NOT self IN %@"_s;
}

} // namespace

QList<Ref<QBNoteTag>> QBNoteTag::findTagsForPartialString(const QString &partialString,
                                                          NSManagedObjectContext &inManagedObjectContext,
                                                          const QList<Ref<QBNoteTag>> &excludeTags, qint64 limitTo)
{
    const auto fetch = [&](const QString &comparison, const QList<Ref<QBNoteTag>> &without, qint64 limit) {
        auto request = quib::requestFor<QBNoteTag>(QString(comparison % u" AND "_s % inUseAndNotExcluded()),
                                                   {predicateArgument(partialString), identitiesOf(without)});
        request.sortDescriptors = {{QBNoteTagAttributes::title, true, NSSortDescriptor::Comparison::LocalizedStandard}};
        request.fetchLimit = limit;
        return quib::fetchLogged<QBNoteTag>(inManagedObjectContext, request);
    };
    QList<Ref<QBNoteTag>> found = fetch(u"title BEGINSWITH[cd] %@"_s, excludeTags, limitTo);
    if (found.size() < limitTo) {
        found.append(fetch(u"title CONTAINS[cd] %@"_s, excludeTags + found, limitTo - found.size()));
    }
    return found;
}

QList<Ref<QBNoteTag>> QBNoteTag::popularTagsInManagedObjectContext(NSManagedObjectContext &moc,
                                                                   const QList<Ref<QBNoteTag>> &excludeTags,
                                                                   qint64 limitTo)
{
    auto request = quib::requestFor<QBNoteTag>(inUseAndNotExcluded(), {identitiesOf(excludeTags)});
    request.sortDescriptors = {{QBNoteTagAttributes::modificationDate, false}};
    request.fetchLimit = std::max(limitTo, kRankedTags);
    std::vector<std::pair<qint64, Ref<QBNoteTag>>> ranked;
    for (const auto &tag : quib::fetchLogged<QBNoteTag>(moc, request)) {
        ranked.emplace_back(tag->untrashedNotesCount().value_or(0), tag);
    }
    // Of equally many notes the tag that was used last stays first.
    std::ranges::stable_sort(ranked, [](const auto &a, const auto &b) { return a.first > b.first; });
    QList<Ref<QBNoteTag>> popular;
    for (const auto &[count, tag] : ranked) {
        if (popular.size() == limitTo) {
            break;
        }
        popular.append(tag);
    }
    return popular;
}
