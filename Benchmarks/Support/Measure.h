#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quib::benchmarks {

/// True where every program runs once on tiny inputs, only to show that it still works (QUIB_BENCHMARK_SMOKE=1).
[[nodiscard]] bool isSmokeRun();
/// A size for this run: the full one, or the tiny one of a smoke run.
[[nodiscard]] qsizetype sizeForRun(qsizetype full, qsizetype tiny);

/// What several runs of one piece of work took. A value.
struct Timing
{
    double minimum = 0;
    double median = 0;
    double maximum = 0;
    qsizetype runs = 0;
    /// The least processor time of a run: of the calling thread, or of the program. Other work on the machine does not
    /// lengthen it. 0 where it was not measured.
    double processor = 0;
};

struct MeasureOptions
{
    qsizetype fewestRuns = 5;
    qsizetype mostRuns = 1000;
    /// Runs are added until this time is used up.
    double seconds = 0.5;
    /// Runs before the first that counts.
    qsizetype warmUps = 1;
};

/// Times work in seconds. prepare runs before each run, untimed.
[[nodiscard]] Timing measure(const std::function<void()> &work, const MeasureOptions &options = {},
                             const std::function<void()> &prepare = {});

/// Times two pieces of work in turn, so that what changes the machine's speed changes it for both.
struct TimingPair
{
    Timing work;
    Timing baseline;
};
[[nodiscard]] TimingPair measureInTurn(const std::function<void()> &work, const std::function<void()> &baseline,
                                       const MeasureOptions &options = {});
/// The same against a program, see measureProgram.
[[nodiscard]] std::optional<TimingPair> measureInTurn(const std::function<void()> &work, const QStringList &commandLine,
                                                      const MeasureOptions &options = {});

/// Times a program from its start to its end, its output thrown away; nothing if it can't be run or fails. Programs
/// that report what they count by the exit status (1: nothing found) are not failures.
[[nodiscard]] std::optional<Timing> measureProgram(const QStringList &commandLine, const MeasureOptions &options = {});

/// Keeps the compiler from leaving out work whose result nobody reads.
template <typename T> void keep(const T &value)
{
    asm volatile("" : : "r,m"(&value) : "memory");
}

/// Bytes in use on the heap.
[[nodiscard]] qint64 heapBytes();

/// Prints one table to standard output: name, value, baseline, ratio, target; and a mark on each line beyond its
/// target.
class Report
{
public:
    /// title: the question that this program answers.
    explicit Report(const QString &title);

    /// value against baseline, both in seconds; target is the highest ratio that is good enough, 0 for none. The ratio
    /// of processor times stands behind it where both were measured.
    void addTime(const QString &name, const Timing &value, const Timing &baseline, double target);
    void addTime(const QString &name, const TimingPair &pair, double target)
    {
        addTime(name, pair.work, pair.baseline, target);
    }
    /// As addTime for a bare number of any unit.
    void addValue(const QString &name, double value, double baseline, double target, const QString &unit);
    /// A line of words below the figures: sizes, what the baseline was.
    void addRemark(const QString &remark);

    /// From here on targets are held against the ratio of processor times where there is one: for work that waits for
    /// nothing, on a machine that does other work too.
    void judgeByProcessorTime() { m_isJudgedByProcessorTime = true; }
    /// How many lines missed their target.
    [[nodiscard]] qsizetype missed() const { return m_missed; }

private:
    struct Line
    {
        QString name;
        QString value;
        QString baseline;
        double ratio = 0;
        double target = 0;
        QString spread = {};
        /// The ratio of processor times; 0 for none.
        double processorRatio = 0;
    };
    void addLine(const Line &line);

    qsizetype m_missed = 0;
    bool m_isJudgedByProcessorTime = false;
};

} // namespace quib::benchmarks
