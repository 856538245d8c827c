#include "SpokenNoteText.h"

#include <Markup/Attachments/QBArrowTextAttachment.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Attachments/QBLineSeparatorTextAttachment.h>
#include <Markup/Attachments/QBLinkedNoteTextAttachment.h>
#include <Markup/Attachments/QBUnorderedListTextAttachment.h>
#include <Text/NSAttributeName.h>
#include <Text/NSTextAttachment.h>

#include <algorithm>
#include <iterator>
#include <span>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The file's name, from its marker "[file:id/name]" while the file itself is not known.
QString nameOfFile(const QBGenericFileTextAttachment &file)
{
    if (!file.filename().isEmpty()) {
        return file.filename();
    }
    const QString marker = file.representedText();
    return marker.mid(marker.lastIndexOf(u'/') + 1).remove(u']');
}

} // namespace

SpokenNoteText::SpokenNoteText(const NSAttributedString &text)
    : m_text(text)
    , m_readings(readingsOfRange(text.fullRange()))
    , m_string(wordsOfRange(text.fullRange(), m_readings))
{
    refreshGained();
}

QString SpokenNoteText::wordsForAttachment(const NSTextAttachment &attachment)
{
    if (const auto *box = dynamic_cast<const QBCheckBoxTextAttachment *>(&attachment)) {
        return box->isChecked() ? tr("checked item") : tr("unchecked item");
    }
    if (const auto *header = dynamic_cast<const QBHeaderTextAttachment *>(&attachment)) {
        return tr("heading %1").arg(header->headerLevel());
    }
    if (const auto *image = dynamic_cast<const QBImageTextAttachment *>(&attachment)) {
        return tr("picture %1").arg(nameOfFile(*image));
    }
    if (const auto *file = dynamic_cast<const QBGenericFileTextAttachment *>(&attachment)) {
        return tr("file %1").arg(nameOfFile(*file));
    }
    if (dynamic_cast<const QBUnorderedListTextAttachment *>(&attachment) != nullptr) {
        return u"\u2022"_s;
    }
    if (const auto *arrow = dynamic_cast<const QBArrowTextAttachment *>(&attachment)) {
        return arrow->isFlipped() ? u"\u2190"_s : u"\u2192"_s;
    }
    if (dynamic_cast<const QBLineSeparatorTextAttachment *>(&attachment) != nullptr) {
        return tr("separator");
    }
    if (dynamic_cast<const QBFoldTextAttachment *>(&attachment) != nullptr) {
        return tr("folded text");
    }
    if (dynamic_cast<const QBLinkedNoteTextAttachment *>(&attachment) != nullptr) {
        return tr("link to a note");
    }
    const auto *placed = dynamic_cast<const QBNotesTextAttachment *>(&attachment);
    // The URL of a titled link, whose title stands before it.
    return placed != nullptr && !placed->representedText().isEmpty() ? tr("link") : QString();
}

std::vector<SpokenNoteText::Reading> SpokenNoteText::readingsOfRange(NSRange range) const
{
    std::vector<Reading> readings;
    m_text.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                              [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                  const auto attachment = value.sharedAs<NSTextAttachment>();
                                  for (qint64 place = run.location; attachment != nullptr && place < run.limit();
                                       ++place) {
                                      readings.push_back({.location = place, .words = wordsForAttachment(*attachment)});
                                  }
                              });
    return readings;
}

QString SpokenNoteText::wordsOfRange(NSRange range, const std::vector<Reading> &readings) const
{
    const QStringView text = m_text.string();
    QString words;
    qint64 from = range.location;
    for (const Reading &reading : readings) {
        words += text.sliced(from, reading.location - from);
        words += reading.words;
        from = reading.location + 1;
    }
    words += text.sliced(from, range.limit() - from);
    return words;
}

void SpokenNoteText::refreshGained()
{
    qint64 gained = 0;
    for (Reading &reading : m_readings) {
        reading.gainedBefore = gained;
        gained += reading.words.size() - 1;
    }
}

qint64 SpokenNoteText::offsetOfLocation(qint64 location) const
{
    const auto next = std::ranges::partition_point(
        m_readings, [location](const Reading &reading) { return reading.location < location; });
    if (next == m_readings.begin()) {
        return location;
    }
    const Reading &before = *std::prev(next);
    return location + before.gainedBefore + before.words.size() - 1;
}

qint64 SpokenNoteText::locationOfOffset(qint64 offset) const
{
    const auto next = std::ranges::partition_point(
        m_readings, [offset](const Reading &reading) { return reading.offset() <= offset; });
    if (next == m_readings.begin()) {
        return offset;
    }
    const Reading &before = *std::prev(next);
    const qint64 behind = offset - before.offset() - before.words.size();
    return behind < 0 ? before.location : before.location + 1 + behind;
}

NSRange SpokenNoteText::offsetsOfRange(NSRange range) const
{
    const qint64 start = offsetOfLocation(range.location);
    return {start, offsetOfLocation(range.limit()) - start};
}

NSRange SpokenNoteText::rangeOfOffsets(NSRange offsets) const
{
    const qint64 start = locationOfOffset(offsets.location);
    qint64 end = locationOfOffset(offsets.limit());
    if (offsets.length > 0 && offsetOfLocation(end) < offsets.limit()) {
        ++end; // within the words of an attachment
    }
    return {start, std::max<qint64>(0, end - start)};
}

std::optional<SpokenNoteText::Change> SpokenNoteText::textDidEdit(NSRange editedRange, qint64 changeInLength)
{
    const NSRange oldRange = {editedRange.location, editedRange.length - changeInLength};
    const NSRange oldOffsets = offsetsOfRange(oldRange);
    const auto first = std::ranges::partition_point(
        m_readings, [oldRange](const Reading &reading) { return reading.location < oldRange.location; });
    const auto limit = std::partition_point(
        first, m_readings.end(), [oldRange](const Reading &reading) { return reading.location < oldRange.limit(); });
    const std::vector<Reading> before(first, limit);
    std::vector<Reading> after = readingsOfRange(editedRange);
    const QString oldWords = m_string.mid(oldOffsets.location, oldOffsets.length);
    const QString newWords = wordsOfRange(editedRange, after);
    for (auto moved = limit; moved != m_readings.end(); ++moved) {
        moved->location += changeInLength;
    }
    const auto gap = m_readings.erase(first, limit);
    const auto firstOfNew = m_readings.insert(gap, after.begin(), after.end());
    refreshGained();
    if (oldWords == newWords) {
        return std::nullopt;
    }
    m_string.replace(oldOffsets.location, oldOffsets.length, newWords);

    // What is the same at both ends is left out, but the words of an attachment are never cut.
    const auto sameStart = std::mismatch(oldWords.begin(), oldWords.end(), newWords.begin(), newWords.end());
    qint64 start = sameStart.first - oldWords.begin();
    const auto sameEnd =
        std::mismatch(oldWords.rbegin(), oldWords.rend() - start, newWords.rbegin(), newWords.rend() - start);
    qint64 tail = sameEnd.first - oldWords.rbegin();
    const auto cutsWords = [](const Reading &reading, qint64 offset) {
        return reading.offset() < offset && offset < reading.offset() + reading.words.size();
    };
    const auto keepWhole = [&](std::span<const Reading> readings, qint64 size) {
        for (const Reading &reading : readings) {
            if (cutsWords(reading, oldOffsets.location + start)) {
                start = reading.offset() - oldOffsets.location;
            }
            if (cutsWords(reading, oldOffsets.location + size - tail)) {
                tail = size - (reading.offset() + reading.words.size() - oldOffsets.location);
            }
        }
    };
    keepWhole(before, oldWords.size());
    keepWhole(std::span(firstOfNew, firstOfNew + static_cast<std::ptrdiff_t>(after.size())), newWords.size());
    return Change{.offset = oldOffsets.location + start,
                  .removed = oldWords.sliced(start, oldWords.size() - start - tail),
                  .inserted = newWords.sliced(start, newWords.size() - start - tail)};
}

std::vector<SpokenNoteText::Change> SpokenNoteText::attachmentsDidChange()
{
    std::vector<Change> changes;
    qint64 gained = 0;
    for (Reading &reading : m_readings) {
        reading.gainedBefore = gained;
        const auto attachment =
            m_text.attribute(NSAttachmentAttributeName, reading.location).sharedAs<NSTextAttachment>();
        const QString words = attachment != nullptr ? wordsForAttachment(*attachment) : QString();
        if (words != reading.words) {
            m_string.replace(reading.offset(), reading.words.size(), words);
            changes.push_back({.offset = reading.offset(), .removed = reading.words, .inserted = words});
            reading.words = words;
        }
        gained += words.size() - 1;
    }
    return changes;
}

} // namespace quib
