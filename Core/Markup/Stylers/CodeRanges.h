#pragma once

#include <Foundation/NSRange.h>

#include <QString>

class NSAttributedString;

namespace quib {

/// The body of the code block whose language's name carries an identifier, as it stands now; not-found where it is
/// gone.
[[nodiscard]] NSRange codeRangeForCodeUUID(const QString &codeUUID, const NSAttributedString &inAttributedString);

} // namespace quib
