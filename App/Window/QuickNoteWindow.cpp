#include "QuickNoteWindow.h"

#include "EditorPane.h"
#include "SavingMessage.h"
#include "ThemeColors.h"

#include <Editor/FormatBar.h>
#include <Editor/InformationPanel.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr QSize kSize(460, 320);
constexpr int kTopMargin = 96;

void saveStore()
{
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        stack->saveUsingCoalescence(/*coalescence=*/false);
    }
}

} // namespace

QuickNoteWindow::QuickNoteWindow(std::shared_ptr<NSManagedObjectContext> context)
    : m_context(std::move(context))
    , m_editor(new EditorPane(this))
    , m_hint(new QLabel(this))
{
    setObjectName(u"quickNote"_s);
    setWindowTitle(tr("Quick Note"));
    setAccessibleName(tr("Quick Note"));
    setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint);
    resize(kSize);
    // The bars of the large windows are commands here, too; they only take no room.
    m_editor->editor().formatBar().hide();
    m_editor->editor().informationPanel().hide();
    m_hint->setFont(interfaceFont(11));
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    m_hint->setWordWrap(true);
    updateHint();
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        m_observation = stack->healthDidChange.add([this] { updateHint(); });
    }
    auto *opening = new QPushButton(tr("Open in Quib"), this);
    opening->setToolTip(tr("Go on in the main window (Ctrl+O)"));
    opening->setAutoDefault(false);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(18, 8, 12, 10);
    row->setSpacing(12);
    row->addWidget(m_hint, 1);
    row->addWidget(opening);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_editor, 1);
    rows->addLayout(row);
    const auto hand = [this] {
        const QString identifier = finish();
        hide();
        if (!identifier.isNull()) {
            Q_EMIT openWasRequested(identifier);
        }
    };
    connect(opening, &QPushButton::clicked, this, hand);
    auto *handing = new QAction(opening->text(), this);
    handing->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connect(handing, &QAction::triggered, this, hand);
    auto *closing = new QAction(tr("Close Window"), this);
    closing->setShortcut(QKeySequence::Close);
    connect(closing, &QAction::triggered, this, &QWidget::close);
    addActions({handing, closing});
}

QuickNoteWindow::~QuickNoteWindow()
{
    finish();
}

void QuickNoteWindow::updateHint()
{
    const QString problem = SavingMessage::explanation();
    m_hint->setText(problem.isEmpty() ? tr("Saved as you type. Escape closes.") : problem);
}

void QuickNoteWindow::loadTheme(const std::shared_ptr<QBTheme> &theme)
{
    m_editor->loadTheme(theme);
}

void QuickNoteWindow::open()
{
    if (isHidden()) {
        if (const QScreen *on = QGuiApplication::primaryScreen(); on != nullptr) {
            const QRect room = on->availableGeometry();
            move(room.center().x() - width() / 2, room.top() + kTopMargin);
        }
    }
    if (!m_editor->note()) {
        m_note = QBNote::noteWithText(u""_s, currentSyntax(), *m_context);
        m_context->processPendingChanges();
        m_editor->setNote(m_note);
    }
    show();
    raise();
    activateWindow();
    m_editor->focusEditor();
}

QString QuickNoteWindow::finish()
{
    m_editor->saveNote(/*forceSave=*/false);
    const Ref<QBNote> note = std::exchange(m_note, nullptr);
    m_editor->setNote(nullptr);
    if (!note || note->managedObjectContext() == nullptr || note->isDeleted()) {
        return {};
    }
    if (note->text().trimmed().isEmpty()) {
        note->permanentlyDelete();
        saveStore();
        return {};
    }
    return note->uniqueIdentifier();
}

void QuickNoteWindow::closeEvent(QCloseEvent *event)
{
    finish();
    event->accept();
}

void QuickNoteWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void QuickNoteWindow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter(this).fillRect(rect(), themeColor(u"Placeholder Background Color"_s));
}

} // namespace quib
