#pragma once

#include <QString>

#include <optional>

namespace quib {

/// What stays as it is when a text is put into a URL; all else, and all beyond ASCII, is percent-encoded.
enum class PlainCharacters
{
    /// What the query of a URL may hold.
    Query,
    /// The same without what takes a query apart: "&", "=" and "?".
    QueryValue,
    /// ASCII letters and digits.
    Alphanumeric,
};

/// Errors: nullopt for a text with a lone surrogate, which no URL can hold.
[[nodiscard]] std::optional<QString> percentEncoded(const QString &text, PlainCharacters plainCharacters);

} // namespace quib
