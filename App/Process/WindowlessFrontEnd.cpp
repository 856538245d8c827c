#include "DesktopOpener.h"
#include "FrontEnd.h"
#include "Message.h"

#include <Foundation/NSProgress.h>
#include <Graphics/GraphicsEnvironment.h>
#include <Logging/QBLogger.h>

#include <QCoreApplication>

#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Tells in words what a loading window would show.
class ToldLoading final : public QBLoadingWindowInterface
{
public:
    ~ToldLoading() override
    {
        if (m_progress) {
            m_progress->setObserver({});
        }
    }
    void setTitle(const QString &title) override { m_title = title; }
    void setMessage(const QString &message) override { m_message = message; }
    void setProgress(const std::shared_ptr<NSProgress> &progress) override { m_progress = progress; }
    void center() override {}
    void beginModalSession() override { tellUser(QString(m_title % u'\n' % m_message)); }
    void endModalSession() override { tellUser(u"Ready."_s); }
    void orderOut() override {}

private:
    QString m_title;
    QString m_message;
    std::shared_ptr<NSProgress> m_progress;
};

class WindowlessInterface final : public QBApplicationInterface
{
public:
    [[nodiscard]] QBMainWindowInterface *mainWindow() override { return nullptr; }
    [[nodiscard]] bool hasVisibleWindows() const override { return false; }
    [[nodiscard]] std::unique_ptr<QBLoadingWindowInterface> makeLoadingWindow() override
    {
        return std::make_unique<ToldLoading>();
    }
    void showAlert(const QBAlert &alert, Answered answered) override
    {
        QString message = alert.messageText;
        for (const QString &line : {alert.informativeText, alert.path}) {
            if (!line.isEmpty()) {
                message += u'\n' + line;
            }
        }
        tellUser(message);
        answered(kNoButton);
    }
    [[nodiscard]] QString keyEditorNoteTitle() const override { return u""_s; }

    [[nodiscard]] std::shared_ptr<NSPasteboard> generalPasteboard() override { return nullptr; }
    void activate() override {}
    void bringAllWindowsForward() override {}
    void openWebsite(const QUrl &url) override { reportIfFailed(openWithDesktop(url), url); }
    void revealFolder(const QString &folder) override
    {
        const QUrl url = QUrl::fromLocalFile(folder);
        reportIfFailed(openWithDesktop(url), url);
    }
    void terminate() override { QCoreApplication::quit(); }
    [[noreturn]] void exitProcess(int status) override
    {
        QBLogger::sharedLogger().flush();
        std::_Exit(status);
    }

    // What draws with a theme is not there.
    void setApplicationIconNamed(const QString & /*name*/) override {}
    void updateDetachedEditorWindows() override {}
    void loadThemeInDetachedEditorWindows(const std::shared_ptr<QBTheme> & /*theme*/) override {}

private:
    static void reportIfFailed(bool isOpened, const QUrl &url)
    {
        if (!isOpened) {
            QBLogWarn(QString(u"the desktop could not open "_s % url.toDisplayString()));
        }
    }
};

} // namespace

std::unique_ptr<QCoreApplication> WindowlessFrontEnd::makeApplication(int &argc, char **argv)
{
    // Themes and attachments measure fonts.
    return GraphicsEnvironment::makeApplication(argc, argv);
}

std::unique_ptr<QBApplicationInterface> WindowlessFrontEnd::makeInterface()
{
    return std::make_unique<WindowlessInterface>();
}

} // namespace quib
