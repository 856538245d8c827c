#include "QBNoteTextView.h"

#include "UnfoldedText.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Editing/QBNoteEditorCoreController.h>
#include <Text/NSAttributeName.h>

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>

using namespace quib;

namespace {

constexpr int kAutoscrollInterval = 16;
/// What one step of a wheel scrolls. Units: lines of text.
constexpr double kWheelLines = 3;
constexpr double kWheelStep = 120;

/// A stretch of a text spelled out, but for its folds: they stay what they are.
NSAttributedString spelledOut(const QBNotesTextStorage &storage, NSRange range)
{
    NSMutableAttributedString text;
    qint64 start = range.location;
    const auto appendUpTo = [&](qint64 limit) {
        text.appendAttributedString(
            NSAttributedString(storage.stringWithExpandedTextAttachmentsWithRange({start, limit - start})));
    };
    for (const qint64 fold : foldsInRange(storage.attributedString(), range)) {
        appendUpTo(fold);
        text.appendAttributedString(storage.attributedSubstringFromRange({fold, 1}, /*expandTextAttachment=*/false));
        start = fold + 1;
    }
    appendUpTo(range.limit());
    return NSAttributedString(text);
}

} // namespace

void QBNoteTextView::mousePressEvent(QMouseEvent *event)
{
    breakUndoCoalescing();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPointF point = event->position();
    const QPointF onPage = point + QPointF(0, scrollY());
    m_pressPoint = point;
    m_mousePoint = point;
    m_goalX = -1;
    if (const auto clicked = m_layout.attachmentAtPoint(onPage);
        clicked && dynamic_cast<QBCheckBoxTextAttachment *>(clicked->attachment.get()) != nullptr && !m_isReadOnly) {
        if (m_delegate != nullptr) {
            m_delegate->qbNoteTextViewDidClickAttachment(*this, clicked->attachment, clicked->location);
        }
        return;
    }
    if ((event->modifiers() & Qt::ControlModifier) != 0 && activateLink(point)) {
        return;
    }
    bool upstream = false;
    const qint64 location = outsideOfMarker(m_layout.locationAtPoint(onPage, &upstream));
    const bool isTriple = m_lastDoubleClick.isValid() &&
                          m_lastDoubleClick.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
    if (isTriple) {
        m_lastDoubleClick.invalidate();
        m_granularity = Granularity::Paragraph;
        m_granularAnchor = rangeAround(location, m_granularity);
        m_isSelecting = true;
        moveSelection(m_granularAnchor.location, m_granularAnchor.limit(), false);
        return;
    }
    m_granularity = Granularity::Character;
    const NSRange selection = selectedRange();
    if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        m_isSelecting = true;
        m_granularAnchor = {m_anchor, 0};
        moveSelection(m_anchor, location, upstream);
    } else if (selection.length > 0 && location >= selection.location && location <= selection.limit()) {
        m_mayDrag = true;
    } else {
        m_isSelecting = true;
        m_granularAnchor = {location, 0};
        moveSelection(location, location, upstream);
    }
}

void QBNoteTextView::mouseMoveEvent(QMouseEvent *event)
{
    m_mousePoint = event->position();
    if (m_mayDrag && (event->buttons() & Qt::LeftButton) != 0) {
        if ((m_mousePoint - m_pressPoint).manhattanLength() >= QApplication::startDragDistance()) {
            m_mayDrag = false;
            startDrag();
        }
        return;
    }
    if (m_isSelecting && (event->buttons() & Qt::LeftButton) != 0) {
        extendSelectionTo(m_mousePoint);
        const bool isOutside = m_mousePoint.y() < 0 || m_mousePoint.y() > viewport()->height();
        if (isOutside && !m_autoscroll.isActive()) {
            m_autoscroll.start(kAutoscrollInterval, this);
        } else if (!isOutside) {
            m_autoscroll.stop();
        }
        return;
    }
    updatePointer(m_mousePoint, event->modifiers());
}

void QBNoteTextView::mouseReleaseEvent(QMouseEvent *event)
{
    m_autoscroll.stop();
    if (m_mayDrag) {
        // A click within the selection that became no drag puts the caret there.
        m_mayDrag = false;
        bool upstream = false;
        const qint64 location =
            outsideOfMarker(m_layout.locationAtPoint(event->position() + QPointF(0, scrollY()), &upstream));
        moveSelection(location, location, upstream);
    }
    m_isSelecting = false;
    if (QClipboard *clipboard = QGuiApplication::clipboard();
        clipboard->supportsSelection() && selectedRange().length > 0) {
        clipboard->setMimeData(mimeDataForRange(rangeTaken(selectedRange())).release(), QClipboard::Selection);
    }
    if (event->button() == Qt::MiddleButton && !m_isReadOnly && QGuiApplication::clipboard()->supportsSelection()) {
        const qint64 location = outsideOfMarker(locationAtViewportPoint(event->position()));
        moveSelection(location, location, false);
        if (const QMimeData *selected = QGuiApplication::clipboard()->mimeData(QClipboard::Selection)) {
            insertMimeData(*selected, selectedRange(), /*isPlain=*/false);
        }
    }
}

void QBNoteTextView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPointF onPage = event->position() + QPointF(0, scrollY());
    if (const auto clicked = m_layout.attachmentAtPoint(onPage)) {
        if (dynamic_cast<QBCheckBoxTextAttachment *>(clicked->attachment.get()) != nullptr) {
            mousePressEvent(event); // a box that is clicked fast is toggled twice
            return;
        }
        if (m_delegate != nullptr && clicked->rect.width() > 0) {
            m_delegate->qbNoteTextViewDidOpenAttachment(*this, clicked->attachment, clicked->location);
        }
    }
    m_granularity = Granularity::Word;
    m_granularAnchor = rangeAround(m_layout.locationAtPoint(onPage), m_granularity);
    if (const auto clicked = m_layout.attachmentAtPoint(onPage); clicked && clicked->rect.width() > 0) {
        // What belongs to it: the line that it begins, the link that it is of. Else it is part of a word, or alone.
        const NSRange extra = QBNoteEditorCoreController(m_stack).extraAttachmentsRangeForRange({clicked->location, 1});
        m_granularAnchor = extra.length > 1 ? extra : m_granularAnchor;
    }
    m_isSelecting = true;
    m_lastDoubleClick.start();
    moveSelection(m_granularAnchor.location, m_granularAnchor.limit(), false);
}

void QBNoteTextView::extendSelectionTo(QPointF point)
{
    bool upstream = false;
    const qint64 location = outsideOfMarker(m_layout.locationAtPoint(point + QPointF(0, scrollY()), &upstream));
    const NSRange reached = rangeAround(location, m_granularity);
    if (location >= m_granularAnchor.location) {
        moveSelection(m_granularAnchor.location, std::max(reached.limit(), m_granularAnchor.limit()), upstream);
    } else {
        moveSelection(m_granularAnchor.limit(), reached.location, upstream);
    }
}

bool QBNoteTextView::isLink(qint64 location) const
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    return location >= 0 && location < text.length() && text.attribute(NSLinkAttributeName, location);
}

void QBNoteTextView::updatePointer(QPointF point, Qt::KeyboardModifiers modifiers)
{
    const QPointF onPage = point + QPointF(0, scrollY());
    const auto attachment = m_layout.attachmentAtPoint(onPage);
    const bool isBox = attachment && dynamic_cast<QBCheckBoxTextAttachment *>(attachment->attachment.get()) != nullptr;
    const bool isFollowed = (modifiers & Qt::ControlModifier) != 0 && isLink(m_layout.locationAtPoint(onPage));
    viewport()->setCursor(isBox || isFollowed ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

bool QBNoteTextView::activateLink(QPointF point)
{
    const qint64 location = locationAtViewportPoint(point);
    if (m_delegate == nullptr || !isLink(location)) {
        return false;
    }
    const AttributeValue link = m_stack.noteTextStorage().attributedString().attribute(NSLinkAttributeName, location);
    m_delegate->qbNoteTextViewDidOpenURL(*this, link.urlValue().isValid() ? link.urlValue() : QUrl(link.stringValue()));
    return true;
}

void QBNoteTextView::wheelEvent(QWheelEvent *event)
{
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        m_zoomAngle += event->angleDelta().y();
        const int steps = m_zoomAngle / static_cast<int>(kWheelStep);
        m_zoomAngle -= steps * static_cast<int>(kWheelStep);
        if (steps != 0) {
            Q_EMIT zoomWasAsked(steps);
        }
        event->accept();
        return;
    }
    m_zoomAngle = 0;
    if (!event->pixelDelta().isNull()) {
        m_unscrolled -= event->pixelDelta().y();
        const double step = scrollStep();
        const double whole = std::trunc(m_unscrolled / step) * step;
        m_unscrolled -= whole;
        scrollBy(whole);
    } else {
        const double lines = -event->angleDelta().y() / kWheelStep * kWheelLines;
        scrollSmoothlyBy(lines * verticalScrollBar()->singleStep());
    }
    event->accept();
}

void QBNoteTextView::startDrag()
{
    const NSRange dragged = rangeTaken(selectedRange());
    auto *drag = new QDrag(this);
    drag->setMimeData(mimeDataForRange(dragged).release());
    const auto actions = m_isReadOnly ? Qt::DropActions(Qt::CopyAction) : Qt::CopyAction | Qt::MoveAction;
    const qint64 length = m_stack.noteTextStorage().length();
    const Qt::DropAction done = drag->exec(actions, m_isReadOnly ? Qt::CopyAction : Qt::MoveAction);
    // A drop within this view moves the text itself.
    if (done == Qt::MoveAction && drag->target() != viewport() && drag->target() != this &&
        m_stack.noteTextStorage().length() == length) {
        removeText(dragged);
    }
}

bool QBNoteTextView::moveText(NSRange range, qint64 location)
{
    const NSRange taken = rangeTaken(range);
    if (m_isReadOnly || taken.length == 0 || (location >= taken.location && location <= taken.limit())) {
        return false;
    }
    // One change of all that lies between the two places: whatever becomes of the lines that it touches, they are
    // styled, and numbered, only when the text is whole again.
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    const bool isForwards = location > taken.location;
    const NSRange passed =
        isForwards ? NSRange{taken.limit(), location - taken.limit()} : NSRange{location, taken.location - location};
    const NSAttributedString moved = spelledOut(storage, taken);
    const NSAttributedString other = spelledOut(storage, passed);
    const NSRange changed = NSUnionRange(taken, passed);
    if (!storage.canEditTextInRange(changed) || !storage.canEditTextInRange({location, 0})) {
        QApplication::beep();
        return false;
    }
    NSMutableAttributedString exchanged(isForwards ? other : moved);
    exchanged.appendAttributedString(isForwards ? moved : other);
    const qint64 behindMoved = changed.location + moved.length() + (isForwards ? other.length() : 0);
    breakUndoCoalescing();
    m_undoManager->beginUndoGrouping();
    replaceCharactersInrange(changed, exchanged, {behindMoved, 0});
    didChangeText();
    m_undoManager->endUndoGrouping();
    Q_EMIT undoAvailabilityChanged();
    return true;
}

void QBNoteTextView::showDropCaret(qint64 location)
{
    if (m_dropLocation != location) {
        m_dropLocation = location;
        setNeedsUpdate();
    }
    if (location < 0) {
        m_autoscroll.stop();
    }
}

void QBNoteTextView::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void QBNoteTextView::dragMoveEvent(QDragMoveEvent *event)
{
    const bool isTaken = !m_isReadOnly && (m_delegate != nullptr ? m_delegate->acceptsMimeData(*event->mimeData())
                                                                 : event->mimeData()->hasText());
    if (!isTaken) {
        event->ignore();
        return;
    }
    if (event->source() != this && event->source() != viewport()) {
        event->setDropAction(Qt::CopyAction);
    }
    event->accept();
    m_mousePoint = event->position();
    showDropCaret(outsideOfMarker(locationAtViewportPoint(m_mousePoint)));
    if (!m_autoscroll.isActive()) {
        m_autoscroll.start(kAutoscrollInterval, this);
    }
}

void QBNoteTextView::dragLeaveEvent(QDragLeaveEvent * /*event*/)
{
    showDropCaret(-1);
}

void QBNoteTextView::dropEvent(QDropEvent *event)
{
    const qint64 location = outsideOfMarker(locationAtViewportPoint(event->position()));
    showDropCaret(-1);
    const bool isOwn = event->source() == this || event->source() == viewport();
    if (isOwn && event->dropAction() == Qt::MoveAction) {
        if (!moveText(selectedRange(), location)) {
            event->ignore();
            return;
        }
    } else {
        // It stands where the caret was seen, within a selection too: nothing that was not dragged goes.
        insertMimeData(*event->mimeData(), {location, 0}, /*isPlain=*/false);
    }
    event->acceptProposedAction();
    setFocus();
}

void QBNoteTextView::contextMenuEvent(QContextMenuEvent *event)
{
    breakUndoCoalescing();
    const qint64 location =
        event->reason() == QContextMenuEvent::Mouse ? locationAtViewportPoint(event->pos()) : m_caret;
    const NSRange selection = selectedRange();
    if (location < selection.location || location > selection.limit()) {
        moveSelection(location, location, false);
    }
    QMenu menu(this);
    if (m_delegate != nullptr) {
        m_delegate->fillContextMenu(*this, menu, location);
    }
    const bool hasSelection = selectedRange().length > 0;
    const auto add = [&](const QString &text, QKeySequence::StandardKey key, bool isEnabled, auto slot) {
        QAction *action = menu.addAction(text, this, slot);
        action->setShortcut(key);
        action->setEnabled(isEnabled);
    };
    if (!menu.isEmpty()) {
        menu.addSeparator();
    }
    add(tr("Undo"), QKeySequence::Undo, m_undoManager->canUndo() && !m_isReadOnly, &QBNoteTextView::undo);
    add(tr("Redo"), QKeySequence::Redo, m_undoManager->canRedo() && !m_isReadOnly, &QBNoteTextView::redo);
    menu.addSeparator();
    add(tr("Cut"), QKeySequence::Cut, hasSelection && !m_isReadOnly, &QBNoteTextView::cut);
    add(tr("Copy"), QKeySequence::Copy, hasSelection, &QBNoteTextView::copy);
    add(tr("Paste"), QKeySequence::Paste, !m_isReadOnly, &QBNoteTextView::paste);
    add(tr("Select All"), QKeySequence::SelectAll, true, &QBNoteTextView::selectAll);
    const QPoint at = event->reason() == QContextMenuEvent::Mouse
                          ? event->globalPos()
                          : viewport()->mapToGlobal(caretRectInViewport(m_caret).bottomLeft().toPoint());
    menu.exec(at);
}
