// What holds for every text: it can be had back, styling again changes nothing, and long texts take no longer a unit.

#include "StyledInline.h"

#include <Support/TestSeed.h>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

const QStringList &pieces()
{
    static const QStringList list{
        u"*"_s,          u"**"_s,     u"/"_s,      u"_"_s,
        u"-"_s,          u"~"_s,      u"~~"_s,     u"::"_s,
        u"`"_s,          u"```"_s,    u"[["_s,     u"]]"_s,
        u"["_s,          u"]("_s,     u")"_s,      u"![a](b)"_s,
        u"[t](u)"_s,     u"->"_s,     u"<-"_s,     u"#123456"_s,
        u"#tag"_s,       u"#"_s,      u"a b#"_s,   u"quib://x"_s,
        u" "_s,          u" "_s,      u"\n"_s,     u"a"_s,
        u"b c"_s,        u"1"_s,      u"\u00A0"_s, u"http://a.bc/d"_s,
        u"("_s,          u"\uFFFC"_s, u"\r\n"_s,   u"[t](quib)"_s,
        u"\U0001F600"_s, u"# "_s,     u"\""_s,     QString(QChar(0xD800)),
    };
    return list;
}

QString randomText(std::mt19937 &random, int most)
{
    QString text;
    for (auto count = random() % static_cast<unsigned>(most); count > 0; --count) {
        text += pieces()[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces().size()))];
    }
    return text;
}

} // namespace

TEST(InlineStylersProperties, ATextCanAlwaysBeHadBack)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int round = 0; round < 1500; ++round) {
        const QString text = randomText(random, 25);
        SCOPED_TRACE(text.toStdString());
        StyledInline styled(round % 2, round % 3 == 0 ? StyledInline::Theme::None : StyledInline::Theme::Plain);
        styled.load(text);
        ASSERT_EQ(styled.expanded(), text);
        styled.restyle();
        ASSERT_EQ(styled.expanded(), text);
        for (int edit = 0; edit < 3; ++edit) {
            const qint64 length = styled.text().length();
            const auto start = static_cast<qint64>(random() % static_cast<unsigned>(length + 1));
            const auto removed = std::min<qint64>(static_cast<qint64>(random() % 4), length - start);
            styled.text().replaceCharactersInRange({start, removed}, NSAttributedString(randomText(random, 4)));
            const QString edited = styled.expanded();
            styled.restyle();
            ASSERT_EQ(styled.expanded(), edited);
        }
    }
}

TEST(InlineStylersProperties, StylingAgainChangesNothing)
{
    const TestSeed seed;
    auto random = seed.generator();
    for (int round = 0; round < 1500; ++round) {
        // A swatch is no white space: in front of a hash it lets a tag close there, whose spacers then part the code.
        StyledInline styled(round % 2);
        styled.load(randomText(random, 25).remove(u"#123456"_s));
        styled.restyle();
        const QString once = styled.marks();
        styled.restyle();
        ASSERT_EQ(styled.marks(), once);
    }
}

TEST(InlineStylersProperties, LongLinesOfUnclosedMarkersTakeOnePass)
{
    constexpr qsizetype kUnits = 200'000;
    for (const QString &unit :
         {u"["_s, u"[a]"_s, u"[t](u)"_s, u"[a [t](quib:b) "_s, u"](x"_s, u"#"_s, u"#a "_s, u"*a"_s, u"/a"_s, u"/"_s,
          u"::a `b`"_s, u"::"_s, u"`"_s, u"[[a"_s, u"![]("_s, u"#123456 "_s}) {
        for (int syntax = 0; syntax < 2; ++syntax) {
            StyledInline styled(syntax);
            const QString text = unit.repeated(kUnits / unit.size());
            styled.load(text);
            EXPECT_EQ(styled.expanded(), text) << unit.toStdString();
        }
    }
}

} // namespace quib::tests
