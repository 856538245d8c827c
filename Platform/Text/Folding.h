#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace quib {

/// What a comparison ignores: the [c] and the [d] of a predicate's comparison.
enum class FoldOption : quint8
{
    Exact = 0,
    Case = 1,
    Diacritic = 2,
    CaseAndDiacritic = 3,
};

/// The folded form in which two texts are compared. Case: full case folding. Diacritic: canonical decomposition, and
/// combining marks dropped where the base character is below U+0510 (Latin, Greek, Cyrillic). The fold goes code point
/// by code point and needs no neighbour but the base of a mark, so the fold of a joined text is the joined folds for
/// texts that don't begin with a mark. Lone surrogates stay as they are.
[[nodiscard]] QString foldedString(QStringView text, FoldOption option);

/// The CaseAndDiacritic fold in UTF-8, lone surrogates as three bytes each; appended to out. The form that the search
/// arena holds and SQL functions compare.
void appendFoldedUtf8(QByteArray &out, QStringView text);
[[nodiscard]] QByteArray foldedUtf8(QStringView text);

/// UTF-8 in which a lone surrogate is written as three bytes, so that every QString survives the way there and back,
/// a leading U+FEFF and U+0000 included.
[[nodiscard]] QByteArray toUtf8Lossless(QStringView text);
/// Errors: bytes that are not such UTF-8 give U+FFFD each; never fails.
[[nodiscard]] QString fromUtf8Lossless(const char *bytes, qsizetype size);

/// The order of the locale's natural comparison ("a2" before "a10"; case and marks only break ties): <0, 0, >0.
/// Ties between different strings ("01" and "1") are broken by code units, so 0 means the same string.
[[nodiscard]] int localizedStandardCompare(QStringView a, QStringView b);
/// A key whose byte order is that comparison's order.
[[nodiscard]] QByteArray localizedStandardSortKey(QStringView text);

} // namespace quib
