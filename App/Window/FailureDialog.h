#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

namespace quib {

/// Tells what went wrong where there is no window to say it in: what is the matter, what to do now, and the place in
/// the file system that it is about. Main queue.
class FailureDialog final : public QMessageBox
{
    Q_OBJECT

public:
    /// Shape: path may be empty; the first button is the one that closing the dialog presses.
    FailureDialog(const QString &headline, const QString &advice, const QString &path, const QStringList &buttons);

    /// The index of the button that was pressed.
    [[nodiscard]] int pressedButton() const;

private:
    QList<QAbstractButton *> m_buttons;
};

} // namespace quib
