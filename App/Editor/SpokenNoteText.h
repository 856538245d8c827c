#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

#include <QCoreApplication>
#include <QString>

#include <optional>
#include <vector>

class NSTextAttachment;

namespace quib {

/// A note's text as assistive programs read it: each attachment as words of its own, so that a box is "unchecked
/// item" instead of an empty sign. It follows the text by being told of each edit. Owned by the accessible view, on the
/// text's queue; the text must outlive it.
/// Units: offsets are UTF-16 units of the words, locations those of the text.
class SpokenNoteText
{
    Q_DECLARE_TR_FUNCTIONS(quib::SpokenNoteText)

public:
    explicit SpokenNoteText(const NSAttributedString &text);

    /// What an attachment is read as; empty for what is only drawn.
    [[nodiscard]] static QString wordsForAttachment(const NSTextAttachment &attachment);

    [[nodiscard]] const QString &string() const { return m_string; }
    [[nodiscard]] qint64 offsetOfLocation(qint64 location) const;
    /// Shape: every offset within the words of an attachment is the place of the attachment.
    [[nodiscard]] qint64 locationOfOffset(qint64 offset) const;
    [[nodiscard]] NSRange offsetsOfRange(NSRange range) const;
    /// Shape: takes the attachments whole whose words the offsets touch.
    [[nodiscard]] NSRange rangeOfOffsets(NSRange offsets) const;

    /// What reads differently now: some of the words became others. Words of an attachment change as a whole.
    struct Change
    {
        qint64 offset = 0;
        QString removed;
        QString inserted;
    };
    [[nodiscard]] std::optional<Change> textDidEdit(NSRange editedRange, qint64 changeInLength);
    /// Attachments may be read differently though the text is the same.
    [[nodiscard]] std::vector<Change> attachmentsDidChange();

private:
    struct Reading
    {
        qint64 location = 0;
        QString words;
        /// How much longer than the text the words are, up to and without this one's.
        qint64 gainedBefore = 0;

        [[nodiscard]] qint64 offset() const { return location + gainedBefore; }
    };
    [[nodiscard]] std::vector<Reading> readingsOfRange(NSRange range) const;
    [[nodiscard]] QString wordsOfRange(NSRange range, const std::vector<Reading> &readings) const;
    void refreshGained();

    const NSAttributedString &m_text;
    /// By location.
    std::vector<Reading> m_readings;
    QString m_string;
};

} // namespace quib
