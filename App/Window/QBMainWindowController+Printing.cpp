#include "QBMainWindowController.h"

#include "EditorPane.h"
#include "MessageBar.h"

#include <Editor/NotePrinter.h>
#include <Store/CurrentSyntax.h>

#include <QPrintDialog>
#include <QPrinter>

using namespace quib;

void QBMainWindowController::printNote()
{
    const Ref<QBNote> note = m_editor->note();
    if (!note) {
        return;
    }
    saveNote(/*forceSave=*/false);
    // The desktop's own dialog knows its printers; it belongs to the window and lets the program go on.
    auto *dialog = new QPrintDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Print Note"));
    dialog->setOptions(QPrintDialog::PrintToFile | QPrintDialog::PrintPageRange | QPrintDialog::PrintCollateCopies);
    dialog->printer()->setDocName(note->title());
    connect(dialog, qOverload<QPrinter *>(&QPrintDialog::accepted), this, [this, note](QPrinter *printer) {
        const NotePrinter pages(note->text(), currentSyntax(), m_context);
        if (!pages.print(*printer)) {
            m_messages->say(tr("“%1” could not be printed.").arg(note->title()));
        }
    });
    dialog->open();
}
