#pragma once

#include "SidebarModel.h"

#include <QStyledItemDelegate>
#include <QTreeView>

namespace quib {

/// Draws an entry of the sidebar: symbol, title, number of notes.
class SidebarDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
};

/// The sidebar: the fixed lists and the tree of tags, one of them selected. What is open and selected is known by
/// identifiers, so that it survives the tree being made anew, and the next start. Owned by the main window; main queue.
class SidebarView final : public QTreeView
{
    Q_OBJECT

public:
    explicit SidebarView(QWidget *parent = nullptr);

    [[nodiscard]] SidebarModel &sidebarModel() { return m_model; }
    void setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &context);

    /// Null before there is a store.
    [[nodiscard]] QBSidebarItem::Pointer selectedItem() const;
    /// While it tells of another selected item: whether nobody chose that, but the one before is there no more.
    [[nodiscard]] bool isLeavingGoneList() const { return m_isLeavingGoneList; }
    /// Opens what is above the item, and selects it. Errors: false for an identifier that no item has.
    bool selectIdentifier(const QString &identifier);
    [[nodiscard]] QString selectedIdentifier() const { return m_selectedIdentifier; }

    [[nodiscard]] QStringList expandedIdentifiers() const;
    void setExpandedIdentifiers(const QStringList &identifiers);

    /// Lets the user write another name for the selected tag, in its place.
    void renameSelectedTag();

Q_SIGNALS:
    void itemWasSelected(const QBSidebarItem::Pointer &item);
    void contextMenuWasRequested(const QBSidebarItem::Pointer &item, const QPoint &globalPosition);
    /// Return, or a key that leads to the notes.
    void leaveToNotes();

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void restore();
    [[nodiscard]] QModelIndex dropTarget(const QPoint &position, const QMimeData *mimeData) const;

    friend class SidebarDelegate;

    SidebarModel m_model;
    QString m_selectedIdentifier;
    /// What the user closed; all else is open.
    QStringList m_collapsed;
    QPersistentModelIndex m_dropTarget;
    bool m_isRestoring = false;
    bool m_isLeavingGoneList = false;
};

} // namespace quib
