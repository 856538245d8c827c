#include "StoreFixture.h"

#include <Graphics/GraphicsContext.h>
#include <Logging/QBLogger.h>
#include <Store/ForgottenFiles.h>
#include <Store/QBLocalFileWatcher.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBNoteImage.h>
#include <Store/QBThumbFileManager.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr double kLatency = 3;
constexpr int kPatience = 30'000; ///< milliseconds until something awaited counts as missed

} // namespace

class LocalFileWatcher : public StoreFixture
{
protected:
    LocalFileWatcher()
    {
        token = QBNoteFilesDowloadedNotification().add(
            [this](const QStringList &identifiers) { posted.append(identifiers); });
    }

    /// An attachment that the cloud has, saved.
    [[nodiscard]] Ref<QBNoteFile> uploadedFile(const QString &name) const
    {
        auto file = QBNoteFile::factoryNoteFileForFileURL(userFile(name, "old"), moc());
        file->setUploaded(true);
        file->setUploadedDate(NSDate::now());
        save();
        return file;
    }
    [[nodiscard]] static QString pathOf(const QBNoteFile &file) { return file.fileURL()->toLocalFile(); }
    /// Writes a file beside its place, dates it some seconds off the old one, and moves it there in one step.
    static void replace(const QString &path, const QByteArray &bytes, qint64 secondsLater)
    {
        const QDateTime date = QFileInfo(path).lastModified().addSecs(secondsLater);
        QFile fresh(path + u".new"_s);
        ASSERT_TRUE(fresh.open(QIODevice::WriteOnly));
        ASSERT_EQ(fresh.write(bytes), bytes.size());
        ASSERT_TRUE(fresh.flush());
        ASSERT_TRUE(fresh.setFileTime(date, QFileDevice::FileModificationTime));
        fresh.close();
        ASSERT_EQ(::rename(QFile::encodeName(fresh.fileName()).constData(), QFile::encodeName(path).constData()), 0);
    }
    void watch() { watcher = std::make_unique<QBLocalFileWatcher>(stack->managedObjectContext()); }
    /// Lets the system tell, the latency pass and the queues work.
    void takeIn()
    {
        pollfd waiting{watcher->fileWatcher().descriptor(), POLLIN, 0};
        ASSERT_EQ(::poll(&waiting, 1, kPatience), 1) << "no change was told";
        QCoreApplication::processEvents();
        clock.advance(kLatency);
        finish();
    }
    /// Runs what waits on the main queue.
    static void finish()
    {
        bool isDone = false;
        DispatchQueue::main()->async([&isDone] { DispatchQueue::main()->async([&isDone] { isDone = true; }); });
        const QDeadlineTimer deadline(kPatience);
        while (!isDone && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        ASSERT_TRUE(isDone);
    }

    std::unique_ptr<QBLocalFileWatcher> watcher;
    ObservationToken token;
    QList<QStringList> posted;
};

TEST_F(LocalFileWatcher, AReplacedFileIsUploadedAgain)
{
    const auto file = uploadedFile(u"a.txt"_s);
    const auto other = uploadedFile(u"b.txt"_s);
    const auto dateBefore = file->modificationDate();
    const auto *thumbs = QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages);
    QFile thumb(thumbs->thumbURLForImageURL(*file->fileURL(), {10, 10}).toLocalFile());
    QFile otherThumb(thumbs->thumbURLForImageURL(*other->fileURL(), {10, 10}).toLocalFile());
    ASSERT_TRUE(QDir().mkpath(QFileInfo(thumb.fileName()).path()));
    ASSERT_TRUE(thumb.open(QIODevice::WriteOnly) && otherThumb.open(QIODevice::WriteOnly));
    watch();
    replace(pathOf(*file), "longer than before", 5);
    auto &log = QBLogger::sharedLogger();
    log.setFileLoggerEnabled(true);
    takeIn();
    log.flush();
    QFile lines(log.lastLogFilePath());
    ASSERT_TRUE(lines.open(QIODevice::ReadOnly));
    log.setFileLoggerEnabled(false);
    EXPECT_TRUE(
        QString::fromUtf8(lines.readAll()).contains(u"LOCAL FILE MODIFIED -> "_s + file->uniqueIdentifier() + u'\n'));
    EXPECT_FALSE(file->uploaded());
    EXPECT_FALSE(file->uploadedDate().has_value());
    EXPECT_EQ(file->fileSize(), 18);
    EXPECT_NEAR(file->modificationDate()->timeIntervalSinceDate(*dateBefore), 5, 0.01);
    EXPECT_TRUE(file->downloaded());
    EXPECT_FALSE(moc().hasChanges()) << "the context is saved";
    EXPECT_EQ(posted, (QList<QStringList>{{file->uniqueIdentifier()}}));
    EXPECT_FALSE(thumb.exists()) << "it shows what the file no longer is";
    EXPECT_TRUE(otherThumb.exists());
    EXPECT_TRUE(other->uploaded());

    // The row now has the file's date: the same change is no change any more.
    watcher->updateNoteFiles({file, other}, moc());
    finish();
    EXPECT_EQ(posted.size(), 1);
}

TEST_F(LocalFileWatcher, AnOlderFileIsNoChange)
{
    const auto file = uploadedFile(u"a.txt"_s);
    watch();
    replace(pathOf(*file), "older", -5);
    takeIn();
    EXPECT_TRUE(file->uploaded());
    EXPECT_EQ(file->fileSize(), 3);
    EXPECT_TRUE(posted.isEmpty());
}

TEST_F(LocalFileWatcher, AttachmentsThatAreNotHereAreLeftAlone)
{
    const auto notDownloaded = uploadedFile(u"a.txt"_s);
    notDownloaded->setDownloaded(false);
    const auto gone = uploadedFile(u"b.txt"_s);
    save();
    watch();
    replace(pathOf(*notDownloaded), "newer", 5);
    ASSERT_TRUE(QFile::remove(pathOf(*gone)));
    takeIn();
    EXPECT_TRUE(notDownloaded->uploaded());
    EXPECT_TRUE(gone->uploaded());
    EXPECT_TRUE(posted.isEmpty());
}

TEST_F(LocalFileWatcher, NewAttachmentsAreNoChangeButTheirLaterOnesAre)
{
    watch();
    const auto file = uploadedFile(u"a.txt"_s);
    takeIn();
    EXPECT_TRUE(file->uploaded());
    EXPECT_TRUE(posted.isEmpty());
    replace(pathOf(*file), "newer", 5);
    takeIn();
    EXPECT_FALSE(file->uploaded());
}

TEST_F(LocalFileWatcher, TheCheckFindsWhatChangedWhileNobodyWatched)
{
    const auto file = uploadedFile(u"a.txt"_s);
    const auto other = uploadedFile(u"b.txt"_s);
    replace(pathOf(*file), "newer", 5);
    watch();
    watcher->checkAndUpdateLocalFilesInBackground();
    const QDeadlineTimer deadline(kPatience);
    while (posted.isEmpty() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    EXPECT_EQ(posted, (QList<QStringList>{{file->uniqueIdentifier()}}));
    EXPECT_FALSE(file->uploaded());
    EXPECT_EQ(file->fileSize(), 5);
    EXPECT_TRUE(other->uploaded());
    EXPECT_FALSE(moc().hasChanges()) << "what the check found is saved";
    reopen();
    EXPECT_FALSE(QBNoteFile::noteFileWithUniqueIdentifier(posted.constFirst().constFirst(), moc())->uploaded());
}

TEST_F(LocalFileWatcher, AttachmentsThatReachedNoTextAreCollectedWithTheUnused)
{
    const auto import = [this](const QString &name) {
        return QBNoteFile::factoryNoteFileForFileURL(userFile(name, "old"), moc());
    };
    const auto forgotten = import(u"a.txt"_s);
    const auto taken = import(u"b.txt"_s);
    const auto inCode = import(u"c.txt"_s);
    const auto takenUpMeanwhile = import(u"d.txt"_s);
    const auto note = makeNote(u"one"_s);
    const auto other = makeNote(taken->textRepresentation() + u" `"_s + inCode->textRepresentation() + u'`');
    save();
    const QString path = pathOf(*forgotten);
    watch();
    EXPECT_TRUE(possiblyForgottenFiles(moc()).isEmpty()) << "they are new";
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(static_cast<double>(QDateTime::currentSecsSinceEpoch()) +
                                                       2.0 * 24 * 60 * 60));
    watcher->markForgottenFilesInBackground();
    note->updateNoteWithText(takenUpMeanwhile->textRepresentation(), 0);
    const QDeadlineTimer deadline(kPatience);
    while (!forgotten->unused() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    EXPECT_TRUE(forgotten->unused());
    EXPECT_FALSE(takenUpMeanwhile->unused());
    EXPECT_FALSE(taken->unused());
    EXPECT_FALSE(inCode->unused());
    EXPECT_TRUE(QFileInfo::exists(path));
    QBNoteFile::deleteAllUnusedNoteFilesInManagedObjectContext(moc());
    save();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).path()));
    EXPECT_EQ(QBNoteFile::filesInManagedObjectContext(moc(), {}).size(), 3);
}

TEST_F(LocalFileWatcher, AReplacedPictureHasItsNewSize)
{
    const auto picture = [](QSize size) {
        return GraphicsContext(size, 1, NSColor::colorWithRed(1, 0, 0)).image().pngData();
    };
    const auto file = QBNoteFile::factoryNoteFileForFileURL(userFile(u"a.png"_s, picture({20, 10})), moc());
    save();
    const auto size = [&file] {
        const auto row = file.as<QBNoteImage>();
        return std::pair<qint64, qint64>(row->width(), row->height());
    };
    ASSERT_EQ(size(), (std::pair<qint64, qint64>(20, 10)));
    watch();
    replace(pathOf(*file), picture({30, 40}), 5);
    takeIn();
    EXPECT_EQ(size(), (std::pair<qint64, qint64>(30, 40)));
    replace(pathOf(*file), "cut off", 5);
    takeIn();
    EXPECT_EQ(size(), (std::pair<qint64, qint64>(30, 40))) << "what cannot be read keeps its room";
    EXPECT_EQ(posted.size(), 2);
}

} // namespace quib::tests
