#include "QBNoteTextView.h"

#include <Graphics/GraphicsContext.h>
#include <Markup/NotePainter.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QPaintEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

using namespace quib;

namespace {

constexpr double kCaretWidth = 2;
/// How wide a selected line end looks, in parts of the base font size.
constexpr double kLineEndWidth = 0.35;
constexpr double kFocusVeil = 0.62;
const NSColor &highlightColor()
{
    static const NSColor color = NSColor::colorWithRed(1.0, 0.82, 0.25, 0.45);
    return color;
}
const NSColor &currentHighlightColor()
{
    static const NSColor color = NSColor::colorWithRed(1.0, 0.6, 0.1, 0.8);
    return color;
}

} // namespace

void QBNoteTextView::paintEvent(QPaintEvent *event)
{
    const auto &theme = *m_stack.themeManager();
    const NSColor paper = theme.backgroundTextColor().value_or(NSColor::whiteColor());
    const double top = scrollY();
    QPainter painter(viewport());
    GraphicsContext context(painter);
    const QRectF dirty = event->rect();
    context.fillRect(dirty, paper);
    context.clipToRect(dirty);
    context.translateBy(0, -top);
    const auto paragraphs = m_layout.paragraphsInHeights(top + dirty.top(), top + dirty.bottom());
    const NotePainter notePainter(m_stack.noteTextStorage().attributedString(), theme, m_layout.columnLeft(),
                                  m_layout.columnWidth());
    notePainter.drawBackground(context, paragraphs);
    drawRanges(context, paragraphs, m_highlights, highlightColor(), m_currentHighlight);
    drawSelection(context, paragraphs);
    notePainter.drawText(context, paragraphs);
    drawSpellingMarks(context, paragraphs);
    if (m_isFocusMode) {
        drawVeil(context, paragraphs, paper);
    }
    if (!m_preedit.isEmpty()) {
        drawPreedit(painter);
    } else if (hasFocus() && m_isCaretOn && m_anchor == m_caret && !m_isReadOnly && m_dropLocation < 0) {
        drawCaret(context, m_caret, m_isUpstream);
    }
    if (m_dropLocation >= 0) {
        drawCaret(context, m_dropLocation, false);
    }
    // What was laid out may be higher or lower than it was thought to be.
    updateScrollBar();
}

void QBNoteTextView::drawSelection(GraphicsContext &context, const std::vector<PlacedParagraph> &paragraphs)
{
    const NSRange selection = selectedRange();
    if (selection.length == 0) {
        return;
    }
    const auto &theme = *m_stack.themeManager();
    const auto color = hasFocus() ? theme.seletedTextBackgroundColor() : theme.seletedTextInactiveBackgroundColor();
    const double lineEnd = theme.baseFontSize() * kLineEndWidth;
    for (const PlacedParagraph &paragraph : paragraphs) {
        const NSRange selected = NSIntersectionRange(selection, paragraph.range);
        if (!color || selected.length == 0) {
            continue;
        }
        for (const QRectF &rect : paragraph.rectsForRange(selected)) {
            context.fillRect(rect, *color);
        }
        const auto &last = paragraph.layout->lines().back();
        if (selected.limit() > last.range.limit() + paragraph.shift) {
            const QRectF line = last.rect.translated(paragraph.origin);
            const bool isRightToLeft = paragraph.layout->isRightToLeft();
            context.fillRect(
                QRectF(isRightToLeft ? line.left() - lineEnd : line.right(), line.top(), lineEnd, line.height()),
                *color);
        }
    }
}

void QBNoteTextView::drawRanges(GraphicsContext &context, const std::vector<PlacedParagraph> &paragraphs,
                                const QList<NSRange> &ranges, const NSColor &color, qsizetype current) const
{
    if (ranges.isEmpty() || paragraphs.empty()) {
        return;
    }
    const qint64 start = paragraphs.front().range.location;
    const qint64 end = paragraphs.back().range.limit();
    auto range = std::lower_bound(ranges.begin(), ranges.end(), start,
                                  [](const NSRange &each, qint64 place) { return each.limit() <= place; });
    for (; range != ranges.end() && range->location < end; ++range) {
        const bool isCurrent = std::distance(ranges.begin(), range) == current;
        for (const PlacedParagraph &paragraph : paragraphs) {
            const NSRange part = NSIntersectionRange(*range, paragraph.range);
            if (part.length == 0) {
                continue;
            }
            for (const QRectF &rect : paragraph.textRectsForRange(part)) {
                context.fillRoundedRect(rect.adjusted(-1, -1, 1, 1), 3, isCurrent ? currentHighlightColor() : color);
            }
        }
    }
}

void QBNoteTextView::updateRanges(std::span<const NSRange> ranges)
{
    if (ranges.empty()) {
        return;
    }
    const double top = scrollY();
    const auto paragraphs = m_layout.paragraphsInHeights(top, top + viewport()->height());
    const qint64 end = paragraphs.back().range.limit();
    auto range = std::lower_bound(ranges.begin(), ranges.end(), paragraphs.front().range.location,
                                  [](NSRange each, qint64 place) { return each.limit() <= place; });
    for (; range != ranges.end() && range->location < end; ++range) {
        for (const PlacedParagraph &paragraph : paragraphs) {
            for (const QRectF &rect : paragraph.rectsForRange(NSIntersectionRange(*range, paragraph.range))) {
                viewport()->update(rect.translated(0, -top).adjusted(-3, -3, 3, 3).toAlignedRect());
            }
        }
    }
}

void QBNoteTextView::drawCaret(GraphicsContext &context, qint64 location, bool upstream)
{
    const auto &theme = *m_stack.themeManager();
    const NSColor color = theme.insertionPointColor().value_or(NSColor::blackColor());
    const QRectF caret = m_layout.caretRect(location, upstream);
    context.fillRoundedRect(QRectF(caret.left() - kCaretWidth / 2, caret.top(), kCaretWidth, caret.height()),
                            kCaretWidth / 2, color);
}

void QBNoteTextView::drawVeil(GraphicsContext &context, const std::vector<PlacedParagraph> &paragraphs,
                              const NSColor &paper)
{
    const NSRange current = paragraphRange(selectedRange());
    const NSColor veil = paper.colorWithAlphaComponent(kFocusVeil);
    for (const PlacedParagraph &paragraph : paragraphs) {
        if (paragraph.range.limit() <= current.location || paragraph.range.location >= current.limit()) {
            if (paragraph.range != current) {
                context.fillRect(QRectF(0, paragraph.origin.y(), viewport()->width(), paragraph.height), veil);
            }
        }
    }
}

void QBNoteTextView::drawPreedit(QPainter &painter)
{
    const auto &theme = *m_stack.themeManager();
    const QRectF caret = m_layout.caretRect(m_caret, m_isUpstream);
    const auto toColor = [](const std::optional<NSColor> &color, const QColor &otherwise) {
        return color ? QColor::fromRgbF(float(color->redComponent()), float(color->greenComponent()),
                                        float(color->blueComponent()), float(color->alphaComponent()))
                     : otherwise;
    };
    QTextLayout layout(m_preedit, theme.paragraphFont().font());
    QTextLayout::FormatRange underline;
    underline.length = static_cast<int>(m_preedit.size());
    underline.format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
    underline.format.setForeground(toColor(theme.baseTextColor(), Qt::black));
    layout.setFormats({underline});
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(viewport()->width());
    layout.endLayout();
    const QPointF origin(caret.left(), caret.center().y() - line.height() / 2);
    painter.fillRect(QRectF(origin, QSizeF(line.naturalTextWidth(), line.height())),
                     toColor(theme.backgroundTextColor(), Qt::white));
    layout.draw(&painter, origin);
    layout.drawCursor(&painter, origin, m_preeditCaret, 2);
}
