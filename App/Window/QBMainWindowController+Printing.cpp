#include "QBMainWindowController.h"

#include "EditorPane.h"
#include "MessageBar.h"

#include <Editor/NotePrinter.h>
#include <Files/FileMoving.h>
#include <Store/CurrentSyntax.h>
#include <Store/QBSafeFileWriter.h>

#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;
using namespace quib;

void QBMainWindowController::printNote(QWidget &window, const EditorPane &pane)
{
    const Ref<QBNote> note = pane.note();
    if (!note) {
        return;
    }
    saveNote(/*forceSave=*/false);
    // The desktop's own dialog knows its printers; it belongs to the window and lets the program go on.
    auto *dialog = new QPrintDialog(&window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Print Note"));
    dialog->setOptions(QPrintDialog::PrintToFile | QPrintDialog::PrintPageRange | QPrintDialog::PrintCollateCopies);
    dialog->printer()->setDocName(note->title());
    // The toolkit's dialog knows no way to propose a file but its field.
    if (auto *file = dialog->findChild<QLineEdit *>(u"filename"_s)) {
        const QString name = QBSafeFileWriter::sanitizeFilename(note->title()).simplified();
        const QString folder = file->text().left(file->text().lastIndexOf(u'/') + 1);
        file->setText(folder % (isSafeFileName(name) ? name : u"Quib"_s) % u".pdf"_s);
    }
    connect(dialog, qOverload<QPrinter *>(&QPrintDialog::accepted), this, [this, note](QPrinter *chosen) {
        const NotePrinter pages(note->text(), currentSyntax(), m_context);
        if (!pages.print(*chosen)) {
            m_messages->say(tr("“%1” could not be printed.").arg(note->title()));
        }
    });
    dialog->open();
}
