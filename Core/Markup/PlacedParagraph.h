#pragma once

#include <Foundation/NSRange.h>
#include <Graphics/ParagraphLayout.h>

#include <QPointF>
#include <QRectF>

#include <vector>

namespace quib {

/// A paragraph, or a piece of a very long one, where it lies on a page. A view of a layout: valid as long as that.
/// Units: points of the page; ranges are of the text as it is now.
struct PlacedParagraph
{
    /// With the line end.
    NSRange range;
    /// The top left of the column at the paragraph.
    QPointF origin;
    double height = 0;
    const ParagraphLayout *layout = nullptr;
    /// How far the text has moved since the layout was made: it counts from where the paragraph began then.
    qint64 shift = 0;
    /// Another one for each layout that was made: paragraphs of one number look alike, but for what lies under the
    /// text.
    quint64 number = 0;

    [[nodiscard]] double bottom() const { return origin.y() + height; }
    /// The lines' boxes from the first one's top to the last one's foot, in the whole width of the column.
    [[nodiscard]] QRectF linesRect(double left, double width) const
    {
        const auto &lines = layout->lines();
        const double first = lines.front().rect.top();
        return {left, origin.y() + first, width, lines.back().rect.bottom() - first};
    }
    [[nodiscard]] std::vector<QRectF> rectsForRange(NSRange rangeOfText) const
    {
        std::vector<QRectF> rects = layout->rectsForRange({rangeOfText.location - shift, rangeOfText.length});
        for (QRectF &rect : rects) {
            rect.translate(origin);
        }
        return rects;
    }
    /// The same boxes, but as high as the text of their lines, whatever room the lines have.
    [[nodiscard]] std::vector<QRectF> textRectsForRange(NSRange rangeOfText) const
    {
        std::vector<QRectF> rects = rectsForRange(rangeOfText);
        auto line = layout->lines().begin();
        for (QRectF &rect : rects) {
            while (line + 1 != layout->lines().end() && line->rect.bottom() + origin.y() <= rect.top()) {
                ++line;
            }
            const double baseline = origin.y() + line->baseline;
            rect.setTop(baseline - line->ascent);
            rect.setBottom(baseline + line->descent);
        }
        return rects;
    }
    [[nodiscard]] QRectF caretRect(qint64 location, bool upstream) const
    {
        return layout->caretRect(location - shift, upstream).translated(origin);
    }
};

} // namespace quib
