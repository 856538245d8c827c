#include "QBNote.h"
#include "QBNoteTag.h"
#include "StoreFetch.h"

#include <Store/NSManagedObjectContext.h>
#include <Text/Folding.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::fetchLogged;
using quib::Ref;
using quib::requestFor;

namespace {

QList<NSSortDescriptor> pinnedThenNewest()
{
    return {{QBNoteAttributes::pinned, false}, {QBNoteAttributes::modificationDate, false}};
}

Ref<QBNote> firstOf(NSManagedObjectContext &moc, NSFetchRequest request)
{
    request.fetchLimit = 1;
    const auto notes = fetchLogged<QBNote>(moc, request);
    return notes.isEmpty() ? Ref<QBNote>() : notes.constFirst();
}

QList<Ref<QBNote>> notesOfFormat(NSManagedObjectContext &moc, const QString &format,
                                 const QList<NSPredicateArgument> &arguments = {})
{
    return fetchLogged<QBNote>(moc, requestFor<QBNote>(format, arguments));
}

} // namespace

QList<Ref<QBNote>> QBNote::notesInManagedObjectContext(NSManagedObjectContext &moc,
                                                       const NSPredicate::Ref &withPredicate)
{
    NSFetchRequest request;
    request.entityName = entityName();
    request.predicate = withPredicate;
    return fetchLogged<QBNote>(moc, request);
}

QList<Ref<QBNote>> QBNote::allNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesInManagedObjectContext(moc, {});
}

QList<Ref<QBNote>> QBNote::allUntrashedNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesOfFormat(moc, u"trashed == NO"_s);
}

QList<Ref<QBNote>> QBNote::allTrashedNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesOfFormat(moc, u"trashed == YES"_s);
}

QList<Ref<QBNote>> QBNote::allArchivedNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesOfFormat(moc, u"archived == YES AND trashed == NO"_s);
}

QList<Ref<QBNote>> QBNote::allConflictedNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesOfFormat(moc, u"conflictUniqueIdentifier != nil"_s);
}

QList<Ref<QBNote>> QBNote::notesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                                      NSManagedObjectContext &inManagedObjectContext)
{
    return notesOfFormat(inManagedObjectContext, u"uniqueIdentifier in %@"_s, {predicateArgument(uniqueIdentifiers)});
}

QList<Ref<QBNote>> QBNote::notesForTags(const QList<Ref<QBNoteTag>> &tags,
                                        NSManagedObjectContext &inManagedObjectContext)
{
    QList<NSManagedObjectID> identities;
    identities.reserve(tags.size());
    for (const auto &tag : tags) {
        identities.append(tag->objectID());
    }
    return notesOfFormat(inManagedObjectContext, u"ANY tags in %@"_s, {identities});
}

Ref<QBNote> QBNote::noteWithUniqueIdentifier(const QString &uniqueIdentifier,
                                             NSManagedObjectContext &inManagedObjectContext)
{
    const auto notes =
        notesOfFormat(inManagedObjectContext, u"uniqueIdentifier == %@"_s, {predicateArgument(uniqueIdentifier)});
    return notes.isEmpty() ? Ref<QBNote>() : notes.constLast();
}

Ref<QBNote> QBNote::noteWithTitle(const QString &title, NSManagedObjectContext &inManagedObjectContext)
{
    auto request = requestFor<QBNote>(u"title ==[cd] %@"_s, {predicateArgument(title)});
    request.sortDescriptors = pinnedThenNewest();
    return firstOf(inManagedObjectContext, request);
}

Ref<QBNote> QBNote::untrashedNoteWithTitle(const QString &title, NSManagedObjectContext &inManagedObjectContext)
{
    auto request = requestFor<QBNote>(u"title ==[cd] %@ AND trashed == NO"_s, {predicateArgument(title)});
    request.sortDescriptors = pinnedThenNewest();
    return firstOf(inManagedObjectContext, request);
}

Ref<QBNote> QBNote::noteContainingFileTextRepresentation(const QString &textRepresentation,
                                                         NSManagedObjectContext &inManagedObjectContext)
{
    return firstOf(inManagedObjectContext,
                   requestFor<QBNote>(u"text contains %@"_s, {predicateArgument(textRepresentation)}));
}

void QBNote::deleteNotesWithUniqueIdentifiers(const QStringList &uniqueIdentifiers,
                                              NSManagedObjectContext &inManagedObjectContext)
{
    for (const auto &note :
         notesOfFormat(inManagedObjectContext, u"uniqueIdentifier IN %@"_s, {predicateArgument(uniqueIdentifiers)})) {
        inManagedObjectContext.deleteObject(note.get());
    }
}

QList<Ref<QBNote>> QBNote::watchNotesInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto request = requestFor<QBNote>(u"trashed == NO AND archived == NO AND title != nil AND title != ''"_s);
    request.sortDescriptors = pinnedThenNewest();
    request.fetchLimit = 10;
    return fetchLogged<QBNote>(moc, request);
}

QList<Ref<QBNote>> QBNote::conflictedNotesForUniqueIdentifier(const QString &uniqueIdentifier,
                                                              NSManagedObjectContext &inManagedObjectContext)
{
    auto request =
        requestFor<QBNote>(u"conflictUniqueIdentifier BEGINSWITH %@"_s, {predicateArgument(uniqueIdentifier)});
    request.sortDescriptors = {{QBNoteAttributes::conflictUniqueIdentifier, false}};
    return fetchLogged<QBNote>(inManagedObjectContext, request);
}

QList<Ref<QBNote>> QBNote::findNotesForPartialtitle(const QString &partialtitle,
                                                    NSManagedObjectContext &inManagedObjectContext, qint64 limitTo)
{
    // One pass over all titles: a second one for those that begin with the text would take the time of a key again.
    auto request = requestFor<QBNote>(u"title CONTAINS[cd] %@ AND trashed == NO AND archived == NO"_s,
                                      {predicateArgument(partialtitle)});
    request.sortDescriptors = {{QBNoteAttributes::modificationDate, false}};
    request.fetchLimit = std::max(limitTo, kCompletionCandidates);
    auto found = fetchLogged<QBNote>(inManagedObjectContext, request);
    const auto folded = [](const QString &text) {
        return quib::foldedString(text, quib::FoldOption::CaseAndDiacritic);
    };
    std::stable_partition(found.begin(), found.end(),
                          [&folded, beginning = folded(partialtitle)](const Ref<QBNote> &note) {
                              return folded(note->title()).startsWith(beginning);
                          });
    return found.mid(0, limitTo);
}

QList<Ref<QBNote>> QBNote::allNotesInManagedObjectContext(NSManagedObjectContext &moc, qint64 limitTo)
{
    auto request = requestFor<QBNote>(u"trashed == NO AND archived == NO AND title != nil AND title != ''"_s);
    request.sortDescriptors = {{QBNoteAttributes::modificationDate, false}};
    request.fetchLimit = limitTo;
    return fetchLogged<QBNote>(moc, request);
}
