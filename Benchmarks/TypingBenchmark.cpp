// Does everything that the editor shows come within a frame?
//
// Workloads (the editor's pane in a window of 1,000 by 800 points, drawn offscreen, every event from its arrival to its
// painted frame recorded; unit: milliseconds of processor time a frame):
//   typing: words, line ends and markup in a note of 60 KB, at its start, middle and end;
//   deleting: the same backwards, by characters and words;
//   scrolling: by the wheel's steps through the whole note and back, each tick a frame;
//   resizing: the window made narrower and wider;
//   keeping: of a note of a million units, what is typed is put into the journal, which every second of typing does;
//   switching: notes of 2 to 95 KB, for the first time and again.
// Baseline: a frame of 16 ms, and half of one for the median.

#include <Editor/QBNoteEditorViewController.h>
#include <Files/Profile.h>
#include <Foundation/Clock.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QThread>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

namespace {

constexpr double kFrame = 16;

/// The processor time of this thread: what other programs do meanwhile does not count. Units: milliseconds.
double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_nsec) / 1e6;
}

class Frames
{
public:
    /// Does something and paints what comes of it.
    void record(const std::function<void()> &work)
    {
        const double start = processorTime();
        work();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        m_times.push_back(processorTime() - start);
    }
    void report(Report &report, const QString &name)
    {
        std::sort(m_times.begin(), m_times.end());
        const double median = m_times[m_times.size() / 2];
        report.addValue(QString(name % u", median of %1"_s.arg(m_times.size())), median, kFrame / 2, 1, u"ms"_s);
        report.addValue(QString(name % u", longest"_s), m_times.back(), kFrame, 1, u"ms"_s);
    }

private:
    std::vector<double> m_times;
};

/// A clock whose calls are made when the benchmark says so, all that wait for no longer than some time.
class HeldClock : public quib::Clock
{
public:
    HeldClock() { setShared(this); } // after the system's was found
    HeldClock(const HeldClock &) = delete;
    HeldClock &operator=(const HeldClock &) = delete;
    ~HeldClock() override { setShared(nullptr); }

    [[nodiscard]] NSDate now() override { return m_system.now(); }
    [[nodiscard]] std::unique_ptr<quib::TimerToken> schedule(double seconds, std::function<void()> callback) override
    {
        const auto call = std::make_shared<Call>(Call{seconds, std::move(callback)});
        m_calls.push_back(call);
        return std::make_unique<Token>(call);
    }
    void fireUpTo(double seconds)
    {
        const auto calls = m_calls;
        for (const auto &held : calls) {
            if (const auto call = held.lock(); call && call->seconds <= seconds && call->callback) {
                std::exchange(call->callback, nullptr)();
            }
        }
        std::erase_if(m_calls, [](const auto &held) { return held.expired() || !held.lock()->callback; });
    }

private:
    struct Call
    {
        double seconds;
        std::function<void()> callback;
    };
    class Token : public quib::TimerToken
    {
    public:
        explicit Token(std::shared_ptr<Call> call)
            : m_call(std::move(call))
        {
        }
        void invalidate() override { m_call->callback = nullptr; }
        [[nodiscard]] bool isValid() const override { return m_call->callback != nullptr; }

    private:
        std::shared_ptr<Call> m_call;
    };
    quib::Clock &m_system = quib::Clock::shared();
    std::vector<std::weak_ptr<Call>> m_calls;
};

void press(QWidget &view, int key, const QString &text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(&view, &event);
}

void typeText(Frames &frames, QWidget &view, const QString &text)
{
    for (const QChar letter : text) {
        frames.record([&] {
            if (letter == u'\n') {
                press(view, Qt::Key_Return, u"\r"_s);
            } else {
                press(view, Qt::Key_A, letter);
            }
        });
    }
}

void measureTyping(QBNoteEditorViewController &pane, Report &report)
{
    const QString typed =
        u"Some words, *bold* and #tag/sub, and `code`.\n- to do\nmore\n\n> quoted\n\nand 1 more end "_s;
    Frames typing;
    Frames deleting;
    QBNoteTextView &view = pane.textView();
    for (const qint64 part : {0, 2, 4}) {
        const qint64 place = view.textStorage().length() * part / 4;
        view.setSelectedRange({place, 0});
        view.scrollRangeToVisible({place, 0});
        QCoreApplication::processEvents();
        typeText(typing, view, typed);
        for (int key = 0; key < 30; ++key) {
            deleting.record([&] { press(view, Qt::Key_Backspace, u"\b"_s); });
        }
        for (int key = 0; key < 8; ++key) {
            deleting.record([&] { press(view, Qt::Key_Backspace, {}, Qt::ControlModifier); });
        }
    }
    typing.report(report, u"typing"_s);
    deleting.report(report, u"deleting"_s);
}

void measureScrolling(QBNoteEditorViewController &pane, Report &report)
{
    Frames frames;
    QBNoteTextView &view = pane.textView();
    view.setSelectedRange({0, 0});
    view.scrollRangeToVisible({0, 0});
    const QPointF at(100, 100);
    for (const int direction : {-1, 1}) {
        for (qsizetype step = 0; step < sizeForRun(500, 5); ++step) {
            frames.record([&] {
                QWheelEvent wheel(at, view.mapToGlobal(at), QPoint(0, direction * 40), QPoint(0, direction * 40),
                                  Qt::NoButton, Qt::NoModifier, Qt::ScrollUpdate, false);
                QCoreApplication::sendEvent(view.viewport(), &wheel);
            });
        }
    }
    for (qsizetype step = 0; step < sizeForRun(60, 3); ++step) {
        frames.record([&] { press(view, step % 8 < 6 ? Qt::Key_PageDown : Qt::Key_PageUp); });
    }
    frames.report(report, u"scrolling"_s);
}

void measureResizing(QBNoteEditorViewController &pane, Report &report)
{
    Frames frames;
    for (qsizetype step = 0; step < sizeForRun(60, 3); ++step) {
        const int away = static_cast<int>(step % 30) * 12;
        frames.record([&] { pane.resize(1000 - away, 800); });
    }
    frames.report(report, u"resizing"_s);
}

void measureKeeping(const quib::Ref<QBNote> &note, Report &report)
{
    HeldClock clock;
    QBNoteEditorViewController pane;
    pane.resize(1000, 800);
    pane.show();
    pane.focusEditor();
    pane.setNote(note);
    pane.textView().setSelectedRange({pane.textView().textStorage().length() / 2, 0});
    QCoreApplication::processEvents();
    Frames frames;
    for (qsizetype second = 0; second < sizeForRun(20, 2); ++second) {
        press(pane.textView(), Qt::Key_A, u"a"_s);
        QCoreApplication::processEvents();
        frames.record([&] { clock.fireUpTo(QBNoteEditorViewController::kJournalDelay); });
        pane.waitForJournal();
    }
    frames.report(report, u"keeping a million units"_s);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack(folder.path());
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const CorpusGenerator generator;
    std::vector<quib::Ref<QBNote>> notes;
    for (const qsizetype kilobytes : {2, 10, 30, 60, 95}) {
        for (qsizetype index = 0; index < sizeForRun(4, 1); ++index) {
            const QString text = generator.textWithBytes(index * 7 + kilobytes, kilobytes * 1000);
            notes.push_back(QBNote::noteWithText(text, 0, *stack.managedObjectContext()));
        }
    }
    stack.saveUsingCoalescence(/*coalescence=*/false);

    Report report(u"the frames of the editor"_s);
    {
        QBNoteEditorViewController pane;
        pane.resize(1000, 800);
        pane.show();
        pane.focusEditor();
        Frames firstTime;
        Frames switching;
        pane.setNote(notes.front());
        // As long as somebody reads the first note, while the fonts of other scripts are loaded.
        const QDeadlineTimer read(4000);
        while (!read.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
            QThread::msleep(5);
        }
        for (Frames *frames : {&firstTime, &switching, &switching}) {
            for (const auto &note : notes) {
                frames->record([&] { pane.setNote(note); });
            }
        }
        firstTime.report(report, u"switching, first time"_s);
        switching.report(report, u"switching"_s);
        const auto large = std::find_if(notes.begin(), notes.end(),
                                        [](const auto &note) { return note->text().toUtf8().size() >= 60'000; });
        pane.setNote(large != notes.end() ? *large : notes.back());
        QCoreApplication::processEvents();
        measureScrolling(pane, report);
        measureResizing(pane, report);
        measureTyping(pane, report);
    }
    const QString text = generator.textWithBytes(1, sizeForRun(1'000'000, 20'000));
    measureKeeping(QBNote::noteWithText(text, 0, *stack.managedObjectContext()), report);
    return 0;
}
