#include <Support/QtPrinters.h>
#include <Support/TestSeed.h>
#include <URL/HTMLDocument.h>
#include <URL/PageDecoding.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

QString titleOf(const QString &html)
{
    return HTMLDocument::documentWithString(html).title();
}

TEST(HTMLDocument, FindsTheFirstTitle)
{
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u"<html><head><title>A page</title></head>", u"A page"},
        {u"<TITLE lang='x>y' data=\">\">A</TiTlE\t>", u"A"},
        {u"<title>one</title><title>two</title>", u"one"},
        {u"<body><p>text<title>late</title>", u"late"},
        {u"<title>a <b>bold</b> < title</title>", u"a <b>bold</b> < title"},
        {u"<title>a</titles>b</title>", u"a</titles>b"},
        {u"<!-- <title>no</title> --><title>yes</title>", u"yes"},
        {u"<!--><title>yes</title>", u"yes"},
        {u"<!---><title>yes</title>", u"yes"},
        {u"<!-- <title>no</title>", nullptr},
        {u"<!doctype html \"<title>\"><title>yes</title>", u"yes"},
        {u"<?xml version='1.0'?><title>yes</title>", u"yes"},
        {u"</ <title>no</title>><title>yes</title>", u"yes"},
        {u"<script>'<title>no</title>'</script><title>yes</title>", u"yes"},
        {u"<style><title>no</title></STYLE ><title>yes</title>", u"yes"},
        {u"<textarea><title>no</title></textarea><title>yes</title>", u"yes"},
        {u"<script>var a = '</scripts><title>no</title>';</script><title>yes</title>", u"yes"},
        {u"<script>never closed <title>no</title>", nullptr},
        {u"<plaintext><title>no</title>", nullptr},
        {u"<a title='<title>no</title>'><title>yes</title>", u"yes"},
        {u"<a b=\"never closed><title>no</title>", nullptr},
        {u"<a b=c'd><title>yes</title>", u"yes"},
        {u"1 < 2 <3 <title>yes</title>", u"yes"},
        {u"<titles>no</titles>", nullptr},
        {u"<title", nullptr},
        {u"<title>", u""},
        {u"<title></title>", u""},
        {u"<title>never closed", u"never closed"},
        {u"", nullptr},
        {u"<", nullptr},
        {u"<!--", nullptr},
        {u"no tags", nullptr},
    };
    for (const auto &[html, title] : cases) {
        const QString source = QString::fromUtf16(html);
        EXPECT_EQ(titleOf(source), QString::fromUtf16(title != nullptr ? title : u"")) << source.toStdString();
        EXPECT_EQ(HTMLDocument::documentWithString(source).hasTitle(), title != nullptr) << source.toStdString();
    }
}

TEST(HTMLDocument, ResolvesCharacterReferences)
{
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u"a &amp; b &lt;c&gt; &quot;d&quot;", u"a & b <c> \"d\""},
        {u"&mdash;&euro;&nbsp;&eacute;", u"\u2014\u20AC\u00A0\u00E9"},
        {u"&#65;&#x42;&#X43;&#128512;", u"ABC\U0001F600"},
        {u"&#146;&#x80;", u"\u2019\u20AC"},
        {u"&#0;&#xD800;&#x110000;&#99999999999999999999;", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {u"AT&T &ampx; &unknown; & &; &# &#; &#x; &#xg", u"AT&T &ampx; &unknown; & &; &# &#; &#x; &#xg"},
        {u"a&ampb &amp b &#65 b &copy 2020", u"a&ampb & b A b \u00A9 2020"},
        {u"&mdash without its end", u"&mdash without its end"},
        {u"&amp;amp;", u"&amp;"},
    };
    for (const auto &[source, text] : cases) {
        EXPECT_EQ(titleOf(u"<title>"_s + QString::fromUtf16(source) + u"</title>"_s), QString::fromUtf16(text));
    }
    EXPECT_EQ(titleOf(u"<title>a"_s + QChar(u'\0') + u"b</title>"_s), u"a\uFFFDb"_s);
}

TEST(HTMLDocument, CutsATitleThatIsNone)
{
    const QString title = titleOf(u"<title>"_s + u"\U0001F600x"_s.repeated(1'000'000));
    EXPECT_LE(title.size(), HTMLDocument::kLongestTitle);
    EXPECT_GE(title.size(), HTMLDocument::kLongestTitle - 1);
    EXPECT_FALSE(title.back().isHighSurrogate());
}

TEST(HTMLDocument, ReadsAHostilePageInOnePass)
{
    // Each of these sends a parser that looks back or ahead into a walk of hours.
    const QString pieces[] = {u"<"_s,
                              u"<a "_s,
                              u"<div>"_s,
                              u"</"_s,
                              u"<!--"_s,
                              u"<a b='"_s,
                              u"<a =\"\" "_s,
                              u"<script></scrip"_s,
                              u"<title></titl"_s,
                              u"<p a1 a2"_s,
                              u"&"_s,
                              u"<!"_s,
                              u"<textarea></"_s};
    for (const QString &piece : pieces) {
        const QString page = piece.repeated(2'000'000 / piece.size());
        EXPECT_LE(titleOf(page).size(), HTMLDocument::kLongestTitle) << piece.toStdString();
        EXPECT_LE(titleOf(u"<title>"_s + page).size(), HTMLDocument::kLongestTitle) << piece.toStdString();
    }
}

// Encodings

TEST(PageDecoding, FindsTheEncoding)
{
    struct Case
    {
        QByteArray bytes;
        QByteArray declared;
        QString text;
    };
    const QByteArray russian("<meta charset=windows-1251><title>\xCF\xF0\xE8\xE2\xE5\xF2</title>");
    const Case cases[] = {
        {"plain", {}, u"plain"_s},
        {{}, {}, {}},
        {"\xC3\xA8", {}, u"è"_s},
        {"\xC3\xA8", "iso-8859-1", u"è"_s},
        {"\xE8", "iso-8859-1", u"è"_s},
        {"\x93quoted\x94", "ISO-8859-1", u"\u201Cquoted\u201D"_s},
        {"\x80", "us-ascii", u"€"_s},
        {"\xEF\xBB\xBF\xC3\xA8", "windows-1251", u"è"_s},
        {QByteArray("\xFF\xFE"
                    "a\0b\0",
                    6),
         {},
         u"ab"_s},
        {QByteArray("\xFE\xFF"
                    "\0a\0b",
                    6),
         "utf-8", u"ab"_s},
        {russian, {}, u"<meta charset=windows-1251><title>Привет</title>"_s},
        {"<META http-equiv='x' content=\"text/html; charset=KOI8-R\">\xF0",
         {},
         u"<META http-equiv='x' content=\"text/html; charset=KOI8-R\">П"_s},
        {"<?xml version='1.0' encoding='iso-8859-2'?>\xB1", {}, u"<?xml version='1.0' encoding='iso-8859-2'?>ą"_s},
        {"<meta charset=\"utf-16\">\xC3\xA8", {}, u"<meta charset=\"utf-16\">è"_s},
        {"\x82\xB1\x82\xF1", "Shift_JIS", u"こん"_s},
        {"\x1B$B$3$s\x1B(B", "ISO-2022-JP", u"こん"_s},
        {"\xC4\xE3\xBA\xC3", "gb2312", u"你好"_s},
        {"+ADw-script+AD4-", "utf-7", u"+ADw-script+AD4-"_s},
        {"a\xC3", {}, u"aÃ"_s},
        {"\xC3\xA8\xE2\x82", {}, u"è"_s},
        {"a\xFF b", "utf-8", u"a\uFFFD b"_s},
        {"\xE8 b", "no-such-encoding", u"è b"_s},
        {"\xE8 b", QByteArray(10'000, 'x'), u"è b"_s},
        {"\xE8 b", QByteArray("utf-8\0x", 7), u"è b"_s},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(decodePage(each.bytes, each.declared), each.text)
            << each.bytes.toPercentEncoding().toStdString() << " as " << each.declared.left(40).toStdString();
    }
}

TEST(PageDecoding, TellsWindowsCodePagesByTheirLook)
{
    const QByteArray russian =
        "\xCF\xF0\xE8\xE2\xE5\xF2, \xFD\xF2\xEE \xEE\xE1\xFB\xF7\xED\xFB\xE9 \xF2\xE5\xEA\xF1\xF2 \xED\xE0 "
        "\xF0\xF3\xF1\xF1\xEA\xEE\xEC \xFF\xE7\xFB\xEA\xE5, \xE4\xEE\xF1\xF2\xE0\xF2\xEE\xF7\xED\xEE "
        "\xE4\xEB\xE8\xED\xED\xFB\xE9 \xE4\xEB\xFF \xE4\xEE\xE3\xE0\xE4\xEA\xE8.";
    EXPECT_TRUE(decodePage(russian, {}).startsWith(u"Привет, это обычный текст"_s));
    EXPECT_EQ(decodePage("The caf\xE9 is \x93open\x94 all day, and the prices there are very good indeed.", {}),
              u"The café is \u201Copen\u201D all day, and the prices there are very good indeed."_s);
}

TEST(PageDecoding, TakesAnyBytes)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QByteArray declared[] = {{},        "utf-8",  "windows-1252", "shift_jis",   "iso-2022-jp",
                                   "gb18030", "hz",     "utf-16",       "utf-32",      "euc-jp",
                                   "big5",    "ibm-37", "cesu-8",       "iso-2022-kr", "iso-2022-cn"};
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes;
        for (auto length = random() % 60; length > 0; --length) {
            bytes.append(static_cast<char>(random() % 4 == 0 ? 0x1B : random() % 256));
        }
        const QString text = decodePage(bytes, declared[random() % std::size(declared)]);
        EXPECT_LE(text.size(), 2 * bytes.size() + 16);
    }
}

} // namespace
} // namespace quib::tests
