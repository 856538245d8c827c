#include "TextlessAttachments.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>

namespace quib {

bool isTextlessAttachment(const NSAttributedString &text, qint64 place)
{
    // OPTIMIZATION: no attributes are asked for where no attachment can be.
    if (text.characterAtIndex(place) != QChar::ObjectReplacementCharacter) {
        return false;
    }
    const auto value = text.attribute(NSAttachmentAttributeName, place);
    const auto *attachment = value.as<QBNotesTextAttachment>();
    return attachment != nullptr && attachment->representedText().isEmpty();
}

NSRange rangeWithTextlessAttachments(const NSAttributedString &text, NSRange range)
{
    qint64 start = range.location;
    qint64 limit = range.limit();
    while (start > 0 && isTextlessAttachment(text, start - 1)) {
        --start;
    }
    while (limit < text.length() && isTextlessAttachment(text, limit)) {
        ++limit;
    }
    return {start, limit - start};
}

} // namespace quib
