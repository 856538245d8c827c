#include "LineMarker.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSAttributeName.h>
#include <Text/NSAttributedString.h>

#include <algorithm>
#include <array>

namespace quib {

namespace {

/// Behind the marker that begins at a place; the place itself where none does.
qint64 placeBehindMarkerAt(const NSAttributedString &text, qint64 place, NSRange paragraph)
{
    static const std::array markerNames{
        QBHeaderTextStylerMarkerAttributeName,      QBNoteUnorderedListStylerMarkerAttributeName,
        QBNoteOrderedListStylerMArkerAttributeName, QBNoteCheckboxStylerMarkerAttributeName,
        QBNoteQuoteTextStylerMarkerAttributeName,
    };
    qint64 behind = place;
    for (const NSAttributeName &name : markerNames) {
        NSRange run;
        if (text.attribute(name, place, &run, paragraph)) {
            behind = std::max(behind, std::min(run.limit(), paragraph.limit()));
        }
    }
    return behind;
}

} // namespace

qint64 placeBehindMarker(const NSAttributedString &text, NSRange paragraph)
{
    qint64 place = paragraph.location;
    while (place < paragraph.limit() &&
           (text.characterAtIndex(place) == u'\t' || text.characterAtIndex(place) == u' ')) {
        ++place;
    }
    const qint64 behind = place < paragraph.limit() ? placeBehindMarkerAt(text, place, paragraph) : place;
    return behind > place ? behind : paragraph.location;
}

bool isWithinMarker(const NSAttributedString &text, qint64 place)
{
    if (place <= 0 || place >= text.length() || text.characterAtIndex(place) != u' ') {
        return false;
    }
    const AttributeValue value = text.attribute(NSAttachmentAttributeName, place - 1);
    const auto *attachment = value.as<QBNotesTextAttachment>();
    return attachment != nullptr && attachment->isFullLine() && !attachment->canBeDraggedAlone();
}

} // namespace quib
