#include "SelectionInStyledText.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/Stylers/ExpandedText.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

namespace quib {

namespace {

/// Whether a place between two units lies in a tag, whose spacers are its own.
bool isInTag(const NSAttributedString &text, qint64 place)
{
    if (place <= 0 || place >= text.length()) {
        return false;
    }
    NSRange tag;
    return text.attribute(QBNoteTagStylerAttributeName, place, &tag, text.fullRange()) && tag.location < place;
}

/// The places of a text that have so much of its spelled out text in front of them.
struct Places
{
    /// More than one where attachments stand for nothing.
    qint64 first = 0;
    qint64 last = 0;
    /// There is none: what stands from first to last is one attachment that the length ends in.
    bool isWithinAttachment = false;
};

Places placesBehind(const NSAttributedString &text, qint64 expandedLength)
{
    qint64 passed = 0;
    Places places; // at the start
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&](const AttributeValue &value, NSRange run, bool *stop) {
                                const auto *attachment = value.as<QBNotesTextAttachment>();
                                const qint64 unit = attachment == nullptr ? 1 : attachment->representedText().size();
                                const qint64 left = expandedLength - passed;
                                if (unit * run.length <= left) {
                                    passed += unit * run.length;
                                    places = {unit > 0 ? run.limit() : places.first, run.limit()};
                                    return;
                                }
                                if (left > 0) {
                                    const qint64 place = run.location + left / unit;
                                    const bool isWithin = left % unit > 0;
                                    places = {place, isWithin ? place + 1 : place, isWithin};
                                }
                                *stop = true;
                            });
    return places;
}

} // namespace

NSRange selectionInStyledText(NSRange selection, const NSAttributedString &text, NSRange range,
                              const NSAttributedString &styled)
{
    const auto placeOf = [&](qint64 place, bool isStart) {
        if (place <= range.location) {
            return place;
        }
        if (place >= range.limit()) {
            return place + styled.length() - range.length;
        }
        const qint64 before = expandedText(text, {range.location, place - range.location}).size();
        const Places places = placesBehind(styled, before);
        for (qint64 outside = places.first; outside <= places.last && !places.isWithinAttachment; ++outside) {
            if (!isInTag(styled, outside)) {
                return range.location + outside;
            }
        }
        return range.location + (isStart ? places.first : places.last);
    };
    const qint64 start = placeOf(selection.location, /*isStart=*/true);
    return {start, placeOf(selection.limit(), /*isStart=*/false) - start};
}

} // namespace quib
