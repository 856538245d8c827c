#include "ChoicePanel.h"

#include "PanelShadow.h"
#include "Symbols.h"
#include "ThemeColors.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

// Units: points.
constexpr int kWidth = 560;
constexpr int kRowHeight = 36;
constexpr int kMostRows = 10;
constexpr int kTopMargin = 64;
constexpr int kIconSize = 16;

class ChoiceModel final : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;
    void setChoices(QList<Choice> choices)
    {
        beginResetModel();
        m_choices = std::move(choices);
        m_hasSymbols = std::ranges::any_of(m_choices, [](const Choice &choice) { return !choice.symbol.isEmpty(); });
        endResetModel();
    }
    [[nodiscard]] const QList<Choice> &choices() const { return m_choices; }
    /// Whether room is to be left for symbols.
    [[nodiscard]] bool hasSymbols() const { return m_hasSymbols; }
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_choices.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        const Choice &choice = m_choices[index.row()];
        if (role == Qt::DisplayRole) {
            return choice.title;
        }
        if (role == Qt::AccessibleTextRole) {
            return choice.detail.isEmpty() ? choice.title : QString(choice.title % u", "_s % choice.detail);
        }
        return {};
    }

private:
    QList<Choice> m_choices;
    bool m_hasSymbols = false;
};

namespace {

class ChoiceDelegate final : public QStyledItemDelegate
{
public:
    ChoiceDelegate(const ChoiceModel &model, QObject *parent)
        : QStyledItemDelegate(parent)
        , m_model(model)
    {
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const override
    {
        return {kWidth - 20, kRowHeight};
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const Choice &choice = m_model.choices()[index.row()];
        const auto placed = [&option](const QRect &rect) {
            return QStyle::visualRect(option.direction, option.rect, rect);
        };
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (isSelected) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(themeColor(u"Style Editor Selected Background Color"_s));
            painter->drawRoundedRect(option.rect.adjusted(0, 1, 0, -1), 6, 6);
        }
        const QColor onAccent = themeColor(u"Style Editor Selected Icon Color"_s);
        const QColor text = isSelected ? onAccent : themeColor(u"Panel Text Color"_s);
        const QColor pale = isSelected ? onAccent : themeColor(u"Panel Label Color"_s);
        QRect place = option.rect.adjusted(12, 0, -12, 0);
        if (!choice.symbol.isEmpty()) {
            const QRect icon(place.left(), place.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize);
            painter->drawPixmap(placed(icon),
                                symbol(choice.symbol, pale, kIconSize, painter->device()->devicePixelRatio()));
        }
        if (m_model.hasSymbols()) {
            place.setLeft(place.left() + kIconSize + 12);
        }
        if (!choice.detail.isEmpty()) {
            const QFont font = interfaceFont(11);
            painter->setFont(font);
            painter->setPen(pale);
            const QString detail = QFontMetrics(font).elidedText(choice.detail, Qt::ElideMiddle, place.width() * 2 / 3);
            const int width = QFontMetrics(font).horizontalAdvance(detail) + 2;
            painter->drawText(placed({place.right() - width, place.top(), width, place.height()}),
                              int(Qt::AlignCenter) | int(Qt::TextDontClip), detail);
            place.setRight(place.right() - width - 12);
        }
        // What the query met stands out in weight, so that colours are not all that tells.
        const QFont plain = interfaceFont(13);
        const QFont strong = interfaceFont(13, /*isBold=*/true);
        QString title = QFontMetrics(strong).elidedText(choice.title, Qt::ElideRight, place.width());
        QTextLayout layout(title, plain);
        QList<QTextLayout::FormatRange> formats;
        for (const int at : choice.places) {
            if (at < title.size()) {
                QTextLayout::FormatRange range;
                range.start = at;
                range.length = 1;
                range.format.setFont(strong);
                formats.append(range);
            }
        }
        layout.setFormats(formats);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(place.width());
        layout.endLayout();
        const QRect at = placed(place);
        painter->setPen(text);
        const double x = option.direction == Qt::RightToLeft ? at.right() - line.naturalTextWidth() : at.left();
        layout.draw(painter, {x, at.top() + (at.height() - line.height()) / 2});
        painter->restore();
    }

private:
    const ChoiceModel &m_model;
};

} // namespace

ChoicePanel::ChoicePanel(QWidget *window)
    : QFrame(window)
    , m_field(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_model(new ChoiceModel(this))
    , m_shadow(new PanelShadow(*this))
{
    setObjectName(u"choicePanel"_s);
    setAutoFillBackground(true);
    m_field->setFixedHeight(38);
    m_field->setFont(interfaceFont(15));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ChoiceDelegate(*m_model, this));
    m_list->setUniformItemSizes(true);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setFrameShape(NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 8);
    layout->setSpacing(6);
    layout->addWidget(m_field);
    layout->addWidget(m_list);
    connect(m_field, &QLineEdit::textChanged, this, &ChoicePanel::update);
    connect(m_list, &QListView::clicked, this, &ChoicePanel::chooseCurrent);
    m_field->installEventFilter(this);
    window->installEventFilter(this);
    hide();
}

const QList<Choice> &ChoicePanel::choices() const
{
    return m_model->choices();
}

void ChoicePanel::open(const QString &prompt, Provider provider)
{
    if (!isVisible()) {
        m_focusBefore = QApplication::focusWidget();
    }
    m_provider = std::move(provider);
    m_field->setPlaceholderText(prompt);
    m_field->setAccessibleName(prompt);
    m_list->setAccessibleName(prompt);
    m_field->clear();
    update();
    show();
    raise();
    m_shadow->showBelow();
    m_field->setFocus();
}

void ChoicePanel::providerDidChange()
{
    const int row = m_list->currentIndex().row();
    const QString title = choices().value(row).title;
    update();
    // Who has gone down the list already stays where it did not change.
    if (row > 0 && choices().value(row).title == title) {
        m_list->setCurrentIndex(m_model->index(row));
    }
}

void ChoicePanel::leave()
{
    if (isHidden()) {
        return;
    }
    const QPointer<QWidget> before = std::exchange(m_focusBefore, nullptr);
    hide();
    m_shadow->hide();
    m_provider = nullptr;
    if (before != nullptr) {
        before->setFocus();
    }
}

void ChoicePanel::update()
{
    if (m_provider == nullptr) {
        return;
    }
    m_model->setChoices(m_provider(m_field->text()));
    m_list->setCurrentIndex(m_model->index(0));
    place();
}

void ChoicePanel::place()
{
    const int rows = std::min(m_model->rowCount(), kMostRows);
    m_list->setFixedHeight(rows * kRowHeight);
    m_list->setVisible(rows > 0);
    const int width = std::min(kWidth, parentWidget()->width() - 32);
    const int height = 10 + 38 + 8 + (rows > 0 ? 6 + rows * kRowHeight : 0);
    setGeometry((parentWidget()->width() - width) / 2, kTopMargin, width, height);
    m_shadow->follow();
}

void ChoicePanel::chooseCurrent()
{
    const int row = m_list->currentIndex().row();
    if (row < 0 || row >= choices().size()) {
        return;
    }
    const auto choose = choices()[row].choose;
    leave();
    choose();
}

bool ChoicePanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget()) {
        if (event->type() == QEvent::Resize && isVisible()) {
            place();
        }
        return false;
    }
    if (event->type() == QEvent::FocusOut) {
        if (isVisible() && static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason) {
            m_focusBefore = nullptr; // it went where the user wanted it
            leave();
        }
        return false;
    }
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    auto *key = static_cast<QKeyEvent *>(event);
    const int row = m_list->currentIndex().row();
    const auto select = [this](int wanted) {
        if (const int count = m_model->rowCount(); count > 0) {
            m_list->setCurrentIndex(m_model->index((wanted + count) % count));
        }
    };
    switch (key->key()) {
    case Qt::Key_Down:
        select(row + 1);
        return true;
    case Qt::Key_Up:
        select(row - 1);
        return true;
    case Qt::Key_PageDown:
        select(std::min(row + kMostRows, m_model->rowCount() - 1));
        return true;
    case Qt::Key_PageUp:
        select(std::max(row - kMostRows, 0));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        chooseCurrent();
        return true;
    case Qt::Key_Escape:
        leave();
        return true;
    default:
        return false;
    }
}

} // namespace quib
