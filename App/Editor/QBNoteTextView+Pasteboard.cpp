#include "QBNoteTextView.h"

#include <Markup/QBNotesTextStorage.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;

std::unique_ptr<QMimeData> QBNoteTextView::mimeDataForRange(NSRange range)
{
    auto mimeData = std::make_unique<QMimeData>();
    mimeData->setText(m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(range));
    if (m_delegate != nullptr) {
        m_delegate->fillMimeData(*this, *mimeData, range);
    }
    return mimeData;
}

void QBNoteTextView::insertMimeData(const QMimeData &mimeData, NSRange range, bool isPlain)
{
    std::optional<QString> text;
    if (m_delegate != nullptr && !isPlain) {
        text = m_delegate->textForMimeData(*this, mimeData, range);
    }
    if (!text && mimeData.hasText()) {
        text = mimeData.text();
    }
    if (text && !text->isEmpty()) {
        // One kind of line end, whatever program the text comes from.
        text->replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
        const auto heading = headingForText(*text, range);
        replaceText(heading ? heading->replaced : range, heading ? heading->text : *text);
    }
}

void QBNoteTextView::copy()
{
    breakUndoCoalescing();
    const NSRange selection = selectedRange();
    if (selection.length > 0) {
        QGuiApplication::clipboard()->setMimeData(mimeDataForRange(rangeTaken(selection)).release());
    }
}

void QBNoteTextView::cut()
{
    if (m_isReadOnly || selectedRange().length == 0) {
        return;
    }
    copy();
    m_undoManager->beginUndoGrouping();
    deleteRange(selectedRange());
    m_undoManager->endUndoGrouping();
    Q_EMIT undoAvailabilityChanged();
}

void QBNoteTextView::paste()
{
    if (const QMimeData *mimeData = QGuiApplication::clipboard()->mimeData(); mimeData != nullptr && !m_isReadOnly) {
        insertMimeData(*mimeData, rangeTaken(selectedRange()), /*isPlain=*/false);
    }
}

void QBNoteTextView::pasteAsPlainText()
{
    if (const QMimeData *mimeData = QGuiApplication::clipboard()->mimeData(); mimeData != nullptr && !m_isReadOnly) {
        insertMimeData(*mimeData, rangeTaken(selectedRange()), /*isPlain=*/true);
    }
}

void QBNoteTextView::compose(const ParagraphLayout::Preedit &preedit)
{
    if (preedit.string.isEmpty() && m_preedit.string.isEmpty()) {
        return;
    }
    // A line end would break the line that it is shown in.
    m_preedit = preedit;
    m_preedit.string.replace(u'\n', u' ');
    m_layout.setPreedit(m_preedit);
    ensureCaretVisible();
    setNeedsUpdate();
}

void QBNoteTextView::inputMethodEvent(QInputMethodEvent *event)
{
    if (m_isReadOnly) {
        event->ignore();
        return;
    }
    if (!event->commitString().isEmpty() || event->replacementLength() > 0) {
        compose({});
        const NSRange selection = selectedRange();
        const NSRange replaced = event->replacementLength() > 0
                                     ? rangeCutToLength({std::max<qint64>(0, m_caret + event->replacementStart()),
                                                         event->replacementLength()},
                                                        m_stack.noteTextStorage().length())
                                     : selection;
        if (replaced != selection) {
            // The text that the method names, and none that belongs to it: it has seen the letters only.
            setSelectedRange(replaced);
            typeText(event->commitString(), replaced);
        } else {
            typeText(event->commitString());
        }
    }
    ParagraphLayout::Preedit preedit = {.location = m_caret,
                                        .string = event->preeditString(),
                                        .caret = static_cast<int>(event->preeditString().size())};
    for (const QInputMethodEvent::Attribute &attribute : event->attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor) {
            preedit.caret = attribute.start;
        }
    }
    compose(preedit);
    updateMicroFocus();
    event->accept();
}

QVariant QBNoteTextView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    auto &self = const_cast<QBNoteTextView &>(*this); // a place that is asked for may have to be laid out first
    const NSRange paragraph = self.paragraphRange({m_caret, 0});
    switch (query) {
    case Qt::ImEnabled:
        return !m_isReadOnly;
    case Qt::ImCursorRectangle:
        return self.caretRectInViewport(m_caret).toAlignedRect();
    case Qt::ImFont:
        return m_stack.themeManager()->paragraphFont().font();
    case Qt::ImSurroundingText:
        return m_stack.noteTextStorage().string().mid(paragraph.location, paragraph.length).toString();
    case Qt::ImCursorPosition:
        return static_cast<int>(m_caret - paragraph.location);
    case Qt::ImAnchorPosition:
        return static_cast<int>(std::clamp<qint64>(m_anchor - paragraph.location, 0, paragraph.length));
    case Qt::ImCurrentSelection: {
        const NSRange selection = selectedRange();
        return m_stack.noteTextStorage().string().mid(selection.location, selection.length).toString();
    }
    case Qt::ImHints:
        return static_cast<int>(Qt::ImhMultiLine);
    default:
        return QAbstractScrollArea::inputMethodQuery(query);
    }
}

bool QBNoteTextView::viewportEvent(QEvent *event)
{
    return QAbstractScrollArea::viewportEvent(event);
}
