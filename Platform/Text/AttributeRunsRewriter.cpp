#include "AttributeRunsRewriter.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>

namespace quib {

namespace {

constexpr size_t kLeavesOfGroup = 64;
/// So many leaves that were used up are kept for the next: the last one first, which is still near the processor.
constexpr size_t kMostSpares = 2 * kLeavesOfGroup;

} // namespace

AttributeRunsRewriter::AttributeRunsRewriter(AttributeRuns &runs, NSRange range)
    : m_runs(runs)
{
    if (runs.length() > 0) {
        const qint64 last = runs.length() - 1;
        const qint64 first = std::min(range.location, last);
        m_firstLeaf = runs.find(first).leaf;
        m_place = runs.m_cursorLeafStart;
        m_limitLeaf = runs.find(std::clamp(range.limit() - 1, first, last)).leaf + 1;
    }
    m_leaf = m_firstLeaf;
    m_leaves.reserve(static_cast<size_t>(m_limitLeaf - m_firstLeaf));
    m_lengths.reserve(static_cast<size_t>(m_limitLeaf - m_firstLeaf));
}

AttributeRunsRewriter::~AttributeRunsRewriter()
{
    QUIB_ASSERT(m_isFinished);
    qDeleteAll(m_spares);
}

void AttributeRunsRewriter::keepTo(qint64 location)
{
    while (m_place < location) {
        if (m_leafRuns == nullptr) {
            const qint64 length = m_runs.m_leafLengths.at(m_leaf);
            if (m_place + length <= location) {
                keepLeaf(m_runs.m_leaves.at(m_leaf), length);
                ++m_leaf;
                m_place += length;
                continue;
            }
            open();
        }
        keep(std::min(m_left, location - m_place));
        if (m_leafRuns != nullptr) {
            keepNeighbours(location);
        }
    }
}

void AttributeRunsRewriter::keepNeighbours(qint64 limit)
{
    // OPTIMIZATION: runs that stand beside each other already differ, so that they move by their bytes, many at once.
    if (!m_isNeighbour || m_stagedCount == 0) {
        return;
    }
    const qsizetype most = std::min(m_runCount - m_run - 1, AttributeRuns::kBuiltLeafSize - 1 - m_stagedCount);
    Run *const first = m_leafRuns + m_run;
    qint64 length = 0;
    qsizetype count = 0;
    while (count < most && first[count].length <= limit - m_place - length) {
        length += first[count].length;
        ++count;
    }
    if (count == 0) {
        return;
    }
    const size_t size = static_cast<size_t>(count) * sizeof(Run);
    std::memcpy(static_cast<void *>(&staged(m_stagedCount)), first, size);
    std::memset(static_cast<void *>(first), 0, size); // they own nothing any more
    m_stagedCount += count;
    m_stagedLength += length;
    m_stagedNames |= m_runs.m_leaves.at(m_leaf)->names;
    m_place += length;
    m_run += count;
    m_left = first[count].length;
}

void AttributeRunsRewriter::skipTo(qint64 location)
{
    while (m_place < location) {
        if (m_leafRuns == nullptr) {
            const qint64 length = m_runs.m_leafLengths.at(m_leaf);
            if (m_place + length <= location) {
                recycle(m_runs.m_leaves.at(m_leaf));
                ++m_leaf;
                m_place += length;
                continue;
            }
            open();
        }
        static_cast<void>(take(std::min(m_left, location - m_place)));
        m_isNeighbour = false;
    }
}

void AttributeRunsRewriter::insertTo(qint64 location, AttributeSet attributes)
{
    while (m_place < location) {
        if (m_leafRuns == nullptr) {
            open();
        }
        const qint64 length = std::min(m_left, location - m_place);
        AttributeSet changed = take(length);
        if (m_place == location) {
            changed.insert(std::move(attributes));
            add(std::move(changed), length);
            return;
        }
        changed.insert(attributes);
        add(std::move(changed), length);
    }
}

void AttributeRunsRewriter::add(AttributeSet attributes, qint64 length)
{
    if (length == 0) {
        return;
    }
    m_isNeighbour = false;
    if (m_stagedCount > 0 && staged(m_stagedCount - 1).attributes == attributes) {
        staged(m_stagedCount - 1).length += length;
        m_stagedLength += length;
        return;
    }
    const AttributeNameMask names = attributes.names();
    stage(std::move(attributes), length, names);
}

void AttributeRunsRewriter::open()
{
    Leaf &leaf = *m_runs.m_leaves.at(m_leaf);
    m_leafRuns = leaf.runs.data();
    m_runCount = leaf.runs.size();
    m_run = 0;
    m_left = m_leafRuns[0].length;
    m_isNeighbour = false;
}

AttributeSet AttributeRunsRewriter::take(qint64 length)
{
    Run &run = m_leafRuns[m_run];
    m_place += length;
    m_left -= length;
    if (m_left > 0) {
        return run.attributes;
    }
    AttributeSet attributes = std::move(run.attributes);
    if (++m_run < m_runCount) {
        m_left = m_leafRuns[m_run].length;
    } else {
        m_leafRuns = nullptr;
        recycle(m_runs.m_leaves.at(m_leaf));
        ++m_leaf;
    }
    return attributes;
}

void AttributeRunsRewriter::keep(qint64 length)
{
    // At least those of the run.
    const AttributeNameMask names = m_runs.m_leaves.at(m_leaf)->names;
    const bool isWhole = length == m_left;
    const bool isNeighbour = m_isNeighbour && m_stagedCount > 0;
    AttributeSet attributes = take(length);
    if (!isNeighbour && m_stagedCount > 0 && staged(m_stagedCount - 1).attributes == attributes) {
        staged(m_stagedCount - 1).length += length;
        m_stagedLength += length;
    } else {
        stage(std::move(attributes), length, names);
    }
    m_isNeighbour = isWhole;
}

void AttributeRunsRewriter::keepLeaf(Leaf *leaf, qint64 length)
{
    const qsizetype count = leaf->runs.size();
    if (m_stagedCount == 0 || std::min(m_stagedCount, count) >= AttributeRuns::kSmallLeafSize ||
        m_stagedCount + count >= AttributeRuns::kBuiltLeafSize) {
        flush();
        m_leaves.push_back(leaf);
        m_lengths.push_back(length);
        return;
    }
    for (Run &run : leaf->runs) {
        if (staged(m_stagedCount - 1).attributes == run.attributes) {
            staged(m_stagedCount - 1).length += run.length;
            m_stagedLength += run.length;
        } else {
            stage(std::move(run.attributes), run.length, leaf->names);
        }
    }
    m_isNeighbour = false;
    recycle(leaf);
}

void AttributeRunsRewriter::recycle(Leaf *leaf)
{
    m_isNeighbour = false;
    if (m_spares.size() < kMostSpares && leaf->runs.isDetached() &&
        leaf->runs.capacity() >= AttributeRuns::kLeafCapacity) {
        leaf->runs.clear();
        m_spares.push_back(leaf);
    } else {
        delete leaf;
    }
}

void AttributeRunsRewriter::makeSpares()
{
    // OPTIMIZATION: leaves of a long text are made in groups, so that they lie beside each other and not each behind
    // the values of the one before: walks over the runs alone are twice as fast.
    for (size_t left = m_leaves.size() < kLeavesOfGroup ? 1 : kLeavesOfGroup; left > 0; --left) {
        auto *leaf = new Leaf;
        leaf->runs.reserve(AttributeRuns::kLeafCapacity);
        m_spares.push_back(leaf);
    }
    std::ranges::reverse(m_spares);
}

void AttributeRunsRewriter::flush()
{
    if (m_stagedCount == 0) {
        return;
    }
    if (m_spares.empty()) {
        makeSpares();
    }
    Leaf *const leaf = m_spares.back();
    m_spares.pop_back();
    // OPTIMIZATION: runs move by their bytes; the empty ones that are written over own nothing.
    leaf->runs.resize(m_stagedCount);
    std::memcpy(static_cast<void *>(leaf->runs.data()), m_stage, static_cast<size_t>(m_stagedCount) * sizeof(Run));
    leaf->names = m_stagedNames;
    m_leaves.push_back(leaf);
    m_lengths.push_back(m_stagedLength);
    m_stagedCount = 0;
    m_stagedLength = 0;
    m_stagedNames = {};
}

void AttributeRunsRewriter::finish()
{
    while (m_leaf < m_limitLeaf) {
        keepTo(m_place + (m_leafRuns != nullptr ? m_left : m_runs.m_leafLengths.at(m_leaf)));
    }
    flush();
    m_isFinished = true;
    const auto splice = [this](auto &list, const auto &by) {
        const qsizetype before = m_limitLeaf - m_firstLeaf;
        const auto count = static_cast<qsizetype>(by.size());
        if (count > before) {
            list.insert(m_limitLeaf, count - before, {});
        } else {
            list.remove(m_firstLeaf + count, before - count);
        }
        std::ranges::copy(by, list.begin() + m_firstLeaf);
    };
    const auto firstLength = m_runs.m_leafLengths.cbegin() + m_firstLeaf;
    const qint64 lengthBefore = std::accumulate(firstLength, m_runs.m_leafLengths.cbegin() + m_limitLeaf, qint64(0));
    m_runs.m_length += std::accumulate(m_lengths.begin(), m_lengths.end(), qint64(0)) - lengthBefore;
    splice(m_runs.m_leaves, m_leaves);
    splice(m_runs.m_leafLengths, m_lengths);
    m_runs.m_knownGroups = std::min(m_runs.m_knownGroups, m_firstLeaf / AttributeRuns::kGroupSize);
    m_runs.forgetCursor();
    if (!m_leaves.empty()) {
        m_runs.mergeIfSmall(m_firstLeaf + static_cast<qsizetype>(m_leaves.size()) - 1);
    }
}

} // namespace quib
