#include "QBNoteTextView.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <QApplication>
#include <QEvent>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleHints>
#include <QTimerEvent>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

using namespace quib;

namespace {

constexpr int kAutoscrollInterval = 16;
constexpr int kSmoothScrollDuration = 140;
/// So much is left free above and below the caret when it is scrolled into view. Units: points.
constexpr double kCaretMargin = 24;

} // namespace

QBNoteTextView::QBNoteTextView(QBNoteTextKitStack &textKitStack, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_stack(textKitStack)
    , m_layout(textKitStack.noteTextStorage(), textKitStack.themeManager())
{
    m_layout.setEditHandler(
        [this](NSRange editedRange, qint64 changeInLength) { textDidEdit(editedRange, changeInLength); });
    m_stack.themeManager()->registerStylableObject(*this);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_KeyCompression);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAcceptDrops(true);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Note"));
    m_layout.setPageWidth(viewport()->width());
}

QBNoteTextView::~QBNoteTextView()
{
    m_stack.themeManager()->unregisterStylableObject(*this);
}

void QBNoteTextView::setDelegate(QBNoteTextViewDelegate *delegate)
{
    m_delegate = delegate;
}

void QBNoteTextView::setUndoManager(NSUndoManager *undoManager)
{
    breakUndoCoalescing();
    m_undoManager = undoManager != nullptr ? undoManager : &m_ownUndoManager;
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::loadString(const QString &string)
{
    breakUndoCoalescing();
    m_undoManager->removeAllActions();
    m_highlights.clear();
    m_spellingMarks.clear();
    m_preedit.clear();
    m_stack.noteTextStorage().loadString(string);
    m_scroll = {};
    m_goalX = -1;
    moveSelection(0, 0, false);
    updateScrollBar();
    viewport()->update();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::setReadOnly(bool isReadOnly)
{
    m_isReadOnly = isReadOnly;
    setAttribute(Qt::WA_InputMethodEnabled, !isReadOnly);
    viewport()->update();
}

NSRange QBNoteTextView::selectedRange() const
{
    return {std::min(m_anchor, m_caret), std::abs(m_caret - m_anchor)};
}

void QBNoteTextView::setSelectedRange(NSRange range)
{
    const NSRange cut = rangeCutToLength(range, m_stack.noteTextStorage().length());
    m_goalX = -1;
    moveSelection(cut.location, cut.limit(), false);
}

void QBNoteTextView::setSelection(qint64 anchor, qint64 caret)
{
    const qint64 length = m_stack.noteTextStorage().length();
    m_goalX = -1;
    moveSelection(std::clamp<qint64>(anchor, 0, length), std::clamp<qint64>(caret, 0, length), false);
}

void QBNoteTextView::moveSelection(qint64 anchor, qint64 caret, bool upstream)
{
    const bool isSame = anchor == m_anchor && caret == m_caret && upstream == m_isUpstream;
    m_anchor = anchor;
    m_caret = caret;
    m_isUpstream = upstream;
    if (isSame) {
        return;
    }
    restartBlinking();
    viewport()->update();
    if (hasFocus()) {
        updateMicroFocus();
    }
    if (m_delegate != nullptr) {
        m_delegate->qbNoteTextViewDidChangeSelection(*this);
    }
    Q_EMIT selectionChanged();
}

void QBNoteTextView::setNeedsDisplay()
{
    viewport()->update();
}

void QBNoteTextView::didUndoOrRedo()
{
    if (m_delegate != nullptr) {
        m_delegate->qbNoteTextViewDidChangeText(*this);
    }
}

void QBNoteTextView::showChange()
{
    m_highlights.clear();
    m_goalX = -1;
    restartBlinking();
    ensureCaretVisible();
    updateMicroFocus();
    Q_EMIT textChanged();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::styleObjectWithThemeManager(QBThemeManager & /*manager*/)
{
    m_layout.invalidateLayout();
    updateScrollBar();
    viewport()->update();
}

void QBNoteTextView::textDidEdit(NSRange editedRange, qint64 changeInLength)
{
    // What is seen, and the selection, stay with the text that they were at.
    const qint64 oldEnd = editedRange.limit() - changeInLength;
    const qint64 length = m_stack.noteTextStorage().length();
    const auto moved = [&](qint64 location) {
        if (location >= oldEnd) {
            return location + changeInLength;
        }
        return std::min(location, std::max(editedRange.location, editedRange.limit()));
    };
    const auto kept = [&](qint64 location) {
        return location <= editedRange.location || changeInLength == 0 ? std::min(location, length)
                                                                       : std::clamp<qint64>(moved(location), 0, length);
    };
    m_scroll.location = kept(m_scroll.location);
    m_anchor = kept(m_anchor);
    m_caret = kept(m_caret);
    moveSpellingMarks(editedRange, changeInLength);
    viewport()->update();
}

double QBNoteTextView::scrollY() const
{
    auto &layout = const_cast<QBNotesLayoutManager &>(m_layout); // what is known of it is looked up, nothing is made
    return m_scroll.location == 0 && m_scroll.offset <= 0 ? 0
                                                          : layout.topOfLocation(m_scroll.location) + m_scroll.offset;
}

void QBNoteTextView::updateScrollBar()
{
    QScrollBar *bar = verticalScrollBar();
    const int page = viewport()->height();
    const double total = m_layout.height() + (m_isTypewriter ? page / 2.0 : 0);
    const int range = std::max(0, static_cast<int>(std::ceil(total)) - page);
    m_isSettingScrollBar = true;
    bar->setRange(0, range);
    bar->setPageStep(page);
    bar->setSingleStep(static_cast<int>(std::max(8.0, m_stack.themeManager()->paragraphLineHeight())));
    bar->setValue(static_cast<int>(std::lround(scrollY())));
    m_isSettingScrollBar = false;
    if (scrollY() > range) {
        setScrollY(range);
    }
}

void QBNoteTextView::setScrollY(double y)
{
    const double total = m_layout.height() + (m_isTypewriter ? viewport()->height() / 2.0 : 0);
    const double top = std::clamp(y, 0.0, std::max(0.0, total - viewport()->height()));
    m_scroll.location = m_layout.locationOfParagraphAtHeight(top);
    m_scroll.offset = top - m_layout.topOfLocation(m_scroll.location);
    m_isSettingScrollBar = true;
    verticalScrollBar()->setValue(static_cast<int>(std::lround(top)));
    m_isSettingScrollBar = false;
    viewport()->update();
}

void QBNoteTextView::scrollTo(ScrollPosition position)
{
    m_scroll = position;
    m_scroll.location = std::clamp<qint64>(position.location, 0, m_stack.noteTextStorage().length());
    updateScrollBar();
    viewport()->update();
}

void QBNoteTextView::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    if (!m_isSettingScrollBar) {
        setScrollY(verticalScrollBar()->value());
    }
}

void QBNoteTextView::scrollSmoothlyTo(double y)
{
    if (m_scrolling == nullptr) {
        m_scrolling = new QVariantAnimation(this);
        m_scrolling->setDuration(kSmoothScrollDuration);
        m_scrolling->setEasingCurve(QEasingCurve::OutCubic);
        connect(m_scrolling, &QVariantAnimation::valueChanged, this,
                [this](const QVariant &value) { setScrollY(value.toDouble()); });
    }
    m_scrolling->stop();
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0) {
        setScrollY(y);
        return;
    }
    m_scrolling->setStartValue(scrollY());
    m_scrolling->setEndValue(y);
    m_scrolling->start();
}

QRectF QBNoteTextView::caretRectInViewport(qint64 location)
{
    return m_layout.caretRect(location, location == m_caret && m_isUpstream).translated(0, -scrollY());
}

qint64 QBNoteTextView::locationAtViewportPoint(QPointF point)
{
    return m_layout.locationAtPoint(point + QPointF(0, scrollY()));
}

void QBNoteTextView::ensureCaretVisible()
{
    // The caret's place is laid out first: that may move what is above or below it.
    const QRectF caret = m_layout.caretRect(m_caret, m_isUpstream);
    const double page = viewport()->height();
    const double top = scrollY();
    double wanted = top;
    if (m_isTypewriter) {
        wanted = caret.center().y() - page / 2;
    } else if (caret.top() - kCaretMargin < top) {
        wanted = caret.top() - kCaretMargin;
    } else if (caret.bottom() + kCaretMargin > top + page) {
        wanted = caret.bottom() + kCaretMargin - page;
    }
    updateScrollBar();
    if (wanted != top) {
        setScrollY(wanted);
    }
}

void QBNoteTextView::scrollRangeToVisible(NSRange range)
{
    const QRectF first = m_layout.caretRect(range.location);
    const double page = viewport()->height();
    const double top = scrollY();
    updateScrollBar();
    if (first.top() < top || first.bottom() > top + page) {
        setScrollY(first.top() - page / 3);
    }
}

void QBNoteTextView::setSearchHighlights(QList<NSRange> ranges, qsizetype current)
{
    m_highlights = std::move(ranges);
    m_currentHighlight = current;
    viewport()->update();
}

void QBNoteTextView::setTypewriterScrolling(bool isOn)
{
    m_isTypewriter = isOn;
    updateScrollBar();
    ensureCaretVisible();
}

void QBNoteTextView::setFocusMode(bool isOn)
{
    m_isFocusMode = isOn;
    viewport()->update();
}

void QBNoteTextView::didChangeText()
{
    if (m_delegate != nullptr) {
        m_delegate->qbNoteTextViewDidChangeText(*this);
    }
    showChange();
}

void QBNoteTextView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    m_layout.setPageWidth(viewport()->width());
    updateScrollBar();
}

void QBNoteTextView::restartBlinking()
{
    m_isCaretOn = true;
    const int period = QGuiApplication::styleHints()->cursorFlashTime();
    if (hasFocus() && period > 1) {
        m_blinking.start(period / 2, this);
    } else {
        m_blinking.stop();
    }
}

void QBNoteTextView::updateCaret()
{
    viewport()->update(caretRectInViewport(m_caret).adjusted(-3, -2, 3, 2).toAlignedRect());
}

void QBNoteTextView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_blinking.timerId()) {
        m_isCaretOn = !m_isCaretOn;
        updateCaret();
    } else if (event->timerId() == m_autoscroll.timerId()) {
        const double page = viewport()->height();
        const double beyond = m_mousePoint.y() < 0 ? m_mousePoint.y() : std::max(0.0, m_mousePoint.y() - page);
        if (beyond != 0) {
            setScrollY(scrollY() + beyond / 3);
            extendSelectionTo(m_mousePoint);
        }
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

void QBNoteTextView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    restartBlinking();
    viewport()->update();
}

void QBNoteTextView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    breakUndoCoalescing();
    m_blinking.stop();
    viewport()->update();
}

void QBNoteTextView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        viewport()->update();
    }
}

bool QBNoteTextView::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Keys that edit belong to the text while it has the keyboard.
        auto *key = static_cast<QKeyEvent *>(event);
        for (const auto standard :
             {QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Paste, QKeySequence::Undo, QKeySequence::Redo,
              QKeySequence::SelectAll, QKeySequence::MoveToStartOfDocument, QKeySequence::MoveToEndOfDocument,
              QKeySequence::MoveToNextWord, QKeySequence::MoveToPreviousWord, QKeySequence::SelectNextWord,
              QKeySequence::SelectPreviousWord, QKeySequence::DeleteStartOfWord, QKeySequence::DeleteEndOfWord}) {
            if (key->matches(standard)) {
                event->accept();
                return true;
            }
        }
    }
    if (event->type() == QEvent::KeyPress) {
        // Tab would otherwise move the focus.
        auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
            (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0 && !m_isReadOnly) {
            keyPressEvent(key);
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}
