#include "QBNotesTextStorage.h"

#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBGenericFileTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>

#include <vector>

using quib::AttributeValue;

// Attachments as the text they stand for.

namespace {

template <typename Attachment>
void enumerateAttachments(const NSAttributedString &text, NSRange range,
                          const std::function<void(Attachment &attachment, NSRange range)> &block)
{
    text.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                            [&block](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                if (auto *attachment = value.as<Attachment>()) {
                                    block(*attachment, place);
                                }
                            });
}

/// What is folded stands where its fold does.
template <typename Attachment>
void enumerateWithFolded(const NSAttributedString &text, NSRange range,
                         const std::function<void(Attachment &attachment, NSRange range)> &block)
{
    text.enumerateAttribute(
        NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
        [&block](const AttributeValue &value, NSRange place, bool * /*stop*/) {
            if (auto *attachment = value.as<Attachment>()) {
                block(*attachment, place);
            } else if (const auto *fold = value.as<QBFoldTextAttachment>()) {
                const NSAttributedString &folded = fold->representedAttributedString();
                enumerateWithFolded<Attachment>(
                    folded, folded.fullRange(),
                    [&block, place](Attachment &inFold, NSRange /*range*/) { block(inFold, place); });
            }
        });
}

QString expanded(const NSAttributedString &text, NSRange range)
{
    const QStringView units = text.string();
    QString expanded;
    expanded.reserve(range.length);
    qint64 done = range.location;
    const quib::AttributeRuns &runs = text.runs();
    auto position = range.length > 0 ? runs.find(range.location) : quib::AttributeRuns::Position();
    while (range.length > 0 && !runs.isAtEnd(position) && position.start < range.limit()) {
        const AttributeValue *const value = runs.attributes(position).find(NSAttachmentAttributeName);
        if (const auto *attachment = value != nullptr ? value->as<QBNotesTextAttachment>() : nullptr) {
            const NSRange place = NSIntersectionRange(runs.range(position), range);
            expanded.append(units.sliced(done, place.location - done));
            // One attachment may stand side by side with itself.
            for (qint64 times = place.length; times > 0; --times) {
                expanded.append(attachment->representedText());
            }
            done = place.limit();
        }
        runs.advance(position);
        runs.advanceToNames(position, NSAttachmentAttributeName.mask(), range.limit());
    }
    expanded.append(units.sliced(done, range.limit() - done));
    return expanded;
}

} // namespace

QString QBNotesTextStorage::stringWithExpandedTextAttachments() const
{
    return expanded(attributedString(), fullRange());
}

QString QBNotesTextStorage::stringWithExpandedTextAttachmentsWithRange(NSRange range) const
{
    return expanded(attributedString(), NSIntersectionRange(range, fullRange()));
}

QString
QBNotesTextStorage::stringWithExpandedTextAttachmentsFromAttributedString(const NSAttributedString &attributedString)
{
    return expanded(attributedString, attributedString.fullRange());
}

NSAttributedString QBNotesTextStorage::attributedSubstringFromRange(NSRange range, bool expandTextAttachment) const
{
    NSMutableAttributedString part(NSTextStorage::attributedSubstringFromRange(range));
    if (expandTextAttachment) {
        std::vector<NSMutableAttributedString::Replacement> replacements;
        enumerateAttachments<QBNotesTextAttachment>(
            part, part.fullRange(), [&replacements](const QBNotesTextAttachment &attachment, NSRange place) {
                replacements.push_back({place, attachment.representedText().repeated(place.length), {}});
            });
        part.replaceCharacters(replacements);
    }
    return part;
}

void QBNotesTextStorage::enumerateImagesAttachmentsUsingBlock(
    const std::function<void(QBImageTextAttachment &attachment, NSRange range)> &block) const
{
    enumerateImagesAttachmentsInRange(fullRange(), block);
}

void QBNotesTextStorage::enumerateImagesAttachmentsInRange(
    NSRange range, const std::function<void(QBImageTextAttachment &attachment, NSRange range)> &usingBlock) const
{
    enumerateWithFolded<QBImageTextAttachment>(attributedString(), range, usingBlock);
}

void QBNotesTextStorage::enumerateFilesAttachmentsUsingBlock(
    const std::function<void(QBGenericFileTextAttachment &attachment, NSRange range)> &block) const
{
    enumerateFilesAttachmentsInRange(fullRange(), block);
}

void QBNotesTextStorage::enumerateFilesAttachmentsInRange(
    NSRange range, const std::function<void(QBGenericFileTextAttachment &attachment, NSRange range)> &usingBlock) const
{
    enumerateWithFolded<QBGenericFileTextAttachment>(attributedString(), range, usingBlock);
}

void QBNotesTextStorage::enumerateHeadersUsingBlock(
    const std::function<void(QBHeaderTextAttachment &attachment, NSRange range)> &block) const
{
    enumerateAttachments<QBHeaderTextAttachment>(
        attributedString(), fullRange(), [this, &block](QBHeaderTextAttachment &attachment, NSRange place) {
            block(attachment, attributedString().paragraphRangeForRange(place));
        });
}
