#include "DetachedWindow.h"

#include "ChoicePanel.h"
#include "Commands.h"
#include "EditorPane.h"
#include "MessageBar.h"
#include "SavingMessage.h"
#include "WindowStyle.h"

#include <Store/NSManagedObjectContext.h>

#include <QAction>
#include <QCloseEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quib {

DetachedWindow::DetachedWindow(const Ref<QBNote> &note, bool floating)
    : m_editor(new EditorPane(this))
    , m_choices(new ChoicePanel(this))
{
    setObjectName(u"detachedWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowStaysOnTopHint, floating);
    auto *center = new QWidget(this);
    auto *rows = new QVBoxLayout(center);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_editor, 1);
    m_saving = new SavingMessage(center, [this] { m_editor->saveNote(/*forceSave=*/false); });
    rows->addWidget(&m_saving->bar());
    setCentralWidget(center);
    resize(sizeOnScreen(*this, {640, 720}));
    m_editor->setNote(note);
    auto *closing = new QAction(tr("Close Window"), this);
    closing->setShortcut(QKeySequence::Close);
    connect(closing, &QAction::triggered, this, &QWidget::close);
    auto *keepingAbove = new QAction(tr("Keep Above Others"), this);
    keepingAbove->setCheckable(true);
    keepingAbove->setChecked(floating);
    connect(keepingAbove, &QAction::toggled, this, &DetachedWindow::setFloating);
    auto *palette = new QAction(tr("All Commands…"), this);
    palette->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    connect(palette, &QAction::triggered, this, [this, palette] {
        QList<QAction *> commands = actions() + m_editor->editor().actions();
        commands.removeAll(palette);
        m_choices->open(tr("Find a command"),
                        [commands](const QString &query) { return choicesOfCommands(commands, query); });
    });
    addActions({closing, keepingAbove, palette});
    m_observer = note->managedObjectContext()->didSave.add([this](auto &, const auto &) { updateTitle(); });
    updateTitle();
}

DetachedWindow::~DetachedWindow() = default;

void DetachedWindow::addApplicationCommands(const QList<QAction *> &commands,
                                            const std::function<void(QAction *command)> &run)
{
    for (QAction *command : commands) {
        auto *own = new QAction(command->text(), this);
        own->setObjectName(command->objectName());
        own->setShortcuts(command->shortcuts());
        connect(own, &QAction::triggered, command, [command, run] { run(command); });
        addAction(own);
    }
}

void DetachedWindow::setFloating(bool isFloating)
{
    if (isFloating != this->isFloating()) {
        const bool isShown = isVisible();
        setWindowFlag(Qt::WindowStaysOnTopHint, isFloating); // hides the window
        setVisible(isShown);
    }
}

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
