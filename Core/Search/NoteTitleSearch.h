#pragma once

#include "NoteMirror.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace quib {

/// Finds notes by a part of their titles while it is typed: the folded titles of all notes lie in memory, read in the
/// background and following the context's saves. Where it does not know them, because they are not read yet or somebody
/// else wrote, the store is to be asked; the notes are the same either way. Queue: the context's.
class NoteTitleSearch
{
public:
    /// context: a root context, which must outlive the search.
    explicit NoteTitleSearch(NSManagedObjectContext &context);
    NoteTitleSearch(const NoteTitleSearch &) = delete;
    NoteTitleSearch &operator=(const NoteTitleSearch &) = delete;
    ~NoteTitleSearch() = default;

    /// Reads the titles on a queue, and again there whenever somebody else wrote.
    void startFilling(std::shared_ptr<DispatchQueue> queue) { m_titles->startFilling(std::move(queue)); }
    /// Reads them now.
    /// Errors: false; the store goes on answering.
    [[nodiscard]] bool fill(NSError *error = nullptr) { return m_titles->fill(error); }
    [[nodiscard]] bool isFilled() const { return m_titles->isFilled(); }

    /// The notes of QBNote::findNotesForPartialtitle; nullopt where the store is to be asked.
    [[nodiscard]] std::optional<QList<Ref<QBNote>>> findNotesForPartialtitle(const QString &partialtitle,
                                                                             qint64 limitTo);

private:
    struct Entry
    {
        qint64 key = 0;
        double modificationDate = 0; ///< as NSDate has it; of none, less than of any
        quint32 start = 0;
        quint32 length = 0;
    };
    /// Invariants: (1) entries ascend by key, and each note that can be linked to has one; (2) the folded title of an
    /// entry lies in the bytes from its start on.
    struct Titles
    {
        std::vector<Entry> entries;
        std::vector<char> bytes;
        size_t deadBytes = 0; ///< of titles that were replaced

        /// Errors: false when there is no more room.
        [[nodiscard]] bool append(qint64 key, const std::optional<NSDate> &date, const QByteArray &folded);
    };
    struct Found;

    [[nodiscard]] static std::optional<Titles> titlesIn(NSPersistentStore &store, const NSEntityDescription *entity,
                                                        NSError *error);
    // Errors: false when the titles must be read anew.
    [[nodiscard]] static bool follow(Titles &titles, const NSManagedObjectContext::Changes &changes);
    [[nodiscard]] static bool followNote(Titles &titles, const QBNote &note);
    /// Those that were changed since the last save, of which the titles here are not those that count.
    [[nodiscard]] std::vector<Found> foundAmongChanged(const QByteArray &needle, std::vector<qint64> *changed) const;
    [[nodiscard]] std::optional<QList<Ref<QBNote>>> notes(const std::vector<Found> &found) const;

    NSManagedObjectContext &m_context;
    std::shared_ptr<NoteMirror<Titles>> m_titles;
};

} // namespace quib
