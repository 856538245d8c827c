#include "QuotedPhraseExpression.h"

#include <Text/NSStringHelpers.h>

namespace quib::search {

namespace {

constexpr char16_t kQuote = u'"';

[[nodiscard]] bool isSpaceOrEdge(QStringView text, qint64 position)
{
    return position < 0 || position >= text.size() || isWhitespaceOrNewline(text[position].unicode());
}

} // namespace

const QuotedPhraseExpression &QuotedPhraseExpression::shared()
{
    static const QuotedPhraseExpression s_expression;
    return s_expression;
}

QuotedPhraseExpression::QuotedPhraseExpression()
    : NSRegularExpression(QStringLiteral("(?<=^|\\s)[-]?(\\\")(.+?)(\\\")(?=$|\\s)"), AnchorsMatchLines)
{
}

QuotedPhraseExpression::~QuotedPhraseExpression() = default;

void QuotedPhraseExpression::enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                                      const MatchCallback &usingBlock) const
{
    static_cast<void>(matchingOptions);
    const std::optional<NSRange> searched = rangeCutToString(string, range);
    if (!searched) {
        return;
    }
    const QStringView text = string.sliced(searched->location, searched->length);
    const qint64 offset = searched->location;
    // Both only move forward: the first quote that may close a phrase, and the end of the line that is being read.
    qint64 closing = 0;
    qint64 lineEnd = 0;
    bool stop = false;
    qint64 opening = text.indexOf(kQuote);
    while (opening >= 0 && !stop) {
        const bool hasHyphen = opening > 0 && text[opening - 1] == u'-';
        const qint64 start = hasHyphen ? opening - 1 : opening;
        qint64 next = opening + 1;
        if (isSpaceOrEdge(text, start - 1)) {
            closing = qMax(closing, opening + 2);
            while (closing < text.size() && (text[closing] != kQuote || !isSpaceOrEdge(text, closing + 1))) {
                ++closing;
            }
            lineEnd = qMax(lineEnd, opening + 1);
            while (lineEnd < text.size() && !isNewline(text[lineEnd].unicode())) {
                ++lineEnd;
            }
            if (closing < lineEnd) {
                usingBlock(NSTextCheckingResult(
                               {NSRange{offset + start, closing + 1 - start}, NSRange{offset + opening, 1},
                                NSRange{offset + opening + 1, closing - opening - 1}, NSRange{offset + closing, 1}}),
                           &stop);
                next = closing + 1;
            }
        }
        opening = text.indexOf(kQuote, next);
    }
}

} // namespace quib::search
