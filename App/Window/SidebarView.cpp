#include "SidebarView.h"

#include "OverlayScrollBar.h"
#include "SpokenItem.h"
#include "Symbols.h"
#include "ThemeColors.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kRowHeight = 30;
constexpr int kCaptionHeight = 38;
constexpr int kMargin = 8;
constexpr int kIndentation = 16;
constexpr int kBranchWidth = 16;
constexpr int kIconSize = 18;
constexpr int kGap = 8;
constexpr double kTextSize = 13;
constexpr double kSmallSize = 11;
/// How much of its colour a thing keeps that is there but of less weight.
constexpr float kFaint = 0.62F;

QColor faded(QColor color, float alpha)
{
    color.setAlphaF(color.alphaF() * alpha);
    return color;
}

} // namespace

// Entries

void SidebarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto *view = static_cast<const SidebarView *>(option.widget);
    const bool isRightToLeft = option.direction == Qt::RightToLeft;
    const auto placed = [&option](const QRect &rect) {
        return QStyle::visualRect(option.direction, option.rect, rect);
    };
    const QColor text = themeColor(u"Sidebar Cell Text Color"_s);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRect row = option.rect;
    if (index.data(SidebarModel::IsSeparatorRole).toBool()) {
        painter->setFont(interfaceFont(kSmallSize, /*isBold=*/true));
        painter->setPen(faded(text, kFaint));
        row.setLeft(isRightToLeft ? row.left() : 2 * kMargin);
        row.setRight(isRightToLeft ? view->viewport()->width() - 2 * kMargin : row.right());
        row.setBottom(row.bottom() - 6);
        painter->drawText(row, int(Qt::AlignBottom) | int(Qt::AlignLeft), index.data().toString());
        painter->restore();
        return;
    }
    // 1. The ground of a selected or hovered entry goes over the whole width.
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isTarget = view->m_dropTarget == index;
    const QRect whole(kMargin, row.top() + 1, view->viewport()->width() - 2 * kMargin, row.height() - 2);
    if (isSelected || isTarget) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(themeColor(isTarget || view->hasFocus()
                                         ? u"Sidebar Cell Selected Background Color"_s
                                         : u"Sidebar Cell Selected Background Inactive Color"_s));
        painter->drawRoundedRect(whole, 6, 6);
    } else if (option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(faded(text, 0.07F));
        painter->drawRoundedRect(whole, 6, 6);
    }
    // 2. The symbol.
    const bool hasNotes = index.data(SidebarModel::HasNotesRole).toBool();
    const QColor ink =
        isSelected ? themeColor(u"Sidebar Cell Selected Text Color"_s) : faded(text, hasNotes ? 1 : kFaint);
    const QColor iconInk = themeColor(isSelected ? u"Sidebar Cell Icon Selected Color"_s
                                      : hasNotes ? u"Sidebar Cell Icon Color"_s
                                                 : u"Sidebar Cell Icon Light Color"_s);
    QString icon = index.data(SidebarModel::IconRole).toString();
    if (!hasSymbol(icon)) {
        icon = u"tag"_s;
    }
    const QRect iconRect(row.left(), row.top() + (row.height() - kIconSize) / 2, kIconSize, kIconSize);
    painter->drawPixmap(placed(iconRect), symbol(icon, iconInk, kIconSize, painter->device()->devicePixelRatio()));
    // 3. The number of notes, at the far end.
    QRect textRect(row.left() + kIconSize + kGap, row.top(), 0, row.height());
    textRect.setRight(row.right() - 2 * kMargin - 2);
    const qint64 count = index.data(SidebarModel::CountRole).toLongLong();
    if (count > 0) {
        const QString number = QLocale().toString(count);
        const QFont font = interfaceFont(kSmallSize);
        painter->setFont(font);
        painter->setPen(isSelected ? ink : faded(text, kFaint));
        const int width = QFontMetrics(font).horizontalAdvance(number);
        QRect numberRect = textRect;
        numberRect.setLeft(textRect.right() - width);
        painter->drawText(placed(numberRect), int(Qt::AlignVCenter) | int(Qt::AlignHCenter) | int(Qt::TextDontClip),
                          number);
        textRect.setRight(numberRect.left() - kGap);
    }
    // 4. The title.
    const QFont font = interfaceFont(kTextSize, isSelected);
    painter->setFont(font);
    painter->setPen(ink);
    const QString title = QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight, textRect.width());
    // The painter turns the side round where it has to.
    painter->drawText(placed(textRect), int(Qt::AlignVCenter) | int(Qt::AlignLeft), title);
    painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex &index) const
{
    return {120, index.data(SidebarModel::IsSeparatorRole).toBool() ? kCaptionHeight : kRowHeight};
}

void SidebarDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                           const QModelIndex & /*index*/) const
{
    const QRect field = option.rect.adjusted(kIconSize + kGap - 6, 1, -kMargin, -1);
    editor->setGeometry(QStyle::visualRect(option.direction, option.rect, field));
}

// The view

SidebarView::SidebarView(QWidget *parent)
    : QTreeView(parent)
{
    setObjectName(u"sidebar"_s);
    setAccessibleName(tr("Lists and tags"));
    setModel(&m_model);
    setItemDelegate(new SidebarDelegate(this));
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setIndentation(kIndentation);
    setRootIsDecorated(true);
    setUniformRowHeights(false);
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(SingleSelection);
    setEditTriggers(EditKeyPressed);
    setDragDropMode(DropOnly);
    setDropIndicatorShown(false);
    setAutoExpandDelay(600);
    setTabKeyNavigation(false);
    new OverlayScrollBar(this);
    setExpandsOnDoubleClick(true);
    header()->setMinimumSectionSize(0);
    header()->setStretchLastSection(true);
    connect(&m_model, &QAbstractItemModel::modelReset, this, &SidebarView::restore);
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex &index) {
        if (!m_isRestoring) {
            m_collapsed.append(index.data(SidebarModel::IdentifierRole).toString());
        }
    });
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex &index) {
        if (!m_isRestoring) {
            m_collapsed.removeAll(index.data(SidebarModel::IdentifierRole).toString());
        }
    });
}

void SidebarView::setManagedObjectContext(const std::shared_ptr<NSManagedObjectContext> &context)
{
    m_model.setManagedObjectContext(context);
    restore();
}

QBSidebarItem::Pointer SidebarView::selectedItem() const
{
    return m_model.item(currentIndex());
}

bool SidebarView::selectIdentifier(const QString &identifier)
{
    const QModelIndex index = m_model.indexOfIdentifier(identifier);
    if (!index.isValid()) {
        return false;
    }
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        expand(above);
    }
    setCurrentIndex(index);
    scrollTo(index);
    return true;
}

QStringList SidebarView::expandedIdentifiers() const
{
    QStringList expanded;
    for (const QString &identifier : m_model.identifiersWithChildren()) {
        if (!m_collapsed.contains(identifier)) {
            expanded.append(identifier);
        }
    }
    return expanded;
}

void SidebarView::setExpandedIdentifiers(const QStringList &identifiers)
{
    m_collapsed.clear();
    for (const QString &identifier : m_model.identifiersWithChildren()) {
        if (!identifiers.contains(identifier)) {
            m_collapsed.append(identifier);
        }
    }
    restore();
}

void SidebarView::restore()
{
    m_isRestoring = true;
    expandAll();
    for (const QString &identifier : m_collapsed) {
        collapse(m_model.indexOfIdentifier(identifier));
    }
    // A list that is gone leaves the notes.
    if (!m_model.indexOfIdentifier(m_selectedIdentifier).isValid() && m_model.rowCount() > 0) {
        m_isRestoring = false;
        const QScopedValueRollback leaving(m_isLeavingGoneList, true);
        setCurrentIndex(m_model.index(0, 0));
        return;
    }
    setCurrentIndex(m_model.indexOfIdentifier(m_selectedIdentifier));
    m_isRestoring = false;
}

void SidebarView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // The toolkit's tree tells assistive programs that the keyboard is at its entry also while it is elsewhere.
    hasFocus() ? QTreeView::currentChanged(current, previous) : QAbstractItemView::currentChanged(current, previous);
    if (m_isRestoring || !current.isValid()) {
        return;
    }
    const QString identifier = current.data(SidebarModel::IdentifierRole).toString();
    if (identifier != m_selectedIdentifier) {
        m_selectedIdentifier = identifier;
        Q_EMIT itemWasSelected(m_model.item(current));
    }
}

void SidebarView::renameSelectedTag()
{
    if (currentIndex().data(SidebarModel::IsTagRole).toBool()) {
        setFocus();
        edit(currentIndex());
    }
}

void SidebarView::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    // The entry draws its own ground, also below the branch.
    QStyleOptionViewItem plain = option;
    plain.palette.setColor(QPalette::Highlight, Qt::transparent);
    QTreeView::drawRow(painter, plain, index);
}

void SidebarView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    if (!m_model.hasChildren(index) || (!index.parent().isValid() && index.row() == 0)) {
        return; // the notes stay open
    }
    const QRect place = layoutDirection() == Qt::RightToLeft
                            ? QRect(rect.left(), rect.top(), kBranchWidth, rect.height())
                            : QRect(rect.right() - kBranchWidth + 1, rect.top(), kBranchWidth, rect.height());
    constexpr int kSize = 12;
    QColor color = themeColor(u"Sidebar Cell Text Color"_s);
    color.setAlphaF(color.alphaF() * kFaint);
    const QPixmap chevron = symbol(isExpanded(index) ? u"chevron-open"_s : u"chevron"_s, color, kSize,
                                   painter->device()->devicePixelRatio());
    painter->save();
    painter->translate(place.center() + QPoint(1, 1));
    if (layoutDirection() == Qt::RightToLeft) {
        painter->scale(-1, 1);
    }
    painter->drawPixmap(-kSize / 2, -kSize / 2, chevron);
    painter->restore();
}

void SidebarView::contextMenuEvent(QContextMenuEvent *event)
{
    QModelIndex index = currentIndex();
    QPoint position = viewport()->mapToGlobal(visualRect(index).center());
    if (event->reason() == QContextMenuEvent::Mouse) {
        index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
        position = event->globalPos();
    }
    if (m_model.flags(index).testFlag(Qt::ItemIsSelectable)) {
        Q_EMIT contextMenuWasRequested(m_model.item(index), position);
    }
}

void SidebarView::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    tellCurrentItem(*this);
}

void SidebarView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // The field of a name leaves the key that ends it to the view.
        if (state() != EditingState) {
            Q_EMIT leaveToNotes();
        }
        return;
    }
    QTreeView::keyPressEvent(event);
}

void SidebarView::mouseMoveEvent(QMouseEvent *event)
{
    QTreeView::mouseMoveEvent(event);
    viewport()->update();
}

// Notes dragged onto entries

QModelIndex SidebarView::dropTarget(const QPoint &position, const QMimeData *mimeData) const
{
    const QModelIndex index = indexAt(position);
    return m_model.canDropMimeData(mimeData, Qt::CopyAction, -1, -1, index) ? index : QModelIndex();
}

void SidebarView::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeView::dragMoveEvent(event); // scrolls, and opens what is pointed at
    m_dropTarget = dropTarget(event->position().toPoint(), event->mimeData());
    event->setAccepted(m_dropTarget.isValid());
    viewport()->update();
}

void SidebarView::dragLeaveEvent(QDragLeaveEvent *event)
{
    QTreeView::dragLeaveEvent(event);
    m_dropTarget = QModelIndex();
    viewport()->update();
}

void SidebarView::dropEvent(QDropEvent *event)
{
    const QModelIndex target = dropTarget(event->position().toPoint(), event->mimeData());
    m_dropTarget = QModelIndex();
    if (target.isValid() && m_model.dropMimeData(event->mimeData(), event->dropAction(), -1, -1, target)) {
        event->acceptProposedAction();
    }
    setState(NoState);
    viewport()->update();
}

} // namespace quib
