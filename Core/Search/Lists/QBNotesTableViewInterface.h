#pragma once

#include <Store/QBNote.h>

#include <QList>
#include <QString>

#include <functional>

class QBNotesTableViewController;

/// A question before something that cannot be undone.
struct QBNotesTableQuestion
{
    QString message;
    /// What it is about.
    QList<quib::Ref<QBNote>> notes;
    /// The option not to be asked again, and the setting that remembers it; empty where it is always asked.
    QString suppressionText;
    QString suppressionKey;
};

/// What the note list asks of the window that shows it. Implemented by the window, which also owns the list's logic.
/// Called on the main queue.
class QBNotesTableViewInterface
{
public:
    virtual ~QBNotesTableViewInterface() = default;

    // Rows. Between beginUpdates and endUpdates each row is named by its place after all changes before; a moved row's
    // new place counts after it was taken out.

    virtual void reloadData() = 0;
    virtual void beginUpdates() = 0;
    virtual void insertRow(qint64 row) = 0;
    virtual void removeRow(qint64 row) = 0;
    virtual void moveRow(qint64 row, qint64 toRow) = 0;
    virtual void endUpdates() = 0;
    /// Draws rows anew, where they stand. Outside of updates.
    virtual void reloadRows(const QList<qint64> &rows) = 0;

    // Selection and place

    /// Ascending.
    [[nodiscard]] virtual QList<qint64> selectedRows() const = 0;
    virtual void selectRows(const QList<qint64> &rows) = 0;
    /// Units: points from the top.
    [[nodiscard]] virtual double scrollPosition() const = 0;
    virtual void setScrollPosition(double position) = 0;
    /// The selected notes are in the list no more, and nobody chose others. Outside of updates; what leaves during
    /// updates is known by its rows.
    virtual void selectedNotesDidLeave() = 0;

    // Search field

    /// Shows a text in the field without telling of a change.
    virtual void setSearchFieldString(const QString &string) = 0;
    virtual void focusSearchField() = 0;

    /// Asks the user, and answers at once or later, once: whether to go on, and whether not to be asked again.
    using Answer = std::function<void(bool isConfirmed, bool isSuppressed)>;
    virtual void ask(const QBNotesTableQuestion &question, const Answer &answer) = 0;
};

/// Who is told of what happens in the note list.
class QBNotesTableViewControllerDelegate
{
public:
    virtual ~QBNotesTableViewControllerDelegate() = default;
    /// After each change of the search field was answered.
    virtual void notesTableViewController(QBNotesTableViewController &controller, const QString &didPerformSearch) = 0;
};
