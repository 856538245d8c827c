#pragma once

#include "AttributeRuns.h"

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
    /// The same, as a run of its own.
    void addApart(AttributeSet attributes, qint64 length)
    {
        m_isNeighbour = false;
        const AttributeNameMask names = attributes.names();
        stage(std::move(attributes), length, names);
    }
    /// Keeps what there is, but joins equal runs.
    void joinTo(qint64 location);
    /// Keeps the rest.
    void finish();

private:
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
        Leaf &out = openOut();
        out.appendReserved(std::move(attributes), length);
        out.addNames(names);
        m_outLength += length;
        if (out.count() == AttributeRuns::kBuiltLeafSize) {
            flush();
        }
    }
    /// The leaf that is being made.
    [[nodiscard]] Leaf &openOut()
    {
        if (m_out == nullptr) {
            m_out = takeSpare();
        }
        return *m_out;
    }
    /// Whether the last run that was made has these attributes, and goes on for so long then.
    [[nodiscard]] bool goesOn(const AttributeSet &attributes, qint64 length)
    {
        if (m_out == nullptr || !(m_out->attributesOf(m_out->count() - 1) == attributes)) {
            return false;
        }
        m_out->lengths()[m_out->count() - 1] += length;
        m_outLength += length;
        return true;
    }
    [[nodiscard]] qsizetype outCount() const { return m_out != nullptr ? m_out->count() : 0; }
    /// A whole leaf, as it is.
    void keepLeaf(Leaf *leaf, qint64 length);
    void recycle(Leaf *leaf);
    /// An empty leaf with room for all.
    [[nodiscard]] Leaf *takeSpare();
    /// Ends the leaf that is being made.
    void flush();

    AttributeRuns &m_runs;
    qsizetype m_firstLeaf = 0;
    qsizetype m_limitLeaf = 0;
    /// The leaf at hand, not in the list of leaves for this walk any more.
    qsizetype m_leaf = 0;
    Leaf *m_in = nullptr; ///< null until it is opened; then its own, and what is passed of it owns nothing any more
    qsizetype m_run = 0;
    qsizetype m_runCount = 0;
    qint64 m_left = 0;  ///< of the run at hand
    qint64 m_place = 0; ///< all before this one has been dealt with
    /// Whether the last run that was made is the neighbour of the one at hand, from which it differs.
    bool m_isNeighbour = false;
    bool m_isFinished = false;

    std::vector<Leaf *> m_leaves;
    std::vector<qint64> m_lengths;
    /// Leaves that are used up, with room for the next.
    std::vector<Leaf *> m_spares;

    Leaf *m_out = nullptr; ///< null or not empty
    qint64 m_outLength = 0;
};

} // namespace quib
