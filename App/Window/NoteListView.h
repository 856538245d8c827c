#pragma once

#include "NoteListModel.h"

#include <Graphics/NSFont.h>
#include <Search/Lists/QBNotesTableViewInterface.h>

#include <QListView>
#include <QTimer>

#include <functional>
#include <memory>

namespace quib {

class NoteRowDelegate;
class ScriptFonts;

/// The list of notes: the view that the list's logic drives, with the keyboard of a list. Selection is told once a turn
/// of the event loop, however often it changed within. Owned by the main window; main queue.
class NoteListView final : public QListView, public QBNotesTableViewInterface
{
    Q_OBJECT

public:
    explicit NoteListView(QWidget *parent = nullptr);
    ~NoteListView() override;

    [[nodiscard]] NoteListModel &noteListModel() { return m_model; }
    void setController(QBNotesTableViewController *controller);

    /// What the window does for the list.
    struct Host
    {
        std::function<void(const QString &text)> setSearchFieldString;
        std::function<void()> focusSearchField;
        std::function<void(const QBNotesTableQuestion &question, const QBNotesTableViewInterface::Answer &answer)> ask;
        /// Whether the note that takes the place of the selected one, which left the list, is looked at next.
        std::function<bool()> looksAtNeighbour;
    };
    void setHost(Host host) { m_host = std::move(host); }

    void setSelectsFirstRowWhenBecomesFirstResponder(bool selects) { m_selectsFirstRow = selects; }
    /// Selects the note's row alone and shows it. Errors: false when the list does not have the note.
    bool selectNote(const QBNote &note);
    /// Whether what was selected left the list and nobody has chosen since: the note stays open where it was.
    [[nodiscard]] bool hasLostSelection() const { return m_hasLostSelection; }
    void forgetLostSelection() { m_hasLostSelection = false; }
    /// The row that has the keyboard; null for none.
    [[nodiscard]] Ref<QBNote> currentNote() const;
    /// What an empty list says.
    void setEmptyText(const QString &text);

    // QBNotesTableViewInterface
    void reloadData() override;
    void beginUpdates() override;
    void insertRow(qint64 row) override;
    void removeRow(qint64 row) override;
    void moveRow(qint64 row, qint64 toRow) override;
    void endUpdates() override;
    void reloadRows(const QList<qint64> &rows) override;
    [[nodiscard]] QList<qint64> selectedRows() const override;
    void selectRows(const QList<qint64> &rows) override;
    [[nodiscard]] double scrollPosition() const override;
    void setScrollPosition(double position) override;
    void selectedNotesDidLeave() override;
    void setSearchFieldString(const QString &string) override;
    void focusSearchField() override;
    void ask(const QBNotesTableQuestion &question, const Answer &answer) override;

Q_SIGNALS:
    void selectionDidChange();
    void selectionWasLost();
    /// Rows came, went or moved, and are those of the list again.
    void rowsDidChange();
    /// The user began to write while the list had the keyboard.
    void textWasTyped(const QString &text);
    void openWasRequested();
    void openInWindowWasRequested();
    void leaveToSidebar();
    void contextMenuWasRequested(const QPoint &globalPosition);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void selectionMayHaveChanged();
    /// Those that notes' titles and texts are in.
    [[nodiscard]] QList<NSFont> fontsInUse() const;

    NoteListModel m_model;
    NoteRowDelegate *m_delegate;
    std::unique_ptr<ScriptFonts> m_scriptFonts;
    Host m_host;
    QTimer m_selectionTelling;
    QTimer m_aging;
    QString m_emptyText;
    bool m_selectsFirstRow = false;
    /// Where a selected row went during the updates being told; -1 for none.
    qint64 m_removedRow = -1;
    bool m_hasLostSelection = false;
};

} // namespace quib
