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
/// A text that became shorter gives back what is more than one such part of it.
constexpr qsizetype kMostSpareRoom = 8;

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
    copy.m_runs.appendApart(text.runs(), cut, AttributeChange::resetting(withoutNames, withAttributes));
    return copy;
}

void NSMutableAttributedString::reset(std::span<const NSAttributeName> withoutNames, const AttributeSet &withAttributes)
{
    m_fixed = {};
    m_runs.changeAllApart(AttributeChange::resetting(withoutNames, withAttributes));
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
    m_fixed = {};
    m_runs.change(cutToText(range), AttributeChange::insertingValue(name, value));
}

void NSMutableAttributedString::addAttributes(const AttributeSet &attributes, NSRange range)
{
    if (!attributes.isEmpty()) {
        m_fixed = {};
        m_runs.change(cutToText(range), AttributeChange::insertingSet(attributes));
    }
}

void NSMutableAttributedString::removeAttribute(const NSAttributeName &name, NSRange range)
{
    removeAttributes(std::span(&name, 1), range);
}

void NSMutableAttributedString::removeAttributes(std::span<const NSAttributeName> names, NSRange range)
{
    m_fixed = {};
    m_runs.change(cutToText(range), AttributeChange::removing(names));
}

void NSMutableAttributedString::addAttributes(std::span<Addition> additions)
{
    for (size_t index = 0; index < additions.size(); ++index) {
        QUIB_ASSERT(index == 0 || additions[index - 1].range.limit() <= additions[index].range.location);
        QUIB_ASSERT(additions[index].range.limit() <= length());
    }
    m_fixed = {};
    m_runs.insert(additions);
}

void NSMutableAttributedString::removeAndAddAttributes(std::span<const NSAttributeName> names,
                                                       const AttributeSet &attributes, NSRange range)
{
    // Held, since the set may be that of a run of this text.
    const AttributeSet held = attributes;
    m_fixed = {};
    m_runs.change(cutToText(range), AttributeChange::resetting(names, held));
}

void NSMutableAttributedString::setAttributes(const AttributeSet &attributes, NSRange range)
{
    // Held, since the set may be that of a run of this text.
    const AttributeSet held = attributes;
    m_fixed = {};
    m_runs.change(cutToText(range), AttributeChange::replacingBy(held));
}

void NSMutableAttributedString::fixAttributesInRange(NSRange range)
{
    const NSRange cut = cutToText(range);
    if (cut.length == 0) {
        return;
    }
    // Whole paragraphs. Only where two runs meet inside of one can it have more than one style.
    const NSRange paragraphs = paragraphRangeForRange(cut);
    if (NSIntersectionRange(paragraphs, m_fixed) == paragraphs) {
        return;
    }
    std::vector<NSRange> misplaced;
    std::vector<NSRange> mixed;
    ParagraphStyles styles;
    AttributeRuns::Position position = m_runs.find(paragraphs.location);
    const AttributeValue *style = styles.of(m_runs.attributes(position));
    qint64 checked = paragraphs.location; // all before it is, or is known to be mixed
    for (; !m_runs.isAtEnd(position) && position.start < paragraphs.limit(); m_runs.advance(position)) {
        const AttributeSet &attributes = m_runs.attributes(position);
        // OPTIMIZATION: most objects are attachments, and most stand where they belong.
        if (attributes.hasObjects() &&
            !(m_runs.range(position).length == 1 && m_text.at(position.start) == kObjectReplacement)) {
            addMisplacedAttachments(position, cut, misplaced);
        }
        const AttributeValue *other = styles.of(attributes);
        const bool isSame = style == other || (style != nullptr && other != nullptr && *style == *other);
        if (!isSame && position.start > checked && !isParagraphStart(position.start)) {
            mixed.push_back(paragraphRangeForRange({position.start, 0}));
            checked = mixed.back().limit();
        }
        style = other;
    }
    for (const NSRange one : misplaced) {
        removeAttribute(NSAttachmentAttributeName, one);
    }
    for (const NSRange paragraph : mixed) {
        fixParagraphStyle(paragraph);
    }
    // Attachments are looked for in the range alone.
    if (cut == paragraphs) {
        m_fixed = paragraphs;
    }
}

bool NSMutableAttributedString::isWholeParagraphs(NSRange range) const
{
    return (range.location == length() || isParagraphStart(range.location)) &&
           (range.limit() == length() || isParagraphStart(range.limit()));
}

void NSMutableAttributedString::addMisplacedAttachments(AttributeRuns::Position position, NSRange range,
                                                        std::vector<NSRange> &misplaced) const
{
    const NSRange run = NSIntersectionRange(m_runs.range(position), range);
    if (!m_runs.attributes(position).contains(NSAttachmentAttributeName)) {
        return;
    }
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
    m_fixed = {};
    m_text.replace(cut, withString);
    m_runs.replace(cut, withString.size(), attributes);
}

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, NSAttributedString withAttributedString)
{
    const NSRange cut = cutToText(range);
    NSMutableAttributedString taken(std::move(withAttributedString));
    const bool isFixed = taken.m_fixed.length > 0 && taken.m_fixed == taken.fullRange();
    m_text.replace(cut, taken.string());
    m_runs.replace(cut, std::move(taken.m_runs));
    const NSRange placed{cut.location, taken.length()};
    m_fixed = isFixed && isWholeParagraphs(placed) ? placed : NSRange{};
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
    bool isNeverLonger = true;
    for (const Replacement &replacement : replacements) {
        change += replacement.string.size() - replacement.range.length;
        isNeverLonger = isNeverLonger && change <= 0;
    }
    auto next = replacements.begin();
    rewrite(change, isNeverLonger, [&next, &replacements] { return next != replacements.end() ? &*next++ : nullptr; });
}

void NSMutableAttributedString::replaceCharacters(qint64 changeInLength, const NextReplacement &next)
{
    rewrite(changeInLength, /*isOverItself=*/false, next);
}

template <typename Next>
void NSMutableAttributedString::rewrite(qint64 changeInLength, bool isOverItself, const Next &next)
{
    auto *replacement = next();
    if (replacement == nullptr) {
        return;
    }
    m_fixed = {};
    AttributeRunsRewriter runs(m_runs, fullRange());
    QString before = m_text.take();
    const qint64 length = before.size();
    QString made = isOverItself ? QString() : QString(length + changeInLength, Qt::Uninitialized);
    QChar *out = isOverItself ? before.data() : made.data();
    const QChar *in = isOverItself ? out : before.constData();
    const auto write = [&out](const QChar *piece, qint64 size) {
        out = out == piece ? out + size : std::copy_n(piece, size, out);
    };
    qint64 done = 0;
    for (; replacement != nullptr; replacement = next()) {
        const NSRange range = replacement->range;
        QUIB_ASSERT(done <= range.location && range.limit() <= length);
        write(in + done, range.location - done);
        write(replacement->string.constData(), replacement->string.size());
        runs.keepTo(range.location);
        runs.skipTo(range.limit());
        runs.add(std::move(replacement->attributes), replacement->string.size());
        done = range.limit();
    }
    write(in + done, length - done);
    runs.finish();
    QUIB_ASSERT(out == (isOverItself ? before.constData() : made.constData()) + length + changeInLength);
    if (isOverItself) {
        before.truncate(length + changeInLength);
        if (before.capacity() - before.size() > before.size() / kMostSpareRoom) {
            before.squeeze();
        }
        made = std::move(before);
    }
    m_text = quib::GapText(std::move(made));
}
