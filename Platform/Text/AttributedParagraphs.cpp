#include "AttributedParagraphs.h"

#include "NSStringHelpers.h"

namespace quib {

QList<NSAttributedString> splitParagraphs(const NSAttributedString &attributedString)
{
    QList<NSAttributedString> paragraphs;
    qint64 start = 0;
    for (qint64 place = 0; place < attributedString.length(); ++place) {
        if (isNewline(attributedString.characterAtIndex(place))) {
            paragraphs.append(attributedString.attributedSubstringFromRange({start, place - start}));
            start = place + 1;
        }
    }
    paragraphs.append(attributedString.attributedSubstringFromRange({start, attributedString.length() - start}));
    return paragraphs;
}

NSMutableAttributedString attributedStringWithParagraphs(const QList<NSAttributedString> &paragraphs)
{
    const NSAttributedString separator(QStringLiteral("\n"));
    NSMutableAttributedString text;
    bool isFirst = true;
    for (const NSAttributedString &paragraph : paragraphs) {
        if (!isFirst) {
            text.appendAttributedString(separator);
        }
        isFirst = false;
        text.appendAttributedString(paragraph);
    }
    return text;
}

} // namespace quib
