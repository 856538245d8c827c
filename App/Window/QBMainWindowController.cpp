#include "QBMainWindowController.h"

#include "DetachedWindow.h"
#include "EditorPane.h"
#include "ElidingLabel.h"
#include "EmptyState.h"
#include "MessageBar.h"
#include "QuickNoteWindow.h"
#include "SavingMessage.h"
#include "SearchField.h"
#include "Symbols.h"
#include "ThemeColors.h"
#include "WindowStyle.h"

#include <Store/QBNote.h>
#include <URL/IACManager.h>

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

// Units: points.
constexpr int kSidebarWidth = 216;
constexpr int kListWidth = 308;
constexpr int kHeaderHeight = 46;
constexpr int kTitleInButtonWidth = 180;

} // namespace

QBMainWindowController::QBMainWindowController()
{
    setObjectName(u"QBMainWindow"_s);
    setWindowTitle(tr("Quib"));
    resize(sizeOnScreen(*this, {1200, 800}));
    makeColumns();
    makeActions();
    makeMenus();
    NoteListView::Host host;
    host.setSearchFieldString = [this](const QString &text) { m_searchField->showString(text); };
    host.focusSearchField = [this] { focusSearchField(); };
    host.ask = [this](const QBNotesTableQuestion &question, const QBNotesTableViewInterface::Answer &answer) {
        askBeforeDeleting(question, answer);
    };
    host.looksAtNeighbour = [this] { return looksAtNeighbour(); };
    m_list->setHost(std::move(host));
    updateEmptyStates();
    updateActions();
    restoreWindow();
}

QBMainWindowController::~QBMainWindowController()
{
    forgetStore();
}

void QBMainWindowController::makeColumns()
{
    auto *center = new QWidget(this);
    auto *rows = new QVBoxLayout(center);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    m_splitter = new QSplitter(center);
    m_splitter->setHandleWidth(1);
    m_splitter->setChildrenCollapsible(false);
    rows->addWidget(m_splitter, 1);
    m_saving = new SavingMessage(center, [this] { saveNote(/*forceSave=*/false); });
    rows->addWidget(&m_saving->bar());
    connect(m_saving, &SavingMessage::healthDidChange, this, [this] {
        updateEmptyStates();
        updateActions();
    });
    m_messages = new MessageBar(center);
    rows->addWidget(m_messages);
    setCentralWidget(center);
    // 1. The sidebar.
    m_sidebar = new SidebarView(m_splitter);
    // 2. The list, under its title and the search field.
    m_listColumn = new QWidget(m_splitter);
    m_listColumn->setObjectName(u"listColumn"_s);
    m_listColumn->setAttribute(Qt::WA_StyledBackground);
    auto *list = new QVBoxLayout(m_listColumn);
    list->setContentsMargins(0, 0, 0, 0);
    list->setSpacing(0);
    auto *header = new QHBoxLayout;
    header->setContentsMargins(18, 0, 10, 0);
    header->setSpacing(2);
    m_listTitle = new ElidingLabel(m_listColumn);
    m_listTitle->setObjectName(u"columnTitle"_s);
    m_listTitle->setFont(interfaceFont(16, /*isBold=*/true));
    m_listTitle->setFixedHeight(kHeaderHeight);
    header->addWidget(makeButton(u"sidebar"_s, u"toggle-columns"_s, m_listColumn));
    header->addWidget(m_listTitle, 1);
    header->addWidget(makeButton(u"sort"_s, u"sort"_s, m_listColumn));
    header->addWidget(makeButton(u"new-note"_s, u"new-note"_s, m_listColumn));
    list->addLayout(header);
    m_searchField = new SearchField(m_listColumn);
    auto *field = new QHBoxLayout;
    field->setContentsMargins(14, 0, 14, 10);
    field->addWidget(m_searchField);
    list->addLayout(field);
    m_list = new NoteListView(m_listColumn);
    list->addWidget(m_list, 1);
    // 3. The editor, under a few buttons.
    m_editorColumn = new QWidget(m_splitter);
    m_editorColumn->setObjectName(u"editorColumn"_s);
    m_editorColumn->setAttribute(Qt::WA_StyledBackground);
    auto *editor = new QVBoxLayout(m_editorColumn);
    editor->setContentsMargins(0, 0, 0, 0);
    editor->setSpacing(0);
    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(10, 0, 10, 0);
    bar->setSpacing(2);
    bar->addWidget(makeButton(u"sidebar"_s, u"toggle-columns"_s, m_editorColumn));
    m_noteInfo = new ElidingLabel(m_editorColumn);
    m_noteInfo->setFont(interfaceFont(11));
    m_noteInfo->setAlignment(Qt::AlignCenter);
    m_noteInfo->setFixedHeight(kHeaderHeight);
    m_noteInfo->setForegroundRole(QPalette::PlaceholderText);
    bar->addWidget(m_noteInfo, 1);
    bar->addWidget(makeButton(u"pin"_s, u"pin"_s, m_editorColumn));
    bar->addWidget(makeButton(u"more"_s, u"note-menu"_s, m_editorColumn));
    editor->addLayout(bar);
    m_editor = new EditorPane(m_editorColumn);
    editor->addWidget(m_editor, 1);
    m_splitter->addWidget(m_sidebar);
    m_splitter->addWidget(m_listColumn);
    m_splitter->addWidget(m_editorColumn);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setStretchFactor(2, 1);
    setLeastSizes();
    m_splitter->setSizes({kSidebarWidth, kListWidth, 1200 - kSidebarWidth - kListWidth});
    m_choices = new ChoicePanel(this);
    // 4. What the columns tell each other.
    connect(m_sidebar, &SidebarView::itemWasSelected, this, &QBMainWindowController::sidebarItemWasSelected);
    connect(m_sidebar, &SidebarView::contextMenuWasRequested, this, &QBMainWindowController::showSidebarMenu);
    connect(m_sidebar, &SidebarView::leaveToNotes, this, &QBMainWindowController::focusNotesTable);
    connect(&m_sidebar->sidebarModel(), &SidebarModel::notesWereDropped, this, &QBMainWindowController::dropNotes);
    // The field in which the name was edited closes first: the tree that it stands in is made anew.
    connect(&m_sidebar->sidebarModel(), &SidebarModel::tagNameWasEdited, this, &QBMainWindowController::renameTag,
            Qt::QueuedConnection);
    connect(&m_sidebar->sidebarModel(), &SidebarModel::notesOrderDidChange, this, [this] {
        if (m_notes) {
            m_notes->setRepresentedObject(m_notes->representedObject());
        }
    });
    connect(m_list, &NoteListView::selectionDidChange, this, &QBMainWindowController::notesSelectionDidChange);
    connect(m_list, &NoteListView::selectionWasLost, this, &QBMainWindowController::selectionWasLost);
    connect(m_list, &NoteListView::rowsDidChange, this, &QBMainWindowController::selectNoteLeftOpen);
    connect(m_list, &NoteListView::contextMenuWasRequested, this, &QBMainWindowController::showNoteMenu);
    connect(m_list, &NoteListView::openWasRequested, this, [this] {
        revealColumn(Column::Editor);
        m_editor->focusEditor();
    });
    // Where there is room for one column only, a click leads on to the next.
    connect(m_list, &QAbstractItemView::clicked, this, [this] {
        if (m_editorColumn->isHidden() && QGuiApplication::keyboardModifiers() == Qt::NoModifier) {
            revealColumn(Column::Editor);
        }
    });
    connect(m_sidebar, &QAbstractItemView::clicked, this, [this] {
        if (m_listColumn->isHidden()) {
            revealColumn(Column::List);
        }
    });
    connect(m_list, &NoteListView::openInWindowWasRequested, this, [this] {
        for (const auto &note : selectedNotes()) {
            detachEditorWindowForNote(*note, /*floating=*/false);
        }
    });
    connect(m_list, &NoteListView::leaveToSidebar, this, [this] {
        if (m_columns == Columns::All) {
            revealColumn(Column::Sidebar);
            m_sidebar->setFocus();
        }
    });
    connect(m_list, &NoteListView::textWasTyped, m_searchField, &SearchField::continueTyping);
    connect(m_searchField, &SearchField::searchDidChange, this, [this](const QString &search) {
        if (m_notes) {
            m_notes->searchFieldUpdated(search);
        }
    });
    connect(m_searchField, &SearchField::leaveToList, this, &QBMainWindowController::focusNotesTable);
    connect(&m_editor->emptyState(), &EmptyState::buttonWasPressed, this, &QBMainWindowController::addNewNote);
    connect(m_editor, &EditorPane::urlWasOpened, this, [](const QUrl &url) {
        if (const auto manager = IACManager::sharedManager()) {
            static_cast<void>(manager->handleOpenURL(url));
        }
    });
    connect(m_editor, &EditorPane::noteWasChosen, this, [this](const QString &identifier) {
        if (const auto note = m_context ? QBNote::noteWithUniqueIdentifier(identifier, *m_context) : nullptr) {
            showNote(*note);
        }
    });
    // A note gets its title by its first save.
    connect(&m_editor->editor(), &QBNoteEditorViewController::noteWasSaved, this,
            &QBMainWindowController::updateActions);
    connect(&m_editor->editor(), &QBNoteEditorViewController::noteDidChange, this,
            &QBMainWindowController::openNoteWasDeleted);
    connect(m_editor, &EditorPane::attachingFailed, this, [this](const QString &fileName) {
        m_messages->say(tr("“%1” could not be taken into the note.").arg(fileName));
    });
    connect(m_editor, &EditorPane::savingFailed, this,
            [this](const QString &fileName) { m_messages->say(tr("“%1” could not be written.").arg(fileName)); });
    // The keyboard goes as the eye does: lists, search, notes, text.
    QWidget *last = m_sidebar;
    for (QWidget *next : {static_cast<QWidget *>(m_listColumn->findChild<QToolButton *>(u"sort"_s)),
                          static_cast<QWidget *>(m_listColumn->findChild<QToolButton *>(u"new-note"_s)),
                          static_cast<QWidget *>(m_searchField), static_cast<QWidget *>(m_list),
                          static_cast<QWidget *>(m_editorColumn->findChild<QToolButton *>(u"toggle-columns"_s)),
                          static_cast<QWidget *>(m_editorColumn->findChild<QToolButton *>(u"pin"_s)),
                          static_cast<QWidget *>(m_editorColumn->findChild<QToolButton *>(u"note-menu"_s)),
                          static_cast<QWidget *>(m_editor)}) {
        setTabOrder(last, next);
        last = next;
    }
}

QToolButton *QBMainWindowController::makeButton(const QString &symbol, const QString &actionName, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(actionName);
    button->setIcon(symbolIcon(symbol, u"Note Action Icon Color"_s, u"Note Action Icon Active Color"_s));
    button->setIconSize({20, 20});
    button->setFocusPolicy(Qt::TabFocus);
    button->setPopupMode(QToolButton::InstantPopup);
    return button;
}

QAction *QBMainWindowController::action(const QString &name) const
{
    return m_actions.value(name);
}

EditorPane &QBMainWindowController::keyEditor()
{
    for (DetachedWindow *window : m_detached) {
        if (window->isActiveWindow()) {
            return window->editor();
        }
    }
    return *m_editor;
}

// What is shown

bool QBMainWindowController::looksAtNeighbour() const
{
    if (m_notes->isCarryingOutCommand()) {
        return true;
    }
    const QBNoteEditorViewController &editor = m_editor->editor();
    return focusWidget() == m_list && !editor.isSavingNote() && !editor.hasUnsavedText();
}

Ref<QBNote> QBMainWindowController::noteLeftOpen() const
{
    const Ref<QBNote> &open = m_editor->note();
    const bool isThere = open && open->managedObjectContext() != nullptr && !open->isDeleted();
    return isThere && m_list->hasLostSelection() ? open : nullptr;
}

void QBMainWindowController::selectionWasLost()
{
    dismissQuestion();
    const Ref<QBNote> open = noteLeftOpen();
    if (open && open->isTrashed()) {
        m_messages->say(tr("The note was put into the trash elsewhere."), tr("Put Back"),
                        [this, open](int button, bool /*isChecked*/) {
                            if (button == 0 && m_notes) {
                                m_notes->restoreNotes({open});
                            }
                        });
    }
}

void QBMainWindowController::selectNoteLeftOpen()
{
    if (const Ref<QBNote> open = noteLeftOpen(); open && isNoteVisible(*open)) {
        m_list->selectNote(*open);
    }
}

void QBMainWindowController::askBeforeDeleting(const QBNotesTableQuestion &question,
                                               const QBNotesTableViewInterface::Answer &answer)
{
    // The button says what will be gone.
    QString deletion = tr("Delete %n Notes", nullptr, int(question.notes.size()));
    if (question.notes.size() == 1) {
        const QString title = question.notes.constFirst()->title();
        QString shown = fontMetrics().elidedText(title.isEmpty() ? tr("Untitled note") : title, Qt::ElideRight,
                                                 kTitleInButtonWidth);
        deletion = tr("Delete “%1”").arg(shown.replace(u'&', u"&&"_s));
    }
    dismissQuestion();
    m_selectedWhenAsked = selectedNotes();
    m_question = m_messages->ask(
        question.message, {deletion, tr("Cancel")}, question.suppressionText,
        [this, answer](int button, bool isChecked) {
            const bool isAnswered = std::exchange(m_question, 0) != 0;
            answer(button == 0, button == 0 && isChecked);
            if (isAnswered) {
                m_list->setFocus();
            }
        },
        /*withKeyboard=*/1);
}

void QBMainWindowController::dismissQuestion()
{
    const bool hadKeyboard = focusWidget() != nullptr && m_messages->isAncestorOf(focusWidget());
    if (const int question = std::exchange(m_question, 0); question != 0) {
        m_messages->dismiss(question);
        if (hadKeyboard) {
            m_list->setFocus();
        }
    }
}

void QBMainWindowController::openNoteWasDeleted()
{
    if (m_notes && m_notes->isCarryingOutCommand()) {
        return;
    }
    m_messages->say(m_editor->note() ? tr("The note was deleted elsewhere. What was not saved yet is in a new note.")
                                     : tr("The note was deleted elsewhere."));
    updateEmptyStates();
    updateActions();
}

void QBMainWindowController::sidebarItemWasSelected(const QBSidebarItem::Pointer &item)
{
    if (!m_notes) {
        return;
    }
    dismissQuestion();
    // A list that is gone was left by nobody, so what is open stays open.
    const bool staysOpen = m_sidebar->isLeavingGoneList() && m_editor->note();
    if (!staysOpen) {
        m_list->forgetLostSelection();
    }
    m_notes->setRepresentedObject(item);
    m_list->setScrollPosition(0);
    if (staysOpen && m_list->selectedRows().isEmpty()) {
        m_list->selectedNotesDidLeave();
        selectNoteLeftOpen();
        updateEmptyStates();
        updateActions();
        return;
    }
    // In a list of other notes, the first one is looked at.
    if (m_notes->numberOfRows() > 0 && m_list->selectedRows().isEmpty()) {
        m_list->selectRows({0});
    }
    updateEmptyStates();
    updateActions();
}

void QBMainWindowController::notesSelectionDidChange()
{
    const QList<Ref<QBNote>> selected = selectedNotes();
    if (selected != m_selectedWhenAsked) {
        dismissQuestion();
    }
    m_editor->setNote(selected.size() == 1 ? selected.constFirst() : nullptr);
    m_editor->setSearchString(m_notes ? m_notes->currentSearch() : QString());
    updateEmptyStates();
    updateActions();
}

void QBMainWindowController::notesTableViewController(QBNotesTableViewController & /*controller*/,
                                                      const QString &didPerformSearch)
{
    selectNoteLeftOpen();
    m_list->forgetLostSelection();
    m_editor->setSearchString(didPerformSearch);
    if (!didPerformSearch.isEmpty() && m_list->selectedRows().isEmpty() && m_notes->numberOfRows() > 0) {
        m_list->selectRows({0});
    }
    updateEmptyStates();
}

void QBMainWindowController::updateEmptyStates()
{
    const QString search = m_notes ? m_notes->currentSearch() : QString();
    // The list is named by what it shows: a list's notes, or what was found in it.
    if (const QBSidebarItem::Pointer item = m_notes ? m_notes->representedObject() : nullptr) {
        m_listTitle->setText(search.isEmpty() ? item->title() : tr("%n found", nullptr, int(m_notes->numberOfRows())));
    }
    const bool isMainList = m_sidebar->selectedIdentifier() == u"QBNotesSidebarItem" || !m_notes;
    const qint64 rows = m_notes ? m_notes->numberOfRows() : 0;
    const QList<Ref<QBNote>> selected = selectedNotes();
    if (SavingMessage::isStoreDamaged()) {
        m_list->setEmptyText(tr("These notes could not be read."));
    } else if (!search.isEmpty()) {
        m_list->setEmptyText(tr("No note matches “%1”.").arg(search));
    } else if (m_sidebar->selectedIdentifier() == u"QBNotesTrashSidebarItem") {
        m_list->setEmptyText(tr("The trash is empty."));
    } else {
        m_list->setEmptyText(m_context ? tr("No notes here yet.") : QString());
    }
    EmptyState &empty = m_editor->emptyState();
    if (!m_context) {
        empty.show(QString(), QString(), QString());
    } else if (selected.size() > 1) {
        empty.show(tr("%n notes selected", nullptr, int(selected.size())),
                   tr("Drag them onto a tag, or choose a command from their menu."), QString());
    } else if (rows == 0 && SavingMessage::isStoreDamaged()) {
        empty.show(tr("Your notes could not be read"), SavingMessage::explanation(), QString());
    } else if (rows == 0 && isMainList && search.isEmpty()) {
        empty.show(tr("Write your first note"),
                   tr("Give it a title, tag it with a #word, tick things off with a dash at the start of a line. "
                      "Everything is saved as you type."),
                   tr("New Note"));
    } else if (rows == 0 && !search.isEmpty()) {
        empty.show(tr("Nothing found"), tr("Try fewer words, or look in all notes."), QString());
    } else {
        empty.show(tr("No note selected"), tr("Choose one from the list, or press Ctrl+O to open it by its title."),
                   QString());
    }
}

void QBMainWindowController::updateActions()
{
    const QList<Ref<QBNote>> selected = selectedNotes();
    const QBSidebarItem::Pointer item = m_notes ? m_notes->representedObject() : nullptr;
    const bool hasSelection = !selected.isEmpty();
    const auto all = [&selected](auto condition) { return std::ranges::all_of(selected, condition); };
    const bool isTrashed = hasSelection && all([](const auto &note) { return note->isTrashed(); });
    const bool isArchived = hasSelection && all([](const auto &note) { return note->isArchived(); });
    const bool isPinned = hasSelection && all([](const auto &note) { return note->isPinned(); });
    const bool isTag = dynamic_cast<QBTagSidebarItem *>(item.get()) != nullptr;
    const auto enable = [this](const QString &name, bool isEnabled) { m_actions[name]->setEnabled(isEnabled); };
    for (const auto &name : {u"quick-open"_s, u"search-notes"_s, u"search-help"_s}) {
        enable(name, m_context != nullptr);
    }
    for (const auto &name : {u"new-note"_s, u"new-note-in-window"_s, u"quick-note"_s}) {
        enable(name, canMakeNotes());
    }
    for (const auto &name : {u"pin"_s, u"note-menu"_s}) {
        if (auto *button = m_editorColumn->findChild<QToolButton *>(name); button != nullptr) {
            button->setVisible(hasSelection);
        }
    }
    enable(u"pin"_s, hasSelection && item && item->canPinNotes());
    m_actions[u"pin"_s]->setText(isPinned ? tr("Unpin") : tr("Pin to Top"));
    m_actions[u"pin"_s]->setChecked(isPinned);
    enable(u"archive"_s, hasSelection && !isTrashed);
    m_actions[u"archive"_s]->setText(isArchived ? tr("Unarchive") : tr("Archive"));
    enable(u"trash"_s, hasSelection);
    m_actions[u"trash"_s]->setText(isTrashed ? tr("Delete Permanently…") : tr("Move to Trash"));
    enable(u"restore"_s, isTrashed);
    m_actions[u"restore"_s]->setVisible(isTrashed);
    enable(u"duplicate"_s, hasSelection && !isTrashed);
    enable(u"merge"_s, selected.size() > 1 && !isTrashed);
    enable(u"remove-tag"_s, hasSelection && isTag);
    enable(u"copy-link"_s, hasSelection);
    enable(u"open-in-window"_s, hasSelection);
    enable(u"print"_s, selected.size() == 1);
    enable(u"rename-tag"_s, isTag);
    enable(u"delete-tag"_s, isTag);
    enable(u"tag-symbol"_s, isTag);
    // What is known of the note, over its text.
    QString info;
    if (selected.size() == 1) {
        const Ref<QBNote> &note = selected.constFirst();
        if (note->isTrashed()) {
            info = tr("In the trash");
        } else if (note->isArchived()) {
            info = tr("Archived");
        } else if (note->hasChanges() && SavingMessage::hasFailed()) {
            info = tr("Not saved yet");
        } else if (const auto date = note->modificationDate()) {
            const QDateTime when = QDateTime::fromSecsSinceEpoch(qint64(date->timeIntervalSince1970()));
            info = when.date() == QDate::currentDate()
                       ? tr("Edited today, %1").arg(QLocale().toString(when, tr("HH:mm", "time of day")))
                       : tr("Edited %1").arg(QLocale().toString(when.date(), QLocale::LongFormat));
        }
    }
    m_noteInfo->setText(info);
    // Behind a title the toolkit says whose window it is, as it does for the other windows.
    setWindowTitle(selected.size() == 1 && !selected.constFirst()->title().isEmpty() ? selected.constFirst()->title()
                                                                                     : u"Quib"_s);
    updateUndoNames();
}

QList<Ref<QBNote>> QBMainWindowController::selectedNotes() const
{
    if (!m_notes) {
        return {};
    }
    const Ref<QBNote> open = noteLeftOpen();
    return open ? QList<Ref<QBNote>>{open} : m_notes->selectedNotes();
}

QList<Ref<QBNote>> QBMainWindowController::notesWithIdentifiers(const QStringList &identifiers) const
{
    return m_context ? QBNote::notesWithUniqueIdentifiers(identifiers, *m_context) : QList<Ref<QBNote>>();
}

void QBMainWindowController::loadTextTheme(const std::shared_ptr<QBTheme> &theme)
{
    m_textTheme = theme;
    m_editor->loadTheme(theme);
    for (DetachedWindow *window : m_detached) {
        window->editor().loadTheme(theme);
    }
    if (m_quickNote) {
        m_quickNote->loadTheme(theme);
    }
    m_list->noteListModel().redrawAll();
}

// Ending

void QBMainWindowController::closeEvent(QCloseEvent *event)
{
    invalidateRestorableState();
    saveNote(/*forceSave=*/false);
    if (m_detached.isEmpty() && m_terminate && !mayQuit()) {
        event->ignore();
        return;
    }
    event->accept();
    // Notes in windows of their own stay open.
    if (m_detached.isEmpty() && m_terminate) {
        m_terminate();
    }
}

bool QBMainWindowController::canMakeNotes() const
{
    // A note that can never be saved is better not begun.
    return m_context != nullptr && !SavingMessage::isStoreDamaged();
}

bool QBMainWindowController::mayQuit()
{
    saveNote(/*forceSave=*/true);
    if (m_quitsWithoutAsking || m_saving->save()) {
        return true;
    }
    makeKeyAndOrderFront();
    m_saving->askBeforeQuitting([this] {
        quitWithoutAsking();
        if (m_terminate) {
            m_terminate();
        }
    });
    return false;
}

void QBMainWindowController::keyPressEvent(QKeyEvent *event)
{
    // Escape leads back to the notes, but not who writes: it ends completions there, and one too many must not let the
    // next letters do something else.
    if (event->key() == Qt::Key_Escape && m_columns != Columns::EditorOnly && !m_editor->textView().hasFocus()) {
        focusNotesTable();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

void QBMainWindowController::forgetStore()
{
    for (DetachedWindow *window : std::exchange(m_detached, {})) {
        window->disconnect(this);
        delete window;
    }
    m_quickNote.reset();
    m_editor->setNote(nullptr);
    m_list->setController(nullptr);
    m_notes.reset();
    m_undoManager.removeAllActions();
    m_editor->editor().setTextSearch(nullptr);
    m_textSearch.reset();
    m_context.reset();
}
