#include "LineScanner.h"

#include "SyntaxCharacters.h"

namespace quib::syntax {

void LineScanner::scan(QStringView region, Sink &sink) const
{
    const qsizetype size = region.size();
    qsizetype line = 0;
    while (line < size) {
        qsizetype place = line;
        while (m_mayBeIndented && place < size && (region[place] == u' ' || region[place] == u'\t')) {
            ++place;
        }
        qsizetype follow = 0;
        const qsizetype length = place < size ? m_marker(region, place, &follow) : 0;
        if (length > 0) {
            const qsizetype limit = place + length + follow;
            if (!sink.match({{line, limit}, {place, place + length}})) {
                return;
            }
            place = limit;
        }
        line = lineLimit(region, place) + 1;
    }
}

} // namespace quib::syntax
