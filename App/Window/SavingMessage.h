#pragma once

#include <Foundation/NSError.h>
#include <Foundation/NotificationCenter.h>

#include <QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace quib {

class MessageBar;

/// Tells at the foot of a window that the notes cannot be saved, and why, for as long as that lasts; and asks before an
/// end that would lose what was typed. It follows the installed stack. Owned by its window; main queue.
class SavingMessage final : public QObject
{
    Q_OBJECT

public:
    /// Shape: writeTexts puts what is being typed into its notes.
    SavingMessage(QWidget *parent, std::function<void()> writeTexts);
    ~SavingMessage() override;

    /// What says it, for the window to place.
    [[nodiscard]] MessageBar &bar() { return *m_bar; }
    /// Puts what is being typed into its notes and saves them. Errors: false, and the message stands.
    bool save();
    /// Asks whether to end without what cannot be saved. Calls quit if so, or once another try has saved it.
    void askBeforeQuitting(std::function<void()> quit);

    /// Whether what is in the notes is not on disk, or may not be read from it.
    [[nodiscard]] static bool hasFailed();
    /// Whether the store is damaged: it takes nothing more, and not all of it can be read.
    [[nodiscard]] static bool isStoreDamaged();
    /// What is wrong, for the user; empty while all is well.
    [[nodiscard]] static QString explanation();

Q_SIGNALS:
    /// It became worse or better.
    void healthDidChange();

private:
    void update();
    void stand();

    MessageBar *m_bar;
    std::function<void()> m_writeTexts;
    bool m_isAsking = false;
    ObservationToken m_observation;
};

} // namespace quib
