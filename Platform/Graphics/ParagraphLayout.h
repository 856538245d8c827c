#pragma once

#include "GraphicsContext.h"

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>
#include <Text/NSTextAttachment.h>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <functional>
#include <memory>
#include <vector>

namespace quib {

/// The room that an attachment takes in a line. Units: points.
struct AttachmentBox
{
    QSizeF size;
    /// How far its lower edge lies above the baseline; below it where negative.
    double baselineOffset = 0;
};

/// One paragraph of a text broken into lines of a width, with its fonts, colours, indents, spacings and attachments, to
/// be measured and drawn. It holds on to what it needs: the text may change or go. A resource, confined to one thread
/// at a time; it needs what GraphicsEnvironment makes. Units: points from the paragraph's own top left, y grows
/// downwards; ranges are of the whole text.
class ParagraphLayout
{
public:
    using BoxOfAttachment = std::function<AttachmentBox(NSTextAttachment &attachment)>;

    /// Lays out a range that holds no line end but the one it may end in. Takes time in step with its length: very long
    /// paragraphs are better laid out in pieces.
    ParagraphLayout(const NSAttributedString &text, NSRange range, double width,
                    const BoxOfAttachment &boxOfAttachment = {});
    ParagraphLayout(const ParagraphLayout &) = delete;
    ParagraphLayout &operator=(const ParagraphLayout &) = delete;
    ~ParagraphLayout();

    struct Line
    {
        NSRange range;
        /// As wide as what stands in the line and as high as the line, without the spacing below it.
        QRectF rect;
        double baseline = 0;
    };
    /// At least one, even of an empty paragraph.
    [[nodiscard]] const std::vector<Line> &lines() const;
    /// With the spacings of the paragraph's style above, between and below the lines.
    [[nodiscard]] double height() const;

    /// An attachment where it stands.
    struct PlacedAttachment
    {
        qint64 location = 0;
        std::shared_ptr<NSTextAttachment> attachment;
        QRectF rect;
    };
    [[nodiscard]] const std::vector<PlacedAttachment> &attachments() const;

    /// The boxes that a range covers, one for each line that it touches; as high as the lines. Where the direction of
    /// writing changes within a range, its box spans from the leftmost to the rightmost of its units.
    [[nodiscard]] std::vector<QRectF> rectsForRange(NSRange range) const;

    /// Draws backgrounds, text, underlines and strikes with the top left at a point. Attachments are the caller's to
    /// draw, at the places told.
    void drawIn(GraphicsContext &context, QPointF origin) const;

private:
    class Layout;
    const std::unique_ptr<const Layout> m_layout;
};

} // namespace quib
