#include "QBMainWindowController.h"

#include "Commands.h"
#include "EditorPane.h"
#include "FuzzyMatch.h"
#include "MessageBar.h"
#include "SearchField.h"
#include "Symbols.h"
#include "TitleFinder.h"

#include <Foundation/DispatchQueue.h>
#include <Store/CurrentSyntax.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QToolButton>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// What a panel shows at most of what was found.
constexpr qsizetype kMostChoices = 50;

/// What is known of the titles that a note is opened by.
struct Titles
{
    TitleFinder finder;
    /// Whether those are all. Until then no title is known to be missing.
    bool isWhole = false;
};

/// The titles of notes that are not in the trash, those of the last changed ones first.
std::vector<TitleFinder::Title> titlesInContext(NSManagedObjectContext &context, qsizetype limit,
                                                const QString &untitled)
{
    NSFetchRequest request;
    request.entityName = QBNote::entityName();
    request.predicate = NSPredicate::predicateWithFormat(u"trashed == NO"_s);
    const bool isSortedHere = limit <= 0;
    if (!isSortedHere) {
        request.fetchLimit = limit;
        request.sortDescriptors = {NSSortDescriptor(QString(QBNoteAttributes::modificationDate), /*ascending=*/false)};
    }
    // OPTIMIZATION: in whatever order, all titles stand in the index of the list, which is read from end to end; in
    // this one each would be looked up in the table.
    auto rows = context.executeDictionaryFetchRequest(request, {QString(QBNoteAttributes::modificationDate),
                                                                QString(QBNoteAttributes::uniqueIdentifier),
                                                                QString(QBNoteAttributes::title)});
    std::vector<TitleFinder::Title> titles;
    if (!rows) {
        return titles;
    }
    if (isSortedHere) {
        std::ranges::stable_sort(*rows, std::ranges::greater(),
                                 [](const auto &row) { return valueOr<NSDate>(row.front()); });
    }
    titles.reserve(static_cast<size_t>(rows->size()));
    for (const auto &row : *rows) {
        const QString title = valueOr<QString>(row[2]);
        titles.push_back({valueOr<QString>(row[1]), title.isEmpty() ? untitled : title});
    }
    return titles;
}

} // namespace

// Making them

QAction *QBMainWindowController::addCommand(const QString &name, const QString &text, const QKeySequence &shortcut,
                                            std::function<void()> triggered)
{
    auto *made = new QAction(text, this);
    made->setObjectName(name);
    made->setProperty(kCommandNameProperty, text);
    made->setShortcut(shortcut);
    connect(made, &QAction::triggered, this, [this, triggered = std::move(triggered)] {
        triggered();
        updateActions();
    });
    m_actions.insert(name, made);
    addAction(made);
    return made;
}

void QBMainWindowController::putAway(const std::function<void()> &command)
{
    const QList<Ref<QBNote>> before = selectedNotes();
    const bool wasInText = keyboard().text != nullptr;
    command();
    // 1. A note without a row has none that takes its place.
    if (const Ref<QBNote> open = noteLeftOpen(); open && open->isTrashed()) {
        m_list->forgetLostSelection();
        notesSelectionDidChange();
    }
    // 2. Whoever was writing in it does not write on in another one.
    if (wasInText && selectedNotes() != before) {
        focusNotesTable();
    }
}

void QBMainWindowController::makeActions()
{
    const auto key = [](QKeyCombination combination) { return QKeySequence(combination); };
    // 1. Notes.
    addCommand(u"new-note"_s, tr("New Note"), key(Qt::CTRL | Qt::Key_N), [this] { addNewNote(); });
    addCommand(u"new-note-in-window"_s, tr("New Note in New Window"), key(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
               [this] { addNewNoteInNewWindow(); });
    addCommand(u"quick-note"_s, tr("Quick Note"), key(Qt::CTRL | Qt::ALT | Qt::Key_N), [this] { showQuickNote(); });
    addCommand(u"quick-open"_s, tr("Open Quickly…"), key(Qt::CTRL | Qt::Key_O), [this] { openQuickly(); });
    addCommand(u"open-in-window"_s, tr("Open in New Window"), key(Qt::CTRL | Qt::SHIFT | Qt::Key_O), [this] {
        for (const auto &note : selectedNotes()) {
            detachEditorWindowForNote(*note, /*floating=*/false);
        }
    });
    addCommand(u"duplicate"_s, tr("Duplicate"), key(Qt::CTRL | Qt::Key_D), [this] {
        saveNote(/*forceSave=*/false);
        m_notes->duplicate(selectedNotes());
    });
    addCommand(u"merge"_s, tr("Merge"), {}, [this] { m_notes->mergeNotes(selectedNotes()); });
    addCommand(u"pin"_s, tr("Pin to Top"), key(Qt::CTRL | Qt::ALT | Qt::Key_P), [this] {
        const auto notes = selectedNotes();
        const bool areAllPinned = std::ranges::all_of(notes, [](const auto &note) { return note->isPinned(); });
        areAllPinned ? m_notes->unpinNotes(notes) : m_notes->pinNotes(notes);
    })->setCheckable(true);
    addCommand(u"archive"_s, tr("Archive"), key(Qt::CTRL | Qt::ALT | Qt::Key_A), [this] {
        const auto notes = selectedNotes();
        const bool areAllArchived = std::ranges::all_of(notes, [](const auto &note) { return note->isArchived(); });
        putAway([&] { areAllArchived ? m_notes->unarchiveNotes(notes) : m_notes->archiveNotes(notes); });
    });
    QAction *trash = addCommand(u"trash"_s, tr("Move to Trash"), key(Qt::CTRL | Qt::Key_Backspace), [this] {
        saveNote(/*forceSave=*/false);
        putAway([this] { m_notes->deleteNotes(selectedNotes()); });
    });
    // Plain Delete is a key of text as well: it means notes only where the list has the keyboard.
    auto *deleting = new QAction(this);
    deleting->setShortcut(QKeySequence::Delete);
    deleting->setShortcutContext(Qt::WidgetShortcut);
    connect(deleting, &QAction::triggered, trash, &QAction::trigger);
    m_list->addAction(deleting);
    addCommand(u"restore"_s, tr("Put Back"), {}, [this] { m_notes->restoreNotes(selectedNotes()); });
    addCommand(u"copy-link"_s, tr("Copy Link to Note"), key(Qt::CTRL | Qt::ALT | Qt::Key_L),
               [this] { copyNoteLinks(); });
    addCommand(u"print"_s, tr("Print…"), QKeySequence::Print, [this] { printNote(*this, *m_editor); });
    addCommand(u"close-window"_s, tr("Close Window"), QKeySequence::Close, [this] { close(); });
    addCommand(u"quit"_s, tr("Quit"), key(Qt::CTRL | Qt::Key_Q), [this] {
        if (m_terminate) {
            m_terminate();
        }
    });
    // 2. Editing. The widget that has the keyboard does it.
    addCommand(u"undo"_s, tr("Undo"), QKeySequence::Undo, [this] { undo(); });
    addCommand(u"redo"_s, tr("Redo"), {}, [this] {
        redo();
    })->setShortcuts({key(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), key(Qt::CTRL | Qt::Key_Y)});
    const auto toFocused = [](auto ofField, auto ofText) {
        return [ofField, ofText] {
            if (auto *field = qobject_cast<QLineEdit *>(QApplication::focusWidget()); field != nullptr) {
                (field->*ofField)();
            } else if (auto *text = qobject_cast<QBNoteTextView *>(QApplication::focusWidget()); text != nullptr) {
                (text->*ofText)();
            }
        };
    };
    addCommand(u"cut"_s, tr("Cut"), QKeySequence::Cut, toFocused(&QLineEdit::cut, &QBNoteTextView::cut));
    addCommand(u"copy"_s, tr("Copy"), QKeySequence::Copy,
               [this, copyText = toFocused(&QLineEdit::copy, &QBNoteTextView::copy)] {
                   if (m_list->hasFocus()) {
                       QApplication::clipboard()->setMimeData(
                           m_list->noteListModel().mimeData(m_list->selectionModel()->selectedIndexes()));
                   } else {
                       copyText();
                   }
               });
    addCommand(u"paste"_s, tr("Paste"), QKeySequence::Paste, toFocused(&QLineEdit::paste, &QBNoteTextView::paste));
    addCommand(u"select-all"_s, tr("Select All"), QKeySequence::SelectAll,
               [this, selectText = toFocused(&QLineEdit::selectAll, &QBNoteTextView::selectAll)] {
                   m_list->hasFocus() ? m_list->selectAll() : selectText();
               });
    addCommand(u"search-notes"_s, tr("Search Notes"), key(Qt::CTRL | Qt::SHIFT | Qt::Key_F),
               [this] { focusSearchField(); });
    addCommand(u"search-help"_s, tr("What Can Be Searched For…"), key(Qt::CTRL | Qt::ALT | Qt::Key_H),
               [this] { openSearchHelp(); });
    addCommand(u"preferences"_s, tr("Preferences…"), key(Qt::CTRL | Qt::Key_Comma),
               [this] { showPreferences(PreferencesWindow::Page::General); });
    // 3. Tags.
    QAction *renaming = addCommand(u"rename-tag"_s, tr("Rename Tag"), {}, [this] { m_sidebar->renameSelectedTag(); });
    renaming->setShortcut(key(Qt::Key_F2));
    addCommand(u"delete-tag"_s, tr("Delete Tag"), {}, [this] { deleteTag(m_sidebar->selectedItem()); });
    addCommand(u"tag-symbol"_s, tr("Choose Symbol…"), {}, [this] { chooseSymbol(m_sidebar->selectedItem()); });
    addCommand(u"remove-tag"_s, tr("Remove Tag from Notes"), {}, [this] {
        saveNote(/*forceSave=*/false);
        m_notes->removeSelectedTag();
    });
    // 4. What is seen.
    auto *columns = new QActionGroup(this);
    const std::initializer_list<std::pair<QString, Columns>> choices{{tr("Sidebar, Notes and Editor"), Columns::All},
                                                                     {tr("Notes and Editor"), Columns::ListAndEditor},
                                                                     {tr("Editor Only"), Columns::EditorOnly}};
    for (const auto &[text, which] : choices) {
        QAction *choice =
            addCommand(u"columns-%1"_s.arg(int(which) + 1), text, key(Qt::CTRL | Qt::Key(Qt::Key_1 + int(which))),
                       [this, which = which] { setColumns(which); });
        choice->setCheckable(true);
        columns->addAction(choice);
    }
    addCommand(u"toggle-columns"_s, tr("Show or Hide the Sidebar"), key(Qt::CTRL | Qt::Key_Backslash),
               [this] { toggleColumns(); });
    addCommand(u"full-screen"_s, tr("Full Screen"), key(Qt::Key_F11),
               [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    addCommand(u"next-note"_s, tr("Next Note"), key(Qt::CTRL | Qt::Key_PageDown), [this] {
        const auto rows = m_list->selectedRows();
        const qint64 next = rows.isEmpty() ? 0 : rows.constLast() + 1;
        if (next < m_notes->numberOfRows()) {
            m_list->selectRows({next});
        }
    });
    addCommand(u"previous-note"_s, tr("Previous Note"), key(Qt::CTRL | Qt::Key_PageUp), [this] {
        if (const auto rows = m_list->selectedRows(); !rows.isEmpty() && rows.constFirst() > 0) {
            m_list->selectRows({rows.constFirst() - 1});
        }
    });
    const std::initializer_list<std::tuple<QString, QString, QBXurlList>> lists{
        {u"go-notes"_s, tr("Go to Notes"), QBXurlList::AllNotes},
        {u"go-untagged"_s, tr("Go to Untagged"), QBXurlList::Untagged},
        {u"go-todo"_s, tr("Go to Todo"), QBXurlList::Todo},
        {u"go-today"_s, tr("Go to Today"), QBXurlList::Today},
        {u"go-trash"_s, tr("Go to Trash"), QBXurlList::Trash}};
    int number = 0;
    for (const auto &[name, text, list] : lists) {
        addCommand(name, text, key(Qt::ALT | Qt::Key(Qt::Key_1 + number++)), [this, list = list] { showList(list); });
    }
    addCommand(u"focus-sidebar"_s, tr("Keyboard to Sidebar"), key(Qt::CTRL | Qt::ALT | Qt::Key_1), [this] {
        setColumns(Columns::All);
        m_sidebar->setFocus();
    });
    addCommand(u"focus-notes"_s, tr("Keyboard to Notes"), key(Qt::CTRL | Qt::ALT | Qt::Key_2),
               [this] { focusNotesTable(); });
    addCommand(u"focus-editor"_s, tr("Keyboard to Editor"), key(Qt::CTRL | Qt::ALT | Qt::Key_3), [this] {
        revealColumn(Column::Editor);
        m_editor->focusEditor();
    });
    // 5. Help.
    addCommand(u"command-palette"_s, tr("All Commands…"), key(Qt::CTRL | Qt::SHIFT | Qt::Key_P),
               [this] { openCommandPalette(); });
    // What these do is up to the desktop.
    QAction *tray = addCommand(u"tray-icon"_s, tr("Icon in the Tray"), {}, [] {});
    tray->setCheckable(true);
    tray->setVisible(false);
    addCommand(u"global-shortcuts"_s, tr("Shortcuts from Everywhere…"), {}, [] {});
    addCommand(u"shortcuts"_s, tr("Keyboard Shortcuts"), key(Qt::CTRL | Qt::Key_Question),
               [this] { showPreferences(PreferencesWindow::Page::Shortcuts); });
    addCommand(u"about"_s, tr("About Quib"), {}, [this] { showPreferences(PreferencesWindow::Page::About); });
}

void QBMainWindowController::makeMenus()
{
    const auto fill = [this](QMenu *menu, std::initializer_list<QLatin1StringView> names) {
        for (const QLatin1StringView name : names) {
            if (name.isEmpty()) {
                menu->addSeparator();
            } else {
                menu->addAction(m_actions[name]);
            }
        }
        return menu;
    };
    fill(menuBar()->addMenu(tr("&File")),
         {"new-note"_L1, "new-note-in-window"_L1, "quick-note"_L1, ""_L1, "quick-open"_L1, "open-in-window"_L1, ""_L1,
          "print"_L1, ""_L1, "close-window"_L1, "quit"_L1});
    QMenu *edit = fill(menuBar()->addMenu(tr("&Edit")), {"undo"_L1, "redo"_L1, ""_L1, "cut"_L1, "copy"_L1, "paste"_L1,
                                                         "select-all"_L1, ""_L1, "search-notes"_L1, "search-help"_L1});
    // The names of what can be undone change without the window being told.
    connect(edit, &QMenu::aboutToShow, this, [this] {
        updateActions();
        updateEditingCommands(/*isMenuOpen=*/true);
    });
    connect(edit, &QMenu::aboutToHide, this, [this] { updateEditingCommands(/*isMenuOpen=*/false); });
    connect(qApp, &QApplication::focusChanged, menuBar(), [this, bar = menuBar()](QWidget *before, QWidget *now) {
        if (now == bar) {
            m_keyboardBeforeMenuBar = before;
        }
    });
    m_noteMenu = fill(menuBar()->addMenu(tr("&Note")),
                      {"open-in-window"_L1, "copy-link"_L1, ""_L1, "pin"_L1, "duplicate"_L1, "merge"_L1, ""_L1,
                       "remove-tag"_L1, ""_L1, "archive"_L1, "restore"_L1, "trash"_L1});
    fill(menuBar()->addMenu(tr("&Tag")), {"rename-tag"_L1, "tag-symbol"_L1, "delete-tag"_L1, ""_L1, "remove-tag"_L1});
    // What the pane can do with the text.
    const auto addOfPane = [this](QMenu *menu, std::initializer_list<QLatin1StringView> names) {
        for (const QLatin1StringView name : names) {
            if (QAction *command = m_editor->action(name); command != nullptr) {
                menu->addAction(command);
            } else {
                menu->addSeparator();
            }
        }
        return menu;
    };
    const auto paneText = [](const char *text) {
        return QCoreApplication::translate("QBNoteEditorViewController", text);
    };
    addOfPane(edit, {""_L1, "find"_L1, "find-replace"_L1, "find-next"_L1, "find-previous"_L1, ""_L1});
    addOfPane(edit->addMenu(paneText("Copy As")), {"copy-as-text"_L1, "copy-as-text-without-tags"_L1});
    addOfPane(edit->addMenu(paneText("Paste As")), {"paste-plain"_L1, "paste-code"_L1});
    addOfPane(edit, {"complete"_L1, ""_L1});
    fill(edit, {"preferences"_L1});
    addOfPane(m_noteMenu, {""_L1, "note-from-selection"_L1, "open-link"_L1});
    QMenu *format = menuBar()->addMenu(tr("F&ormat"));
    addOfPane(format, {"bold"_L1, "italic"_L1, "underline"_L1, "strike"_L1, "marker"_L1, "inline-code"_L1, ""_L1});
    addOfPane(format->addMenu(paneText("Heading")), {"heading-1"_L1, "heading-2"_L1, "heading-3"_L1, "heading-4"_L1,
                                                     "heading-5"_L1, "heading-6"_L1, ""_L1, "no-heading"_L1});
    addOfPane(format, {"todo"_L1, "bullet-list"_L1, "numbered-list"_L1, "quote"_L1, "code-block"_L1, "separator"_L1,
                       ""_L1, "toggle-todo"_L1, "indent"_L1, "outdent"_L1, "move-up"_L1, "move-down"_L1, ""_L1,
                       "link"_L1, "note-link"_L1, "attach"_L1});
    QMenu *view = fill(menuBar()->addMenu(tr("&View")), {"columns-1"_L1, "columns-2"_L1, "columns-3"_L1, ""_L1});
    QMenu *sorting = view->addMenu(tr("Sort Notes"));
    QMenu *themes = view->addMenu(tr("Theme"));
    addOfPane(view, {""_L1, "info"_L1, "format-bar"_L1, "typewriter"_L1, "focus-mode"_L1, ""_L1, "fold-completed"_L1,
                     "unfold-completed"_L1, ""_L1, "zoom-in"_L1, "zoom-out"_L1, "zoom-reset"_L1, "wider-lines"_L1,
                     "narrower-lines"_L1, ""_L1});
    fill(view, {"tray-icon"_L1, "global-shortcuts"_L1, ""_L1, "full-screen"_L1});
    connect(sorting, &QMenu::aboutToShow, this, [this, sorting] { fillSortMenu(*sorting); });
    connect(themes, &QMenu::aboutToShow, this, [this, themes] { fillThemeMenu(*themes); });
    QMenu *go = fill(menuBar()->addMenu(tr("&Go")),
                     {"previous-note"_L1, "next-note"_L1, ""_L1, "go-notes"_L1, "go-untagged"_L1, "go-todo"_L1,
                      "go-today"_L1, "go-trash"_L1, ""_L1, "focus-sidebar"_L1, "focus-notes"_L1, "focus-editor"_L1});
    addOfPane(go, {"next-part"_L1, "previous-part"_L1});
    fill(menuBar()->addMenu(tr("&Help")), {"command-palette"_L1, "shortcuts"_L1, ""_L1, "about"_L1});
    // Buttons.
    for (auto *button : findChildren<QToolButton *>()) {
        QAction *of = m_actions.value(button->objectName());
        if (of != nullptr) {
            const QIcon icon = button->icon();
            of->setIcon(icon);
            of->setIconVisibleInMenu(false);
            button->setDefaultAction(of);
        }
    }
    auto *sortButton = m_listColumn->findChild<QToolButton *>(u"sort"_s);
    auto *sortMenu = new QMenu(sortButton);
    connect(sortMenu, &QMenu::aboutToShow, this, [this, sortMenu] { fillSortMenu(*sortMenu); });
    sortButton->setMenu(sortMenu);
    sortButton->setToolTip(tr("Sort Notes"));
    sortButton->setAccessibleName(tr("Sort Notes"));
    auto *moreButton = m_editorColumn->findChild<QToolButton *>(u"note-menu"_s);
    moreButton->setMenu(m_noteMenu);
    moreButton->setToolTip(tr("More"));
    moreButton->setAccessibleName(tr("Commands for this note"));
}

void QBMainWindowController::fillSortMenu(QMenu &menu)
{
    menu.clear();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    const std::initializer_list<std::pair<QString, QString>> keys{{tr("Date Changed"), u"modificationDate"_s},
                                                                  {tr("Date Created"), u"creationDate"_s},
                                                                  {tr("Title"), u"title"_s}};
    for (const auto &[text, sortKey] : keys) {
        QAction *choice =
            menu.addAction(text, this, [preferences, sortKey = sortKey] { preferences->setNotesListSortBy(sortKey); });
        choice->setCheckable(true);
        choice->setChecked(preferences->notesListSortBy() == sortKey);
    }
    menu.addSeparator();
    for (const bool isAscending : {false, true}) {
        QAction *choice =
            menu.addAction(isAscending ? tr("Ascending") : tr("Descending"), this,
                           [preferences, isAscending] { preferences->setNotesListSortAscending(isAscending); });
        choice->setCheckable(true);
        choice->setChecked(preferences->notesListSortAscending() == isAscending);
    }
}

void QBMainWindowController::fillThemeMenu(QMenu &menu)
{
    menu.clear();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    for (const QString &name : QBNotesThemesManager::availableThemesNames()) {
        QAction *choice =
            menu.addAction(name, this, [preferences, name] { preferences->setCurrentAppThemeName(name); });
        choice->setCheckable(true);
        choice->setChecked(preferences->currentAppThemeName() == name);
    }
}

// Context menus

void QBMainWindowController::showNoteMenu(const QPoint &globalPosition)
{
    updateActions();
    if (!selectedNotes().isEmpty()) {
        m_noteMenu->popup(globalPosition);
    }
}

void QBMainWindowController::showSidebarMenu(const QBSidebarItem::Pointer &item, const QPoint &globalPosition)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    m_sidebar->selectIdentifier(item->uniqueIdentifier());
    if (item->canCreateNotes()) {
        menu->addAction(m_actions[u"new-note"_s]);
    }
    if (dynamic_cast<QBTagSidebarItem *>(item.get()) != nullptr) {
        menu->addSeparator();
        menu->addAction(m_actions[u"rename-tag"_s]);
        menu->addAction(m_actions[u"tag-symbol"_s]);
        menu->addAction(m_actions[u"delete-tag"_s]);
    }
    if (auto *trash = dynamic_cast<QBNotesTrashSidebarItem *>(item.get()); trash != nullptr) {
        menu->addAction(tr("Empty Trash…"), this, [this] {
            if (m_notes) {
                m_notes->emptyTrash();
            }
        });
    }
    if (menu->isEmpty()) {
        delete menu;
        return;
    }
    menu->popup(globalPosition);
}

// Links

void QBMainWindowController::copyNoteLinks()
{
    QStringList links;
    for (const auto &note : selectedNotes()) {
        links.append(note->openNoteXCallbackURLString());
    }
    if (!links.isEmpty()) {
        QApplication::clipboard()->setText(links.join(u'\n'));
        m_messages->say(tr("%n link(s) copied.", nullptr, int(links.size())));
    }
}

// Panels

void QBMainWindowController::openQuickly()
{
    if (!m_context) {
        return;
    }
    saveNote(/*forceSave=*/false);
    // The titles come from a queue of their own: of a large library they take longer than a frame.
    const auto titles = std::make_shared<Titles>();
    const auto context =
        NSManagedObjectContext::contextWithParent(NSManagedObjectContextConcurrencyType::PrivateQueue, m_context);
    context->performBlock(
        [titles, context, untitled = tr("Untitled note"), window = QPointer<QBMainWindowController>(this)] {
            const auto show = [&](TitleFinder finder, bool isWhole) {
                auto made = std::make_shared<TitleFinder>(std::move(finder));
                DispatchQueue::main()->async([titles, made, isWhole, window] {
                    if (window) {
                        titles->finder = std::move(*made);
                        titles->isWhole = isWhole;
                        window->m_choices->providerDidChange();
                    }
                });
            };
            // 1. Those that are shown before anything is typed.
            auto last = titlesInContext(*context, kMostChoices, untitled);
            const bool isWhole = last.size() < size_t{kMostChoices};
            show(TitleFinder(last), isWhole);
            // 2. All.
            if (!isWhole) {
                show(TitleFinder(titlesInContext(*context, /*limit=*/0, untitled)), /*isWhole=*/true);
            }
        });
    m_choices->open(tr("Open a note by its title"), [this, titles](const QString &query) {
        QList<Choice> choices;
        for (const TitleFinder::Found &each : titles->finder.find(query, kMostChoices)) {
            choices.append(Choice{.title = each.title,
                                  .detail = {},
                                  .symbol = u"sidebar-notes"_s,
                                  .places = each.places,
                                  .choose = [this, identifier = each.identifier] {
                                      if (const auto note = QBNote::noteWithUniqueIdentifier(identifier, *m_context)) {
                                          showNote(*note);
                                          m_editor->focusEditor();
                                      }
                                  }});
        }
        if (titles->isWhole && choices.isEmpty() && !query.trimmed().isEmpty()) {
            choices.append(Choice{.title = tr("New note “%1”").arg(query.trimmed()),
                                  .detail = {},
                                  .symbol = u"new-note"_s,
                                  .places = {},
                                  .choose = [this, title = query.trimmed()] {
                                      showList(QBXurlList::AllNotes);
                                      setCurrentSearch(title);
                                      addNewNote();
                                  }});
        }
        return choices;
    });
}

void QBMainWindowController::openCommandPalette()
{
    updateActions();
    QList<QAction *> commands = actions() + m_editor->editor().actions();
    commands.removeAll(action(u"command-palette"_s));
    QList<Choice> themes;
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        for (const QString &name : QBNotesThemesManager::availableThemesNames()) {
            themes.append(Choice{.title = tr("Theme: %1").arg(name),
                                 .detail = preferences->currentAppThemeName() == name ? tr("current") : QString(),
                                 .symbol = {},
                                 .places = {},
                                 .choose = [preferences, name] { preferences->setCurrentAppThemeName(name); }});
        }
    }
    m_choices->open(tr("Find a command"),
                    [commands, themes](const QString &query) { return choicesOfCommands(commands, query, themes); });
}

void QBMainWindowController::openSearchHelp()
{
    m_choices->open(tr("What can be searched for"), [this](const QString &query) {
        QList<Choice> choices;
        for (const SearchField::Operator &each : SearchField::help()) {
            const auto match = FuzzyMatch::match(query, QString(each.word % u' ' % each.meaning));
            if (!match) {
                continue;
            }
            choices.append(Choice{.title = each.word,
                                  .detail = each.meaning,
                                  .symbol = u"search"_s,
                                  .places = {},
                                  .choose = [this, word = each.word] {
                                      focusSearchField();
                                      m_searchField->addWord(word);
                                  }});
        }
        return choices;
    });
}

void QBMainWindowController::showPreferences(PreferencesWindow::Page page)
{
    PreferencesWindow::show(*this, page, {.commandGroups = [this] { return commandGroupsOfMenuBar(*menuBar()); }});
}
