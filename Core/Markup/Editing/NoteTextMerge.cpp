#include "NoteTextMerge.h"

#include <algorithm>

namespace quib {

TextDifference TextDifference::between(QStringView oldText, QStringView newText)
{
    const qsizetype shorter = std::min(oldText.size(), newText.size());
    qsizetype prefix =
        std::mismatch(oldText.begin(), oldText.begin() + shorter, newText.begin()).first - oldText.begin();
    if (prefix > 0 && oldText[prefix - 1].isHighSurrogate()) {
        --prefix;
    }
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && oldText[oldText.size() - 1 - suffix] == newText[newText.size() - 1 - suffix]) {
        ++suffix;
    }
    if (suffix > 0 && oldText[oldText.size() - suffix].isLowSurrogate()) {
        --suffix;
    }
    return {prefix, oldText.size() - prefix - suffix, newText.size() - prefix - suffix};
}

qint64 TextDifference::moved(qint64 oldLocation) const
{
    if (oldLocation <= location) {
        return oldLocation;
    }
    if (oldLocation >= location + oldLength) {
        return oldLocation + newLength - oldLength;
    }
    return location + newLength;
}

std::optional<QString> mergedText(const QString &base, const QString &mine, const QString &theirs)
{
    const auto ours = TextDifference::between(base, mine);
    const auto other = TextDifference::between(base, theirs);
    if (other.isNone() || mine == theirs) {
        return mine;
    }
    if (ours.isNone()) {
        return theirs;
    }
    const bool isOursFirst = ours.location + ours.oldLength < other.location;
    if (!isOursFirst && other.location + other.oldLength >= ours.location) {
        return std::nullopt;
    }
    // The later place first, so that the earlier one stays where it is.
    QString merged = base;
    const auto apply = [&merged](const TextDifference &difference, const QString &text) {
        merged.replace(difference.location, difference.oldLength, text.mid(difference.location, difference.newLength));
    };
    if (isOursFirst) {
        apply(other, theirs);
        apply(ours, mine);
    } else {
        apply(ours, mine);
        apply(other, theirs);
    }
    return merged;
}

} // namespace quib
