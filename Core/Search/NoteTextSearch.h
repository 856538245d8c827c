#pragma once

#include "FoldedTextArena.h"
#include "NoteFieldSearch.h"
#include "NoteTitleSearch.h"
#include "RowKeySet.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/PredicateNode.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace quib {

/// Answers searches over a context's notes from the folded arena: the arena is filled in the background, follows the
/// context's saves, and catches up with what other processes wrote before it answers. Where it cannot answer, because
/// it is not filled yet or the context has unsaved changes, the store does; the notes are the same either way. Queue:
/// the context's.
class NoteTextSearch : public std::enable_shared_from_this<NoteTextSearch>
{
public:
    /// context: a root context, which must outlive the search.
    [[nodiscard]] static std::shared_ptr<NoteTextSearch> make(NSManagedObjectContext &context);

    /// Fills the arena on a queue of its own, and the titles and fields before.
    void startFilling();
    /// Fills it now, and the fields.
    /// Errors: false; the store goes on answering.
    [[nodiscard]] bool fill(NSError *error = nullptr);
    [[nodiscard]] bool isFilled() const { return m_isFilled; }

    /// What executeFetchRequest gives for a request on notes, faster.
    [[nodiscard]] std::optional<QList<Ref<NSManagedObject>>> executeFetchRequest(const NSFetchRequest &request,
                                                                                 NSError *error = nullptr);
    /// The notes that meet the predicate, in their order: those that asking each would give, without asking each. Notes
    /// with unsaved changes are asked; of all others the arena and the store know.
    /// Before the arena is filled the store answers terms as well, more slowly.
    /// Shape:   nullopt where each has to be asked, because the store fails.
    [[nodiscard]] std::optional<std::vector<NSManagedObject *>>
    objectsMatching(std::span<NSManagedObject *const> objects, const NSPredicate::Ref &predicate);
    [[nodiscard]] const FoldedTextArena &arena() const { return m_arena; }
    [[nodiscard]] NoteTitleSearch &titles() { return m_titles; }

private:
    explicit NoteTextSearch(NSManagedObjectContext &context);
    [[nodiscard]] bool fillFrom(NSPersistentStore &store, NSError *error);
    /// Takes in what was written since the arena last agreed with the store.
    [[nodiscard]] bool catchUp(NSError *error);
    void follow(const NSManagedObjectContext::Changes &changes);
    /// The condition with every containment in the text replaced by the rows that the arena finds.
    [[nodiscard]] NSPredicate::Ref answered(const NSPredicate::Ref &predicate) const;

    // NoteTextSearch+Filtering.cpp
    // Which rows meet a condition; null when the store fails.
    [[nodiscard]] std::shared_ptr<const RowKeySet> rowsMeeting(const PredicateNodeRef &node, NSError *error);
    [[nodiscard]] std::shared_ptr<const RowKeySet> rowsMeetingJoined(const PredicateNode &node, NSError *error);
    /// Which rows meet a condition that names no text, by the fields in memory, or else by the store; what that tells
    /// is remembered until anybody writes.
    [[nodiscard]] std::shared_ptr<const RowKeySet> storedRows(const PredicateNodeRef &node, NSError *error);

    NSManagedObjectContext &m_context;
    const NSEntityDescription *m_entity;
    int m_textSlot;
    FoldedTextArena m_arena;
    NoteTitleSearch m_titles;
    NoteFieldSearch m_fields;
    std::shared_ptr<DispatchQueue> m_fillingQueue;
    std::atomic<bool> m_isFilled = false;
    /// The store's change counter when the arena agreed with it; -1 when that is not known.
    std::atomic<qint64> m_changeCounter = -1;
    ObservationToken m_didSave;
    /// Answers of the store by the printed condition, all of one change counter.
    QHash<QString, std::shared_ptr<const RowKeySet>> m_storedRows;
    qint64 m_storedRowsCounter = -1;
};

} // namespace quib
