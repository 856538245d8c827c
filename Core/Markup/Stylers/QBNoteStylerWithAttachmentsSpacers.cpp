#include "QBNoteStylerWithAttachmentsSpacers.h"

#include <Markup/Attachments/QBSpacerTextAttachment.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <vector>

using namespace Qt::StringLiterals;

void QBNoteStylerWithAttachmentsSpacers::addTextAttachmentsInAttributedString(
    NSMutableAttributedString &attributedString, NSRange &range, const ReplacementBlock &usingBlock)
{
    const NSRegularExpression *expression = regularExpression();
    if (expression == nullptr) {
        return;
    }
    quib::AttributeSet common = themeManager() ? themeManager()->defaultTextAttributes() : quib::AttributeSet();
    if (const auto *name = spacerAttributeName()) {
        common.insert(*name, 1);
    }
    std::vector<Replacement> replacements;
    qint64 offset = 0;
    const auto add = [&](qint64 place, qint64 shownPlace, bool *stop) {
        replacements.push_back({{place, 0}, NSTextAttachment::placeholderString(), spacerAttributes(common)});
        if (usingBlock) {
            usingBlock({shownPlace, 0}, replacements.back(), stop);
        }
        ++offset;
    };
    expression->enumerateMatchesInString(
        attributedString.string(), 0, range, [&](const NSTextCheckingResult &match, bool *stop) {
            const NSRange matched = match.range();
            if (shouldSkipAttachmentReplacementInAttributedString(attributedString, matched)) {
                return;
            }
            // The one behind is told first, so that the place of the one in front still holds.
            const qint64 start = matched.location + offset;
            add(matched.limit(), start + matched.length, stop);
            add(matched.location, start, stop);
            std::swap(replacements[replacements.size() - 2], replacements.back());
        });
    if (!replacements.empty()) {
        attributedString.replaceCharacters(replacements);
        range.length += offset;
    }
}

quib::AttributeSet QBNoteStylerWithAttachmentsSpacers::spacerAttributes(const quib::AttributeSet &common)
{
    static const QString key = u"SpacerTextAttachmentCacheKey"_s;
    const auto *cached = m_stylerCache.object(key);
    if (cached == nullptr) {
        cached = new std::shared_ptr<QBNotesTextAttachment>(makeTextAttachment({}));
        m_stylerCache.insert(key, const_cast<std::shared_ptr<QBNotesTextAttachment> *>(cached));
    }
    quib::AttributeSet attributes = common;
    attributes.insert(NSAttachmentAttributeName, (*cached)->copy());
    return attributes;
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
