#include "NSMutableAttributedString.h"

#include "AttributeRunsRewriter.h"
#include "AttributeTable.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <array>

using quib::AttributeChange;
using quib::AttributeRuns;
using quib::AttributeRunsRewriter;
using quib::AttributeSet;
using quib::AttributeTable;
using quib::AttributeValue;

namespace {

constexpr char16_t kObjectReplacement = u'\uFFFC';

/// Finds the paragraph styles of runs. Most are in the shared part of their sets, of which a text has few.
class ParagraphStyles
{
public:
    /// Null for none. Valid until the attributes change.
    [[nodiscard]] const AttributeValue *of(const AttributeSet &attributes)
    {
        const quib::AttributeEntries *const shared = attributes.shared();
        Known &known = m_known[(reinterpret_cast<quintptr>(shared) >> 5) % m_known.size()];
        if (known.shared != shared) {
            known = {shared, shared != nullptr ? shared->find(NSParagraphStyleAttributeName.index()) : nullptr};
        }
        return known.style != nullptr ? known.style : attributes.find(NSParagraphStyleAttributeName);
    }

private:
    struct Known
    {
        const quib::AttributeEntries *shared = nullptr;
        const AttributeValue *style = nullptr;
    };
    std::array<Known, 64> m_known;
};

} // namespace

NSMutableAttributedString NSMutableAttributedString::resetCopy(const NSAttributedString &text, NSRange range,
                                                               std::span<const NSAttributeName> withoutNames,
                                                               const AttributeSet &withAttributes)
{
    const NSRange cut = quib::rangeCutToLength(range, text.length());
    NSMutableAttributedString copy(text.substring(cut), AttributeSet());
    copy.m_runs = AttributeRuns();
    copy.m_runs.append(text.runs(), cut, AttributeChange::resetting(withoutNames, withAttributes));
    return copy;
}

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

void NSMutableAttributedString::addAttributes(std::span<Addition> additions)
{
    for (size_t index = 0; index < additions.size(); ++index) {
        QUIB_ASSERT(index == 0 || additions[index - 1].range.limit() <= additions[index].range.location);
        QUIB_ASSERT(additions[index].range.limit() <= length());
    }
    m_runs.insert(additions);
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
    ParagraphStyles styles;
    while (location < limit) {
        AttributeRuns::Position position = m_runs.find(location);
        const AttributeValue *style = styles.of(m_runs.attributes(position));
        NSRange mixed = kNotFoundRange;
        while (true) {
            m_runs.advance(position);
            if (m_runs.isAtEnd(position) || position.start >= limit) {
                return;
            }
            const AttributeValue *other = styles.of(m_runs.attributes(position));
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
            const NSRange run = NSIntersectionRange(m_runs.range(position), range);
            // OPTIMIZATION: most objects are attachments, and most stand where they belong.
            const bool isInPlace = run.length == 1 && m_text.at(run.location) == kObjectReplacement;
            if (!isInPlace && m_runs.attributes(position).contains(NSAttachmentAttributeName)) {
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
            m_runs.advanceToObjects(position, NSAttachmentAttributeName.mask(), range.limit());
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

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, NSAttributedString withAttributedString)
{
    const NSRange cut = cutToText(range);
    NSMutableAttributedString taken(std::move(withAttributedString));
    m_text.replace(cut, taken.string());
    m_runs.replace(cut, std::move(taken.m_runs));
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

void NSMutableAttributedString::setAttributedString(NSAttributedString string)
{
    NSAttributedString::operator=(std::move(string));
}

void NSMutableAttributedString::replaceCharacters(std::span<const Replacement> replacements)
{
    qint64 change = 0;
    for (const Replacement &replacement : replacements) {
        change += replacement.string.size() - replacement.range.length;
    }
    auto next = replacements.begin();
    rewrite(change, [&next, &replacements] { return next != replacements.end() ? &*next++ : nullptr; });
}

void NSMutableAttributedString::replaceCharacters(qint64 changeInLength, const NextReplacement &next)
{
    rewrite(changeInLength, next);
}

template <typename Next> void NSMutableAttributedString::rewrite(qint64 changeInLength, const Next &next)
{
    auto *replacement = next();
    if (replacement == nullptr) {
        return;
    }
    const QStringView before = string();
    // OPTIMIZATION: written unit by unit, since most pieces are shorter than a call.
    QString text(before.size() + changeInLength, Qt::Uninitialized);
    QChar *out = text.data();
    const auto write = [&out](QStringView piece) { out = std::copy(piece.begin(), piece.end(), out); };
    AttributeRunsRewriter runs(m_runs, fullRange());
    qint64 done = 0;
    for (; replacement != nullptr; replacement = next()) {
        const NSRange range = replacement->range;
        QUIB_ASSERT(done <= range.location && range.limit() <= before.size());
        write(before.sliced(done, range.location - done));
        write(replacement->string);
        runs.keepTo(range.location);
        runs.skipTo(range.limit());
        runs.add(std::move(replacement->attributes), replacement->string.size());
        done = range.limit();
    }
    write(before.sliced(done));
    runs.finish();
    QUIB_ASSERT(out == text.constData() + text.size());
    m_text = quib::GapText(std::move(text));
}
