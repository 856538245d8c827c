#include "QBTagDataDetector.h"

#include "TagScanner.h"

#include <Markup/Syntax/QBNoteTextStylerRegexHelper.h>
#include <Text/NSStringHelpers.h>

namespace {

constexpr NSRegularExpression::Options kTagOptions = NSRegularExpression::AnchorsMatchLines;

[[nodiscard]] qint64 nextHash(QStringView text, qint64 position)
{
    const qsizetype found = text.indexOf(u'#', position);
    return found < 0 ? text.size() : found;
}

} // namespace

const QString &QBTagDataDetector::singleTagRegularExpressionPattern()
{
    static const QString s_pattern =
        QStringLiteral("%1(?!#{2,}|%2\\s|%2$)#(?!/)(?![0-9-]+%3)\\S+?%3")
            .arg(QBNoteTextStylerRegexHelper::inlineBeginPattern(), QBNoteTextStylerRegexHelper::hexColorPattern(),
                 QBNoteTextStylerRegexHelper::inlineEndPattern());
    return s_pattern;
}

const QString &QBTagDataDetector::multiWordTagRegularExpressionPattern()
{
    static const QString s_pattern =
        QStringLiteral("(?!#{2,}|%1\\s|%1$)#%2#")
            .arg(QBNoteTextStylerRegexHelper::hexColorPattern(),
                 QBNoteTextStylerRegexHelper::inlineNonEmptyContentWithoutBoundarySpacesExludingCharacters(
                     QStringLiteral("#\n")));
    return s_pattern;
}

const NSRegularExpression &QBTagDataDetector::singleTagRegularExpression()
{
    static const NSRegularExpression s_expression(singleTagRegularExpressionPattern(), kTagOptions);
    return s_expression;
}

const QBTagDataDetector &QBTagDataDetector::sharedDetector()
{
    static const QBTagDataDetector s_detector;
    return s_detector;
}

QBTagDataDetector::QBTagDataDetector()
    : NSRegularExpression(multiWordTagRegularExpressionPattern() + u'|' + singleTagRegularExpressionPattern(),
                          kTagOptions)
{
}

QBTagDataDetector::~QBTagDataDetector() = default;

void QBTagDataDetector::enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                                 const MatchCallback &usingBlock) const
{
    static_cast<void>(matchingOptions);
    const std::optional<NSRange> searched = quib::rangeCutToString(string, range);
    if (!searched) {
        return;
    }
    // OPTIMIZATION: every tag begins with a hash, and neither form needs to look behind the next hash or line end that
    // it does not take: one pass gives the pattern's matches. At one place the closed form wins.
    const QStringView text = string.sliced(searched->location, searched->length);
    qint64 position = nextHash(text, 0);
    bool stop = false;
    while (position < text.size() && !stop) {
        const qint64 next = nextHash(text, position + 1);
        NSRange content = kNotFoundRange;
        qint64 length = quib::tags::lengthOfClosedTagAt(text, position, next);
        if (length > 0) {
            content = {searched->location + position + 1, length - 2};
        } else {
            length = quib::tags::lengthOfSingleTagAt(text, position);
        }
        if (length == 0) {
            position = next;
            continue;
        }
        usingBlock(NSTextCheckingResult({NSRange{searched->location + position, length}, content}), &stop);
        position = nextHash(text, position + length);
    }
}
