#pragma once

#include "NSMutableAttributedString.h"

#include <QList>

namespace quib {

/// The pieces between line ends, with their attributes and without the line ends. Every unit that is a line end counts
/// by itself, so that "\r\n" has an empty piece in its middle; a text without any is one piece.
[[nodiscard]] QList<NSAttributedString> splitParagraphs(const NSAttributedString &attributedString);

/// The paragraphs one after the other, with a plain line feed between each two.
[[nodiscard]] NSMutableAttributedString attributedStringWithParagraphs(const QList<NSAttributedString> &paragraphs);

} // namespace quib
