#pragma once

#include <QStackedWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
QT_END_NAMESPACE

namespace quib {

class InlineQuestion;
class PreferencesForm;

/// How scripts get at the notes: what URLs can do, and the token without which they read nothing. Behind it stands the
/// description of all actions. Owned by the window; main queue.
class AutomationPage final : public QStackedWidget
{
    Q_OBJECT

public:
    explicit AutomationPage(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addToken();
    QWidget *makeDescription();
    /// Shows what the file of the token holds now.
    void refresh();
    void showToken(bool isShown);
    void say(const QString &text);

    PreferencesForm *m_form;
    QLineEdit *m_token = nullptr;
    QPushButton *m_show = nullptr;
    QPushButton *m_copy = nullptr;
    QPushButton *m_make = nullptr;
    QWidget *m_tokenRow = nullptr;
    QWidget *m_renewRow = nullptr;
    QLabel *m_said = nullptr;
    QTimer *m_forget = nullptr;
};

} // namespace quib
