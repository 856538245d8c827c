#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib::benchmarks {

namespace {

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
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

/// Runs the program once; nothing if it could not be started or ended by a status above 1.
std::optional<double> secondsOfProgram(const std::vector<char *> &arguments)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    // A pipe or a file would make programs that look at their output work differently than for a reader.
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const double start = secondsNow();
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status) || WEXITSTATUS(status) > 1) {
        return std::nullopt;
    }
    return secondsNow() - start;
}

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
    const MeasureOptions used =
        isSmokeRun() ? MeasureOptions{.fewestRuns = 1, .mostRuns = 1, .seconds = 0, .warmUps = 0} : options;
    std::vector<double> times;
    double total = 0;
    for (qsizetype run = -used.warmUps; run < used.mostRuns; ++run) {
        if (run >= used.fewestRuns && total >= used.seconds) {
            break;
        }
        if (prepare) {
            prepare();
        }
        const double start = secondsNow();
        work();
        const double taken = secondsNow() - start;
        if (run >= 0) {
            times.push_back(taken);
            total += taken;
        }
    }
    std::sort(times.begin(), times.end());
    return {.minimum = times.front(),
            .median = times[times.size() / 2],
            .maximum = times.back(),
            .runs = static_cast<qsizetype>(times.size())};
}

std::optional<Timing> measureProgram(const QStringList &commandLine, const MeasureOptions &options)
{
    std::vector<QByteArray> words;
    for (const QString &word : commandLine) {
        words.push_back(word.toUtf8());
    }
    std::vector<char *> arguments;
    for (QByteArray &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    if (!secondsOfProgram(arguments)) {
        return std::nullopt;
    }
    bool failed = false;
    const Timing timing = measure([&] { failed = !secondsOfProgram(arguments) || failed; }, options);
    return failed ? std::nullopt : std::optional(timing);
}

qint64 heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

Report::Report(const QString &title)
{
    printLine(title);
    addLine(u"name"_s, u"value"_s, u"baseline"_s, -1, -1, {});
}

void Report::addTime(const QString &name, const Timing &value, const Timing &baseline, double target)
{
    const double ratio = baseline.minimum > 0 ? value.minimum / baseline.minimum : 0;
    // The slower half says how far the machine's other work disturbed the runs.
    const double spread = value.minimum > 0 ? value.median / value.minimum - 1 : 0;
    addLine(name, formattedSeconds(value.minimum), formattedSeconds(baseline.minimum), ratio, target,
            u"%1 runs, median +%2 %"_s.arg(value.runs).arg(spread * 100, 0, 'f', 0));
}

void Report::addValue(const QString &name, double value, double baseline, double target, const QString &unit)
{
    addLine(name, QString::number(value, 'f', 1) + u' ' + unit, QString::number(baseline, 'f', 1) + u' ' + unit,
            baseline > 0 ? value / baseline : 0, target, {});
}

void Report::addRemark(const QString &remark)
{
    printLine(u"  " + remark);
}

void Report::addLine(const QString &name, const QString &value, const QString &baseline, double ratio, double target,
                     const QString &spread)
{
    const bool isHead = ratio < 0;
    const bool isMissed = !isHead && !isSmokeRun() && target > 0 && ratio > target;
    m_missed += isMissed ? 1 : 0;
    const QString ratioText = isHead ? u"ratio"_s : QString::number(ratio, 'f', ratio < 0.1 ? 4 : 2);
    const QString targetText = isHead       ? u"target"_s
                               : target > 0 ? QString::number(target, 'f', target < 0.1 ? 4 : 2)
                                            : u"-"_s;
    QString line = name.leftJustified(44) + value.rightJustified(14) + baseline.rightJustified(14) +
                   ratioText.rightJustified(10) + targetText.rightJustified(10);
    if (isMissed) {
        line += u"  MISSED"_s;
    }
    if (!spread.isEmpty()) {
        line += u"  "_s + spread;
    }
    printLine(line);
}

} // namespace quib::benchmarks
