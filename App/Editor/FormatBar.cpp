#include "FormatBar.h"

#include "EditorSymbol.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kMargin = 4;
constexpr int kSpacing = 1;
constexpr int kGroupSpacing = 10;
constexpr QSize kIconSize{20, 20};
/// How much of the text's colour the line above the bar has.
constexpr double kLineOpacity = 0.12;

} // namespace

FormatBar::FormatBar(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
    setObjectName(u"formatBar"_s);
    setAccessibleName(tr("Format"));
    m_layout->setContentsMargins(kMargin * 2, kMargin, kMargin * 2, kMargin);
    m_layout->setSpacing(kSpacing);
    // Where the keyboard is must be seen beside where the mouse is.
    setStyleSheet(u"QToolButton:focus { border: 1px solid palette(highlight); padding: 3px; }"_s);
}

QToolButton *FormatBar::makeButton(const QString &name)
{
    auto *button = new QToolButton(this);
    button->setObjectName(u"format-"_s % name);
    button->setAutoRaise(true);
    button->setIconSize(kIconSize);
    // The text keeps the keyboard while one formats it with the mouse.
    button->setFocusPolicy(Qt::TabFocus);
    if (m_spaceBefore > 0) {
        m_layout->addSpacing(m_spaceBefore);
    }
    m_layout->addWidget(button);
    m_entries.push_back({button, std::exchange(m_spaceBefore, 0), m_more != nullptr});
    return button;
}

QToolButton *FormatBar::addButton(QAction *action)
{
    QToolButton *button = makeButton(action->objectName());
    button->setDefaultAction(action);
    button->setAccessibleName(action->text());
    button->setAccessibleDescription(action->shortcut().toString(QKeySequence::NativeText));
    return button;
}

QToolButton *FormatBar::addMenuButton(const QString &name, const QString &symbol, const QString &text,
                                      const QList<QAction *> &actions)
{
    QToolButton *button = makeButton(name);
    button->setIcon(editorSymbol(symbol));
    const QString first =
        actions.isEmpty() ? QString() : actions.first()->shortcut().toString(QKeySequence::NativeText);
    button->setToolTip(first.isEmpty() ? text : text % u" ("_s % first % u"…)"_s);
    button->setAccessibleName(text);
    button->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(text, button);
    menu->addActions(actions);
    button->setMenu(menu);
    return button;
}

void FormatBar::addSeparator()
{
    m_spaceBefore = kGroupSpacing;
}

void FormatBar::addStretch()
{
    QToolButton *more = makeButton(u"more"_s);
    m_entries.pop_back();
    more->setIcon(editorSymbol(u"more"_s));
    more->setToolTip(tr("More Formats"));
    more->setAccessibleName(tr("More Formats"));
    more->setPopupMode(QToolButton::InstantPopup);
    m_moreMenu = new QMenu(more);
    connect(m_moreMenu, &QMenu::aboutToShow, this, &FormatBar::fillMore);
    more->setMenu(m_moreMenu);
    more->hide();
    m_more = more;
    m_layout->addStretch(1);
}

void FormatBar::fillMore()
{
    m_moreMenu->clear();
    for (const Entry &entry : m_entries) {
        if (!entry.button->isHidden()) {
            continue;
        }
        if (entry.spaceBefore > 0 && !m_moreMenu->isEmpty()) {
            m_moreMenu->addSeparator();
        }
        if (entry.button->menu() != nullptr) {
            m_moreMenu->addMenu(entry.button->menu());
        } else {
            m_moreMenu->addAction(entry.button->defaultAction());
        }
    }
}

void FormatBar::placeButtons()
{
    if (m_more == nullptr) {
        return;
    }
    const QMargins margins = m_layout->contentsMargins();
    const auto widthOf = [](const Entry &entry) {
        return entry.button->sizeHint().width() + kSpacing + (entry.spaceBefore > 0 ? entry.spaceBefore + kSpacing : 0);
    };
    int room = width() - margins.left() - margins.right();
    int wanted = 0;
    for (const Entry &entry : m_entries) {
        (entry.isAtEnd ? room : wanted) += entry.isAtEnd ? -widthOf(entry) : widthOf(entry);
    }
    const bool hasRoom = wanted <= room;
    room -= hasRoom ? 0 : m_more->sizeHint().width() + kSpacing;
    // The first that has no room takes those behind it along, so that their order stays.
    bool isPlaced = true;
    for (const Entry &entry : m_entries) {
        if (entry.isAtEnd) {
            continue;
        }
        room -= widthOf(entry);
        isPlaced = isPlaced && (hasRoom || room >= 0);
        entry.button->setVisible(isPlaced);
    }
    m_more->setVisible(!hasRoom);
}

QSize FormatBar::minimumSizeHint() const
{
    const QMargins margins = m_layout->contentsMargins();
    int width = margins.left() + margins.right() + (m_more != nullptr ? m_more->sizeHint().width() : 0);
    int height = 0;
    for (const Entry &entry : m_entries) {
        const QSize size = entry.button->sizeHint();
        width += entry.isAtEnd ? size.width() + kSpacing : 0;
        height = std::max(height, size.height());
    }
    return {width, height + margins.top() + margins.bottom()};
}

bool FormatBar::focusFirstButton()
{
    const auto first = std::ranges::find_if(
        m_entries, [](const Entry &entry) { return entry.button->isVisible() && entry.button->isEnabled(); });
    if (first == m_entries.end()) {
        return false;
    }
    first->button->setFocus(Qt::TabFocusReason);
    return true;
}

void FormatBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeButtons();
}

void FormatBar::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    placeButtons();
}

void FormatBar::paintEvent(QPaintEvent * /*event*/)
{
    // The text goes on below: a fine line says so.
    QPainter painter(this);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(static_cast<float>(kLineOpacity));
    painter.fillRect(0, 0, width(), 1, line);
}

void FormatBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT didLeave();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace quib
