#include <Files/FileWatcher.h>
#include <Support/FakeClock.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr double kLatency = 3;
constexpr int kPatience = 10'000; ///< milliseconds until a change that the system should tell is missed

class FileWatcherTest : public testing::Test
{
protected:
    void watch()
    {
        watcher = std::make_unique<FileWatcher>(folder.path(), kLatency, [this](const QStringList &folders) {
            QStringList names;
            for (const QString &path : folders) {
                names.append(QDir(folder.path()).relativeFilePath(path));
            }
            told.append(names);
        });
        ASSERT_TRUE(watcher->isComplete());
    }
    /// Waits for the system to tell something, and lets the event loop take it in.
    void takeIn() const
    {
        pollfd waiting{watcher->descriptor(), POLLIN, 0};
        ASSERT_EQ(::poll(&waiting, 1, kPatience), 1) << "no change was told";
        QCoreApplication::processEvents();
    }
    /// What is told of the changes made just now, once the latency is over.
    QList<QStringList> toldOfChanges()
    {
        takeIn();
        clock.advance(kLatency);
        return std::exchange(told, {});
    }

    TemporaryFolder folder;
    FakeClock clock;
    std::unique_ptr<FileWatcher> watcher;
    QList<QStringList> told;
};

TEST_F(FileWatcherTest, TellsTheFolderOfAWrittenFileAfterTheLatency)
{
    folder.write(u"a/f.txt"_s, "1");
    folder.write(u"b/g.txt"_s, "1");
    watch();
    folder.write(u"a/f.txt"_s, "2");
    takeIn();
    EXPECT_EQ(clock.waitingTimers(), 1U);
    clock.advance(kLatency - 0.5);
    EXPECT_TRUE(told.isEmpty());
    folder.write(u"b/g.txt"_s, "2");
    folder.write(u"a/f.txt"_s, "3");
    takeIn();
    clock.advance(0.5);
    EXPECT_EQ(told, (QList<QStringList>{{u"a"_s, u"b"_s}})) << "each folder once, all within the latency together";
    clock.advance(10 * kLatency);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(FileWatcherTest, TellsNothingOfWhatWasThereBefore)
{
    folder.write(u"a/f.txt"_s, "1");
    watch();
    watcher->readChanges();
    EXPECT_EQ(clock.waitingTimers(), 0U);
    EXPECT_EQ(QFile(folder.path(u"a/f.txt"_s)).size(), 1) << "looking is no change";
    watcher->readChanges();
    EXPECT_EQ(clock.waitingTimers(), 0U);
}

TEST_F(FileWatcherTest, NoticesFilesThatAreReplacedInOneStep)
{
    folder.write(u"a/f.txt"_s, "1");
    folder.write(u"elsewhere"_s, "2");
    QDir().mkpath(folder.path(u"a"_s));
    watch();
    ASSERT_EQ(::rename(QFile::encodeName(folder.path(u"elsewhere"_s)).constData(),
                       QFile::encodeName(folder.path(u"a/f.txt"_s)).constData()),
              0);
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"."_s, u"a"_s}}));
}

TEST_F(FileWatcherTest, NoticesRemovedFilesAndFolders)
{
    folder.write(u"a/f.txt"_s, "1");
    folder.write(u"b/c/g.txt"_s, "1");
    watch();
    ASSERT_TRUE(QFile::remove(folder.path(u"a/f.txt"_s)));
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"a"_s}}));
    ASSERT_TRUE(QDir(folder.path(u"b"_s)).removeRecursively());
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"b"_s, u"b/c"_s}}));
}

TEST_F(FileWatcherTest, WatchesFoldersThatComeLaterWithWhatIsInThem)
{
    watch();
    folder.write(u"new/deep/f.txt"_s, "1");
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"new/deep"_s}}));
    folder.write(u"new/deep/f.txt"_s, "2");
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"new/deep"_s}}));
}

TEST_F(FileWatcherTest, FollowsFoldersThatAreMoved)
{
    folder.write(u"a/in/f.txt"_s, "1");
    watch();
    ASSERT_TRUE(QDir().rename(folder.path(u"a"_s), folder.path(u"b"_s)));
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"a"_s, u"b/in"_s}}));
    folder.write(u"b/in/f.txt"_s, "2");
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"b/in"_s}}));
}

TEST_F(FileWatcherTest, ForgetsFoldersThatLeave)
{
    const TemporaryFolder outside;
    folder.write(u"a/f.txt"_s, "1");
    watch();
    ASSERT_TRUE(QDir().rename(folder.path(u"a"_s), outside.path(u"a"_s)));
    EXPECT_EQ(toldOfChanges(), (QList<QStringList>{{u"a"_s}}));
    outside.write(u"a/f.txt"_s, "2");
    watcher->readChanges();
    EXPECT_EQ(clock.waitingTimers(), 0U);
}

TEST_F(FileWatcherTest, DoesNotFollowLinks)
{
    const TemporaryFolder outside;
    outside.write(u"f.txt"_s, "1");
    ASSERT_TRUE(QFile::link(outside.path(), folder.path(u"link"_s)));
    watch();
    outside.write(u"f.txt"_s, "2");
    watcher->readChanges();
    EXPECT_EQ(clock.waitingTimers(), 0U);
}

TEST_F(FileWatcherTest, OfTheRootAloneTellsNothingBelow)
{
    folder.write(u"below/f.txt"_s, "1");
    const FileWatcher rootOnly(
        folder.path(), kLatency, [this](const QStringList &folders) { told.append(folders); },
        FileWatcher::Depth::RootOnly);
    ASSERT_TRUE(rootOnly.isComplete());
    folder.write(u"below/f.txt"_s, "2");
    folder.write(u"later/g.txt"_s, "1");
    pollfd waiting{rootOnly.descriptor(), POLLIN, 0};
    ASSERT_EQ(::poll(&waiting, 1, kPatience), 1) << "a folder that comes is told by the system";
    QCoreApplication::processEvents();
    clock.advance(kLatency);
    EXPECT_TRUE(told.isEmpty());

    folder.write(u"h.txt"_s, "1");
    ASSERT_EQ(::poll(&waiting, 1, kPatience), 1);
    QCoreApplication::processEvents();
    clock.advance(kLatency);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.constFirst(), QStringList{QDir(folder.path()).absolutePath()});
}

TEST_F(FileWatcherTest, EndsWithoutTellingAndMayEndWhileTelling)
{
    folder.write(u"a/f.txt"_s, "1");
    watch();
    folder.write(u"a/f.txt"_s, "2");
    takeIn();
    watcher.reset();
    clock.advance(kLatency);
    EXPECT_TRUE(told.isEmpty());

    int calls = 0;
    watcher = std::make_unique<FileWatcher>(folder.path(), kLatency, [this, &calls](const QStringList &) {
        ++calls;
        watcher.reset();
    });
    folder.write(u"a/f.txt"_s, "3");
    takeIn();
    clock.advance(kLatency);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(watcher, nullptr);
}

} // namespace

} // namespace quib::tests
