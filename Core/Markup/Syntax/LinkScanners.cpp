#include "LinkScanners.h"

#include "SyntaxCharacters.h"

#include <algorithm>

namespace quib::syntax {

namespace {

/// The first place at or behind another that holds one of some units, or the region's end.
qsizetype placeOfAny(QStringView region, qsizetype from, QStringView units)
{
    while (from < region.size() && !units.contains(region[from])) {
        ++from;
    }
    return from;
}

bool isUnit(QStringView region, qsizetype place, char16_t unit)
{
    return place < region.size() && region[place] == unit;
}

} // namespace

void TitledURLScanner::scan(QStringView region, Sink &sink) const
{
    for (qsizetype place = region.indexOf(u'['); place >= 0; place = region.indexOf(u'[', place)) {
        const qsizetype titleLimit = placeOfAny(region, place + 1, u"][\n");
        if (titleLimit == place + 1 || !isUnit(region, titleLimit, u']') || !isUnit(region, titleLimit + 1, u'(') ||
            isUnit(region, titleLimit + 2, u'\uFFFC')) {
            place = std::max(place + 1, isUnit(region, titleLimit, u'[') ? titleLimit : place + 1);
            continue;
        }
        const qsizetype linkStart = titleLimit + 2;
        const qsizetype linkLimit = placeOfAny(region, linkStart, u")(\n");
        if (linkLimit == linkStart || !isUnit(region, linkLimit, u')')) {
            ++place;
            continue;
        }
        if (!sink.match({{place, linkLimit + 1}, {place + 1, titleLimit}, {linkStart, linkLimit}})) {
            return;
        }
        place = linkLimit + 1;
    }
}

void MarkdownImageScanner::scan(QStringView region, Sink &sink) const
{
    for (qsizetype place = region.indexOf(u"!["); place >= 0; place = region.indexOf(u"![", place)) {
        const qsizetype altStart = place + 2;
        const qsizetype altLimit = placeOfAny(region, altStart, u"][\n");
        const qsizetype linkStart = altLimit + 2;
        if (!isUnit(region, altLimit, u']') || !isUnit(region, altLimit + 1, u'(')) {
            ++place;
            continue;
        }
        const qsizetype linkLimit = placeOfAny(region, linkStart, u")(");
        if (linkLimit == linkStart || !isUnit(region, linkLimit, u')')) {
            ++place;
            continue;
        }
        if (!sink.match({{place, linkLimit + 1}, {altStart, altLimit}, {linkStart, linkLimit}})) {
            return;
        }
        place = linkLimit + 1;
    }
}

void LinkedNoteScanner::scan(QStringView region, Sink &sink) const
{
    constexpr QStringView kMiddle = u"](quib";
    qsizetype middle = region.indexOf(kMiddle);
    qsizetype limit = -1; // of the line that place is on
    for (qsizetype place = region.indexOf(u'['); place >= 0 && middle >= 0; place = region.indexOf(u'[', place)) {
        // The title has one character at least, and the line must hold all of it.
        const qsizetype titleLeast =
            place + 1 < region.size() ? place + 1 + codePointLength(region, place + 1) : place + 2;
        if (middle < titleLeast) {
            middle = region.indexOf(kMiddle, titleLeast);
            if (middle < 0) {
                return;
            }
        }
        if (limit < place) {
            limit = lineLimit(region, place);
        }
        if (middle >= limit) {
            // No link on this line any more; the next bracket that matters is on the line of the next link.
            place = limit;
            continue;
        }
        // Behind "quib": one character or more, then one that is no white space, then the parenthesis.
        const qsizetype rest = middle + kMiddle.size();
        qsizetype close = -1;
        if (rest < limit) {
            const qsizetype least = rest + codePointLength(region, rest);
            const QStringView line = region.first(limit);
            for (qsizetype k = line.indexOf(u')', least + 1); k >= 0; k = line.indexOf(u')', k + 1)) {
                if (!isSpace(region[k - 1].unicode())) {
                    close = k;
                    break;
                }
            }
        }
        if (close < 0) {
            // What does not close the first link of a line closes no later one on it either.
            place = limit;
            continue;
        }
        if (!sink.match({{place, close + 1}, {place + 1, middle}, {middle + 2, close}})) {
            return;
        }
        place = close + 1;
    }
}

void FileMarkerScanner::scan(QStringView region, Sink &sink) const
{
    qsizetype limit = -1; // of the line that place is on
    for (qsizetype place = region.indexOf(m_opening); place >= 0; place = region.indexOf(m_opening, place)) {
        if (limit < place) {
            limit = lineLimit(region, place);
        }
        const QStringView line = region.first(limit);
        const qsizetype idStart = place + m_opening.size();
        const qsizetype idLeast = idStart < limit ? idStart + codePointLength(region, idStart) : limit;
        const qsizetype slash = idLeast < limit ? line.indexOf(u'/', idLeast) : -1;
        const qsizetype nameLeast =
            slash >= 0 && slash + 1 < limit ? slash + 1 + codePointLength(region, slash + 1) : limit;
        const qsizetype close = nameLeast < limit ? line.indexOf(u']', nameLeast) : -1;
        if (close < 0) {
            // What this marker lacks on its line, a later one on the line lacks too.
            place = limit;
            continue;
        }
        if (!sink.match({{place, close + 1}, {place + 1, idStart - 1}, {idStart, slash}, {slash + 1, close}})) {
            return;
        }
        place = close + 1;
    }
}

void ColorScanner::scan(QStringView region, Sink &sink) const
{
    constexpr qsizetype kLength = 7;
    for (qsizetype place = region.indexOf(u'#'); place >= 0 && place + kLength <= region.size();
         place = region.indexOf(u'#', place)) {
        bool isCode = isInlineBegin(region, place) && isInlineEnd(region, place + kLength);
        for (qsizetype i = 1; isCode && i < kLength; ++i) {
            isCode = isHexDigit(region[place + i].unicode());
        }
        if (!isCode) {
            ++place;
            continue;
        }
        if (!sink.match({{place, place + kLength}, {place, place + kLength}})) {
            return;
        }
        place += kLength;
    }
}

void ArrowScanner::scan(QStringView region, Sink &sink) const
{
    constexpr qsizetype kLength = 2;
    // Every arrow has a head; dashes are far more frequent.
    const qsizetype size = region.size();
    const auto *const units = region.utf16();
    for (qsizetype head = 0; head < size; ++head) {
        const auto unit = static_cast<char16_t>(units[head]);
        if (unit != u'<' && unit != u'>') {
            continue;
        }
        const qsizetype place = unit == u'<' ? head : head - 1;
        const qsizetype dash = unit == u'<' ? head + 1 : head - 1;
        if (dash < 0 || !isUnit(region, dash, u'-') || !isInlineBegin(region, place) ||
            !isInlineEnd(region, place + kLength)) {
            continue;
        }
        if (!sink.match({{place, place + kLength}, {place, place + kLength}})) {
            return;
        }
        head = place + kLength - 1;
    }
}

void UnitScanner::scan(QStringView region, Sink &sink) const
{
    const char16_t least = m_units.constFirst();
    const char16_t most = m_units.constLast();
    const qsizetype size = region.size();
    const auto *const units = region.utf16();
    for (qsizetype place = 0; place < size; ++place) {
        const auto unit = static_cast<char16_t>(units[place]);
        if (unit >= least && unit <= most && std::binary_search(m_units.begin(), m_units.end(), unit) &&
            !sink.match({{place, place + 1}})) {
            return;
        }
    }
}

} // namespace quib::syntax
