#include "DelimitedScanner.h"

#include "SyntaxCharacters.h"

#include <algorithm>

namespace quib::syntax {

DelimitedScanner::DelimitedScanner(const QString &pattern, Rule rule)
    : SyntaxScanner(pattern, AnchorsMatchLines)
    , m_rule(std::move(rule))
{
}

qsizetype DelimitedScanner::markerLength(QStringView region, qsizetype place, const QStringList &markers)
{
    for (const QString &marker : markers) {
        if (region.sliced(place).startsWith(marker)) {
            return marker.size();
        }
    }
    return 0;
}

bool DelimitedScanner::standsAloneAt(QStringView region, qsizetype place, qsizetype length) const
{
    if (!m_rule.standsAlone) {
        return true;
    }
    const QChar unit = region[place];
    return (place == 0 || region[place - 1] != unit) &&
           (place + length >= region.size() || region[place + length] != unit);
}

DelimitedScanner::Closing DelimitedScanner::closingAt(QStringView region, qsizetype place) const
{
    if (place >= region.size()) {
        return {};
    }
    // The colon is taken where it can be; where the marker does not follow it, it is the marker's own.
    for (qsizetype start = place + (m_rule.takesColon && region[place] == u':' ? 1 : 0); start >= place; --start) {
        const qsizetype length = markerLength(region, start, m_rule.closers);
        if (length > 0 && standsAloneAt(region, start, length) &&
            (!m_rule.needsBoundaries || isInlineEnd(region, start + length))) {
            return {start, start + length};
        }
    }
    return {};
}

/// The closing markers behind a character that is no white space, found from left to right and each looked for once: a
/// line of opening markers that nothing closes is searched once, not once a marker.
class DelimitedScanner::Closers
{
public:
    Closers(const DelimitedScanner &scanner, QStringView region)
        : m_scanner(scanner)
        , m_region(region)
    {
        for (const QString &closer : scanner.m_rule.closers) {
            m_firstUnits.append(closer.front());
        }
        if (scanner.m_rule.takesColon && !m_firstUnits.contains(u':')) {
            m_firstUnits.append(u':');
        }
    }

    /// The first place at or behind another, on the line of lineStart, where content may end and a marker follows.
    qsizetype find(qsizetype lineStart, qsizetype from)
    {
        if (lineStart < m_lineFrom || lineStart > m_lineLimit) {
            m_lineFrom = lineStart;
            m_lineLimit = lineLimit(m_region, lineStart);
            m_searchedFrom = -1;
        }
        if (m_searchedFrom < 0 || from < m_searchedFrom || (m_found >= 0 && from > m_found)) {
            m_searchedFrom = from;
            m_found = search(from);
        }
        return m_found;
    }

private:
    qsizetype search(qsizetype from) const
    {
        for (qsizetype place = from; place < m_lineLimit; ++place) {
            const QChar unit = m_region[place];
            if (std::find(m_firstUnits.begin(), m_firstUnits.end(), unit) != m_firstUnits.end() &&
                !isSpace(m_region[place - 1].unicode()) && m_scanner.closingAt(m_region, place).start >= 0) {
                return place;
            }
        }
        return -1;
    }

    const DelimitedScanner &m_scanner;
    QStringView m_region;
    QString m_firstUnits;
    qsizetype m_lineFrom = 0;
    qsizetype m_lineLimit = -1;
    qsizetype m_searchedFrom = -1;
    qsizetype m_found = -1;
};

void DelimitedScanner::scan(QStringView region, Sink &sink) const
{
    Closers closers(*this, region);
    const QChar first = m_rule.openers.constFirst().front();
    const QChar second = m_rule.openers.constLast().front();
    qsizetype nextFirst = region.indexOf(first);
    qsizetype nextSecond = second == first ? -1 : region.indexOf(second);
    qsizetype place = 0;
    for (;;) {
        if (nextFirst >= 0 && nextFirst < place) {
            nextFirst = region.indexOf(first, place);
        }
        if (nextSecond >= 0 && nextSecond < place) {
            nextSecond = region.indexOf(second, place);
        }
        if (nextFirst < 0 && nextSecond < 0) {
            return;
        }
        place = nextFirst < 0 ? nextSecond : nextSecond < 0 ? nextFirst : std::min(nextFirst, nextSecond);
        const qsizetype length = markerLength(region, place, m_rule.openers);
        const qsizetype inner = place + length;
        if (length == 0 || !standsAloneAt(region, place, length) ||
            (m_rule.needsBoundaries && !isInlineBegin(region, place))) {
            ++place;
            continue;
        }
        // Content in the pattern's order: none, one character, more of them as few as will do.
        qsizetype contentLimit = inner;
        Closing closing = closingAt(region, inner);
        if (closing.start < 0 && inner < region.size() && !isSpace(region[inner].unicode())) {
            const qsizetype firstLimit = inner + codePointLength(region, inner);
            contentLimit = firstLimit;
            closing = closingAt(region, firstLimit);
            if (closing.start < 0 && firstLimit < region.size()) {
                contentLimit = closers.find(firstLimit, firstLimit + 1);
                if (contentLimit >= 0) {
                    closing = closingAt(region, contentLimit);
                }
            }
        }
        if (closing.start < 0) {
            ++place;
            continue;
        }
        if (!sink.match(
                {{place, closing.limit}, {place, inner}, {inner, contentLimit}, {closing.start, closing.limit}})) {
            return;
        }
        place = closing.limit;
    }
}

} // namespace quib::syntax
