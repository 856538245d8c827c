#include "AttributeRunsRewriter.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <numeric>
#include <utility>

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
    for (Leaf *const leaf : m_spares) {
        Leaf::release(leaf);
    }
}

void AttributeRunsRewriter::keepTo(qint64 location)
{
    while (m_place < location) {
        if (m_in == nullptr) {
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
        if (m_in != nullptr) {
            keepNeighbours(location);
        }
    }
}

void AttributeRunsRewriter::keepNeighbours(qint64 limit)
{
    // OPTIMIZATION: runs that stand beside each other already differ, so that they move by their bytes, many at once.
    if (!m_isNeighbour || m_out == nullptr) {
        return;
    }
    const qsizetype most = std::min(m_runCount - m_run - 1, AttributeRuns::kBuiltLeafSize - 1 - m_out->count());
    const qint64 *const lengths = m_in->lengths() + m_run;
    qint64 length = 0;
    qsizetype count = 0;
    while (count < most && lengths[count] <= limit - m_place - length) {
        length += lengths[count];
        ++count;
    }
    if (count == 0) {
        return;
    }
    m_out->appendMoved(*m_in, m_run, count);
    m_out->addNames(m_in->names());
    m_outLength += length;
    m_place += length;
    m_run += count;
    m_left = lengths[count];
}

void AttributeRunsRewriter::skipTo(qint64 location)
{
    while (m_place < location) {
        if (m_in == nullptr) {
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
        if (m_in == nullptr) {
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

void AttributeRunsRewriter::joinTo(qint64 location)
{
    while (m_place < location) {
        if (m_in == nullptr) {
            open();
        }
        const qint64 length = std::min(m_left, location - m_place);
        add(take(length), length);
    }
}

void AttributeRunsRewriter::add(AttributeSet attributes, qint64 length)
{
    if (length == 0) {
        return;
    }
    m_isNeighbour = false;
    if (!goesOn(attributes, length)) {
        const AttributeNameMask names = attributes.names();
        stage(std::move(attributes), length, names);
    }
}

void AttributeRunsRewriter::open()
{
    m_in = &m_runs.ownLeaf(m_leaf);
    m_runCount = m_in->count();
    m_run = 0;
    m_left = m_in->lengthOf(0);
    m_isNeighbour = false;
}

AttributeSet AttributeRunsRewriter::take(qint64 length)
{
    AttributeSet &set = m_in->sets()[m_run];
    m_place += length;
    m_left -= length;
    if (m_left > 0) {
        return set;
    }
    AttributeSet attributes = std::move(set);
    if (++m_run < m_runCount) {
        m_left = m_in->lengthOf(m_run);
    } else {
        m_in->forget();
        recycle(std::exchange(m_in, nullptr));
        ++m_leaf;
    }
    return attributes;
}

void AttributeRunsRewriter::keep(qint64 length)
{
    // At least those of the run.
    const AttributeNameMask names = m_in->names();
    const bool isWhole = length == m_left;
    const bool isNeighbour = m_isNeighbour && m_out != nullptr;
    AttributeSet attributes = take(length);
    if (isNeighbour || !goesOn(attributes, length)) {
        stage(std::move(attributes), length, names);
    }
    m_isNeighbour = isWhole;
}

void AttributeRunsRewriter::keepLeaf(Leaf *leaf, qint64 length)
{
    const qsizetype count = leaf->count();
    if (m_out == nullptr || std::min(outCount(), count) >= AttributeRuns::kSmallLeafSize ||
        outCount() + count >= AttributeRuns::kBuiltLeafSize) {
        flush();
        m_leaves.push_back(leaf);
        m_lengths.push_back(length);
        return;
    }
    for (qsizetype run = 0; run < count; ++run) {
        if (!goesOn(leaf->attributesOf(run), leaf->lengthOf(run))) {
            stage(leaf->attributesOf(run), leaf->lengthOf(run), leaf->names());
        }
    }
    m_isNeighbour = false;
    recycle(leaf);
}

void AttributeRunsRewriter::recycle(Leaf *leaf)
{
    m_isNeighbour = false;
    if (m_spares.size() < kMostSpares && !leaf->isShared() && leaf->capacity() == AttributeRuns::kLeafCapacity) {
        leaf->clear();
        m_spares.push_back(leaf);
    } else {
        Leaf::release(leaf);
    }
}

AttributeRunsRewriter::Leaf *AttributeRunsRewriter::takeSpare()
{
    if (m_spares.empty()) {
        // OPTIMIZATION: leaves of a long text are made in groups, so that they lie beside each other and not each
        // behind the values of the one before: walks over the runs alone are twice as fast.
        for (size_t left = m_leaves.size() < kLeavesOfGroup ? 1 : kLeavesOfGroup; left > 0; --left) {
            m_spares.push_back(new Leaf(AttributeRuns::kLeafCapacity));
        }
        std::ranges::reverse(m_spares);
    }
    Leaf *const leaf = m_spares.back();
    m_spares.pop_back();
    return leaf;
}

void AttributeRunsRewriter::flush()
{
    if (m_out == nullptr) {
        return;
    }
    m_leaves.push_back(std::exchange(m_out, nullptr));
    m_lengths.push_back(std::exchange(m_outLength, 0));
}

void AttributeRunsRewriter::finish()
{
    while (m_leaf < m_limitLeaf) {
        keepTo(m_place + (m_in != nullptr ? m_left : m_runs.m_leafLengths.at(m_leaf)));
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
