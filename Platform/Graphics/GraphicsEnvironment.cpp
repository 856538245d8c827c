#include "GraphicsEnvironment.h"

#include <QGuiApplication>

#include <atomic>

namespace quib {

namespace {

constexpr const char *kPlatformVariable = "QT_QPA_PLATFORM";

std::atomic<QtMessageHandler> s_nextHandler = nullptr;

/// The font library tells, for every script that a font lacks, that it goes on to the next font, and the window system
/// that it has to do without a folder of its own.
void passOnWhatMatters(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!message.contains(QLatin1StringView("OpenType support missing")) &&
        !message.startsWith(QLatin1StringView("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
        s_nextHandler.load()(type, context, message);
    }
}

std::unique_ptr<QGuiApplication> makeWithoutDisplay(int &argc, char **argv)
{
    const bool isChosen = qEnvironmentVariableIsSet(kPlatformVariable);
    if (!isChosen) {
        qputenv(kPlatformVariable, "offscreen");
    }
    const QtMessageHandler before = qInstallMessageHandler(nullptr);
    if (before != passOnWhatMatters) {
        s_nextHandler = before;
    }
    qInstallMessageHandler(passOnWhatMatters);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    if (!isChosen) {
        qunsetenv(kPlatformVariable); // programs started from here choose for themselves
    }
    return application;
}

} // namespace

std::unique_ptr<QCoreApplication> GraphicsEnvironment::makeApplication(int &argc, char **argv)
{
    return makeWithoutDisplay(argc, argv);
}

bool GraphicsEnvironment::ensure()
{
    if (QCoreApplication::instance() == nullptr) {
        static int s_argumentCount = 1;
        static char s_name[] = "quib";
        static char *s_arguments[] = {s_name, nullptr};
        // Kept to the very end: values with fonts inside may be destroyed after it.
        [[maybe_unused]] static const QGuiApplication *s_application =
            makeWithoutDisplay(s_argumentCount, s_arguments).release();
    }
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

} // namespace quib
