#pragma once

#include <Editor/QBNoteTextView.h>
#include <Editor/QBNoteTextViewDelegate.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Store/QBNote.h>

#include <QStackedWidget>
#include <QTimer>

namespace quib {

class EmptyState;

/// The column of the editor: one note's text, or what stands in for it. Typed text reaches the note two seconds after
/// the first key that is not saved yet, and at once where the note or the keyboard goes elsewhere. Owned by its window;
/// main queue.
class EditorPane final : public QStackedWidget, private QBNoteTextViewDelegate
{
    Q_OBJECT

public:
    explicit EditorPane(QWidget *parent = nullptr);
    ~EditorPane() override;

    /// Saves the note that was shown and shows another, or none.
    void setNote(const Ref<QBNote> &note);
    [[nodiscard]] const Ref<QBNote> &note() const { return m_note; }
    /// Writes what was typed into the note and saves the store; with forceSave also where nothing seems changed.
    void saveNote(bool forceSave);

    void loadTheme(const std::shared_ptr<QBTheme> &theme);
    void focusEditor();
    void moveToEnd();
    /// Shows a header's line, or an attachment.
    void scrollTo(const QString &header, const QString &orAttachment);
    /// What the note list is searched for stands out in the text.
    void setSearchString(const QString &search);

    [[nodiscard]] QBNoteTextView &textView() { return *m_view; }
    [[nodiscard]] EmptyState &emptyState() { return *m_empty; }

Q_SIGNALS:
    void urlWasOpened(const QUrl &url);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // QBNoteTextViewDelegate
    void qbNoteTextViewDidChangeText(QBNoteTextView &view) override;
    void qbNoteTextViewDidClickAttachment(QBNoteTextView &view, const std::shared_ptr<NSTextAttachment> &attachment,
                                          qint64 location) override;
    void qbNoteTextViewDidOpenURL(QBNoteTextView &view, const QUrl &url) override;

    void textMayHaveChanged();
    void highlightSearch();

    QBNoteTextKitStack m_stack;
    QBNoteTextView *m_view;
    EmptyState *m_empty;
    Ref<QBNote> m_note;
    QTimer m_saving;
    QString m_search;
    bool m_isChanged = false;
};

} // namespace quib
