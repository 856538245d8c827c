// How soon is the window there, what does it weigh, and does it keep up with a hand, with 100,000 notes?
//
// Workloads, each in a process of its own that draws without a display:
//   from the start of the process to the first complete frame (sidebar, list and note painted from the store), 100,000
//   notes against an empty store (unit: seconds, by the clock and of the main thread);
//   resident memory once every text can be searched, 100,000 notes against 1.3 times the folded texts and 80 MB; and of
//   an empty store against 80 MB (unit: MB);
//   keys in the search field, each from the key to a window that has nothing left to do (unit: ms, against two frames
//   of 16.7);
//   from one note below 100 KB to the next (unit: ms, against one frame);
//   "Open Quickly" and keys of a title there (unit: ms, against one frame);
//   keys of a title behind "[[" in a note, for which titles are offered (unit: ms, against one frame).
//   All by the clock and of the main thread, which is what counts where the machine has other work.

#include <Support/CorpusGenerator.h>
#include <Support/CorpusProfile.h>
#include <Support/Measure.h>

#include <Files/Profile.h>
#include <Process/QuibProcess.h>
#include <Search/NoteTextSearch.h>
#include <Spelling/HunspellProcess.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>
#include <Window/ChoicePanel.h>
#include <Window/EditorPane.h>
#include <Window/QBMainWindowController.h>
#include <Window/SearchField.h>
#include <Window/WindowFrontEnd.h>

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

constexpr auto kStartVariable = "QUIB_BENCHMARK_STARTED";
constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr double kFrame = 1000.0 / 60;
/// From here on a note may take longer than a frame. Units: bytes.
constexpr qsizetype kLargeNote = 100'000;

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

/// Everything that has been asked for is done and painted.
void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

/// What pieces of work took, each by the clock and of the main thread.
class Frames
{
public:
    void add(const QString &name, const std::function<void()> &work)
    {
        const double wall = secondsOf(CLOCK_MONOTONIC);
        const double thread = secondsOf(CLOCK_THREAD_CPUTIME_ID);
        work();
        m_threads.push_back((secondsOf(CLOCK_THREAD_CPUTIME_ID) - thread) * 1000);
        m_walls.push_back((secondsOf(CLOCK_MONOTONIC) - wall) * 1000);
        if (qEnvironmentVariableIsSet("QUIB_BENCHMARK_VERBOSE")) {
            std::fprintf(stderr, "%s: %.1f ms, of the main thread %.1f ms\n", qPrintable(name), m_walls.back(),
                         m_threads.back());
        }
    }
    /// Units: ms. The slowest, and the one in the middle.
    [[nodiscard]] QJsonObject summary()
    {
        if (m_walls.empty()) {
            return {};
        }
        std::sort(m_walls.begin(), m_walls.end());
        std::sort(m_threads.begin(), m_threads.end());
        return {{u"worst"_s, m_walls.back()},
                {u"median"_s, m_walls[m_walls.size() / 2]},
                {u"worst of thread"_s, m_threads.back()},
                {u"median of thread"_s, m_threads[m_threads.size() / 2]}};
    }

private:
    std::vector<double> m_walls;
    std::vector<double> m_threads;
};

QJsonObject typeSearches(QBMainWindowController &window)
{
    const CorpusGenerator generator;
    Frames keys;
    window.focusSearchField();
    settle();
    const QString common = generator.word(3);
    const QString rarer = generator.word(50);
    // Words, conditions on notes' fields, on their tags and on dates, and all of it negated, quoted and together.
    for (const QString &line : {common, generator.word(5'000), u"zqqzzq"_s, QString(rarer % u' ' % generator.word(400)),
                                u"@todo "_s, u"@untagged "_s, u"@last7days "_s, u"@attachments "_s,
                                QString(u'-' % rarer), QString(u'"' % common % u' ' % rarer % u'"'),
                                QString(common % u" -" % rarer % u" @task -@done @tagged"), u"@cdate(2024-12-31) "_s}) {
        for (const QChar c : line) {
            keys.add(QString(window.searchField().text() + c), [&window, c] {
                QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
                QCoreApplication::sendEvent(&window.searchField(), &press);
                settle();
            });
        }
        window.searchField().clear();
        settle();
    }
    return keys.summary();
}

QJsonObject switchNotes(QBMainWindowController &window)
{
    Frames switches;
    const qint64 count = std::min<qint64>(window.notes()->numberOfRows(), 200);
    for (qint64 row = 1; row < count; ++row) {
        const auto object = window.notes()->noteAtRow(row);
        const qsizetype size = object.as<QBNote>()->text().toUtf8().size();
        if (size < kLargeNote) {
            switches.add(u"row %1, %2 bytes"_s.arg(row).arg(size), [&window, row] {
                window.noteList().selectRows({row});
                settle();
            });
        }
    }
    return switches.summary();
}

/// "Open Quickly", then a title letter by letter.
QJsonObject openQuickly(QBMainWindowController &window)
{
    Frames keys;
    const double start = secondsOf(CLOCK_MONOTONIC);
    keys.add(u"Ctrl+O"_s, [&window] {
        window.action(u"quick-open"_s)->trigger();
        settle();
    });
    // Nothing is waited for but by the eye: keys go on meanwhile. What no title has is offered as a new one once all
    // are known.
    const auto wait = [&window] {
        while (window.choices().choices().isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    wait();
    const double first = secondsOf(CLOCK_MONOTONIC) - start;
    auto *field = window.choices().findChild<QLineEdit *>();
    field->setText(u"zqzqzqzqzq"_s);
    wait();
    const double all = secondsOf(CLOCK_MONOTONIC) - start;
    field->clear();
    settle();
    for (const QString &line : {u"review"_s, u"the "_s, u"zqq"_s}) {
        for (const QChar c : line) {
            keys.add(QString(u"quick open "_s % field->text() % c), [field, c] {
                QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
                QCoreApplication::sendEvent(field, &press);
                settle();
            });
        }
        field->clear();
        settle();
    }
    keys.add(u"quick open is left"_s, [&window] {
        window.choices().leave();
        settle();
    });
    QJsonObject result = keys.summary();
    result.insert(u"first"_s, first * 1000);
    result.insert(u"all"_s, all * 1000);
    return result;
}

/// The beginning of a link in a note, and the title that it leads to letter by letter.
QJsonObject completeLinks(QBMainWindowController &window)
{
    const CorpusGenerator generator;
    Frames keys;
    const auto press = [](QWidget &view, int key, const QString &text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&view, &event);
        settle();
    };
    window.activateWindow();
    window.noteList().selectRows({0});
    settle();
    window.editor().focusEditor();
    settle();
    QBNoteTextView &view = window.editor().textView();
    require(view.hasFocus(), "the editor does not get the keyboard");
    const auto *titles = window.editor().findChild<QWidget *>(u"completions"_s);
    bool isOffered = false;
    for (const QString &title : {generator.word(3), generator.word(5'000), u"zqqzzq"_s}) {
        // A link does not begin in a heading, and nothing is offered before its first letter.
        window.editor().moveToEnd();
        press(view, Qt::Key_Return, u"\r"_s);
        QString typed = u"[["_s;
        press(view, Qt::Key_BracketLeft, u"["_s);
        press(view, Qt::Key_BracketLeft, u"["_s);
        for (const QChar c : title) {
            typed += c;
            keys.add(u"link "_s % typed, [&] { press(view, Qt::Key_A, c); });
            isOffered |= titles->isVisible();
        }
    }
    require(isOffered || isSmokeRun(), "no title is offered");
    return keys.summary();
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
                       {u"thread"_s, secondsOf(CLOCK_THREAD_CPUTIME_ID)},
                       {u"rows"_s, double(window.notes()->numberOfRows())}};
    const auto search = window.textSearch();
    result.insert(u"early"_s, residentMemory());
    while (!search->isFilled()) {
        QCoreApplication::processEvents();
        QThread::msleep(5);
    }
    settle();
    result.insert(u"memory"_s, residentMemory());
    result.insert(u"folded"_s, double(search->arena().sizeInBytes()) / kMegabyte);
    if (isWorking) {
        // As long as somebody looks at the window, while the fonts of other scripts are looked for.
        const QDeadlineTimer look(4000);
        while (!look.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
            QThread::msleep(5);
        }
        result.insert(u"memoryRead"_s, residentMemory());
        result.insert(u"keys"_s, typeSearches(window));
        result.insert(u"switches"_s, switchNotes(window));
        result.insert(u"titles"_s, openQuickly(window));
        result.insert(u"links"_s, completeLinks(window));
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
        for (const auto &key : {u"seconds"_s, u"thread"_s, u"memory"_s}) {
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
    quib::HunspellProcess::prepare(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArrayView mode = argc > 1 ? argv[1] : "";
    if (mode == "--start" || mode == "--work") {
        startOnce(argc, argv, mode == "--work");
    }
    const QCoreApplication application(argc, argv);
    if (mode == "--fill") {
        fillProfileWithCorpus(argc > 2 ? std::atoi(argv[2]) : 0);
        return 0;
    }
    const QTemporaryDir emptyFolder;
    const QTemporaryDir fullFolder;
    quib::Profile::setRoot(fullFolder.path());
    fillProfileWithCorpus(sizeForRun(100'000, 100));
    const QJsonObject empty = starts(emptyFolder.path());
    const QJsonObject full = starts(fullFolder.path());
    const QJsonObject work = run(u"--work"_s, fullFolder.path());

    Report report(u"the window with 100,000 notes"_s);
    report.addTime(u"start to frame / empty store"_s, timing(full, u"seconds"_s), timing(empty, u"seconds"_s), 5);
    report.addTime(u"the same, main thread"_s, timing(full, u"thread"_s), timing(empty, u"thread"_s), 5);
    report.addValue(u"memory, empty store / 80 MB"_s, empty.value(u"memory"_s).toDouble(), 80, 1, u"MB"_s);
    report.addValue(u"memory / 1.3 folded texts + 80 MB"_s, full.value(u"memory"_s).toDouble(),
                    1.3 * full.value(u"folded"_s).toDouble() + 80, 1, u"MB"_s);
    const auto addFrames = [&report, &work](const QString &name, const QString &key, double frames) {
        const QJsonObject times = work.value(key).toObject();
        for (const auto &which : {u"worst"_s, u"median"_s, u"worst of thread"_s, u"median of thread"_s}) {
            report.addValue(QString(name % u", "_s % which), times.value(which).toDouble(), frames,
                            which.startsWith(u"worst") ? 1 : 0, u"ms"_s);
        }
    };
    addFrames(u"a key in the search field"_s, u"keys"_s, 2 * kFrame);
    addFrames(u"another note"_s, u"switches"_s, kFrame);
    addFrames(u"a key of a title to open"_s, u"titles"_s, kFrame);
    addFrames(u"a key of a title to link to"_s, u"links"_s, kFrame);
    const QJsonObject titles = work.value(u"titles"_s).toObject();
    report.addRemark(
        u"titles to open: the first after %1 ms, all after %2 ms"_s.arg(titles.value(u"first"_s).toDouble(), 0, 'f', 0)
            .arg(titles.value(u"all"_s).toDouble(), 0, 'f', 0));
    report.addRemark(u"folded texts %1 MB; memory before the work %2 MB, after it %3 MB"_s
                         .arg(full.value(u"folded"_s).toDouble(), 0, 'f', 1)
                         .arg(work.value(u"memoryRead"_s).toDouble(), 0, 'f', 1)
                         .arg(work.value(u"memoryAfter"_s).toDouble(), 0, 'f', 1));
    return 0;
}
