#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

#include <span>

/// What all stylers have in common: the guards that earlier ones set and later ones heed.
namespace QBNoteTextStylerCommonAttributes {

/// The attributes that every pass takes away before the stylers set them anew, in their fixed order.
[[nodiscard]] std::span<const NSAttributeName> customAttributesNames();
/// The names that one styler each, or one family, sets and takes away, and that nobody before it in the list reads. To
/// take them away in one go before the stylers run changes nothing, and leaves their own removals nothing to do.
[[nodiscard]] std::span<const NSAttributeName> constructsAttributesNames();
/// Whether a guarded run touches the range anywhere.
[[nodiscard]] bool shouldSkipStylingInAttributedString(const NSAttributedString &attributedString, NSRange range);
/// Whether a change of the range is allowed: neither within a protected pair of characters, nor of exactly a protected
/// run.
[[nodiscard]] bool canEditTextInAttributedString(const NSAttributedString &attributedString, NSRange range);

} // namespace QBNoteTextStylerCommonAttributes
