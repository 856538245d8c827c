#pragma once

#include <Foundation/NotificationCenter.h>
#include <Store/QBNote.h>

#include <QList>
#include <QMainWindow>

#include <functional>

namespace quib {

class ChoicePanel;
class EditorPane;
class SavingMessage;

/// One note in a window of its own, with the pane's commands, some of the application's and a palette of all. It closes
/// when its note is deleted for good. Deletes itself when closed; main queue.
class DetachedWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// floating: the window stays above others.
    DetachedWindow(const Ref<QBNote> &note, bool floating);
    ~DetachedWindow() override;

    [[nodiscard]] EditorPane &editor() { return *m_editor; }
    [[nodiscard]] ChoicePanel &choices() { return *m_choices; }
    [[nodiscard]] bool isFloating() const { return windowFlags().testFlag(Qt::WindowStaysOnTopHint); }
    void setFloating(bool isFloating);
    /// Has commands of the application here too, under the same keys: run is given the one that was chosen.
    void addApplicationCommands(const QList<QAction *> &commands, const std::function<void(QAction *command)> &run);
    /// After anything changed the note.
    void updateTitle();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    EditorPane *m_editor;
    SavingMessage *m_saving = nullptr;
    ChoicePanel *m_choices;
    ObservationToken m_observer;
};

} // namespace quib
