#pragma once

#include "ByteSearch.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <mutex>
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
    using Indexes = std::vector<size_t>;
    /// What a needle was found in lately.
    struct Finding
    {
        QByteArray needle;
        std::shared_ptr<const Indexes> entries;
    };
    // The indexes of the living entries whose text holds the needle, ascending; of all, or of some that are ascending.
    // Requires: locked; the needle is not empty.
    [[nodiscard]] std::shared_ptr<const Indexes> entriesContaining(const QByteArray &needle) const;
    [[nodiscard]] Indexes entriesContaining(const QByteArray &needle, const Indexes &within) const;
    void sweep(const ByteSearch &search, size_t firstEntry, size_t limitEntry, Indexes *found) const;
    void look(const ByteSearch &search, qsizetype needleSize, std::span<const size_t> within, Indexes *found) const;
    /// Of what was found lately, the least that must hold all of the needle's places; null where nothing does.
    [[nodiscard]] std::shared_ptr<const Indexes> narrowest(const QByteArray &needle, bool *isExact) const;
    void remember(const QByteArray &needle, const std::shared_ptr<const Indexes> &entries) const;
    [[nodiscard]] std::vector<qint64> keysOfEntries(const Indexes &indexes) const;
    void append(qint64 key, qint64 version, const QByteArray &foldedText);
    void drop(qint64 key);
    void compactIfWorthwhile();

    mutable std::shared_mutex m_mutex;
    std::vector<char> m_bytes;
    std::vector<Entry> m_entries;
    QHash<qint64, size_t> m_indexOfKey;
    size_t m_deadBytes = 0;
    ByteCounts m_counts{}; // of every sixteenth byte that was ever appended
    /// Of the present entries, newest last: what holds a longer term is among what holds a part of it.
    mutable std::vector<Finding> m_findings; // guarded by m_findingsMutex, which is locked last
    mutable std::mutex m_findingsMutex;
};

} // namespace quib
