#include "CodeRanges.h"

#include "QBNoteTextStylerAttributes.h"

#include <Text/NSAttributedString.h>

namespace quib {

NSRange codeRangeForCodeUUID(const QString &codeUUID, const NSAttributedString &inAttributedString)
{
    NSRange code = kNotFoundRange;
    inAttributedString.enumerateAttribute(
        QBNoteCodeTextStylerLanguageAttributeName, inAttributedString.fullRange(),
        NSAttributedStringEnumerationOptions::Forward, [&](const AttributeValue &value, NSRange run, bool *stop) {
            if (!value || value.stringValue() != codeUUID) {
                return;
            }
            *stop = true;
            const qint64 start = run.limit() + 1; // behind the line's end
            if (start >= inAttributedString.length()) {
                return;
            }
            NSRange longest;
            const bool isCode = inAttributedString
                                    .attribute(QBNoteCodeTextStylerAttributeName, start, &longest,
                                               {start, inAttributedString.length() - start})
                                    .boolValue();
            code = isCode ? longest : kNotFoundRange;
        });
    return code;
}

} // namespace quib
