#include "QBXurlCoreController.h"
#include "XurlReports.h"

#include <Search/QBNoteSearchManager.h>
#include <Store/NSManagedObjectContext.h>
#include <Text/NSStringHelpers.h>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::reportFailure;
using quib::reportSuccess;

namespace {

/// The condition of a list and that of a search, joined as text: an OR at the top of the search reaches over the AND
/// that joins them, and lets in what the list leaves out.
/// Errors: null for a search that no condition can be made of.
NSPredicate::Ref joinedPredicate(const QString &front, const QString &back)
{
    return NSPredicate::predicateWithFormat(QString(front % u" AND " % back));
}

NSFetchRequest requestOf(const QString &condition)
{
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = NSPredicate::predicateWithFormat(QString(u"trashed == NO AND archived == NO AND " % condition));
    return request;
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
    handleList(requestOf(u"tags.@count == 0"_s), parameters, success, failure, updateInterface);
}

void QBXurlCoreController::handleToday(const Parameters &parameters, const IACSuccessBlock &success,
                                       const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    handleList(requestOf(QBNoteSearchManager::predicateStringForSpecialSearch(u"@today"_s)), parameters, success,
               failure, updateInterface);
}

void QBXurlCoreController::handleTodo(const Parameters &parameters, const IACSuccessBlock &success,
                                      const IACFailureBlock &failure, const UpdateList &updateInterface)
{
    handleList(requestOf(u"todoIncompleted > 0"_s), parameters, success, failure, updateInterface);
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
    if (const auto predicate = QBNoteSearchManager::predicateForSearchString(search)) {
        searched.predicate = joinedPredicate(request.predicate->predicateFormat(), predicate->predicateFormat());
    } else if (!quib::trimmedWhitespaceAndNewlines(search).isEmpty()) {
        searched.predicate = nullptr; // a search that no condition could be made of
    }
    const auto notes = searched.predicate ? moc().fetch<QBNote>(searched) : std::nullopt;
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
    const auto terms = QBNoteSearchManager::predicateForSearchString(term);
    const bool isBlank = quib::trimmedWhitespaceAndNewlines(term).isEmpty();
    const auto predicate = terms || isBlank ? (terms ? joinedPredicate(terms->predicateFormat(), shown)
                                                     : NSPredicate::predicateWithFormat(shown))
                                            : nullptr;
    const auto notes = predicate ? notesMatching(predicate, tag, moc()) : std::nullopt;
    if (!notes) {
        reportFailure(failure, ErrorCode::Internal, quib::kResultsNotFetched);
        return;
    }
    reportNotes(*notes, quib::kResultsNotFetched, success, failure);
}
