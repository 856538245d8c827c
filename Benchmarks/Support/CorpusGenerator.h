#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace quib::benchmarks {

/// Makes a library of notes with the shape of real ones, from a seed alone: note n has the same text in every run and
/// needs no other note made first. A value; any thread.
///
/// Shape: bytes of UTF-8 log-normal, median 1.5 KB, at most 256 KB; one script a note (60 % Latin with accents, 14 %
/// Cyrillic, 6 % Greek, 12 % Chinese and Japanese, 8 % Arabic), emoji in every fortieth word; words by Zipf's law; 70 %
/// of the notes carry one to three of 300 tags of a tree three deep; 20 % carry attachment markers, 35 % to-do items,
/// 10 % a code block, 25 % a web link, 15 % a link to another note, half have headings beyond the title.
class CorpusGenerator
{
public:
    static constexpr quint64 kSeed = 20170302;
    static constexpr qsizetype kTagCount = 300;

    explicit CorpusGenerator(quint64 seed = kSeed);

    /// The text of one note in the native syntax; the first line is the title, never empty.
    [[nodiscard]] QString text(qsizetype index) const;
    /// One note of the same make-up with about that many bytes of UTF-8 (never fewer, at most a paragraph more).
    [[nodiscard]] QString textWithBytes(qsizetype index, qsizetype bytes) const;
    /// The texts of the first notes.
    [[nodiscard]] QList<QString> texts(qsizetype count) const;

    /// All tags that notes may carry, without marker, parents before children: "work", "work/plans", ...
    [[nodiscard]] const QStringList &tags() const { return m_tags; }
    /// A Latin word by its rank: 0 stands in most Latin notes, the last of wordCount() in few.
    [[nodiscard]] const QString &word(qsizetype rank) const { return m_latin.at(rank); }
    [[nodiscard]] qsizetype wordCount() const { return m_latin.size(); }

private:
    class Writer;

    quint64 m_seed;
    QStringList m_latin;
    QStringList m_cyrillic;
    QStringList m_greek;
    QStringList m_eastAsian;
    QStringList m_arabic;
    QStringList m_tags;
};

} // namespace quib::benchmarks
