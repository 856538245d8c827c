#include "CompletionPopup.h"

#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kMostRows = 8;
constexpr int kLeastWidth = 160;
constexpr int kMostWidth = 360;
constexpr int kGap = 4;

} // namespace

CompletionPopup::CompletionPopup(QWidget *parent)
    : QListWidget(parent)
{
    setObjectName(u"completions"_s);
    setAccessibleName(tr("Completions"));
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::StyledPanel);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideMiddle);
    connect(this, &QListWidget::itemClicked, this, &CompletionPopup::itemWasChosen);
    hide();
}

void CompletionPopup::open(const QBEditorAutoCompleteItemsProvider::Items &items, const QRect &caret)
{
    m_items = items;
    clear();
    if (items.isEmpty()) {
        hide();
        return;
    }
    for (const auto &item : items) {
        addItem(item->autoCompleteItemTitle());
    }
    setCurrentRow(0);
    const int rows = static_cast<int>(std::min<qsizetype>(items.size(), kMostRows));
    const int height = sizeHintForRow(0) * rows + 2 * frameWidth();
    const int wanted = sizeHintForColumn(0) + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    const int width = std::clamp(wanted, kLeastWidth, kMostWidth);
    const QRect room = parentWidget()->rect();
    const bool isBelow = caret.bottom() + kGap + height <= room.bottom() || caret.top() - room.top() < height + kGap;
    setGeometry(std::clamp(caret.left(), room.left(), std::max(room.left(), room.right() - width)),
                isBelow ? caret.bottom() + kGap : caret.top() - kGap - height, width, height);
    show();
    raise();
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
        close();
        return true;
    default:
        return false;
    }
}

} // namespace quib
