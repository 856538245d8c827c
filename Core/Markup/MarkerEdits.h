#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSMutableAttributedString.h>

#include <QString>

#include <vector>

namespace quib {

/// Markers that are to come and go in a text, gathered without touching it. All places are those of the text as it is;
/// it must outlive this. Stays on the stack of a command.
class MarkerEdits
{
public:
    /// On which side of a new marker a caret at its place ends up.
    enum class Caret : quint8
    {
        Behind,
        Before,
    };

    explicit MarkerEdits(const NSAttributedString &text)
        : m_text(&text)
    {
    }

    [[nodiscard]] const NSAttributedString &text() const { return *m_text; }
    /// Several at one place come one behind the other in the order of the calls.
    void insert(qint64 location, const QString &marker, Caret caret = Caret::Behind,
                const AttributeSet &attributes = {});
    /// Overlapping ranges are removed once.
    void remove(NSRange range);
    /// Removes every run of an attribute in a range.
    void removeRuns(const NSAttributeName &name, NSRange range);

    [[nodiscard]] bool isEmpty() const { return m_insertions.empty() && m_removals.empty(); }
    /// Behind the removal that holds a place, else the place itself.
    [[nodiscard]] qint64 limitOfRemovalAt(qint64 place);

    // The outcome

    /// From the first edit to the last.
    /// Requires: there is one.
    [[nodiscard]] NSRange changedRange();
    /// A range that holds all edits, with the edits made.
    [[nodiscard]] NSAttributedString editedText(NSRange range);
    /// Where a range is after the edits.
    /// Requires: changedRange or editedText was asked before.
    [[nodiscard]] NSRange editedRange(NSRange range) const;

private:
    struct Insertion
    {
        qint64 location = 0;
        QString marker;
        AttributeSet attributes;
        Caret caret = Caret::Behind;
    };

    void mergeRemovals();
    [[nodiscard]] qint64 editedPlace(qint64 place) const;

    const NSAttributedString *m_text;
    std::vector<Insertion> m_insertions;
    /// Ascending and apart from each other, once they are merged.
    std::vector<NSRange> m_removals;
    bool m_areRemovalsMerged = true;
};

} // namespace quib
