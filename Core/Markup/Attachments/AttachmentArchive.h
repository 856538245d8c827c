#pragma once

#include <Files/PropertyList.h>

#include <memory>

class QBNotesTextAttachment;
class QBNotesTextThemeManager;

namespace quib {

/// An attachment as a value to be kept: its class and, under "representedText", what it stands for. No other state is
/// kept, as a copy keeps none.
[[nodiscard]] PropertyValue archivedTextAttachment(const QBNotesTextAttachment &attachment);

/// The attachment of such a value, in a theme. Null for what is no archive of an attachment, or of a class that is not
/// known.
[[nodiscard]] std::shared_ptr<QBNotesTextAttachment>
unarchivedTextAttachment(const PropertyValue &archive, std::shared_ptr<QBNotesTextThemeManager> themeManager);

} // namespace quib
