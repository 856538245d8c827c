#include "LoadingWindow.h"

#include "ThemeColors.h"

#include <Foundation/NSProgress.h>

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>

namespace quib {

LoadingWindow::LoadingWindow()
    : m_title(new QLabel(this))
    , m_message(new QLabel(this))
    , m_bar(new QProgressBar(this))
{
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    m_title->setFont(interfaceFont(16, /*isBold=*/true));
    m_title->setWordWrap(true);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_bar->setRange(0, 0);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(6);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 26, 28, 26);
    layout->setSpacing(12);
    layout->addWidget(m_title);
    layout->addWidget(m_message);
    layout->addWidget(m_bar);
    setFixedWidth(440);
}

LoadingWindow::~LoadingWindow()
{
    if (m_progress) {
        m_progress->setObserver({});
    }
}

void LoadingWindow::setTitle(const QString &title)
{
    setWindowTitle(title);
    m_title->setText(title);
}

void LoadingWindow::setMessage(const QString &message)
{
    m_message->setText(message);
}

void LoadingWindow::setProgress(const std::shared_ptr<NSProgress> &progress)
{
    m_progress = progress;
    // Told on the thread that works.
    m_progress->setObserver([bar = QPointer<QProgressBar>(m_bar)](qint64 completed, qint64 total) {
        QMetaObject::invokeMethod(
            qApp,
            [bar, completed, total] {
                if (bar != nullptr && total > 0) {
                    bar->setRange(0, 1000);
                    bar->setValue(int(1000 * completed / total));
                }
            },
            Qt::QueuedConnection);
    });
}

void LoadingWindow::center()
{
    adjustSize();
    if (const QScreen *on = QGuiApplication::primaryScreen(); on != nullptr) {
        move(on->availableGeometry().center() - rect().center());
    }
}

void LoadingWindow::beginModalSession()
{
    setModal(true);
    show();
}

void LoadingWindow::endModalSession()
{
    setModal(false);
}

void LoadingWindow::orderOut()
{
    hide();
}

} // namespace quib
