#pragma once

#include "NoteTextFinder.h"

#include <QBasicTimer>
#include <QList>
#include <QWidget>

class QBNoteTextView;

QT_BEGIN_NAMESPACE
class QKeySequence;
class QLabel;
class QLineEdit;
class QToolButton;
QT_END_NAMESPACE

namespace quib {

/// The bar above a note in which a text is looked for and replaced: it marks all places, counts them, and goes from one
/// to the next. Owned by the editor's pane, whose view outlives it; main queue.
class FindBar final : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(QBNoteTextView &view, QWidget *parent = nullptr);

    /// Shows the bar, with the selected text to be looked for, and gives it the keyboard.
    void open(bool withReplacing);
    /// Hides the bar and its marks; the keyboard goes back to the text.
    void close();
    void findNext();
    void findPrevious();
    void replaceCurrent();
    void replaceAll();

    [[nodiscard]] QLineEdit &findField() { return *m_find; }
    [[nodiscard]] QLineEdit &replaceField() { return *m_replace; }
    /// Where Tab leaves the bar.
    [[nodiscard]] QToolButton &lastButton() { return *m_done; }
    void setOptions(const FindOptions &options);
    [[nodiscard]] FindOptions options() const;
    /// "2 of 5", or what is wrong with a pattern.
    [[nodiscard]] QString status() const;
    /// The text under the bar is another one.
    void noteDidChange();

Q_SIGNALS:
    void didClose();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QLineEdit *makeField(const QString &name, const QString &placeholder, const QString &accessibleName);
    /// The keys are only named: somebody else takes them.
    [[nodiscard]] QToolButton *makeButton(const QString &name, const QString &text, const QKeySequence &keys);
    [[nodiscard]] QToolButton *makeOption(const QString &name, const QString &text, const QKeySequence &keys);
    void placeStatus();
    void say(const QString &status);
    /// Looks again; the current place is the first one at or behind a location.
    void update(qint64 location, bool showsCurrent);
    /// In all of the text, what is folded too; there a fold stands for what is found in it.
    void findMatches();
    /// Opens the folds in a range. False where there is nothing to open.
    bool openFolds(NSRange match);
    void goTo(qsizetype index);
    void showStatus();
    void textDidChange();

    QBNoteTextView &m_view;
    QLineEdit *m_find = nullptr;
    QLineEdit *m_replace = nullptr;
    QLabel *m_status = nullptr;
    QToolButton *m_matchCase = nullptr;
    QToolButton *m_wholeWords = nullptr;
    QToolButton *m_pattern = nullptr;
    QToolButton *m_done = nullptr;
    QWidget *m_replaceButtons = nullptr;
    NoteTextFinder m_finder;
    QList<NSRange> m_matches;
    qsizetype m_current = -1;
    qint64 m_startLocation = 0; ///< where the caret was when the bar was opened
    bool m_isEditing = false;   ///< the text, by itself
    QBasicTimer m_updating;
};

} // namespace quib
