#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <URL/XURLParameters.h>

#include <gtest/gtest.h>

#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

TEST(URLParameters, AreParsed)
{
    const std::pair<QString, IACParameters> cases[] = {
        {u""_s, {}},
        {u"a=b"_s, {{u"a"_s, u"b"_s}}},
        {u"a=b&c=d"_s, {{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}}},
        {u"&&a=b&"_s, {{u"a"_s, u"b"_s}}},
        {u"a"_s, {}},
        {u"a="_s, {{u"a"_s, u""_s}}},
        {u"=b"_s, {{u""_s, u"b"_s}}},
        {u"a=b=c&d=e"_s, {{u"d"_s, u"e"_s}}},
        {u"a=="_s, {}},
        {u"a=1&a=2"_s, {{u"a"_s, u"2"_s}}},
        {u"a=1&a"_s, {{u"a"_s, u"1"_s}}},
        {u"a%20b=c%20d"_s, {{u"a%20b"_s, u"c d"_s}}},
        {u"a=b+c"_s, {{u"a"_s, u"b+c"_s}}},
        {u"a=%3D%26%23"_s, {{u"a"_s, u"=&#"_s}}},
        {u"a=%e2%82%AC€"_s, {{u"a"_s, u"€€"_s}}},
        {u"a=100%&b=%zz&c=%2&d=%%41"_s,
         {{u"a"_s, u"100%"_s}, {u"b"_s, u"%zz"_s}, {u"c"_s, u"%2"_s}, {u"d"_s, u"%A"_s}}},
        {u"a=%FF"_s, {{u"a"_s, u"\uFFFD"_s}}},
    };
    for (const auto &[query, parameters] : cases) {
        EXPECT_EQ(parseURLParams(query), parameters) << query.toStdString();
    }
}

TEST(URLParameters, OneStrayPercentSignLeavesTheOthersAlone)
{
    const std::pair<QString, IACParameters> cases[] = {
        {u"a=b%20c&d=5%&e=x%2Cy"_s, {{u"a"_s, u"b c"_s}, {u"d"_s, u"5%"_s}, {u"e"_s, u"x,y"_s}}},
        {u"a=%&b=%2&c=%zz&d=%%41"_s, {{u"a"_s, u"%"_s}, {u"b"_s, u"%2"_s}, {u"c"_s, u"%zz"_s}, {u"d"_s, u"%A"_s}}},
        {u"a=%25%&b=%\u0664\u0661&c=%"_s, {{u"a"_s, u"%%"_s}, {u"b"_s, u"%\u0664\u0661"_s}, {u"c"_s, u"%"_s}}},
        {u"a=b%20c"_s, {{u"a"_s, u"b c"_s}}},
    };
    for (const auto &[query, parameters] : cases) {
        const QUrl url = urlFromText(u"quib://x-callback-url/create?"_s + query);
        EXPECT_EQ(parseURLParams(url.query(QUrl::FullyEncoded)), parameters) << query.toStdString();
    }
}

TEST(URLParameters, OfAnyTextComeBack)
{
    const TestSeed seed;
    auto random = seed.generator();
    const auto below = [&random](unsigned limit) { return static_cast<char16_t>(random() % limit); };
    for (int round = 0; round < 2000; ++round) {
        IACParameters parameters;
        for (auto i = random() % 4; i > 0; --i) {
            QString value;
            for (auto length = random() % 12; length > 0; --length) {
                // What takes a query apart is the caller's to escape.
                const QChar unit(random() % 3 == 0 ? below(0xFFFF) : below(0x80));
                value.append(unit == u'&' || unit == u'=' ? QChar(u'%') : unit);
            }
            parameters.insert(QString::number(random() % 5), value);
        }
        const QString url = stringByAppendingURLParams(u"app://x"_s, parameters);
        EXPECT_TRUE(url.endsWith(parameters.isEmpty() ? u'?' : u'&'));
        EXPECT_EQ(parseURLParams(QStringView(url).sliced(8)), parameters) << url.toStdString();
        EXPECT_TRUE(QUrl(url, QUrl::StrictMode).isValid()) << url.toStdString();
    }
}

TEST(URLParameters, KeepWhatAQueryMayHold)
{
    const QString plain = u"abcXYZ019-._~!$&'()*+,;=:@/?"_s;
    EXPECT_EQ(stringByAppendingURLParams(u"x:"_s, {{u"k"_s, plain}}), u"x:?k="_s + plain + u'&');
    EXPECT_EQ(stringByAppendingURLParams(u"x:"_s, {{u"k%"_s, u" \"#%<>[\\]^`{|}"_s}}),
              u"x:?k%=%20%22%23%25%3C%3E%5B%5C%5D%5E%60%7B%7C%7D&"_s);
}

TEST(URLParameters, OfAHostileQueryAreReadInOnePass)
{
    // A parser that looks at the rest again and again does not end within the time that a test has.
    EXPECT_EQ(parseURLParams(u"a=%"_s.repeated(3'000'000)).size(), 0);
    EXPECT_EQ(parseURLParams(u"&"_s.repeated(10'000'000)).size(), 0);
    EXPECT_EQ(parseURLParams(u"a=%41&"_s.repeated(1'000'000)).size(), 1);
}

TEST(XURLParameters, HaveTheirDefaultsAndTheirWords)
{
    struct Case
    {
        bool (*read)(const IACParameters &);
        QString key;
        bool missing;
        bool yes;
        bool no;
        bool other;
    };
    const Case cases[] = {
        {xurlShowWindow, u"show_window"_s, true, true, false, false},
        {xurlNewWindow, u"new_window"_s, false, true, false, false},
        {xurlFloatOnTop, u"float"_s, false, true, false, false},
        {xurlOpenNote, u"open_note"_s, true, true, false, false},
        {xurlEditNote, u"edit"_s, false, true, false, false},
        {xurlWait, u"wait"_s, true, true, false, false},
        {xurlExcludeTrashed, u"exclude_trashed"_s, true, true, false, false},
        {xurlPinNote, u"pin"_s, false, true, false, false},
        {xurlAddURL, u"appendurl"_s, true, true, false, true},
        {xurlDownloadImages, u"noimages"_s, true, false, true, false},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(each.read({}), each.missing) << each.key.toStdString();
        for (const QString &yes : {u"yes"_s, u"YES"_s, u"yEs"_s}) {
            EXPECT_EQ(each.read({{each.key, yes}}), each.yes) << each.key.toStdString();
        }
        for (const QString &no : {u"no"_s, u"No"_s}) {
            EXPECT_EQ(each.read({{each.key, no}}), each.no) << each.key.toStdString();
        }
        for (const QString &other : {u""_s, u"1"_s, u"true"_s, u" yes"_s}) {
            EXPECT_EQ(each.read({{each.key, other}}), each.other) << each.key.toStdString();
        }
    }
    EXPECT_TRUE(xurlHeader({}).isNull());
    EXPECT_EQ(xurlHeader({{u"header"_s, u" As It Stands "_s}}), u" As It Stands "_s);
}

} // namespace
} // namespace quib::tests
