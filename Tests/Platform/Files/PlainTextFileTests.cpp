#include <Files/PlainTextFile.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QList>
#include <QTemporaryDir>

#include <algorithm>
#include <thread>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

struct DecodeCase
{
    const char *label;
    QByteArray bytes;
    std::optional<QString> text;
    qint64 badOffset = -1;
};

const QList<DecodeCase> &decodeCases()
{
    static const QList<DecodeCase> cases{
        {"empty", "", QString(u""_s)},
        {"plain", "abc\r\nd", u"abc\r\nd"_s},
        {"accents and astral", "caff\xC3\xA8 \xF0\x9F\x98\x80", u"caffè 😀"_s},
        {"mark is dropped, a second one is text", "\xEF\xBB\xBF\xEF\xBB\xBFx", u"\uFEFFx"_s},
        {"NUL is text", QByteArray("a\0b", 3), QString(u"a\0b"_s)},
        {"noncharacter is text", "\xEF\xBF\xBE", QString(QChar(0xFFFE))},
        {"UTF-16 little endian", QByteArray("\xFF\xFE\x41\x00\x3D\xD8", 6), u"A"_s + QChar(0xD83D)},
        {"UTF-16 big endian", QByteArray("\xFE\xFF\x00\x41", 4), u"A"_s},
        {"UTF-16 mark alone", "\xFF\xFE", QString(u""_s)},
        {"odd UTF-16", QByteArray("\xFF\xFE\x41", 3), std::nullopt, 2},
        {"Latin-1", "caff\xE8 nero", std::nullopt, 4},
        {"cut at the end", "ab\xE2\x82", std::nullopt, 2},
        {"overlong", "x\xC0\xAF", std::nullopt, 1},
        {"surrogate in UTF-8", "\xED\xA0\x80", std::nullopt, 0},
        {"beyond Unicode", "\xF4\x90\x80\x80", std::nullopt, 0},
    };
    return cases;
}

} // namespace

TEST(PlainTextFile, DecodesTextAndTellsWhereItIsNone)
{
    for (const DecodeCase &entry : decodeCases()) {
        SCOPED_TRACE(entry.label);
        NSError error;
        const auto text = quib::decodePlainText(entry.bytes, u"x.txt"_s, &error);
        EXPECT_EQ(text, entry.text);
        EXPECT_EQ(error.isSet(), !entry.text.has_value());
        if (!entry.text) {
            EXPECT_TRUE(error.localizedDescription().startsWith(u"x.txt: "));
            EXPECT_TRUE(error.localizedDescription().contains(u"at byte %1"_s.arg(entry.badOffset)))
                << error.localizedDescription().toStdString();
        }
    }
}

TEST(PlainTextFile, MissingFilesAndFoldersAreNamed)
{
    NSError error;
    EXPECT_EQ(quib::readPlainTextFile(u"/nonexistent/file.md"_s, &error), std::nullopt);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile));
    EXPECT_TRUE(error.localizedDescription().contains(u"/nonexistent/file.md"));
    EXPECT_EQ(quib::readPlainTextFile(u"/"_s, &error), std::nullopt);
    EXPECT_TRUE(error.localizedDescription().contains(u"folder"));
}

TEST(PlainTextFile, APipeIsReadToItsEndHoweverLittleItHoldsAtATime)
{
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(folder.filePath(u"pipe"_s));
    ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
    const QByteArray bytes(3'000'000, 'x');
    std::thread writer([&] {
        QFile pipe(QFile::decodeName(path));
        EXPECT_TRUE(pipe.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        for (qsizetype done = 0; done < bytes.size();) {
            const qint64 written = pipe.write(bytes.constData() + done, std::min<qint64>(50'000, bytes.size() - done));
            ASSERT_GT(written, 0);
            done += written;
        }
    });
    NSError error;
    const auto text = quib::readPlainTextFile(QFile::decodeName(path), &error);
    writer.join();
    ASSERT_TRUE(text) << error.localizedDescription().toStdString();
    EXPECT_EQ(text->size(), bytes.size());
}
