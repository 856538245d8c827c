#include "QBMainWindowController.h"

#include "DetachedWindow.h"
#include "EditorPane.h"
#include "QuickNoteWindow.h"
#include "SearchField.h"
#include "WindowStyle.h"

#include <Store/QBNoteTag.h>
#include <Themes/QBNotesThemesManager.h>

#include <QApplication>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// Longer than from the store's opening to the first frame, shorter than anybody is at the search field.
constexpr std::chrono::milliseconds kFillingDelay{50};

} // namespace

// The window

void QBMainWindowController::makeKeyAndOrderFront()
{
    show();
    raise();
    activateWindow();
    if (focusWidget() == nullptr) {
        focusNotesTable();
    }
}

void QBMainWindowController::orderFront()
{
    const bool activates = !testAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_ShowWithoutActivating);
    show();
    raise();
    setAttribute(Qt::WA_ShowWithoutActivating, !activates);
}

void QBMainWindowController::orderOut()
{
    hide();
}

void QBMainWindowController::setAlphaValue(double alphaValue)
{
    setWindowOpacity(alphaValue);
}

bool QBMainWindowController::isKeyWindow() const
{
    return isActiveWindow();
}

QString QBMainWindowController::firstResponderDescription() const
{
    const QWidget *focus = QApplication::focusWidget();
    return focus == nullptr
               ? u"none"_s
               : QString(QString::fromLatin1(focus->metaObject()->className()) % u' ' % focus->objectName());
}

// The store

void QBMainWindowController::setManagedObjectContext(
    const std::shared_ptr<NSManagedObjectContext> &managedObjectContext)
{
    m_context = managedObjectContext;
    m_textSearch = NoteTextSearch::make(*m_context);
    // The first frame does not share the store with the reading of all texts; until they are read, the store answers.
    QTimer::singleShot(kFillingDelay, this, [this, search = std::weak_ptr(m_textSearch)] {
        if (const auto waiting = search.lock(); waiting != nullptr && waiting == m_textSearch) {
            waiting->startFilling();
        }
    });
    m_editor->editor().setTextSearch(m_textSearch);
    m_notes = std::make_unique<QBNotesTableViewController>(*m_list, m_undoManager, m_textSearch);
    m_notes->setDelegate(this);
    m_notes->noteTableCellTextRenderer().setTextTheme(m_editor->textView().textKitStack().themeManager().get());
    m_list->setController(m_notes.get());
    m_sidebar->setManagedObjectContext(m_context);
    restoreLists();
    updateEmptyStates();
    updateActions();
    revealColumn(columnWorkedAt());
}

void QBMainWindowController::setSelectsFirstRowWhenBecomesFirstResponder(bool selects)
{
    m_list->setSelectsFirstRowWhenBecomesFirstResponder(selects);
}

void QBMainWindowController::saveNote(bool forceSave)
{
    for (DetachedWindow *window : m_detached) {
        window->editor().saveNote(forceSave);
    }
    if (m_quickNote) {
        m_quickNote->editor().saveNote(forceSave);
    }
    m_editor->saveNote(forceSave);
}

// Commands

void QBMainWindowController::addNewNote()
{
    if (!m_notes || !canMakeNotes()) {
        return;
    }
    // A list that takes no new notes leads to the one that does.
    if (m_notes->representedObject() == nullptr || !m_notes->representedObject()->canCreateNotes()) {
        showList(QBXurlList::AllNotes);
    }
    // What was typed is older than the new note, and stands below it.
    saveNote(/*forceSave=*/false);
    const Ref<QBNote> note = m_notes->createNewNote();
    if (!note) {
        return;
    }
    if (!m_notes->currentSearch().isEmpty()) {
        m_searchField->clear();
    }
    m_context->processPendingChanges();
    showNote(*note);
    editNoteAtEnd(*note);
}

void QBMainWindowController::addNewNoteInNewWindow()
{
    if (!m_notes || !canMakeNotes()) {
        return;
    }
    if (m_notes->representedObject() == nullptr || !m_notes->representedObject()->canCreateNotes()) {
        showList(QBXurlList::AllNotes);
    }
    saveNote(/*forceSave=*/false);
    if (const Ref<QBNote> note = m_notes->createNewNote()) {
        m_context->processPendingChanges();
        detachEditorWindowForNote(*note, /*floating=*/false);
        editNoteAtEnd(*note);
    }
}

bool QBMainWindowController::showQuickNote()
{
    if (!canMakeNotes()) {
        return false;
    }
    if (!m_quickNote) {
        m_quickNote = std::make_unique<QuickNoteWindow>(m_context);
        if (m_textTheme) {
            m_quickNote->loadTheme(m_textTheme);
        }
        connect(m_quickNote.get(), &QuickNoteWindow::openWasRequested, this, [this](const QString &identifier) {
            if (const auto note = QBNote::noteWithUniqueIdentifier(identifier, *m_context)) {
                makeKeyAndOrderFront();
                showNote(*note);
                editNoteAtEnd(*note);
            }
        });
        EditorPane &pane = m_quickNote->editor();
        connect(&pane, &EditorPane::urlWasOpened, m_editor, &EditorPane::urlWasOpened);
        connect(&pane, &EditorPane::attachingFailed, m_editor, &EditorPane::attachingFailed);
        connect(&pane, &EditorPane::savingFailed, m_editor, &EditorPane::savingFailed);
    }
    m_quickNote->open();
    return true;
}

bool QBMainWindowController::isEditorOnly() const
{
    return m_columns == Columns::EditorOnly;
}

void QBMainWindowController::focusSearchField()
{
    if (m_columns == Columns::EditorOnly) {
        setColumns(Columns::ListAndEditor);
    }
    revealColumn(Column::List);
    m_searchField->setFocus(Qt::ShortcutFocusReason);
}

// What URL actions ask for

void QBMainWindowController::detachEditorWindowForNote(QBNote &note, bool floating)
{
    for (DetachedWindow *window : m_detached) {
        if (window->editor().note().get() == &note) {
            window->show();
            window->raise();
            window->activateWindow();
            return;
        }
    }
    if (m_editor->note().get() == &note) {
        m_editor->saveNote(/*forceSave=*/false);
    }
    DetachedWindow *window = makeDetachedWindow(note, floating, std::nullopt);
    window->activateWindow();
    window->editor().focusEditor();
}

void QBMainWindowController::addCommandsTo(DetachedWindow &window)
{
    // Those that go on in this window bring it to the front.
    window.addApplicationCommands({m_actions[u"new-note"_s], m_actions[u"quick-open"_s], m_actions[u"search-notes"_s]},
                                  [this](QAction *command) {
                                      makeKeyAndOrderFront();
                                      command->trigger();
                                  });
    window.addApplicationCommands({m_actions[u"new-note-in-window"_s], m_actions[u"quick-note"_s],
                                   m_actions[u"preferences"_s], m_actions[u"shortcuts"_s], m_actions[u"quit"_s]},
                                  [](QAction *command) { command->trigger(); });
    window.addApplicationCommands({m_actions[u"print"_s]},
                                  [this, &window](QAction * /*command*/) { printNote(window, window.editor()); });
}

DetachedWindow *QBMainWindowController::makeDetachedWindow(QBNote &note, bool floating,
                                                           const std::optional<QByteArray> &geometry)
{
    auto *window = new DetachedWindow(Ref<QBNote>(&note), floating);
    if (geometry) {
        restoreGeometryOnScreen(*window, *geometry);
    }
    window->editor().editor().setTextSearch(m_textSearch);
    addCommandsTo(*window);
    m_detached.append(window);
    if (m_textTheme) {
        window->editor().loadTheme(m_textTheme);
    }
    connect(window, &QObject::destroyed, this, [this, window] {
        m_detached.removeAll(window);
        if (m_detached.isEmpty() && !isVisible() && m_terminate) {
            m_terminate();
        }
    });
    connect(&window->editor().editor(), &QBNoteEditorViewController::noteWasSaved, this,
            &QBMainWindowController::updateActions);
    connect(&window->editor(), &EditorPane::urlWasOpened, m_editor, &EditorPane::urlWasOpened);
    connect(&window->editor(), &EditorPane::noteWasChosen, m_editor, &EditorPane::noteWasChosen);
    connect(&window->editor(), &EditorPane::attachingFailed, m_editor, &EditorPane::attachingFailed);
    connect(&window->editor(), &EditorPane::savingFailed, m_editor, &EditorPane::savingFailed);
    window->setAttribute(Qt::WA_ShowWithoutActivating, geometry.has_value());
    window->show();
    window->setAttribute(Qt::WA_ShowWithoutActivating, false);
    return window;
}

bool QBMainWindowController::isNoteVisible(const QBNote &note)
{
    const auto *results = m_notes ? m_notes->fetchedResultController() : nullptr;
    return results != nullptr && results->indexOfObject(&note) != NSNotFound;
}

void QBMainWindowController::showNote(QBNote &note)
{
    if (!m_notes) {
        return;
    }
    if (!isNoteVisible(note)) {
        if (!m_notes->currentSearch().isEmpty()) {
            m_searchField->clear();
        }
        if (!isNoteVisible(note)) {
            showList(note.isTrashed()    ? QBXurlList::Trash
                     : note.isArchived() ? QBXurlList::Archive
                                         : QBXurlList::AllNotes);
        }
    }
    m_list->selectNote(note);
    notesSelectionDidChange();
    revealColumn(Column::Editor);
}

void QBMainWindowController::scrollNote(QBNote &note, const QString &toHeader, const QString &orAttachment)
{
    for (DetachedWindow *window : m_detached) {
        if (window->editor().note().get() == &note) {
            window->editor().scrollTo(toHeader, orAttachment);
            return;
        }
    }
    if (m_editor->note().get() == &note) {
        m_editor->scrollTo(toHeader, orAttachment);
    }
}

void QBMainWindowController::editNoteAtEnd(QBNote &note)
{
    for (DetachedWindow *window : m_detached) {
        if (window->editor().note().get() == &note) {
            window->editor().moveToEnd();
            window->editor().focusEditor();
            return;
        }
    }
    if (m_editor->note().get() == &note) {
        revealColumn(Column::Editor);
        m_editor->moveToEnd();
        m_editor->focusEditor();
    }
}

void QBMainWindowController::showList(QBXurlList list)
{
    const auto identifier = [list] {
        switch (list) {
        case QBXurlList::Untagged:
            return u"QBUntaggedSidebarItem"_s;
        case QBXurlList::Today:
            return u"QBTodaySidebarItem"_s;
        case QBXurlList::Todo:
            return u"QBTodoSidebarItem"_s;
        case QBXurlList::Archive:
            return u"QBArchiveSidebarItem"_s;
        case QBXurlList::Trash:
            return u"QBNotesTrashSidebarItem"_s;
        case QBXurlList::AllNotes:
            break;
        }
        return u"QBNotesSidebarItem"_s;
    };
    if (list == QBXurlList::Archive) {
        m_sidebar->sidebarModel().controller().showArchiveSidebarItem(true);
    }
    m_sidebar->selectIdentifier(identifier());
    revealColumn(Column::List);
}

void QBMainWindowController::selectTag(QBNoteTag &tag)
{
    // A tag whose notes are all put away is not in the sidebar: what is looked for then is looked for in all notes.
    if (!m_sidebar->selectIdentifier(tag.uniqueIdentifier())) {
        showList(QBXurlList::AllNotes);
    }
}

void QBMainWindowController::setCurrentSearch(const QString &search)
{
    if (!m_notes) {
        return;
    }
    if (search.isEmpty()) {
        // The end of a search asks for no words, so the keyboard stays where it is.
        if (!m_notes->currentSearch().isEmpty()) {
            m_searchField->clear();
        }
        return;
    }
    m_notes->setCurrentSearch(search);
}

void QBMainWindowController::focusNotesTable()
{
    if (m_columns == Columns::EditorOnly) {
        m_editor->focusEditor();
    } else {
        revealColumn(Column::List);
        m_list->setFocus();
    }
}

void QBMainWindowController::loadFontThemeName(const QString &name)
{
    if (const auto theme = QBNotesThemesManager::fontThemeForThemeName(name); theme && m_textTheme) {
        m_textTheme->addThemeItemsFromTheme(*theme);
        loadTextTheme(m_textTheme);
    }
}

void QBMainWindowController::showQuibProPreferences()
{
    makeKeyAndOrderFront();
    // There is nothing to buy: the program tells of itself.
    showPreferences(PreferencesWindow::Page::About);
}

void QBMainWindowController::showThemesPreferences()
{
    makeKeyAndOrderFront();
    showPreferences(PreferencesWindow::Page::Themes);
}

void QBMainWindowController::showMainWindow()
{
    makeKeyAndOrderFront();
}
