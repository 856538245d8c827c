#include "NSMutableAttributedString.h"

#include <Foundation/Assert.h>

#include <algorithm>

using quib::AttributeChange;
using quib::AttributeRuns;
using quib::AttributeSet;
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

void NSMutableAttributedString::setAttributes(const AttributeSet &attributes, NSRange range)
{
    // Held, since the set may be that of a run of this text.
    const AttributeSet held = attributes;
    m_runs.change(cutToText(range), AttributeChange::replacingBy(held));
}

void NSMutableAttributedString::fixAttributesInRange(NSRange range)
{
    const NSRange cut = cutToText(range);
    enumerateAttribute(NSAttachmentAttributeName, cut, NSAttributedStringEnumerationOptions::Forward,
                       [this](const AttributeValue &value, NSRange found, bool *) {
                           if (value.isNothing()) {
                               return;
                           }
                           qint64 start = found.location;
                           while (start < found.limit()) {
                               qint64 limit = start;
                               while (limit < found.limit() && m_text.at(limit) != kObjectReplacement) {
                                   ++limit;
                               }
                               removeAttribute(NSAttachmentAttributeName, {start, limit - start});
                               start = limit + 1;
                           }
                       });
    qint64 location = cut.location;
    while (location < cut.limit()) {
        const NSRange paragraph = paragraphRangeForRange({location, 0});
        NSRange uniform;
        const AttributeValue style = attribute(NSParagraphStyleAttributeName, paragraph.location, &uniform, paragraph);
        if (uniform.length < paragraph.length) {
            addAttribute(NSParagraphStyleAttributeName, style, paragraph);
        }
        location = paragraph.limit();
    }
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
    QString text;
    text.reserve(newLength);
    AttributeRuns runs;
    qint64 done = 0;
    const auto keepUpTo = [&](qint64 limit) {
        QUIB_ASSERT(done <= limit && limit <= before.size());
        text.append(before.sliced(done, limit - done));
        runs.append(m_runs, {done, limit - done});
    };
    for (const Replacement &replacement : replacements) {
        keepUpTo(replacement.range.location);
        text.append(replacement.string);
        runs.append(replacement.attributes, replacement.string.size());
        done = replacement.range.limit();
    }
    keepUpTo(before.size());
    m_text = quib::GapText(std::move(text));
    m_runs = std::move(runs);
}
