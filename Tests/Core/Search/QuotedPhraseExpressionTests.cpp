#include <Search/QuotedPhraseExpression.h>

#include <Platform/Text/RandomText.h>
#include <Support/TestSeed.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::search::QuotedPhraseExpression;

namespace {

class PatternExpression : public QuotedPhraseExpression
{
public:
    void enumerateMatchesInString(QStringView string, Options, NSRange range,
                                  const MatchCallback &usingBlock) const override
    {
        enumeratePatternMatches(string, range, usingBlock);
    }
};

TEST(QuotedPhrase, IsScannedExactlyAsThePatternMatches)
{
    const quib::tests::TestSeed seed;
    std::mt19937 random = seed.generator();
    const PatternExpression pattern;
    qsizetype matched = 0;
    for (int round = 0; round < 100'000; ++round) {
        const QString text = quib::tests::randomText(random, u"\"\"\"\"--a  \n\r\t\u2028\u00A0\v😀", 24);
        const auto start =
            static_cast<qint64>(random() % 3 == 0 ? random() % (static_cast<size_t>(text.size()) + 1) : 0);
        const NSRange range{start, text.size() - start - (random() % 4 == 0 && start < text.size() ? 1 : 0)};
        const QList<NSTextCheckingResult> expected = pattern.matchesInString(text, 0, range);
        ASSERT_TRUE(QuotedPhraseExpression::shared().matchesInString(text, 0, range) == expected)
            << text.toStdString() << " in " << range.location << "+" << range.length;
        matched += expected.size();
    }
    EXPECT_GT(matched, 20'000);
}

TEST(QuotedPhrase, TakesOnePassOverUnclosedQuotes)
{
    const QString line = u"\"a "_s.repeated(1'000'000);
    EXPECT_EQ(QuotedPhraseExpression::shared().numberOfMatchesInString(line, 0, {0, line.size()}), 0);
}

} // namespace
