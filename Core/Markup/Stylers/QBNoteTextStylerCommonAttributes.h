#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>

#include <span>

/// What all stylers have in common: the guards that earlier ones set and later ones heed.
namespace QBNoteTextStylerCommonAttributes {

/// The attributes that every pass takes away before the stylers set them anew, in their fixed order.
[[nodiscard]] std::span<const NSAttributeName> customAttributesNames();
/// Whether a guarded run touches the range anywhere.
[[nodiscard]] bool shouldSkipStylingInAttributedString(const NSAttributedString &attributedString, NSRange range);
/// Whether a change of the range is allowed: neither within a protected pair of characters, nor of exactly a protected
/// run.
[[nodiscard]] bool canEditTextInAttributedString(const NSAttributedString &attributedString, NSRange range);

} // namespace QBNoteTextStylerCommonAttributes
