#pragma once

#include "ChoicePanel.h"
#include "NoteListView.h"
#include "SidebarView.h"

#include <Delegate/QBApplicationInterface.h>
#include <Delegate/QBMainWindowInterface.h>
#include <Preferences/PreferencesWindow.h>
#include <Search/Lists/QBNotesTableViewController.h>
#include <Search/NoteTextSearch.h>
#include <Text/NSUndoManager.h>

#include <QMainWindow>
#include <QPointer>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QToolButton;
QT_END_NAMESPACE

class QBNoteTextView;

namespace quib {
class DetachedWindow;
class EditorPane;
class MessageBar;
class QuickNoteWindow;
class SavingMessage;
class SearchField;
} // namespace quib

/// The main window: sidebar, list of notes with its search field, and editor, side by side. It gives the pieces below
/// it their places and their commands, and carries out what the application's life cycle and URL actions ask of it.
/// Made by whoever makes the windows, before the store is open; main queue.
class QBMainWindowController final : public QMainWindow,
                                     public QBMainWindowInterface,
                                     private QBNotesTableViewControllerDelegate
{
    Q_OBJECT

public:
    QBMainWindowController();
    ~QBMainWindowController() override;

    /// Which columns are seen.
    enum class Columns : int
    {
        All = 0,
        ListAndEditor = 1,
        EditorOnly = 2,
    };
    /// Those that were chosen. Less are seen where the window is too narrow for them.
    [[nodiscard]] Columns columns() const { return m_columns; }
    void setColumns(Columns columns);
    enum class Column
    {
        Sidebar,
        List,
        Editor,
    };
    /// In a window that has no room for all columns, shows this one, and beside it what there is room for.
    void revealColumn(Column column);

    /// The command of that name; null for a name that there is none of.
    [[nodiscard]] QAction *action(const QString &name) const;
    [[nodiscard]] quib::SidebarView &sidebar() { return *m_sidebar; }
    [[nodiscard]] quib::NoteListView &noteList() { return *m_list; }
    [[nodiscard]] quib::SearchField &searchField() { return *m_searchField; }
    [[nodiscard]] quib::EditorPane &editor() { return *m_editor; }
    [[nodiscard]] quib::MessageBar &messages() { return *m_messages; }
    [[nodiscard]] quib::SavingMessage &saving() { return *m_saving; }
    [[nodiscard]] quib::ChoicePanel &choices() { return *m_choices; }
    /// Null before there is a store.
    [[nodiscard]] QBNotesTableViewController *notes() { return m_notes.get(); }
    /// Null before there is a store.
    [[nodiscard]] const std::shared_ptr<quib::NoteTextSearch> &textSearch() const { return m_textSearch; }

    /// The editor that has the keyboard in any of the program's windows; the main window's own where none has.
    [[nodiscard]] quib::EditorPane &keyEditor();
    /// Opens the small window with an empty note. Errors: false before there is a store.
    bool showQuickNote();
    /// Null until it was opened once.
    [[nodiscard]] quib::QuickNoteWindow *quickNote() const { return m_quickNote.get(); }
    /// Forgets the store, before it goes.
    void forgetStore();
    /// The colours and fonts of every editor, those made later included.
    void loadTextTheme(const std::shared_ptr<QBTheme> &theme);
    /// Shows a page of the preferences, in their one window.
    void showPreferences(quib::PreferencesWindow::Page page);
    /// Saves everything before an end by the user's wish. Errors: false; the window then asks whether to end without.
    [[nodiscard]] bool mayQuit();
    /// From now on the window stands in the way of no end.
    void quitWithoutAsking() { m_quitsWithoutAsking = true; }
    /// How the program ends by the user's wish.
    void setTerminate(std::function<void()> terminate) { m_terminate = std::move(terminate); }

    // QBMainWindowInterface (QBMainWindowController+Interface.cpp)
    void makeKeyAndOrderFront() override;
    void orderFront() override;
    void orderOut() override;
    void setAlphaValue(double alphaValue) override;
    void invalidateRestorableState() override;
    [[nodiscard]] bool isKeyWindow() const override;
    [[nodiscard]] QString firstResponderDescription() const override;
    void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &managedObjectContext) override;
    void setSelectsFirstRowWhenBecomesFirstResponder(bool selects) override;
    void saveNote(bool forceSave) override;
    void addNewNote() override;
    void addNewNoteInNewWindow() override;
    [[nodiscard]] bool isEditorOnly() const override;
    void focusSearchField() override;

    // QBXurlInterface (QBMainWindowController+Interface.cpp)
    void detachEditorWindowForNote(QBNote &note, bool floating) override;
    [[nodiscard]] bool isNoteVisible(const QBNote &note) override;
    void showNote(QBNote &note) override;
    void scrollNote(QBNote &note, const QString &toHeader, const QString &orAttachment) override;
    void editNoteAtEnd(QBNote &note) override;
    void showList(QBXurlList list) override;
    void selectTag(QBNoteTag &tag) override;
    void setCurrentSearch(const QString &search) override;
    void focusNotesTable() override;
    void loadFontThemeName(const QString &name) override;
    void showQuibProPreferences() override;
    void showThemesPreferences() override;
    void showMainWindow() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    // QBMainWindowController.cpp
    void makeColumns();
    [[nodiscard]] QToolButton *makeButton(const QString &symbol, const QString &actionName, QWidget *parent);
    void sidebarItemWasSelected(const QBSidebarItem::Pointer &item);
    void notesSelectionDidChange();
    [[nodiscard]] bool canMakeNotes() const;
    /// Whether the note that takes the place of the selected one, which left the list, is shown. Not while somebody may
    /// be writing, unless this window's own command took the note away.
    [[nodiscard]] bool looksAtNeighbour() const;
    /// The note that is shown although the list has no row for it any more; null where there is none.
    [[nodiscard]] quib::Ref<QBNote> noteLeftOpen() const;
    void selectionWasLost();
    /// A note that was left open gets its row again where the list has one.
    void selectNoteLeftOpen();
    void openNoteWasDeleted();
    void askBeforeDeleting(const QBNotesTableQuestion &question, const QBNotesTableViewInterface::Answer &answer);
    /// A question is about the notes that were selected when it was asked.
    void dismissQuestion();
    void updateEmptyStates();
    void updateActions();
    void notesTableViewController(QBNotesTableViewController &controller, const QString &didPerformSearch) override;
    [[nodiscard]] QList<quib::Ref<QBNote>> notesWithIdentifiers(const QStringList &identifiers) const;
    /// The notes that a command is about: those selected in the list, or the one that was left open.
    [[nodiscard]] QList<quib::Ref<QBNote>> selectedNotes() const;

    // QBMainWindowController+Columns.cpp
    void setLeastSizes();
    void toggleColumns();
    void updateShownColumns();
    [[nodiscard]] Column columnWorkedAt() const;

    // QBMainWindowController+Actions.cpp
    void makeActions();
    void makeMenus();
    QAction *addCommand(const QString &name, const QString &text, const QKeySequence &shortcut,
                        std::function<void()> triggered);
    /// Runs a command that takes notes out of the list.
    void putAway(const std::function<void()> &command);
    void showNoteMenu(const QPoint &globalPosition);
    void showSidebarMenu(const QBSidebarItem::Pointer &item, const QPoint &globalPosition);
    void fillSortMenu(QMenu &menu);
    void fillThemeMenu(QMenu &menu);
    void openQuickly();
    void openCommandPalette();
    void openSearchHelp();
    void copyNoteLinks();

    // QBMainWindowController+Undoing.cpp

    /// Who has the keyboard, of those that can undo: a field, a text, or, where neither is set, all notes; nobody
    /// where the keyboard is beside a text that is there no more.
    struct Keyboard
    {
        QLineEdit *field = nullptr;
        QBNoteTextView *text = nullptr;
        bool isInLists = false;
    };
    [[nodiscard]] Keyboard keyboard() const;
    void undo();
    void redo();
    /// Names what undo and redo will do.
    void updateUndoNames();
    /// While their menu is open, commands that would do nothing are disabled; otherwise the keyboard may have gone
    /// elsewhere since, so none is.
    void updateEditingCommands(bool isMenuOpen);

    // QBMainWindowController+Printing.cpp
    /// The note of a pane, asked about in the window that it stands in.
    void printNote(QWidget &window, const quib::EditorPane &pane);
    void addCommandsTo(quib::DetachedWindow &window);

    // QBMainWindowController+Tags.cpp

    /// A note whose text a command on a tag changed.
    struct RewrittenNote
    {
        quib::Ref<QBNote> note;
        QString before;
        QString after;
    };
    /// Runs what rewrites the notes of a tag and of those below it, as one step that can be undone, and saves. Gives
    /// the notes that are other ones now.
    QList<quib::Ref<QBNote>> rewriteNotes(const quib::Ref<QBNoteTag> &ofTag, const QString &actionName,
                                          const std::function<void()> &rewrite);
    void registerRewritingBack(const QList<RewrittenNote> &changes, const QString &actionName,
                               const QString &selectedTag);
    /// Says what was done and offers to take back the last step that can be undone, until another one is made.
    void sayWithUndo(const QString &text);
    void renameTag(const QBSidebarItem::Pointer &item, const QString &name);
    void deleteTag(const QBSidebarItem::Pointer &item);
    void chooseSymbol(const QBSidebarItem::Pointer &item);
    void setSymbol(const QString &tagTitle, const QString &name, const QString &before);
    void dropNotes(const QBSidebarItem::Pointer &item, const QStringList &identifiers);

    // QBMainWindowController+Restoring.cpp
    /// Shows a note in a window of its own, where one was left without giving it the keyboard.
    quib::DetachedWindow *makeDetachedWindow(QBNote &note, bool floating, const std::optional<QByteArray> &geometry);
    void restoreWindow();
    void restoreLists();

    QSplitter *m_splitter = nullptr;
    quib::SidebarView *m_sidebar = nullptr;
    QWidget *m_listColumn = nullptr;
    QLabel *m_listTitle = nullptr;
    quib::SearchField *m_searchField = nullptr;
    quib::NoteListView *m_list = nullptr;
    QWidget *m_editorColumn = nullptr;
    QLabel *m_noteInfo = nullptr;
    quib::EditorPane *m_editor = nullptr;
    quib::MessageBar *m_messages = nullptr;
    quib::SavingMessage *m_saving = nullptr;
    quib::ChoicePanel *m_choices = nullptr;
    QMap<QString, QAction *> m_actions;
    QMenu *m_noteMenu = nullptr;
    QPointer<QWidget> m_keyboardBeforeMenuBar;
    Columns m_columns = Columns::All;
    Column m_neededColumn = Column::Editor;
    /// The number of a question that stands open, and what was selected then; 0 for none.
    int m_question = 0;
    QList<quib::Ref<QBNote>> m_selectedWhenAsked;
    NSUndoManager m_undoManager;
    quib::ObservationToken m_undoOffer;
    std::shared_ptr<NSManagedObjectContext> m_context;
    std::shared_ptr<QBTheme> m_textTheme;
    std::shared_ptr<quib::NoteTextSearch> m_textSearch;
    std::unique_ptr<QBNotesTableViewController> m_notes;
    QList<quib::DetachedWindow *> m_detached;
    std::unique_ptr<quib::QuickNoteWindow> m_quickNote;
    std::function<void()> m_terminate;
    bool m_quitsWithoutAsking = false;
};
