#include "QBNoteTextView.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <QScrollBar>
#include <QStyle>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

using namespace quib;

namespace {

constexpr int kSmoothScrollDuration = 140;
/// So much is left free above and below the caret when it is scrolled into view. Units: points.
constexpr double kCaretMargin = 24;
/// Up to so many pages a way is gone paragraph by paragraph, and exactly; a longer one is a leap to where the
/// paragraphs are thought to be.
constexpr double kLeapPages = 2;
/// What is scrolled into view is looked for so often: each time more of the way has been laid out.
constexpr int kMostTries = 5;

bool isNear(double a, double b)
{
    return std::abs(a - b) < 1e-6;
}

bool isWhole(double points)
{
    return isNear(points, std::round(points));
}

} // namespace

double QBNoteTextView::topOfAnchor()
{
    // The room above the text belongs to the first paragraph.
    const double top = m_layout.topOfLocation(m_scroll.location);
    return top <= m_layout.inset() ? 0 : top;
}

double QBNoteTextView::scrollY() const
{
    auto &self = const_cast<QBNoteTextView &>(*this); // what is known of the layout is looked up, nothing is made
    return self.topOfAnchor() + m_scroll.offset;
}

void QBNoteTextView::updateScrollBar()
{
    QScrollBar *bar = verticalScrollBar();
    const int page = viewport()->height();
    const int range = std::max(0, static_cast<int>(std::ceil(m_layout.height() + roomBelow())) - page);
    m_isSettingScrollBar = true;
    bar->setRange(0, range);
    bar->setPageStep(page);
    bar->setSingleStep(static_cast<int>(std::max(8.0, m_stack.themeManager()->paragraphLineHeight())));
    bar->setValue(static_cast<int>(std::lround(scrollY())));
    m_isSettingScrollBar = false;
}

double QBNoteTextView::roomBelow() const
{
    return m_isTypewriter ? viewport()->height() / 2.0 : 0;
}

void QBNoteTextView::anchorAtParagraph()
{
    // An anchor within a paragraph means the line that it is in.
    const PlacedParagraph paragraph = m_layout.paragraphOfLocation(m_scroll.location);
    if (paragraph.range.location != m_scroll.location) {
        const auto &layout = *paragraph.layout;
        const size_t line = layout.lineIndexOfLocation(m_scroll.location - paragraph.shift);
        m_scroll.offset += line > 0 ? layout.lines()[line].rect.top() : 0;
        m_scroll.offset += paragraph.range.location == 0 ? m_layout.inset() : 0;
        m_scroll.location = paragraph.range.location;
    }
    // Only the paragraph that the top edge of the view is in can tell how far it is scrolled.
    while (m_scroll.offset < 0 && m_scroll.location > 0) {
        const PlacedParagraph above = m_layout.paragraphOfLocation(m_scroll.location - 1);
        m_scroll.location = above.range.location;
        m_scroll.offset += above.height + (above.range.location == 0 ? m_layout.inset() : 0);
    }
    for (;;) {
        const PlacedParagraph at = m_layout.paragraphOfLocation(m_scroll.location);
        const double height = at.height + (at.range.location == 0 ? m_layout.inset() : 0);
        if (m_scroll.offset < height || at.range.limit() >= m_stack.noteTextStorage().length()) {
            break;
        }
        m_scroll.location = at.range.limit();
        m_scroll.offset -= height;
    }
}

void QBNoteTextView::anchorAtLine()
{
    if (!m_layout.isLaidOut(m_scroll.location)) {
        return;
    }
    const PlacedParagraph paragraph = m_layout.paragraphOfLocation(m_scroll.location);
    const double inset = paragraph.range.location == 0 ? m_layout.inset() : 0;
    const auto &layout = *paragraph.layout;
    const size_t line = layout.lineIndexAtHeight(m_scroll.offset - inset);
    if (line > 0) {
        m_scroll.location = layout.lines()[line].range.location + paragraph.shift;
        m_scroll.offset -= inset + layout.lines()[line].rect.top();
    }
}

double QBNoteTextView::fillLastPage()
{
    double missing = 0;
    anchorAtParagraph();
    if (m_scroll.location == 0 && m_scroll.offset < 0) {
        missing = -m_scroll.offset;
        m_scroll.offset = 0;
    }
    // How much there is from the top edge of the view on, as far as it matters.
    const double wanted = m_scroll.offset + viewport()->height();
    double below = roomBelow() + m_layout.inset();
    for (qint64 location = m_scroll.location;;) {
        const PlacedParagraph paragraph = m_layout.paragraphOfLocation(location);
        below += paragraph.height + (paragraph.range.location == 0 ? m_layout.inset() : 0);
        if (below >= wanted) {
            return missing;
        }
        const qint64 next = paragraph.range.limit();
        if (next == location || m_layout.paragraphOfLocation(next).range.location == paragraph.range.location) {
            break;
        }
        location = next;
    }
    // Rather a little more room below than a way that cannot be moved.
    const double step = scrollStep();
    const double tooFar = std::floor((wanted - std::ceil(below)) / step) * step;
    if (tooFar <= 0) {
        return missing;
    }
    m_scroll.offset -= tooFar;
    anchorAtParagraph();
    missing -= tooFar;
    if (m_scroll.location == 0 && m_scroll.offset < 0) {
        missing -= m_scroll.offset;
        m_scroll.offset = 0;
    }
    return missing;
}

double QBNoteTextView::scrollStep() const
{
    // At the usual fractions so many points at most are whole pixels.
    constexpr double kLargestStep = 4;
    const double ratio = viewport()->devicePixelRatioF();
    for (double step = 1; step <= kLargestStep; ++step) {
        if (isWhole(step * ratio)) {
            return step;
        }
    }
    return 1;
}

void QBNoteTextView::scrollBy(double distance)
{
    updateChanged();
    const double step = scrollStep();
    const double whole = std::round(distance / step) * step;
    m_scroll.offset += whole;
    const double moved = whole + fillLastPage();
    if (moved != 0) {
        const double ratio = viewport()->devicePixelRatioF();
        ShownPicture now = picture();
        if (m_shown.isWhole && isWhole(moved) && isWhole(moved * ratio) && std::abs(moved) < viewport()->height() &&
            isSameButMoved(m_shown, now, moved)) {
            viewport()->scroll(0, -static_cast<int>(std::lround(moved)));
            m_shown = std::move(now);
        } else {
            updateAll();
        }
    }
    updateScrollBar();
}

bool QBNoteTextView::isSameButMoved(const ShownPicture &before, const ShownPicture &now, double moved)
{
    auto old = before.paragraphs.begin();
    for (const ShownParagraph &paragraph : now.paragraphs) {
        const auto found = std::find_if(old, before.paragraphs.end(), [&paragraph](const ShownParagraph &each) {
            return each.number == paragraph.number;
        });
        if (found != before.paragraphs.end()) {
            if (!isNear(found->top - moved, paragraph.top)) {
                return false;
            }
            old = found + 1;
        }
    }
    return true;
}

void QBNoteTextView::setScrollY(double y)
{
    const double now = scrollY();
    if (std::abs(y - now) <= kLeapPages * viewport()->height()) {
        scrollBy(y - now);
        return;
    }
    const double last = m_layout.height() + roomBelow() - viewport()->height();
    const double top = std::round(std::clamp(y, 0.0, std::max(0.0, last)));
    m_scroll.location = m_layout.locationOfParagraphAtHeight(top);
    m_scroll.offset = top - topOfAnchor();
    (void)fillLastPage();
    updateAll();
    updateScrollBar();
}

void QBNoteTextView::scrollTo(ScrollPosition position)
{
    m_scroll = position;
    m_scroll.location = std::clamp<qint64>(position.location, 0, m_stack.noteTextStorage().length());
    (void)fillLastPage();
    updateScrollBar();
    updateAll();
}

void QBNoteTextView::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    if (!m_isSettingScrollBar) {
        setScrollY(verticalScrollBar()->value());
    }
}

void QBNoteTextView::scrollSmoothlyBy(double distance)
{
    if (m_scrolling == nullptr) {
        m_scrolling = new QVariantAnimation(this);
        m_scrolling->setDuration(kSmoothScrollDuration);
        m_scrolling->setEasingCurve(QEasingCurve::OutCubic);
        // It counts the way, not the place: what is laid out meanwhile makes places other ones.
        connect(m_scrolling, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
            const double step = scrollStep();
            const double whole = std::round((value.toDouble() - m_scrolledWay) / step) * step;
            if (whole != 0) {
                m_scrolledWay += whole;
                scrollBy(whole);
            }
        });
    }
    const bool isRunning = m_scrolling->state() == QAbstractAnimation::Running;
    const double left = isRunning ? m_scrolling->endValue().toDouble() - m_scrolledWay : 0;
    m_scrolling->stop();
    m_scrolledWay = 0;
    // Against the way that is left it goes back at once.
    const double whole = left * distance < 0 ? distance : left + distance;
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0) {
        scrollBy(whole);
        return;
    }
    m_scrolling->setStartValue(0.0);
    m_scrolling->setEndValue(whole);
    m_scrolling->start();
}

void QBNoteTextView::ensureCaretVisible()
{
    const double page = viewport()->height();
    // The caret's place is laid out first, and so is the way to it: that may move what is above or below.
    for (int tries = 0; tries < kMostTries; ++tries) {
        const QRectF caret = m_layout.caretRect(m_caret, m_isUpstream);
        const double top = scrollY();
        double wanted = top;
        if (m_isTypewriter) {
            wanted = caret.center().y() - page / 2;
        } else if (caret.top() - kCaretMargin < top) {
            // The first line is seen with the room above it.
            wanted = caret.top() - kCaretMargin <= m_layout.inset() ? 0 : caret.top() - kCaretMargin;
        } else if (caret.bottom() + kCaretMargin > top + page) {
            wanted = caret.bottom() + kCaretMargin - page;
        }
        if (std::abs(wanted - top) < scrollStep()) {
            break;
        }
        setScrollY(wanted < top ? std::floor(wanted) : std::ceil(wanted));
        if (scrollY() == top) {
            break; // there is no further to go
        }
    }
    updateScrollBar();
}

void QBNoteTextView::scrollRangeToVisible(NSRange range)
{
    const double page = viewport()->height();
    for (int tries = 0; tries < kMostTries; ++tries) {
        const QRectF first = m_layout.caretRect(range.location);
        const double top = scrollY();
        if (first.top() >= top && first.bottom() <= top + page) {
            break;
        }
        setScrollY(first.top() - page / 3);
        if (scrollY() == top) {
            break;
        }
    }
    updateScrollBar();
}
