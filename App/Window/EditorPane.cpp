#include "EditorPane.h"

#include "EmptyState.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/CurrentSyntax.h>
#include <Store/QBCoreDataStack.h>
#include <URL/QBXurlCoreController.h>

#include <QEvent>

#include <chrono>

using namespace std::chrono_literals;

namespace quib {

namespace {

constexpr auto kSavingDelay = 2s;
/// More hits than a page shows are not marked in a text.
constexpr qsizetype kMostHighlights = 2000;

} // namespace

EditorPane::EditorPane(QWidget *parent)
    : QStackedWidget(parent)
    , m_view(nullptr)
    , m_empty(new EmptyState(this))
{
    setObjectName(QStringLiteral("editorColumn"));
    m_stack.themeManager()->loadDefaultTheme();
    m_view = new QBNoteTextView(m_stack, this);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setAccessibleName(tr("Note"));
    m_view->setDelegate(this);
    m_view->installEventFilter(this);
    addWidget(m_empty);
    addWidget(m_view);
    m_saving.setSingleShot(true);
    m_saving.setInterval(kSavingDelay);
    connect(&m_saving, &QTimer::timeout, this, [this] { saveNote(/*forceSave=*/false); });
}

EditorPane::~EditorPane()
{
    delete m_view; // before what it draws from
}

void EditorPane::setNote(const Ref<QBNote> &note)
{
    if (note == m_note) {
        return;
    }
    saveNote(/*forceSave=*/false);
    m_note = note;
    m_saving.stop();
    m_isChanged = false;
    if (!note) {
        setCurrentWidget(m_empty);
        return;
    }
    m_stack.stylerManager()->setSyntax(currentSyntax());
    m_view->loadString(note->text());
    m_view->setReadOnly(!note->isEditable());
    m_isChanged = false;
    setCurrentWidget(m_view);
    highlightSearch();
}

void EditorPane::saveNote(bool forceSave)
{
    m_saving.stop();
    if (!m_note || (!m_isChanged && !forceSave) || !m_note->isEditable()) {
        return;
    }
    m_isChanged = false;
    const QString text = m_stack.noteTextStorage().stringWithExpandedTextAttachments();
    if (text == m_note->text()) {
        return;
    }
    m_note->updateNoteWithText(text, currentSyntax());
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        stack->saveUsingCoalescence(/*coalescence=*/false);
    }
}

void EditorPane::loadTheme(const std::shared_ptr<QBTheme> &theme)
{
    m_stack.themeManager()->loadTheme(theme);
}

void EditorPane::focusEditor()
{
    m_view->setFocus();
}

void EditorPane::moveToEnd()
{
    m_view->setSelectedRange({m_stack.noteTextStorage().length(), 0});
    m_view->scrollRangeToVisible(m_view->selectedRange());
}

void EditorPane::scrollTo(const QString &header, const QString &orAttachment)
{
    const NSRange range = QBXurlCoreController::rangeToScrollForHeader(header, orAttachment, m_stack.noteTextStorage());
    if (range.isFound()) {
        m_view->setSelectedRange({range.location, 0});
        m_view->scrollRangeToVisible(range);
    }
}

void EditorPane::setSearchString(const QString &search)
{
    m_search = search;
    highlightSearch();
}

void EditorPane::highlightSearch()
{
    QList<NSRange> found;
    const auto regex = QBNoteSearchManager::defaultSearchRegexForSearchString(m_search);
    if (regex != nullptr && m_note) {
        const QStringView text = m_stack.noteTextStorage().string();
        for (const NSTextCheckingResult &match : regex->matchesInString(text, 0, {0, text.size()})) {
            found.append(match.range());
            if (found.size() == kMostHighlights) {
                break;
            }
        }
    }
    m_view->setSearchHighlights(found);
}

bool EditorPane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view && event->type() == QEvent::FocusOut) {
        saveNote(/*forceSave=*/false);
    }
    return QStackedWidget::eventFilter(watched, event);
}

void EditorPane::textMayHaveChanged()
{
    m_isChanged = true;
    if (!m_saving.isActive()) {
        m_saving.start();
    }
}

void EditorPane::qbNoteTextViewDidChangeText(QBNoteTextView &view)
{
    QBNotesTextStorage &storage = view.textStorage();
    const NSRange range = storage.rangeToStyle();
    if (view.undoManager().isUndoing() || view.undoManager().isRedoing()) {
        storage.applyStylingInRange(range);
    } else {
        NSRange selection = kNotFoundRange;
        if (const auto styled = storage.styleTextInRange(range, view.selectedRange(), &selection)) {
            view.replaceCharactersInrange(range, *styled, selection);
        }
    }
    textMayHaveChanged();
}

void EditorPane::qbNoteTextViewDidClickAttachment(QBNoteTextView &view,
                                                  const std::shared_ptr<NSTextAttachment> &attachment,
                                                  qint64 /*location*/)
{
    if (auto *checkBox = dynamic_cast<QBCheckBoxTextAttachment *>(attachment.get());
        checkBox != nullptr && !view.isReadOnly()) {
        checkBox->toggleCheck();
        view.setNeedsDisplay();
        textMayHaveChanged();
    }
}

void EditorPane::qbNoteTextViewDidOpenURL(QBNoteTextView & /*view*/, const QUrl &url)
{
    Q_EMIT urlWasOpened(url);
}

} // namespace quib
