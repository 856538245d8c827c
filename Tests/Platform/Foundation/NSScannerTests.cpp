// Reading a string piece by piece.

#include <Foundation/NSScanner.h>
#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using quib::tests::TestSeed;

namespace {

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\n';
}

TEST(Scanning, ReadsPiecesAndLeavesTheLocationWhereOneIsMissing)
{
    NSScanner scanner(u"key: value; rest"_s);
    QString piece;
    EXPECT_FALSE(scanner.scanString(u"value"));
    EXPECT_EQ(scanner.scanLocation(), 0);
    EXPECT_TRUE(scanner.scanUpToString(u":", &piece));
    EXPECT_EQ(piece, u"key"_s);
    EXPECT_FALSE(scanner.scanUpToString(u":", &piece));
    EXPECT_TRUE(scanner.scanString(u": "));
    EXPECT_EQ(scanner.scanLocation(), 5);
    EXPECT_TRUE(scanner.scanUpToString(u"!", &piece)); // to the end where it does not follow
    EXPECT_EQ(piece, u"value; rest"_s);
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_FALSE(scanner.scanUpToString(u"!"));
    EXPECT_FALSE(scanner.scanString(u""));
    scanner.setScanLocation(5);
    EXPECT_TRUE(scanner.scanString(u"value"));
}

TEST(Scanning, SkipsOnlyWhatItIsTold)
{
    NSScanner scanner(u"  12 \n-7 "_s);
    qint64 number = 0;
    EXPECT_FALSE(scanner.scanInteger(&number));
    scanner.setCharactersToBeSkipped(isBlank);
    EXPECT_TRUE(scanner.scanInteger(&number));
    EXPECT_EQ(number, 12);
    EXPECT_EQ(scanner.scanLocation(), 4);
    EXPECT_FALSE(scanner.isAtEnd());
    EXPECT_TRUE(scanner.scanInteger(&number));
    EXPECT_EQ(number, -7);
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_EQ(scanner.scanLocation(), 8);
}

TEST(Scanning, ReadsRunsOfCharacters)
{
    NSScanner scanner(u"  ab c"_s);
    QString piece;
    EXPECT_TRUE(scanner.scanCharactersFromSet(isBlank, &piece));
    EXPECT_EQ(piece, u"  "_s);
    EXPECT_FALSE(scanner.scanCharactersFromSet(isBlank));
    EXPECT_TRUE(scanner.scanUpToCharactersFromSet(isBlank, &piece));
    EXPECT_EQ(piece, u"ab"_s);
}

TEST(Scanning, ComparesCaseUnlessTold)
{
    NSScanner scanner(u"aBC"_s);
    EXPECT_FALSE(scanner.scanString(u"AB"));
    scanner.setCaseSensitive(false);
    QString piece;
    EXPECT_TRUE(scanner.scanUpToString(u"bc", &piece));
    EXPECT_TRUE(scanner.scanString(u"bc", &piece));
    EXPECT_EQ(piece, u"BC"_s);
}

TEST(Scanning, ReadsIntegersByRows)
{
    constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
    constexpr qint64 kSmallest = std::numeric_limits<qint64>::min();
    const struct
    {
        const char16_t *text;
        bool isNumber;
        qint64 number;
        qint64 location;
    } rows[] = {{u"0", true, 0, 1},
                {u"+5x", true, 5, 2},
                {u"-0", true, 0, 2},
                {u"007", true, 7, 3},
                {u"-", false, 0, 0},
                {u"+-1", false, 0, 0},
                {u"x1", false, 0, 0},
                {u"", false, 0, 0},
                {u"9223372036854775807", true, kLargest, 19},
                {u"9223372036854775808", true, kLargest, 19},
                {u"-9223372036854775808", true, kSmallest, 20},
                {u"-9223372036854775809", true, kSmallest, 20},
                {u"99999999999999999999999 ", true, kLargest, 23}};
    for (const auto &row : rows) {
        NSScanner scanner(QString::fromUtf16(row.text));
        qint64 number = 0;
        EXPECT_EQ(scanner.scanInteger(&number), row.isNumber) << qPrintable(scanner.string());
        EXPECT_EQ(number, row.number) << qPrintable(scanner.string());
        EXPECT_EQ(scanner.scanLocation(), row.location) << qPrintable(scanner.string());
    }
}

TEST(Scanning, BackAndForthLosesNoUnit)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QString units = u"ab "_s + QChar(u'\0') + QChar(0xD800);
    for (int round = 0; round < 500; ++round) {
        QString text;
        for (auto left = random() % 40; left > 0; --left) {
            text.append(units[static_cast<qsizetype>(random() % 5)]);
        }
        NSScanner scanner(text);
        QString joined;
        QString piece;
        while (!scanner.isAtEnd()) {
            if (scanner.scanString(u"b", &piece) || scanner.scanUpToString(u"b", &piece)) {
                joined += piece;
            }
        }
        ASSERT_EQ(joined, text);
    }
}

} // namespace
