#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

#include <span>

/// What all stylers have in common: the guards that earlier ones set and later ones heed.
namespace QBNoteTextStylerCommonAttributes {

/// The attributes that every pass takes away before the stylers set them anew, in their fixed order.
[[nodiscard]] std::span<const NSAttributeName> customAttributesNames();
/// All that the first styler takes away: those and what paints a text without being its default.
[[nodiscard]] std::span<const NSAttributeName> attributesNamesOfNormalText();
/// The names that go before the stylers run, in one pass: those that the first styler takes away, and those that one
/// styler each, or one family, sets and takes away, and that nobody before it in the list reads. To take these away
/// early changes nothing, and leaves the stylers' own removals nothing to do.
[[nodiscard]] std::span<const NSAttributeName> attributesNamesToReset();
/// Whether a guarded run touches the range anywhere.
[[nodiscard]] bool shouldSkipStylingInAttributedString(const NSAttributedString &attributedString, NSRange range);
/// Whether a change of the range is allowed: neither within a protected pair of characters, nor of exactly a protected
/// run.
[[nodiscard]] bool canEditTextInAttributedString(const NSAttributedString &attributedString, NSRange range);

} // namespace QBNoteTextStylerCommonAttributes
