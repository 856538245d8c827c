#include "MarkerEdits.h"

#include <QtGlobal>

#include <algorithm>

namespace quib {

void MarkerEdits::insert(qint64 location, const QString &marker, Caret caret, const AttributeSet &attributes)
{
    if (!marker.isEmpty()) {
        m_insertions.push_back({location, marker, attributes, caret});
    }
}

void MarkerEdits::remove(NSRange range)
{
    if (range.length > 0) {
        m_areRemovalsMerged = m_removals.empty() || (m_areRemovalsMerged && m_removals.back().limit() < range.location);
        m_removals.push_back(range);
    }
}

void MarkerEdits::removeRuns(const NSAttributeName &name, NSRange range)
{
    m_text->enumerateAttribute(name, range, NSAttributedStringEnumerationOptions::Forward,
                               [this](const AttributeValue &value, NSRange run, bool * /*stop*/) {
                                   if (value) {
                                       remove(run);
                                   }
                               });
}

qint64 MarkerEdits::limitOfRemovalAt(qint64 place)
{
    mergeRemovals();
    const auto behind = std::ranges::upper_bound(m_removals, place, {}, &NSRange::location);
    return behind != m_removals.begin() && std::prev(behind)->contains(place) ? std::prev(behind)->limit() : place;
}

NSRange MarkerEdits::changedRange()
{
    Q_ASSERT(!isEmpty());
    mergeRemovals();
    qint64 start = NSNotFound;
    qint64 limit = 0;
    for (const Insertion &insertion : m_insertions) {
        start = std::min(start, insertion.location);
        limit = std::max(limit, insertion.location);
    }
    if (!m_removals.empty()) {
        start = std::min(start, m_removals.front().location);
        limit = std::max(limit, m_removals.back().limit());
    }
    return {start, limit - start};
}

NSAttributedString MarkerEdits::editedText(NSRange range)
{
    mergeRemovals();
    std::vector<Insertion> insertions = m_insertions;
    std::ranges::stable_sort(insertions, {}, &Insertion::location);
    NSMutableAttributedString text(m_text->attributedSubstringFromRange(range));
    // From the end on, so that what lies before stays where it is; a removal before the insertions at its start.
    auto insertion = insertions.rbegin();
    const auto insertFrom = [&](qint64 start) {
        for (; insertion != insertions.rend() && insertion->location >= start; ++insertion) {
            text.insertAttributedString(NSAttributedString(insertion->marker, insertion->attributes),
                                        insertion->location - range.location);
        }
    };
    for (auto removal = m_removals.rbegin(); removal != m_removals.rend(); ++removal) {
        insertFrom(removal->limit());
        // What is inserted within a removal comes in its place.
        for (auto inside = insertion; inside != insertions.rend() && inside->location > removal->location; ++inside) {
            inside->location = removal->location;
        }
        text.deleteCharactersInRange({removal->location - range.location, removal->length});
    }
    insertFrom(range.location);
    return NSAttributedString(text);
}

NSRange MarkerEdits::editedRange(NSRange range) const
{
    const qint64 start = editedPlace(range.location);
    return {start, std::max<qint64>(editedPlace(range.limit()) - start, 0)};
}

qint64 MarkerEdits::editedPlace(qint64 place) const
{
    Q_ASSERT(m_areRemovalsMerged);
    qint64 edited = place;
    for (const NSRange &removal : m_removals) {
        edited -= std::clamp<qint64>(place - removal.location, 0, removal.length);
    }
    for (const Insertion &insertion : m_insertions) {
        if (insertion.location < place || (insertion.location == place && insertion.caret == Caret::Behind)) {
            edited += insertion.marker.size();
        }
    }
    return edited;
}

void MarkerEdits::mergeRemovals()
{
    if (m_areRemovalsMerged) {
        return;
    }
    std::ranges::sort(m_removals, {}, &NSRange::location);
    std::vector<NSRange> merged;
    for (const NSRange &removal : m_removals) {
        if (!merged.empty() && merged.back().limit() >= removal.location) {
            merged.back() = NSUnionRange(merged.back(), removal);
        } else {
            merged.push_back(removal);
        }
    }
    m_removals = std::move(merged);
    m_areRemovalsMerged = true;
}

} // namespace quib
