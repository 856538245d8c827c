#pragma once

#include <QString>
#include <QtGlobal>

class QBNote;
class QBNoteTag;

/// The lists of notes that a URL action can show.
enum class QBXurlList : quint8
{
    AllNotes,
    Untagged,
    Today,
    Todo,
    Archive,
    Trash,
};

/// The window work of the URL actions, one operation for each single step; the actions ask for the steps in their
/// order. The application implements it over its windows; a process without windows gives none. Held by the class that
/// registers the actions, which must not outlive it. Main queue.
class QBXurlInterface
{
public:
    QBXurlInterface() = default;
    virtual ~QBXurlInterface() = default;
    QBXurlInterface(const QBXurlInterface &) = delete;
    QBXurlInterface &operator=(const QBXurlInterface &) = delete;

    // Notes

    /// Writes what was typed into the notes of all editors; with forceSave also while a completion is offered.
    virtual void saveNote(bool forceSave) = 0;
    /// Opens the note in an editor window of its own.
    virtual void detachEditorWindowForNote(QBNote &note, bool floating) = 0;
    /// Whether the main window's list of notes, as it stands now, holds the note.
    [[nodiscard]] virtual bool isNoteVisible(const QBNote &note) = 0;
    /// Selects the note in the main window, whatever list is shown there.
    virtual void showNote(QBNote &note) = 0;
    /// Scrolls the editor that shows the note to the range that QBXurlCoreController::rangeToScrollForHeader gives for
    /// its text; to none where that is not found. Both may be null, which asks for nothing.
    virtual void scrollNote(QBNote &note, const QString &toHeader, const QString &orAttachment) = 0;
    /// Gives the keyboard to the editor that shows the note, with the cursor at the end of the text.
    virtual void editNoteAtEnd(QBNote &note) = 0;

    // Lists

    virtual void showList(QBXurlList list) = 0;
    /// Selects the tag in the sidebar.
    virtual void selectTag(QBNoteTag &tag) = 0;
    /// Makes the text of the search field; an empty one ends the search.
    virtual void setCurrentSearch(const QString &search) = 0;
    /// Gives the keyboard to the list of notes.
    virtual void focusNotesTable() = 0;

    // Appearance and preferences

    /// Loads the fonts of a theme into what is shown; the preference is set by the caller afterwards.
    virtual void loadFontThemeName(const QString &name) = 0;
    virtual void showQuibProPreferences() = 0;
    virtual void showThemesPreferences() = 0;

    /// Brings the main window to the front.
    virtual void showMainWindow() = 0;
};
