#include "QBMainWindowController.h"

#include "EditorPane.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>

using namespace Qt::StringLiterals;
using namespace quib;

QBMainWindowController::Keyboard QBMainWindowController::keyboard() const
{
    QWidget *focus = QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : focusWidget();
    if (focus == menuBar()) {
        focus = m_keyboardBeforeMenuBar;
    }
    if (auto *field = qobject_cast<QLineEdit *>(focus); field != nullptr) {
        return {.field = field};
    }
    if (auto *text = qobject_cast<QBNoteTextView *>(focus); text != nullptr) {
        return {.text = text};
    }
    // Who was writing, and is beside the text now, means the text: what is done to notes is undone out of sight.
    if (focus != nullptr && m_editorColumn->isAncestorOf(focus)) {
        return {.text = m_editor->note() ? &m_editor->textView() : nullptr};
    }
    return {.isInLists = true};
}

void QBMainWindowController::undo()
{
    if (const Keyboard of = keyboard(); of.field != nullptr) {
        of.field->undo();
    } else if (of.text != nullptr) {
        of.text->undo();
    } else if (of.isInLists) {
        m_undoManager.undo();
    }
}

void QBMainWindowController::updateUndoNames()
{
    const Keyboard of = keyboard();
    const NSUndoManager *manager = of.text != nullptr ? &of.text->undoManager()
                                   : of.isInLists     ? &m_undoManager
                                                      : nullptr;
    const QString undone = manager != nullptr ? manager->undoActionName() : QString();
    const QString redone = manager != nullptr ? manager->redoActionName() : QString();
    m_actions[u"undo"_s]->setText(undone.isEmpty() ? tr("Undo") : tr("Undo %1").arg(undone));
    m_actions[u"redo"_s]->setText(redone.isEmpty() ? tr("Redo") : tr("Redo %1").arg(redone));
}

void QBMainWindowController::updateEditingCommands(bool isMenuOpen)
{
    const Keyboard of = keyboard();
    const bool isWritable =
        of.field != nullptr ? !of.field->isReadOnly() : of.text != nullptr && !of.text->isReadOnly();
    const bool hasSelection = of.field != nullptr  ? of.field->hasSelectedText()
                              : of.text != nullptr ? of.text->selectedRange().length > 0
                                                   : m_list->selectionModel()->hasSelection();
    const NSUndoManager *manager = of.isInLists                       ? &m_undoManager
                                   : isWritable && of.text != nullptr ? &of.text->undoManager()
                                                                      : nullptr;
    const auto enable = [this, isMenuOpen](const QString &name, bool doesSomething) {
        m_actions[name]->setEnabled(!isMenuOpen || doesSomething);
    };
    enable(u"undo"_s, of.field != nullptr ? of.field->isUndoAvailable() : manager != nullptr && manager->canUndo());
    enable(u"redo"_s, of.field != nullptr ? of.field->isRedoAvailable() : manager != nullptr && manager->canRedo());
    enable(u"cut"_s, isWritable && hasSelection);
    enable(u"copy"_s, hasSelection && (!of.isInLists || m_list->hasFocus()));
    const QMimeData *copied = isMenuOpen && isWritable ? QApplication::clipboard()->mimeData() : nullptr;
    enable(u"paste"_s, copied != nullptr && !copied->formats().isEmpty());
}

void QBMainWindowController::redo()
{
    if (const Keyboard of = keyboard(); of.field != nullptr) {
        of.field->redo();
    } else if (of.text != nullptr) {
        of.text->redo();
    } else if (of.isInLists) {
        m_undoManager.redo();
    }
}
