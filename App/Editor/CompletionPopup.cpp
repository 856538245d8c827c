#include "CompletionPopup.h"

#include "EditorSymbol.h"

#include <QAccessible>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kMostRows = 8;
constexpr int kLeastWidth = 180;
constexpr int kMostWidth = 380;
constexpr int kGap = 4;
constexpr int kMargin = 4;
constexpr int kRowMargin = 6;
constexpr int kIconSize = 16;
constexpr int kRadius = 5;
/// Holds what was typed of an entry.
constexpr int kTypedRole = Qt::UserRole;

/// Draws an entry: its symbol, and its title with what was typed of it in bold.
class CompletionRow final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QFontMetrics metrics(boldFont(option.font));
        return {metrics.horizontalAdvance(index.data().toString()) + kIconSize + 4 * kRowMargin,
                metrics.height() + 2 * kRowMargin};
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isChosen = (option.state & QStyle::State_Selected) != 0;
        const bool isRightToLeft = option.direction == Qt::RightToLeft;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (isChosen) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(option.palette.highlight());
            painter->drawRoundedRect(option.rect, kRadius, kRadius);
        }
        QRect room = option.rect.adjusted(kRowMargin, 0, -kRowMargin, 0);
        QRect symbol(0, 0, kIconSize, kIconSize);
        symbol.moveCenter(room.center());
        symbol.moveLeft(isRightToLeft ? room.right() - kIconSize + 1 : room.left());
        // The symbol is drawn in the colour of buttons; on the highlight it takes that of the text.
        const QPixmap picture = qvariant_cast<QIcon>(index.data(Qt::DecorationRole))
                                    .pixmap(symbol.size() * painter->device()->devicePixelRatioF());
        painter->setOpacity(isChosen ? 1 : 0.7);
        painter->drawPixmap(symbol, isChosen ? tinted(picture, option.palette.highlightedText().color()) : picture);
        painter->setOpacity(1);
        const int indent = kIconSize + kRowMargin;
        room.adjust(isRightToLeft ? 0 : indent, 0, isRightToLeft ? -indent : 0, 0);
        painter->setPen(option.palette.color(isChosen ? QPalette::HighlightedText : QPalette::Text));
        drawTitle(*painter, room, option, index);
        painter->restore();
    }

private:
    [[nodiscard]] static QFont boldFont(QFont font)
    {
        font.setBold(true);
        return font;
    }
    [[nodiscard]] static QPixmap tinted(QPixmap picture, const QColor &color)
    {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), color);
        return picture;
    }
    static void drawTitle(QPainter &painter, const QRect &room, const QStyleOptionViewItem &option,
                          const QModelIndex &index)
    {
        const QString title = index.data().toString();
        const QString typed = index.data(kTypedRole).toString();
        const qsizetype found = typed.isEmpty() ? -1 : title.indexOf(typed, 0, Qt::CaseInsensitive);
        const QFontMetrics plain(option.font);
        const bool isWhole = plain.horizontalAdvance(title) + typed.size() <= room.width();
        if (found < 0 || !isWhole || option.direction == Qt::RightToLeft || title.isRightToLeft()) {
            painter.setFont(option.font);
            painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                             plain.elidedText(title, Qt::ElideMiddle, room.width()));
            return;
        }
        QRect rest = room;
        const auto draw = [&](const QString &part, const QFont &font) {
            painter.setFont(font);
            painter.drawText(rest, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, part);
            rest.setLeft(rest.left() + QFontMetrics(font).horizontalAdvance(part));
        };
        draw(title.left(found), option.font);
        draw(title.mid(found, typed.size()), boldFont(option.font));
        draw(title.mid(found + typed.size()), option.font);
    }
};

} // namespace

CompletionPopup::CompletionPopup(QWidget *parent)
    : QListWidget(parent)
{
    setObjectName(u"completions"_s);
    setAccessibleName(tr("Completions"));
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setItemDelegate(new CompletionRow(this));
    setMouseTracking(true);
    setStyleSheet(u"#completions { background: palette(window); border: 1px solid palette(mid); border-radius: 8px; "
                  "padding: %1px; }"_s.arg(kMargin));
    connect(this, &QListWidget::itemClicked, this, &CompletionPopup::itemWasChosen);
    connect(this, &QListWidget::itemEntered, this, [this](QListWidgetItem *item) { setCurrentItem(item); });
    connect(this, &QListWidget::currentRowChanged, this, &CompletionPopup::tellOfChoice);
    hide();
}

void CompletionPopup::open(const QBEditorAutoCompleteItemsProvider::Items &items, const QString &symbol,
                           const QString &typed, const QRect &caret)
{
    m_items = items;
    m_typed = typed;
    clear();
    if (items.isEmpty()) {
        hide();
        return;
    }
    const QIcon icon = editorSymbol(symbol);
    for (const auto &item : items) {
        auto *row = new QListWidgetItem(icon, item->autoCompleteItemTitle(), this);
        row->setData(kTypedRole, typed);
    }
    const int rows = static_cast<int>(std::min<qsizetype>(items.size(), kMostRows));
    const int border = 2 * (kMargin + 1);
    const int height = sizeHintForRow(0) * rows + border;
    const int wanted = sizeHintForColumn(0) + verticalScrollBar()->sizeHint().width() + border;
    const QRect room = parentWidget()->rect();
    const int width = std::min(std::clamp(wanted, kLeastWidth, kMostWidth), room.width());
    const bool isBelow = caret.bottom() + kGap + height <= room.bottom() || caret.top() - room.top() < height + kGap;
    const int left = isRightToLeft() ? caret.right() - width : caret.left();
    setGeometry(std::clamp(left, room.left(), std::max(room.left(), room.right() - width)),
                isBelow ? caret.bottom() + kGap : caret.top() - kGap - height, width, height);
    show();
    raise();
    setCurrentRow(0);
}

void CompletionPopup::tellOfChoice()
{
    // Who asks for a row while nobody listens keeps it when the list has others.
    if (!isVisible() || currentRow() < 0 || !QAccessible::isActive()) {
        return;
    }
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(currentRow());
    QAccessible::updateAccessibility(&event);
}

void CompletionPopup::close()
{
    hide();
    m_items.clear();
    clear();
}

QBEditorAutoCompleteItem::Ref CompletionPopup::chosenItem() const
{
    return m_items.value(currentRow());
}

bool CompletionPopup::isTypedWhole() const
{
    return isOpen() && currentRow() == 0 && std::any_of(m_items.cbegin(), m_items.cend(), [this](const auto &item) {
               return item->autoCompleteItemTitle() == m_typed;
           });
}

bool CompletionPopup::keyPress(int key, Qt::KeyboardModifiers modifiers)
{
    if (!isOpen() || (modifiers & ~Qt::KeypadModifier) != 0) {
        return false;
    }
    const auto move = [this](int rows) {
        setCurrentRow(std::clamp(currentRow() + rows, 0, count() - 1));
        return true;
    };
    switch (key) {
    case Qt::Key_Up:
        return move(currentRow() == 0 ? count() - 1 : -1);
    case Qt::Key_Down:
        return move(currentRow() == count() - 1 ? 1 - count() : 1);
    case Qt::Key_PageUp:
        return move(-kMostRows);
    case Qt::Key_PageDown:
        return move(kMostRows);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        Q_EMIT itemWasChosen();
        return true;
    case Qt::Key_Escape:
        Q_EMIT wasDismissed();
        close();
        return true;
    default:
        return false;
    }
}

} // namespace quib
