#pragma once

#include "IACCallbacks.h"
#include "QBXurlInterface.h"

#include <QList>
#include <QString>

#include <memory>
#include <utility>

class IACManager;
class QBCoreDataStack;
class QBXurlCoreController;

/// Binds the URL actions to the dispatcher and adds the window work, which the application and the command line share:
/// the one has windows, the other gives none. Each action calls its handler, which asks for its part of the window work
/// at its own place among the callbacks; the main window comes last of all, where the parameters want it and the action
/// was not refused. Owned by the process; the stack and the interface outlive it. Main queue.
class QBXurlActions
{
public:
    /// Shape: a null interface stands for a process without windows.
    QBXurlActions(QBCoreDataStack &stack, QBXurlInterface *interface);
    ~QBXurlActions();
    QBXurlActions(const QBXurlActions &) = delete;
    QBXurlActions &operator=(const QBXurlActions &) = delete;

    /// Gives the dispatcher the application's scheme and all actions. They do nothing once this object is gone.
    void setupXCallbackURLs(IACManager &manager);
    /// The actions in the order in which they are registered, each with its handler and window work. A handler may
    /// only be called while this object lives.
    [[nodiscard]] const QList<std::pair<QString, IACActionBlock>> &actions() const { return m_actions; }
    [[nodiscard]] QBXurlCoreController &controller() { return *m_controller; }

    /// The scheme of the application's own URLs.
    static constexpr QLatin1StringView kScheme{"quib"};

private:
    using Action = void (QBXurlActions::*)(const IACParameters &parameters, const IACSuccessBlock &success,
                                           const IACFailureBlock &failure);

    // One for each action, by its name.
    void openTag(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void renameTag(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void deleteTag(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void openNote(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void create(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void trash(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void archive(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void untagged(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void todo(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void today(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void tags(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void search(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void addText(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void addFile(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void changeTheme(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void changeFont(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void openQuibPro(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void openThemes(const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);

    struct NoteWork;

    /// Runs an action; what reports at once is followed by the main window.
    void run(Action action, const IACParameters &parameters, const IACSuccessBlock &success,
             const IACFailureBlock &failure);
    void showMainWindow(const IACParameters &parameters);
    /// Opens the note of an identifier as the work says.
    void openNoteInWindow(const QString &identifier, const NoteWork &work);
    void showListInWindow(QBXurlList list, bool show, const QString &search);

    QBCoreDataStack &m_stack;
    QBXurlInterface *m_interface;
    std::unique_ptr<QBXurlCoreController> m_controller;
    QList<std::pair<QString, IACActionBlock>> m_actions;
    /// Whether the action that runs now has got through: it asked for window work, or reported success.
    bool m_hasReached = false;
    /// Lives as long as this; the dispatcher's blocks look here first.
    std::shared_ptr<QBXurlActions *> m_self;
};
