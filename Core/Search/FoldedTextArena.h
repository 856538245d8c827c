#pragma once

#include "ByteSearch.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <span>
#include <vector>

namespace quib {

/// The folded texts of all notes in one block of memory, so that a term is found in all of them in one sweep. A text is
/// kept as the bytes that the [cd] comparisons go by, so a search finds just what comparing each text would find.
/// Any thread: searches run side by side, changes wait for them.
///
/// Invariants: (1) every text is followed by one byte that no text holds, so no match spans two; (2) entries lie in the
/// order of their bytes; (3) a key has at most one living entry.
class FoldedTextArena
{
public:
    FoldedTextArena() = default;
    /// Waits for a thread that is still at a piece of a search.
    ~FoldedTextArena();
    FoldedTextArena(const FoldedTextArena &) = delete;
    FoldedTextArena &operator=(const FoldedTextArena &) = delete;

    /// Sets the text of a row; version is the row's, for telling later what moved on.
    void setText(qint64 key, qint64 version, QStringView text);
    /// The same for a text that was folded elsewhere, by foldedUtf8.
    void setFoldedText(qint64 key, qint64 version, const QByteArray &foldedText);
    void remove(qint64 key);
    void clear();

    /// The keys of the rows whose text holds the term, ascending. An empty term, or one that folds to nothing, is held
    /// by every text.
    [[nodiscard]] std::vector<qint64> keysOfTextsContaining(QStringView term) const;
    /// The same within rows found before: what a longer term finds among the results of a shorter one, whose folded
    /// form the longer one's must begin with.
    [[nodiscard]] std::vector<qint64> keysOfTextsContaining(QStringView term, const std::vector<qint64> &within) const;

    /// The keys of the rows whose text holds every one of the terms, ascending: the rarest is looked for in all texts,
    /// the others where it was found.
    [[nodiscard]] std::vector<qint64> keysOfTextsContainingAll(const QStringList &terms) const;

    /// The version that a row's text was set with, or -1.
    [[nodiscard]] qint64 versionOfKey(qint64 key) const;
    [[nodiscard]] QList<qint64> keys() const;
    [[nodiscard]] qint64 count() const;
    /// Units: bytes, those of replaced texts that were not cleared away yet included.
    [[nodiscard]] qint64 sizeInBytes() const;
    void reserve(qint64 bytes);
    /// Lets go of what earlier searches found: the next one finds the same, and starts from nothing.
    void forgetFindings() const;

private:
    struct Entry
    {
        size_t start = 0;
        size_t length = 0;
        qint64 key = 0; // 0: replaced or removed
        qint64 version = 0;
    };
    /// A text that holds a needle, by its entry, and a place before which the needle does not begin in it.
    struct Place
    {
        quint32 entry = 0;
        quint32 offset = 0;
    };
    using Places = std::vector<Place>;
    /// What a needle was found in lately.
    struct Finding
    {
        QByteArray needle;
        std::shared_ptr<const Places> places;
    };
    /// What is looked for, and the letters without which a text is not looked at.
    struct Needle
    {
        QByteArray bytes; // which the search goes by
        ByteSearch search;
        quint64 letters = 0;
        size_t size = 0;
    };
    [[nodiscard]] Needle needleOf(const QByteArray &bytes) const;

    // The living entries whose text holds the needle, ascending; of all, or of some that are ascending.
    // Requires: locked; the needle is not empty.
    [[nodiscard]] std::shared_ptr<const Places> placesOf(const QByteArray &needle) const;
    /// within: null for all. back: how much of the needle stands before what the places are those of.
    [[nodiscard]] Places placesOf(const QByteArray &needle, const std::shared_ptr<const Places> &within,
                                  size_t back) const;
    struct Searching;
    [[nodiscard]] Places living(size_t firstEntry, size_t limitEntry) const;
    void search(const Needle &needle, size_t back, std::span<const Place> within, Places *found) const;
    void sweep(const ByteSearch &search, size_t firstEntry, size_t limitEntry, Places *found) const;
    /// Where to begin in a text of which more cannot hold the needle.
    struct Start
    {
        size_t position = 0; // in all bytes
        quint32 entry = 0;
    };
    /// Gives how many bytes it went through.
    size_t look(const Needle &needle, std::span<const Start> starts, Places *found) const;
    /// Of what was found lately, the least that must hold all of the needle's places.
    [[nodiscard]] std::optional<Finding> narrowest(const QByteArray &needle) const;
    void remember(const Finding &finding) const;
    [[nodiscard]] std::vector<qint64> keysOfPlaces(const Places &places) const;
    void append(qint64 key, qint64 version, const QByteArray &foldedText);
    void drop(qint64 key);
    void compactIfWorthwhile();

    const std::shared_ptr<std::shared_mutex> m_mutex = std::make_shared<std::shared_mutex>();
    std::vector<char> m_bytes;
    std::vector<Entry> m_entries;
    /// By entry, which letters its text has: a bit each, or one for some that are rare.
    std::vector<quint64> m_letters;
    QHash<qint64, size_t> m_indexOfKey;
    size_t m_deadBytes = 0;
    ByteCounts m_counts{}; // of every sixteenth byte that was ever appended
    /// Of the present entries, newest last: what holds a longer term is among what holds a part of it, and not before
    /// that part.
    mutable std::vector<Finding> m_findings; // guarded by m_findingsMutex, which is locked last
    mutable std::mutex m_findingsMutex;
};

} // namespace quib
