#include "QBNoteEditorViewController.h"

#include "AccessibleBars.h"
#include "CompletionPopup.h"
#include "FindBar.h"
#include "FormatBar.h"
#include "InformationPanel.h"
#include "NoteTextViewSpelling.h"
#include "ScriptFonts.h"

#include <Code/QBCodeLanguageDetector.h>
#include <Foundation/Clock.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Editing/QBEditorAutoCompleteCoreController.h>
#include <Markup/Editing/UnsavedTextJournal.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBNotesPreferenceManager.h>
#include <URL/QBXurlCoreController.h>

#include <QAction>
#include <QBoxLayout>
#include <QEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// What can be undone is kept for so many notes.
constexpr qsizetype kMostLeftStates = 50;
/// Units: points.
constexpr double kSmallestZoom = 8;
constexpr double kLargestZoom = 72;
constexpr double kThumbnailHeight = 160;
/// A pane that is less wide has its information below the text. Units: points.
constexpr int kLeastWidthForColumns = 600;
/// There it takes one such part of the pane's height.
constexpr int kInformationPart = 3;
/// So long after the last change of the width pictures are loaded in their new sizes. Units: seconds.
constexpr double kPictureDelay = 0.3;
/// No more text is seen at once, of whatever length the paragraphs are. Units: UTF-16 units.
constexpr qint64 kUnitsInSight = 20'000;

/// Of the text as it lies in memory, attachments and all: what can be undone fits no other.
size_t hashOfText(QStringView text)
{
    return qHash(text, 1);
}

} // namespace

QBNoteEditorViewController::QBNoteEditorViewController(QWidget *parent)
    : QWidget(parent)
    , m_core(m_stack)
    , m_journal(std::make_unique<UnsavedTextJournal>())
    , m_undoManager(std::make_shared<NSUndoManager>())
    , m_paste([](const QString &code) { return QBCodeLanguageDetector().detectLanguageWithString(code); })
{
    m_stack.stylerManager()->setTextAttachmentConfigurator(&m_configurator);
    m_configurator.setUpdateHandler([this](QBNotesTextAttachment &attachment) { attachmentDidChange(attachment); });
    loadFirstTheme();
    m_view = new QBNoteTextView(m_stack, this);
    m_view->setObjectName(u"noteText"_s);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setReadOnly(true);
    m_view->setUndoManager(m_undoManager.get());
    m_view->setDelegate(this);
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
    m_spelling = new NoteTextViewSpelling(*m_view);
    connect(m_view, &QBNoteTextView::zoomWasAsked, this, &QBNoteEditorViewController::zoomBySteps);
    connect(m_view, &QBNoteTextView::columnWidthDidChange, this, &QBNoteEditorViewController::columnWidthDidChange);
    setFocusProxy(m_view);
    makeWidgets();
    makeActions();
    observePreferences();
    m_fileObservation =
        QBNoteFilesDowloadedNotification().add([this](const QStringList &identifiers) { filesDidChange(identifiers); });
}

void QBNoteEditorViewController::makeWidgets()
{
    installAccessibleBars(); // before anybody asks what they are
    m_findBar = new FindBar(*m_view, this);
    connect(m_findBar, &FindBar::didClose, this, [this] { highlightSearch(); });
    m_formatBar = new FormatBar(this);
    connect(m_formatBar, &FormatBar::didLeave, this, &QBNoteEditorViewController::focusEditor);
    m_information = new InformationPanel(m_stack.noteTextStorage(), this);
    connect(m_information, &InformationPanel::headerWasChosen, this, [this](NSRange range) {
        m_view->setSelectedRange(range);
        m_view->scrollRangeToVisible(range);
        m_view->setFocus();
    });
    connect(m_information, &InformationPanel::didLeave, this, &QBNoteEditorViewController::focusEditor);
    connect(this, &QBNoteEditorViewController::noteWasSaved, m_information, &InformationPanel::noteDidChange);
    connect(m_information, &InformationPanel::noteWasChosen, this, &QBNoteEditorViewController::noteWasChosen);
    auto *textColumn = new QVBoxLayout;
    textColumn->setSpacing(0);
    textColumn->addWidget(m_findBar);
    textColumn->addWidget(m_view, 1);
    textColumn->addWidget(m_formatBar);
    auto *parts = new QBoxLayout(QBoxLayout::LeftToRight, this);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(0);
    parts->addLayout(textColumn, 1);
    parts->addWidget(m_information);
    setTabOrder(&m_findBar->lastButton(), m_view);
    m_popup = new CompletionPopup(this);
    connect(m_popup, &CompletionPopup::itemWasChosen, this, &QBNoteEditorViewController::insertCompletion);
    connect(m_popup, &CompletionPopup::wasDismissed, this, [this] { closeCompletion(); });
    resetCompletion();
}

void QBNoteEditorViewController::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // Beside a narrow text the information would leave no line of it whole.
    const bool isWide = width() >= kLeastWidthForColumns;
    static_cast<QBoxLayout *>(layout())->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_information->setPlace(isWide ? InformationPanel::Place::BesideText : InformationPanel::Place::BelowText,
                            height() / kInformationPart);
}

void QBNoteEditorViewController::setTextSearch(const std::shared_ptr<NoteTextSearch> &textSearch)
{
    m_information->setTextSearch(textSearch);
    m_textSearch = textSearch;
    resetCompletion();
}

QBNoteEditorViewController::~QBNoteEditorViewController()
{
    saveNote(/*forceSave=*/true);
    m_view->removeEventFilter(this);
    m_view->viewport()->removeEventFilter(this);
    m_view->setDelegate(nullptr);
    m_view->setUndoManager(nullptr);
    delete m_information; // it reads the text
    delete m_findBar;
    delete m_view; // before what it draws from
    m_stack.stylerManager()->setTextAttachmentConfigurator(nullptr);
}

// The note

void QBNoteEditorViewController::setNote(const Ref<QBNote> &note)
{
    if (note == m_note) {
        noteMayHaveChanged();
        return;
    }
    saveNote(/*forceSave=*/true);
    rememberState();
    m_note = note;
    loadNote();
}

void QBNoteEditorViewController::loadNote()
{
    forgetEdits();
    m_noteObservations.clear();
    resetCompletion();
    // The steps of the note that was shown stay with it.
    m_view->setUndoManager(nullptr);
    m_undoManager = std::make_shared<NSUndoManager>();
    if (m_note) {
        m_configurator.setManagedObjectContext(m_note->managedObjectContext()->weak_from_this());
        m_configurator.setScale(devicePixelRatioF());
        m_configurator.setMaxAttachmentWidth(m_view->layoutManager().columnWidth());
        const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
        const bool isSmall = preferences != nullptr && preferences->editorShowImagesAsThumbnails().value_or(false);
        m_configurator.setMaxAttachmentHeight(isSmall ? kThumbnailHeight : 0);
        m_stack.stylerManager()->setSyntax(currentSyntax());
    }
    m_baseText = m_note ? m_note->text() : QString();
    showText(m_baseText);
    m_view->setReadOnly(!m_note || !m_note->isEditable());
    m_spelling->textWasLoaded();
    m_view->setSelectedRange({m_view->startOfText(), 0}); // until a place is known
    restoreState();
    m_view->setUndoManager(m_undoManager.get());
    if (m_note) {
        observeNote();
    }
    highlightSearch();
    if (m_note) {
        if (m_scriptFonts == nullptr) {
            // The letters of headings and of bold words come from other fonts than those of the words around them.
            m_scriptFonts = std::make_unique<ScriptFonts>(
                [theme = m_stack.themeManager()] {
                    return QList<NSFont>{theme->paragraphFont(),
                                         theme->paragraphBoldFont(),
                                         theme->h1Font(),
                                         theme->h2Font(),
                                         theme->h3Font(),
                                         theme->h4OrMoreFont(),
                                         theme->paragraphItalicFont(),
                                         theme->monospaceFont()};
                },
                &ScriptFonts::layoutInNote);
        }
        m_scriptFonts->loadLater();
    }
    m_information->setNote(m_note);
    m_information->setVisible(m_note && action(u"info"_s)->isChecked());
    m_findBar->noteDidChange();
    updateCommands();
    updateStyles();
}

void QBNoteEditorViewController::showText(const QString &text)
{
    closeCompletion(); // of a text that is gone
    m_view->loadString(text);
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences != nullptr && preferences->foldCompletedTodo()) {
        m_core.foldTextWithAttributeName(QBNoteCheckboxStylerCheckedAttributeName,
                                         m_stack.noteTextStorage().fullRange(), /*textView=*/nullptr);
        m_view->setSelectedRange({0, 0});
    }
}

void QBNoteEditorViewController::rememberState()
{
    if (!m_note || m_note->managedObjectContext() == nullptr || m_note->isDeleted()) {
        return;
    }
    m_view->breakUndoCoalescing();
    QBEditorState *state = m_states.registerStateForUUID(m_note->uniqueIdentifier());
    if (state == nullptr) {
        return;
    }
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const auto scroll = m_view->scrollPosition();
    state->vectorClock = m_note->noteVectorClock();
    state->undoManager = m_undoManager;
    state->undoHash = hashOfText(text.string());
    state->editRange = m_view->selectedRange();
    state->firstParagraphRange = text.paragraphRangeForRange({scroll.location, 0});
    state->scrollPosition = scroll.offset;
    state->scrollWidth = m_view->layoutManager().columnWidth();
    state->isFirstResponder = m_view->hasFocus();
    while (m_states.states().size() > kMostLeftStates) {
        const auto &states = m_states.states();
        const auto oldest =
            std::min_element(states.cbegin(), states.cend(),
                             [](const QBEditorState &a, const QBEditorState &b) { return a.date < b.date; });
        m_states.invalidateStateForUUID(oldest->UUID);
    }
}

void QBNoteEditorViewController::restoreState()
{
    const QBEditorState *state = m_note ? m_states.stateForUUID(m_note->uniqueIdentifier()) : nullptr;
    if (state == nullptr) {
        return;
    }
    if (!state->isValidForDate(Clock::shared().now()) ||
        !state->isValidForVectorClock(m_note->noteVectorClock().value_or(MRVectorClock()))) {
        m_states.invalidateStateForUUID(m_note->uniqueIdentifier());
        return;
    }
    if (state->undoManager && state->undoHash == hashOfText(m_stack.noteTextStorage().string())) {
        m_undoManager = state->undoManager;
    }
    if (state->editRange.isFound()) {
        m_view->setSelectedRange(state->editRange);
    }
    if (state->firstParagraphRange.isFound()) {
        // In a column of another width the paragraph's lines are others: its first one is seen.
        const bool isSameWidth = state->scrollWidth == m_view->layoutManager().columnWidth();
        m_view->scrollTo({state->firstParagraphRange.location, isSameWidth ? state->scrollPosition : 0});
    }
    // Who writes goes on writing. The keyboard is taken from nobody: not from the list in which notes are passed by.
    if (state->isFirstResponder && window()->focusWidget() == nullptr) {
        focusEditor();
    }
}

PropertyValue QBNoteEditorViewController::archivedStates()
{
    rememberState();
    return m_states.archived();
}

void QBNoteEditorViewController::unarchiveStates(const PropertyValue &archive)
{
    if (const auto states = QBEditorStateController::unarchived(archive)) {
        m_states = *states;
    }
}

// What is shown

void QBNoteEditorViewController::focusEditor()
{
    m_view->setFocus();
}

void QBNoteEditorViewController::moveToEnd()
{
    m_view->setSelectedRange({m_stack.noteTextStorage().length(), 0});
    m_view->scrollRangeToVisible(m_view->selectedRange());
}

void QBNoteEditorViewController::scrollTo(const QString &header, const QString &orAttachment)
{
    const NSRange range = QBXurlCoreController::rangeToScrollForHeader(header, orAttachment, m_stack.noteTextStorage());
    if (range.isFound()) {
        m_view->setSelectedRange({range.location, 0});
        m_view->scrollRangeToVisible(range);
    }
}

void QBNoteEditorViewController::attachmentDidChange(QBNotesTextAttachment &attachment)
{
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    storage.enumerateFilesAttachmentsUsingBlock([&](QBGenericFileTextAttachment &candidate, NSRange range) {
        if (&candidate == &attachment) {
            m_view->layoutManager().invalidateLayoutForRange(range);
            m_view->setNeedsDisplay();
        }
    });
}

void QBNoteEditorViewController::filesDidChange(const QStringList &identifiers)
{
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    storage.enumerateFilesAttachmentsUsingBlock([&](QBGenericFileTextAttachment &attachment, NSRange range) {
        if (identifiers.contains(QBNoteFile::uniqueIdentifierFromTextRepresentation(attachment.representedText()))) {
            m_configurator.configureTextAttachment(attachment);
            m_view->layoutManager().invalidateLayoutForRange(range);
            m_view->setNeedsDisplay();
        }
    });
}

void QBNoteEditorViewController::columnWidthDidChange()
{
    m_configurator.setMaxAttachmentWidth(m_view->layoutManager().columnWidth());
    // A long note is not searched for pictures at each step of a window's edge: those in sight grow at once.
    growPicturesInRange({m_view->scrollPosition().location, kUnitsInSight});
    m_pictureTimer = Clock::shared().schedule(kPictureDelay, [this] {
        growPicturesInRange(m_stack.noteTextStorage().fullRange());
        m_view->setNeedsDisplay();
    });
}

void QBNoteEditorViewController::growPicturesInRange(NSRange range)
{
    const auto &storage = m_stack.noteTextStorage();
    const bool isAll = range == storage.fullRange();
    const double scale = m_configurator.scale();
    storage.enumerateImagesAttachmentsInRange(
        NSIntersectionRange(range, storage.fullRange()), [&](QBImageTextAttachment &picture, NSRange place) {
            const QSizeF original = picture.originalImageSize();
            bool isScaled = false;
            const QSizeF pixels = m_configurator.imageThumbSizeForImageSize(original, &isScaled);
            const QSizeF size = isScaled ? pixels / scale : pixels;
            // In a narrower column the layout makes them smaller, and they keep what they have.
            if (size.width() > picture.attachmentImageSize().width()) {
                picture.setAttachmentImageSize(size);
                m_view->layoutManager().invalidateLayoutForRange(place);
            }
            if (isAll && picture.attachmentImage().pixelSize().width() + 1 < pixels.width()) {
                m_configurator.loadImageForImageAttachment(picture);
            }
        });
}

bool QBNoteEditorViewController::eventFilter(QObject *watched, QEvent *event)
{
    if (m_scriptFonts != nullptr && (event->type() == QEvent::KeyPress || event->type() == QEvent::Wheel)) {
        m_scriptFonts->loadLater();
    }
    if (watched == m_view && event->type() == QEvent::FocusOut) {
        closeCompletion();
        saveNote(/*forceSave=*/false);
    }
    if (watched == m_view && event->type() == QEvent::KeyPress) {
        const auto &key = static_cast<const QKeyEvent &>(*event);
        // A tag or a language that is typed whole has nothing to complete: Return ends its line. A link to a note still
        // wants its brackets.
        const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
        if (isReturn && m_popup->isTypedWhole() && m_completion->autocompleteType() != QBAutoCompleteType::Note) {
            closeCompletion();
        }
        if (m_popup->keyPress(key.key(), key.modifiers())) {
            return true;
        }
        if (key.key() == Qt::Key_Escape && m_findBar->isVisible()) {
            m_findBar->close();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// Zoom

void QBNoteEditorViewController::zoomIn()
{
    zoomBySteps(1);
}

void QBNoteEditorViewController::zoomOut()
{
    zoomBySteps(-1);
}

void QBNoteEditorViewController::resetZoom()
{
    setZoom(0);
}

void QBNoteEditorViewController::zoomBySteps(int steps)
{
    setZoom(std::clamp(m_stack.themeManager()->baseFontSize() + steps, kSmallestZoom, kLargestZoom));
}

void QBNoteEditorViewController::setZoom(double size)
{
    m_stack.themeManager()->setZoomedBaseFontSize(size);
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        preferences->savePreferenceValue(size > 0 ? PropertyValue(size) : PropertyValue(), kZoomKey);
    }
}

// QBNoteTextViewDelegate

void QBNoteEditorViewController::didEditNote()
{
    markForAutoSave();
    m_information->noteDidChange();
    updateCompletion();
    if (std::exchange(m_hasNewFiles, false)) {
        // A journal has no attachments: their rows are in the store before anything can happen to them.
        QTimer::singleShot(0, this, [this] { saveNote(/*forceSave=*/true); });
    }
    Q_EMIT noteWasEdited();
}

bool QBNoteEditorViewController::qbNoteTextViewShouldInsertNewLine(QBNoteTextView &view, bool isShiftDown)
{
    if (isShiftDown || !m_core.matchRepeatableStyleOnNewLineInTextView(view)) {
        return true;
    }
    view.didChangeText();
    return false;
}

bool QBNoteEditorViewController::qbNoteTextViewShouldInsertTab(QBNoteTextView &view, bool backwards)
{
    bool isHandled = false;
    if (editsText([&] { isHandled = m_core.indentTabbableStyle(backwards, view); })) {
        view.didChangeText();
    }
    return !isHandled;
}

void QBNoteEditorViewController::qbNoteTextViewDidChangeText(QBNoteTextView &view)
{
    m_core.performStylingInTextView(view);
    updateStyles();
    didEditNote();
}

void QBNoteEditorViewController::qbNoteTextViewDidClickAttachment(QBNoteTextView &view,
                                                                  const std::shared_ptr<NSTextAttachment> &attachment,
                                                                  qint64 location)
{
    auto *box = dynamic_cast<QBCheckBoxTextAttachment *>(attachment.get());
    if (box == nullptr || view.isReadOnly()) {
        return;
    }
    view.breakUndoCoalescing();
    m_core.toggleCheckboxAttachment(*box, location, view);
    didEditNote();
}

void QBNoteEditorViewController::qbNoteTextViewDidOpenAttachment(QBNoteTextView &view,
                                                                 const std::shared_ptr<NSTextAttachment> &attachment,
                                                                 qint64 location)
{
    if (auto *fold = dynamic_cast<QBFoldTextAttachment *>(attachment.get()); fold != nullptr && !view.isReadOnly()) {
        const bool showsSearch = !view.searchHighlights().isEmpty() && !m_findBar->isVisible();
        view.undoManager().beginUndoGrouping();
        m_core.unfoldFoldAttachment(*fold, {location, 1}, &view);
        view.didChangeText();
        view.undoManager().endUndoGrouping();
        if (showsSearch) {
            highlightSearch(); // what the fold was marked for
        }
        return;
    }
    if (const auto *file = dynamic_cast<const QBGenericFileTextAttachment *>(attachment.get());
        file != nullptr && !file->fileURL().isEmpty()) {
        Q_EMIT urlWasOpened(file->fileURL());
    }
}

void QBNoteEditorViewController::qbNoteTextViewDidOpenURL(QBNoteTextView & /*view*/, const QUrl &url)
{
    Q_EMIT urlWasOpened(url);
}
