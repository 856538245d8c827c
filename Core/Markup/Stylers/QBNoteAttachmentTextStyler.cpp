#include "QBNoteAttachmentTextStyler.h"

#include "ExpandedText.h"
#include "QBNoteTextStylerAttributes.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <typeinfo>
#include <vector>

using quib::AttributeSet;
using quib::AttributeValue;

namespace {

/// Calls take(value, range, attributes) for each attachment that is wanted, in order. It answers with where it put the
/// range, which grows as long as the same attachment goes on.
template <typename IsWanted, typename Take>
void walkAttachments(const NSAttributedString &attributedString, NSRange range, quib::AttributeNameMask classes,
                     const IsWanted &isWanted, const Take &take)
{
    const NSRange cut = NSIntersectionRange(range, attributedString.fullRange());
    if (cut.length == 0) {
        return;
    }
    const quib::AttributeRuns &runs = attributedString.runs();
    const std::type_info *lastClass = nullptr;
    bool isLastWanted = false;
    const NSTextAttachment *last = nullptr;
    NSRange *lastRange = nullptr;
    auto position = runs.find(cut.location);
    for (runs.advanceToNames(position, classes, cut.limit()); !runs.isAtEnd(position) && position.start < cut.limit();
         runs.advance(position), runs.advanceToNames(position, classes, cut.limit())) {
        const AttributeSet &attributes = runs.attributes(position);
        const AttributeValue *const value = attributes.find(NSAttachmentAttributeName);
        const auto *attachment = value != nullptr ? value->as<NSTextAttachment>() : nullptr;
        if (attachment == nullptr) {
            continue;
        }
        if (const auto &itsClass = typeid(*attachment); lastClass == nullptr || itsClass != *lastClass) {
            lastClass = &itsClass;
            const auto *note = dynamic_cast<const QBNotesTextAttachment *>(attachment);
            isLastWanted = note != nullptr && isWanted(*note);
        }
        if (!isLastWanted) {
            continue;
        }
        const NSRange place = NSIntersectionRange(runs.range(position), cut);
        if (attachment == last && lastRange->limit() == place.location) {
            lastRange->length += place.length;
        } else {
            last = attachment;
            lastRange = take(*value, place, attributes);
        }
    }
}

} // namespace

void QBNoteAttachmentTextStyler::replaceTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString,
                                                                          NSRange &range,
                                                                          const ReplacementBlock &usingBlock)
{
    removeUnusedTextAttachmentsInAttributedString(attributedString, range, usingBlock);
    addTextAttachmentsInAttributedString(attributedString, range, usingBlock);
}

void QBNoteAttachmentTextStyler::removeUnusedTextAttachmentsInAttributedString(
    NSMutableAttributedString &attributedString, NSRange &range, const ReplacementBlock &usingBlock)
{
    struct Found
    {
        std::shared_ptr<QBNotesTextAttachment> attachment;
        NSRange range;
        bool isValid = false;
    };
    std::vector<Found> found;
    enumerateOwnAttachments(attributedString, range, [&](const auto &attachment, NSRange place) {
        found.push_back({attachment, place});
    });
    if (found.empty()) {
        return;
    }
    size_t next = 0;
    enumerateValidAttachmentsInAttributedString(
        attributedString, range, [&](const auto & /*attachment*/, NSRange place) {
            while (next < found.size() && found[next].range.location < place.location) {
                ++next;
            }
            if (next < found.size() && found[next].range == place) {
                found[next].isValid = true;
            }
        });
    std::vector<Replacement> replacements;
    bool isStopped = false;
    qint64 change = 0;
    for (auto candidate = found.rbegin(); candidate != found.rend() && !isStopped; ++candidate) {
        if (candidate->isValid &&
            !shouldRemoveAttachment(*candidate->attachment, attributedString, candidate->range, range) &&
            !shouldSkipAttachmentReplacementInAttributedString(attributedString, candidate->range)) {
            continue;
        }
        AttributeSet attributes = attributedString.attributesAtIndex(candidate->range.location);
        attributes.remove(NSAttachmentAttributeName);
        const QString text = candidate->attachment->representedText();
        replacements.push_back({candidate->range, text, attributes});
        if (usingBlock) {
            usingBlock(candidate->range, replacements.back(), &isStopped);
        }
        change += text.size() - candidate->range.length;
    }
    if (replacements.empty()) {
        return;
    }
    std::reverse(replacements.begin(), replacements.end());
    attributedString.replaceCharacters(replacements);
    range.length += change;
}

void QBNoteAttachmentTextStyler::addTextAttachmentsInAttributedString(NSMutableAttributedString &attributedString,
                                                                      NSRange &range,
                                                                      const ReplacementBlock &usingBlock)
{
    const NSRegularExpression *expression = regularExpression();
    if (expression == nullptr) {
        return;
    }
    const bool hasGuards = attributedString.containsAttribute(QBNoteSkipAttachmentReplacementAttributeName, range);
    // Placed in one pass at the end: until then every match and every guard is seen where it was found.
    std::vector<Replacement> replacements;
    qint64 offset = 0;
    expression->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool *stop) {
            if (hasGuards && shouldSkipAttachmentReplacementInAttributedString(attributedString, match.range())) {
                return;
            }
            const NSRange matched = matchedRangeForTextCheckingResult(match);
            if (!matched.isFound()) {
                return;
            }
            // A match may take attachments of earlier stylers in: what they stand for goes into the new one's text.
            const QString representedText = quib::expandedText(attributedString, matched);
            auto attributes = attributesWithTextAttachmentForRepresentedText(representedText);
            if (!attributes) {
                return;
            }
            AttributeSet kept = attributedString.attributesAtIndex(matched.location);
            kept.remove(NSAttachmentAttributeName);
            attributes->insert(kept);
            const NSRange replaced = offsetMatchedRange(matched, representedText);
            replacements.push_back({replaced, NSTextAttachment::placeholderString(), std::move(*attributes)});
            if (usingBlock) {
                usingBlock({replaced.location + offset, replaced.length}, replacements.back(), stop);
            }
            offset += replacements.back().string.size() - replaced.length;
        });
    if (!replacements.empty()) {
        attributedString.replaceCharacters(replacements);
        range.length += offset;
    }
}

void QBNoteAttachmentTextStyler::cleanStylerCache()
{
    m_stylerCache.clear();
}

std::optional<NSAttributedString>
QBNoteAttachmentTextStyler::attributedStringWithTextAttachmentForRepresentedText(const QString &representedText)
{
    const auto attributes = attributesWithTextAttachmentForRepresentedText(representedText);
    return attributes ? std::optional(NSAttributedString(NSTextAttachment::placeholderString(), *attributes))
                      : std::nullopt;
}

std::optional<AttributeSet>
QBNoteAttachmentTextStyler::attributesWithTextAttachmentForRepresentedText(const QString &representedText)
{
    const QString key = QString(QStringLiteral("textAttachmentCache") % representedText);
    const bool isCached = shouldCacheTextAttachment() && representedText.size() <= kLongestCachedText;
    if (const auto *cached = isCached ? m_stylerCache.object(key) : nullptr) {
        return attributesWithTextAttachment((*cached)->copy());
    }
    const auto attachment = makeTextAttachment(representedText);
    if (!attachment) {
        return std::nullopt;
    }
    if (isCached) {
        m_stylerCache.insert(key, new std::shared_ptr<QBNotesTextAttachment>(attachment->copy()));
    }
    return attributesWithTextAttachment(attachment);
}

AttributeSet
QBNoteAttachmentTextStyler::attributesWithTextAttachment(const std::shared_ptr<QBNotesTextAttachment> &attachment) const
{
    AttributeSet attributes = themeManager() ? themeManager()->defaultTextAttributes() : AttributeSet();
    attributes.insert(NSAttachmentAttributeName, attachment);
    return attributes;
}

NSRange QBNoteAttachmentTextStyler::matchedRangeForTextCheckingResult(const NSTextCheckingResult &result) const
{
    return result.rangeAtIndex(stylerRegularExpressionRepresentedTextGroupIndex());
}

NSRange QBNoteAttachmentTextStyler::offsetMatchedRange(NSRange range, const QString & /*forMatchedString*/) const
{
    return range;
}

bool QBNoteAttachmentTextStyler::shouldRemoveAttachment(const QBNotesTextAttachment & /*attachment*/,
                                                        const NSAttributedString & /*inAttributedString*/,
                                                        NSRange /*attachmentRange*/, NSRange /*editedRange*/) const
{
    return false;
}

bool QBNoteAttachmentTextStyler::shouldSkipAttachmentReplacementInAttributedString(
    const NSAttributedString &attributedString, NSRange range)
{
    return attributedString.attribute(QBNoteSkipAttachmentReplacementAttributeName, range.location).boolValue();
}

void QBNoteAttachmentTextStyler::enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString,
                                                                             NSRange range,
                                                                             const AttachmentBlock &usingBlock) const
{
    const NSRegularExpression *expression = attachmentRegularExpression();
    if (expression == nullptr) {
        return;
    }
    expression->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool * /*stop*/) {
            const NSRange place = match.rangeAtIndex(attachmentRegularExpressionTextGroupIndex());
            const auto attachment =
                attributedString.attribute(NSAttachmentAttributeName, place.location).sharedAs<QBNotesTextAttachment>();
            if (attachment && isOwnTextAttachment(*attachment)) {
                usingBlock(attachment, place);
            }
        });
}

void QBNoteAttachmentTextStyler::enumerateOwnAttachments(const NSAttributedString &attributedString, NSRange range,
                                                         const AttachmentBlock &usingBlock) const
{
    enumerateAttachments(
        attributedString, range, ownTextAttachmentClasses(),
        [this](const QBNotesTextAttachment &attachment) { return isOwnTextAttachment(attachment); }, usingBlock);
}

void QBNoteAttachmentTextStyler::enumerateAttachments(
    const NSAttributedString &attributedString, NSRange range, quib::AttributeNameMask classes,
    const std::function<bool(const QBNotesTextAttachment &attachment)> &isWanted, const AttachmentBlock &usingBlock)
{
    // Collected first: the runs are walked without a look-up each, and the block may change attributes.
    struct Wanted
    {
        std::shared_ptr<QBNotesTextAttachment> attachment;
        NSRange range;
    };
    std::vector<Wanted> found;
    walkAttachments(
        attributedString, range, classes, isWanted,
        [&found](const AttributeValue &value, NSRange place, const AttributeSet & /*attributes*/) {
            // The class is known: every wanted one is of the family.
            found.push_back(
                {std::static_pointer_cast<QBNotesTextAttachment>(value.sharedAs<NSTextAttachment>()), place});
            return &found.back().range;
        });
    for (const Wanted &one : found) {
        usingBlock(one.attachment, one.range);
    }
}

void QBNoteAttachmentTextStyler::forEachOwnAttachment(
    const NSAttributedString &attributedString, NSRange range,
    const std::function<void(const PlacedAttachment &placed)> &block) const
{
    PlacedAttachment last;
    walkAttachments(
        attributedString, range, ownTextAttachmentClasses(),
        [this](const QBNotesTextAttachment &attachment) { return isOwnTextAttachment(attachment); },
        [&](const AttributeValue &value, NSRange place, const AttributeSet &attributes) {
            if (last.attachment != nullptr) {
                block(last);
            }
            // The class is known: every wanted one is of the family.
            last = {static_cast<const QBNotesTextAttachment *>(value.as<NSTextAttachment>()), place, &attributes};
            return &last.range;
        });
    if (last.attachment != nullptr) {
        block(last);
    }
}
