#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <Text/CaselessTermSearch.h>
#include <Text/NSRegularExpression.h>
#include <Text/WordBoundaries.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::CaselessTermSearch;
using quib::LineFeeds;

namespace {

NSRange expressionMatch(const QString &term, QString text, LineFeeds lineFeeds, qint64 startBefore)
{
    if (lineFeeds == LineFeeds::AreBlanks) {
        text.replace(u'\n', u' ');
    }
    const NSRegularExpression expression(NSRegularExpression::escapedPatternForString(term),
                                         NSRegularExpression::CaseInsensitive);
    const NSRange match = expression.rangeOfFirstMatchInString(text, 0, {0, text.size()});
    return match.isFound() && match.location < startBefore ? match : kNotFoundRange;
}

void expectSame(const QString &term, const QString &text, LineFeeds lineFeeds, qint64 startBefore)
{
    const NSRange expected = expressionMatch(term, text, lineFeeds, startBefore);
    const NSRange found = CaselessTermSearch(term, lineFeeds).firstMatchInString(text, startBefore);
    EXPECT_EQ(found.location, expected.location)
        << '"' << term.toStdString() << "\" in \"" << text.toStdString() << '"' << " before " << startBefore;
    EXPECT_EQ(found.length, expected.length) << '"' << term.toStdString() << '"';
}

} // namespace

TEST(CaselessTerm, IsFoundInAnyCase)
{
    struct Case
    {
        const char *label;
        QString term;
        QString text;
        qint64 location;
        qint64 length;
    };
    const QString far = QString(100, u'.');
    const Case cases[] = {
        {"as it stands", u"plan"_s, u"a plan"_s, 2, 4},
        {"capitals in the text", u"plan"_s, u"a PLAN"_s, 2, 4},
        {"capitals in the term", u"PLAN"_s, u"a plan"_s, 2, 4},
        {"far on", u"plan"_s, QString(far % u"Plan"_s), 100, 4},
        {"accents count", u"caffe"_s, u"caffè"_s, NSNotFound, 0},
        {"an accented letter has cases too", u"CAFFÈ"_s, u"il caffè"_s, 3, 5},
        {"sharp s is two letters", u"STRASSE"_s, u"eine Straße"_s, 5, 6},
        {"two letters are a sharp s", u"straße"_s, u"eine STRASSE"_s, 5, 7},
        {"half a sharp s is none", u"stras"_s, u"Straße"_s, NSNotFound, 0},
        {"long s", u"most"_s, QString(far % u"mo\u017Ft"_s), 100, 4},
        {"kelvin", u"kg"_s, u"\u212Ag"_s, 0, 2},
        {"a ligature", u"office"_s, QString(far % u"o\uFB03ce"_s), 100, 4},
        {"final sigma", u"ΟΔΟΣ"_s, u"η οδος"_s, 2, 4},
        {"letters beyond the first plane", u"\U00010400"_s, QString(far % u"\U00010428"_s), 100, 2},
        {"a picture", u"🎉"_s, QString(far % u"🎉"_s), 100, 2},
        {"no half of a picture", QString(QChar(0xDF89)), u"🎉"_s, NSNotFound, 0},
        {"an empty term", u""_s, u"text"_s, NSNotFound, 0},
        {"an empty text", u"term"_s, u""_s, NSNotFound, 0},
        {"zero", QString(QChar(0)), QString(u"a"_s % QChar(0)), 1, 1},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.label);
        const NSRange found = CaselessTermSearch(one.term).firstMatchInString(one.text);
        EXPECT_EQ(found.location, one.location);
        EXPECT_EQ(found.length, one.length);
        expectSame(one.term, one.text, LineFeeds::Stand, NSNotFound);
    }
}

TEST(CaselessTerm, FindsWhatTheExpressionFinds)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return generator() % bound; };
    // Few letters, so that terms and near misses abound; and all that folds in odd ways.
    const QStringList plain{u"a"_s, u"b"_s, u"A"_s, u"B"_s, u" "_s, u"\n"_s};
    const QStringList odd{u"s"_s,      u"S"_s, u"t"_s,      u"f"_s,      u"i"_s,          u"k"_s,
                          u"ß"_s,      u"ẞ"_s, u"ſ"_s,      u"\u212A"_s, u"\uFB01"_s,     u"\uFB03"_s,
                          u"\uFB06"_s, u"İ"_s, u"ı"_s,      u"σ"_s,      u"ς"_s,          u"Σ"_s,
                          u"\u0307"_s, u"ŉ"_s, u"\u0390"_s, u"ⱥ"_s,      u"\U00010400"_s, u"\U00010428"_s,
                          u"🎉"_s,      u"ʼ"_s, u"n"_s,      u"\u1FD3"_s, u"-"_s,          u"."_s};
    const auto anyText = [&](size_t most) {
        const bool isOdd = random(3) != 0;
        QString text;
        for (size_t n = random(most + 1); n > 0; --n) {
            const QStringList &letters = isOdd && random(3) != 0 ? odd : plain;
            text += letters[static_cast<qsizetype>(random(static_cast<size_t>(letters.size())))];
            if (random(60) == 0) {
                text += QChar(random(2) == 0 ? 0xD800 : 0xDC00);
            }
        }
        return text;
    };
    qint64 matches = 0;
    for (int round = 0; round < 30'000 && !testing::Test::HasFailure(); ++round) {
        const QString text = anyText(random(10) == 0 ? 400 : 40);
        QString term = anyText(random(20) == 0 ? 150 : 4);
        if (random(2) == 0 && !text.isEmpty()) {
            // A piece of the text is there for certain, but for halves of pairs.
            const auto start = static_cast<qsizetype>(random(static_cast<size_t>(text.size())));
            term = text.sliced(start, std::min<qsizetype>(text.size() - start, 1 + static_cast<qsizetype>(random(90))));
            term = random(2) == 0 ? term.toUpper() : term;
        }
        const auto lineFeeds = random(2) == 0 ? LineFeeds::Stand : LineFeeds::AreBlanks;
        const qint64 limit = random(3) == 0 ? static_cast<qint64>(random(60)) : NSNotFound;
        if (!term.isEmpty()) {
            expectSame(term, text, lineFeeds, limit);
            matches += expressionMatch(term, text, lineFeeds, limit).isFound() ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 5'000);
}

TEST(LastWord, BeginsWhereTheBreakIteratorSays)
{
    struct Case
    {
        QString text;
        std::optional<qint64> location;
    };
    const QString longWord(20'000, u'x');
    const Case cases[] = {
        {u""_s, std::nullopt},
        {u"... -- \n"_s, std::nullopt},
        {u"one"_s, 0},
        {u"one two"_s, 4},
        {u"one two, "_s, 4},
        {u"one two (\u2014 "_s, 4},
        {u"can't "_s, 0},
        {u"in 2017 "_s, 3},
        {u"perché "_s, 0},
        {u"word 🎉🎉 "_s, 0},
        {QString(u"a "_s % longWord), 2},
        {QString(u"word"_s % QString(20'000, u'.')), 0},
        {QString(QString(5'000, u'-') % u"word "_s % QString(2'000, u' ')), 5'000},
    };
    for (const Case &one : cases) {
        EXPECT_EQ(quib::locationOfLastWord(one.text), one.location) << one.text.left(40).toStdString();
    }
}
