// Names that are safe, fit, and are not taken yet.

#include <Store/QBSafeFileWriter.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <QFile>

using namespace Qt::StringLiterals;
using quib::tests::TemporaryFolder;
using quib::tests::TestSeed;

namespace {

bool writeName(const QUrl &url, NSError * /*error*/)
{
    QFile file(url.toLocalFile());
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.write(url.fileName().toUtf8()) >= 0;
}

TEST(SanitizedNames, AreJudgedByRows)
{
    const struct
    {
        QString name;
        QString sanitized;
    } rows[] = {{u"plain.txt"_s, u"plain.txt"_s},
                {u"a/b:c\\d.txt"_s, u"abcd.txt"_s},
                {u"/:\\"_s, u""_s},
                {u".."_s, u".."_s},
                {u".hidden"_s, u".hidden"_s},
                {u"tab\tand [brackets]"_s, u"tab\tand [brackets]"_s},
                {QString(300, u'x'), QString(245, u'x')},
                {QString(300, u'x') + u".markdown"_s, QString(236, u'x') + u".markdown"_s},
                {QString(245, u'x'), QString(245, u'x')},
                {u"." + QString(300, u'x'), u"." + QString(244, u'x')},
                {u"a." + QString(300, u'x'), u"a." + QString(243, u'x')},
                // A character that reaches over the limit is kept whole.
                {QString(244, u'x') + u"\U0001F600y"_s, QString(244, u'x') + u"\U0001F600"_s}};
    for (const auto &row : rows) {
        EXPECT_EQ(QBSafeFileWriter::sanitizeFilename(row.name), row.sanitized);
    }
}

TEST(CountedPaths, PutTheCountBeforeTheExtension)
{
    const struct
    {
        QString path;
        qint64 count;
        QString counted;
    } rows[] = {{u"a.txt"_s, 2, u"a 2.txt"_s},
                {u"/x.y/a"_s, 3, u"/x.y/a 3"_s},
                {u"/x/.hidden"_s, 2, u"/x/.hidden 2"_s},
                {u"/x/a.tar.gz"_s, 10, u"/x/a.tar 10.gz"_s},
                {u"a."_s, 2, u"a. 2"_s}};
    for (const auto &row : rows) {
        EXPECT_EQ(QBSafeFileWriter::pathWithIncreasedNumberCountForPath(row.path, row.count), row.counted);
    }
}

TEST(SafeWriting, CountsUpWhereANameIsTakenInAnyCase)
{
    const TemporaryFolder folder;
    folder.write(u"a.txt"_s, "old");
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(writer.safelyWriteFilename(u"A.txt"_s, writeName, nullptr));
    }
    EXPECT_TRUE(writer.safelyWriteFilename(u"a 3.TXT"_s, writeName, nullptr));
    EXPECT_EQ(folder.names(), (QStringList{u"A 2.txt"_s, u"A 3.txt"_s, u"A 4.txt"_s, u"a 3 2.TXT"_s, u"a.txt"_s}));
    EXPECT_EQ(folder.read(u"a.txt"_s), "old");
}

TEST(SafeWriting, SeesFilesThatCameLater)
{
    const TemporaryFolder folder;
    auto writer = QBSafeFileWriter::safeFileWriterForFolderURL(QUrl::fromLocalFile(folder.path()));
    EXPECT_TRUE(writer.safelyWriteFilename(u"first"_s, writeName, nullptr));
    folder.write(u"late"_s, "theirs");
    ASSERT_TRUE(QFile::link(u"/nowhere"_s, folder.path(u"dangling"_s)));
    EXPECT_TRUE(writer.safelyWriteFilename(u"late"_s, writeName, nullptr));
    EXPECT_TRUE(writer.safelyWriteFilename(u"dangling"_s, writeName, nullptr));
    EXPECT_EQ(folder.read(u"late"_s), "theirs");
    EXPECT_EQ(folder.read(u"late 2"_s), "late 2");
    EXPECT_EQ(folder.read(u"dangling 2"_s), "dangling 2");
}

TEST(SafeWriting, RefusesNamesThatAreNone)
{
    const TemporaryFolder folder;
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    for (const QString &name : {QString(), u""_s, u"."_s, u".."_s, u"../"_s, u"//"_s, QString(u"a"_s + QChar(u'\0'))}) {
        NSError error;
        EXPECT_FALSE(writer.safelyWriteFilename(
            name, [](const QUrl & /*url*/, NSError * /*error*/) { return true; }, &error));
        EXPECT_EQ(error.domain(), QString(kNSCocoaErrorDomain));
        EXPECT_EQ(error.code(), 514);
    }
    EXPECT_TRUE(writer.safelyWriteFilename(u"../../etc/passwd"_s, writeName, nullptr));
    EXPECT_EQ(folder.names(), QStringList{u"....etcpasswd"_s});
}

TEST(SafeWriting, HandsOnErrorsAndKeepsTheNameFree)
{
    const TemporaryFolder folder;
    NSError error;
    auto missing = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path(u"missing"_s));
    EXPECT_FALSE(missing.safelyWriteFilename(u"a"_s, writeName, &error));
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    EXPECT_FALSE(writer.safelyWriteFilename(
        u"a"_s, [](const QUrl & /*url*/, NSError *out) { return NSError::fill(out, u"d"_s, 7, u"m"_s); }, &error));
    EXPECT_EQ(error.code(), 7);
    EXPECT_TRUE(writer.safelyWriteFilename(u"a"_s, writeName, &error));
    EXPECT_EQ(folder.names(), QStringList{u"a"_s});
}

TEST(SafeWriting, AWriteThatFailedTakesNoCount)
{
    const TemporaryFolder folder;
    folder.write(u"a.txt"_s, "old");
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    QStringList offered;
    const auto fail = [&offered](const QUrl &url, NSError *error) {
        offered.append(url.fileName());
        return NSError::fill(error, u"d"_s, 7, u"m"_s);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(writer.safelyWriteFilename(u"A.txt"_s, fail, nullptr));
        EXPECT_FALSE(writer.safelyWriteFilename(u"A.txt"_s, fail, nullptr));
        EXPECT_TRUE(writer.safelyWriteFilename(u"A.txt"_s, writeName, nullptr));
    }
    EXPECT_EQ(offered, (QStringList{u"A 2.txt"_s, u"A 2.txt"_s, u"A 3.txt"_s, u"A 3.txt"_s}));
    EXPECT_EQ(folder.names(), (QStringList{u"A 2.txt"_s, u"A 3.txt"_s, u"a.txt"_s}));
}

TEST(SafeWriting, FitsLongNamesIntoTheFileSystem)
{
    const TemporaryFolder folder;
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    const QString rows[] = {QString(245, u'語') + u".md"_s, QString(245, u'語') + u".md"_s,
                            u"a"_s + QString(400, u'\u0301'), u"x."_s + QString(240, u'語')};
    for (const QString &row : rows) {
        EXPECT_TRUE(writer.safelyWriteFilename(row, writeName, nullptr)) << qPrintable(row);
    }
    const QStringList names = folder.names();
    EXPECT_EQ(names.size(), 4);
    EXPECT_TRUE(names.contains(QString(84, u'語') + u".md"_s));
    EXPECT_TRUE(names.contains(QString(83, u'語') + u" 2.md"_s));
}

TEST(SafeWriting, NeverOverwritesWhateverTheNames)
{
    const TestSeed seed;
    auto random = seed.generator();
    const TemporaryFolder folder;
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    const QStringList pieces{u"a"_s, u"A"_s, u"ß"_s, u"."_s, u" 2"_s, u".md"_s, u"語"_s, u"/"_s, u"\U0001F600"_s};
    int written = 0;
    for (int round = 0; round < 400; ++round) {
        QString name;
        for (auto left = random() % 4; left > 0; --left) {
            name.append(pieces[static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size()))]);
        }
        written += writer.safelyWriteFilename(name, writeName, nullptr) ? 1 : 0;
    }
    const QStringList names = folder.names();
    EXPECT_EQ(names.size(), written);
    QSet<QString> normalized;
    for (const QString &name : names) {
        EXPECT_EQ(folder.read(name), name.toUtf8());
        normalized.insert(QBSafeFileWriter::normalizedFilename(name));
    }
    EXPECT_EQ(normalized.size(), written);
}

TEST(SafeWriting, CostsTheSameForManyOfOneName)
{
    const TemporaryFolder folder;
    auto writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder.path());
    QString last;
    for (int round = 0; round < 20000; ++round) {
        ASSERT_TRUE(writer.safelyWriteFilename(
            u"Untitled.md"_s,
            [&last](const QUrl &url, NSError * /*error*/) {
                last = url.fileName();
                return true;
            },
            nullptr));
    }
    EXPECT_EQ(last, u"Untitled 20000.md"_s);
}

} // namespace
