#pragma once

#include <QWidget>

QT_BEGIN_NAMESPACE
class QAction;
class QHBoxLayout;
class QToolButton;
QT_END_NAMESPACE

namespace quib {

/// The row of buttons below a note, one for each command of formatting. Owned by the editor's pane, whose actions it
/// shows; main queue.
class FormatBar final : public QWidget
{
    Q_OBJECT

public:
    explicit FormatBar(QWidget *parent = nullptr);

    /// A button for a command; with a name, for tests and style sheets, like the command's.
    QToolButton *addButton(QAction *action);
    /// A button that opens a list of commands.
    QToolButton *addMenuButton(const QString &name, const QString &symbol, const QString &text,
                               const QList<QAction *> &actions);
    void addSeparator();
    /// What is added next stands at the far end.
    void addStretch();

private:
    QToolButton *makeButton(const QString &name);

    QHBoxLayout *m_layout = nullptr;
};

} // namespace quib
