#pragma once

#include <Text/NSAttributeName.h>

// The names under which stylers mark what they found. The value is the number 1 unless a line says otherwise.

// Guards, read by other stylers, by the editor and by the layout.

/// No later styler may paint a construct that touches this.
inline constinit const NSAttributeName QBNoteSkipStylingAttributeName{u"QBNoteSkipStylingAttributeName"};
/// No marker that begins here becomes an attachment.
inline constinit const NSAttributeName QBNoteSkipAttachmentReplacementAttributeName{
    u"QBNoteSkipAttachmentReplacementAttributeName"};
inline constinit const NSAttributeName QBNoteSkipHyphenationAttributeName{u"QBNoteSkipHyphenationAttributeName"};
inline constinit const NSAttributeName QBNoteSkipLineBreakByWordAttributeName{
    u"QBNoteSkipLineBreakByWordAttributeName"};
inline constinit const NSAttributeName QBNoteSkipSpellCheckerAttributeName{u"QBNoteSkipSpellCheckerAttributeName"};
inline constinit const NSAttributeName QBNoteSkipBorderDrawingAttributeName{u"QBNoteSkipBorderDrawingAttributeName"};
/// A text; the selection takes the whole run of one value.
inline constinit const NSAttributeName QBNoteFullSelectionRangeAttributeName{u"QBNoteFullSelectionRangeAttributeName"};
/// Nothing is typed between two characters that both have it.
inline constinit const NSAttributeName QBNotePreventInsertionInRangeAttributeName{
    u"QBNotePreventInsertionInRangeAttributeName"};
/// A change of exactly this run is refused.
inline constinit const NSAttributeName QBNotePreventDeletionInRangeAttributeName{
    u"QBNotePreventDeletionInRangeAttributeName"};
/// Follows an inserted text through restyling, and is gone afterwards.
inline constinit const NSAttributeName QBNoteBoundaryMarkerAttributeName{u"QBNoteBoundaryMarkerAttributeName"};

// Constructs, and their marker characters.

inline constinit const NSAttributeName QBNoteBoldTextStylerAttributeName{u"QBNoteBoldTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteBoldTextStylerMarkerAttributeName{
    u"QBNoteBoldTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteItalicTextStylerAttributeName{u"QBNoteItalicTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteItalicTextStylerMarkerAttributeName{
    u"QBNoteItalicTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteUnderlineTextStylerAttributeName{
    u"QBNoteUnderlineTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteUnderlineTextStylerMarkerAttributeName{
    u"QBNoteUnderlineTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteStrikedTextStylerAttributeName{u"QBNoteStrikedTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteStrikedTextStylerMarkerAttributeName{
    u"QBNoteStrikedTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteHighlighterTextStylerAttributeName{
    u"QBNoteHighlighterTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteHighlighterTextStylerMarkerAttributeName{
    u"QBNoteHighlighterTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteHighlighterTextStylerBackgroundAttributeName{
    u"QBNoteHighlighterTextStylerBackgroundAttributeName"};
inline constinit const NSAttributeName QBNoteCodeInlineTextStylerAttributeName{
    u"QBNoteCodeInlineTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteCodeInlineTextStylerMarkerAttributeName{
    u"QBNoteCodeInlineTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteCodeInlineTextStylerBackgroundAttributeName{
    u"QBNoteCodeInlineTextStylerBackgroundAttributeName"};
inline constinit const NSAttributeName QBNoteCodeTextStylerAttributeName{u"QBNoteCodeTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteCodeTextStylerMarkerAttributeName{
    u"QBNoteCodeTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteCodeTextStylerBackgroundAttributeName{
    u"QBNoteCodeTextStylerBackgroundAttributeName"};
/// A text: the identifier that ties the language's name to its block.
inline constinit const NSAttributeName QBNoteCodeTextStylerLanguageAttributeName{
    u"QBNoteCodeTextStylerLanguageAttributeName"};
inline constinit const NSAttributeName QBHeaderTextStylerAttributeName{u"QBHeaderTextStylerAttributeName"};
inline constinit const NSAttributeName QBHeaderTextStylerMarkerAttributeName{u"QBHeaderTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteQuoteTextStylerAttributeName{u"QBNoteQuoteTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteQuoteTextStylerMarkerAttributeName{
    u"QBNoteQuoteTextStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteUnorderedListStylerAttributeName{
    u"QBNoteUnorderedListStylerAttributeName"};
inline constinit const NSAttributeName QBNoteUnorderedListStylerMarkerAttributeName{
    u"QBNoteUnorderedListStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteOrderedListTextStylerAttributeName{
    u"QBNoteOrderedListTextStylerAttributeName"};
/// Spelled so.
inline constinit const NSAttributeName QBNoteOrderedListStylerMArkerAttributeName{
    u"QBNoteOrderedListStylerMArkerAttributeName"};
inline constinit const NSAttributeName QBNoteCheckboxStylerAttributeName{u"QBNoteCheckboxStylerAttributeName"};
inline constinit const NSAttributeName QBNoteCheckboxStylerMarkerAttributeName{
    u"QBNoteCheckboxStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteCheckboxStylerCheckedAttributeName{
    u"QBNoteCheckboxStylerCheckedAttributeName"};
inline constinit const NSAttributeName QBNoteLineSeparatorStylerAttributeName{
    u"QBNoteLineSeparatorStylerAttributeName"};
inline constinit const NSAttributeName QBNoteLineSeparatorStylerMarkerAttributeName{
    u"QBNoteLineSeparatorStylerMarkerAttributeName"};
/// A text: the tag's name, "_" and its location.
inline constinit const NSAttributeName QBNoteTagStylerAttributeName{u"QBNoteTagStylerAttributeName"};
inline constinit const NSAttributeName QBNoteTagStylerMarkerAttributeName{u"QBNoteTagStylerMarkerAttributeName"};
inline constinit const NSAttributeName QBNoteTagSpacerAttributeName{u"QBNoteTagSpacerAttributeName"};
/// The URL.
inline constinit const NSAttributeName QBNoteURLTextStylerAttributeName{u"QBNoteURLTextStylerAttributeName"};
inline constinit const NSAttributeName QBTitledUrlStylerAttributeName{u"QBTitledUrlStylerAttributeName"};
inline constinit const NSAttributeName QBNoteWikiTextStylerAttributeName{u"QBNoteWikiTextStylerAttributeName"};
inline constinit const NSAttributeName QBNoteWikiTextStylerMarkerAttributeName{
    u"QBNoteWikiTextStylerMarkerAttributeName"};
/// The colour.
inline constinit const NSAttributeName QBNoteColorStylerAttributeName{u"QBNoteColorStylerAttributeName"};
inline constinit const NSAttributeName QBNoteAddressesStylerAttributeName{u"QBNoteAddressesStylerAttributeName"};
inline constinit const NSAttributeName QBMarkdownImageStylerAttributeName{u"QBMarkdownImageStylerAttributeName"};
inline constinit const NSAttributeName QBMarkdownImageStylerAttributeMarker{u"QBMarkdownImageStylerAttributeMarker"};
inline constinit const NSAttributeName QBMarkdownImageStylerAttributeAlt{u"QBMarkdownImageStylerAttributeAlt"};
inline constinit const NSAttributeName QBMarkdownImageStylerAttributeUrl{u"QBMarkdownImageStylerAttributeUrl"};
inline constinit const NSAttributeName QBMarkdownImageStylerAttributeTitle{u"QBMarkdownImageStylerAttributeTitle"};
