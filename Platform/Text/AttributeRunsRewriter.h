#pragma once

#include "AttributeRuns.h"

#include <cstddef>
#include <vector>

namespace quib {

/// Rebuilds the runs of a stretch in one walk from front to back: what lies in leaves that nothing touches moves as
/// whole leaves, and the leaves outside of the stretch stay where they are. Made for one change and finished by it;
/// until then nobody else reads or changes the runs.
class AttributeRunsRewriter
{
public:
    /// Shape: the range holds every place that is to be dealt with.
    AttributeRunsRewriter(AttributeRuns &runs, NSRange range);
    AttributeRunsRewriter(const AttributeRunsRewriter &) = delete;
    AttributeRunsRewriter &operator=(const AttributeRunsRewriter &) = delete;
    ~AttributeRunsRewriter();

    // Each goes on where the last one stopped. Units: places of the text as it was.

    void keepTo(qint64 location);
    void skipTo(qint64 location);
    void insertTo(qint64 location, AttributeSet attributes);
    /// Puts something new in place.
    void add(AttributeSet attributes, qint64 length);
    /// Keeps the rest.
    void finish();

private:
    using Run = AttributeRun;
    using Leaf = AttributeRuns::Leaf;

    /// Requires: a leaf is left.
    void open();
    /// The attributes of the next units of the run at hand, which are passed. Requires: no more than it has left.
    [[nodiscard]] AttributeSet take(qint64 length);
    void keep(qint64 length);
    /// Goes on with whole runs of the leaf at hand, all but its last, as far as there is room.
    void keepNeighbours(qint64 limit);
    void stage(AttributeSet attributes, qint64 length, AttributeNameMask names)
    {
        new (&staged(m_stagedCount)) Run{std::move(attributes), length};
        m_stagedNames |= names;
        m_stagedLength += length;
        if (++m_stagedCount == AttributeRuns::kBuiltLeafSize) {
            flush();
        }
    }
    [[nodiscard]] Run &staged(qsizetype index) { return *(reinterpret_cast<Run *>(m_stage) + index); }
    /// A whole leaf, as it is.
    void keepLeaf(Leaf *leaf, qint64 length);
    void recycle(Leaf *leaf);
    void makeSpares();
    /// Makes a leaf of what is staged.
    void flush();

    AttributeRuns &m_runs;
    qsizetype m_firstLeaf = 0;
    qsizetype m_limitLeaf = 0;
    /// The leaf at hand, not in the list of leaves for this walk any more.
    qsizetype m_leaf = 0;
    Run *m_leafRuns = nullptr; ///< null until it is opened
    qsizetype m_run = 0;
    qsizetype m_runCount = 0;
    qint64 m_left = 0;  ///< of the run at hand
    qint64 m_place = 0; ///< all before this one has been dealt with
    /// Whether the last staged run is the neighbour of the one at hand, from which it differs.
    bool m_isNeighbour = false;
    bool m_isFinished = false;

    std::vector<Leaf *> m_leaves;
    std::vector<qint64> m_lengths;
    /// Leaves that are used up, with room for the next.
    std::vector<Leaf *> m_spares;

    alignas(Run) std::byte m_stage[sizeof(Run) * AttributeRuns::kBuiltLeafSize];
    qsizetype m_stagedCount = 0;
    qint64 m_stagedLength = 0;
    AttributeNameMask m_stagedNames;
};

} // namespace quib
