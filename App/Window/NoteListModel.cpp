#include "NoteListModel.h"

#include "SidebarModel.h"

#include <Store/QBNote.h>

#include <QMimeData>

using namespace Qt::StringLiterals;

namespace quib {

Ref<QBNote> NoteListModel::note(const QModelIndex &index) const
{
    const Ref<NSManagedObject> object =
        m_controller != nullptr && index.isValid() ? m_controller->noteAtRow(index.row()) : nullptr;
    return object ? object.as<QBNote>() : nullptr;
}

QString NoteListModel::ageInRow(const NSAttributedString &info)
{
    const QStringView text = info.string();
    const qsizetype lineEnd = text.indexOf(u'\n');
    return text.first(lineEnd < 0 ? text.size() : lineEnd).trimmed().toString();
}

void NoteListModel::reload()
{
    beginResetModel();
    m_count = m_controller != nullptr ? static_cast<int>(m_controller->numberOfRows()) : 0;
    endResetModel();
}

void NoteListModel::insertRowAt(qint64 row)
{
    beginInsertRows({}, int(row), int(row));
    ++m_count;
    endInsertRows();
}

void NoteListModel::removeRowAt(qint64 row)
{
    beginRemoveRows({}, int(row), int(row));
    --m_count;
    endRemoveRows();
}

void NoteListModel::moveRowTo(qint64 row, qint64 toRow)
{
    if (row == toRow) {
        return;
    }
    // The view's place counts with the row still in its old one.
    const int before = int(toRow > row ? toRow + 1 : toRow);
    if (beginMoveRows({}, int(row), int(row), {}, before)) {
        endMoveRows();
    }
}

void NoteListModel::redraw(const QList<qint64> &rows)
{
    for (const qint64 row : rows) {
        Q_EMIT dataChanged(index(int(row)), index(int(row)));
    }
}

void NoteListModel::redrawAll()
{
    if (m_count > 0) {
        Q_EMIT dataChanged(index(0), index(m_count - 1));
    }
}

QModelIndex NoteListModel::index(int row, int column, const QModelIndex &parent) const
{
    // OPTIMIZATION: a view makes the index of each row of a list, however long, when it places them.
    const bool isThere = row >= 0 && row < m_count && column == 0 && !parent.isValid();
    return isThere ? createIndex(row, column) : QModelIndex();
}

int NoteListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant NoteListModel::data(const QModelIndex &index, int role) const
{
    const Ref<QBNote> of = role == Qt::DisplayRole || role == Qt::AccessibleTextRole ? note(index) : nullptr;
    if (!of) {
        return {};
    }
    const QString title = of->title().isEmpty() ? tr("Untitled note") : of->title();
    if (role == Qt::DisplayRole) {
        return title;
    }
    QStringList words{title, of->subtitle(), ageInRow(m_controller->infoAttributedStringForRow(index.row()))};
    if (of->isPinned()) {
        words.append(tr("pinned"));
    }
    if (of->hasConflictedNotes()) {
        words.append(tr("in conflict with another version"));
    }
    if (const int all = of->todoCompleted() + of->todoIncompleted(); all > 0) {
        words.append(tr("%1 of %2 done").arg(of->todoCompleted()).arg(all));
    }
    words.removeAll(QString());
    return words.join(u", "_s);
}

Qt::ItemFlags NoteListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QStringList NoteListModel::mimeTypes() const
{
    return {QString(SidebarModel::kNotesMimeType), u"text/plain"_s};
}

QMimeData *NoteListModel::mimeData(const QModelIndexList &indexes) const
{
    QStringList identifiers;
    QStringList texts;
    for (const QModelIndex &index : indexes) {
        if (const Ref<QBNote> of = note(index)) {
            identifiers.append(of->uniqueIdentifier());
            texts.append(of->text());
        }
    }
    auto *data = new QMimeData;
    data->setData(SidebarModel::kNotesMimeType, identifiers.join(u'\n').toUtf8());
    data->setText(texts.join(u"\n\n"_s));
    return data;
}

} // namespace quib
