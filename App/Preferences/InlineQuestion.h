#pragma once

#include <QString>
#include <QWidget>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

namespace quib {

/// A button for what cannot be taken back: pressed, it gives place to a question and two answers. The keyboard goes to
/// the answer that changes nothing, and Escape gives it. Owned by its page; main queue.
class InlineQuestion final : public QWidget
{
    Q_OBJECT

public:
    explicit InlineQuestion(const QString &text, QWidget *parent = nullptr);
    void setQuestion(const QString &question, const QString &yes, std::function<void()> confirmed);

    [[nodiscard]] QPushButton &button() const { return *m_button; }
    [[nodiscard]] bool isAsking() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void ask();
    void leave();

    QPushButton *m_button;
    QLabel *m_question;
    QPushButton *m_yes;
    QPushButton *m_no;
    std::function<void()> m_confirmed;
};

} // namespace quib
