#pragma once

#include "QBNoteTextView.h"
#include "QBNoteTextViewDelegate.h"

#include <Foundation/Clock.h>
#include <Foundation/NotificationCenter.h>
#include <Markup/Editing/QBEditorStateController.h>
#include <Markup/Editing/QBNoteEditorCoreController.h>
#include <Markup/Editing/QBNotePasteFromCoreController.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Store/QBNote.h>

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class NSManagedObjectContext;
class QBEditorAutoCompleteCoreController;

QT_BEGIN_NAMESPACE
class QAction;
class QKeySequence;
class QMenu;
QT_END_NAMESPACE

namespace quib {
class CompletionPopup;
class FindBar;
class FormatBar;
class InformationPanel;
class NoteTextSearch;
class ScriptFonts;
class NoteTextViewSpelling;
class UnsavedTextJournal;
} // namespace quib

/// The pane in which one note is read and written: it loads the note, styles what is typed, and sees to it that no
/// character is lost, whoever else writes the note meanwhile. Owned by its window; main queue.
///
/// What is typed is saved 2.0 seconds after the last key, and at once where the note or the keyboard goes elsewhere.
/// Until then a journal has it, a second late at most, whatever happens to the process.
/// A note that changed elsewhere is taken over, and what was typed meanwhile is put into it; where both changed the
/// same place, the other text becomes a note of its own beside this one.
class QBNoteEditorViewController final : public QWidget, private QBNoteTextViewDelegate
{
    Q_OBJECT

public:
    /// Units: seconds.
    static constexpr double kAutoSaveDelay = 2.0;
    /// However steadily somebody types, no key waits longer to be on disk, beside the store. Units: seconds.
    static constexpr double kJournalDelay = 1.0;
    /// The preference with the size of the zoomed text; none where it is not zoomed.
    static constexpr QLatin1StringView kZoomKey{"QBEditorZoomedFontSize"};

    explicit QBNoteEditorViewController(QWidget *parent = nullptr);
    ~QBNoteEditorViewController() override;

    // The note

    /// Saves the note that was shown and shows another, or none. A note that was left a short while ago, and has not
    /// changed since, is shown as it was left: selection, place, and what can be undone.
    void setNote(const quib::Ref<QBNote> &note);
    [[nodiscard]] const quib::Ref<QBNote> &note() const { return m_note; }
    /// Writes what was typed into the note and saves the store. Without forceSave it waits while completions are shown.
    /// Errors: what the store could not save stays pending there; the stack knows why.
    void saveNote(bool forceSave);
    [[nodiscard]] bool hasUnsavedText() const { return m_isEdited; }
    /// Whether what changes in the store now is this pane's writing.
    [[nodiscard]] bool isSavingNote() const { return m_selfEditingNote; }
    /// Until what was handed to the journal is on disk.
    void waitForJournal() const;

    // What is shown

    [[nodiscard]] QBNoteTextView &textView() { return *m_view; }
    void focusEditor();
    void moveToEnd();
    /// Shows a header's line, or an attachment, which may be named by its file name or by its identifier.
    void scrollTo(const QString &header, const QString &orAttachment);
    void showHeader(const QString &title) { scrollTo(title, {}); }
    void showAttachment(const QString &name) { scrollTo({}, name); }
    /// What the list of notes is searched for stands out, until the text is changed, and is what is found next while
    /// the find bar is closed. A fold is marked where it is found in it.
    void setSearchString(const QString &search);

    /// The title of the page of a link that was copied; empty where none is known.
    using LinkTitle = std::function<QString(const QString &url)>;
    /// Where the titles of pasted links come from. Without one, links are pasted as they are.
    void setLinkTitle(LinkTitle linkTitle) { m_linkTitle = std::move(linkTitle); }

    // Commands: those of the pane are its actions(), for menus and lists of commands; each has a name and its shortcut.

    /// The command of that name; null for a name that there is none of.
    [[nodiscard]] QAction *action(const QString &name) const;
    /// Puts files into the note as attachments, in the place of the selection. The sources stay where they are.
    void attachFiles(const QList<QUrl> &urls);
    [[nodiscard]] quib::CompletionPopup &completionPopup() { return *m_popup; }
    [[nodiscard]] quib::FindBar &findBar() { return *m_findBar; }
    [[nodiscard]] quib::FormatBar &formatBar() { return *m_formatBar; }
    [[nodiscard]] quib::InformationPanel &informationPanel() { return *m_information; }
    /// What finds the notes that link here fast; of the notes' context, which it must not outlive.
    void setTextSearch(const std::shared_ptr<quib::NoteTextSearch> &textSearch);

    /// Saves a copy of an attachment's file under a name, in the place of what is there.
    /// Errors: false; savingFailed tells of it, and why is logged.
    bool copyFileTo(const QUrl &url, const QString &path);

    // Where the user was in each note

    /// Kept with the state of the window.
    [[nodiscard]] quib::PropertyValue archivedStates();
    /// Before the first note is shown. What is no archive is as none.
    void unarchiveStates(const quib::PropertyValue &archive);

    // Zoom: new panes begin with the last one, and it ends when a size is set in the preferences

    void zoomIn();
    void zoomOut();
    void resetZoom();

Q_SIGNALS:
    /// The text was changed by the user.
    void noteWasEdited();
    void noteWasSaved();
    /// Another note is shown than before, and nobody called setNote: the note was deleted elsewhere.
    void noteDidChange();
    /// A link was followed. The program's own links are among them.
    void urlWasOpened(const QUrl &url);
    /// A note was chosen in the information panel.
    void noteWasChosen(const QString &identifier);
    /// A file could not be taken into the note; why is logged.
    void attachingFailed(const QString &fileName);
    /// A copy of an attachment could not be written; why is logged.
    void savingFailed(const QString &fileName);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Something in the text that leads elsewhere.
    struct Link
    {
        enum class Kind
        {
            Tag,
            Note,
            Address,
        };
        Kind kind = Kind::Address;
        QUrl url;
        NSRange range; ///< with its markup
    };

    // QBNoteTextViewDelegate
    bool qbNoteTextViewShouldInsertNewLine(QBNoteTextView &view, bool isShiftDown) override;
    bool qbNoteTextViewShouldInsertTab(QBNoteTextView &view, bool backwards) override;
    void qbNoteTextViewDidChangeText(QBNoteTextView &view) override;
    void qbNoteTextViewDidChangeSelection(QBNoteTextView &view) override;
    void qbNoteTextViewDidClickAttachment(QBNoteTextView &view, const std::shared_ptr<NSTextAttachment> &attachment,
                                          qint64 location) override;
    void qbNoteTextViewDidOpenAttachment(QBNoteTextView &view, const std::shared_ptr<NSTextAttachment> &attachment,
                                         qint64 location) override;
    void qbNoteTextViewDidOpenURL(QBNoteTextView &view, const QUrl &url) override;

    // QBNoteTextViewDelegate, +Pasteboard.cpp
    [[nodiscard]] std::optional<QString> textForMimeData(QBNoteTextView &view, const QMimeData &mimeData,
                                                         NSRange replacedRange) override;
    void fillMimeData(QBNoteTextView &view, QMimeData &mimeData, NSRange range) override;
    [[nodiscard]] bool acceptsMimeData(const QMimeData &mimeData) const override;
    [[nodiscard]] bool isCode(qint64 location) const;
    /// A link with the title of its page, for a text that is a link and nothing else and a place where it stands alone.
    [[nodiscard]] std::optional<QString> titledLink(const QString &pasted, NSRange replacedRange) const;
    void pasteAsCode();
    void copyAsText(bool andTags);
    /// Makes attachments of files and gives their markers.
    [[nodiscard]] QStringList markersForFiles(const QList<QUrl> &urls);

    // QBNoteTextViewDelegate, +ContextMenu.cpp
    void fillContextMenu(QBNoteTextView &view, QMenu &menu, qint64 location) override;
    void addLinkEntries(QMenu &menu, qint64 location);
    void addAttachmentEntries(QMenu &menu, qint64 location);
    /// What leads elsewhere at a place, or right before it.
    [[nodiscard]] std::optional<Link> linkAt(qint64 location) const;
    void openLinkAtCaret();
    void chooseCopyOfFile(const QUrl &url);
    void makeNoteFromSelection();

    // QBNoteEditorViewController+Completion.cpp
    void resetCompletion();
    /// After a change of the text: the list opens, or stays, where something is being typed that can be completed.
    void updateCompletion();
    void completeAtCaret();
    void showCompletions();
    void closeCompletion();
    void insertCompletion();
    [[nodiscard]] bool isTextCompletionOpen() const;

    // QBNoteEditorViewController+Actions.cpp
    using StyleCommand = QBNoteStyleEditor::Result (QBNoteStyleEditor::*)(const NSAttributedString &, NSRange) const;
    QAction *addCommand(const QString &name, const QString &text, const QKeySequence &shortcut,
                        std::function<void()> triggered);
    QAction *addStyleCommand(const QString &name, const QString &text, const QKeySequence &shortcut,
                             StyleCommand apply);
    void makeActions();
    void fillFormatBar();
    void updateCommands();
    /// Commands of formatting are checked where the caret, or all of the selection, has their style.
    void updateStyles();
    /// Gives the keyboard to the next part of the pane: the text, the format bar, the information.
    void focusNextPart(bool forward);
    void applyStyle(const QBNoteStyleEditor::Result &result);
    void applyHeaderLevel(int level);
    /// A change of the text as one step that can be undone; none where nothing was to be changed.
    void edit(const std::function<void()> &change);
    /// Runs what may change the text. False where it did not: styling the last change again would be a step to undo.
    [[nodiscard]] bool editsText(const std::function<void()> &change);
    /// Makes the selection the title of a link.
    void insertLink();
    void toggleTodosInSelection();
    void foldCompletedTodo();
    void unfoldCompletedTodo();
    void makeOptions();
    void linkToNote();
    void chooseAttachments();

    // QBNoteEditorViewController.cpp
    void makeWidgets();
    void didEditNote();
    void loadNote();
    /// Shows a text, with its completed to-dos folded where the user likes that.
    void showText(const QString &text);
    void rememberState();
    void restoreState();
    void attachmentDidChange(QBNotesTextAttachment &attachment);
    /// Attachments with these identifiers show what their files are now.
    void filesDidChange(const QStringList &identifiers);
    void setZoom(double size);
    void zoomBySteps(int steps);
    void columnWidthDidChange();
    /// Pictures take the room that a wider column has. Of the whole text, those that have more room than pixels are
    /// loaded too.
    void growPicturesInRange(NSRange range);
    void changeLineWidth(double change);

    // QBNoteEditorViewController+Searching.cpp
    /// In all of the text, what is folded too; there a fold stands for what is found in it. By place.
    [[nodiscard]] QList<NSRange> placesOfSearch() const;
    void highlightSearch();
    void findNext(bool forward);
    /// Goes to the next place of what the list is searched for, into folds too. False where there is none.
    bool stepThroughSearch(bool forward);

    // QBNoteEditorViewController+Preferences.cpp
    void observePreferences();
    /// With the size that the last zoom left.
    void loadFirstTheme();
    void themeMayHaveChanged();
    /// Ends the zoom.
    void fontSizeMayHaveChanged();
    /// Shape: a zoomed size of 0 is none.
    void loadTheme(double zoomedBaseFontSize);
    void syntaxMayHaveChanged();
    void foldingMayHaveChanged();

    // QBNoteEditorViewController+Saving.cpp
    void markForAutoSave();
    void autoSaveTimerFire();
    void writeJournal();
    /// Nothing waits to be saved.
    void forgetEdits();
    /// Saves the store with the note in it, which had another text before. Then the journal goes; where the store could
    /// not be saved, the journal stays.
    void saveStore(const QString &baseText);
    /// The text as it is saved.
    [[nodiscard]] QString textToSave() const;
    void writeText(const QString &text);
    void observeNote();
    void noteMayHaveChanged();
    void noteWasDeleted();
    /// Shows another text of the same note; the selection stays with the characters it was at.
    void takeOverText(const QString &text);
    /// What is selected and what is seen. Units: of the text as the note has it, so that they hold for it however it
    /// is styled; the offset as in the view's scroll position.
    struct PlacesInText
    {
        qint64 start = 0;
        qint64 end = 0;
        qint64 top = 0;
        double offset = 0;
    };
    [[nodiscard]] PlacesInText placesInText() const;
    void restorePlaces(const PlacesInText &places);

    QBNoteTextKitStack m_stack;
    QBNoteEditorCoreController m_core;
    QBNoteTextAttachmentConfigurator m_configurator;
    QBNoteTextView *m_view = nullptr;
    quib::NoteTextViewSpelling *m_spelling = nullptr;
    quib::FindBar *m_findBar = nullptr;
    quib::FormatBar *m_formatBar = nullptr;
    quib::CompletionPopup *m_popup = nullptr;
    std::unique_ptr<QBEditorAutoCompleteCoreController> m_completion;
    std::weak_ptr<quib::NoteTextSearch> m_textSearch;
    quib::InformationPanel *m_information = nullptr;
    QList<QAction *> m_editingCommands; ///< those that need a note that can be changed
    QList<QAction *> m_headerCommands;
    QList<QAction *> m_styleCommands;
    quib::Ref<QBNote> m_note;
    QString m_baseText; ///< the note's text that the shown one was made from
    bool m_isEdited = false;
    bool m_selfEditingNote = false;
    std::unique_ptr<quib::TimerToken> m_autoSaveTimer;
    LinkTitle m_linkTitle;
    std::unique_ptr<quib::UnsavedTextJournal> m_journal;
    std::unique_ptr<quib::TimerToken> m_journalTimer; ///< set while there are keys that the journal has not seen
    std::unique_ptr<quib::TimerToken> m_pictureTimer;
    std::unique_ptr<quib::ScriptFonts> m_scriptFonts; ///< null before a note is shown
    std::shared_ptr<NSUndoManager> m_undoManager;
    QBEditorStateController m_states;
    QBNotePasteFromCoreController m_paste;
    bool m_hasNewFiles = false; ///< attachments that the store doesn't have yet
    QString m_search;
    std::vector<quib::ObservationToken> m_preferenceObservations;
    std::vector<quib::ObservationToken> m_noteObservations;
    quib::ObservationToken m_fileObservation;
};
