#pragma once

#include <Foundation/NotificationCenter.h>
#include <Store/QBNote.h>

#include <QWidget>

#include <memory>

class NSManagedObjectContext;
class QBTheme;

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

namespace quib {

class EditorPane;

/// A small window for what comes to mind: it opens over whatever is on the screen with an empty note, saves as one
/// types, and closes by Escape; the next time there is another empty note. A note into which nothing was written goes.
/// Owned by the main window; main queue.
class QuickNoteWindow final : public QWidget
{
    Q_OBJECT

public:
    explicit QuickNoteWindow(std::shared_ptr<NSManagedObjectContext> context);
    ~QuickNoteWindow() override;

    /// Shows the window with the keyboard in it. What is being written stays.
    void open();
    [[nodiscard]] EditorPane &editor() { return *m_editor; }
    void loadTheme(const std::shared_ptr<QBTheme> &theme);

Q_SIGNALS:
    /// The user wants to go on in the main window. The note has been saved.
    void openWasRequested(const QString &identifier);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateHint();

    /// Saves what was written, or takes the empty note away. Gives the note's identifier; null where none is left.
    QString finish();

    std::shared_ptr<NSManagedObjectContext> m_context;
    EditorPane *m_editor;
    QLabel *m_hint;
    ObservationToken m_observation;
    Ref<QBNote> m_note;
};

} // namespace quib
