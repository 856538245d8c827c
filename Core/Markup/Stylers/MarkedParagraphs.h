#pragma once

#include <Foundation/NSRange.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Text/NSAttributedString.h>

#include <memory>
#include <span>
#include <vector>

namespace quib {

/// A marker that a line begins with: a stretch of text, or one attachment.
struct BlockMarker
{
    NSRange range;
    /// Null for a marker that stays text.
    std::shared_ptr<QBNotesTextAttachment> attachment;
};

/// Calls function(paragraph, markers) for each paragraph that has some of the markers, which are in ascending order. A
/// paragraph is looked at once, however many it has: vertical tabs and form feeds begin lines of one paragraph.
template <typename Function>
void forEachMarkedParagraph(const NSAttributedString &text, const std::vector<BlockMarker> &markers,
                            const Function &function)
{
    const std::span all(markers);
    size_t first = 0;
    while (first < all.size()) {
        const NSRange paragraph = text.paragraphRangeForRange(all[first].range);
        size_t limit = first + 1;
        while (limit < all.size() && paragraph.contains(all[limit].range.location)) {
            ++limit;
        }
        function(paragraph, all.subspan(first, limit - first));
        first = limit;
    }
}

/// A marker together with the unit behind it, the blank.
[[nodiscard]] inline NSRange withBlank(NSRange marker)
{
    return {marker.location, marker.length + 1};
}

} // namespace quib
