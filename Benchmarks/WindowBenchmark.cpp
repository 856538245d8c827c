// How soon is the window there, what does it weigh, and does it keep up with a hand, with 100,000 notes?
//
// Workloads, each in a process of its own that draws without a display:
//   from the start of the process to the first complete frame (sidebar, list and note painted from the store), 100,000
//   notes against an empty store (unit: seconds, by the clock and of the processor);
//   resident memory once every text can be searched, 100,000 notes against 1.3 times the folded texts and 80 MB; and of
//   an empty store against 80 MB (unit: MB);
//   keys in the search field, each from the key to a window that has nothing left to do (unit: ms, against two frames
//   of 16.7);
//   from one note to the next (unit: ms, against one frame).

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Files/Profile.h>
#include <Process/QuibProcess.h>
#include <Search/NoteTextSearch.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>
#include <Window/EditorPane.h>
#include <Window/QBMainWindowController.h>
#include <Window/SearchField.h>
#include <Window/WindowFrontEnd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

constexpr auto kStartVariable = "QUIB_BENCHMARK_STARTED";
constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr double kFrame = 1000.0 / 60;

void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "WindowBenchmark: %s\n", what);
        std::exit(1);
    }
}

double secondsOf(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

/// Units: MB. Of the files that are mapped too.
double residentMemory()
{
    QFile file(u"/proc/self/statm"_s);
    require(file.open(QIODevice::ReadOnly), "the process cannot look at itself");
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / kMegabyte;
}

/// Fills the profile in force.
void fill(qsizetype count)
{
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack;
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const CorpusGenerator generator;
    NSManagedObjectContext &context = *stack.managedObjectContext();
    for (qsizetype i = 0; i < count; ++i) {
        static_cast<void>(QBNote::noteWithText(generator.text(i), 0, context));
        if (i % 10'000 == 9'999) {
            stack.saveUsingCoalescence(false);
            context.reset();
        }
    }
    stack.saveUsingCoalescence(false);
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
}

/// Everything that has been asked for is done and painted.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

/// Units: ms. The slowest, and the one in the middle.
QJsonObject summary(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return {{u"worst"_s, times.back()}, {u"median"_s, times[times.size() / 2]}};
}

QJsonObject typeSearches(QBMainWindowController &window)
{
    const CorpusGenerator generator;
    std::vector<double> keys;
    window.focusSearchField();
    settle();
    for (const QString &line : {generator.word(3), generator.word(5'000), u"zqqzzq"_s,
                                QString(generator.word(50) % u' ' % generator.word(400)), u"@todo "_s}) {
        for (const QChar c : line) {
            QElapsedTimer timer;
            timer.start();
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(&window.searchField(), &press);
            settle();
            keys.push_back(double(timer.nsecsElapsed()) / 1e6);
            if (qEnvironmentVariableIsSet("QUIB_BENCHMARK_VERBOSE")) {
                std::fprintf(stderr, "%s: %.1f ms\n", qPrintable(window.searchField().text()), keys.back());
            }
        }
        window.searchField().clear();
        settle();
    }
    return summary(keys);
}

QJsonObject switchNotes(QBMainWindowController &window)
{
    std::vector<double> switches;
    const qint64 count = std::min<qint64>(window.notes()->numberOfRows(), 200);
    for (qint64 row = 1; row < count; ++row) {
        QElapsedTimer timer;
        timer.start();
        window.noteList().selectRows({row});
        settle();
        switches.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (qEnvironmentVariableIsSet("QUIB_BENCHMARK_VERBOSE")) {
            const auto note = window.editor().note();
            std::fprintf(stderr, "row %lld, %lld units: %.1f ms\n", static_cast<long long>(row),
                         static_cast<long long>(note->text().size()), switches.back());
        }
    }
    return summary(switches);
}

/// Opens the window on the profile of the environment and prints what that took; its end is not measured.
[[noreturn]] void startOnce(int argc, char **argv, bool isWorking)
{
    const QApplication application(argc, argv);
    auto made = std::make_unique<quib::WindowInterface>();
    quib::WindowInterface &interface = *made;
    quib::QuibProcess process(std::move(made), [](const QUrl &) { return true; });
    process.launch();
    require(process.stack().managedObjectContext() != nullptr, "the store did not open");
    QBMainWindowController &window = *interface.window();
    settle();
    const double now = secondsOf(CLOCK_MONOTONIC);
    QJsonObject result{{u"seconds"_s, now - qEnvironmentVariable(kStartVariable).toDouble()},
                       {u"processor"_s, secondsOf(CLOCK_PROCESS_CPUTIME_ID)},
                       {u"rows"_s, double(window.notes()->numberOfRows())}};
    const auto search = window.textSearch();
    result.insert(u"early"_s, residentMemory());
    require(search->fill(), "the texts could not be read");
    settle();
    result.insert(u"memory"_s, residentMemory());
    result.insert(u"folded"_s, double(search->arena().sizeInBytes()) / kMegabyte);
    if (isWorking) {
        result.insert(u"keys"_s, typeSearches(window));
        result.insert(u"switches"_s, switchNotes(window));
        result.insert(u"memoryAfter"_s, residentMemory());
    }
    const QByteArray line = QJsonDocument(result).toJson(QJsonDocument::Compact);
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
    ::_exit(0);
}

QJsonObject run(const QString &mode, const QString &profile)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QUIB_PROFILE"_s, profile);
    environment.insert(QString::fromLatin1(kStartVariable), QString::number(secondsOf(CLOCK_MONOTONIC), 'f', 9));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {mode});
    require(child.waitForFinished(-1) && child.exitCode() == 0, "a child failed");
    return QJsonDocument::fromJson(child.readAllStandardOutput()).object();
}

/// Several starts; the quickest by either measure.
QJsonObject starts(const QString &profile)
{
    QJsonObject best = run(u"--start"_s, profile);
    for (int i = 0; i < (isSmokeRun() ? 0 : 5); ++i) {
        const QJsonObject next = run(u"--start"_s, profile);
        for (const auto &key : {u"seconds"_s, u"processor"_s, u"memory"_s}) {
            best.insert(key, std::min(best.value(key).toDouble(), next.value(key).toDouble()));
        }
    }
    return best;
}

Timing timing(const QJsonObject &result, const QString &key)
{
    const double seconds = result.value(key).toDouble();
    return {.minimum = seconds, .median = seconds, .maximum = seconds, .runs = 6};
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArrayView mode = argc > 1 ? argv[1] : "";
    if (mode == "--start" || mode == "--work") {
        startOnce(argc, argv, mode == "--work");
    }
    const QCoreApplication application(argc, argv);
    if (mode == "--fill") {
        fill(argc > 2 ? std::atoi(argv[2]) : 0);
        return 0;
    }
    const QTemporaryDir emptyFolder;
    const QTemporaryDir fullFolder;
    quib::Profile::setRoot(fullFolder.path());
    fill(sizeForRun(100'000, 100));
    const QJsonObject empty = starts(emptyFolder.path());
    const QJsonObject full = starts(fullFolder.path());
    const QJsonObject work = run(u"--work"_s, fullFolder.path());

    Report report(u"the window with 100,000 notes"_s);
    report.addTime(u"start to frame / empty store"_s, timing(full, u"seconds"_s), timing(empty, u"seconds"_s), 5);
    report.addTime(u"the same, processor"_s, timing(full, u"processor"_s), timing(empty, u"processor"_s), 5);
    report.addValue(u"memory, empty store / 80 MB"_s, empty.value(u"memory"_s).toDouble(), 80, 1, u"MB"_s);
    report.addValue(u"memory / 1.3 folded texts + 80 MB"_s, full.value(u"memory"_s).toDouble(),
                    1.3 * full.value(u"folded"_s).toDouble() + 80, 1, u"MB"_s);
    const auto addFrames = [&report, &work](const QString &name, const QString &key, double frames) {
        const QJsonObject times = work.value(key).toObject();
        report.addValue(QString(name % u", worst"_s), times.value(u"worst"_s).toDouble(), frames, 1, u"ms"_s);
        report.addValue(QString(name % u", median"_s), times.value(u"median"_s).toDouble(), frames, 0, u"ms"_s);
    };
    addFrames(u"a key in the search field"_s, u"keys"_s, 2 * kFrame);
    addFrames(u"another note"_s, u"switches"_s, kFrame);
    report.addRemark(
        u"folded texts %1 MB; memory after the work %2 MB"_s.arg(full.value(u"folded"_s).toDouble(), 0, 'f', 1)
            .arg(work.value(u"memoryAfter"_s).toDouble(), 0, 'f', 1));
    return 0;
}
