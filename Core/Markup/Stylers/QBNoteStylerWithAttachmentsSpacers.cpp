#include "QBNoteStylerWithAttachmentsSpacers.h"

#include "QBNoteTextStylerAttributes.h"

#include <Markup/Attachments/QBSpacerTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

/// A text without some of its spacers, and where its places are in the text.
class QBNoteStylerWithAttachmentsSpacers::TextWithoutSpacers
{
public:
    TextWithoutSpacers(QStringView text, const std::vector<Spacer> &removed)
        : m_removed(removed)
        , m_text(text)
    {
        if (removed.empty()) {
            return;
        }
        m_copy.resize(text.size() - static_cast<qsizetype>(removed.size()));
        QChar *out = m_copy.data();
        qsizetype in = 0;
        for (const Spacer &one : removed) {
            // OPTIMIZATION: unit by unit, since what stands between two spacers is mostly shorter than a call.
            for (; in < one.place; ++in) {
                *out++ = text[in];
            }
            ++in;
        }
        std::copy(text.begin() + in, text.end(), out);
        m_text = m_copy;
    }

    [[nodiscard]] QStringView text() const { return m_text; }
    /// The place in the text of a unit of this one. Requires: places are asked for in ascending order.
    [[nodiscard]] qint64 placeInText(qint64 place)
    {
        while (m_next < m_removed.size() && m_removed[m_next].place - static_cast<qint64>(m_next) <= place) {
            ++m_next;
        }
        return place + static_cast<qint64>(m_next);
    }

private:
    const std::vector<Spacer> &m_removed;
    QStringView m_text;
    QString m_copy;
    size_t m_next = 0; ///< also how many units are removed before the next
};

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
        Replacement nothing;
        auto told = removed->rbegin();
        for (; told != removed->rend() && !isStopped; ++told) {
            nothing.range = {told->place, 1};
            usingBlock(nothing.range, nothing, &isStopped);
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

std::optional<std::vector<QBNoteStylerWithAttachmentsSpacers::Spacer>>
QBNoteStylerWithAttachmentsSpacers::spacersToRemove(const NSAttributedString &attributedString, NSRange range)
{
    std::vector<NSRange> valid;
    enumerateValidAttachmentsInAttributedString(attributedString, range, [&](const auto &attachment, NSRange place) {
        if (!shouldRemoveAttachment(*attachment, attributedString, place, range) &&
            !shouldSkipAttachmentReplacementInAttributedString(attributedString, place)) {
            valid.push_back(place);
        }
    });
    const Spacers &spacers = this->spacers();
    std::vector<Spacer> found;
    bool hasText = false;
    forEachOwnAttachment(attributedString, range, [&](const PlacedAttachment &one) {
        size_t role = kOpening;
        while (role < kNoRole && one.attachment != spacers.attachments[role].get()) {
            ++role;
        }
        hasText = hasText || (role == kNoRole && !one.attachment->representedText().isEmpty());
        // Spacers of one role are one attachment: where they stand side by side, only one of them was looked at.
        if (one.range.length > 1 || (role < kNoRole && !(*one.attributes == spacers.attributes[role]))) {
            role = kNoRole;
        }
        for (qint64 place = one.range.location; place < one.range.limit(); ++place) {
            if (valid.empty() || !std::ranges::binary_search(valid, place, {}, &NSRange::location)) {
                found.push_back({place, role});
            }
        }
    });
    return hasText ? std::nullopt : std::optional(std::move(found));
}

std::vector<qint64> QBNoteStylerWithAttachmentsSpacers::placesOfSpacers(const NSAttributedString &attributedString,
                                                                        NSRange range) const
{
    std::vector<qint64> found;
    forEachOwnAttachment(attributedString, range, [&found](const PlacedAttachment &one) {
        for (qint64 place = one.range.location; place < one.range.limit(); ++place) {
            found.push_back(place);
        }
    });
    return found;
}

void QBNoteStylerWithAttachmentsSpacers::replaceSpacers(const std::vector<Spacer> &removed,
                                                        NSMutableAttributedString &attributedString, NSRange &range,
                                                        const ReplacementBlock &usingBlock)
{
    const NSRegularExpression *expression = regularExpression();
    if (expression == nullptr) {
        return;
    }
    TextWithoutSpacers bare(attributedString.string(), removed);
    NSRange searched = range;
    searched.length -= static_cast<qint64>(removed.size());
    const bool hasGuards = attributedString.containsAttribute(QBNoteSkipAttachmentReplacementAttributeName, range);
    const Spacers &spacers = this->spacers();
    const std::array shown{Replacement{{}, NSTextAttachment::placeholderString(), spacers.attributes[kOpening]},
                           Replacement{{}, NSTextAttachment::placeholderString(), spacers.attributes[kClosing]}};
    // Where spacers belong, as places of the bare text, in order: one in front of each match and one behind it.
    std::vector<Spacer> wanted;
    wanted.reserve(removed.size() + 2); // as many as there were, or a tag more
    expression->enumerateMatchesInString(bare.text(), 0, searched, [&](const NSTextCheckingResult &match, bool *stop) {
        const NSRange matched = match.range();
        if (hasGuards && shouldSkipAttachmentReplacementInAttributedString(attributedString,
                                                                           {bare.placeInText(matched.location), 1})) {
            return;
        }
        if (usingBlock) {
            // The one behind is told first, so that the place of the one in front still holds.
            const qint64 start = matched.location + static_cast<qint64>(wanted.size());
            usingBlock({start + matched.length, 0}, shown[kClosing], stop);
            usingBlock({start, 0}, shown[kOpening], stop);
        }
        wanted.push_back({matched.location, kOpening});
        wanted.push_back({matched.limit(), kClosing});
    });
    range.length = searched.length + static_cast<qint64>(wanted.size());
    // Both lists ascend: what stands where a spacer is wanted stays. Of the others, places of the text remain.
    std::vector<Spacer> gone;
    auto next = removed.begin();
    qint64 before = 0; // removed units that were passed
    auto missing = wanted.begin();
    for (const Spacer one : wanted) {
        for (; next != removed.end() && next->place - before < one.place; ++next, ++before) {
            gone.push_back(*next);
        }
        if (next == removed.end() || next->place - before > one.place) {
            *missing++ = {one.place + before, one.role};
            continue;
        }
        if (next->role != one.role) {
            attributedString.setAttributes(spacers.attributes[one.role], {next->place, 1});
        }
        ++next;
        ++before;
    }
    wanted.erase(missing, wanted.end());
    gone.insert(gone.end(), next, removed.end());
    Replacement replacement;
    attributedString.replaceCharacters(static_cast<qint64>(wanted.size()) - static_cast<qint64>(gone.size()),
                                       [&, place = wanted.begin(), left = gone.begin()]() mutable -> Replacement * {
                                           const bool isLeft = left != gone.end();
                                           if (place != wanted.end() && (!isLeft || place->place <= left->place)) {
                                               replacement.range = {place->place, 0};
                                               replacement.string = NSTextAttachment::placeholderString();
                                               replacement.attributes = spacers.attributes[place->role];
                                               ++place;
                                           } else if (isLeft) {
                                               replacement = {{left->place, 1}, QString(), quib::AttributeSet()};
                                               ++left;
                                           } else {
                                               return nullptr;
                                           }
                                           return &replacement;
                                       });
}

quib::AttributeSet QBNoteStylerWithAttachmentsSpacers::commonAttributes() const
{
    quib::AttributeSet common = themeManager() ? themeManager()->defaultTextAttributes() : quib::AttributeSet();
    if (const auto *name = spacerAttributeName()) {
        common.insert(*name, 1);
    }
    return common;
}

const QBNoteStylerWithAttachmentsSpacers::Spacers &QBNoteStylerWithAttachmentsSpacers::spacers()
{
    quib::AttributeSet common = commonAttributes();
    if (m_spacers && m_spacers->common == common) {
        return *m_spacers;
    }
    const auto first = spacerTemplate();
    Spacers made{.common = std::move(common), .attachments = {first, first->copy()}, .attributes = {}};
    for (const size_t role : {kOpening, kClosing}) {
        made.attributes[role] = made.common;
        made.attributes[role].insert(NSAttachmentAttributeName, made.attachments[role]);
    }
    m_spacers = std::move(made);
    return *m_spacers;
}

std::shared_ptr<QBNotesTextAttachment> QBNoteStylerWithAttachmentsSpacers::spacerTemplate()
{
    static const QString key = QStringLiteral("SpacerTextAttachmentCacheKey");
    if (const auto *cached = m_stylerCache.object(key)) {
        return *cached;
    }
    auto made = makeTextAttachment(QString());
    m_stylerCache.insert(key, new std::shared_ptr<QBNotesTextAttachment>(made));
    return made;
}

void QBNoteStylerWithAttachmentsSpacers::cleanStylerCache()
{
    QBNoteAttachmentTextStyler::cleanStylerCache();
    m_spacers.reset();
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
