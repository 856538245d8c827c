#pragma once

#include <Delegate/QBApplicationInterface.h>
#include <Delegate/QBMainWindowInterface.h>

#include <Foundation/NSPasteboard.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>

#include <QStringList>

#include <memory>

namespace quib::tests {

/// A main window that writes down what it is asked for, one line a step.
class RecordingWindow final : public QBMainWindowInterface
{
public:
    explicit RecordingWindow(QStringList &steps)
        : m_steps(steps)
    {
    }

    void makeKeyAndOrderFront() override { m_steps.append(QStringLiteral("key and front")); }
    void orderFront() override { m_steps.append(QStringLiteral("front")); }
    void orderOut() override { m_steps.append(QStringLiteral("out")); }
    void setAlphaValue(double alphaValue) override
    {
        m_steps.append(QStringLiteral("alpha ") + QString::number(alphaValue));
    }
    void invalidateRestorableState() override { m_steps.append(QStringLiteral("invalidate state")); }
    [[nodiscard]] bool isKeyWindow() const override { return isKey; }
    [[nodiscard]] QString firstResponderDescription() const override { return QStringLiteral("editor"); }
    void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &managedObjectContext) override
    {
        m_steps.append(QStringLiteral("context"));
        context = managedObjectContext;
    }
    void setSelectsFirstRowWhenBecomesFirstResponder(bool selects) override
    {
        m_steps.append(selects ? QStringLiteral("select first row") : QStringLiteral("select none"));
    }
    void saveNote(bool forceSave) override
    {
        m_steps.append(forceSave ? QStringLiteral("save note, forced") : QStringLiteral("save note"));
        if (pendingText) {
            pendingText();
        }
    }
    void addNewNote() override { m_steps.append(QStringLiteral("new note")); }
    void addNewNoteInNewWindow() override { m_steps.append(QStringLiteral("new note in new window")); }
    [[nodiscard]] bool isEditorOnly() const override { return editorOnly; }
    void focusSearchField() override { m_steps.append(QStringLiteral("focus search")); }

    void detachEditorWindowForNote(QBNote &note, bool /*floating*/) override
    {
        m_steps.append(QStringLiteral("detach ") + note.title());
    }
    [[nodiscard]] bool isNoteVisible(const QBNote & /*note*/) override { return true; }
    void showNote(QBNote &note) override { m_steps.append(QStringLiteral("show ") + note.title()); }
    void scrollNote(QBNote & /*note*/, const QString & /*toHeader*/, const QString & /*orAttachment*/) override {}
    void editNoteAtEnd(QBNote &note) override { m_steps.append(QStringLiteral("edit ") + note.title()); }
    void showList(QBXurlList list) override
    {
        m_steps.append(QStringLiteral("list ") + QString::number(static_cast<int>(list)));
    }
    void selectTag(QBNoteTag &tag) override { m_steps.append(QStringLiteral("tag ") + tag.title()); }
    void setCurrentSearch(const QString &search) override { m_steps.append(QStringLiteral("search ") + search); }
    void focusNotesTable() override { m_steps.append(QStringLiteral("focus notes")); }
    void loadFontThemeName(const QString &name) override { m_steps.append(QStringLiteral("font ") + name); }
    void showQuibProPreferences() override { m_steps.append(QStringLiteral("pro preferences")); }
    void showThemesPreferences() override { m_steps.append(QStringLiteral("theme preferences")); }
    void showMainWindow() override { m_steps.append(QStringLiteral("show main window")); }

    bool isKey = false;
    bool editorOnly = false;
    std::shared_ptr<NSManagedObjectContext> context;
    /// What the editor writes into its note when it is told to save.
    std::function<void()> pendingText;

private:
    QStringList &m_steps;
};

class RecordingLoadingWindow final : public QBLoadingWindowInterface
{
public:
    explicit RecordingLoadingWindow(QStringList &steps)
        : m_steps(steps)
    {
    }
    void setTitle(const QString &title) override { m_steps.append(QStringLiteral("loading title: ") + title); }
    void setMessage(const QString &message) override { m_steps.append(QStringLiteral("loading text: ") + message); }
    void setProgress(const std::shared_ptr<NSProgress> &progress) override
    {
        m_steps.append(progress ? QStringLiteral("loading progress") : QStringLiteral("no progress"));
    }
    void center() override { m_steps.append(QStringLiteral("loading centred")); }
    void beginModalSession() override { m_steps.append(QStringLiteral("loading begins")); }
    void endModalSession() override { m_steps.append(QStringLiteral("loading ends")); }
    void orderOut() override { m_steps.append(QStringLiteral("loading out")); }

private:
    QStringList &m_steps;
};

/// The desktop around it. Alerts are answered with the button that the test set.
class RecordingInterface final : public QBApplicationInterface
{
public:
    [[nodiscard]] QBMainWindowInterface *mainWindow() override
    {
        steps.append(QStringLiteral("find window"));
        return hasWindow ? &window : nullptr;
    }
    [[nodiscard]] bool hasVisibleWindows() const override { return isVisible; }
    [[nodiscard]] std::unique_ptr<QBLoadingWindowInterface> makeLoadingWindow() override
    {
        steps.append(QStringLiteral("loading window"));
        return std::make_unique<RecordingLoadingWindow>(steps);
    }
    void showAlert(const QBAlert &alert, Answered answered) override
    {
        steps.append(QStringLiteral("alert: ") + alert.messageText);
        alerts.append(alert);
        answered(button);
    }
    [[nodiscard]] QString keyEditorNoteTitle() const override { return title; }
    [[nodiscard]] std::shared_ptr<NSPasteboard> generalPasteboard() override { return pasteboard; }
    void activate() override { steps.append(QStringLiteral("activate")); }
    void bringAllWindowsForward() override { steps.append(QStringLiteral("all forward")); }
    void openWebsite(const QUrl &url) override { steps.append(QStringLiteral("website ") + url.toString()); }
    void revealFolder(const QString &folder) override { steps.append(QStringLiteral("reveal ") + folder); }
    void terminate() override { steps.append(QStringLiteral("terminate")); }
    void exitProcess(int status) override { steps.append(QStringLiteral("exit ") + QString::number(status)); }
    void setApplicationIconNamed(const QString &name) override { icons.append(name); }
    void updateDetachedEditorWindows() override { steps.append(QStringLiteral("theme")); }
    void loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> & /*theme*/) override { ++themeLoads; }

    QStringList takeSteps() { return std::exchange(steps, {}); }

    QStringList steps;
    RecordingWindow window{steps};
    std::shared_ptr<InMemoryPasteboard> pasteboard = std::make_shared<InMemoryPasteboard>();
    bool hasWindow = true;
    bool isVisible = true;
    int button = kNoButton;
    QString title;
    QList<QBAlert> alerts;
    QStringList icons;
    int themeLoads = 0;
};

} // namespace quib::tests
