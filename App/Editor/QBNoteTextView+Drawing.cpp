#include "FindColors.h"
#include "QBNoteTextView.h"

#include <Graphics/GraphicsContext.h>
#include <Graphics/NSBezierPath.h>
#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Markup/NotePainter.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace quib;

namespace {

constexpr double kCaretWidth = 2;
/// How wide a selected line end looks, in parts of the base font size.
constexpr double kLineEndWidth = 0.35;
constexpr double kFocusVeil = 0.62;
/// The mark at a caret that tells which way the writing goes. Units: points.
constexpr double kFlagWidth = 5;
constexpr double kFlagHeight = 5;
constexpr double kHighlightCorner = 3;
/// How much of an attachment's text tells whether it looks as before: the mark of a box does, a fold's whole text need
/// not be read.
constexpr qsizetype kTellingUnits = 64;

/// Of attachments that look alike, the same.
size_t looksOf(const PlacedParagraph &paragraph)
{
    size_t looks = 0;
    for (const ParagraphLayout::PlacedAttachment &placed : paragraph.layout->attachments()) {
        if (const auto *attachment = dynamic_cast<const QBNotesTextAttachment *>(placed.attachment.get())) {
            const QString text = attachment->representedText();
            looks = qHash(QStringView(text).first(std::min(text.size(), kTellingUnits)), looks);
        }
    }
    return looks;
}

/// Has an area of the viewport painted.
void updateArea(QWidget &viewport, const QRegion &area)
{
    const double ratio = viewport.devicePixelRatioF();
    if (ratio == std::round(ratio)) {
        viewport.update(area);
        return;
    }
    // At the usual fractions so many points are whole pixels: an area that ends within one would leave it half painted.
    constexpr int kWholePoints = 4;
    const QPoint origin = viewport.mapTo(viewport.window(), QPoint(0, 0));
    const auto floored = [](int place) { return place - ((place % kWholePoints) + kWholePoints) % kWholePoints; };
    for (const QRect &rect : area) {
        const QRect inWindow = rect.translated(origin);
        const QPoint topLeft(floored(inWindow.left()), floored(inWindow.top()));
        const QPoint end(floored(inWindow.right() + kWholePoints), floored(inWindow.bottom() + kWholePoints));
        viewport.update(QRect(topLeft, end - QPoint(1, 1)).translated(-origin));
    }
}

} // namespace

void QBNoteTextView::updateAll()
{
    m_shown.isWhole = false;
    viewport()->update();
}

double QBNoteTextView::overhang() const
{
    const auto &theme = *m_stack.themeManager();
    return theme.paragraphSpacing() + theme.baseFontSize() / 2 + 4;
}

QRect QBNoteTextView::areaOfCaret(const QRectF &caret)
{
    constexpr double kBeside = kCaretWidth + kFlagWidth;
    return caret.isNull() ? QRect() : caret.adjusted(-kBeside, -1, kBeside, 1).toAlignedRect();
}

QBNoteTextView::ShownPicture QBNoteTextView::picture()
{
    ShownPicture now;
    now.isWhole = true;
    const double top = scrollY();
    const NSRange selection = selectedRange();
    const NSRange current = m_isFocusMode ? paragraphRange(selection) : NSRange();
    for (const PlacedParagraph &paragraph : m_layout.paragraphsInHeights(top, top + viewport()->height())) {
        const NSRange reached = {paragraph.range.location, paragraph.range.length + 1};
        NSRange selected = selection.length > 0 ? NSIntersectionRange(selection, reached) : NSRange();
        selected = selected.length > 0 ? NSRange{selected.location - reached.location, selected.length} : NSRange();
        now.paragraphs.push_back({.number = paragraph.number,
                                  .top = paragraph.origin.y() - top,
                                  .height = paragraph.height,
                                  .selected = selected,
                                  .looks = looksOf(paragraph),
                                  .isVeiled = m_isFocusMode && isVeiled(paragraph, current)});
    }
    if (selection.length == 0) {
        now.caret = caretRectInViewport(m_caret);
    }
    now.dropLocation = m_dropLocation;
    if (const auto mark = spellingMarkAtLocation(m_caret); mark && isWordBeingWritten(*mark)) {
        now.unmarkedWord = mark;
    }
    return now;
}

void QBNoteTextView::updateChanged()
{
    if (!m_isStale) {
        return;
    }
    m_isStale = false;
    if (m_hasMoved) {
        m_hasMoved = false;
        (void)fillLastPage();
        updateScrollBar();
    }
    ShownPicture now = picture();
    if (m_shown.isWhole) {
        updateArea(*viewport(), areaOfChange(m_shown, now));
        m_shown = std::move(now);
    }
}

QRegion QBNoteTextView::areaOfChange(const ShownPicture &before, const ShownPicture &now)
{
    QRegion area;
    const int width = viewport()->width();
    const double around = overhang();
    const auto add = [&](double top, double bottom) {
        area += QRectF(0, top, width, bottom - top).toAlignedRect().intersected(viewport()->rect());
    };
    const auto addParagraph = [&](const ShownParagraph &paragraph) {
        add(paragraph.top - around, paragraph.top + paragraph.height + around);
    };
    // Both go from top to bottom, and what is in both is in the same order.
    auto old = before.paragraphs.begin();
    for (const ShownParagraph &paragraph : now.paragraphs) {
        const auto found = std::find_if(old, before.paragraphs.end(), [&paragraph](const ShownParagraph &each) {
            return each.number == paragraph.number;
        });
        if (found == before.paragraphs.end() || std::abs(found->top - paragraph.top) > 0.01 ||
            found->isVeiled != paragraph.isVeiled || found->looks != paragraph.looks) {
            addParagraph(paragraph);
            continue;
        }
        std::for_each(old, found, addParagraph);
        old = found + 1;
        if (found->selected != paragraph.selected) {
            addChangedLines(paragraph, found->selected, &area);
        }
    }
    std::for_each(old, before.paragraphs.end(), addParagraph);
    if (before.caret != now.caret) {
        area += areaOfCaret(before.caret);
        area += areaOfCaret(now.caret);
    }
    if (before.dropLocation != now.dropLocation) {
        for (const qint64 location : {before.dropLocation, now.dropLocation}) {
            area += location >= 0 ? areaOfCaret(caretRectInViewport(location)) : QRect();
        }
        area += areaOfCaret(now.caret); // hidden while something is dragged
    }
    if (before.unmarkedWord != now.unmarkedWord) {
        for (const auto &word : {before.unmarkedWord, now.unmarkedWord}) {
            if (word) {
                updateRanges({&*word, 1});
            }
        }
    }
    return area;
}

void QBNoteTextView::addChangedLines(const ShownParagraph &paragraph, NSRange before, QRegion *area)
{
    // The lines of what only one of the two selections has; nothing before the first difference, nothing behind the
    // last.
    const NSRange now = paragraph.selected;
    const auto placed = m_layout.paragraphAtHeight(scrollY() + paragraph.top + paragraph.height / 2);
    const auto addLines = [&](qint64 start, qint64 end) {
        const auto &lines = placed.layout->lines();
        for (const auto &line : lines) {
            const qint64 first = line.range.location + placed.shift - placed.range.location;
            const bool isLast = &line == &lines.back();
            if (start <= first + line.range.length && (end > first || isLast)) {
                *area +=
                    QRectF(0, paragraph.top + line.rect.top(), viewport()->width(), line.rect.height()).toAlignedRect();
            }
        }
    };
    if (before.length == 0 || now.length == 0) {
        const NSRange only = before.length == 0 ? now : before;
        addLines(only.location, only.limit());
        return;
    }
    if (before.location != now.location) {
        addLines(std::min(before.location, now.location), std::max(before.location, now.location));
    }
    if (before.limit() != now.limit()) {
        addLines(std::min(before.limit(), now.limit()), std::max(before.limit(), now.limit()));
    }
}

void QBNoteTextView::paintEvent(QPaintEvent *event)
{
    if (!m_shown.isWhole) {
        // From here on only what changes is painted. What is asked for by then is painted here.
        m_shown = picture();
    }
    QPainter painter(viewport());
    const double ratio = viewport()->devicePixelRatioF();
    if (ratio == std::round(ratio)) {
        for (const QRect &area : event->region()) {
            painter.save();
            painter.setClipRect(area);
            paintArea(painter, area);
            painter.restore();
        }
    } else {
        // The edges of areas lie within pixels, which only the window system's own clip takes whole.
        paintArea(painter, event->region().boundingRect().adjusted(-1, -1, 1, 1));
    }
    // What was laid out may be higher or lower than it was thought to be.
    updateScrollBar();
}

void QBNoteTextView::paintArea(QPainter &painter, const QRectF &area)
{
    const auto &theme = *m_stack.themeManager();
    const NSColor paper = theme.backgroundTextColor().value_or(NSColor::whiteColor());
    const double top = scrollY();
    GraphicsContext context(painter);
    context.saveState();
    context.fillRect(area, paper);
    context.translateBy(0, -top);
    const double around = overhang();
    const auto paragraphs = m_layout.paragraphsInHeights(top + area.top() - around, top + area.bottom() + around);
    const NotePainter notePainter(m_stack.noteTextStorage().attributedString(), theme, m_layout.columnLeft(),
                                  m_layout.columnWidth());
    notePainter.drawBackground(context, paragraphs);
    const FindColors found = findColorsOfTheme(theme);
    for (const QRectF &rect : rectsOfRanges(paragraphs, m_highlights)) {
        context.fillRoundedRect(rect, kHighlightCorner, found.match);
    }
    const auto current = m_highlights.mid(std::max<qsizetype>(m_currentHighlight, 0), m_currentHighlight < 0 ? 0 : 1);
    if (current.isEmpty() || current.first() != selectedRange()) {
        drawSelection(context, paragraphs);
    }
    if (!current.isEmpty()) {
        // It is mostly selected too, and must be seen while the keyboard is elsewhere.
        for (const QRectF &rect : rectsOfRanges(paragraphs, current)) {
            context.fillRoundedRect(rect, kHighlightCorner, found.current);
            context.strokeRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), kHighlightCorner, found.currentEdge);
        }
    }
    notePainter.drawText(context, paragraphs);
    drawSpellingMarks(context, paragraphs);
    if (m_isFocusMode) {
        drawVeil(context, paragraphs, paper);
    }
    const bool isCaretShown = hasFocus() && (m_isCaretOn || !m_preedit.string.isEmpty()) && m_anchor == m_caret &&
                              !m_isReadOnly && m_dropLocation < 0;
    if (isCaretShown) {
        drawCaret(context, m_caret, m_isUpstream);
    }
    if (m_dropLocation >= 0) {
        drawCaret(context, m_dropLocation, false);
    }
    context.restoreState();
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

std::vector<QRectF> QBNoteTextView::rectsOfRanges(const std::vector<PlacedParagraph> &paragraphs,
                                                  const QList<NSRange> &ranges)
{
    std::vector<QRectF> rects;
    if (ranges.isEmpty() || paragraphs.empty()) {
        return rects;
    }
    const qint64 start = paragraphs.front().range.location;
    const qint64 end = paragraphs.back().range.limit();
    auto range = std::lower_bound(ranges.begin(), ranges.end(), start,
                                  [](const NSRange &each, qint64 place) { return each.limit() <= place; });
    for (; range != ranges.end() && range->location < end; ++range) {
        for (const PlacedParagraph &paragraph : paragraphs) {
            const NSRange part = NSIntersectionRange(*range, paragraph.range);
            if (part.length == 0) {
                continue;
            }
            for (const QRectF &rect : paragraph.textRectsForRange(part)) {
                rects.push_back(rect.adjusted(-1, -1, 1, 1));
            }
        }
    }
    return rects;
}

bool QBNoteTextView::isVeiled(const PlacedParagraph &paragraph, NSRange current)
{
    return paragraph.range != current &&
           (paragraph.range.limit() <= current.location || paragraph.range.location >= current.limit());
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
                updateArea(*viewport(), rect.translated(0, -top).adjusted(-3, -3, 3, 3).toAlignedRect());
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
    if (const auto isLeftwards = m_layout.isRightToLeftBefore(location)) {
        const double x = caret.left() + (*isLeftwards ? -kCaretWidth : kCaretWidth) / 2;
        NSBezierPath flag;
        flag.moveToPoint({x, caret.top()});
        flag.lineToPoint({x + (*isLeftwards ? -kFlagWidth : kFlagWidth), caret.top() + kFlagHeight / 2});
        flag.lineToPoint({x, caret.top() + kFlagHeight});
        flag.closePath();
        context.fillPath(flag, color);
    }
}

void QBNoteTextView::drawVeil(GraphicsContext &context, const std::vector<PlacedParagraph> &paragraphs,
                              const NSColor &paper)
{
    const NSRange current = paragraphRange(selectedRange());
    const NSColor veil = paper.colorWithAlphaComponent(kFocusVeil);
    for (const PlacedParagraph &paragraph : paragraphs) {
        if (isVeiled(paragraph, current)) {
            context.fillRect(QRectF(0, paragraph.origin.y(), viewport()->width(), paragraph.height), veil);
        }
    }
}
