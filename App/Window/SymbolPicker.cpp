#include "SymbolPicker.h"

#include "Symbols.h"
#include "ThemeColors.h"

#include <Search/Lists/TagIcons.h>

#include <QGuiApplication>
#include <QHash>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kCell = 38;
constexpr int kColumns = 8;
constexpr int kIconSize = 20;
constexpr int kSymbolRole = Qt::UserRole + 1;

/// A symbol in the middle of its cell.
class SymbolDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const QRect cell = QRect(option.rect.topLeft(), QSize(kCell, kCell)).adjusted(2, 2, -2, -2);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (isSelected || option.state.testFlag(QStyle::State_MouseOver)) {
            QColor ground =
                themeColor(isSelected ? u"Style Editor Selected Background Color"_s : u"Panel Text Color"_s);
            if (!isSelected) {
                ground.setAlphaF(0.08F);
            }
            painter->setPen(Qt::NoPen);
            painter->setBrush(ground);
            painter->drawRoundedRect(cell, 7, 7);
        }
        const QColor ink = themeColor(isSelected ? u"Style Editor Selected Icon Color"_s : u"Panel Text Color"_s);
        const QPoint place = cell.center() - QPoint(kIconSize / 2 - 1, kIconSize / 2 - 1);
        painter->drawPixmap(
            place, symbol(index.data(kSymbolRole).toString(), ink, kIconSize, painter->device()->devicePixelRatio()));
        painter->restore();
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const override
    {
        return {kCell, kCell};
    }
};

} // namespace

SymbolPicker::SymbolPicker(const QString &chosen, const QString &shown, QWidget *parent)
    : QFrame(parent, Qt::Popup)
    , m_list(new QListView(this))
{
    setObjectName(u"symbolPicker"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(tr("Symbol of the tag"));
    auto *model = new QStandardItemModel(this);
    for (const QString &name : tagIconNames()) {
        auto *item = new QStandardItem;
        item->setData(name, kSymbolRole);
        item->setAccessibleText(nameOfSymbol(name));
        item->setToolTip(nameOfSymbol(name));
        model->appendRow(item);
    }
    m_list->setAccessibleName(tr("Symbols"));
    m_list->setModel(model);
    m_list->setViewMode(QListView::IconMode);
    m_list->setMovement(QListView::Static);
    m_list->setUniformItemSizes(true);
    m_list->setGridSize({kCell, kCell});
    m_list->setItemDelegate(new SymbolDelegate(m_list));
    m_list->setMouseTracking(true);
    m_list->setFrameShape(NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int rows = (model->rowCount() + kColumns - 1) / kColumns;
    m_list->setFixedSize(kColumns * kCell + 4, rows * kCell + 4);
    auto *automatic = new QPushButton(tr("By the Tag’s Name"), this);
    automatic->setEnabled(!chosen.isEmpty());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(8);
    layout->addWidget(m_list);
    layout->addWidget(automatic);
    const QModelIndexList found = model->match(model->index(0, 0), kSymbolRole, shown, 1, Qt::MatchExactly);
    m_list->setCurrentIndex(found.isEmpty() ? model->index(0, 0) : found.constFirst());
    connect(m_list, &QListView::clicked, this,
            [this](const QModelIndex &index) { choose(index.data(kSymbolRole).toString()); });
    connect(automatic, &QPushButton::clicked, this, [this] { choose({}); });
}

void SymbolPicker::open(const QPoint &globalPosition)
{
    adjustSize();
    QPoint place = globalPosition + QPoint(0, 4);
    const QScreen *on = QGuiApplication::screenAt(globalPosition);
    if (on != nullptr) {
        const QRect room = on->availableGeometry();
        if (place.y() + height() > room.bottom()) {
            place.setY(globalPosition.y() - height() - 34);
        }
        place.setX(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - width())));
        place.setY(std::max(place.y(), room.top()));
    }
    move(place);
    show();
    m_list->setFocus();
}

void SymbolPicker::choose(const QString &symbol)
{
    Q_EMIT symbolWasChosen(symbol);
    close();
}

void SymbolPicker::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space) {
        if (m_list->hasFocus()) {
            choose(m_list->currentIndex().data(kSymbolRole).toString());
            return;
        }
    }
    QFrame::keyPressEvent(event); // Escape closes a popup
}

QString SymbolPicker::nameOfSymbol(const QString &symbol)
{
    const QHash<QString, QString> names{
        {u"tag"_s, tr("Tag")},
        {u"tag-animal"_s, tr("Animal")},
        {u"tag-art"_s, tr("Art")},
        {u"tag-book"_s, tr("Book")},
        {u"tag-bug"_s, tr("Bug")},
        {u"tag-calendar"_s, tr("Calendar")},
        {u"tag-car"_s, tr("Car")},
        {u"tag-code"_s, tr("Code")},
        {u"tag-film"_s, tr("Film")},
        {u"tag-food"_s, tr("Food")},
        {u"tag-game"_s, tr("Game")},
        {u"tag-gift"_s, tr("Gift")},
        {u"tag-health"_s, tr("Health")},
        {u"tag-home"_s, tr("Home")},
        {u"tag-idea"_s, tr("Idea")},
        {u"tag-journal"_s, tr("Journal")},
        {u"tag-link"_s, tr("Link")},
        {u"tag-money"_s, tr("Money")},
        {u"tag-music"_s, tr("Music")},
        {u"tag-people"_s, tr("People")},
        {u"tag-photo"_s, tr("Photo")},
        {u"tag-plant"_s, tr("Plant")},
        {u"tag-project"_s, tr("Project")},
        {u"tag-school"_s, tr("School")},
        {u"tag-science"_s, tr("Science")},
        {u"tag-shopping"_s, tr("Shopping")},
        {u"tag-sport"_s, tr("Sport")},
        {u"tag-todo"_s, tr("To-do")},
        {u"tag-travel"_s, tr("Travel")},
        {u"tag-work"_s, tr("Work")},
        {u"tag-writing"_s, tr("Writing")},
    };
    return names.value(symbol, symbol);
}

} // namespace quib
