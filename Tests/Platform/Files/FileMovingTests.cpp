// Names, copies, moves, temporary folders, and types of files.

#include <Files/FileMoving.h>
#include <Files/Profile.h>
#include <Files/TemporaryDirectory.h>
#include <Files/UniformType.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using quib::tests::TemporaryFolder;
using quib::tests::TestSeed;

namespace {

TEST(FileNames, ThatCouldLeaveTheirFolderAreNotSafe)
{
    for (const QString &name : {u""_s, u"."_s, u".."_s, u"a/b"_s, u"/"_s, u"../a"_s, QString(u"a"_s + QChar(u'\0'))}) {
        EXPECT_FALSE(quib::isSafeFileName(name)) << qPrintable(name);
    }
    for (const QString &name : {u"a"_s, u"..."_s, u".hidden"_s, u"a b"_s, u"語.md"_s, u"\\"_s}) {
        EXPECT_TRUE(quib::isSafeFileName(name)) << qPrintable(name);
    }
}

TEST(FileNames, AreCutToBytesBetweenCharacters)
{
    const struct
    {
        QString name;
        qsizetype bytes;
        QString cut;
    } rows[] = {{u"abc"_s, 3, u"abc"_s},
                {u"abc"_s, 2, u"ab"_s},
                {u"abc"_s, 0, u""_s},
                {u"äöü"_s, 5, u"äö"_s},
                {u"語語"_s, 5, u"語"_s},
                {u"a\U0001F600b"_s, 4, u"a"_s},
                {u"a\U0001F600b"_s, 5, u"a\U0001F600"_s},
                {u"xe\u0301"_s, 3, u"x"_s},            // the mark stays with its base
                {u"e\u0301\u0301"_s, 4, u"e\u0301"_s}, // unless it is all there is
                {u"\U0001F600"_s, 3, u""_s}};
    for (const auto &row : rows) {
        EXPECT_EQ(quib::cutToBytes(row.name, row.bytes), row.cut) << qPrintable(row.name) << row.bytes;
    }
}

TEST(FileNames, CutToBytesAlwaysFitAndAreBeginnings)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QStringList pieces{
        u"a"_s, u"ß"_s, u"語"_s, u"\U0001F600"_s, u"\u0301"_s, u"\u200D"_s, QString(QChar(0xD800))};
    for (int round = 0; round < 2000; ++round) {
        QString name;
        for (auto left = random() % 40; left > 0; --left) {
            name.append(pieces[static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size()))]);
        }
        const auto bytes = static_cast<qsizetype>(random() % 60);
        const QString cut = quib::cutToBytes(name, bytes);
        ASSERT_TRUE(name.startsWith(cut));
        ASSERT_LE(QFile::encodeName(cut).size(), bytes);
        ASSERT_TRUE(cut.size() == name.size() || !cut.endsWith(QChar(0xD83D)));
    }
}

TEST(CopiesOfFiles, ArePrivateAndKeepTheirTimes)
{
    const TemporaryFolder folder;
    const QString source = folder.write(u"a"_s, QByteArray(3'000'000, 'x'));
    const timespec times[] = {{1'000'000'000, 0}, {1'100'000'000, 123456000}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(source).constData(), times, 0), 0);
    ASSERT_TRUE(quib::copyFile(source, folder.path(u"b"_s), nullptr));
    EXPECT_EQ(folder.read(u"b"_s), folder.read(u"a"_s));
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(folder.path(u"b"_s)).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(status.st_mtim.tv_sec, 1'100'000'000);
    EXPECT_EQ(status.st_mtim.tv_nsec, 123456000);
}

TEST(CopiesOfFiles, ReplaceNothingAndLeaveNothingOnFailure)
{
    const TemporaryFolder folder;
    folder.write(u"a"_s, "new");
    folder.write(u"b"_s, "old");
    folder.write(u"sub/c"_s, "c");
    NSError error;
    EXPECT_FALSE(quib::copyFile(folder.path(u"a"_s), folder.path(u"b"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteFileExists));
    EXPECT_FALSE(quib::copyFile(folder.path(u"sub"_s), folder.path(u"d"_s), &error));
    EXPECT_FALSE(quib::copyFile(folder.path(u"none"_s), folder.path(u"d"_s), &error));
    EXPECT_FALSE(quib::copyFile(folder.path(u"a"_s), folder.path(u"none/d"_s), &error));
    EXPECT_EQ(folder.read(u"b"_s), "old");
    EXPECT_EQ(folder.names(), (QStringList{u"a"_s, u"b"_s, u"sub"_s}));
}

TEST(Moves, TakeFilesAndFoldersButReplaceNothing)
{
    const TemporaryFolder folder;
    folder.write(u"a/x/y"_s, "y");
    folder.write(u"full/z"_s, "z");
    folder.write(u"file"_s, "f");
    ASSERT_TRUE(QDir().mkpath(folder.path(u"empty"_s)));
    NSError error;
    EXPECT_TRUE(quib::moveItem(folder.path(u"a"_s), folder.path(u"b"_s), &error));
    EXPECT_EQ(folder.read(u"b/x/y"_s), "y");
    EXPECT_TRUE(quib::moveItem(folder.path(u"b"_s), folder.path(u"empty"_s), &error));
    EXPECT_FALSE(quib::moveItem(folder.path(u"empty"_s), folder.path(u"full"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileWriteFileExists));
    EXPECT_FALSE(quib::moveItem(folder.path(u"file"_s), folder.path(u"full/z"_s), &error));
    EXPECT_FALSE(quib::moveItem(folder.path(u"none"_s), folder.path(u"n"_s), &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_EQ(folder.read(u"full/z"_s), "z");
    EXPECT_EQ(folder.read(u"empty/x/y"_s), "y");
}

TEST(Moves, ReachOtherFileSystems)
{
    const TemporaryFolder folder;
    struct stat here = {};
    struct stat there = {};
    if (::stat("/dev/shm", &there) != 0 || ::stat(folder.path().toUtf8().constData(), &here) != 0 ||
        here.st_dev == there.st_dev || ::access("/dev/shm", W_OK) != 0) {
        GTEST_SKIP() << "no second file system";
    }
    QByteArray name("/dev/shm/quib-test-XXXXXX");
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const QString other = QFile::decodeName(name);
    folder.write(u"a/x/y"_s, "y");
    ASSERT_TRUE(QFile::link(u"x"_s, folder.path(u"a/link"_s)));
    NSError error;
    EXPECT_TRUE(quib::moveItem(folder.path(u"a"_s), other + u"/a"_s, &error))
        << qPrintable(error.localizedDescription());
    EXPECT_TRUE(folder.names().isEmpty());
    EXPECT_TRUE(quib::moveItem(other + u"/a"_s, folder.path(u"back"_s), &error));
    EXPECT_EQ(folder.read(u"back/x/y"_s), "y");
    EXPECT_TRUE(QDir(other).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
    ASSERT_TRUE(QDir().rmdir(other));
}

TEST(Removals, DoNotFollowLinks)
{
    const TemporaryFolder folder;
    folder.write(u"kept/x"_s, "x");
    ASSERT_TRUE(QFile::link(folder.path(u"kept"_s), folder.path(u"link"_s)));
    EXPECT_TRUE(quib::removeItem(folder.path(u"link"_s)));
    EXPECT_EQ(folder.read(u"kept/x"_s), "x");
    EXPECT_TRUE(quib::removeItem(folder.path(u"kept"_s)));
    EXPECT_TRUE(folder.names().isEmpty());
}

class TemporaryFolders : public testing::Test
{
protected:
    TemporaryFolders() { quib::Profile::setRoot(m_folder.path()); }
    ~TemporaryFolders() override { quib::Profile::setRoot(QString()); }
    TemporaryFolder m_folder;
};

TEST_F(TemporaryFolders, AreUniqueAndPrivate)
{
    const QString first = quib::makeTemporaryFolder(nullptr);
    const QString second = quib::makeTemporaryFolder(nullptr);
    EXPECT_NE(first, second);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(first).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    const QString name = first.section(u'/', -1);
    EXPECT_TRUE(name.startsWith(u"QuibTemp."));
    EXPECT_EQ(name.size(), 15);
    quib::removeTemporaryFolders();
}

TEST_F(TemporaryFolders, AloneAreRemovedAndOnlyWhenNobodyUsesThem)
{
    const QString mine = quib::makeTemporaryFolder(nullptr);
    m_folder.write(u"tmp/QuibTemp.abcdef/left/behind"_s, "x");
    m_folder.write(u"tmp/QuibTemp.foreig/used"_s, "x");
    m_folder.write(u"tmp/QuibTemp.toolongname/x"_s, "x");
    m_folder.write(u"tmp/QuibTemp.afile1"_s, "x");
    m_folder.write(u"tmp/other/file"_s, "x");
    m_folder.write(u"precious/x"_s, "x");
    ASSERT_TRUE(QFile::link(m_folder.path(u"precious"_s), m_folder.path(u"tmp/QuibTemp.linked"_s)));
    // Another process marks a folder as in use by a lock; a descriptor of its own stands for it.
    const int used = ::open(QFile::encodeName(m_folder.path(u"tmp/QuibTemp.foreig"_s)).constData(), O_RDONLY);
    ASSERT_EQ(::flock(used, LOCK_SH), 0);
    quib::removeTemporaryFolders();
    EXPECT_FALSE(QFileInfo::exists(mine));
    EXPECT_EQ(m_folder.names(u"tmp"_s), (QStringList{u"QuibTemp.afile1"_s, u"QuibTemp.foreig"_s, u"QuibTemp.linked"_s,
                                                     u"QuibTemp.toolongname"_s, u"other"_s}));
    EXPECT_TRUE(m_folder.contains(u"precious/x"_s));
    ::close(used);
    quib::removeTemporaryFolders();
    EXPECT_FALSE(m_folder.contains(u"tmp/QuibTemp.foreig"_s));
}

TEST(TypesOfFiles, AreFoundByExtension)
{
    const struct
    {
        QString extension;
        QString type;
        QString kind;
        bool conforms;
    } rows[] = {{u"png"_s, u"public.png"_s, u"public.image"_s, true},
                {u"JPG"_s, u"public.jpeg"_s, u"public.jpeg"_s, true},
                {u"jpeg"_s, u"public.jpeg"_s, u"PUBLIC.JPEG"_s, true},
                {u"jp2"_s, u"public.jpeg-2000"_s, u"public.jpeg"_s, false},
                {u"tif"_s, u"public.tiff"_s, u"public.tiff"_s, true},
                {u"gif"_s, u"com.compuserve.gif"_s, u"public.data"_s, true},
                {u"heic"_s, u"public.heic"_s, u"public.heic"_s, true},
                {u"md"_s, u"net.daringfireball.markdown"_s, u"public.plain-text"_s, true},
                {u"html"_s, u"public.html"_s, u"public.plain-text"_s, false},
                {u"rtf"_s, u"public.rtf"_s, u"public.text"_s, true},
                {u"pdf"_s, u"com.adobe.pdf"_s, u"public.image"_s, false},
                {u"nosuchthing"_s, u"dyn.nosuchthing"_s, u"public.data"_s, true},
                {u"nosuchthing"_s, u"dyn.nosuchthing"_s, u"public.image"_s, false},
                {u""_s, QString(), u"public.data"_s, false}};
    for (const auto &row : rows) {
        const QString type = UTTypeCreatePreferredIdentifierForTag(kUTTagClassFilenameExtension, row.extension);
        EXPECT_EQ(type, row.type) << qPrintable(row.extension);
        EXPECT_EQ(UTTypeConformsTo(type, row.kind), row.conforms) << qPrintable(type) << qPrintable(row.kind);
    }
    EXPECT_TRUE(UTTypeCreatePreferredIdentifierForTag(u"public.mime-type"_s, u"png"_s).isNull());
}

} // namespace
