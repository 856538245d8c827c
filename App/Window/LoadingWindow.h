#pragma once

#include <Delegate/QBLoadingWindowInterface.h>

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QProgressBar;
QT_END_NAMESPACE

namespace quib {

/// Asks for patience while the store is brought up to date, and shows how far that is. Main queue.
class LoadingWindow final : public QDialog, public QBLoadingWindowInterface
{
    Q_OBJECT

public:
    LoadingWindow();
    ~LoadingWindow() override;

    void setTitle(const QString &title) override;
    void setMessage(const QString &message) override;
    void setProgress(const std::shared_ptr<NSProgress> &progress) override;
    void center() override;
    void beginModalSession() override;
    void endModalSession() override;
    void orderOut() override;

    /// Escape does not end what is under way.
    void reject() override {}

private:
    QLabel *m_title;
    QLabel *m_message;
    QProgressBar *m_bar;
    std::shared_ptr<NSProgress> m_progress;
};

} // namespace quib
