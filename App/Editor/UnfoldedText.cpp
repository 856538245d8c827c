#include "UnfoldedText.h"

#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/QBNotesTextStorage.h>
#include <Text/NSAttributeName.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace quib {

UnfoldedText::UnfoldedText(const NSAttributedString &shown)
    : m_shown(shown)
{
    std::vector<NSAttributedString> folded;
    qint64 added = 0;
    shown.enumerateAttribute(NSAttachmentAttributeName, shown.fullRange(),
                             NSAttributedStringEnumerationOptions::Forward,
                             [&](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                 const auto *fold = value.as<QBFoldTextAttachment>();
                                 if (fold == nullptr) {
                                     return;
                                 }
                                 // A fold may have others within it.
                                 const NSAttributedString &content = fold->representedAttributedString();
                                 folded.emplace_back(UnfoldedText(content).text());
                                 const qint64 length = folded.back().length();
                                 m_folds.push_back({place.location, {place.location + added, length}});
                                 added += length - place.length;
                             });
    if (m_folds.empty()) {
        return;
    }
    m_opened.emplace(shown);
    for (size_t i = m_folds.size(); i-- > 0;) {
        m_opened->replaceCharactersInRange({m_folds[i].shown, 1}, folded[i]);
    }
}

const UnfoldedText::Fold *UnfoldedText::foldBefore(qint64 place) const
{
    const auto next = std::lower_bound(m_folds.cbegin(), m_folds.cend(), place,
                                       [](const Fold &fold, qint64 limit) { return fold.opened.location < limit; });
    return next == m_folds.cbegin() ? nullptr : &*std::prev(next);
}

QString UnfoldedText::expandedString(NSRange range) const
{
    const QStringView plain = string().sliced(range.location, range.length);
    if (!plain.contains(QChar::ObjectReplacementCharacter)) {
        return plain.toString();
    }
    return QBNotesTextStorage::stringWithExpandedTextAttachmentsFromAttributedString(
        text().attributedSubstringFromRange(range));
}

NSRange UnfoldedText::rangeWithWholeFolds(NSRange range) const
{
    NSRange whole = range;
    if (const Fold *first = foldBefore(range.location + 1);
        first != nullptr && first->opened.limit() > range.location) {
        whole = NSUnionRange(whole, first->opened);
    }
    if (const Fold *last = foldBefore(range.limit()); last != nullptr && last->opened.limit() > range.limit()) {
        whole = NSUnionRange(whole, last->opened);
    }
    return whole;
}

NSRange UnfoldedText::shownRange(NSRange range) const
{
    const NSRange whole = rangeWithWholeFolds(range);
    const auto shownPlace = [this](qint64 place) {
        const Fold *fold = foldBefore(place);
        return fold == nullptr ? place : fold->shown + 1 + place - fold->opened.limit();
    };
    const qint64 start = shownPlace(whole.location);
    return {start, shownPlace(whole.limit()) - start};
}

qint64 UnfoldedText::openedPlace(qint64 shown) const
{
    const auto next = std::lower_bound(m_folds.cbegin(), m_folds.cend(), shown,
                                       [](const Fold &fold, qint64 limit) { return fold.shown < limit; });
    return next == m_folds.cbegin() ? shown : std::prev(next)->opened.limit() + shown - (std::prev(next)->shown + 1);
}

NSRange UnfoldedText::rangeOfShownRange(NSRange shown) const
{
    const qint64 start = openedPlace(shown.location);
    return {start, openedPlace(shown.limit()) - start};
}

std::vector<qint64> foldsInRange(const NSAttributedString &text, NSRange range)
{
    std::vector<qint64> folds;
    text.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                            [&folds](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                if (value.as<QBFoldTextAttachment>() != nullptr) {
                                    folds.push_back(place.location);
                                }
                            });
    return folds;
}

} // namespace quib
