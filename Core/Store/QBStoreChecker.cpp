#include "QBStoreChecker.h"

#include "CurrentSyntax.h"
#include "FileMarkers.h"
#include "QBCoreDataStack.h"
#include "QBNote.h"
#include "QBNoteFile.h"
#include "QBNoteTag.h"

#include <Store/NSManagedObjectContext.h>
#include <Text/Folding.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

/// Objects read at once: enough to make the reads few, few enough that their texts fit anywhere.
constexpr qsizetype kBatchSize = 200;

using Kind = QBStoreFinding::Kind;

} // namespace

NSPersistentStore &QBStoreChecker::store() const
{
    return *m_stack.managedObjectContext()->persistentStoreCoordinator()->persistentStore();
}

std::optional<QList<NSManagedObjectID>> QBStoreChecker::identitiesOf(const QString &entityName, NSError *error) const
{
    NSFetchRequest request;
    request.entityName = entityName;
    return store().fetchIDs(request, error);
}

bool QBStoreChecker::saveRepairs(NSError *error)
{
    auto &moc = *m_stack.managedObjectContext();
    return !m_repair || !moc.hasChanges() || moc.save(error);
}

std::optional<QList<QBStoreFinding>> QBStoreChecker::checkStore(bool repair, NSProgress &progress, NSError *error)
{
    const auto &moc = m_stack.managedObjectContext();
    if (!moc || moc->persistentStoreCoordinator()->persistentStore() == nullptr) {
        if (error != nullptr) {
            *error = m_stack.openError();
        }
        return std::nullopt;
    }
    m_repair = repair;
    m_findings.clear();
    m_fileIdentifiers.clear();
    m_markersWithoutRow.clear();
    // Links before notes, since a dangling link must not reach an object; rows before folders, since the notes and the
    // rows tell which folders are known.
    const bool isDone = checkFile(error) && checkLinks(error) && checkTags(error) && checkBinaries(error) &&
                        checkNotes(progress, error) &&
                        (progress.isCancelled() || (checkForgottenFiles(error) && checkFolders(error)));
    return isDone ? std::optional(m_findings) : std::nullopt;
}

bool QBStoreChecker::checkFile(NSError *error)
{
    const auto problems = store().integrityProblems(error);
    if (!problems) {
        return false;
    }
    for (const QString &problem : *problems) {
        m_findings.append({Kind::BrokenFile, m_stack.persistentStoreURL(), problem});
    }
    return true;
}

bool QBStoreChecker::checkLinks(NSError *error)
{
    const auto *relationship =
        m_stack.managedObjectModel()->entityNamed(QBNote::entityName())->relationshipNamed(QBNoteRelationships::tags);
    const auto notes = identitiesOf(QBNote::entityName(), error);
    const auto tags = notes ? identitiesOf(QBNoteTag::entityName(), error) : std::nullopt;
    if (!tags) {
        return false;
    }
    quib::SaveRequest removals;
    // Seen from one side, every link whose other end is missing; the side whose end exists tells of it.
    const auto collect = [&](const QList<NSManagedObjectID> &sources, const NSRelationshipDescription *side,
                             const QList<NSManagedObjectID> &existing) {
        const QSet<NSManagedObjectID> known(existing.cbegin(), existing.cend());
        for (qsizetype start = 0; start < sources.size(); start += kBatchSize) {
            const auto links = store().targetsForObjects(sources.mid(start, kBatchSize), side, error);
            if (!links) {
                return false;
            }
            for (auto link = links->cbegin(); link != links->cend(); ++link) {
                for (const NSManagedObjectID &target : link.value()) {
                    if (!known.contains(target)) {
                        const bool isOwningSide = side->ownsJoinTable;
                        removals.joinChanges.append({relationship, isOwningSide ? link.key() : target,
                                                     isOwningSide ? target : link.key(), /*isInsertion=*/false});
                    }
                }
            }
        }
        return true;
    };
    if (!collect(*notes, relationship, *tags) || !collect(*tags, relationship->inverse, *notes)) {
        return false;
    }
    // Rows that another process added since the lists were read are looked for by themselves: a row comes with its
    // links in one save, so that what is missing now was missing when the link was read.
    bool isRead = true;
    removals.joinChanges.removeIf([&](const quib::JoinChange &change) {
        const auto source = store().row(change.source, error);
        const auto target = source ? store().row(change.target, error) : std::nullopt;
        isRead = isRead && target.has_value();
        return target && source->snapshot && target->snapshot;
    });
    if (!isRead) {
        return false;
    }
    if (removals.joinChanges.isEmpty()) {
        return true;
    }
    const qsizetype first = m_findings.size();
    for (const auto &change : removals.joinChanges) {
        m_findings.append({Kind::DanglingLink,
                           u"note row %1, tag row %2"_s.arg(change.source.key()).arg(change.target.key()),
                           u"a note and a tag are linked of which one is gone"_s});
    }
    if (!m_repair) {
        return true;
    }
    const quib::SaveResult result = store().save(removals);
    if (result.outcome != quib::SaveResult::Outcome::Saved) {
        if (error != nullptr) {
            *error = result.error;
        }
        return false;
    }
    m_stack.managedObjectContext()->refreshAllObjects(/*mergeChanges=*/true);
    for (qsizetype i = first; i < m_findings.size(); ++i) {
        m_findings[i].isRepaired = true;
    }
    return true;
}

bool QBStoreChecker::checkTags(NSError *error)
{
    NSFetchRequest request;
    request.entityName = QBNoteTag::entityName();
    const auto rows = store().fetchDictionaries(request, {QBNoteTagAttributes::title}, error);
    if (!rows) {
        return false;
    }
    QSet<QString> seen;
    bool hasDuplicates = false;
    for (const auto &row : *rows) {
        const QString title = quib::valueOr<QString>(row.constFirst());
        QString folded = quib::foldedString(title, quib::FoldOption::CaseAndDiacritic);
        if (seen.contains(folded)) {
            m_findings.append({Kind::DuplicateTag, title, u"two rows stand for one tag"_s, m_repair});
            hasDuplicates = true;
        }
        seen.insert(std::move(folded));
    }
    if (hasDuplicates && m_repair) {
        QBNoteTag::mergeDuplicateTagsInInManagedObjectContext(*m_stack.managedObjectContext());
    }
    return saveRepairs(error);
}

bool QBStoreChecker::checkNotes(NSProgress &progress, NSError *error)
{
    const auto notes = identitiesOf(QBNote::entityName(), error);
    if (!notes) {
        return false;
    }
    progress.setTotalUnitCount(notes->size());
    for (qsizetype start = 0; start < notes->size() && !progress.isCancelled(); start += kBatchSize) {
        const auto batch = notes->mid(start, kBatchSize);
        if (!checkNotesOfBatch(batch, error)) {
            return false;
        }
        progress.addCompletedUnits(batch.size());
    }
    return true;
}

bool QBStoreChecker::checkNotesOfBatch(const QList<NSManagedObjectID> &batch, NSError *error)
{
    // The update itself tells what the fields should be: it runs on objects of a context of its own, whose changes are
    // what is wrong. They are saved or dropped as one.
    const auto scratch = m_stack.backgroundPrivateManagedObjectContext();
    const int syntax = quib::currentSyntax();
    bool isSaved = true;
    scratch->performBlockAndWait([&] {
        for (const NSManagedObjectID &identity : batch) {
            const auto note = scratch->existingObjectWithID(identity).as<QBNote>();
            if (!note || note->text().isNull()) {
                continue;
            }
            for (const auto &marker : quib::fileMarkersInText(note->text())) {
                if (!m_fileIdentifiers.contains(marker.uniqueIdentifier)) {
                    m_markersWithoutRow.insert(marker.uniqueIdentifier, note->uniqueIdentifier());
                }
            }
            const QStringList wrong = note->repairDerivedFieldsWithSyntax(syntax);
            if (!wrong.isEmpty()) {
                m_findings.append({Kind::DerivedFields, note->uniqueIdentifier(),
                                   u"fields are not those of the text: "_s + wrong.join(u", "_s), m_repair});
            }
        }
        isSaved = !m_repair || !scratch->hasChanges() || scratch->save(error);
        scratch->reset();
    });
    return isSaved && saveRepairs(error);
}
