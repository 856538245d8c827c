#include "NSMutableAttributedString.h"

#include "AttributeTable.h"

#include <Foundation/Assert.h>

#include <algorithm>

using quib::AttributeChange;
using quib::AttributeRuns;
using quib::AttributeSet;
using quib::AttributeTable;
using quib::AttributeValue;

namespace {

constexpr char16_t kObjectReplacement = u'\uFFFC';

} // namespace

void NSMutableAttributedString::addAttribute(const NSAttributeName &name, const AttributeValue &value, NSRange range)
{
    if (value.isNothing()) {
        removeAttribute(name, range);
        return;
    }
    if (!AttributeTable::isShareable(value)) {
        // Made once, so that all runs of the range hold the same.
        addAttributes(AttributeSet{{name, value}}, range);
        return;
    }
    m_runs.change(cutToText(range), AttributeChange::insertingValue(name, value));
}

void NSMutableAttributedString::addAttributes(const AttributeSet &attributes, NSRange range)
{
    if (!attributes.isEmpty()) {
        m_runs.change(cutToText(range), AttributeChange::insertingSet(attributes));
    }
}

void NSMutableAttributedString::removeAttribute(const NSAttributeName &name, NSRange range)
{
    removeAttributes(std::span(&name, 1), range);
}

void NSMutableAttributedString::removeAttributes(std::span<const NSAttributeName> names, NSRange range)
{
    m_runs.change(cutToText(range), AttributeChange::removing(names));
}

void NSMutableAttributedString::addAttributes(std::span<const Addition> additions)
{
    std::vector<AttributeRuns::Insertion> insertions;
    insertions.reserve(additions.size());
    for (const Addition &addition : additions) {
        QUIB_ASSERT(insertions.empty() || insertions.back().range.limit() <= addition.range.location);
        QUIB_ASSERT(addition.range.limit() <= length());
        insertions.push_back({addition.range, &addition.attributes});
    }
    m_runs.insert(insertions);
}

void NSMutableAttributedString::removeAndAddAttributes(std::span<const NSAttributeName> names,
                                                       const AttributeSet &attributes, NSRange range)
{
    // Held, since the set may be that of a run of this text.
    const AttributeSet held = attributes;
    m_runs.change(cutToText(range), AttributeChange::resetting(names, held));
}

void NSMutableAttributedString::setAttributes(const AttributeSet &attributes, NSRange range)
{
    // Held, since the set may be that of a run of this text.
    const AttributeSet held = attributes;
    m_runs.change(cutToText(range), AttributeChange::replacingBy(held));
}

void NSMutableAttributedString::fixAttributesInRange(NSRange range)
{
    const NSRange cut = cutToText(range);
    fixAttachmentsInRange(cut);
    if (cut.length == 0) {
        return;
    }
    // Whole paragraphs. Only where two runs meet inside of one can it have more than one style.
    const qint64 limit = paragraphRangeForRange(cut).limit();
    qint64 location = paragraphRangeForRange({cut.location, 0}).location;
    while (location < limit) {
        AttributeRuns::Position position = m_runs.find(location);
        const AttributeValue *style = m_runs.attributes(position).find(NSParagraphStyleAttributeName);
        NSRange mixed = kNotFoundRange;
        while (true) {
            m_runs.advance(position);
            if (m_runs.isAtEnd(position) || position.start >= limit) {
                return;
            }
            const AttributeValue *other = m_runs.attributes(position).find(NSParagraphStyleAttributeName);
            const bool isSame = style == other || (style != nullptr && other != nullptr && *style == *other);
            if (!isSame) {
                mixed = paragraphRangeForRange({position.start, 0});
                if (mixed.location < position.start) {
                    break;
                }
            }
            style = other;
        }
        fixParagraphStyle(mixed);
        location = mixed.limit();
    }
}

void NSMutableAttributedString::fixAttachmentsInRange(NSRange range)
{
    std::vector<NSRange> misplaced;
    if (range.length > 0) {
        AttributeRuns::Position position = m_runs.find(range.location);
        while (!m_runs.isAtEnd(position) && position.start < range.limit()) {
            if (m_runs.attributes(position).contains(NSAttachmentAttributeName)) {
                const NSRange run = NSIntersectionRange(m_runs.range(position), range);
                for (qint64 place = run.location; place < run.limit(); ++place) {
                    if (m_text.at(place) == kObjectReplacement) {
                        continue;
                    }
                    if (!misplaced.empty() && misplaced.back().limit() == place) {
                        ++misplaced.back().length;
                    } else {
                        misplaced.push_back({place, 1});
                    }
                }
            }
            m_runs.advance(position);
            m_runs.advanceToNames(position, NSAttachmentAttributeName.mask(), range.limit());
        }
    }
    for (const NSRange one : misplaced) {
        removeAttribute(NSAttachmentAttributeName, one);
    }
}

void NSMutableAttributedString::fixParagraphStyle(NSRange paragraph)
{
    AttributeRuns::Position position = m_runs.find(paragraph.location);
    const AttributeValue *first = m_runs.attributes(position).find(NSParagraphStyleAttributeName);
    while (true) {
        m_runs.advance(position);
        if (m_runs.isAtEnd(position) || position.start >= paragraph.limit()) {
            return;
        }
        const AttributeValue *other = m_runs.attributes(position).find(NSParagraphStyleAttributeName);
        const bool isSame = first == other || (first != nullptr && other != nullptr && *first == *other);
        if (!isSame) {
            break;
        }
    }
    addAttribute(NSParagraphStyleAttributeName, first != nullptr ? AttributeValue(*first) : AttributeValue(),
                 paragraph);
}

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, QStringView withString)
{
    const NSRange cut = cutToText(range);
    AttributeSet attributes;
    if (cut.length > 0 || cut.location == 0) {
        attributes = attributesAtIndex(cut.location);
    } else {
        attributes = attributesAtIndex(cut.location - 1);
    }
    m_text.replace(cut, withString);
    m_runs.replace(cut, withString.size(), attributes);
}

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, const NSAttributedString &withAttributedString)
{
    if (&withAttributedString == this) {
        replaceCharactersInRange(range, NSAttributedString(withAttributedString));
        return;
    }
    const NSRange cut = cutToText(range);
    m_text.replace(cut, withAttributedString.string());
    m_runs.replace(cut, withAttributedString.runs());
}

void NSMutableAttributedString::insertAttributedString(const NSAttributedString &string, qint64 atIndex)
{
    replaceCharactersInRange({atIndex, 0}, string);
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString &string)
{
    replaceCharactersInRange({length(), 0}, string);
}

void NSMutableAttributedString::deleteCharactersInRange(NSRange range)
{
    replaceCharactersInRange(range, QStringView());
}

void NSMutableAttributedString::setAttributedString(const NSAttributedString &string)
{
    NSAttributedString::operator=(string);
}

void NSMutableAttributedString::replaceCharacters(std::span<const Replacement> replacements)
{
    if (replacements.empty()) {
        return;
    }
    qint64 newLength = length();
    for (const Replacement &replacement : replacements) {
        newLength += replacement.string.size() - replacement.range.length;
    }
    const QStringView before = string();
    // OPTIMIZATION: written unit by unit, since most pieces are shorter than a call.
    QString text(newLength, Qt::Uninitialized);
    QChar *out = text.data();
    const auto write = [&out](QStringView piece) { out = std::copy(piece.begin(), piece.end(), out); };
    std::vector<AttributeRuns::Replacement> runs;
    runs.reserve(replacements.size());
    qint64 done = 0;
    for (const Replacement &replacement : replacements) {
        QUIB_ASSERT(done <= replacement.range.location && replacement.range.limit() <= before.size());
        write(before.sliced(done, replacement.range.location - done));
        write(replacement.string);
        runs.push_back({replacement.range, replacement.string.size(), &replacement.attributes});
        done = replacement.range.limit();
    }
    write(before.sliced(done));
    m_text = quib::GapText(std::move(text));
    m_runs.replace(runs);
}
