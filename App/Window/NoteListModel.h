#pragma once

#include <Search/Lists/QBNotesTableViewController.h>

#include <QAbstractListModel>

namespace quib {

/// The rows of the note list for a view. The list's logic knows its new state before it tells the steps to it; the
/// model counts along, so that the view sees each step. Owned by the list's view; main queue.
class NoteListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// The logic outlives the model, or is taken from it by null.
    void setController(QBNotesTableViewController *controller) { m_controller = controller; }
    [[nodiscard]] QBNotesTableViewController *controller() const { return m_controller; }
    [[nodiscard]] Ref<QBNote> note(const QModelIndex &index) const;
    /// The short age of the note, and its marks in words.
    [[nodiscard]] static QString ageInRow(const NSAttributedString &info);

    void reload();
    void insertRowAt(qint64 row);
    void removeRowAt(qint64 row);
    void moveRowTo(qint64 row, qint64 toRow);
    void redraw(const QList<qint64> &rows);
    void redrawAll();

    // QAbstractItemModel
    [[nodiscard]] QModelIndex index(int row, int column = 0, const QModelIndex &parent = {}) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

private:
    QBNotesTableViewController *m_controller = nullptr;
    int m_count = 0;
};

} // namespace quib
