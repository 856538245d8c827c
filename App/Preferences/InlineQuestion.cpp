#include "InlineQuestion.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace quib {

InlineQuestion::InlineQuestion(const QString &text, QWidget *parent)
    : QWidget(parent)
    , m_button(new QPushButton(text, this))
    , m_question(new QLabel(this))
    , m_yes(new QPushButton(this))
    , m_no(new QPushButton(tr("Cancel"), this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_question);
    row->addWidget(m_no);
    row->addWidget(m_yes);
    row->addWidget(m_button);
    m_yes->setProperty("isMain", true);
    for (QPushButton *button : {m_button, m_yes, m_no}) {
        button->setAutoDefault(true); // Return presses it
    }
    m_question->hide();
    m_yes->hide();
    m_no->hide();
    setFocusProxy(m_button);
    connect(m_button, &QPushButton::clicked, this, &InlineQuestion::ask);
    connect(m_no, &QPushButton::clicked, this, &InlineQuestion::leave);
    connect(m_yes, &QPushButton::clicked, this, [this] {
        leave();
        m_confirmed();
    });
}

void InlineQuestion::setQuestion(const QString &question, const QString &yes, std::function<void()> confirmed)
{
    m_question->setText(question);
    m_yes->setText(yes);
    m_button->setAccessibleDescription(question);
    m_yes->setAccessibleDescription(question);
    m_no->setAccessibleDescription(question);
    m_confirmed = std::move(confirmed);
}

bool InlineQuestion::isAsking() const
{
    return m_no->isVisibleTo(this);
}

void InlineQuestion::ask()
{
    m_button->hide();
    m_question->show();
    m_yes->show();
    m_no->show();
    m_no->setFocus(Qt::OtherFocusReason);
}

void InlineQuestion::leave()
{
    const bool hadFocus = m_yes->hasFocus() || m_no->hasFocus();
    m_button->show();
    m_question->hide();
    m_yes->hide();
    m_no->hide();
    if (hadFocus) {
        m_button->setFocus(Qt::OtherFocusReason);
    }
}

void InlineQuestion::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isAsking()) {
        leave();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace quib
