#pragma once

#include <Foundation/NotificationCenter.h>
#include <Store/QBNote.h>

#include <QMainWindow>

namespace quib {

class ChoicePanel;
class EditorPane;

/// One note in a window of its own, with the pane's commands and a palette of them. It closes when its note is deleted
/// for good. Deletes itself when closed; main queue.
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
    /// After anything changed the note.
    void updateTitle();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    EditorPane *m_editor;
    ChoicePanel *m_choices;
    ObservationToken m_observer;
};

} // namespace quib
