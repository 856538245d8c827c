#include "QBNoteTextView.h"

#include <Graphics/GraphicsContext.h>

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

using namespace quib;

namespace {

// The wave below a misspelt word. Units: points.
constexpr double kWaveLength = 4;
constexpr double kWaveHeight = 1.5;
constexpr double kWaveThickness = 1.1;

const QColor &waveColor()
{
    static const QColor color(225, 55, 50, 225);
    return color;
}

bool isBefore(const NSRange &a, const NSRange &b)
{
    return a.location != b.location ? a.location < b.location : a.length < b.length;
}

/// What an edit leaves of a mark: what lay before it stays, what lay behind it moves along, and a mark around it grows
/// or shrinks with it.
std::optional<NSRange> markAfterEdit(NSRange mark, NSRange editedRange, qint64 changeInLength)
{
    const qint64 oldEnd = editedRange.limit() - changeInLength;
    if (mark.limit() <= editedRange.location) {
        return mark;
    }
    if (mark.location >= oldEnd) {
        return NSRange{mark.location + changeInLength, mark.length};
    }
    const qint64 start = mark.location < editedRange.location ? mark.location : editedRange.limit();
    const qint64 end = mark.limit() > oldEnd ? mark.limit() + changeInLength : editedRange.location;
    return end > start ? std::optional(NSRange{start, end - start}) : std::nullopt;
}

} // namespace

void QBNoteTextView::setSpellingMarks(std::vector<NSRange> marks)
{
    const qint64 length = m_stack.noteTextStorage().length();
    std::erase_if(marks, [length](NSRange mark) {
        return mark.location < 0 || mark.length <= 0 || mark.location >= length || mark.length > length - mark.location;
    });
    std::sort(marks.begin(), marks.end(), isBefore);
    std::vector<NSRange> changed;
    std::set_symmetric_difference(marks.begin(), marks.end(), m_spellingMarks.begin(), m_spellingMarks.end(),
                                  std::back_inserter(changed), isBefore);
    m_spellingMarks = std::move(marks);
    updateRanges(changed);
}

void QBNoteTextView::setSpellingMarks(std::vector<NSRange> marks, NSRange inRange)
{
    // Marks are sorted and hardly overlap: what reaches into the range stands together.
    std::vector<NSRange> all;
    all.reserve(m_spellingMarks.size() + marks.size());
    std::copy_if(m_spellingMarks.begin(), m_spellingMarks.end(), std::back_inserter(all), [inRange](NSRange mark) {
        return mark.limit() <= inRange.location || mark.location >= inRange.limit();
    });
    all.insert(all.end(), marks.begin(), marks.end());
    setSpellingMarks(std::move(all));
}

void QBNoteTextView::moveSpellingMarks(NSRange editedRange, qint64 changeInLength)
{
    if (m_spellingMarks.empty() || (changeInLength == 0 && editedRange.length == 0)) {
        return;
    }
    auto kept = m_spellingMarks.begin();
    for (const NSRange &mark : m_spellingMarks) {
        if (const auto moved = markAfterEdit(mark, editedRange, changeInLength)) {
            *kept++ = *moved;
        }
    }
    m_spellingMarks.erase(kept, m_spellingMarks.end());
}

std::optional<NSRange> QBNoteTextView::spellingMarkAtLocation(qint64 location) const
{
    const auto mark = std::find_if(m_spellingMarks.begin(), m_spellingMarks.end(), [location](NSRange each) {
        return each.location <= location && location <= each.limit();
    });
    return mark != m_spellingMarks.end() ? std::optional(*mark) : std::nullopt;
}

void QBNoteTextView::drawSpellingMarks(GraphicsContext &context, const std::vector<PlacedParagraph> &paragraphs) const
{
    if (m_spellingMarks.empty() || paragraphs.empty()) {
        return;
    }
    const qint64 end = paragraphs.back().range.limit();
    auto mark = std::lower_bound(m_spellingMarks.begin(), m_spellingMarks.end(), paragraphs.front().range.location,
                                 [](NSRange each, qint64 place) { return each.limit() <= place; });
    QPainterPath path;
    for (; mark != m_spellingMarks.end() && mark->location < end; ++mark) {
        if (isWordBeingWritten(*mark)) {
            continue;
        }
        for (const PlacedParagraph &paragraph : paragraphs) {
            const NSRange part = NSIntersectionRange(*mark, paragraph.range);
            if (part.length == 0) {
                continue;
            }
            for (const QRectF &rect : paragraph.textRectsForRange(part)) {
                // Where a wave is in its course depends on the place alone: parts drawn at different times fit.
                const double y = rect.bottom() - kWaveHeight;
                path.moveTo(rect.left(), y);
                // Nor does it reach beyond its word, but for less than a quarter of its length.
                for (double x = rect.left(); x + kWaveLength / 4 < rect.right(); x += kWaveLength / 2) {
                    const bool isUp = std::lround((x - rect.left()) / (kWaveLength / 2)) % 2 == 0;
                    path.quadTo(x + kWaveLength / 4, y + (isUp ? -kWaveHeight : kWaveHeight), x + kWaveLength / 2, y);
                }
            }
        }
    }
    if (!path.isEmpty()) {
        QPainter &painter = context.painter();
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(waveColor(), kWaveThickness));
        painter.drawPath(path);
        painter.restore();
    }
}

bool QBNoteTextView::isWordBeingWritten(NSRange mark) const
{
    return hasFocus() && m_anchor == m_caret && m_caret == m_typedLocation && m_caret >= mark.location &&
           m_caret <= mark.limit();
}
