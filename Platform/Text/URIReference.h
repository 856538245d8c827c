#pragma once

#include <QStringView>

namespace quib {

/// Whether a text is a URI or a relative reference as it stands: in ASCII, with nothing left to escape. Any registered
/// name is a host, escapes in it included; whether a machine can have it is another question.
/// Source: RFC 3986, appendix A.
[[nodiscard]] bool isURIReference(QStringView text);

} // namespace quib
