#pragma once

#include <Store/Ref.h>
#include <URL/QBXurlInterface.h>

#include <QString>

#include <memory>

class NSManagedObjectContext;

/// The main window, with its sidebar, list of notes and editor, as the application's life cycle, its commands and the
/// URL actions see it: each operation is one step, asked for in the order that matters. The window target implements
/// it; a process without windows has none. Owned by whoever makes windows, outlives the delegate. Main queue.
class QBMainWindowInterface : public QBXurlInterface
{
public:
    // The window

    /// Shows the window in front of the others and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
    /// Shows the window without giving it the keyboard.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
    /// Units: 0 for a window that cannot be seen, 1 for a plain one.
    virtual void setAlphaValue(double alphaValue) = 0;
    /// The state from which the window is restored at the next start is to be written anew.
    virtual void invalidateRestorableState() = 0;
    [[nodiscard]] virtual bool isKeyWindow() const = 0;
    /// What has the keyboard, for a log line.
    [[nodiscard]] virtual QString firstResponderDescription() const = 0;

    // The store

    /// Hands the store to the sidebar, which fills all lists from it. Before, every list is empty.
    virtual void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &managedObjectContext) = 0;
    /// The list of notes is to select its first row as soon as it gets the keyboard.
    virtual void setSelectsFirstRowWhenBecomesFirstResponder(bool selects) = 0;

    // Commands

    /// A new note in the list that is shown.
    virtual void addNewNote() = 0;
    /// A new note in an editor window of its own.
    virtual void addNewNoteInNewWindow() = 0;
    /// True while only the editor is visible: then there is no search field to go to.
    [[nodiscard]] virtual bool isEditorOnly() const = 0;
    virtual void focusSearchField() = 0;
};
