#pragma once

#include <QFrame>
#include <QList>
#include <QPointer>

#include <functional>

QT_BEGIN_NAMESPACE
class QLineEdit;
class QListView;
QT_END_NAMESPACE

namespace quib {

class ChoiceModel;
class PanelShadow;

/// One thing to choose.
struct Choice
{
    QString title;
    /// Paler, at the far end: a shortcut, or where a thing is.
    QString detail;
    /// The name of a symbol; may be empty.
    QString symbol;
    /// Places of the title that the query met.
    QList<int> places;
    std::function<void()> choose;
};

/// A panel at the top of a window: what is typed narrows a list down, Return takes what is selected, Escape leaves. The
/// keyboard goes back to where it was. Owned by its window; main queue.
class ChoicePanel final : public QFrame
{
    Q_OBJECT

public:
    explicit ChoicePanel(QWidget *window);

    /// Gives the best choices for what was typed, the best first.
    using Provider = std::function<QList<Choice>(const QString &query)>;
    void open(const QString &prompt, Provider provider);
    /// Asks the provider again: it has other choices now. Without effect while the panel is closed.
    void providerDidChange();
    void leave();
    [[nodiscard]] const QList<Choice> &choices() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();
    void chooseCurrent();
    void place();

    QLineEdit *m_field;
    QListView *m_list;
    ChoiceModel *m_model;
    PanelShadow *m_shadow;
    Provider m_provider;
    QPointer<QWidget> m_focusBefore;
};

} // namespace quib
