#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib::benchmarks {

namespace {

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Of this thread alone.
double processorSecondsNow()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double secondsOf(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

QString formattedSeconds(double seconds)
{
    if (seconds < 1e-3) {
        return QString::number(seconds * 1e6, 'f', seconds < 1e-5 ? 3 : 1) + u" µs";
    }
    if (seconds < 1) {
        return QString::number(seconds * 1e3, 'f', seconds < 1e-2 ? 3 : 1) + u" ms";
    }
    return QString::number(seconds, 'f', 2) + u" s";
}

void printLine(const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

/// Runs the program once and gives its processor time; nothing if it could not be started or ended by a status above 1.
std::optional<double> processorSecondsOfProgram(const std::vector<char *> &arguments)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    // A pipe or a file would make programs that look at their output work differently than for a reader.
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || wait4(process, &status, 0, &usage) != process || !WIFEXITED(status) || WEXITSTATUS(status) > 1) {
        return std::nullopt;
    }
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

/// Work that answers with its processor time.
using TimedWork = std::function<double()>;

TimedWork timed(const std::function<void()> &work)
{
    return [&work] {
        const double start = processorSecondsNow();
        work();
        return processorSecondsNow() - start;
    };
}

/// What the runs of one piece of work took so far.
struct Runs
{
    /// Answers with how long the run took.
    double add(const TimedWork &work, bool isCounted)
    {
        const double start = secondsNow();
        const double processorTaken = work();
        const double taken = secondsNow() - start;
        if (isCounted) {
            times.push_back(taken);
            processor = std::min(processor, processorTaken);
        }
        return taken;
    }
    [[nodiscard]] Timing timing()
    {
        std::sort(times.begin(), times.end());
        return {.minimum = times.front(),
                .median = times[times.size() / 2],
                .maximum = times.back(),
                .runs = static_cast<qsizetype>(times.size()),
                .processor = processor};
    }

    std::vector<double> times;
    double processor = std::numeric_limits<double>::infinity();
};

/// Calls round(isCounted), which answers with how long it took, until there are enough rounds.
template <typename Round> void repeat(const MeasureOptions &options, const Round &round)
{
    const MeasureOptions used =
        isSmokeRun() ? MeasureOptions{.fewestRuns = 1, .mostRuns = 1, .seconds = 0, .warmUps = 0} : options;
    double total = 0;
    for (qsizetype run = -used.warmUps; run < used.mostRuns; ++run) {
        if (run >= used.fewestRuns && total >= used.seconds) {
            break;
        }
        const double taken = round(run >= 0);
        total += run >= 0 ? taken : 0;
    }
}

Timing measureWork(const TimedWork &work, const MeasureOptions &options, const std::function<void()> &prepare)
{
    Runs runs;
    repeat(options, [&](bool isCounted) {
        if (prepare) {
            prepare();
        }
        return runs.add(work, isCounted);
    });
    return runs.timing();
}

TimingPair measureWorkInTurn(const TimedWork &work, const TimedWork &baseline, const MeasureOptions &options)
{
    Runs ofWork;
    Runs ofBaseline;
    repeat(options, [&](bool isCounted) {
        const double taken = ofBaseline.add(baseline, isCounted);
        return taken + ofWork.add(work, isCounted);
    });
    return {ofWork.timing(), ofBaseline.timing()};
}

/// A program's runs as work.
class Program
{
public:
    explicit Program(const QStringList &commandLine)
    {
        for (const QString &word : commandLine) {
            m_words.push_back(word.toUtf8());
        }
        for (QByteArray &word : m_words) {
            m_arguments.push_back(word.data());
        }
        m_arguments.push_back(nullptr);
    }

    [[nodiscard]] double run()
    {
        const auto taken = processorSecondsOfProgram(m_arguments);
        m_hasFailed = !taken || m_hasFailed;
        return taken.value_or(0);
    }
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    std::vector<QByteArray> m_words;
    std::vector<char *> m_arguments;
    bool m_hasFailed = false;
};

} // namespace

bool isSmokeRun()
{
    return qEnvironmentVariableIntValue("QUIB_BENCHMARK_SMOKE") != 0;
}

qsizetype sizeForRun(qsizetype full, qsizetype tiny)
{
    return isSmokeRun() ? tiny : full;
}

Timing measure(const std::function<void()> &work, const MeasureOptions &options, const std::function<void()> &prepare)
{
    return measureWork(timed(work), options, prepare);
}

TimingPair measureInTurn(const std::function<void()> &work, const std::function<void()> &baseline,
                         const MeasureOptions &options)
{
    return measureWorkInTurn(timed(work), timed(baseline), options);
}

std::optional<TimingPair> measureInTurn(const std::function<void()> &work, const QStringList &commandLine,
                                        const MeasureOptions &options)
{
    Program program(commandLine);
    static_cast<void>(program.run());
    if (program.hasFailed()) {
        return std::nullopt;
    }
    const TimingPair pair = measureWorkInTurn(
        timed(work), [&program] { return program.run(); }, options);
    return program.hasFailed() ? std::nullopt : std::optional(pair);
}

std::optional<Timing> measureProgram(const QStringList &commandLine, const MeasureOptions &options)
{
    Program program(commandLine);
    static_cast<void>(program.run());
    if (program.hasFailed()) {
        return std::nullopt;
    }
    const Timing timing = measureWork([&program] { return program.run(); }, options, {});
    return program.hasFailed() ? std::nullopt : std::optional(timing);
}

qint64 heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

Report::Report(const QString &title)
{
    printLine(title);
    addLine({.name = u"name"_s, .value = u"value"_s, .baseline = u"baseline"_s, .ratio = -1, .target = -1});
}

void Report::addTime(const QString &name, const Timing &value, const Timing &baseline, double target)
{
    const double ratio = baseline.minimum > 0 ? value.minimum / baseline.minimum : 0;
    // The slower half says how far the machine's other work disturbed the runs.
    const double spread = value.minimum > 0 ? value.median / value.minimum - 1 : 0;
    addLine({.name = name,
             .value = formattedSeconds(value.minimum),
             .baseline = formattedSeconds(baseline.minimum),
             .ratio = ratio,
             .target = target,
             .spread = u"%1 runs, median +%2 %"_s.arg(value.runs).arg(spread * 100, 0, 'f', 0),
             .processorRatio = baseline.processor > 0 ? value.processor / baseline.processor : 0});
}

void Report::addValue(const QString &name, double value, double baseline, double target, const QString &unit)
{
    addLine({.name = name,
             .value = QString(QString::number(value, 'f', 1) % u' ' % unit),
             .baseline = QString(QString::number(baseline, 'f', 1) % u' ' % unit),
             .ratio = baseline > 0 ? value / baseline : 0,
             .target = target});
}

void Report::addRemark(const QString &remark)
{
    printLine(u"  " + remark);
}

void Report::addLine(const Line &line)
{
    const bool isHead = line.ratio < 0;
    const bool isByProcessor = m_isJudgedByProcessorTime && line.processorRatio > 0;
    const double judged = isByProcessor ? line.processorRatio : line.ratio;
    const bool isMissed = !isHead && !isSmokeRun() && line.target > 0 && judged > line.target;
    m_missed += isMissed ? 1 : 0;
    const auto formatted = [](double ratio) { return QString::number(ratio, 'f', ratio < 0.1 ? 4 : 2); };
    const QString ratio = isHead ? u"ratio"_s : formatted(line.ratio);
    const QString processor = isHead                    ? u"processor"_s
                              : line.processorRatio > 0 ? formatted(line.processorRatio)
                                                        : u"-"_s;
    const QString target = isHead ? u"target"_s : line.target > 0 ? formatted(line.target) : u"-"_s;
    QString text = line.name.leftJustified(44) + line.value.rightJustified(14) + line.baseline.rightJustified(14) +
                   ratio.rightJustified(10) + processor.rightJustified(10) + target.rightJustified(10);
    if (isMissed) {
        text += u"  MISSED"_s;
    }
    if (!line.spread.isEmpty()) {
        text += u"  "_s + line.spread;
    }
    printLine(text);
}

} // namespace quib::benchmarks
