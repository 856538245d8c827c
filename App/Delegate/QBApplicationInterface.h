#pragma once

#include "QBLoadingWindowInterface.h"

#include <Themes/ThemeLoader.h>

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>

class NSPasteboard;
class QBMainWindowInterface;

/// A question or a message to the user.
struct QBAlert
{
    QString messageText;
    QString informativeText;
    /// In their order, the default one first.
    QStringList buttons;
    /// Something failed that the program cannot go on without.
    bool isFailure = false;
    /// The file or folder that it is about, if any.
    QString path = {};
};

/// What the delegate asks of the desktop and of the windows beside the main one. The window target implements it, as
/// does the process without windows. Owned by the process, outlives the delegate. Main queue.
class QBApplicationInterface : public quib::ThemeHost
{
public:
    /// The index of the button that answered an alert; kNoButton where nobody was there to be asked.
    using Answered = std::function<void(int button)>;
    static constexpr int kNoButton = -1;

    // Windows

    /// The window with the identifier "QBMainWindow"; null in a process without windows.
    [[nodiscard]] virtual QBMainWindowInterface *mainWindow() = 0;
    [[nodiscard]] virtual bool hasVisibleWindows() const = 0;
    [[nodiscard]] virtual std::unique_ptr<QBLoadingWindowInterface> makeLoadingWindow() = 0;
    /// Shows an alert; answered is called once, later, or before this returns.
    virtual void showAlert(const QBAlert &alert, Answered answered) = 0;
    /// The title of the note in the key window's editor, or the empty string.
    [[nodiscard]] virtual QString keyEditorNoteTitle() const = 0;

    // The application among others

    /// What was copied last, in any program; null where there is no clipboard.
    [[nodiscard]] virtual std::shared_ptr<NSPasteboard> generalPasteboard() = 0;

    /// Makes the application the active one.
    virtual void activate() = 0;
    /// Brings all windows of the application forward without activating it.
    virtual void bringAllWindowsForward() = 0;
    /// Opens an address of the program's own (its support page) with the desktop.
    virtual void openWebsite(const QUrl &url) = 0;
    /// Shows a folder in the desktop's file manager.
    virtual void revealFolder(const QString &folder) = 0;
    /// Shows the small window in which a note is begun. Errors: false in a process without windows, or without a store.
    [[nodiscard]] virtual bool showQuickNote() { return false; }
    /// Asks the event loop to end in order; the delegate is told before it does. Where what was typed cannot be saved,
    /// the user is asked first, and may stay.
    virtual void terminate() = 0;
    /// The same where nobody can be asked: the system ends the process.
    virtual void terminateWithoutAsking() { terminate(); }
    /// Ends the process at once: nothing is saved or tidied any more.
    virtual void exitProcess(int status) = 0;
};
