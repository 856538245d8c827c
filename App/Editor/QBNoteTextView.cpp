#include "QBNoteTextView.h"

#include "AccessibleNoteTextView.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <QApplication>
#include <QEvent>
#include <QInputMethod>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScroller>
#include <QStyleHints>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

using namespace quib;

namespace {

/// So much of the view at its upper and lower edge scrolls while something is dragged there. Units: points.
constexpr double kDragScrollMargin = 28;

QEvent::Type changedEventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

QBNoteTextView::QBNoteTextView(QBNoteTextKitStack &textKitStack, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_stack(textKitStack)
    , m_layout(textKitStack.noteTextStorage(), textKitStack.themeManager())
{
    m_layout.setEditHandler(
        [this](NSRange editedRange, qint64 changeInLength) { textDidEdit(editedRange, changeInLength); });
    m_stack.themeManager()->registerStylableObject(*this);
    AccessibleNoteTextView::install();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_KeyCompression);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAcceptDrops(true);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    setAccessibleName(tr("Note"));
    m_layout.setRightToLeftByDefault(isRightToLeft());
    connect(QGuiApplication::inputMethod(), &QInputMethod::inputDirectionChanged, this,
            &QBNoteTextView::followKeyboard);
    m_layout.setPageWidth(viewport()->width());
}

void QBNoteTextView::followKeyboard()
{
    m_layout.setRightToLeftByDefault(QGuiApplication::inputMethod()->inputDirection() == Qt::RightToLeft);
    setNeedsUpdate();
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
    m_preedit = {};
    m_stack.noteTextStorage().loadString(string);
    m_scroll = {};
    m_goalX = -1;
    moveSelection(0, 0, false);
    updateScrollBar();
    updateAll();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::setReadOnly(bool isReadOnly)
{
    m_isReadOnly = isReadOnly;
    setAttribute(Qt::WA_InputMethodEnabled, !isReadOnly);
    updateAll();
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

qint64 QBNoteTextView::outsideOfCharacter(qint64 location) const
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const bool isWithin = location > 0 && location < text.length() &&
                          QChar::isLowSurrogate(text.characterAtIndex(location)) &&
                          QChar::isHighSurrogate(text.characterAtIndex(location - 1));
    return isWithin ? location - 1 : location;
}

void QBNoteTextView::moveSelection(qint64 anchor, qint64 caret, bool upstream)
{
    anchor = outsideOfCharacter(anchor);
    caret = outsideOfCharacter(caret);
    const bool isSame = anchor == m_anchor && caret == m_caret && upstream == m_isUpstream;
    m_anchor = anchor;
    m_caret = caret;
    m_isUpstream = upstream;
    if (isSame) {
        return;
    }
    restartBlinking();
    setNeedsUpdate();
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
    Q_EMIT attachmentsMayLookDifferent();
    m_hasMoved = true;
    setNeedsUpdate();
}

void QBNoteTextView::didUndoOrRedo()
{
    if (m_delegate != nullptr) {
        m_delegate->qbNoteTextViewDidChangeText(*this);
    }
}

void QBNoteTextView::showChange()
{
    if (!m_highlights.isEmpty()) {
        m_highlights.clear();
        updateAll();
    }
    m_goalX = -1;
    restartBlinking();
    ensureCaretVisible();
    updateMicroFocus();
    Q_EMIT textChanged();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::styleObjectWithThemeManager(QBThemeManager & /*manager*/)
{
    layOutAnew([this] { m_layout.invalidateLayout(); });
}

void QBNoteTextView::layOutAnew(const std::function<void()> &change)
{
    // The line at the top of the view stays there.
    anchorAtLine();
    const double width = m_layout.columnWidth();
    change();
    if (m_layout.columnWidth() != width) {
        Q_EMIT columnWidthDidChange();
    }
    (void)fillLastPage();
    updateScrollBar();
    updateAll();
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
    m_anchor = outsideOfCharacter(kept(m_anchor));
    m_caret = outsideOfCharacter(kept(m_caret));
    moveSpellingMarks(editedRange, changeInLength);
    m_hasMoved = true;
    setNeedsUpdate();
}

void QBNoteTextView::setNeedsUpdate()
{
    if (!m_isStale) {
        m_isStale = true;
        QCoreApplication::postEvent(this, new QEvent(changedEventType()), Qt::HighEventPriority);
    }
}

QRectF QBNoteTextView::caretRectInViewport(qint64 location)
{
    return m_layout.caretRect(location, location == m_caret && m_isUpstream).translated(0, -scrollY());
}

qint64 QBNoteTextView::locationAtViewportPoint(QPointF point)
{
    return m_layout.locationAtPoint(point + QPointF(0, scrollY()));
}

void QBNoteTextView::setSearchHighlights(QList<NSRange> ranges, qsizetype current)
{
    m_highlights = std::move(ranges);
    m_currentHighlight = current;
    updateAll();
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
    updateAll();
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
    layOutAnew([this] { m_layout.setPageWidth(viewport()->width()); });
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

void QBNoteTextView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_blinking.timerId()) {
        m_isCaretOn = !m_isCaretOn;
        viewport()->update(areaOfCaret(m_shown.caret));
    } else if (event->timerId() == m_autoscroll.timerId()) {
        autoscroll();
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

void QBNoteTextView::autoscroll()
{
    // Beyond the edges while text is selected, near them while something is dragged: the further, the faster.
    const double margin = m_dropLocation >= 0 ? kDragScrollMargin : 0;
    const double below = m_mousePoint.y() - (viewport()->height() - margin);
    const double beyond = m_mousePoint.y() < margin ? m_mousePoint.y() - margin : std::max(0.0, below);
    if (beyond == 0) {
        return;
    }
    const double step = scrollStep();
    scrollBy(beyond < 0 ? std::min(-step, beyond / 3) : std::max(step, beyond / 3));
    if (m_dropLocation >= 0) {
        showDropCaret(outsideOfMarker(locationAtViewportPoint(m_mousePoint)));
    } else {
        extendSelectionTo(m_mousePoint);
    }
}

void QBNoteTextView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    followKeyboard();
    restartBlinking();
    updateAll();
}

void QBNoteTextView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    breakUndoCoalescing();
    m_blinking.stop();
    updateAll();
}

void QBNoteTextView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateAll();
    }
}

bool QBNoteTextView::event(QEvent *event)
{
    if (event->type() == changedEventType()) {
        updateChanged();
        return true;
    }
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
