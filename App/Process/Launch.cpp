#include "Launch.h"

#include "BusWatch.h"
#include "DesktopOpener.h"
#include "InstanceService.h"
#include "LaunchOptions.h"
#include "Message.h"
#include "QuibProcess.h"
#include "RunningInstance.h"
#include "TerminationSignals.h"

#include <Files/Profile.h>
#include <Foundation/WorkerThreads.h>
#include <Store/ProfileLock.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QFile>
#include <QLocale>
#include <QThread>

#include <chrono>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quib {

namespace {

enum ExitStatus : int
{
    kDone = 0,
    kFailed = 1,
    kWrongUsage = 2,
};

/// How long a starting process waits for one that is ending to let go of the profile: an end saves, and a disk may be
/// slow.
constexpr auto kPatience = 10s;
constexpr unsigned long kPauseMilliseconds = 20;
/// How many instances may end, one after the other, while a process tries to hand over to them.
constexpr int kMostAttempts = 100;

void print(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

/// A connection of this process's own, so that it can be closed: the shared one lives as long as the process.
QDBusConnection connectToSessionBus(const QString &name)
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

/// Hands all requests to the instance that runs; takes out those that it took.
/// Shape:   nullopt when it ended meanwhile.
std::optional<int> handOver(const RunningInstance &instance, std::vector<InstanceRequest> &requests)
{
    while (!requests.empty()) {
        NSError error;
        if (!instance.hand(requests.front(), &error)) {
            if (error.code() == RunningInstance::kGone) {
                return std::nullopt;
            }
            tellUser(error.localizedDescription());
            return kFailed;
        }
        requests.erase(requests.begin());
    }
    return kDone;
}

/// Asks the bus for an instance, before this process is any kind of application.
std::optional<int> handOverIfRunning(int &argc, char **argv, const InstanceName &name,
                                     std::vector<InstanceRequest> &requests)
{
    const QCoreApplication application(argc, argv);
    const QString connectionName = u"quib-hand-over"_s;
    std::optional<int> status;
    {
        const RunningInstance instance(connectToSessionBus(connectionName), name);
        if (instance.isThere()) {
            status = handOver(instance, requests);
        }
    }
    QDBusConnection::disconnectFromBus(connectionName);
    return status;
}

/// Takes the profile. On the bus the name tells who may have it, so that another holder is one that is just ending.
std::optional<ProfileLock> takeProfile(bool isNamed, NSError *error)
{
    const QDeadlineTimer deadline(isNamed ? kPatience : 0s);
    for (;;) {
        if (auto lock = ProfileLock::acquire({}, error)) {
            return lock;
        }
        if (deadline.hasExpired()) {
            return std::nullopt;
        }
        QThread::msleep(kPauseMilliseconds);
    }
}

/// Whether all of the requests are texts and files to send: then the process ends once they are done.
bool isSendOnly(const std::vector<InstanceRequest> &requests)
{
    return !requests.empty() && std::ranges::all_of(requests, [](const InstanceRequest &request) {
        return request.kind == InstanceRequest::Kind::SendURIs || request.kind == InstanceRequest::Kind::SendText;
    });
}

bool needsWindow(const std::vector<InstanceRequest> &requests)
{
    return std::ranges::any_of(
        requests, [](const InstanceRequest &request) { return request.kind == InstanceRequest::Kind::Action; });
}

/// Serves the requests of the own command line, and remembers how they went.
class OwnRequests
{
public:
    OwnRequests(QuibProcess &process, const std::vector<InstanceRequest> &requests)
        : m_waiting(requests.size())
        , m_endsProcess(isSendOnly(requests))
    {
        for (const InstanceRequest &request : requests) {
            process.serve(request, [this](const NSError &error) { end(error); });
        }
    }
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    void end(const NSError &error)
    {
        if (error.isSet()) {
            tellUser(error.localizedDescription());
            m_hasFailed = true;
        }
        if (--m_waiting == 0 && m_endsProcess) {
            // The event loop may not run yet, and could then not be ended.
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
        }
    }

    size_t m_waiting;
    bool m_endsProcess;
    bool m_hasFailed = false;
};

/// What a window would tell.
void tellHealth(const QBCoreDataStack &stack)
{
    if (stack.damage().isSet()) {
        tellUser(u"the notes are damaged, and nothing is written any more: "_s + stack.damage().localizedDescription());
    } else if (stack.saveError().isSet()) {
        tellUser(u"the notes cannot be saved, which is tried again: "_s + stack.saveError().localizedDescription());
    } else {
        tellUser(u"the notes are saved again"_s);
    }
}

/// Serves until the end is asked for.
int serve(FrontEnd &frontEnd, const LaunchOptions &options, const InstanceName &name,
          std::vector<InstanceRequest> requests)
{
    QuibProcess process(frontEnd.makeInterface(), openWithDesktop);
    InstanceService service(process);
    // 1. The name decides between processes that start at once.
    const QDBusConnection bus = connectToSessionBus(u"quib"_s);
    bool isNamed = service.registerAt(bus, name);
    for (int attempt = 0; bus.isConnected() && !isNamed; ++attempt) {
        if (attempt == kMostAttempts) {
            tellUser(u"the name %1 cannot be had on the session bus"_s.arg(name.busName));
            return kFailed;
        }
        if (const auto status = handOver(RunningInstance(bus, name), requests)) {
            return *status;
        }
        isNamed = service.registerAt(bus, name);
    }
    if (isNamed && options.isService && options.profile.isEmpty()) {
        // Started by the bus under the plain name, with a profile that the environment moved.
        service.addName(kApplicationName);
    }
    if (!isNamed && options.isService) {
        tellUser(u"there is no session bus to serve"_s);
        return kFailed;
    }
    // 2. The profile, against those whom no bus tells of us.
    NSError error;
    auto lock = takeProfile(isNamed, &error);
    if (!lock) {
        tellUser(error.localizedDescription());
        if (!isNamed && error.code() == static_cast<qint64>(NSCocoaErrorCode::FileLocking)) {
            tellUser(u"there is no session bus to reach the other one over"_s);
        }
        frontEnd.profileCannotBeHad(error, Profile::persistentDataFolder());
        return kFailed;
    }
    if (!frontEnd.hasWindows() && needsWindow(requests)) {
        tellUser(u"Quib has no window here; quib --send and quibctl new make notes, quibctl search finds them"_s);
        return kFailed;
    }
    // 3. Up, and on with what was asked.
    const TerminationSignals signals([&process] { process.interface().terminateWithoutAsking(); });
    const BusWatch watch(bus, [&process, &frontEnd] {
        if (!frontEnd.hasWindows()) {
            process.interface().terminate(); // nobody can reach it any more
        }
    });
    ObservationToken health;
    if (!frontEnd.hasWindows()) {
        health = process.stack().healthDidChange.add([&process] { tellHealth(process.stack()); });
    }
    process.launch();
    frontEnd.processDidLaunch(process);
    const OwnRequests own(process, requests);
    if (!frontEnd.hasWindows() && !options.isService && !isSendOnly(requests)) {
        tellUser(isNamed ? u"running without a window, as %1 on the session bus"_s.arg(name.busName)
                         : u"running without a window and without a session bus"_s);
    }
    QCoreApplication::exec();
    // 4. Down: what was called before the names went is served, later calls start the next process.
    service.unregister();
    QCoreApplication::processEvents();
    const bool isSaved = process.terminate(&error);
    frontEnd.processWillEnd(process);
    if (!isSaved) {
        tellUser(u"the notes could not be saved: "_s + error.localizedDescription());
        return kFailed;
    }
    return own.hasFailed() ? kFailed : kDone;
}

} // namespace

int runQuib(int &argc, char **argv, FrontEnd &frontEnd)
{
    // A reader that closes the pipe early ends the output, not the work.
    std::signal(SIGPIPE, SIG_IGN);
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    QString message;
    const auto options = LaunchOptions::parse(words, &message);
    if (!options) {
        tellUser(message);
        tellUser(u"see quib --help"_s);
        return kWrongUsage;
    }
    if (options->showsHelp) {
        print(LaunchOptions::helpText());
        return kDone;
    }
    if (options->showsVersion) {
        print(u"quib " QUIB_VERSION "\n"_s);
        return kDone;
    }
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        tellUser(u"standard input cannot be read"_s);
        return kFailed;
    }
    auto requests = options->requests(input, &message);
    if (!requests) {
        tellUser(message);
        return kFailed;
    }
    if (!options->profile.isEmpty()) {
        Profile::setRoot(options->profile);
    }
    // The folder first: where it really lies is what names the instance.
    static_cast<void>(Profile::persistentDataFolder());
    const InstanceName name = InstanceName::forProfile(Profile::root());
    if (const auto status = handOverIfRunning(argc, argv, name, *requests)) {
        return *status;
    }
    const auto application = frontEnd.makeApplication(argc, argv);
    QCoreApplication::setApplicationName(u"quib"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIB_VERSION));
    QLocale::setDefault(QLocale::system());
    return WorkerThreads::endProcess(serve(frontEnd, *options, name, *std::move(requests)));
}

} // namespace quib
