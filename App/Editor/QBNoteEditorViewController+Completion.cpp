#include "QBNoteEditorViewController.h"

#include "CompletionPopup.h"

#include <Markup/Editing/QBEditorAutoCompleteCoreController.h>
#include <Search/NoteTextSearch.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QAccessible>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

QString symbolOfType(QBAutoCompleteType type)
{
    switch (type) {
    case QBAutoCompleteType::Tag:
        return u"tag"_s;
    case QBAutoCompleteType::Note:
        return u"note-link"_s;
    case QBAutoCompleteType::Language:
        return u"code-block"_s;
    case QBAutoCompleteType::None:
        break;
    }
    return {};
}

} // namespace

void QBNoteEditorViewController::resetCompletion()
{
    closeCompletion();
    const std::weak_ptr<NSManagedObjectContext> context =
        m_note ? m_note->managedObjectContext()->weak_from_this() : std::weak_ptr<NSManagedObjectContext>();
    m_completion = std::make_unique<QBEditorAutoCompleteCoreController>(m_stack.noteTextStorage(), context);
    m_completion->setNoteFinder([search = m_textSearch](const QString &partialTitle, qint64 limitTo) {
        const auto found = search.lock();
        return found ? found->titles().findNotesForPartialtitle(partialTitle, limitTo) : std::nullopt;
    });
}

void QBNoteEditorViewController::updateCompletion()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const bool isWanted = preferences == nullptr || preferences->autocompleteEnabled();
    const NSRange selection = m_view->selectedRange();
    if (!isWanted || !m_view->isTypedChange() || selection.length > 0 || !m_view->hasFocus() ||
        !m_completion->canAutoCompleteForSelectionRange(selection)) {
        closeCompletion();
        return;
    }
    showCompletions();
}

void QBNoteEditorViewController::completeAtCaret()
{
    const NSRange selection = m_view->selectedRange();
    if (selection.length == 0 && (m_completion->canAutoCompleteForSelectionRange(selection) ||
                                  m_completion->canAutocompleteTagForSelectionRange(selection) ||
                                  m_completion->canAutocompleteNoteForSelectionRange(selection))) {
        showCompletions();
    }
}

void QBNoteEditorViewController::showCompletions()
{
    m_completion->updateCompletionResults();
    const QRect caret = m_view->caretRectInViewport(m_view->caret()).toAlignedRect();
    m_popup->open(m_completion->completionItems(), symbolOfType(m_completion->autocompleteType()),
                  m_completion->partialCompletionString(),
                  caret.translated(m_view->viewport()->mapTo(this, QPoint()))); // it lies over the whole pane
}

void QBNoteEditorViewController::closeCompletion()
{
    if (m_popup->isOpen()) {
        m_popup->close();
        if (m_view->hasFocus() && QAccessible::isActive()) {
            // Assistive programs were told that the list had the keyboard.
            QAccessibleEvent event(m_view, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
    }
    if (m_completion) {
        m_completion->resetCompletion();
    }
}

void QBNoteEditorViewController::insertCompletion()
{
    const auto item = m_popup->chosenItem();
    if (item) {
        edit([&] { m_completion->insertCompletionForItem(*item, *m_view); });
    }
    closeCompletion();
    m_core.correctTagSelectionAfterInsertionInTextView(*m_view);
    m_view->setFocus();
}

void QBNoteEditorViewController::qbNoteTextViewDidChangeSelection(QBNoteTextView & /*view*/)
{
    updateStyles();
    if (!m_popup->isOpen()) {
        return;
    }
    // Each key moves the caret before its change is told; the list stays where the caret is still behind what is typed.
    QTimer::singleShot(0, m_popup, [this] {
        const NSRange selection = m_view->selectedRange();
        if (m_popup->isOpen() && (selection.length > 0 || selection.location != m_completion->caret())) {
            closeCompletion();
        }
    });
}

bool QBNoteEditorViewController::isTextCompletionOpen() const
{
    return m_popup->isOpen();
}
