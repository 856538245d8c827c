#include "QBNoteTextStylerCommonAttributes.h"

#include "QBNoteTextStylerAttributes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace QBNoteTextStylerCommonAttributes {

std::span<const NSAttributeName> customAttributesNames()
{
    static const std::array names{
        QBNoteSkipStylingAttributeName,
        QBNoteSkipAttachmentReplacementAttributeName,
        QBNoteSkipLineBreakByWordAttributeName,
        QBNoteSkipHyphenationAttributeName,
        QBNotePreventDeletionInRangeAttributeName,
        QBNotePreventInsertionInRangeAttributeName,
        QBNoteSkipSpellCheckerAttributeName,
        QBNoteFullSelectionRangeAttributeName,
    };
    return names;
}

std::span<const NSAttributeName> attributesNamesOfNormalText()
{
    static const std::vector<NSAttributeName> names = [] {
        std::vector<NSAttributeName> made{
            NSStrikethroughStyleAttributeName, NSLinkAttributeName, NSUnderlineStyleAttributeName,
            NSBaselineOffsetAttributeName,     NSKernAttributeName, NSBackgroundColorAttributeName,
        };
        std::ranges::copy(customAttributesNames(), std::back_inserter(made));
        return made;
    }();
    return names;
}

std::span<const NSAttributeName> attributesNamesToReset()
{
    static const std::vector<NSAttributeName> names = [] {
        std::vector<NSAttributeName> made{
            QBNoteBoldTextStylerAttributeName,
            QBNoteBoldTextStylerMarkerAttributeName,
            QBNoteItalicTextStylerAttributeName,
            QBNoteItalicTextStylerMarkerAttributeName,
            QBNoteUnderlineTextStylerAttributeName,
            QBNoteUnderlineTextStylerMarkerAttributeName,
            QBNoteStrikedTextStylerAttributeName,
            QBNoteStrikedTextStylerMarkerAttributeName,
            QBNoteHighlighterTextStylerAttributeName,
            QBNoteHighlighterTextStylerMarkerAttributeName,
            QBNoteHighlighterTextStylerBackgroundAttributeName,
            QBNoteCodeInlineTextStylerAttributeName,
            QBNoteCodeInlineTextStylerMarkerAttributeName,
            QBNoteCodeInlineTextStylerBackgroundAttributeName,
            QBHeaderTextStylerAttributeName,
            QBHeaderTextStylerMarkerAttributeName,
            QBNoteQuoteTextStylerAttributeName,
            QBNoteQuoteTextStylerMarkerAttributeName,
            QBNoteUnorderedListStylerAttributeName,
            QBNoteUnorderedListStylerMarkerAttributeName,
            QBNoteOrderedListTextStylerAttributeName,
            QBNoteOrderedListStylerMArkerAttributeName,
            QBNoteCheckboxStylerAttributeName,
            QBNoteCheckboxStylerMarkerAttributeName,
            QBNoteCheckboxStylerCheckedAttributeName,
            QBNoteTagStylerAttributeName,
            QBNoteTagStylerMarkerAttributeName,
            QBNoteURLTextStylerAttributeName,
            QBTitledUrlStylerAttributeName,
            QBNoteWikiTextStylerAttributeName,
            QBNoteWikiTextStylerMarkerAttributeName,
            QBNoteColorStylerAttributeName,
            QBNoteCodeTextStylerAttributeName,
            QBNoteCodeTextStylerMarkerAttributeName,
            QBNoteCodeTextStylerBackgroundAttributeName,
            QBMarkdownImageStylerAttributeName,
            QBMarkdownImageStylerAttributeMarker,
            QBMarkdownImageStylerAttributeAlt,
            QBMarkdownImageStylerAttributeUrl,
            QBMarkdownImageStylerAttributeTitle,
            NSUnderlineColorAttributeName,
            NSStrikethroughColorAttributeName,
        };
        std::ranges::copy(attributesNamesOfNormalText(), std::back_inserter(made));
        return made;
    }();
    return names;
}

bool shouldSkipStylingInAttributedString(const NSAttributedString &attributedString, NSRange range)
{
    NSRange run;
    const auto value =
        attributedString.attribute(QBNoteSkipStylingAttributeName, range.location, &run, /*inRange=*/range);
    return value.boolValue() || (run.length > 0 && run.length < range.length);
}

bool canEditTextInAttributedString(const NSAttributedString &attributedString, NSRange range)
{
    if (range.length != 0) {
        NSRange run;
        const auto value = attributedString.attribute(QBNotePreventDeletionInRangeAttributeName, range.location, &run,
                                                      attributedString.fullRange());
        if (value && run == range) {
            return false;
        }
    }
    if (range.location == 0 || range.limit() >= attributedString.length()) {
        return true;
    }
    const auto isProtected = [&](qint64 place) {
        return bool(attributedString.attribute(QBNotePreventInsertionInRangeAttributeName, place));
    };
    return !isProtected(range.location - 1) || !isProtected(range.limit());
}

} // namespace QBNoteTextStylerCommonAttributes
