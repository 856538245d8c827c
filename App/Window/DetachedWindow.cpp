#include "DetachedWindow.h"

#include "EditorPane.h"

#include <Store/NSManagedObjectContext.h>

#include <QAction>
#include <QCloseEvent>

using namespace Qt::StringLiterals;

namespace quib {

DetachedWindow::DetachedWindow(const Ref<QBNote> &note, bool floating)
    : m_editor(new EditorPane(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowStaysOnTopHint, floating);
    setCentralWidget(m_editor);
    resize(640, 720);
    m_editor->setNote(note);
    auto *closing = new QAction(tr("Close Window"), this);
    closing->setShortcut(QKeySequence::Close);
    connect(closing, &QAction::triggered, this, &QWidget::close);
    addAction(closing);
    m_observer = note->managedObjectContext()->didSave.add([this](auto &, const auto &) { updateTitle(); });
    updateTitle();
}

DetachedWindow::~DetachedWindow() = default;

void DetachedWindow::updateTitle()
{
    const Ref<QBNote> &note = m_editor->note();
    if (!note || note->managedObjectContext() == nullptr || note->isDeleted()) {
        close();
        return;
    }
    setWindowTitle(note->title().isEmpty() ? tr("Untitled note") : note->title());
}

void DetachedWindow::closeEvent(QCloseEvent *event)
{
    m_editor->saveNote(/*forceSave=*/false);
    event->accept();
}

} // namespace quib
