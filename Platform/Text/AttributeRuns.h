#pragma once

#include "AttributeLeaf.h"
#include "AttributeSet.h"

#include <Foundation/NSRange.h>

#include <QList>

#include <array>
#include <memory>
#include <span>
#include <vector>

namespace quib {

/// One way to change sets of attributes. Holds references: it lives no longer than the call that it is made for.
class AttributeChange
{
public:
    [[nodiscard]] static AttributeChange insertingValue(const NSAttributeName &name, const AttributeValue &value);
    [[nodiscard]] static AttributeChange insertingSet(const AttributeSet &attributes);
    [[nodiscard]] static AttributeChange replacingBy(const AttributeSet &attributes);
    [[nodiscard]] static AttributeChange removing(std::span<const NSAttributeName> names);
    /// Removes names, and then inserts a set.
    [[nodiscard]] static AttributeChange resetting(std::span<const NSAttributeName> names, const AttributeSet &to);

    void apply(AttributeSet &attributes) const;
    /// What a set becomes that itself stays as it is.
    [[nodiscard]] AttributeSet applied(const AttributeSet &attributes) const;
    /// False only when no set with these names can change.
    [[nodiscard]] bool mayChange(AttributeNameMask names) const
    {
        return m_kind != Kind::Remove || names.intersects(m_removed.mask);
    }
    /// The names that a changed set may have got.
    [[nodiscard]] AttributeNameMask insertedNames() const { return m_insertedNames; }

private:
    enum class Kind : quint8
    {
        InsertValue,
        InsertSet,
        Replace,
        Remove,
        Reset,
    };
    /// What the shared part of a set became. A text has few of those, and many runs of each.
    struct Known
    {
        const AttributeEntries *from = nullptr;
        const AttributeEntries *to = nullptr;
        bool isKnown = false;
    };
    using KnownSets = std::array<Known, 64>;

    /// What the shared part of a set becomes; null where that is no shared set.
    [[nodiscard]] const Known *knownOf(const AttributeEntries *from) const;
    void applyToEntries(AttributeSet &attributes) const;
    void applyRemembering(AttributeSet &attributes) const;

    Kind m_kind = Kind::Remove;
    AttributeNameMask m_insertedNames;
    const NSAttributeName *m_name = nullptr;
    const AttributeValue *m_value = nullptr;
    const AttributeSet *m_set = nullptr;
    AttributeNameList m_removed;
    /// Null until the first set is changed by a removal or a reset.
    mutable std::unique_ptr<KnownSets> m_known;
};

class AttributeRunsRewriter;

/// The attributes of a text as runs in two levels: leaves of at most kLeafCapacity runs each, and their lengths with
/// sums over groups of leaves, so that neither a look-up nor an edit walks the text. Copies share their leaves.
/// Neighbouring runs of one leaf differ, unless they are kept apart for a while; no run and no leaf is empty. The place
/// of the last look-up is remembered: going on from there is free. A value; also reading one instance belongs to one
/// thread at a time.
class AttributeRuns
{
public:
    static constexpr qsizetype kLeafCapacity = AttributeLeaf::kMostRuns;

    /// A run and where it starts in the text. Valid until the next change.
    struct Position
    {
        qsizetype leaf = 0;
        qsizetype run = 0;
        qint64 start = 0;
    };

    AttributeRuns() = default;
    AttributeRuns(const AttributeSet &attributes, qint64 length);
    AttributeRuns(const AttributeRuns &other);
    AttributeRuns(AttributeRuns &&other) noexcept;
    AttributeRuns &operator=(AttributeRuns other) noexcept;
    ~AttributeRuns();

    [[nodiscard]] qint64 length() const { return m_length; }
    [[nodiscard]] qsizetype runCount() const;
    /// Requires: 0 <= location < length.
    [[nodiscard]] Position find(qint64 location) const;
    [[nodiscard]] const AttributeSet &attributes(Position position) const
    {
        return constLeaf(position.leaf).attributesOf(position.run);
    }
    [[nodiscard]] NSRange range(Position position) const
    {
        return {position.start, constLeaf(position.leaf).lengthOf(position.run)};
    }
    [[nodiscard]] bool isAtEnd(Position position) const { return position.leaf >= m_leaves.size(); }
    /// Requires: not at the end.
    void advance(Position &position) const
    {
        const Leaf &leaf = constLeaf(position.leaf);
        position.start += leaf.lengthOf(position.run);
        if (++position.run == leaf.count()) {
            position.run = 0;
            ++position.leaf;
            prefetchBehind(position.leaf);
        }
    }
    /// Requires: not at the first run.
    void retreat(Position &position) const;
    /// From a run without any of the names over runs that have none of them: to the next run that may have one, or the
    /// first that starts at the limit or behind it.
    void advanceToNames(Position &position, AttributeNameMask names, qint64 limit) const;

    /// The same, but also to any run that has an object with identity: those are not looked into, which is where the
    /// time goes in a text full of them.
    void advanceToObjects(Position &position, AttributeNameMask names, qint64 limit) const;

    void change(NSRange range, const AttributeChange &change);
    struct Insertion
    {
        NSRange range;
        AttributeSet attributes;
    };
    /// Any number of changes in one pass, in which leaves that none of them touches stay as they are. The attributes
    /// are taken from the insertions.
    /// Requires: the ranges ascend and do not overlap.
    void insert(std::span<Insertion> insertions);
    void replace(NSRange range, qint64 length, const AttributeSet &attributes);
    void replace(NSRange range, AttributeRuns other);
    /// Adds runs at the end, full leaves at a time: the way to build many.
    void append(AttributeSet attributes, qint64 length);
    /// Requires: the range lies in the other runs, which are not these.
    void append(const AttributeRuns &other, NSRange range);
    /// The same for runs that are changed on the way, and stay apart.
    void appendApart(const AttributeRuns &other, NSRange range, const AttributeChange &change);
    /// Changes all runs, which stay apart even where they become equal: what is put back to its old places then finds
    /// its runs there, and moves no other.
    void changeAllApart(const AttributeChange &change);
    /// Ends that runs stay apart.
    void joinEqual();

    /// Requires the statements of the class comment, and that what is remembered is right; for tests.
    void checkInvariants() const;

private:
    friend class AttributeRunsRewriter;

    /// Lengths are summed over so many leaves.
    static constexpr qsizetype kGroupSize = 64;
    /// Leaves that are built in a row keep some room for the edits to come.
    static constexpr qsizetype kBuiltLeafSize = 112;
    /// A leaf below the first joins a neighbour when both have at most the second.
    static constexpr qsizetype kSmallLeafSize = 16;
    static constexpr qsizetype kJoinedLeafSize = 96;

    using Leaf = AttributeLeaf;

    template <typename IsWanted>
    void advanceTo(Position &position, AttributeNameMask names, qint64 limit, const IsWanted &isWanted) const;
    /// Whether a range takes in so many leaves that it is cheaper rebuilt than changed leaf by leaf.
    [[nodiscard]] bool isWide(NSRange range) const;
    void remove(NSRange range);
    void insert(qint64 location, qint64 length, const AttributeSet &attributes);
    /// Changes runs that begin and end where the insertions do, which moves nothing, and then the others one by one.
    /// False, with nothing changed, where there are too many others.
    [[nodiscard]] bool insertInPlace(std::span<Insertion> insertions, qsizetype most);
    void changePart(Position position, NSRange part, AttributeSet attributes);
    [[nodiscard]] qint64 changeWholeRuns(Position position, qint64 limit, const AttributeChange &change);
    void insertRun(Position &position, const AttributeSet &attributes, qint64 length);
    void makeRoom(Position &position, qsizetype count);
    void addToLeafLength(qsizetype leaf, qint64 difference);
    void insertLeaf(qsizetype index, Leaf *leaf, qint64 length);
    void removeLeaf(qsizetype index);
    void mergeIfSmall(qsizetype leaf);
    [[nodiscard]] qsizetype leafAt(qint64 location, qint64 *start) const;
    [[nodiscard]] const Leaf &constLeaf(qsizetype index) const { return *m_leaves.at(index); }
    /// Walks over very many leaves wait for the memory of each unless it is asked for before.
    void prefetchBehind(qsizetype index) const
    {
        if (index + 2 < m_leaves.size()) {
            m_leaves.at(index + 1)->prefetch();
            __builtin_prefetch(m_leaves.at(index + 2));
        }
    }
    /// A leaf to be changed, which no other text shares from here on.
    [[nodiscard]] Leaf &ownLeaf(qsizetype index);
    void forgetCursor() const
    {
        m_cursor = {};
        m_cursorLeafStart = 0;
    }

    qint64 m_length = 0;
    /// Whether equal runs may be neighbours.
    bool m_isApart = false;
    QList<Leaf *> m_leaves;
    QList<qint64> m_leafLengths;
    /// Sums over kGroupSize leaves each; the first m_knownGroups are right.
    mutable std::vector<qint64> m_groupLengths;
    mutable qsizetype m_knownGroups = 0;
    mutable Position m_cursor;
    mutable qint64 m_cursorLeafStart = 0;
};

} // namespace quib
