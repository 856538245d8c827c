// How soon is the application there, and how soon is what another program asks for on disk?
//
// Workloads (unit: seconds each):
//   from the start of a process to the store open and the lists filled, 100,000 notes, against a raw read of the index
//   that covers the list;
//   the same process on an empty profile, against the same: what the libraries and the launch itself take;
//   a "create" URL from the call on the session bus to its callback, when the note is durable, against one note saved
//   by itself.

#include <Support/CorpusGenerator.h>
#include <Support/CorpusProfile.h>
#include <Support/Measure.h>
#include <Support/RawBaselines.h>

#include <Files/Profile.h>
#include <Process/FrontEnd.h>
#include <Process/InstanceService.h>
#include <Process/QuibProcess.h>
#include <Search/Lists/MRTFetchedResultsController.h>
#include <Search/Lists/QBNoteSidebarCoreController.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/ProfileLock.h>
#include <Store/QBNote.h>
#include <Store/SQLNames.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

const QStringList &listedProperties()
{
    static const QStringList properties{u"trashed"_s,          u"archived"_s,
                                        u"pinned"_s,           u"modificationDate"_s,
                                        u"uniqueIdentifier"_s, u"title"_s,
                                        u"subtitle"_s,         u"creationDate"_s,
                                        u"hasImages"_s,        u"hasFiles"_s,
                                        u"hasSourceCode"_s,    u"todoCompleted"_s,
                                        u"todoIncompleted"_s,  u"conflictUniqueIdentifier"_s};
    return properties;
}

NSFetchRequest noteList()
{
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = NSPredicate::predicateWithFormat(u"trashed == NO AND archived == NO"_s);
    request.sortDescriptors = {NSSortDescriptor(u"pinned"_s, /*ascending=*/false),
                               NSSortDescriptor(u"modificationDate"_s, /*ascending=*/false)};
    request.propertiesToFetch = listedProperties();
    return request;
}

void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "StartBenchmark: %s\n", what);
        std::exit(1);
    }
}

/// A whole start of the application on the profile of the environment; its end is not measured.
[[noreturn]] void startOnce(int argc, char **argv)
{
    quib::WindowlessFrontEnd frontEnd;
    const auto application = frontEnd.makeApplication(argc, argv);
    NSError error;
    const auto lock = quib::ProfileLock::acquire({}, &error);
    require(lock.has_value(), "the profile is taken");
    quib::QuibProcess process(frontEnd.makeInterface(), [](const QUrl &) { return true; });
    process.launch();
    const auto &context = process.stack().managedObjectContext();
    require(context != nullptr, "the store did not open");
    QBNoteSidebarCoreController sidebar;
    sidebar.setManagedObjectContext(context);
    MRTFetchedResultsController notes(context, noteList());
    require(notes.performFetch(), "the notes could not be read");
    keep(sidebar.sidebarItems().size());
    ::_exit(0);
}

Timing rawRead()
{
    QByteArray covered = "SELECT _pk, _version";
    for (const QString &name : listedProperties()) {
        covered += ", " + quib::SQLNames::column(name);
    }
    covered +=
        " FROM \"QBNote\" WHERE trashed = 0 AND archived = 0 ORDER BY pinned DESC, \"modificationDate\" DESC, _pk";
    RawDatabase raw(quib::Profile::persistentDataFolder() + u"/database.sqlite"_s);
    return measure([&] { keep(raw.readAll(covered.constData())); });
}

void measureStarts(Report &report, const QString &program)
{
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    qputenv("QUIB_PROFILE", folder.path().toUtf8());
    fillProfileWithCorpus(0);
    const auto empty = measureProgram({program, u"--start"_s});
    const QTemporaryDir full;
    quib::Profile::setRoot(full.path());
    qputenv("QUIB_PROFILE", full.path().toUtf8());
    fillProfileWithCorpus(sizeForRun(100'000, 300));
    const auto started = measureProgram({program, u"--start"_s});
    require(started && empty, "the application did not start");
    const Timing baseline = rawRead();
    report.addTime(u"start with lists / raw index read"_s, *started, baseline, 3);
    report.addTime(u"start, empty profile / same read"_s, *empty, baseline, 0);
}

void measureCreate(Report &report)
{
    QProcess daemon;
    daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s});
    require(daemon.waitForReadyRead(), "there is no dbus-daemon");
    const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
    const QDBusConnection server = QDBusConnection::connectToBus(address, u"server"_s);
    const QDBusConnection client = QDBusConnection::connectToBus(address, u"client"_s);

    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    bool isAnswered = false;
    quib::WindowlessFrontEnd frontEnd;
    quib::QuibProcess process(frontEnd.makeInterface(), [&isAnswered](const QUrl &) { return isAnswered = true; });
    process.launch();
    quib::InstanceService service(process);
    const auto name = quib::InstanceName::forProfile(folder.path());
    require(service.registerAt(server, name), "the name is taken");

    const CorpusGenerator generator;
    const QString text = generator.text(7);
    int turn = 0;
    const MeasureOptions options{.fewestRuns = 20, .seconds = 2};
    const Timing saved = measure(
        [&] {
            static_cast<void>(
                QBNote::noteWithText(u"# Note %1\n"_s.arg(++turn) + text, 0, *process.stack().managedObjectContext()));
            process.stack().saveUsingCoalescence(false);
        },
        options);
    const Timing created = measure(
        [&] {
            QDBusMessage call =
                QDBusMessage::createMethodCall(name.busName, name.objectPath, quib::kApplicationInterface, u"Open"_s);
            call.setArguments(
                {QStringList{u"quib://x-callback-url/create?title=Note%20%1&text=%2&x-success=app://ok"_s.arg(
                     QString::number(++turn), QString::fromLatin1(QUrl::toPercentEncoding(text)))},
                 QVariantMap()});
            isAnswered = false;
            client.asyncCall(call);
            while (!isAnswered) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
        },
        options);
    report.addTime(u"create URL over the bus / one save"_s, created, saved, 3);
    service.unregister();
    daemon.terminate();
    daemon.waitForFinished();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && QByteArrayView(argv[1]) == "--start") {
        startOnce(argc, argv);
    }
    quib::WindowlessFrontEnd frontEnd;
    const auto application = frontEnd.makeApplication(argc, argv);
    Report report(u"start of the application"_s);
    measureStarts(report, QCoreApplication::applicationFilePath());
    measureCreate(report);
    return 0;
}
