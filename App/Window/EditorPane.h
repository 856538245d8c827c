#pragma once

#include <Editor/QBNoteEditorViewController.h>

#include <QStackedWidget>

#include <memory>

class QBTheme;

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace quib {

class DesktopPasteboard;
class EmptyState;

/// The column of the editor: the pane that shows one note, or what stands in for it. Owned by its window; main queue.
class EditorPane final : public QStackedWidget
{
    Q_OBJECT

public:
    explicit EditorPane(QWidget *parent = nullptr);

    /// Saves the note that was shown and shows another, or none.
    void setNote(const Ref<QBNote> &note);
    [[nodiscard]] const Ref<QBNote> &note() const { return m_editor->note(); }
    /// Writes what was typed into the note and saves the store; with forceSave also where nothing seems changed.
    void saveNote(bool forceSave) { m_editor->saveNote(forceSave); }

    void loadTheme(const std::shared_ptr<QBTheme> &theme);
    void focusEditor();
    void moveToEnd() { m_editor->moveToEnd(); }
    /// Shows a header's line, or an attachment.
    void scrollTo(const QString &header, const QString &orAttachment) { m_editor->scrollTo(header, orAttachment); }
    /// What the note list is searched for stands out in the text.
    void setSearchString(const QString &search) { m_editor->setSearchString(search); }

    /// The pane's command of that name; null for a name that there is none of.
    [[nodiscard]] QAction *action(const QString &name) const { return m_editor->action(name); }
    [[nodiscard]] QBNoteEditorViewController &editor() { return *m_editor; }
    [[nodiscard]] QBNoteTextView &textView() { return m_editor->textView(); }
    [[nodiscard]] EmptyState &emptyState() { return *m_empty; }

Q_SIGNALS:
    void urlWasOpened(const QUrl &url);
    /// A note that links here was chosen.
    void noteWasChosen(const QString &identifier);
    /// A file could not be taken into the note.
    void attachingFailed(const QString &fileName);
    /// A copy of an attachment could not be written.
    void savingFailed(const QString &fileName);

private:
    void updateShown();

    std::shared_ptr<DesktopPasteboard> m_pasteboard;
    QBNoteEditorViewController *m_editor;
    EmptyState *m_empty;
};

} // namespace quib
