#pragma once

#include "CommandGroup.h"

#include <QWidget>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QTreeWidget;
QT_END_NAMESPACE

namespace quib {

/// Every command that has a shortcut, by group, with a field that narrows them down by text or by keys. Owned by the
/// window; main queue.
class ShortcutsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ShortcutsPage(std::function<QList<CommandGroup>()> commandGroups, QWidget *parent = nullptr);

    [[nodiscard]] QLineEdit &field() { return *m_field; }
    /// What is shown, each as "text: keys".
    [[nodiscard]] QStringList shownShortcuts() const;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void narrow();

    std::function<QList<CommandGroup>()> m_commandGroups;
    QLineEdit *m_field;
    QTreeWidget *m_sheet;
    QLabel *m_nothing;
};

} // namespace quib
