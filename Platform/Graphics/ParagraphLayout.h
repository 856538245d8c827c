#pragma once

#include "GraphicsContext.h"

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>
#include <Text/NSTextAttachment.h>

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
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

    /// Which part of its paragraph a range is. Only the first has the indent of the first line and the spacing above,
    /// only the last the spacing below.
    struct Part
    {
        bool isFirst = true;
        bool isLast = true;
        /// What the empty paragraph behind the last line end looks like, which has no unit to say so. Not owned; null
        /// for plain.
        const AttributeSet *attributesIfEmpty = nullptr;
        /// Which way it goes where it has no letter that tells.
        bool isRightToLeftIfNeutral = false;
    };

    /// What an input method composes: shown in the line at a place, in the looks of the text before it and underlined,
    /// without being text. Units: of the whole text; the caret within the composed text.
    struct Preedit
    {
        qint64 location = 0;
        QString string;
        int caret = 0;
    };

    /// Lays out a range that holds no line end but the one it may end in. Takes time in step with its length: very long
    /// paragraphs are better laid out in pieces. Shape: what carries the attribute unbrokenBy stays in one line where
    /// it fits into one and a blank stands not far before it.
    ParagraphLayout(const NSAttributedString &text, NSRange range, double width,
                    const BoxOfAttachment &boxOfAttachment = {});
    ParagraphLayout(const NSAttributedString &text, NSRange range, double width, const BoxOfAttachment &boxOfAttachment,
                    Part part, const NSAttributeName *unbrokenBy = nullptr, const Preedit *preedit = nullptr);
    ParagraphLayout(const ParagraphLayout &) = delete;
    ParagraphLayout &operator=(const ParagraphLayout &) = delete;
    ~ParagraphLayout();

    struct Line
    {
        NSRange range;
        /// As wide as what stands in the line and as high as the line, without the spacing below it.
        QRectF rect;
        double baseline = 0;
        /// How far the text's fonts reach above and below the baseline, whatever the line's height.
        double ascent = 0;
        double descent = 0;
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

    /// The boxes that a range covers, from left to right on each line that it touches; as high as the lines. A line
    /// where the direction of writing changes within the range has several.
    [[nodiscard]] std::vector<QRectF> rectsForRange(NSRange range) const;

    // The caret. A place where a line is wrapped is the end of one line and the start of the next: upstream means the
    // former.

    [[nodiscard]] size_t lineIndexOfLocation(qint64 location, bool upstream = false) const;
    /// Where the caret before a unit stands. Shape: no width, as high as the text of its line.
    [[nodiscard]] QRectF caretRect(qint64 location, bool upstream = false) const;
    /// The place between two characters that is nearest on a line.
    [[nodiscard]] qint64 locationAtX(size_t lineIndex, double x, bool *upstream = nullptr) const;
    /// The same on the line that is nearest to a height.
    [[nodiscard]] qint64 locationAtPoint(QPointF point, bool *upstream = nullptr) const;
    [[nodiscard]] size_t lineIndexAtHeight(double y) const;
    /// The next place for a caret in the order of the text, never within a character; the paragraph's end behind it.
    [[nodiscard]] qint64 locationAfter(qint64 location) const;
    [[nodiscard]] qint64 locationBefore(qint64 location) const;
    /// The next place for a caret as the eye sees it; the same place at either edge of the paragraph.
    [[nodiscard]] qint64 locationLeftOf(qint64 location) const;
    [[nodiscard]] qint64 locationRightOf(qint64 location) const;
    /// Whether the paragraph begins at the right.
    [[nodiscard]] bool isRightToLeft() const;
    /// Which way the character before a place is written, where the paragraph is written both ways: what is typed there
    /// goes on with it. Nothing in a paragraph of one direction.
    [[nodiscard]] std::optional<bool> isRightToLeftBefore(qint64 location) const;

    /// Draws backgrounds, text, underlines and strikes with the top left at a point, as far as the context's clip
    /// reaches. Attachments are the caller's to draw, at the places told.
    void drawIn(GraphicsContext &context, QPointF origin) const;

private:
    class Layout;
    const std::unique_ptr<const Layout> m_layout;
};

} // namespace quib
