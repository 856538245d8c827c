// The folders of attachments, small files in the documents, and the move of the data folder.

#include <Files/Profile.h>
#include <Store/QBFileHelper.h>
#include <Store/QBLocalDataMigrator.h>
#include <Store/QBLocalFileManager.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using quib::tests::TemporaryFolder;

namespace {

constexpr QLatin1StringView kData{"QBTEAM0000.net.quibworks.quib/Application Data/"};

class LocalFiles : public testing::Test
{
protected:
    LocalFiles() { quib::Profile::setRoot(m_folder.path()); }
    ~LocalFiles() override { quib::Profile::setRoot(QString()); }
    [[nodiscard]] QUrl outside(const QString &name, const QByteArray &bytes) const
    {
        return QUrl::fromLocalFile(m_folder.write(u"outside/"_s % name, bytes));
    }
    TemporaryFolder m_folder;
};

TEST_F(LocalFiles, HaveOneManagerAFolder)
{
    auto *images = QBLocalFileManager::localFileManagerForPathComponent(u"Local Files/Note Images"_s);
    EXPECT_EQ(images, QBLocalFileManager::localFileManagerForPathComponent(u"Local Files/Note Images"_s));
    EXPECT_NE(images, QBLocalFileManager::localFileManagerForPathComponent(u"Local Files/Note Files"_s));
    EXPECT_EQ(images->baseURL().toLocalFile(), m_folder.path(kData % u"Local Files/Note Images"));
    EXPECT_TRUE(m_folder.contains(kData % u"Local Files/Note Files"));
    EXPECT_EQ(images->fileURLForUniqueID(u"ID"_s, u"a b.png"_s).toLocalFile(),
              m_folder.path(kData % u"Local Files/Note Images/ID/a b.png"));
    EXPECT_FALSE(m_folder.contains(kData % u"Local Files/Note Images/ID"));
}

TEST_F(LocalFiles, EnterMoveAndLeaveByIdentifier)
{
    const QBLocalFileManager files(QUrl::fromLocalFile(m_folder.path(u"base"_s)));
    const QUrl source = outside(u"a.txt"_s, "content");
    ASSERT_TRUE(files.copyFileAtURL(source, u"ID1"_s, u"copy.txt"_s));
    EXPECT_EQ(m_folder.read(u"base/ID1/copy.txt"_s), "content");
    EXPECT_EQ(m_folder.read(u"outside/a.txt"_s), "content");
    NSError error;
    EXPECT_FALSE(files.copyFileAtURL(source, u"ID1"_s, u"copy.txt"_s, &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteFileExists));
    ASSERT_TRUE(files.copyFileAtURL(source, u"ID2"_s, u"copy.txt"_s));
    EXPECT_FALSE(files.moveFileForUniqueID(u"ID1"_s, u"ID2"_s));
    ASSERT_TRUE(files.moveFileForUniqueID(u"ID1"_s, u"ID3"_s));
    EXPECT_EQ(m_folder.names(u"base"_s), (QStringList{u"ID2"_s, u"ID3"_s}));
    files.deleteFileForUniqueID(u"ID3"_s);
    files.deleteFileForUniqueID(u"never there"_s);
    EXPECT_EQ(m_folder.names(u"base"_s), QStringList{u"ID2"_s});
}

TEST_F(LocalFiles, ThatFailToEnterLeaveNothing)
{
    const QBLocalFileManager files(QUrl::fromLocalFile(m_folder.path(u"base"_s)));
    NSError error;
    EXPECT_FALSE(files.copyFileAtURL(QUrl::fromLocalFile(m_folder.path(u"none"_s)), u"ID"_s, u"a"_s, &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_FALSE(files.copyFileAtURL(QUrl(u"https://example.org/a"_s), u"ID"_s, u"a"_s, &error));
    EXPECT_TRUE(m_folder.names(u"base"_s).isEmpty());
}

TEST_F(LocalFiles, NeverLeaveTheirFolder)
{
    const QBLocalFileManager files(QUrl::fromLocalFile(m_folder.path(u"base"_s)));
    const QUrl source = outside(u"a.txt"_s, "content");
    for (const QString &bad : {u""_s, u"."_s, u".."_s, u"../outside"_s, u"a/b"_s, QString(u"a"_s + QChar(u'\0'))}) {
        EXPECT_TRUE(files.fileURLForUniqueID(bad, u"a"_s).isEmpty()) << qPrintable(bad);
        EXPECT_TRUE(files.fileURLForUniqueID(u"ID"_s, bad).isEmpty()) << qPrintable(bad);
        EXPECT_FALSE(files.copyFileAtURL(source, bad, u"a"_s)) << qPrintable(bad);
        EXPECT_FALSE(files.copyFileAtURL(source, u"ID"_s, bad)) << qPrintable(bad);
        EXPECT_FALSE(files.moveFileForUniqueID(bad, u"ID"_s)) << qPrintable(bad);
        files.deleteFileForUniqueID(bad);
    }
    EXPECT_EQ(m_folder.read(u"outside/a.txt"_s), "content");
    EXPECT_FALSE(m_folder.contains(u"base"_s));
}

TEST_F(LocalFiles, AreCopiedToTemporaryFolders)
{
    const QUrl source = outside(u"a.txt"_s, "content");
    const QUrl copy = QBLocalFileManager::copyFileURLToTemporaryDirectory(source);
    EXPECT_EQ(copy.fileName(), u"a.txt"_s);
    EXPECT_NE(QBLocalFileManager::copyFileURLToTemporaryDirectory(source), copy);
    EXPECT_TRUE(QFile::exists(copy.toLocalFile()));
    const QString folder = QBLocalFileManager::temporaryUniqueDirectoryPath();
    EXPECT_TRUE(QDir(folder).isEmpty());
    QBLocalFileManager::deleteTemporaryDirectoryContent();
    EXPECT_TRUE(m_folder.names(u"tmp"_s).isEmpty());
    EXPECT_TRUE(QBLocalFileManager::copyFileURLToTemporaryDirectory(QUrl::fromLocalFile(u"/no/such"_s)).isEmpty());
    QBLocalFileManager::deleteTemporaryDirectoryContent();
}

TEST_F(LocalFiles, InTheDocumentsAreReadWrittenAndRenamed)
{
    QBFileHelper &helper = QBFileHelper::sharedHelper();
    EXPECT_EQ(helper.getDataPlistPath(), m_folder.path(u"Documents/data.plist"_s));
    EXPECT_EQ(helper.getDirectoryPathWithName(u"x"_s), m_folder.path(u"Documents/x"_s));
    ASSERT_TRUE(helper.writeFileWithName(u"a"_s, u"Grüße"_s, /*userFile=*/false));
    ASSERT_TRUE(helper.writeFileWithName(u"b"_s, u"b"_s, /*userFile=*/true));
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(m_folder.path(u"Documents/a"_s)).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(helper.loadFileForName(u"a"_s), u"Grüße"_s);
    EXPECT_FALSE(helper.renameFile(u"a"_s, u"b"_s));
    ASSERT_TRUE(helper.renameFile(u"a"_s, u"c"_s));
    EXPECT_FALSE(helper.fileExistsWithName(u"a"_s));
    EXPECT_TRUE(helper.deleteFileForName(u"c"_s));
    EXPECT_FALSE(helper.loadFileForName(u"c"_s));
    ASSERT_TRUE(helper.createDirectoryWithName(u"folder"_s));
    EXPECT_FALSE(helper.writeFileWithName(u"../escaped"_s, u"x"_s, /*userFile=*/false));
    EXPECT_FALSE(helper.deleteFileForName(u".."_s));
    EXPECT_EQ(m_folder.names(u"Documents"_s), (QStringList{u"b"_s, u"folder"_s}));
}

class DataFolderMove : public LocalFiles
{
protected:
    void writeOld(const QString &name, const QByteArray &bytes) const
    {
        m_folder.write(u"net.quibworks.quib/"_s % name, bytes);
    }
    [[nodiscard]] QByteArray readNew(const QString &name) const { return m_folder.read(kData % name); }
};

TEST_F(DataFolderMove, TakesAllButThumbsAndHiddenItems)
{
    writeOld(u"database.sqlite"_s, "store");
    writeOld(u"database.sqlite-journal"_s, "journal");
    writeOld(u"Local Files/Note Images/ID/a.png"_s, "image");
    writeOld(u"Thumbs/t.png"_s, "thumb");
    writeOld(u".device-id"_s, "hidden");
    NSError error;
    ASSERT_TRUE(QBLocalDataMigrator::migrateToCurrentVersion(&error));
    EXPECT_FALSE(error.isSet());
    EXPECT_EQ(readNew(u"database.sqlite"_s), "store");
    EXPECT_EQ(readNew(u"database.sqlite-journal"_s), "journal");
    EXPECT_EQ(readNew(u"Local Files/Note Images/ID/a.png"_s), "image");
    EXPECT_EQ(m_folder.names(u"net.quibworks.quib"_s), (QStringList{u".device-id"_s, u"Thumbs"_s}));
}

TEST_F(DataFolderMove, HasNothingToDoWithoutOldDataOrOverNewData)
{
    writeOld(u"other"_s, "x");
    EXPECT_TRUE(QBLocalDataMigrator::migrateToCurrentVersion(nullptr));
    EXPECT_TRUE(m_folder.contains(u"net.quibworks.quib/other"_s));
    writeOld(u"database.sqlite"_s, "old");
    m_folder.write(kData % u"database.sqlite", "new");
    EXPECT_TRUE(QBLocalDataMigrator::migrateToCurrentVersion(nullptr));
    EXPECT_EQ(readNew(u"database.sqlite"_s), "new");
    EXPECT_EQ(m_folder.read(u"net.quibworks.quib/database.sqlite"_s), "old");
}

TEST_F(DataFolderMove, AlsoComesFromTheDocuments)
{
    EXPECT_EQ(QBLocalDataMigrator::documentDataURL().toLocalFile(), m_folder.path(u"Documents/Application Data"_s));
    m_folder.write(u"Documents/Application Data/database.sqlite"_s, "store");
    EXPECT_TRUE(QBLocalDataMigrator::migrateToCurrentVersion(nullptr));
    EXPECT_EQ(readNew(u"database.sqlite"_s), "store");
}

TEST_F(DataFolderMove, StopsAtTheFirstFailureAndFinishesInASecondRun)
{
    m_folder.write(u"Documents/Application Data/database.sqlite"_s, "store");
    m_folder.write(u"Documents/Application Data/a"_s, "a");
    m_folder.write(u"Documents/Application Data/b"_s, "b");
    m_folder.write(kData % u"b", "in the way");
    NSError error;
    EXPECT_FALSE(QBLocalDataMigrator::migrateToCurrentVersion(&error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteFileExists));
    EXPECT_EQ(readNew(u"a"_s), "a");
    EXPECT_EQ(readNew(u"b"_s), "in the way");
    EXPECT_TRUE(m_folder.contains(u"Documents/Application Data/database.sqlite"_s));
    ASSERT_TRUE(QFile::remove(m_folder.path(kData % u"b")));
    EXPECT_TRUE(QBLocalDataMigrator::migrateToCurrentVersion(&error));
    EXPECT_EQ(readNew(u"b"_s), "b");
    EXPECT_EQ(readNew(u"database.sqlite"_s), "store");
}

} // namespace
