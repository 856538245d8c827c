#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <optional>

namespace quib {

/// What makes one text of another: a stretch of the old one, and what stands in its place. The smallest stretch that
/// has all differences; never half of a surrogate pair. Units: UTF-16 code units.
struct TextDifference
{
    qint64 location = 0;
    qint64 oldLength = 0;
    qint64 newLength = 0;

    [[nodiscard]] static TextDifference between(QStringView oldText, QStringView newText);
    [[nodiscard]] bool isNone() const { return oldLength == 0 && newLength == 0; }
    /// Where a place of the old text is in the new one; one within the stretch goes to its end.
    [[nodiscard]] qint64 moved(qint64 oldLocation) const;
};

/// The text with the changes of two writers of one base; nothing where they changed the same place, or places that
/// touch, so that no machine can tell what was meant.
[[nodiscard]] std::optional<QString> mergedText(const QString &base, const QString &mine, const QString &theirs);

} // namespace quib
