#include "QBXurlCoreController.h"
#include "XurlReports.h"

#include <Search/Lists/QBStaticSidebarItem.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::reportFailure;
using quib::reportSuccess;

namespace {

/// A search of more terms is answered by an error: no one types it, and each term is a condition of its own.
constexpr qsizetype kMostSearchTerms = 1'000;

/// The condition of a search line; null for a blank one.
/// Errors: nothing for one that no condition is made of.
std::optional<NSPredicate::Ref> predicateOfSearch(const QString &search)
{
    const auto ends =
        std::count_if(search.cbegin(), search.cend(), [](QChar unit) { return unit.isSpace() || unit == u'"'; });
    if (ends >= kMostSearchTerms) {
        return std::nullopt;
    }
    auto predicate = QBNoteSearchManager::predicateForSearchString(search);
    const bool isBlank = quib::trimmedWhitespaceAndNewlines(search).isEmpty();
    return predicate || isBlank ? std::optional(std::move(predicate)) : std::nullopt;
}

/// The condition of a list and that of a search, joined as text: an OR at the top of the search reaches over the AND
/// that joins them, and lets in what the list leaves out.
/// Errors: null for a search that no condition can be made of.
NSPredicate::Ref joinedPredicate(const QString &front, const QString &back)
{
    return NSPredicate::predicateWithFormat(QString(front % u" AND " % back));
}

/// The request of one of the sidebar's lists.
template <typename Item> NSFetchRequest requestOfItem(const QBCoreDataStack &stack)
{
    return *Item::sidebarItemWithManagedObjectContext(stack.managedObjectContext())->notesFetchRequest();
}

/// The notes of the tag, or all of the store, that meet a condition.
/// Errors: nothing where the store failed.
std::optional<QList<Ref<QBNote>>> notesMatching(const NSPredicate::Ref &predicate, const Ref<QBNoteTag> &ofTag,
                                                NSManagedObjectContext &moc)
{
    if (!ofTag) {
        NSFetchRequest request{.entityName = QBNote::entityName()};
        request.predicate = predicate;
        return moc.fetch<QBNote>(request);
    }
    QList<Ref<QBNote>> notes;
    for (const auto &note : ofTag->notes()) {
        if (predicate->evaluateWithObject(*note)) {
            notes.append(note);
        }
    }
    return notes;
}

} // namespace

void QBXurlCoreController::handleTrash(const Parameters &parameters, const IACSuccessBlock &success,
                                       const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    const QString identifier = parameters.value(u"id"_s);
    if (!identifier.isEmpty()) {
        const auto note = QBNote::noteWithUniqueIdentifier(identifier, moc());
        if (!note) {
            reportFailure(failure, ErrorCode::NotFound, quib::kNoteMissing);
            return;
        }
        note->trash();
        if (!save(failure)) {
            return;
        }
    }
    reportSuccess(success);
    if (updateInterface) {
        updateInterface(/*show=*/true, identifier.isEmpty() ? parameters.value(u"search"_s) : QString());
    }
}

void QBXurlCoreController::handleArchive(const Parameters &parameters, const IACSuccessBlock &success,
                                         const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    const QString identifier = parameters.value(u"id"_s);
    if (identifier.isEmpty()) {
        reportSuccess(success);
        if (updateInterface) {
            updateInterface(/*show=*/true, parameters.value(u"search"_s));
        }
        return;
    }
    const auto note = QBNote::noteWithUniqueIdentifier(identifier, moc());
    if (!note) {
        reportFailure(failure, ErrorCode::NotFound, quib::kNoteMissing);
        return;
    }
    note->archive();
    if (!save(failure)) {
        return;
    }
    // The window comes first here, unlike with the trash.
    if (updateInterface) {
        updateInterface(/*show=*/true, {});
    }
    reportSuccess(success);
}

void QBXurlCoreController::handleUntagged(const Parameters &parameters, const IACSuccessBlock &success,
                                          const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    handleList(requestOfItem<QBUntaggedSidebarItem>(m_stack), parameters, success, failure, updateInterface);
}

void QBXurlCoreController::handleToday(const Parameters &parameters, const IACSuccessBlock &success,
                                       const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    handleList(requestOfItem<QBTodaySidebarItem>(m_stack), parameters, success, failure, updateInterface);
}

void QBXurlCoreController::handleTodo(const Parameters &parameters, const IACSuccessBlock &success,
                                      const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    handleList(requestOfItem<QBTodoSidebarItem>(m_stack), parameters, success, failure, updateInterface);
}

void QBXurlCoreController::handleList(const NSFetchRequest &request, const Parameters &parameters,
                                      const IACSuccessBlock &success, const IACFailureBlock &failure,
                                      const UpdateList &updateInterface)
{
    // 1. A token that is given must be the right one.
    if (hasInvalidToken(parameters, quib::kTokenInvalid, failure)) {
        return;
    }
    // 2. The window.
    const QString search = parameters.value(u"search"_s);
    if (updateInterface) {
        updateInterface(/*show=*/true, search);
    }
    // 3. Who shows no token learns nothing of the notes.
    if (!success) {
        return;
    }
    if (!parameters.contains(u"token"_s)) {
        reportSuccess(success);
        return;
    }
    // 4. The list's notes.
    NSFetchRequest searched = request;
    const auto terms = predicateOfSearch(search);
    if (terms && *terms) {
        searched.predicate = joinedPredicate(request.predicate->predicateFormat(), (*terms)->predicateFormat());
    }
    const auto notes = terms && searched.predicate ? moc().fetch<QBNote>(searched) : std::nullopt;
    if (!notes) {
        reportFailure(failure, ErrorCode::Internal, quib::kResultsNotFetched);
        return;
    }
    reportNotes(*notes, "Error serializing the results"_L1, success, failure);
}

void QBXurlCoreController::handleSearch(const Parameters &parameters, const IACSuccessBlock &success,
                                        const IACFailureBlock &failure, const UpdateSearch &updateInterface)
{
    if (hasInvalidToken(parameters, quib::kTokenInvalid, failure)) {
        return;
    }
    const QString term = parameters.value(u"term"_s);
    const QString name = parameters.value(u"tag"_s);
    const auto tag = name.isEmpty() ? Ref<QBNoteTag>() : QBNoteTag::tagWithName(name, moc());
    if (!name.isEmpty() && !tag) {
        reportFailure(failure, ErrorCode::NotFound, quib::kTagMissing);
        return;
    }
    if (updateInterface) {
        updateInterface(tag, term);
    }
    if (!success) {
        return;
    }
    if (!parameters.contains(u"token"_s)) {
        reportSuccess(success);
        return;
    }
    // A blank term finds all notes; one that no condition can be made of finds none.
    const QString shown = u"archived == NO AND trashed == NO"_s;
    const auto terms = predicateOfSearch(term);
    NSPredicate::Ref predicate;
    if (terms) {
        predicate =
            *terms ? joinedPredicate((*terms)->predicateFormat(), shown) : NSPredicate::predicateWithFormat(shown);
    }
    const auto notes = predicate ? notesMatching(predicate, tag, moc()) : std::nullopt;
    if (!notes) {
        reportFailure(failure, ErrorCode::Internal, quib::kResultsNotFetched);
        return;
    }
    reportNotes(*notes, quib::kResultsNotFetched, success, failure);
}
