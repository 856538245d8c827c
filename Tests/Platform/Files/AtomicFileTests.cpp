// Files replaced in one step, and the folders of a profile.

#include <Files/AtomicFile.h>
#include <Files/Profile.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;
using quib::Profile;
using quib::readWholeFile;
using quib::writeFileAtomically;
using quib::tests::TemporaryFolder;

namespace {

unsigned modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 0777U : 0U;
}

TEST(AtomicWriting, MakesAPrivateFileAndReplacesIt)
{
    const TemporaryFolder folder;
    const QString path = folder.path(u"settings"_s);
    ASSERT_TRUE(writeFileAtomically(path, "one", nullptr));
    EXPECT_EQ(modeOf(path), 0600U);
    ASSERT_TRUE(writeFileAtomically(path, QByteArray("t\0o", 3), nullptr));
    EXPECT_EQ(readWholeFile(path, nullptr), QByteArray("t\0o", 3));
    EXPECT_EQ(folder.names(), QStringList{u"settings"_s});
}

TEST(AtomicWriting, KeepsTheModeAndTheLinkOfWhatItReplaces)
{
    const TemporaryFolder folder;
    const QString real = folder.write(u"real"_s, "old");
    ASSERT_EQ(::chmod(QFile::encodeName(real).constData(), 0640), 0);
    ASSERT_TRUE(QFile::link(real, folder.path(u"link"_s)));
    ASSERT_TRUE(writeFileAtomically(folder.path(u"link"_s), "new", nullptr));
    EXPECT_EQ(folder.read(u"real"_s), "new");
    EXPECT_EQ(modeOf(real), 0640U);
    EXPECT_TRUE(QFileInfo(folder.path(u"link"_s)).isSymLink());
}

TEST(AtomicWriting, LeavesTheOldFileWhereTheDiskIsFull)
{
    const TemporaryFolder folder;
    const QString path = folder.write(u"kept"_s, "old content");
    // A limit on file sizes fails writes half-way, as a full disk does.
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    NSError error;
    const bool written = writeFileAtomically(path, QByteArray(100000, 'x'), &error);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(written);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteOutOfSpace));
    EXPECT_TRUE(error.localizedDescription().contains(path));
    EXPECT_EQ(folder.read(u"kept"_s), "old content");
    EXPECT_EQ(folder.names(), QStringList{u"kept"_s});
}

TEST(AtomicWriting, FailsClearlyWhereThereIsNoFolder)
{
    const TemporaryFolder folder;
    NSError error;
    EXPECT_FALSE(writeFileAtomically(folder.path(u"missing/file"_s), "x", &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_FALSE(writeFileAtomically(folder.path(u"a"_s) + QChar(u'\0') + u"b"_s, "x", &error));
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(WholeReading, RefusesFoldersMissingFilesAndTooLargeOnes)
{
    const TemporaryFolder folder;
    folder.write(u"file"_s, QByteArray(1000, 'x'));
    NSError error;
    EXPECT_FALSE(readWholeFile(folder.path(), &error));
    EXPECT_TRUE(error.isSet());
    EXPECT_FALSE(readWholeFile(folder.path(u"none"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_FALSE(readWholeFile(folder.path(u"file"_s), &error, /*limit=*/999));
    EXPECT_TRUE(readWholeFile(folder.path(u"file"_s), &error, /*limit=*/1000));
}

TEST(Folders, AreMadePrivateAllTheWayDown)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(quib::ensureFolder(folder.path(u"a/b/c"_s), nullptr));
    for (const QString &made : {u"a"_s, u"a/b"_s, u"a/b/c"_s}) {
        EXPECT_EQ(modeOf(folder.path(made)), 0700U) << qPrintable(made);
    }
    ASSERT_TRUE(quib::ensureFolder(folder.path(u"a/b/c"_s), nullptr));
    folder.write(u"file"_s, "");
    NSError error;
    EXPECT_FALSE(quib::ensureFolder(folder.path(u"file"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteFileExists));
    EXPECT_FALSE(quib::ensureFolder(folder.path(u"file/below"_s), &error));
}

class ProfileFolders : public testing::Test
{
protected:
    void SetUp() override
    {
        Profile::setRoot(QString());
        for (const char *name : kVariables) {
            m_before.append(qgetenv(name));
            qunsetenv(name);
        }
    }
    void TearDown() override
    {
        Profile::setRoot(QString());
        qsizetype index = 0;
        for (const char *name : kVariables) {
            const QByteArray &value = m_before[index++];
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
        }
    }
    TemporaryFolder m_folder;

private:
    static constexpr const char *kVariables[] = {"QUIB_PROFILE", "HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME",
                                                 "XDG_STATE_HOME"};
    QList<QByteArray> m_before;
};

TEST_F(ProfileFolders, FollowTheXdgVariables)
{
    qputenv("HOME", m_folder.path().toUtf8());
    qputenv("XDG_DATA_HOME", m_folder.path(u"d"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", "relative/is/not/valid");
    EXPECT_EQ(Profile::persistentDataFolder(), m_folder.path(u"d/QBTEAM0000.net.quibworks.quib/Application Data"_s));
    EXPECT_EQ(Profile::applicationSupportFolder(), m_folder.path(u"d/net.quibworks.quib"_s));
    EXPECT_EQ(Profile::preferencesFolder(), m_folder.path(u".config/net.quibworks.quib"_s));
    EXPECT_EQ(Profile::logsFolder(), m_folder.path(u".local/state/Logs/Quib"_s));
    EXPECT_EQ(modeOf(Profile::logsFolder()), 0700U);
}

TEST_F(ProfileFolders, AllMoveBelowARoot)
{
    const QString given = m_folder.path(u"given"_s);
    const QString variable = m_folder.path(u"variable"_s);
    qputenv("QUIB_PROFILE", variable.toUtf8());
    qputenv("XDG_DATA_HOME", "/nowhere");
    const auto folders = [] {
        return QStringList{
            Profile::applicationGroupFolder(), Profile::persistentDataFolder(), Profile::applicationSupportFolder(),
            Profile::preferencesFolder(),      Profile::logsFolder(),           Profile::temporaryFolder(),
            Profile::documentsFolder()};
    };
    for (const QString &folder : folders()) {
        EXPECT_TRUE(folder.startsWith(variable + u'/')) << qPrintable(folder);
    }
    Profile::setRoot(given);
    QStringList all = folders();
    for (const QString &folder : all) {
        EXPECT_TRUE(folder.startsWith(given + u'/')) << qPrintable(folder);
    }
    all.removeDuplicates();
    EXPECT_EQ(all.size(), 7);
    EXPECT_FALSE(QFileInfo::exists(Profile::documentsFolder()));
}

} // namespace
