#include "FormatBar.h"

#include "EditorSymbol.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kMargin = 4;
constexpr int kGroupSpacing = 10;
constexpr QSize kIconSize{20, 20};

} // namespace

FormatBar::FormatBar(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
    setObjectName(u"formatBar"_s);
    setAccessibleName(tr("Format"));
    m_layout->setContentsMargins(kMargin * 2, kMargin, kMargin * 2, kMargin);
    m_layout->setSpacing(1);
}

QToolButton *FormatBar::makeButton(const QString &name)
{
    auto *button = new QToolButton(this);
    button->setObjectName(u"format-"_s % name);
    button->setAutoRaise(true);
    button->setIconSize(kIconSize);
    // The text keeps the keyboard while one formats it with the mouse.
    button->setFocusPolicy(Qt::TabFocus);
    m_layout->addWidget(button);
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
    auto *menu = new QMenu(button);
    menu->addActions(actions);
    button->setMenu(menu);
    return button;
}

void FormatBar::addSeparator()
{
    m_layout->addSpacing(kGroupSpacing);
}

void FormatBar::addStretch()
{
    m_layout->addStretch(1);
}

} // namespace quib
