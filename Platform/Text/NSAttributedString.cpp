#include "NSAttributedString.h"

#include "NSStringHelpers.h"

#include <Foundation/Assert.h>

#include <algorithm>

using quib::AttributeNameMask;
using quib::AttributeRuns;
using quib::AttributeSet;
using quib::AttributeValue;
using quib::isParagraphEnd;

namespace {

[[nodiscard]] bool hasValue(const AttributeSet &attributes, const NSAttributeName &name, const AttributeValue &value)
{
    const AttributeValue *found = attributes.find(name);
    return found != nullptr ? *found == value : value.isNothing();
}

/// Calls step for one range after the other in the given direction. It may change the text within the range that it
/// answers with; the way goes on behind what has become of that range.
template <typename Step>
void walk(const NSAttributedString &text, NSRange range, NSAttributedStringEnumerationOptions options, const Step &step)
{
    qint64 start = range.location;
    qint64 limit = range.limit();
    bool stop = false;
    if (options == NSAttributedStringEnumerationOptions::Reverse) {
        while (start < limit && !stop) {
            limit = std::min(step(NSRange{start, limit - start}, limit - 1, &stop).location, text.length());
        }
        return;
    }
    while (start < limit && !stop) {
        const qint64 lengthBefore = text.length();
        const NSRange done = step(NSRange{start, limit - start}, start, &stop);
        const qint64 grown = text.length() - lengthBefore;
        start = std::max(done.location, done.limit() + grown);
        limit = std::min(limit + grown, text.length());
    }
}

} // namespace

NSRange quib::rangeCutToLength(NSRange range, qint64 length)
{
    const qint64 start = std::clamp<qint64>(range.location, 0, length);
    const qint64 limit = range.length > NSNotFound - std::max<qint64>(range.location, 0) ? length : range.limit();
    return {start, std::clamp(limit, start, length) - start};
}

NSAttributedString::NSAttributedString(const QString &string)
    : NSAttributedString(string, AttributeSet())
{
}

NSAttributedString::NSAttributedString(const QString &string, const AttributeSet &attributes)
    : m_text(string)
    , m_runs(attributes, string.size())
{
}

NSRange NSAttributedString::cutToText(NSRange range) const
{
    return quib::rangeCutToLength(range, length());
}

QStringView NSAttributedString::stringInRange(NSRange range) const
{
    return m_text.view(cutToText(range));
}

bool NSAttributedString::isParagraphStart(qint64 index) const
{
    return index == 0 || (isParagraphEnd(m_text.at(index - 1)) && !splitsLineEnd(index));
}

bool NSAttributedString::splitsLineEnd(qint64 index) const
{
    return index > 0 && index < length() && m_text.at(index - 1) == u'\r' && m_text.at(index) == u'\n';
}

NSRange NSAttributedString::paragraphRangeForRange(NSRange range) const
{
    const NSRange cut = cutToText(range);
    qint64 start = cut.location;
    qint64 limit = cut.limit();
    if (splitsLineEnd(start)) {
        --start;
    }
    if (limit == start || !isParagraphEnd(m_text.at(limit - 1))) {
        limit = std::min(m_text.firstParagraphEnd(limit) + 1, length());
    }
    if (splitsLineEnd(limit)) {
        ++limit;
    }
    start = m_text.lastParagraphEnd(start) + 1;
    return {start, limit - start};
}

NSAttributedString NSAttributedString::attributedSubstringFromRange(NSRange range) const
{
    const NSRange cut = cutToText(range);
    if (cut == fullRange()) {
        return *this;
    }
    NSAttributedString result;
    result.m_text = quib::GapText(m_text.copy(cut));
    result.m_runs.append(m_runs, cut);
    return result;
}

AttributeValue NSAttributedString::attribute(const NSAttributeName &name, qint64 atIndex, NSRange *effectiveRange) const
{
    if (!fullRange().contains(atIndex)) {
        if (effectiveRange != nullptr) {
            *effectiveRange = {atIndex, 0};
        }
        return {};
    }
    const AttributeRuns::Position position = m_runs.find(atIndex);
    if (effectiveRange != nullptr) {
        *effectiveRange = m_runs.range(position);
    }
    return m_runs.attributes(position).value(name);
}

AttributeValue NSAttributedString::attribute(const NSAttributeName &name, qint64 atIndex,
                                             NSRange *longestEffectiveRange, NSRange inRange) const
{
    const NSRange cut = cutToText(inRange);
    if (!cut.contains(atIndex)) {
        if (longestEffectiveRange != nullptr) {
            *longestEffectiveRange = {atIndex, 0};
        }
        return attribute(name, atIndex);
    }
    const AttributeRuns::Position position = m_runs.find(atIndex);
    if (longestEffectiveRange != nullptr) {
        *longestEffectiveRange = longestRange(name, position, cut);
    }
    return m_runs.attributes(position).value(name);
}

AttributeSet NSAttributedString::attributesAtIndex(qint64 index, NSRange *effectiveRange) const
{
    if (!fullRange().contains(index)) {
        if (effectiveRange != nullptr) {
            *effectiveRange = {index, 0};
        }
        return {};
    }
    const AttributeRuns::Position position = m_runs.find(index);
    if (effectiveRange != nullptr) {
        *effectiveRange = m_runs.range(position);
    }
    return m_runs.attributes(position);
}

NSRange NSAttributedString::longestRange(const NSAttributeName &name, AttributeRuns::Position position,
                                         NSRange inRange) const
{
    const AttributeNameMask mask = name.mask();
    // Valid throughout: nothing changes the sets meanwhile.
    const AttributeValue *const found = m_runs.attributes(position).find(name);
    const AttributeValue value = found != nullptr ? *found : AttributeValue();

    AttributeRuns::Position first = position;
    while (first.start > inRange.location) {
        AttributeRuns::Position before = first;
        m_runs.retreat(before);
        if (!hasValue(m_runs.attributes(before), name, value)) {
            break;
        }
        first = before;
    }
    AttributeRuns::Position behind = position;
    m_runs.advance(behind);
    while (!m_runs.isAtEnd(behind) && behind.start < inRange.limit()) {
        if (value.isNothing()) {
            m_runs.advanceToNames(behind, mask, inRange.limit());
            if (m_runs.isAtEnd(behind) || behind.start >= inRange.limit()) {
                break;
            }
        }
        if (!hasValue(m_runs.attributes(behind), name, value)) {
            break;
        }
        m_runs.advance(behind);
    }
    const qint64 start = std::max(first.start, inRange.location);
    return {start, std::min(behind.start, inRange.limit()) - start};
}

void NSAttributedString::enumerateAttribute(const NSAttributeName &name, NSRange inRange,
                                            NSAttributedStringEnumerationOptions options,
                                            const AttributeBlock &usingBlock) const
{
    walk(*this, cutToText(inRange), options, [&](NSRange left, qint64 index, bool *stop) {
        const AttributeRuns::Position position = m_runs.find(index);
        const NSRange range = longestRange(name, position, left);
        // A copy, since the block may change the text.
        const AttributeValue value = m_runs.attributes(position).value(name);
        usingBlock(value, range, stop);
        return range;
    });
}

void NSAttributedString::enumerateAttributesInRange(NSRange range, NSAttributedStringEnumerationOptions options,
                                                    const AttributesBlock &usingBlock) const
{
    walk(*this, cutToText(range), options, [&](NSRange left, qint64 index, bool *stop) {
        AttributeRuns::Position position = m_runs.find(index);
        const AttributeSet attributes = m_runs.attributes(position);
        NSRange found = m_runs.range(position);
        // Equal neighbours stand in different leaves only.
        for (AttributeRuns::Position before = position; before.start > left.location;) {
            m_runs.retreat(before);
            if (!(m_runs.attributes(before) == attributes)) {
                break;
            }
            found = {before.start, found.limit() - before.start};
        }
        m_runs.advance(position);
        for (; !m_runs.isAtEnd(position) && position.start < left.limit(); m_runs.advance(position)) {
            if (!(m_runs.attributes(position) == attributes)) {
                break;
            }
            found.length += m_runs.range(position).length;
        }
        const NSRange cut = NSIntersectionRange(found, left);
        usingBlock(attributes, cut, stop);
        return cut;
    });
}

bool NSAttributedString::containsAttribute(const NSAttributeName &name, NSRange inRange) const
{
    const NSRange cut = cutToText(inRange);
    if (cut.length == 0) {
        return false;
    }
    const AttributeNameMask mask = name.mask();
    AttributeRuns::Position position = m_runs.find(cut.location);
    while (true) {
        if (m_runs.attributes(position).contains(name)) {
            return true;
        }
        m_runs.advance(position);
        if (!m_runs.isAtEnd(position) && position.start < cut.limit()) {
            m_runs.advanceToNames(position, mask, cut.limit());
        }
        if (m_runs.isAtEnd(position) || position.start >= cut.limit()) {
            return false;
        }
    }
}

bool operator==(const NSAttributedString &a, const NSAttributedString &b)
{
    if (a.length() != b.length() || a.string() != b.string()) {
        return false;
    }
    AttributeRuns::Position first;
    AttributeRuns::Position second;
    while (!a.m_runs.isAtEnd(first)) {
        if (!(a.m_runs.attributes(first) == b.m_runs.attributes(second))) {
            return false;
        }
        const qint64 firstLimit = a.m_runs.range(first).limit();
        const qint64 secondLimit = b.m_runs.range(second).limit();
        if (firstLimit <= secondLimit) {
            a.m_runs.advance(first);
        }
        if (secondLimit <= firstLimit) {
            b.m_runs.advance(second);
        }
    }
    return true;
}
