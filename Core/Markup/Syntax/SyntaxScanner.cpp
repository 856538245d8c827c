#include "SyntaxScanner.h"

#include <Text/NSStringHelpers.h>

namespace quib::syntax {

bool SyntaxScanner::Sink::match(std::initializer_list<Group> groups)
{
    ++m_count;
    if (m_callback == nullptr) {
        return true;
    }
    NSTextCheckingResult::Ranges ranges;
    for (const Group &group : groups) {
        ranges.push_back({m_offset + group.start, group.limit - group.start});
    }
    bool stop = false;
    (*m_callback)(NSTextCheckingResult(std::move(ranges)), &stop);
    return !stop;
}

void SyntaxScanner::enumerateMatchesInString(QStringView string, Options /*matchingOptions*/, NSRange range,
                                             const MatchCallback &usingBlock) const
{
    if (const auto cut = rangeCutToString(string, range)) {
        Sink sink(cut->location, &usingBlock);
        scan(string.sliced(cut->location, cut->length), sink);
    }
}

qint64 SyntaxScanner::numberOfMatchesInString(QStringView string, Options /*matchingOptions*/, NSRange range) const
{
    const auto cut = rangeCutToString(string, range);
    if (!cut) {
        return 0;
    }
    Sink sink(cut->location, nullptr);
    scan(string.sliced(cut->location, cut->length), sink);
    return sink.count();
}

} // namespace quib::syntax
