// quibctl as a program beside an application's open store: what one writes the other sees, and nothing is lost, also
// when quibctl is killed in the middle.

#include "QuibctlRunner.h"

#include <Files/Profile.h>
#include <Store/ExternalChangeMonitor.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/ProfileLock.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBExternalChanges.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace {

/// The application's side: the lock, the store and the monitor, in this process.
class Companions : public testing::Test
{
protected:
    Companions()
    {
        quib::Profile::setRoot(quibctl.profile());
        preferences = std::make_unique<QBNotesPreferenceManager>();
        QBNotesPreferenceManager::setSharedPreferenceManager(preferences.get());
        NSError error;
        lock = quib::ProfileLock::acquire({}, &error);
        EXPECT_TRUE(lock) << error.localizedDescription().toStdString();
        stack = std::make_unique<QBCoreDataStack>();
        QBCoreDataStack::setSharedStack(stack.get());
        stack->setupStackWithDelegate({});
        monitor = std::make_unique<quib::ExternalChangeMonitor>(*stack);
    }
    ~Companions() override
    {
        monitor.reset();
        stack.reset();
        QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
        quib::Profile::setRoot({});
    }
    [[nodiscard]] NSManagedObjectContext &moc() const { return *stack->managedObjectContext(); }
    [[nodiscard]] quib::Ref<QBNote> noteWithIdentifier(const QString &identifier) const
    {
        return QBNote::noteWithUniqueIdentifier(identifier, moc());
    }
    void saveNow() const
    {
        stack->saveUsingCoalescence(/*coalescence=*/false);
        EXPECT_FALSE(stack->saveError().isSet()) << stack->saveError().localizedDescription().toStdString();
    }
    /// Runs the event loop until something holds. Units: gives the milliseconds that it took.
    static qint64 waitUntil(const std::function<bool()> &isDone, int limit = 30'000)
    {
        QElapsedTimer timer;
        timer.start();
        while (!isDone() && timer.elapsed() < limit) {
            QTimer::singleShot(20, QCoreApplication::instance(), [] {});
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        EXPECT_TRUE(isDone());
        return timer.elapsed();
    }
    std::unique_ptr<QProcess> start(const QStringList &arguments) const
    {
        auto process = std::make_unique<QProcess>();
        process->setEnvironment(quibctl.environment());
        process->start(QuibctlRunner::program(), arguments);
        return process;
    }

    QuibctlRunner quibctl;
    std::unique_ptr<QBNotesPreferenceManager> preferences;
    std::optional<quib::ProfileLock> lock;
    std::unique_ptr<QBCoreDataStack> stack;
    std::unique_ptr<quib::ExternalChangeMonitor> monitor;
};

} // namespace

TEST_F(Companions, TheApplicationSeesWhatQuibctlWritesWithinASecond)
{
    NSManagedObjectContext::Changes told;
    const auto token =
        moc().objectsDidChange.add([&told](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) {
            told.inserted += changes.inserted;
            told.refreshed += changes.refreshed;
            told.deleted += changes.deleted;
        });
    const QString identifier = quibctl.done({u"new"_s}, "first #tag");
    EXPECT_LT(waitUntil([&] { return noteWithIdentifier(identifier) && !told.inserted.isEmpty(); }), 1000);
    const auto note = noteWithIdentifier(identifier);
    ASSERT_TRUE(note);
    EXPECT_TRUE(told.inserted.contains(note));

    quibctl.done({u"edit"_s, identifier, u"-"_s}, "second");
    EXPECT_LT(waitUntil([&] { return note->text() == u"second"_s && told.refreshed.contains(note); }), 1000);
    quibctl.done({u"delete"_s, identifier});
    EXPECT_LT(waitUntil([&] { return note->managedObjectContext() == nullptr; }), 1000);
    EXPECT_TRUE(told.deleted.contains(note));
    waitUntil([&] { return QBExternalChanges::externalChangesInManagedObjectContext(moc()).isEmpty(); });
}

TEST_F(Companions, NothingIsLostWhileBothWriteAndOneIsKilled)
{
    const quib::tests::TestSeed seed;
    std::mt19937 random = seed.generator();
    constexpr int kRounds = 120;
    const auto shared = QBNote::noteWithText(u"shared"_s, 0, moc());
    saveNow();
    QStringList theirs; // acknowledged: quibctl told the identifier
    QStringList texts;  // lines that were acknowledged on either side
    QStringList edited; // texts that quibctl put into the shared note
    std::unique_ptr<QProcess> process;
    QString written;
    int finished = 0;
    int killed = 0;
    QElapsedTimer age;   // of the companion
    qint64 longest = 20; // that one took to finish, in milliseconds
    qint64 lifetime = 0; // after which this one is killed
    for (int started = 0; finished + killed < kRounds;) {
        if (!process) {
            written = u"companion %1"_s.arg(started);
            const bool isEdit = random() % 4 == 0;
            process = isEdit ? start({u"edit"_s, shared->uniqueIdentifier(), u"-"_s})
                             : start({u"new"_s, u"--tags"_s, u"both,c%1"_s.arg(random() % 8)});
            process->write(written.toUtf8());
            process->closeWriteChannel();
            process->setProperty("isEdit", isEdit);
            // One in four, at some moment of its life, however long that is on this machine.
            lifetime = random() % 4 == 0 ? static_cast<qint64>(random() % static_cast<quint64>(longest)) : -1;
            age.start();
            ++started;
        }
        if (random() % 8 == 0) {
            const QString text = u"application %1 #both #a%2"_s.arg(texts.size()).arg(random() % 8);
            static_cast<void>(QBNote::noteWithText(text, 0, moc()));
            saveNow();
            texts.append(text);
        }
        if (lifetime >= 0 && age.elapsed() >= lifetime && process->state() == QProcess::Running) {
            process->kill();
        }
        QTimer::singleShot(static_cast<int>(random() % 8), QCoreApplication::instance(), [] {});
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (process->state() == QProcess::NotRunning) {
            if (process->exitStatus() != QProcess::NormalExit) {
                ++killed;
            } else {
                ++finished;
                longest = std::max(longest, age.elapsed());
                EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
                if (process->property("isEdit").toBool()) {
                    edited.append(written);
                } else {
                    theirs.append(QString::fromUtf8(process->readAllStandardOutput()).trimmed());
                    texts.append(written);
                }
            }
            process.reset();
        }
    }
    EXPECT_GT(killed, 0);
    EXPECT_GT(finished, kRounds / 4);
    waitUntil([&] {
        return QBExternalChanges::externalChangesInManagedObjectContext(moc()).isEmpty() && !moc().hasChanges();
    });
    for (const QString &identifier : theirs) {
        EXPECT_TRUE(noteWithIdentifier(identifier)) << identifier.toStdString();
    }
    // The application's view is the store's, without having been read anew.
    QStringList seen;
    for (const auto &note : QBNote::notesInManagedObjectContext(moc(), {})) {
        seen.append(note->text());
    }
    for (const QString &text : texts) {
        EXPECT_EQ(seen.filter(QRegularExpression(u'^' + QRegularExpression::escape(text) + u"($|\\W)"_s)).size(), 1)
            << text.toStdString();
    }
    if (!edited.isEmpty()) {
        EXPECT_TRUE(seen.contains(shared->text()));
    }
    const QuibctlResult check = quibctl.run({u"check"_s});
    EXPECT_EQ(check.exitStatus, 0) << check.output.toStdString() << check.messages.toStdString();
}

TEST_F(Companions, AWatchedListTellsWhatTheApplicationDoes)
{
    const auto first = QBNote::noteWithText(u"first"_s, 0, moc());
    saveNow();
    const auto watch = start({u"list"_s, u"--watch"_s});
    QList<QJsonObject> lines;
    const auto waitForLines = [&](qsizetype count) {
        waitUntil([&] {
            while (watch->canReadLine()) {
                lines.append(QJsonDocument::fromJson(watch->readLine()).object());
            }
            return lines.size() >= count;
        });
        return lines.size() >= count;
    };
    const auto identifierAt = [&lines](qsizetype index) {
        return lines.at(index).value(u"note"_s).toObject().value(u"id"_s).toString();
    };
    ASSERT_TRUE(waitForLines(1));
    EXPECT_EQ(lines.at(0).value(u"change"_s), u"initial"_s);
    ASSERT_EQ(lines.at(0).value(u"notes"_s).toArray().size(), 1);

    const auto second = QBNote::noteWithText(u"second #tag"_s, 0, moc());
    saveNow();
    ASSERT_TRUE(waitForLines(2));
    EXPECT_EQ(lines.at(1).value(u"change"_s), u"insert"_s);
    EXPECT_EQ(lines.at(1).value(u"newIndex"_s), 0);
    EXPECT_EQ(identifierAt(1), second->uniqueIdentifier());

    first->setPinned(true);
    saveNow();
    ASSERT_TRUE(waitForLines(3));
    EXPECT_EQ(lines.at(2).value(u"change"_s), u"move"_s);
    EXPECT_EQ(lines.at(2).value(u"index"_s), 1);
    EXPECT_EQ(lines.at(2).value(u"newIndex"_s), 0);
    EXPECT_EQ(identifierAt(2), first->uniqueIdentifier());

    // A companion's changes are told the same way, and leaving the list is a deletion.
    quibctl.done({u"trash"_s, second->uniqueIdentifier()});
    ASSERT_TRUE(waitForLines(4));
    EXPECT_EQ(lines.at(3).value(u"change"_s), u"delete"_s);
    EXPECT_EQ(identifierAt(3), second->uniqueIdentifier());

    const QString deleted = first->uniqueIdentifier();
    quibctl.done({u"delete"_s, deleted});
    ASSERT_TRUE(waitForLines(5));
    EXPECT_EQ(lines.at(4).value(u"change"_s), u"delete"_s);
    EXPECT_EQ(identifierAt(4), deleted);

    watch->terminate();
    waitUntil([&] { return watch->state() == QProcess::NotRunning; });
    EXPECT_EQ(watch->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(watch->exitCode(), 0);
}

TEST_F(Companions, AWatchedSearchFollowsTextsAndTags)
{
    const auto note = QBNote::noteWithText(u"plain"_s, 0, moc());
    saveNow();
    const auto watch = start({u"list"_s, u"--watch"_s, u"--search"_s, u"needle"_s});
    QList<QJsonObject> lines;
    const auto waitForLines = [&](qsizetype count) {
        waitUntil([&] {
            while (watch->canReadLine()) {
                lines.append(QJsonDocument::fromJson(watch->readLine()).object());
            }
            return lines.size() >= count;
        });
        return lines.size() >= count;
    };
    ASSERT_TRUE(waitForLines(1));
    EXPECT_TRUE(lines.at(0).value(u"notes"_s).toArray().isEmpty());
    note->updateNoteWithText(u"with a needle #new"_s, 0, /*updateModificationDate=*/true);
    saveNow();
    ASSERT_TRUE(waitForLines(2));
    EXPECT_EQ(lines.at(1).value(u"change"_s), u"insert"_s);
    EXPECT_EQ(lines.at(1).value(u"note"_s).toObject().value(u"tags"_s).toArray(), QJsonArray{u"new"_s});
    watch->kill();
    waitUntil([&] { return watch->state() == QProcess::NotRunning; });
}

TEST(Companion, LeavesNoRowsWhereNoApplicationRuns)
{
    const QuibctlRunner quibctl;
    const QString identifier = quibctl.done({u"new"_s}, "a");
    quibctl.done({u"edit"_s, identifier, u"-"_s}, "b");
    quib::Profile::setRoot(quibctl.profile());
    {
        QBCoreDataStack stack;
        stack.setupStackWithDelegate({});
        EXPECT_TRUE(QBExternalChanges::externalChangesInManagedObjectContext(*stack.managedObjectContext()).isEmpty());
    }
    quib::Profile::setRoot({});
}

TEST(Companion, ListsTodayAndRefusesALimitOnAWatch)
{
    const QuibctlRunner quibctl;
    const QString identifier = quibctl.done({u"new"_s}, "a");
    EXPECT_TRUE(quibctl.done({u"list"_s, u"--in"_s, u"today"_s}).startsWith(identifier));
    EXPECT_EQ(quibctl.run({u"list"_s, u"--watch"_s, u"--limit"_s, u"3"_s}).exitStatus, 2);
    EXPECT_EQ(quibctl.run({u"list"_s, u"--watch"_s, u"--in"_s, u"nowhere"_s}).exitStatus, 2);
    for (const QString &shell : {u"bash"_s, u"zsh"_s, u"fish"_s}) {
        EXPECT_TRUE(quibctl.done({u"completion"_s, shell}).contains(u"watch"_s)) << shell.toStdString();
    }
    EXPECT_TRUE(quibctl.done({u"manual"_s}).contains(u"watch"_s));
}
