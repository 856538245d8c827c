#include "QBItalicDataDetector.h"

#include <Text/DecimalDigits.h>
#include <Text/NSStringHelpers.h>

#include <QChar>

namespace {

bool isDigitBefore(QStringView text, qsizetype place)
{
    if (place <= 0) {
        return false;
    }
    const QChar unit = text[place - 1];
    if (unit.isLowSurrogate() && place >= 2 && text[place - 2].isHighSurrogate()) {
        return quib::decimalDigitValue(QChar::surrogateToUcs4(text[place - 2], unit)) >= 0;
    }
    return quib::decimalDigitValue(unit.unicode()) >= 0;
}

bool isDigitAt(QStringView text, qsizetype place)
{
    if (place >= text.size()) {
        return false;
    }
    const QChar unit = text[place];
    if (unit.isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate()) {
        return quib::decimalDigitValue(QChar::surrogateToUcs4(unit, text[place + 1])) >= 0;
    }
    return quib::decimalDigitValue(unit.unicode()) >= 0;
}

/// The end of the paragraph that begins at a place, without its terminator; next is where the one behind it begins.
qsizetype paragraphLimit(QStringView text, qsizetype start, qsizetype *next)
{
    qsizetype limit = start;
    while (limit < text.size()) {
        const char16_t unit = text[limit].unicode();
        if (unit == u'\n' || unit == u'\r' || unit == 0x85 || (unit & 0xFFFE) == 0x2028) {
            break;
        }
        ++limit;
    }
    *next = limit + (limit + 1 < text.size() && text[limit] == u'\r' && text[limit + 1] == u'\n' ? 2 : 1);
    return limit;
}

} // namespace

QBItalicDataDetector::QBItalicDataDetector(QStringList beginMarkers, QStringList endMarkers,
                                           QBItalicDataDetectorDelegate *delegate)
    // The pattern only names the markers; what matches is told by the scan below.
    : NSRegularExpression(
          QString(u'(' % NSRegularExpression::escapedPatternForString(beginMarkers.join(QString())) % u')'))
    , m_beginMarkers(std::move(beginMarkers))
    , m_endMarkers(std::move(endMarkers))
    , m_delegate(delegate)
{
}

NSTextCheckingResult QBItalicDataDetector::ranges(NSRange fromBeginRange, NSRange endRange)
{
    const NSRange between{fromBeginRange.limit(), endRange.location - fromBeginRange.limit()};
    return NSTextCheckingResult({NSUnionRange(fromBeginRange, endRange), fromBeginRange, between, endRange});
}

void QBItalicDataDetector::enumerateMatchesInString(QStringView string, Options /*matchingOptions*/, NSRange range,
                                                    const MatchCallback &usingBlock) const
{
    enumerateItalics(string, range, m_beginMarkers, m_endMarkers, m_delegate, usingBlock);
}

void QBItalicDataDetector::enumerateItalics(QStringView string, NSRange range, const QStringList &beginMarkers,
                                            const QStringList &endMarkers, QBItalicDataDetectorDelegate *delegate,
                                            const MatchCallback &usingBlock)
{
    const auto cut = quib::rangeCutToString(string, range);
    if (!cut) {
        return;
    }
    const QStringView region = string.sliced(cut->location, cut->length);
    for (qsizetype start = 0, next = 0; start < region.size(); start = next) {
        const QStringView paragraph = region.sliced(start, paragraphLimit(region, start, &next) - start);
        const qint64 offset = cut->location + start;
        for (qsizetype pair = 0; pair < beginMarkers.size(); ++pair) {
            const QString &begin = beginMarkers[pair];
            const QString &end = endMarkers[pair];
            qsizetype place = paragraph.indexOf(begin);
            while (place >= 0) {
                const qsizetype inner = place + begin.size();
                const NSRange beginRange{offset + place, begin.size()};
                if (isDigitBefore(paragraph, place) ||
                    (inner < paragraph.size() && quib::isWhitespace(paragraph[inner].unicode())) ||
                    (delegate != nullptr && !delegate->dataDetectorShouldMatchBeginMarkerInRange(beginRange))) {
                    place = paragraph.indexOf(begin, inner);
                    continue;
                }
                qsizetype close = paragraph.indexOf(end, inner);
                for (; close >= 0; close = paragraph.indexOf(end, close + end.size())) {
                    const NSRange endRange{offset + close, end.size()};
                    if (!quib::isWhitespace(paragraph[close - 1].unicode()) &&
                        !isDigitAt(paragraph, close + end.size()) &&
                        (delegate == nullptr || delegate->dataDetectorShouldMatchEndMarkerInRange(endRange))) {
                        bool stop = false;
                        usingBlock(ranges(beginRange, endRange), &stop);
                        if (stop) {
                            return;
                        }
                        break;
                    }
                }
                // Without an end the paragraph is done for this pair.
                place = close < 0 ? -1 : paragraph.indexOf(begin, close + end.size());
            }
        }
    }
}
