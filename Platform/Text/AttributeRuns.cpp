#include "AttributeRuns.h"

#include "AttributeRunsRewriter.h"

#include <Foundation/Assert.h>

#include <algorithm>
#include <numeric>

namespace quib {

namespace {

/// More leaves are rebuilt rather than changed one by one.
constexpr qsizetype kFewLeaves = 3;
/// In so many places a set is looked for among those whose change is known.
constexpr size_t kKnownTries = 8;
/// Up to so many changes a leaf are made one by one.
constexpr qsizetype kFewChangesOfLeaf = 3;

} // namespace

AttributeChange AttributeChange::insertingValue(const NSAttributeName &name, const AttributeValue &value)
{
    AttributeChange change;
    change.m_kind = Kind::InsertValue;
    change.m_insertedNames = name.mask();
    change.m_name = &name;
    change.m_value = &value;
    return change;
}

AttributeChange AttributeChange::insertingSet(const AttributeSet &attributes)
{
    AttributeChange change;
    change.m_kind = Kind::InsertSet;
    change.m_insertedNames = attributes.names();
    change.m_set = &attributes;
    return change;
}

AttributeChange AttributeChange::replacingBy(const AttributeSet &attributes)
{
    AttributeChange change = insertingSet(attributes);
    change.m_kind = Kind::Replace;
    return change;
}

AttributeChange AttributeChange::removing(std::span<const NSAttributeName> names)
{
    AttributeChange change;
    change.m_kind = Kind::Remove;
    change.m_removed = AttributeNameList(names);
    return change;
}

AttributeChange AttributeChange::resetting(std::span<const NSAttributeName> names, const AttributeSet &to)
{
    AttributeChange change = removing(names);
    change.m_kind = Kind::Reset;
    change.m_insertedNames = to.names();
    change.m_set = &to;
    return change;
}

void AttributeChange::apply(AttributeSet &attributes) const
{
    switch (m_kind) {
    case Kind::InsertValue:
        attributes.insert(*m_name, *m_value);
        break;
    case Kind::InsertSet:
        attributes.insert(*m_set);
        break;
    case Kind::Replace:
        attributes = *m_set;
        break;
    case Kind::Remove:
        if (attributes.mayHave(m_removed.mask)) {
            applyRemembering(attributes);
        }
        break;
    case Kind::Reset:
        applyRemembering(attributes);
        break;
    }
}

void AttributeChange::applyToEntries(AttributeSet &attributes) const
{
    attributes.remove(m_removed);
    if (m_set != nullptr) {
        attributes.insert(*m_set);
    }
}

const AttributeChange::Known *AttributeChange::knownOf(const AttributeEntries *from) const
{
    if (m_known == nullptr) {
        m_known = std::make_unique<KnownSets>();
    }
    const auto hash = static_cast<size_t>(reinterpret_cast<quintptr>(from) * 0x9E3779B97F4A7C15U >> 58);
    Known *known = nullptr;
    for (size_t step = 0; step < kKnownTries; ++step) {
        known = &(*m_known)[(hash + step) % m_known->size()];
        if (!known->isKnown) {
            break;
        }
        if (known->from == from) {
            return known;
        }
    }
    AttributeSet shared;
    shared.m_shared = from;
    applyToEntries(shared);
    if (!shared.hasNoPlace()) {
        return nullptr; // the table has no room for it, or the new set has a place
    }
    *known = {from, shared.m_shared, true};
    return known;
}

void AttributeChange::applyRemembering(AttributeSet &attributes) const
{
    const Known *const known = knownOf(attributes.m_shared);
    if (known == nullptr) {
        applyToEntries(attributes);
        return;
    }
    attributes.m_shared = known->to;
    if (attributes.hasNoPlace()) {
        return;
    }
    attributes.removeFromPlaces(m_removed);
    if (m_set != nullptr) {
        for (const AttributeEntry &entry : m_set->sharedEntries()) {
            attributes.removeFromPlaces(entry.name);
        }
    }
}

AttributeSet AttributeChange::applied(const AttributeSet &attributes) const
{
    const Known *const known = m_kind == Kind::Reset ? knownOf(attributes.m_shared) : nullptr;
    if (known == nullptr) {
        AttributeSet changed = attributes;
        apply(changed);
        return changed;
    }
    AttributeSet changed;
    changed.m_shared = known->to;
    changed.m_place = AttributeSet::placeWithout(attributes.m_place, m_removed, m_set->m_shared);
    changed.m_objects = AttributeSet::placeWithout(attributes.m_objects, m_removed, m_set->m_shared);
    return changed;
}

AttributeRuns::AttributeRuns(const AttributeSet &attributes, qint64 length)
{
    append(attributes, length);
}

AttributeRuns::AttributeRuns(const AttributeRuns &other)
    : m_length(other.m_length)
    , m_leafLengths(other.m_leafLengths)
{
    m_leaves.reserve(other.m_leaves.size());
    for (const Leaf *leaf : other.m_leaves) {
        m_leaves.append(new Leaf(*leaf));
    }
}

AttributeRuns::AttributeRuns(AttributeRuns &&other) noexcept
    : m_length(std::exchange(other.m_length, 0))
    , m_leaves(std::exchange(other.m_leaves, {}))
    , m_leafLengths(std::exchange(other.m_leafLengths, {}))
{
    other.m_knownGroups = 0;
    other.forgetCursor();
}

AttributeRuns &AttributeRuns::operator=(AttributeRuns other) noexcept
{
    std::swap(m_length, other.m_length);
    m_leaves.swap(other.m_leaves);
    m_leafLengths.swap(other.m_leafLengths);
    m_knownGroups = 0;
    forgetCursor();
    return *this;
}

AttributeRuns::~AttributeRuns()
{
    qDeleteAll(m_leaves);
}

qsizetype AttributeRuns::runCount() const
{
    return std::accumulate(m_leaves.begin(), m_leaves.end(), qsizetype(0),
                           [](qsizetype sum, const Leaf *leaf) { return sum + leaf->runs.size(); });
}

AttributeRuns::Position AttributeRuns::find(qint64 location) const
{
    QUIB_ASSERT(location >= 0 && location < m_length);
    if (location < m_cursorLeafStart || location - m_cursorLeafStart >= m_leafLengths.at(m_cursor.leaf)) {
        qint64 start = 0;
        const qsizetype leaf = leafAt(location, &start);
        m_cursor = {leaf, 0, start};
        m_cursorLeafStart = start;
    }
    const Run *const runs = constRuns(m_cursor.leaf).constData();
    Position position = m_cursor;
    if (location - m_cursorLeafStart < position.start - location) {
        position.run = 0;
        position.start = m_cursorLeafStart;
    }
    while (location < position.start) {
        --position.run;
        position.start -= runs[position.run].length;
    }
    while (location - position.start >= runs[position.run].length) {
        position.start += runs[position.run].length;
        ++position.run;
    }
    m_cursor = position;
    return m_cursor;
}

qsizetype AttributeRuns::leafAt(qint64 location, qint64 *start) const
{
    const qint64 *const lengths = m_leafLengths.constData();
    // OPTIMIZATION: mostly the neighbour of the last one.
    const qsizetype next = m_cursor.leaf + 1;
    const qint64 nextStart = m_cursorLeafStart + lengths[m_cursor.leaf];
    if (location >= nextStart && next < m_leafLengths.size() && location - nextStart < lengths[next]) {
        *start = nextStart;
        return next;
    }
    qint64 sum = 0;
    qsizetype leaf = 0;
    for (qsizetype group = 0;; ++group) {
        const qsizetype limit = std::min(leaf + kGroupSize, m_leafLengths.size());
        const auto index = static_cast<size_t>(group);
        if (group == m_knownGroups) {
            m_groupLengths.resize(std::max(m_groupLengths.size(), index + 1));
            m_groupLengths[index] = std::accumulate(lengths + leaf, lengths + limit, qint64(0));
            ++m_knownGroups;
        }
        if (location - sum < m_groupLengths[index]) {
            break;
        }
        sum += m_groupLengths[index];
        leaf = limit;
    }
    while (location - sum >= lengths[leaf]) {
        sum += lengths[leaf];
        ++leaf;
    }
    *start = sum;
    return leaf;
}

void AttributeRuns::retreat(Position &position) const
{
    if (position.run == 0) {
        --position.leaf;
        position.run = constRuns(position.leaf).size();
    }
    --position.run;
    position.start -= constRuns(position.leaf).at(position.run).length;
}

template <typename IsWanted>
void AttributeRuns::advanceTo(Position &position, AttributeNameMask names, qint64 limit, const IsWanted &isWanted) const
{
    for (; !isAtEnd(position) && position.start < limit; ++position.leaf, position.run = 0) {
        const Leaf &leaf = *m_leaves.at(position.leaf);
        if (position.run == 0 && !leaf.names.intersects(names)) {
            position.start += m_leafLengths.at(position.leaf);
            continue;
        }
        const Run *const runs = leaf.runs.constData();
        const qsizetype count = leaf.runs.size();
        for (; position.run < count; ++position.run) {
            if (position.start >= limit || isWanted(runs[position.run].attributes)) {
                return;
            }
            position.start += runs[position.run].length;
        }
    }
}

void AttributeRuns::advanceToNames(Position &position, AttributeNameMask names, qint64 limit) const
{
    advanceTo(position, names, limit, [names](const AttributeSet &attributes) { return attributes.mayHave(names); });
}

void AttributeRuns::advanceToObjects(Position &position, AttributeNameMask names, qint64 limit) const
{
    advanceTo(position, names, limit,
              [names](const AttributeSet &attributes) { return attributes.hasObjects() || attributes.mayHave(names); });
}

void AttributeRuns::change(NSRange range, const AttributeChange &change)
{
    qint64 location = range.location;
    const qint64 limit = range.limit();
    while (location < limit) {
        const Position position = find(location);
        const qint64 leafLimit = m_cursorLeafStart + m_leafLengths.at(position.leaf);
        if (!change.mayChange(m_leaves.at(position.leaf)->names)) {
            location = leafLimit;
            continue;
        }
        const Run &run = constRuns(position.leaf).at(position.run);
        const qint64 runLimit = position.start + run.length;
        if (position.start == location && runLimit <= limit) {
            location = changeWholeRuns(position, limit, change);
            continue;
        }
        AttributeSet attributes = run.attributes;
        const qint64 partLimit = std::min(runLimit, limit);
        change.apply(attributes);
        if (!(attributes == run.attributes)) {
            changePart(position, {location, partLimit - location}, std::move(attributes));
        }
        location = partLimit;
    }
}

void AttributeRuns::changePart(Position position, NSRange part, AttributeSet attributes)
{
    makeRoom(position, 2);
    Leaf &leaf = *m_leaves.at(position.leaf);
    leaf.names |= attributes.names();
    QList<Run> &list = leaf.runs;
    Run *const run = list.data() + position.run;
    const qint64 before = part.location - position.start;
    const qint64 after = run->length - before - part.length;
    if (before == 0 && position.run > 0 && run[-1].attributes == attributes) {
        run[-1].length += part.length;
        run->length = after;
        m_cursor = {position.leaf, position.run, part.limit()};
    } else if (after == 0 && position.run + 1 < list.size() && run[1].attributes == attributes) {
        run[1].length += part.length;
        run->length = before;
    } else if (before == 0) {
        run->length = after;
        list.insert(position.run, Run{std::move(attributes), part.length});
    } else if (after == 0) {
        run->length = before;
        list.insert(position.run + 1, Run{std::move(attributes), part.length});
    } else {
        run->length = before;
        list.insert(position.run + 1, 2, Run{run->attributes, after});
        Run &middle = list[position.run + 1];
        middle = Run{std::move(attributes), part.length};
    }
}

qint64 AttributeRuns::changeWholeRuns(Position position, qint64 limit, const AttributeChange &change)
{
    Leaf &leaf = *m_leaves.at(position.leaf);
    leaf.names |= change.insertedNames();
    const qsizetype count = leaf.runs.size();
    Run *const runs = leaf.runs.data();
    // Runs up to in are read, those up to out are what has become of them.
    qsizetype out = position.run;
    qsizetype in = position.run;
    qint64 location = position.start;
    AttributeNameMask names;
    for (; in < count && location + runs[in].length <= limit; ++in) {
        location += runs[in].length;
        change.apply(runs[in].attributes);
        names |= runs[in].attributes.names();
        if (out > 0 && runs[out - 1].attributes == runs[in].attributes) {
            runs[out - 1].length += runs[in].length;
        } else {
            if (out != in) {
                std::swap(runs[out], runs[in]);
            }
            ++out;
        }
    }
    if (position.run == 0 && in == count) {
        leaf.names = names; // every run was looked at: what is gone is forgotten
    }
    qint64 nextStart = location;
    if (in < count && out > 0 && runs[out - 1].attributes == runs[in].attributes) {
        --out;
        runs[in].length += runs[out].length;
        nextStart -= runs[out].length;
    }
    if (out != in) {
        leaf.runs.erase(leaf.runs.cbegin() + out, leaf.runs.cbegin() + in);
    }
    m_cursor = out < leaf.runs.size() ? Position{position.leaf, out, nextStart}
                                      : Position{position.leaf, 0, m_cursorLeafStart};
    mergeIfSmall(position.leaf);
    return location;
}

void AttributeRuns::replace(NSRange range, qint64 length, const AttributeSet &attributes)
{
    if (isWide(range)) {
        AttributeRunsRewriter rewriter(*this, range);
        rewriter.keepTo(range.location);
        rewriter.add(attributes, length);
        rewriter.skipTo(range.limit());
        rewriter.finish();
        return;
    }
    remove(range);
    insert(range.location, length, attributes);
}

void AttributeRuns::replace(NSRange range, AttributeRuns other)
{
    if (range.length == m_length) {
        *this = std::move(other);
        return;
    }
    if (isWide(range) || other.m_leaves.size() > kFewLeaves) {
        AttributeRunsRewriter rewriter(*this, range);
        rewriter.keepTo(range.location);
        for (Position position; !other.isAtEnd(position); other.advance(position)) {
            rewriter.add(other.attributes(position), other.range(position).length);
        }
        rewriter.skipTo(range.limit());
        rewriter.finish();
        return;
    }
    remove(range);
    qint64 location = range.location;
    for (Position position; !other.isAtEnd(position); other.advance(position)) {
        const qint64 length = other.range(position).length;
        insert(location, length, other.attributes(position));
        location += length;
    }
}

bool AttributeRuns::isWide(NSRange range) const
{
    if (range.length <= kFewLeaves) {
        return false;
    }
    const qsizetype first = find(range.location).leaf;
    return find(range.limit() - 1).leaf - first > kFewLeaves;
}

void AttributeRuns::remove(NSRange range)
{
    qint64 left = range.length;
    while (left > 0) {
        const Position position = find(range.location);
        QList<Run> &list = m_leaves.at(position.leaf)->runs;
        Run *const runs = list.data();
        if (range.location > position.start) {
            const qint64 part = std::min(left, position.start + runs[position.run].length - range.location);
            runs[position.run].length -= part;
            addToLeafLength(position.leaf, -part);
            left -= part;
            continue;
        }
        const qint64 leftBefore = left;
        qsizetype limit = position.run;
        for (; limit < list.size() && runs[limit].length <= left; ++limit) {
            left -= runs[limit].length;
        }
        if (limit < list.size()) {
            runs[limit].length -= left;
            left = 0;
            if (limit > position.run && position.run > 0 &&
                runs[position.run - 1].attributes == runs[limit].attributes) {
                runs[position.run - 1].length += runs[limit].length;
                ++limit;
            }
        }
        m_cursor = {position.leaf, 0, m_cursorLeafStart};
        list.erase(list.cbegin() + position.run, list.cbegin() + limit);
        addToLeafLength(position.leaf, left - leftBefore);
        if (list.isEmpty()) {
            removeLeaf(position.leaf);
        } else {
            mergeIfSmall(position.leaf);
        }
    }
}

void AttributeRuns::insert(qint64 location, qint64 length, const AttributeSet &attributes)
{
    if (length == 0) {
        return;
    }
    if (m_length == 0) {
        append(attributes, length);
        return;
    }
    Position position = find(std::max<qint64>(location - 1, 0));
    QList<Run> &list = m_leaves.at(position.leaf)->runs;
    Run *const run = list.data() + position.run;
    const qint64 runLimit = position.start + run->length;
    if (run->attributes == attributes) {
        run->length += length;
        addToLeafLength(position.leaf, length);
    } else if (location == 0) {
        insertRun(position, attributes, length);
    } else if (location < runLimit) {
        const Run tail{run->attributes, runLimit - location};
        makeRoom(position, 2);
        runs(position.leaf)[position.run].length = location - position.start;
        ++position.run;
        addToLeafLength(position.leaf, -tail.length);
        insertRun(position, attributes, length);
        ++position.run;
        insertRun(position, tail.attributes, tail.length);
    } else if (position.run + 1 < list.size() && run[1].attributes == attributes) {
        run[1].length += length;
        addToLeafLength(position.leaf, length);
    } else {
        ++position.run;
        insertRun(position, attributes, length);
    }
}

void AttributeRuns::insertRun(Position &position, const AttributeSet &attributes, qint64 length)
{
    makeRoom(position, 1);
    Leaf &leaf = *m_leaves.at(position.leaf);
    leaf.names |= attributes.names();
    leaf.runs.insert(position.run, Run{attributes, length});
    addToLeafLength(position.leaf, length);
    m_cursor = {position.leaf, 0, m_cursorLeafStart};
}

void AttributeRuns::makeRoom(Position &position, qsizetype count)
{
    Leaf &leaf = *m_leaves.at(position.leaf);
    if (leaf.runs.size() + count <= kLeafCapacity) {
        return;
    }
    // OPTIMIZATION: a text that is styled from front to back grows at the end of its leaf, and leaves it rather full.
    const bool isAtEnd = position.run + 2 >= leaf.runs.size();
    const qsizetype half = isAtEnd ? kBuiltLeafSize : leaf.runs.size() / 2;
    auto *upper = new Leaf;
    upper->runs.reserve(kLeafCapacity);
    upper->runs.append(leaf.runs.sliced(half));
    leaf.runs.resize(half);
    qint64 upperLength = 0;
    for (const Run &run : std::as_const(upper->runs)) {
        upperLength += run.length;
        upper->names |= run.attributes.names();
    }
    leaf.names = {};
    for (const Run &run : std::as_const(leaf.runs)) {
        leaf.names |= run.attributes.names();
    }
    addToLeafLength(position.leaf, -upperLength);
    insertLeaf(position.leaf + 1, upper, upperLength);
    m_cursor = {position.leaf, 0, m_cursorLeafStart};
    if (position.run >= half) {
        m_cursorLeafStart += m_leafLengths.at(position.leaf);
        ++position.leaf;
        position.run -= half;
        m_cursor = {position.leaf, 0, m_cursorLeafStart};
    }
}

void AttributeRuns::addToLeafLength(qsizetype leaf, qint64 difference)
{
    m_leafLengths.data()[leaf] += difference;
    m_length += difference;
    const qsizetype group = leaf / kGroupSize;
    if (group < m_knownGroups) {
        m_groupLengths[static_cast<size_t>(group)] += difference;
    }
}

void AttributeRuns::insertLeaf(qsizetype index, Leaf *leaf, qint64 length)
{
    m_leaves.insert(index, leaf);
    m_leafLengths.insert(index, 0);
    m_knownGroups = std::min(m_knownGroups, index / kGroupSize);
    addToLeafLength(index, length);
}

void AttributeRuns::removeLeaf(qsizetype index)
{
    delete m_leaves.takeAt(index);
    m_leafLengths.removeAt(index);
    m_knownGroups = std::min(m_knownGroups, index / kGroupSize);
    if (m_cursor.leaf >= index) {
        forgetCursor();
    }
}

void AttributeRuns::mergeIfSmall(qsizetype leaf)
{
    const qsizetype count = constRuns(leaf).size();
    if (count >= kSmallLeafSize || m_leaves.size() == 1) {
        return;
    }
    qsizetype lower = leaf;
    if (leaf > 0 && constRuns(leaf - 1).size() + count <= kJoinedLeafSize) {
        lower = leaf - 1;
    } else if (leaf + 1 == m_leaves.size() || constRuns(leaf + 1).size() + count > kJoinedLeafSize) {
        return;
    }
    Leaf &target = *m_leaves.at(lower);
    const Leaf &source = *m_leaves.at(lower + 1);
    const qint64 sourceLength = m_leafLengths.at(lower + 1);
    target.names |= source.names;
    auto first = source.runs.cbegin();
    if (target.runs.constLast().attributes == first->attributes) {
        target.runs.last().length += first->length;
        ++first;
    }
    std::copy(first, source.runs.cend(), std::back_inserter(target.runs));
    addToLeafLength(lower + 1, -sourceLength);
    addToLeafLength(lower, sourceLength);
    removeLeaf(lower + 1);
}

void AttributeRuns::append(AttributeSet attributes, qint64 length)
{
    if (length == 0) {
        return;
    }
    if (m_leaves.isEmpty() || m_leaves.constLast()->runs.size() >= kBuiltLeafSize) {
        auto *leaf = new Leaf;
        if (!m_leaves.isEmpty()) {
            leaf->runs.reserve(kLeafCapacity); // one of many
        }
        insertLeaf(m_leaves.size(), leaf, 0);
    }
    const qsizetype last = m_leaves.size() - 1;
    Leaf &leaf = *m_leaves.at(last);
    if (!leaf.runs.isEmpty() && leaf.runs.constLast().attributes == attributes) {
        leaf.runs.last().length += length;
    } else {
        leaf.names |= attributes.names();
        leaf.runs.append(Run{std::move(attributes), length});
    }
    addToLeafLength(last, length);
}

void AttributeRuns::insert(std::span<Insertion> insertions)
{
    if (insertions.empty()) {
        return;
    }
    const auto count = static_cast<qsizetype>(insertions.size());
    const auto leafOf = [this](qint64 location) { return find(std::min(location, m_length - 1)).leaf; };
    const qsizetype leaves =
        m_length == 0 ? 0 : leafOf(insertions.back().range.location) - leafOf(insertions.front().range.location) + 1;
    if (count < kFewChangesOfLeaf * leaves) {
        for (const Insertion &insertion : insertions) {
            change(insertion.range, AttributeChange::insertingSet(insertion.attributes));
        }
        return;
    }
    const qint64 first = insertions.front().range.location;
    AttributeRunsRewriter rewriter(*this, {first, insertions.back().range.limit() - first});
    for (Insertion &insertion : insertions) {
        rewriter.keepTo(insertion.range.location);
        rewriter.insertTo(insertion.range.limit(), std::move(insertion.attributes));
    }
    rewriter.finish();
}

void AttributeRuns::append(const AttributeRuns &other, NSRange range)
{
    if (range.length == 0) {
        return;
    }
    Position position = other.find(range.location);
    for (qint64 location = range.location; location < range.limit(); other.advance(position)) {
        const qint64 limit = std::min(other.range(position).limit(), range.limit());
        append(other.attributes(position), limit - location);
        location = limit;
    }
}

void AttributeRuns::append(const AttributeRuns &other, NSRange range, const AttributeChange &change)
{
    if (range.length == 0) {
        return;
    }
    AttributeRunsRewriter rewriter(*this, {m_length, 0});
    rewriter.keepTo(m_length);
    const Position first = other.find(range.location);
    qint64 start = first.start;
    qsizetype run = first.run;
    for (qsizetype leaf = first.leaf; leaf < other.m_leaves.size() && start < range.limit(); ++leaf, run = 0) {
        const QList<Run> &runs = other.constRuns(leaf);
        for (; run < runs.size() && start < range.limit(); ++run) {
            const qint64 limit = start + runs.at(run).length;
            rewriter.add(change.applied(runs.at(run).attributes),
                         std::min(limit, range.limit()) - std::max(start, range.location));
            start = limit;
        }
    }
    rewriter.finish();
}

void AttributeRuns::checkInvariants() const
{
    QUIB_REQUIRE(m_leaves.size() == m_leafLengths.size());
    std::vector<qint64> groups;
    qint64 total = 0;
    for (qsizetype index = 0; index < m_leaves.size(); ++index) {
        const Leaf &leaf = *m_leaves.at(index);
        const QList<Run> &runs = leaf.runs;
        QUIB_REQUIRE(!runs.isEmpty() && runs.size() <= kLeafCapacity);
        if (index == m_cursor.leaf) {
            QUIB_REQUIRE(m_cursorLeafStart == total);
        }
        qint64 length = 0;
        for (qsizetype run = 0; run < runs.size(); ++run) {
            const AttributeSet &attributes = runs.at(run).attributes;
            attributes.checkInvariants();
            AttributeNameMask names = leaf.names;
            names |= attributes.names();
            QUIB_REQUIRE(names == leaf.names);
            QUIB_REQUIRE(runs.at(run).length > 0);
            QUIB_REQUIRE(run == 0 || !(runs.at(run - 1).attributes == attributes));
            if (index == m_cursor.leaf && run == m_cursor.run) {
                QUIB_REQUIRE(m_cursor.start == total + length);
            }
            length += runs.at(run).length;
        }
        QUIB_REQUIRE(length == m_leafLengths.at(index));
        total += length;
        groups.resize(static_cast<size_t>(index / kGroupSize) + 1);
        groups.back() += length;
    }
    QUIB_REQUIRE(total == m_length);
    QUIB_REQUIRE(m_leaves.isEmpty() || m_cursor.run < constRuns(m_cursor.leaf).size());
    for (qsizetype group = 0; group < m_knownGroups; ++group) {
        QUIB_REQUIRE(m_groupLengths.at(static_cast<size_t>(group)) == groups.at(static_cast<size_t>(group)));
    }
}

} // namespace quib
