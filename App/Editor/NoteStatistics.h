#pragma once

#include <QStringView>
#include <QtGlobal>

namespace quib {

/// How long a text is. A value.
struct NoteStatistics
{
    /// What an adult reads of a plain text in a minute.
    static constexpr qint64 kWordsPerMinute = 230;

    qint64 words = 0;
    qint64 characters = 0; ///< as a reader counts them: whole emoji, letters with their accents; no line ends
    qint64 paragraphs = 0; ///< those with something in them
    /// Units: minutes, rounded up.
    [[nodiscard]] qint64 readingTime() const { return (words + kWordsPerMinute - 1) / kWordsPerMinute; }

    friend bool operator==(const NoteStatistics &a, const NoteStatistics &b) = default;

    /// Linear in the text, a paragraph at a time. What stands for an attachment is no character.
    [[nodiscard]] static NoteStatistics ofText(QStringView text);
};

} // namespace quib
