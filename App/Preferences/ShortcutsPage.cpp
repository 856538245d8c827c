#include "ShortcutsPage.h"

#include "PreferencesForm.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kRowHeight = 30;
constexpr int kHeadHeight = 42;
constexpr int kKeysWidth = 220;

/// Draws keys as caps at the far end, and titles of groups in bold over a line.
class SheetDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {option.rect.width(), index.parent().isValid() ? kRowHeight : kHeadHeight};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const bool isHead = !index.parent().isValid();
        const QColor text = option.palette.color(QPalette::WindowText);
        if (option.state.testFlag(QStyle::State_Selected) && !isHead) {
            QColor fill = text;
            fill.setAlphaF(0.08F);
            painter->fillRect(option.rect, fill);
        }
        QFont font = option.font;
        font.setBold(isHead);
        painter->setFont(font);
        painter->setPen(text);
        if (index.column() == 0) {
            const QRect rect = option.rect.adjusted(8, isHead ? 12 : 0, -8, 0);
            painter->drawText(rect, Qt::AlignVCenter | Qt::AlignLeading,
                              QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight, rect.width()));
        } else {
            drawKeys(*painter, option, index.data().toString());
        }
        painter->restore();
    }

private:
    static void drawKeys(QPainter &painter, const QStyleOptionViewItem &option, const QString &keys)
    {
        if (keys.isEmpty()) {
            return;
        }
        const QFontMetrics metrics(option.font);
        const QColor text = option.palette.color(QPalette::WindowText);
        const double width = metrics.horizontalAdvance(keys) + 16;
        const QRectF cell = QRectF(option.rect).adjusted(8, 0, -8, 0);
        const bool isMirrored = option.direction == Qt::RightToLeft;
        const QRectF cap(isMirrored ? cell.left() : cell.right() - width, cell.center().y() - 11, width, 22);
        QColor line = text;
        line.setAlphaF(0.22F);
        QColor fill = text;
        fill.setAlphaF(0.05F);
        painter.setPen(QPen(line, 1));
        painter.setBrush(fill);
        painter.drawRoundedRect(cap, 5, 5);
        painter.setPen(text);
        painter.drawText(cap, Qt::AlignCenter, keys);
    }
};

QString keysOf(const QAction &command)
{
    QStringList keys;
    for (const QKeySequence &sequence : command.shortcuts()) {
        if (!sequence.isEmpty()) {
            keys.append(sequence.toString(QKeySequence::NativeText));
        }
    }
    return keys.join(QString(u' ' % ShortcutsPage::tr("or", "between two shortcuts") % u' '));
}

} // namespace

ShortcutsPage::ShortcutsPage(std::function<QList<CommandGroup>()> commandGroups, QWidget *parent)
    : QWidget(parent)
    , m_commandGroups(std::move(commandGroups))
    , m_field(new QLineEdit(this))
    , m_sheet(new QTreeWidget(this))
    , m_nothing(makeHelpLabel(tr("No shortcut matches."), this))
{
    setObjectName(u"preferencesPage"_s);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(28, 24, 28, 0);
    rows->setSpacing(10);
    m_field->setPlaceholderText(tr("Search commands and keys"));
    m_field->setAccessibleName(tr("Search commands and keys"));
    m_field->setClearButtonEnabled(true);
    m_field->installEventFilter(this);
    rows->addWidget(m_field);
    m_sheet->setObjectName(u"preferencesSheet"_s);
    m_sheet->setAccessibleName(tr("Keyboard shortcuts"));
    m_sheet->setColumnCount(2);
    m_sheet->setHeaderLabels({tr("Command"), tr("Keys")});
    m_sheet->setHeaderHidden(true);
    m_sheet->setRootIsDecorated(false);
    m_sheet->setItemsExpandable(false);
    m_sheet->setIndentation(0);
    m_sheet->setFrameShape(QFrame::NoFrame);
    m_sheet->setItemDelegate(new SheetDelegate(m_sheet));
    m_sheet->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_sheet->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_sheet->header()->setStretchLastSection(false);
    m_sheet->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_sheet->header()->setSectionResizeMode(1, QHeaderView::Fixed);
    m_sheet->header()->resizeSection(1, kKeysWidth);
    rows->addWidget(m_sheet, 1);
    m_nothing->setAlignment(Qt::AlignCenter);
    rows->addWidget(m_nothing, 1);
    connect(m_field, &QLineEdit::textChanged, this, &ShortcutsPage::narrow);
    setFocusProxy(m_field);
    fill();
}

void ShortcutsPage::showEvent(QShowEvent *event)
{
    fill();
    QWidget::showEvent(event);
}

bool ShortcutsPage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Escape && !m_field->text().isEmpty()) {
            m_field->clear();
            return true;
        }
        if (key->key() == Qt::Key_Down) {
            m_sheet->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ShortcutsPage::fill()
{
    m_sheet->clear();
    for (const CommandGroup &group : m_commandGroups ? m_commandGroups() : QList<CommandGroup>()) {
        QTreeWidgetItem *head = nullptr;
        for (const QAction *command : group.commands) {
            const QString keys = keysOf(*command);
            if (keys.isEmpty()) {
                continue;
            }
            if (head == nullptr) {
                head = new QTreeWidgetItem(m_sheet, {group.title});
                head->setFirstColumnSpanned(true);
                head->setFlags(Qt::ItemIsEnabled);
                head->setExpanded(true);
            }
            new QTreeWidgetItem(head, {nameOfCommand(*command), keys});
        }
    }
    narrow();
}

void ShortcutsPage::narrow()
{
    const QStringList words = m_field->text().simplified().split(u' ', Qt::SkipEmptyParts);
    bool hasAny = false;
    for (int i = 0; i < m_sheet->topLevelItemCount(); ++i) {
        QTreeWidgetItem *head = m_sheet->topLevelItem(i);
        bool hasRows = false;
        for (int j = 0; j < head->childCount(); ++j) {
            QTreeWidgetItem *row = head->child(j);
            const bool isFound = std::ranges::all_of(words, [row](const QString &word) {
                return row->text(0).contains(word, Qt::CaseInsensitive) ||
                       row->text(1).contains(word, Qt::CaseInsensitive);
            });
            row->setHidden(!isFound);
            hasRows = hasRows || isFound;
        }
        head->setHidden(!hasRows);
        hasAny = hasAny || hasRows;
    }
    m_sheet->setVisible(hasAny);
    m_nothing->setVisible(!hasAny);
}

QStringList ShortcutsPage::shownShortcuts() const
{
    QStringList shown;
    for (int i = 0; i < m_sheet->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *head = m_sheet->topLevelItem(i);
        for (int j = 0; j < head->childCount(); ++j) {
            if (!head->child(j)->isHidden()) {
                shown.append(QString(head->child(j)->text(0) % u": "_s % head->child(j)->text(1)));
            }
        }
    }
    return shown;
}

} // namespace quib
