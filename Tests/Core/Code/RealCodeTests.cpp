// The detector on code that was not written for it. The files are found by QUIB_CORPORA; what is expected of them was
// read by hand once.

#include "DefinedResults.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::tests::definedResults;

namespace {

/// One folder a language.
QString folderOfCode()
{
    return qEnvironmentVariable("QUIB_CORPORA", QStringLiteral(QUIB_SOURCE_DIR "/../shared/corpora")) %
           u"/code/hljs-detect"_s;
}

QString textOfFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

TEST(CodeLanguageDetector, NamesRealCode)
{
    if (!QFileInfo::exists(folderOfCode())) {
        GTEST_SKIP() << "no corpora here";
    }
    // C++ that says "cout" once and "int" often is C to the table; of Swift and Go it knows next to nothing.
    const std::pair<QString, QString> cases[] = {
        {u"java"_s, u"java"_s},
        {u"javascript"_s, u"javascript"_s},
        {u"cpp"_s, u"c"_s},
        {u"css"_s, u"css"_s},
        {u"python"_s, u"python"_s},
        {u"xml"_s, u"html"_s},
        {u"ruby"_s, u"ruby"_s},
        {u"php"_s, u"php"_s},
        {u"objectivec"_s, u"objective-c"_s},
        {u"swift"_s, u"java"_s},
        {u"go"_s, u"Unknown"_s},
    };
    for (const auto &[folder, language] : cases) {
        const QString code = textOfFile(folderOfCode() % u'/' % folder % u"/default.txt"_s);
        EXPECT_EQ(QBCodeLanguageDetector().detectLanguageWithString(code), language) << folder.toStdString();
    }
}

TEST(CodeLanguageDetector, CountsInRealCodeWhatTheExpressionEngineCounts)
{
    if (!QFileInfo::exists(folderOfCode())) {
        GTEST_SKIP() << "no corpora here";
    }
    qint64 count = 0;
    QDirIterator files(folderOfCode(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = textOfFile(files.next());
        const auto lines = QStringView(text).split(u'\n');
        ASSERT_EQ(QBCodeLanguageDetector::resultArrayForLines(lines), definedResults(lines))
            << files.filePath().toStdString();
        ++count;
    }
    EXPECT_GT(count, 100);
}

} // namespace
