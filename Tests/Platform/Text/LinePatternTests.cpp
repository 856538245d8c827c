#include <Text/LinePattern.h>

#include <Support/TestSeed.h>
#include <Text/NSRegularExpression.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using quib::LineAlphabet;
using quib::LinePattern;
using quib::tests::TestSeed;

namespace {

bool isFound(LinePattern &pattern, QStringView line)
{
    std::vector<LineAlphabet::Letter> letters;
    LineAlphabet::shared().spell(line, letters);
    return pattern.isFoundIn(letters);
}

/// A pattern in both engines.
struct Pair
{
    QString pattern;
    LinePattern ours;
    NSRegularExpression theirs;

    Pair(const QString &text, bool isCaseSensitive)
        : pattern(text)
        , ours(text, isCaseSensitive ? LinePattern::Case::Sensitive : LinePattern::Case::Insensitive)
        , theirs(text, isCaseSensitive ? 0U : quint32{NSRegularExpression::CaseInsensitive})
    {
    }

    void expectSame(const QString &line)
    {
        EXPECT_EQ(isFound(ours, line), theirs.firstMatchInString(line, 0, {0, line.size()}).has_value())
            << pattern.toStdString() << " in " << line.toStdString() << " ("
            << QString::fromLatin1(line.toUtf8().toHex(' ')).toStdString() << ')';
    }
};

TEST(LinePattern, IsFoundAnywhereInALine)
{
    struct Case
    {
        QString pattern;
        QString line;
        bool isFound;
    };
    const Case cases[] = {
        {u"abc"_s, u"xxabcxx"_s, true},
        {u"abc"_s, u"xxabxx"_s, false},
        {u"abc"_s, u"ABC"_s, true},
        {u"aab"_s, u"aaab"_s, true},
        {u"^a"_s, u"ba"_s, false},
        {u"(^|\\s)a"_s, u"b a"_s, true},
        {u"a$"_s, u"ab"_s, false},
        {u"a$"_s, u"ba"_s, true},
        {u"a$"_s, u"a\u2028"_s, true},
        {u"a$"_s, u"a\u2028\u2028"_s, false},
        {u"a.b"_s, u"a\u2028b"_s, false},
        {u"a.b"_s, u"a😀b"_s, true},
        {u"'.{2,}'"_s, u"'x'"_s, false},
        {u"'.{2,}'"_s, u"'xy'"_s, true},
        {u"&{2}"_s, u"a & b"_s, false},
        {u"&{2}"_s, u"a && b"_s, true},
        {u"[a-z\\-]+:(?!:).+;"_s, u"a::b;"_s, false},
        {u"[a-z\\-]+:(?!:).+;"_s, u"a::b:c;"_s, true},
        {u"^[a-z\\-]+:(?!:).+;"_s, u"a:b:;"_s, true},
        {u"a(?!b)"_s, u"a"_s, true},
        {u"a(?!b)"_s, u"ab"_s, false},
        {u"\\b((NS|CG)\\w+)"_s, u"xNSx"_s, false},
        {u"\\b((NS|CG)\\w+)"_s, u"x NSx"_s, true},
        {u"\\bnil\\b"_s, u"x nil."_s, true},
        {u"\\bnil\\b"_s, u"nil\u0301"_s, false},
        {u"\\bnil"_s, u"a\u0301nil"_s, false},
        {u"\\bnil"_s, u"-\u0301nil"_s, true},
        {u"class"_s, u"claß"_s, true},
        {u"class"_s, u"cla\u017F\u017F"_s, true},
        {u"clas+"_s, u"claß"_s, false},
        {u"final"_s, u"\uFB01nal"_s, true},
        {u"\u2019"_s, u"it\u2019s"_s, true},
        {u"a|"_s, u""_s, true},
        {u"a*"_s, u"b"_s, true},
        {u"(a|)(b|)c"_s, u"c"_s, true},
    };
    for (const auto &[text, line, expected] : cases) {
        LinePattern pattern(text, LinePattern::Case::Insensitive);
        ASSERT_TRUE(pattern.isValid()) << text.toStdString();
        EXPECT_EQ(isFound(pattern, line), expected) << text.toStdString() << " in " << line.toStdString();
        Pair(text, false).expectSame(line);
    }
}

TEST(LinePattern, RefusesWhatItDoesNotKnow)
{
    for (const QString &text : {u"("_s,
                                u")"_s,
                                u"a)"_s,
                                u"["_s,
                                u"[]"_s,
                                u"[^a]"_s,
                                u"[a"_s,
                                u"[z-a]"_s,
                                u"*"_s,
                                u"a**"_s,
                                u"a*?"_s,
                                u"a++"_s,
                                u"a{"_s,
                                u"a{2"_s,
                                u"a{2,3}"_s,
                                u"a{,3}"_s,
                                u"a{101}"_s,
                                u"a{99999999999}"_s,
                                u"^*"_s,
                                u"$a"_s,
                                u"($|a)"_s,
                                u"(?=a)"_s,
                                u"(?!ab)"_s,
                                u"(?:a)"_s,
                                u"\\d"_s,
                                u"\\1"_s,
                                u"\\"_s,
                                u"a\\"_s,
                                u"é"_s,
                                u"😀"_s,
                                u"[[a]]"_s,
                                u"[a&&b]"_s,
                                QString(QString(100, u'(') + QString(100, u')')),
                                u"((((a{100}){100}){100}){100})"_s}) {
        LinePattern pattern(text, LinePattern::Case::Sensitive);
        EXPECT_FALSE(pattern.isValid()) << text.toStdString();
        EXPECT_FALSE(isFound(pattern, text)) << text.toStdString();
    }
}

TEST(LinePattern, ReadsEveryCharacterAsPatternsDo)
{
    std::vector<std::unique_ptr<Pair>> pairs;
    for (const QString &text : {u"^\\w$"_s, u"^.$"_s, u"\\s"_s, u"[a-z]"_s, u"s+"_s, u"k+"_s, u"^[\\$\\w]+$"_s}) {
        pairs.push_back(std::make_unique<Pair>(text, false));
    }
    for (const QString &text : {u"a\\b"_s, u"\\bb"_s, u"a\\b.b"_s, u"s|k"_s}) {
        pairs.push_back(std::make_unique<Pair>(text, true));
    }
    for (const QString &text : {u"ss"_s, u"st"_s, u"fi"_s, u"ffi"_s, u"fl"_s, u"ff"_s, u"ssi"_s, u"aj"_s, u"ai"_s}) {
        pairs.push_back(std::make_unique<Pair>(text, false));
    }
    // All of the first plane, surrogates that stand alone included, and every so many of the others.
    for (char32_t c = 0; c < 0x110000; c += c < 0x10000 ? 1 : 61) {
        const QString character = QString::fromUcs4(&c, 1);
        const QString alone = c >= 0xD800 && c < 0xE000 ? QString(QChar(static_cast<char16_t>(c))) : character;
        for (const auto &pair : pairs) {
            pair->expectSame(pair->pattern.contains(u'a') || pair->pattern.contains(u'b') ? u'a' + alone + u'b'
                                                                                          : alone);
        }
        if (HasFailure()) {
            FAIL() << "U+" << QString::number(c, 16).toStdString();
        }
    }
}

/// A random pattern of the dialect over few characters, so that lines often hold it.
QString randomPattern(std::mt19937 &random, int depth)
{
    const auto pick = [&random](unsigned count) { return static_cast<int>(random() % count); };
    QString pattern;
    for (int pieces = 1 + pick(4); pieces > 0; --pieces) {
        static const QStringList kPieces{u"s"_s, u"ss"_s,  u"if"_s,   u"a"_s, u"b"_s,   u"\\."_s,
                                         u"."_s, u"\\w"_s, u"[ab]"_s, u" "_s, u"\\s"_s, u"[\\w.]"_s};
        static const QStringList kConditions{u"^"_s, u"\\b"_s, u"(?!a)"_s, u"(?!\\w)"_s};
        static const QStringList kQuantifiers{u"*"_s, u"+"_s, u"?"_s, u"{2}"_s, u"{2,}"_s};
        const int kind = pick(10);
        if (kind == 0) {
            pattern += kConditions[pick(4)];
            continue;
        }
        if (kind < 3 && depth < 3) {
            pattern += u'(' % randomPattern(random, depth + 1) % (pick(2) == 0 ? u"|"_s : u""_s) %
                       randomPattern(random, depth + 1) % u')';
        } else {
            pattern += kPieces[pick(12)];
        }
        if (pick(3) == 0) {
            pattern += kQuantifiers[pick(5)];
        }
    }
    return pattern;
}

TEST(LinePattern, FindsExactlyWhatTheExpressionEngineFinds)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    static const QString kUnits = u"aabbss  SSifIF..\u00DF\u017F\u0301\uFB01\u2028"_s;
    for (int round = 0; round < 1500; ++round) {
        const QString end = random() % 6 == 0 ? u"$"_s : QString();
        Pair pair(randomPattern(random, 0) + end, random() % 2 == 0);
        ASSERT_TRUE(pair.ours.isValid()) << pair.pattern.toStdString();
        ASSERT_TRUE(pair.theirs.isValid()) << pair.pattern.toStdString();
        for (int lines = 0; lines < 12; ++lines) {
            QString line;
            for (auto units = random() % 12; units > 0; --units) {
                line += kUnits[static_cast<qsizetype>(random() % static_cast<unsigned>(kUnits.size()))];
            }
            pair.expectSame(line);
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(LinePattern, StaysRightWhenItForgets)
{
    // To know what stood 11 letters ago takes more sets of places than are kept.
    LinePattern pattern(u"a.{10}c", LinePattern::Case::Sensitive);
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    for (int round = 0; round < 300; ++round) {
        QString line;
        for (int i = 0; i < 400; ++i) {
            line += random() % 2 == 0 ? u'a' : u'b';
        }
        line += u'c';
        EXPECT_EQ(isFound(pattern, line), line[line.size() - 12] == u'a') << line.toStdString();
    }
}

TEST(LinePattern, TakesLinesThatBacktrackingDoesNot)
{
    constexpr qsizetype kLong = 400'000;
    const std::pair<QString, QString> cases[] = {
        {u"(a*)*b"_s, QString(kLong, u'a')},
        {u"(\\w+)( )*\\*( )*\\w+"_s, QString(kLong, u'w')},
        {u"\\(.*\\)( )*=>( )*.+"_s, QString(kLong, u'(') + QString(kLong, u')') + QString(kLong, u' ')},
        {u"(('|\").+('|\")( )*|\\w+):( )*[{\\[]"_s, QString(kLong, u'"')},
    };
    for (const auto &[text, line] : cases) {
        LinePattern pattern(text, LinePattern::Case::Insensitive);
        EXPECT_FALSE(isFound(pattern, line)) << text.toStdString();
    }
}

} // namespace
