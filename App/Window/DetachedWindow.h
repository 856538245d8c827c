#pragma once

#include <Foundation/NotificationCenter.h>
#include <Store/QBNote.h>

#include <QMainWindow>

namespace quib {

class EditorPane;

/// One note in a window of its own. It closes when its note is deleted for good. Deletes itself when closed; main
/// queue.
class DetachedWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// floating: the window stays above others.
    DetachedWindow(const Ref<QBNote> &note, bool floating);
    ~DetachedWindow() override;

    [[nodiscard]] EditorPane &editor() { return *m_editor; }
    /// After anything changed the note.
    void updateTitle();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    EditorPane *m_editor;
    ObservationToken m_observer;
};

} // namespace quib
