// The text that comes out of the engine is the text that went in, after a load and after every edit.

#include "StyledNote.h"

#include <Support/TestSeed.h>

#include <QDirIterator>
#include <QFile>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

TEST(RoundTrip, OfRandomMarkup)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    for (int round = 0; round < 300; ++round) {
        const QString text = quib::tests::randomMarkup(generator, static_cast<int>(generator() % 60));
        for (const int syntax : {0, 1}) {
            StyledNote note(syntax, text);
            ASSERT_EQ(note.text(), text) << "syntax " << syntax;
        }
    }
}

TEST(RoundTrip, OfEveryTextOfTheCorpora)
{
    const QString folder = qEnvironmentVariable("QUIB_CORPORA", QStringLiteral(QUIB_SOURCE_DIR "/../shared/corpora"));
    if (!QDir(folder).exists()) {
        GTEST_SKIP() << "no corpora at " << folder.toStdString();
    }
    int count = 0;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        constexpr qint64 kLargest = 2'000'000;
        if (file.size() > kLargest || !file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QString text = QString::fromUtf8(file.readAll());
        for (const int syntax : {0, 1}) {
            StyledNote note(syntax, text);
            ASSERT_EQ(note.text(), text) << file.fileName().toStdString() << ", syntax " << syntax;
        }
        ++count;
    }
    EXPECT_GT(count, 100);
}

TEST(RoundTrip, AfterEveryRandomEdit)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](qint64 bound) {
        return static_cast<qint64>(generator() % static_cast<quint64>(bound));
    };
    for (int round = 0; round < 60; ++round) {
        const int syntax = round % 2;
        StyledNote note(syntax, quib::tests::randomMarkup(generator, 30));
        for (int edit = 0; edit < 40; ++edit) {
            auto &storage = note.storage();
            const qint64 location = random(storage.length() + 1);
            const NSRange range{location, std::min(random(4) == 0 ? random(12) : 0, storage.length() - location)};
            const QString string = random(4) == 0 ? QString(u""_s) : quib::tests::randomMarkupPiece(generator);
            const QString before = storage.stringWithExpandedTextAttachmentsWithRange({0, location});
            const QString after =
                storage.stringWithExpandedTextAttachmentsWithRange({range.limit(), storage.length() - range.limit()});
            static_cast<void>(note.replace(range, string));
            ASSERT_EQ(note.text(), QString(before % string % after))
                << "round " << round << ", edit " << edit << ", at " << location << ": " << string.toStdString();
        }
    }
}

TEST(RoundTrip, AttachmentCharactersOfTheTextItselfStay)
{
    for (const int syntax : {0, 1}) {
        const QString text = u"\ufffc a #tag\ufffc \n# \ufffc\n* x\n\ufffc* y"_s;
        StyledNote note(syntax, text);
        EXPECT_EQ(note.text(), text);
        // Typed right behind an attachment, it is no second one.
        const qint64 bullet = note.buffer().indexOf(u"\n\ufffc x"_s) + 1;
        ASSERT_GT(bullet, 0);
        static_cast<void>(note.replace({bullet + 1, 0}, u"\ufffc"_s));
        QString expected = text;
        EXPECT_EQ(note.text(), expected.replace(u"\n* x"_s, u"\n*\ufffc x"_s));
    }
}

TEST(RoundTrip, OfAStretchOfTheText)
{
    StyledNote note(0, u"# Title\n* one\n#tag\n- todo"_s);
    const auto line = note.storage().attributedString().paragraphRangeForRange({9, 1});
    EXPECT_EQ(note.storage().stringWithExpandedTextAttachmentsWithRange(line), u"* one\n"_s);
    const auto plain = note.storage().attributedSubstringFromRange(line, /*expandTextAttachment=*/true);
    EXPECT_EQ(plain.string(), u"* one\n");
    EXPECT_TRUE(plain.attributesAtIndex(0).isEmpty());
    EXPECT_EQ(note.storage().attributedSubstringFromRange(line, /*expandTextAttachment=*/false).string(),
              u"\ufffc one\n");
}

} // namespace
