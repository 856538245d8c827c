#pragma once

#include <QFrame>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <optional>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QGridLayout;
class QLabel;
QT_END_NAMESPACE

namespace quib {

/// What the program says and asks, in a bar at the foot of the window, so that no dialog stands in the way. A question
/// takes the keyboard, Escape answers it by nothing, and a question that another one pushes aside counts as answered
/// so. Owned by its window; main queue.
class MessageBar final : public QFrame
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget *parent = nullptr);
    ~MessageBar() override;

    static constexpr int kNoButton = -1;
    /// The index of the button, and whether the box was checked.
    using Answered = std::function<void(int button, bool isChecked)>;

    /// Says something that stays until a button is pressed or it is taken back. It takes the keyboard from nobody, and
    /// cannot be sent away.
    void stand(const QString &text, const QStringList &buttons, const Answered &answered);
    /// Ends what is said or asked, without an answer.
    void takeBack();
    /// Says something, which goes away by itself; with a button it can be acted upon. Gives the number of the message.
    int say(const QString &text, const QString &button = {}, const Answered &answered = {});
    /// Asks something. The button withKeyboard is the one that Return presses: of something that cannot be undone, the
    /// one that leaves all as it is. Gives the number of the message.
    int ask(const QString &text, const QStringList &buttons, const QString &checkBox, const Answered &answered,
            int withKeyboard = 0);
    /// Ends a message that no longer holds, as answered by nothing, if it is still the one that is shown.
    void dismiss(int number);
    /// Presses a button, for the keyboard and for tests.
    void press(int button);
    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isAsking() const { return bool(m_answered) && m_isQuestion; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeAnswers();
    void show(const QString &text, const QStringList &buttons, const QString &checkBox);
    void end(int button);

    QGridLayout *m_layout;
    QLabel *m_label;
    QWidget *m_answers;
    QWidget *m_closing;
    QCheckBox *m_checkBox;
    QList<QWidget *> m_buttons;
    QTimer m_leaving;
    Answered m_answered;
    bool m_isQuestion = false;
    bool m_isStanding = false;
    /// Of the message that was shown last; the first one has 1.
    int m_number = 0;
};

} // namespace quib
