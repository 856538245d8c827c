#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>
#include <Text/NSMutableAttributedString.h>

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace quib {

/// A note's text as it lies in memory, but with all that is folded in it opened, and where its places are in what is
/// shown. Reads the shown text, which must stay as it is meanwhile; copies it only where something is folded.
class UnfoldedText
{
public:
    explicit UnfoldedText(const NSAttributedString &shown);

    [[nodiscard]] const NSAttributedString &text() const { return m_opened ? *m_opened : m_shown; }
    [[nodiscard]] QStringView string() const { return text().string(); }
    /// A part as the note has it.
    [[nodiscard]] QString expandedString(NSRange range) const;
    /// Where a part is shown: a fold as a whole where the part begins, or ends, in it.
    [[nodiscard]] NSRange shownRange(NSRange range) const;
    /// A part with the whole folds that it begins, or ends, in.
    [[nodiscard]] NSRange rangeWithWholeFolds(NSRange range) const;
    /// The other way round; a fold is all that is folded in it.
    [[nodiscard]] NSRange rangeOfShownRange(NSRange shown) const;

private:
    struct Fold
    {
        qint64 shown = 0; ///< its place in the shown text, where it is one unit
        NSRange opened;
    };
    /// The last fold that begins before a place; null where none does.
    [[nodiscard]] const Fold *foldBefore(qint64 place) const;
    [[nodiscard]] qint64 openedPlace(qint64 shown) const;

    const NSAttributedString &m_shown;
    std::vector<Fold> m_folds; ///< in order
    std::optional<NSMutableAttributedString> m_opened;
};

/// The places of the folds in a range, in order.
[[nodiscard]] std::vector<qint64> foldsInRange(const NSAttributedString &text, NSRange range);

} // namespace quib
