#include "QBNoteStylerWithAttachmentsSpacers.h"

#include <Markup/Attachments/QBSpacerTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace {

/// A text without some characters, and where its places are in the text.
class TextWithout
{
public:
    TextWithout(QStringView text, const std::vector<NSRange> &removed)
        : m_removed(removed)
        , m_text(text)
    {
        if (removed.empty()) {
            return;
        }
        m_copy.resize(text.size());
        QChar *out = m_copy.data();
        qint64 done = 0;
        for (const NSRange &one : removed) {
            out = std::copy(text.begin() + done, text.begin() + one.location, out);
            done = one.limit();
        }
        out = std::copy(text.begin() + done, text.end(), out);
        m_text = QStringView(m_copy.constData(), out);
    }

    [[nodiscard]] QStringView text() const { return m_text; }
    /// The place in the text of a unit of this one. Requires: places are asked for in ascending order.
    [[nodiscard]] qint64 placeInText(qint64 place)
    {
        while (m_next < m_removed.size() && m_removed[m_next].location - m_before <= place) {
            m_before += m_removed[m_next].length;
            ++m_next;
        }
        return place + m_before;
    }

private:
    const std::vector<NSRange> &m_removed;
    QStringView m_text;
    QString m_copy;
    size_t m_next = 0;
    qint64 m_before = 0; ///< how many units are removed before the next
};

} // namespace

void QBNoteStylerWithAttachmentsSpacers::replaceTextAttachmentsInAttributedString(
    NSMutableAttributedString &attributedString, NSRange &range, const ReplacementBlock &usingBlock)
{
    auto removed = spacersToRemove(attributedString, range);
    if (!removed) {
        QBNoteAttachmentTextStyler::replaceTextAttachmentsInAttributedString(attributedString, range, usingBlock);
        return;
    }
    if (usingBlock) {
        bool isStopped = false;
        auto told = removed->rbegin();
        for (; told != removed->rend() && !isStopped; ++told) {
            usingBlock(*told, {*told, QString(), quib::AttributeSet()}, &isStopped);
        }
        removed->erase(removed->begin(), told.base());
    }
    replaceSpacers(*removed, attributedString, range, usingBlock);
}

void QBNoteStylerWithAttachmentsSpacers::addTextAttachmentsInAttributedString(
    NSMutableAttributedString &attributedString, NSRange &range, const ReplacementBlock &usingBlock)
{
    replaceSpacers({}, attributedString, range, usingBlock);
}

std::optional<std::vector<NSRange>>
QBNoteStylerWithAttachmentsSpacers::spacersToRemove(const NSAttributedString &attributedString, NSRange range) const
{
    std::vector<NSRange> valid;
    enumerateValidAttachmentsInAttributedString(attributedString, range, [&](const auto &attachment, NSRange place) {
        if (!shouldRemoveAttachment(*attachment, attributedString, place, range) &&
            !shouldSkipAttachmentReplacementInAttributedString(attributedString, place)) {
            valid.push_back(place);
        }
    });
    std::vector<NSRange> found;
    for (const auto &[spacer, place] : ownAttachments(attributedString, range)) {
        if (!spacer->representedText().isEmpty()) {
            return std::nullopt;
        }
        if (!std::ranges::binary_search(valid, place.location, {}, &NSRange::location)) {
            found.push_back(place);
        }
    }
    return found;
}

void QBNoteStylerWithAttachmentsSpacers::replaceSpacers(const std::vector<NSRange> &removed,
                                                        NSMutableAttributedString &attributedString, NSRange &range,
                                                        const ReplacementBlock &usingBlock)
{
    const NSRegularExpression *expression = regularExpression();
    if (expression == nullptr) {
        return;
    }
    TextWithout bare(attributedString.string(), removed);
    NSRange searched = range;
    for (const NSRange &one : removed) {
        searched.length -= one.length;
    }
    const quib::AttributeSet common = commonAttributes();
    const auto spacer = spacerTemplate();
    std::shared_ptr<QBNotesTextAttachment> spare;
    const auto attributesOfNew = [&] {
        quib::AttributeSet attributes = common;
        auto made = std::exchange(spare, nullptr);
        if (made == nullptr) {
            std::tie(made, spare) = spacer->copyTwice();
        }
        attributes.insert(NSAttachmentAttributeName, std::move(made));
        return attributes;
    };
    const Replacement shown{{}, NSTextAttachment::placeholderString(), attributesOfNew()};
    // Where spacers belong, as places of the bare text, in order: one in front of each match and one behind it.
    std::vector<qint64> wanted;
    expression->enumerateMatchesInString(bare.text(), 0, searched, [&](const NSTextCheckingResult &match, bool *stop) {
        const NSRange matched = match.range();
        if (shouldSkipAttachmentReplacementInAttributedString(attributedString,
                                                              {bare.placeInText(matched.location), 1})) {
            return;
        }
        if (usingBlock) {
            // The one behind is told first, so that the place of the one in front still holds.
            const qint64 start = matched.location + static_cast<qint64>(wanted.size());
            usingBlock({start + matched.length, 0}, shown, stop);
            usingBlock({start, 0}, shown, stop);
        }
        wanted.push_back(matched.location);
        wanted.push_back(matched.limit());
    });
    range.length = searched.length + static_cast<qint64>(wanted.size());
    // Both lists ascend: what stands where a spacer is wanted stays. Of the others, places of the text remain.
    std::vector<NSRange> gone;
    auto next = removed.begin();
    qint64 before = 0; // removed units that were passed
    const auto pass = [&] {
        before += next->length;
        ++next;
    };
    auto missing = wanted.begin();
    for (const qint64 place : wanted) {
        for (; next != removed.end() && next->location - before < place; pass()) {
            gone.push_back(*next);
        }
        if (next != removed.end() && next->location - before == place && next->length == 1) {
            resetSpacer(attributedString, next->location, common);
            pass();
        } else {
            *missing++ = place + before;
        }
    }
    wanted.erase(missing, wanted.end());
    gone.insert(gone.end(), next, removed.end());
    qint64 change = static_cast<qint64>(wanted.size());
    for (const NSRange &one : gone) {
        change -= one.length;
    }
    Replacement replacement;
    attributedString.replaceCharacters(change,
                                       [&, place = wanted.begin(), left = gone.begin()]() mutable -> Replacement * {
                                           const bool isLeft = left != gone.end();
                                           if (place != wanted.end() && (!isLeft || *place <= left->location)) {
                                               replacement.range = {*place++, 0};
                                               replacement.string = NSTextAttachment::placeholderString();
                                               replacement.attributes = attributesOfNew();
                                           } else if (isLeft) {
                                               replacement = {*left++, QString(), quib::AttributeSet()};
                                           } else {
                                               return nullptr;
                                           }
                                           return &replacement;
                                       });
}

void QBNoteStylerWithAttachmentsSpacers::resetSpacer(NSMutableAttributedString &text, qint64 place,
                                                     const quib::AttributeSet &common)
{
    const quib::AttributeRuns &runs = text.runs();
    const quib::AttributeSet &attributes = runs.attributes(runs.find(place));
    if (!attributes.isEqualBut(NSAttachmentAttributeName, common)) {
        quib::AttributeSet fresh = common;
        fresh.insert(NSAttachmentAttributeName, attributes.value(NSAttachmentAttributeName));
        text.setAttributes(fresh, {place, 1});
    }
}

quib::AttributeSet QBNoteStylerWithAttachmentsSpacers::commonAttributes() const
{
    quib::AttributeSet common = themeManager() ? themeManager()->defaultTextAttributes() : quib::AttributeSet();
    if (const auto *name = spacerAttributeName()) {
        common.insert(*name, 1);
    }
    return common;
}

std::shared_ptr<QBSpacerTextAttachment> QBNoteStylerWithAttachmentsSpacers::spacerTemplate()
{
    static const QString key = QStringLiteral("SpacerTextAttachmentCacheKey");
    if (const auto *cached = m_stylerCache.object(key)) {
        return std::static_pointer_cast<QBSpacerTextAttachment>(*cached);
    }
    auto made = std::make_shared<QBSpacerTextAttachment>(QString(), themeManager());
    m_stylerCache.insert(key, new std::shared_ptr<QBNotesTextAttachment>(made));
    return made;
}

std::shared_ptr<QBNotesTextAttachment>
QBNoteStylerWithAttachmentsSpacers::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBSpacerTextAttachment>(representedText, themeManager());
}

bool QBNoteStylerWithAttachmentsSpacers::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBSpacerTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteStylerWithAttachmentsSpacers::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBSpacerTextAttachment));
}

void QBNoteStylerWithAttachmentsSpacers::enumerateValidAttachmentsInAttributedString(
    const NSAttributedString &attributedString, NSRange range, const AttachmentBlock &usingBlock) const
{
    const NSRegularExpression *expression = attachmentRegularExpression();
    if (expression == nullptr) {
        return;
    }
    expression->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool * /*stop*/) {
            for (const int group : {prefixAttachmentRegularExpressionTextGroupIndex(),
                                    suffixAttachmentRegularExpressionTextGroupIndex()}) {
                const NSRange place = match.rangeAtIndex(group);
                const auto attachment = attributedString.attribute(NSAttachmentAttributeName, place.location)
                                            .sharedAs<QBNotesTextAttachment>();
                if (attachment && isOwnTextAttachment(*attachment)) {
                    usingBlock(attachment, place);
                }
            }
        });
}
