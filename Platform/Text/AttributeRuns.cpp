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
    changed.setObjects(AttributeSet::placeWithout(attributes.objects(), m_removed, m_set->m_shared));
    return changed;
}

AttributeRuns::AttributeRuns(const AttributeSet &attributes, qint64 length)
{
    append(attributes, length);
}

AttributeRuns::AttributeRuns(const AttributeRuns &other)
    : m_length(other.m_length)
    , m_isApart(other.m_isApart)
    , m_leaves(other.m_leaves)
    , m_leafLengths(other.m_leafLengths)
{
    for (Leaf *const leaf : std::as_const(m_leaves)) {
        Leaf::retain(leaf);
    }
}

AttributeRuns::AttributeRuns(AttributeRuns &&other) noexcept
    : m_length(std::exchange(other.m_length, 0))
    , m_isApart(std::exchange(other.m_isApart, false))
    , m_leaves(std::exchange(other.m_leaves, {}))
    , m_leafLengths(std::exchange(other.m_leafLengths, {}))
{
    other.m_knownGroups = 0;
    other.forgetCursor();
}

AttributeRuns &AttributeRuns::operator=(AttributeRuns other) noexcept
{
    std::swap(m_length, other.m_length);
    std::swap(m_isApart, other.m_isApart);
    m_leaves.swap(other.m_leaves);
    m_leafLengths.swap(other.m_leafLengths);
    m_knownGroups = 0;
    forgetCursor();
    return *this;
}

AttributeRuns::~AttributeRuns()
{
    for (Leaf *const leaf : std::as_const(m_leaves)) {
        Leaf::release(leaf);
    }
}

AttributeRuns::Leaf &AttributeRuns::ownLeaf(qsizetype index)
{
    Leaf *leaf = m_leaves.at(index);
    if (leaf->isShared()) {
        m_leaves[index] = leaf->copy();
        Leaf::release(leaf);
        leaf = m_leaves.at(index);
    }
    return *leaf;
}

qsizetype AttributeRuns::runCount() const
{
    return std::accumulate(m_leaves.begin(), m_leaves.end(), qsizetype(0),
                           [](qsizetype sum, const Leaf *leaf) { return sum + leaf->count(); });
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
    const qint64 *const lengths = constLeaf(m_cursor.leaf).lengths();
    Position position = m_cursor;
    if (location - m_cursorLeafStart < position.start - location) {
        position.run = 0;
        position.start = m_cursorLeafStart;
    }
    while (location < position.start) {
        --position.run;
        position.start -= lengths[position.run];
    }
    while (location - position.start >= lengths[position.run]) {
        position.start += lengths[position.run];
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
        position.run = constLeaf(position.leaf).count();
    }
    --position.run;
    position.start -= constLeaf(position.leaf).lengthOf(position.run);
}

template <typename IsWanted>
void AttributeRuns::advanceTo(Position &position, AttributeNameMask names, qint64 limit, const IsWanted &isWanted) const
{
    for (; !isAtEnd(position) && position.start < limit; ++position.leaf, position.run = 0) {
        const Leaf &leaf = constLeaf(position.leaf);
        if (position.run == 0 && !leaf.names().intersects(names)) {
            position.start += m_leafLengths.at(position.leaf);
            continue;
        }
        prefetchBehind(position.leaf);
        const AttributeSet *const sets = leaf.sets();
        const qint64 *const lengths = leaf.lengths();
        const qsizetype count = leaf.count();
        for (; position.run < count; ++position.run) {
            if (position.start >= limit || isWanted(sets[position.run])) {
                return;
            }
            position.start += lengths[position.run];
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
        Position position = find(location);
        if (!change.mayChange(constLeaf(position.leaf).names())) {
            // OPTIMIZATION: leaves are passed without a look into them.
            location = m_cursorLeafStart;
            while (location < limit && !change.mayChange(constLeaf(position.leaf).names())) {
                location += m_leafLengths.at(position.leaf++);
                if (isAtEnd(position)) {
                    return;
                }
            }
            m_cursor = {position.leaf, 0, location};
            m_cursorLeafStart = location;
            continue;
        }
        const Leaf &leaf = constLeaf(position.leaf);
        const qint64 runLimit = position.start + leaf.lengthOf(position.run);
        if (position.start == location && runLimit <= limit) {
            location = changeWholeRuns(position, limit, change);
            continue;
        }
        AttributeSet attributes = leaf.attributesOf(position.run);
        const qint64 partLimit = std::min(runLimit, limit);
        change.apply(attributes);
        if (!(attributes == leaf.attributesOf(position.run))) {
            changePart(position, {location, partLimit - location}, std::move(attributes));
        }
        location = partLimit;
    }
}

void AttributeRuns::changePart(Position position, NSRange part, AttributeSet attributes)
{
    makeRoom(position, 2);
    Leaf &leaf = ownLeaf(position.leaf);
    leaf.addNames(attributes.names());
    const qsizetype run = position.run;
    qint64 *const lengths = leaf.lengths();
    const AttributeSet *const sets = leaf.sets();
    const qint64 before = part.location - position.start;
    const qint64 after = lengths[run] - before - part.length;
    if (before == 0 && run > 0 && sets[run - 1] == attributes) {
        lengths[run - 1] += part.length;
        lengths[run] = after;
        m_cursor = {position.leaf, run, part.limit()};
    } else if (after == 0 && run + 1 < leaf.count() && sets[run + 1] == attributes) {
        lengths[run + 1] += part.length;
        lengths[run] = before;
    } else if (before == 0) {
        lengths[run] = after;
        leaf.insert(run, std::move(attributes), part.length);
    } else if (after == 0) {
        lengths[run] = before;
        leaf.insert(run + 1, std::move(attributes), part.length);
    } else {
        lengths[run] = before;
        leaf.insert(run + 1, AttributeSet(sets[run]), after);
        leaf.insert(run + 1, std::move(attributes), part.length);
    }
}

qint64 AttributeRuns::changeWholeRuns(Position position, qint64 limit, const AttributeChange &change)
{
    Leaf &leaf = ownLeaf(position.leaf);
    leaf.addNames(change.insertedNames());
    const qsizetype count = leaf.count();
    AttributeSet *const sets = leaf.sets();
    qint64 *const lengths = leaf.lengths();
    // Runs up to in are read, those up to out are what has become of them.
    qsizetype out = position.run;
    qsizetype in = position.run;
    qint64 location = position.start;
    AttributeNameMask names;
    for (; in < count && location + lengths[in] <= limit; ++in) {
        location += lengths[in];
        change.apply(sets[in]);
        names |= sets[in].names();
        if (!m_isApart && out > 0 && sets[out - 1] == sets[in]) {
            lengths[out - 1] += lengths[in];
        } else {
            if (out != in) {
                sets[out].swap(sets[in]);
                lengths[out] = lengths[in];
            }
            ++out;
        }
    }
    if (position.run == 0 && in == count) {
        leaf.setNames(names); // every run was looked at: what is gone is forgotten
    }
    qint64 nextStart = location;
    if (!m_isApart && in < count && out > 0 && sets[out - 1] == sets[in]) {
        --out;
        lengths[in] += lengths[out];
        nextStart -= lengths[out];
    }
    if (out != in) {
        leaf.erase(out, in);
    }
    m_cursor =
        out < leaf.count() ? Position{position.leaf, out, nextStart} : Position{position.leaf, 0, m_cursorLeafStart};
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
        Leaf &leaf = ownLeaf(position.leaf);
        qint64 *const lengths = leaf.lengths();
        if (range.location > position.start) {
            const qint64 part = std::min(left, position.start + lengths[position.run] - range.location);
            lengths[position.run] -= part;
            addToLeafLength(position.leaf, -part);
            left -= part;
            continue;
        }
        const qint64 leftBefore = left;
        qsizetype limit = position.run;
        for (; limit < leaf.count() && lengths[limit] <= left; ++limit) {
            left -= lengths[limit];
        }
        if (limit < leaf.count()) {
            lengths[limit] -= left;
            left = 0;
            if (limit > position.run && position.run > 0 && leaf.sets()[position.run - 1] == leaf.sets()[limit]) {
                lengths[position.run - 1] += lengths[limit];
                ++limit;
            }
        }
        m_cursor = {position.leaf, 0, m_cursorLeafStart};
        leaf.erase(position.run, limit);
        addToLeafLength(position.leaf, left - leftBefore);
        if (leaf.count() == 0) {
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
    const qsizetype run = position.run;
    const Leaf &leaf = constLeaf(position.leaf);
    const qint64 runLimit = position.start + leaf.lengthOf(run);
    if (leaf.attributesOf(run) == attributes) {
        ownLeaf(position.leaf).lengths()[run] += length;
        addToLeafLength(position.leaf, length);
    } else if (location == 0) {
        insertRun(position, attributes, length);
    } else if (location < runLimit) {
        const AttributeSet tail = leaf.attributesOf(run);
        const qint64 tailLength = runLimit - location;
        makeRoom(position, 2);
        ownLeaf(position.leaf).lengths()[position.run] = location - position.start;
        ++position.run;
        addToLeafLength(position.leaf, -tailLength);
        insertRun(position, attributes, length);
        ++position.run;
        insertRun(position, tail, tailLength);
    } else if (run + 1 < leaf.count() && leaf.attributesOf(run + 1) == attributes) {
        ownLeaf(position.leaf).lengths()[run + 1] += length;
        addToLeafLength(position.leaf, length);
    } else {
        ++position.run;
        insertRun(position, attributes, length);
    }
}

void AttributeRuns::insertRun(Position &position, const AttributeSet &attributes, qint64 length)
{
    makeRoom(position, 1);
    Leaf &leaf = ownLeaf(position.leaf);
    leaf.addNames(attributes.names());
    leaf.insert(position.run, attributes, length);
    addToLeafLength(position.leaf, length);
    m_cursor = {position.leaf, 0, m_cursorLeafStart};
}

void AttributeRuns::makeRoom(Position &position, qsizetype count)
{
    if (constLeaf(position.leaf).count() + count <= kLeafCapacity) {
        return;
    }
    Leaf &leaf = ownLeaf(position.leaf);
    // OPTIMIZATION: a text that is styled from front to back grows at the end of its leaf, and leaves it rather full.
    const bool isAtEnd = position.run + 2 >= leaf.count();
    const qsizetype half = isAtEnd ? kBuiltLeafSize : leaf.count() / 2;
    auto *const upper = new Leaf(kLeafCapacity);
    leaf.moveTail(half, *upper);
    const qint64 upperLength = std::accumulate(upper->lengths(), upper->lengths() + upper->count(), qint64(0));
    for (Leaf *const part : {&leaf, upper}) {
        AttributeNameMask names;
        std::for_each_n(part->sets(), part->count(), [&names](const AttributeSet &set) { names |= set.names(); });
        part->setNames(names);
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
    Leaf::release(m_leaves.takeAt(index));
    m_leafLengths.removeAt(index);
    m_knownGroups = std::min(m_knownGroups, index / kGroupSize);
    if (m_cursor.leaf >= index) {
        forgetCursor();
    }
}

void AttributeRuns::mergeIfSmall(qsizetype leaf)
{
    const qsizetype count = constLeaf(leaf).count();
    if (count >= kSmallLeafSize || m_leaves.size() == 1) {
        return;
    }
    qsizetype lower = leaf;
    if (leaf > 0 && constLeaf(leaf - 1).count() + count <= kJoinedLeafSize) {
        lower = leaf - 1;
    } else if (leaf + 1 == m_leaves.size() || constLeaf(leaf + 1).count() + count > kJoinedLeafSize) {
        return;
    }
    Leaf &target = ownLeaf(lower);
    Leaf &source = ownLeaf(lower + 1);
    const qint64 sourceLength = m_leafLengths.at(lower + 1);
    target.addNames(source.names());
    if (target.attributesOf(target.count() - 1) == source.attributesOf(0)) {
        target.lengths()[target.count() - 1] += source.lengthOf(0);
        source.erase(0, 1);
    }
    target.reserve(std::max(target.capacity(), target.count() + source.count()));
    target.appendMoved(source, 0, source.count());
    source.forget();
    addToLeafLength(lower + 1, -sourceLength);
    addToLeafLength(lower, sourceLength);
    removeLeaf(lower + 1);
}

void AttributeRuns::append(AttributeSet attributes, qint64 length)
{
    if (length == 0) {
        return;
    }
    if (m_leaves.isEmpty() || m_leaves.constLast()->count() >= kBuiltLeafSize) {
        const bool isOneOfMany = !m_leaves.isEmpty();
        insertLeaf(m_leaves.size(), new Leaf(isOneOfMany ? kLeafCapacity : 0), 0);
    }
    const qsizetype last = m_leaves.size() - 1;
    Leaf &leaf = ownLeaf(last);
    if (const qsizetype count = leaf.count(); count > 0 && leaf.attributesOf(count - 1) == attributes) {
        leaf.lengths()[count - 1] += length;
    } else {
        leaf.addNames(attributes.names());
        leaf.append(std::move(attributes), length);
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
    const qsizetype few = kFewChangesOfLeaf * leaves;
    if (m_isApart && leaves > 0 && insertInPlace(insertions, few)) {
        return;
    }
    if (count < few) {
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

bool AttributeRuns::insertInPlace(std::span<Insertion> insertions, qsizetype most)
{
    struct Start
    {
        qint32 leaf;
        qint32 run;
    };
    constexpr Start kWithinRun{-1, 0};
    Position position = find(std::min(insertions.front().range.location, m_length - 1));
    qint64 leafStart = m_cursorLeafStart;
    // Goes on to the run that starts at a place; false where none does.
    const auto goTo = [&](qint64 location) {
        while (!isAtEnd(position) && location - leafStart >= m_leafLengths.at(position.leaf)) {
            leafStart += m_leafLengths.at(position.leaf);
            position = {position.leaf + 1, 0, leafStart};
            prefetchBehind(position.leaf);
        }
        if (position.start < location) {
            const qint64 *const lengths = constLeaf(position.leaf).lengths();
            while (position.start < location) {
                position.start += lengths[position.run++];
            }
        }
        return position.start == location;
    };
    // OPTIMIZATION: all are looked for in one walk over the lengths before anything is touched.
    std::vector<Start> starts;
    starts.reserve(insertions.size());
    qsizetype edges = 0;
    for (const Insertion &insertion : insertions) {
        const bool isAtStart = goTo(insertion.range.location);
        const Start start{static_cast<qint32>(position.leaf), static_cast<qint32>(position.run)};
        const bool isWhole = goTo(insertion.range.limit()) && isAtStart;
        starts.push_back(isWhole ? start : kWithinRun);
        edges += isWhole ? 0 : 1;
        if (edges >= most) {
            return false;
        }
    }
    for (size_t index = 0; index < insertions.size(); ++index) {
        Insertion &insertion = insertions[index];
        auto [leafIndex, run] = starts[index];
        if (leafIndex == kWithinRun.leaf) {
            continue;
        }
        const AttributeNameMask names = insertion.attributes.names();
        for (qint64 left = insertion.range.length; left > 0; ++leafIndex, run = 0) {
            Leaf &leaf = ownLeaf(leafIndex);
            leaf.addNames(names);
            for (; left > 0 && run < leaf.count(); ++run) {
                left -= leaf.lengthOf(run);
                AttributeSet &set = leaf.sets()[run];
                if (left == 0) {
                    set.insert(std::move(insertion.attributes));
                } else {
                    set.insert(insertion.attributes);
                }
            }
        }
    }
    for (size_t index = 0; edges > 0; ++index) {
        if (starts[index].leaf == kWithinRun.leaf) {
            change(insertions[index].range, AttributeChange::insertingSet(insertions[index].attributes));
            --edges;
        }
    }
    return true;
}

void AttributeRuns::changeAllApart(const AttributeChange &change)
{
    m_isApart = true;
    for (qsizetype index = 0; index < m_leaves.size(); ++index) {
        prefetchBehind(index);
        Leaf &leaf = ownLeaf(index);
        AttributeNameMask names;
        for (AttributeSet &set : std::span(leaf.sets(), static_cast<size_t>(leaf.count()))) {
            change.apply(set);
            names |= set.names();
        }
        leaf.setNames(names);
    }
}

void AttributeRuns::joinEqual()
{
    if (!std::exchange(m_isApart, false)) {
        return;
    }
    forgetCursor();
    qsizetype equal = 0;
    for (qsizetype index = 0; index < m_leaves.size(); ++index) {
        prefetchBehind(index);
        equal += constLeaf(index).equalNeighbours();
    }
    if (equal > m_leaves.size()) {
        AttributeRunsRewriter rewriter(*this, {0, m_length});
        rewriter.joinTo(m_length);
        rewriter.finish();
        return;
    }
    for (qsizetype index = m_leaves.size() - 1; index >= 0 && equal > 0; --index) {
        if (const qsizetype joined = constLeaf(index).equalNeighbours(); joined > 0) {
            equal -= joined;
            ownLeaf(index).joinEqual();
            mergeIfSmall(index);
        }
    }
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

void AttributeRuns::appendApart(const AttributeRuns &other, NSRange range, const AttributeChange &change)
{
    if (range.length == 0) {
        return;
    }
    m_isApart = true;
    AttributeRunsRewriter rewriter(*this, {m_length, 0});
    rewriter.keepTo(m_length);
    const Position first = other.find(range.location);
    qint64 start = first.start;
    qsizetype run = first.run;
    for (qsizetype leaf = first.leaf; leaf < other.m_leaves.size() && start < range.limit(); ++leaf, run = 0) {
        other.prefetchBehind(leaf);
        const Leaf &runs = other.constLeaf(leaf);
        for (; run < runs.count() && start < range.limit(); ++run) {
            const qint64 limit = start + runs.lengthOf(run);
            rewriter.addApart(change.applied(runs.attributesOf(run)),
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
        QUIB_REQUIRE(leaf.count() > 0 && leaf.count() <= leaf.capacity() && leaf.capacity() <= kLeafCapacity);
        if (index == m_cursor.leaf) {
            QUIB_REQUIRE(m_cursorLeafStart == total);
        }
        qint64 length = 0;
        for (qsizetype run = 0; run < leaf.count(); ++run) {
            const AttributeSet &attributes = leaf.attributesOf(run);
            attributes.checkInvariants();
            AttributeNameMask names = leaf.names();
            names |= attributes.names();
            QUIB_REQUIRE(names == leaf.names());
            QUIB_REQUIRE(leaf.lengthOf(run) > 0);
            QUIB_REQUIRE(m_isApart || run == 0 || !(leaf.attributesOf(run - 1) == attributes));
            if (index == m_cursor.leaf && run == m_cursor.run) {
                QUIB_REQUIRE(m_cursor.start == total + length);
            }
            length += leaf.lengthOf(run);
        }
        QUIB_REQUIRE(length == m_leafLengths.at(index));
        total += length;
        groups.resize(static_cast<size_t>(index / kGroupSize) + 1);
        groups.back() += length;
    }
    QUIB_REQUIRE(total == m_length);
    QUIB_REQUIRE(m_leaves.isEmpty() || m_cursor.run < constLeaf(m_cursor.leaf).count());
    for (qsizetype group = 0; group < m_knownGroups; ++group) {
        QUIB_REQUIRE(m_groupLengths.at(static_cast<size_t>(group)) == groups.at(static_cast<size_t>(group)));
    }
}

} // namespace quib
