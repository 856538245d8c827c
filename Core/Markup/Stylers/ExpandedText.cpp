#include "ExpandedText.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>

namespace quib {

QString expandedText(const NSAttributedString &attributedString, NSRange range)
{
    const QStringView plain = attributedString.stringInRange(range);
    if (!plain.contains(NSTextAttachment::placeholderString())) {
        return plain.toString();
    }
    QString text;
    attributedString.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                                        [&](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                            if (const auto *attachment = value.as<QBNotesTextAttachment>()) {
                                                text += attachment->representedText().repeated(run.length);
                                            } else {
                                                text += attributedString.stringInRange(run);
                                            }
                                        });
    return text;
}

} // namespace quib
