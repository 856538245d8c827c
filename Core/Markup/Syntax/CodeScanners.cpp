#include "CodeScanners.h"

#include "SyntaxCharacters.h"

namespace quib::syntax {

namespace {

constexpr QStringView kFence = u"```";
constexpr QChar kTick = u'`';

/// The first fence at a line's start at or behind a place, or -1.
qsizetype nextFence(QStringView region, qsizetype from)
{
    // OPTIMIZATION: one character is found many at a time, a string is not.
    for (qsizetype place = region.indexOf(kTick, from); place >= 0; place = region.indexOf(kTick, place + 1)) {
        if (isLineStart(region, place) && region.sliced(place).startsWith(kFence)) {
            return place;
        }
        // Further ticks of the same run cannot begin a line.
        while (place + 1 < region.size() && region[place + 1] == u'`') {
            ++place;
        }
    }
    return -1;
}

} // namespace

void InlineCodeScanner::scan(QStringView region, Sink &sink) const
{
    qsizetype limit = -1; // of the line that place is on
    for (qsizetype place = region.indexOf(u'`'); place >= 0; place = region.indexOf(u'`', place)) {
        if (region.sliced(place).startsWith(kFence)) {
            ++place;
            continue;
        }
        const qsizetype close = region.indexOf(u'`', place + 1);
        if (close < 0) {
            return;
        }
        if (limit < place) {
            limit = lineLimit(region, place);
        }
        if (close > limit) {
            place = close; // nothing on this line closes it, and no other tick stands before
            continue;
        }
        if (!sink.match({{place, close + 1}, {place, place + 1}, {place + 1, close}, {close, close + 1}})) {
            return;
        }
        place = close + 1;
    }
}

void CodeBlockScanner::scan(QStringView region, Sink &sink) const
{
    for (qsizetype open = nextFence(region, 0); open >= 0;) {
        const qsizetype nameStart = open + kFence.size();
        const qsizetype nameLimit = dollarPlace(region, nameStart);
        const qsizetype close = nextFence(region, nameLimit);
        if (close < 0) {
            return; // a fence without a partner, and so are all behind it
        }
        const qsizetype closeLimit = dollarPlace(region, close + kFence.size());
        if (!sink.match({{open, closeLimit},
                         {open, nameStart},
                         {nameStart, nameLimit},
                         {nameLimit, close},
                         {close, closeLimit}})) {
            return;
        }
        open = nextFence(region, closeLimit);
    }
}

} // namespace quib::syntax
