#include <Text/URIReference.h>

#include <gtest/gtest.h>

#include <QString>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(URIReference, IsTakenByItsGrammar)
{
    for (const QString &text : {
             u""_s,
             u"a"_s,
             u"/a//b"_s,
             u"?a=b?/c"_s,
             u"#a/?:@"_s,
             u"a/b:c"_s,
             u"http:"_s,
             u"a+1-.:b"_s,
             u"mailto:x@a.bc"_s,
             u"//a.bc"_s,
             u"http://a!$&'()*+,;=-._~b/"_s,
             u"http://u:p:w@a:80/"_s,
             u"http://a:/"_s,
             u"http://%D0%BF.%d1%84/"_s,
             u"http://[::1]:80/"_s,
             u"http://[v1.x]"_s,
             u"http:///a"_s,
         }) {
        EXPECT_TRUE(isURIReference(text)) << text.toStdString();
    }
    for (const QString &text : {
             u" "_s,
             u"a b"_s,
             u"\u00E9"_s,
             QString(u"a"_s % QChar(0)),
             u"%"_s,
             u"%4"_s,
             u"%4g"_s,
             u"a%zzb"_s,
             u"1:b"_s,
             u":a"_s,
             u"a_b:c"_s,
             u"a#b#c"_s,
             u"a[b]"_s,
             u"a?[b]"_s,
             u"<a>"_s,
             u"\"a\""_s,
             u"a\\b"_s,
             u"a^b"_s,
             u"a`b"_s,
             u"{a}|"_s,
             u"http://a b/"_s,
             u"http://a:b/"_s,
             u"http://a:80:80/"_s,
             u"http://u@v@a/"_s,
             u"http://[::1/"_s,
             u"http://[]/"_s,
             u"http://[::1%25a]/"_s,
             u"http://x[::1]/"_s,
         }) {
        EXPECT_FALSE(isURIReference(text)) << text.toStdString();
    }
}

} // namespace quib::tests
