#include "MessageBar.h"

#include "Symbols.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quib {

namespace {

constexpr auto kStay = 8s;
/// With the margins and the button that closes. Units: points.
constexpr int kLeastTextWidth = 260;

} // namespace

MessageBar::MessageBar(QWidget *parent)
    : QFrame(parent)
    , m_layout(new QGridLayout(this))
    , m_label(new QLabel(this))
    , m_answers(new QWidget(this))
    , m_checkBox(new QCheckBox(m_answers))
{
    setObjectName(u"messageBar"_s);
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_layout->setContentsMargins(18, 9, 12, 9);
    m_layout->setSpacing(8);
    m_layout->setColumnStretch(0, 1);
    m_layout->addWidget(m_label, 0, 0);
    auto *answers = new QHBoxLayout(m_answers);
    answers->setContentsMargins(0, 0, 0, 0);
    answers->setSpacing(8);
    answers->addWidget(m_checkBox);
    auto *closing = new QToolButton(this);
    closing->setIcon(symbolIcon(u"close"_s));
    closing->setAccessibleName(tr("Close the message"));
    connect(closing, &QToolButton::clicked, this, [this] { end(kNoButton); });
    m_layout->addWidget(closing, 0, 2);
    m_closing = closing;
    setMinimumWidth(1); // the window may be as narrow as it likes
    placeAnswers();
    m_leaving.setSingleShot(true);
    m_leaving.setInterval(kStay);
    connect(&m_leaving, &QTimer::timeout, this, [this] { end(kNoButton); });
    hide();
}

MessageBar::~MessageBar()
{
    // Whoever asked is told, as long as it is there to hear.
    m_answered = nullptr;
}

QString MessageBar::text() const
{
    return isHidden() ? QString() : m_label->text();
}

int MessageBar::say(const QString &text, const QString &button, const Answered &answered)
{
    show(text, button.isEmpty() ? QStringList() : QStringList{button}, {});
    m_isQuestion = false;
    m_answered = answered;
    m_leaving.start();
    return m_number;
}

int MessageBar::ask(const QString &text, const QStringList &buttons, const QString &checkBox, const Answered &answered,
                    int withKeyboard)
{
    show(text, buttons, checkBox);
    m_isQuestion = true;
    m_answered = answered;
    m_leaving.stop();
    if (QWidget *button = m_buttons.value(withKeyboard); button != nullptr) {
        button->setFocus();
    }
    return m_number;
}

void MessageBar::dismiss(int number)
{
    if (number == m_number && !isHidden()) {
        end(kNoButton);
    }
}

void MessageBar::stand(const QString &text, const QStringList &buttons, const Answered &answered)
{
    show(text, buttons, {});
    m_isQuestion = false;
    m_isStanding = true;
    m_closing->hide();
    m_answered = answered;
    m_leaving.stop();
}

void MessageBar::takeBack()
{
    m_answered = nullptr;
    end(kNoButton);
}

void MessageBar::show(const QString &text, const QStringList &buttons, const QString &checkBox)
{
    end(kNoButton);
    m_isStanding = false;
    m_closing->show();
    ++m_number;
    m_label->setText(text);
    m_checkBox->setText(checkBox);
    m_checkBox->setChecked(false);
    m_checkBox->setVisible(!checkBox.isEmpty());
    for (QWidget *button : std::exchange(m_buttons, {})) {
        button->hide();
        button->deleteLater(); // it may be the one that is being pressed
    }
    for (int i = 0; i < buttons.size(); ++i) {
        auto *button = new QPushButton(buttons[i], m_answers);
        button->setProperty("isMain", i == 0);
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, i] { end(i); });
        m_answers->layout()->addWidget(button);
        m_buttons.append(button);
    }
    m_answers->setVisible(!buttons.isEmpty() || !checkBox.isEmpty());
    placeAnswers();
    QFrame::show();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void MessageBar::placeAnswers()
{
    // Beside the text, or below it where it would be left with too little room.
    const bool isBeside = m_answers->sizeHint().width() + kLeastTextWidth <= width();
    m_layout->removeWidget(m_answers);
    if (isBeside) {
        m_layout->addWidget(m_answers, 0, 1);
    } else {
        m_layout->addWidget(m_answers, 1, 0, 1, 3, Qt::AlignTrailing);
    }
}

void MessageBar::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    placeAnswers();
}

void MessageBar::press(int button)
{
    end(button);
}

void MessageBar::end(int button)
{
    hide();
    m_leaving.stop();
    if (const auto answered = std::exchange(m_answered, nullptr)) {
        answered(button, m_checkBox->isChecked());
    }
}

void MessageBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !m_isStanding) {
        end(kNoButton);
        return;
    }
    QFrame::keyPressEvent(event);
}

} // namespace quib
