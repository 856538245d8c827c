#pragma once

#include "NoteMirror.h"

#include <Store/PredicateNode.h>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace quib {

/// Answers conditions on those fields of notes that a search line can name, dates and to-dos and tags and the like: the
/// fields of all notes lie in memory, read in the background and following the context's saves. Where it does not know
/// them, because they are not read yet or somebody else wrote, the store is to be asked; the notes are the same either
/// way. Queue: the context's.
class NoteFieldSearch
{
public:
    /// context: a root context, which must outlive the search.
    explicit NoteFieldSearch(NSManagedObjectContext &context);
    NoteFieldSearch(const NoteFieldSearch &) = delete;
    NoteFieldSearch &operator=(const NoteFieldSearch &) = delete;
    ~NoteFieldSearch() = default;

    /// Reads the fields on a queue, and again there whenever somebody else wrote.
    void startFilling(std::shared_ptr<DispatchQueue> queue) { m_rows->startFilling(std::move(queue)); }
    /// Reads them now.
    /// Errors: false; the store goes on answering.
    [[nodiscard]] bool fill(NSError *error = nullptr) { return m_rows->fill(error); }
    [[nodiscard]] bool isFilled() const { return m_rows->isFilled(); }

    /// The keys of the stored notes that meet a condition, ascending.
    /// Shape:   nullopt where the store is to be asked: also for a condition on anything else.
    [[nodiscard]] std::optional<std::vector<qint64>> keysMeeting(const PredicateNode &condition);

private:
    static constexpr size_t kDates = 2;
    static constexpr size_t kNumbers = 6;
    struct Row
    {
        qint64 key = 0;
        std::array<double, kDates> dates{};     ///< not a number where there is none
        std::array<qint16, kNumbers> numbers{}; ///< flags as 0 and 1; what is greater, as the greatest there is
    };
    using Rows = std::vector<Row>; ///< ascending by key
    /// Where a row of the store has the fields.
    struct Slots
    {
        std::array<int, kDates> dates{};
        std::array<int, kNumbers - 1> numbers{}; ///< all but the count of tags, which is the last
    };
    class Answer;

    [[nodiscard]] static Slots slotsOf(const NSEntityDescription *entity);
    [[nodiscard]] static std::optional<Rows> rowsIn(NSPersistentStore &store, const NSEntityDescription *entity,
                                                    NSError *error);
    /// Errors: false when the store cannot be read.
    [[nodiscard]] static bool countTags(NSPersistentStore &store, const NSEntityDescription *entity,
                                        const std::vector<Row *> &rows, NSError *error);
    /// Errors: false when the rows must be read anew.
    [[nodiscard]] bool follow(Rows &rows, const NSManagedObjectContext::Changes &changes) const;

    std::shared_ptr<NoteMirror<Rows>> m_rows;
};

} // namespace quib
