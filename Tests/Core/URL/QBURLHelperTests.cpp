#include <Core/Store/StoreFixture.h>
#include <Network/NSURLSession.h>
#include <Platform/Network/LoopbackServer.h>
#include <Support/TestSeed.h>
#include <URL/QBURLHelper.h>
#include <URL/URLFileName.h>

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

const QByteArray kPNG("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0\x1F\x15\xC4\x89", 33);
const QByteArray kGIF("GIF89a\1\0\1\0\0\0\0;");

class QBURLHelperTest : public StoreFixture
{
protected:
    void test(const QString &path)
    {
        isFile.reset();
        error = {};
        helper.testURL(
            server.url(path), [this](bool found) { isFile = found; }, [this](const NSError &found) { error = found; });
        EXPECT_TRUE(runUntil([this] { return isFile || error.isSet(); }));
        // Whatever else is told is told now.
        QCoreApplication::processEvents();
        EXPECT_NE(isFile.has_value(), error.isSet());
    }
    void download(const QString &url)
    {
        file = {};
        error = {};
        helper.downloadFileAtURL(
            url, [this](const QUrl &found) { file = found; }, [this](const NSError &found) { error = found; });
        EXPECT_TRUE(runUntil([this] { return !file.isEmpty() || error.isSet(); }));
    }

    LoopbackServer server;
    QBURLHelper helper;
    std::optional<bool> isFile;
    QUrl file;
    NSError error;
};

TEST_F(QBURLHelperTest, TellsPagesFromFilesByTheResponse)
{
    struct Case
    {
        QByteArray status;
        QByteArray type;
        bool isFile;
    };
    const Case cases[] = {
        {"200 OK", "text/html", false},
        {"200 OK", "text/html; charset=utf-8", false},
        {"200 OK", "TEXT/HTML", false},
        {"200 OK", "application/pdf", true},
        {"200 OK", "text/plain", true},
        {"200 OK", "application/xhtml+xml", true},
        {"200 OK", "", true},
        {"404 Not Found", "text/html", true},
        {"403 Forbidden", "text/html", true},
        {"201 Created", "text/html", true},
        {"503 Unavailable", "text/html", true},
    };
    for (const Case &each : cases) {
        server.serve("/x", "body", each.type, each.status);
        test(u"/x"_s);
        EXPECT_EQ(isFile, each.isFile) << each.status.toStdString() << ' ' << each.type.toStdString();
    }
}

TEST_F(QBURLHelperTest, TakesAStatusOf500ForAFailure)
{
    server.serve("/x", "body", "text/html", "500 Internal Server Error");
    test(u"/x"_s);
    EXPECT_EQ(error.localizedDescription(), u"The request page responded with a 500 error"_s);
}

TEST_F(QBURLHelperTest, WaitsForNoBody)
{
    server.flood("/endless", "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n", QByteArray(1000, 'x'));
    test(u"/endless"_s);
    EXPECT_EQ(isFile, false);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
}

TEST_F(QBURLHelperTest, TellsOfTheNetworksFailures)
{
    server.redirect("/loop", "/loop");
    test(u"/loop"_s);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::HTTPTooManyRedirects));
    server.redirect("/away", "file:///etc/passwd");
    test(u"/away"_s);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::UnsupportedURL));
    download(u"file:///etc/passwd"_s);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::UnsupportedURL));
    server.flood("/huge", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n", QByteArray(1000, 'x'));
    download(server.url(u"/huge"_s).toString());
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::DataLengthExceedsMaximum));
    server.serve("/empty", "");
    download(server.url(u"/empty"_s).toString());
    EXPECT_EQ(error.domain(), QBURLHelper::kErrorDomain);
}

TEST_F(QBURLHelperTest, DropsTheRequestBefore)
{
    server.on("/silent", [](QTcpSocket &) {});
    server.serve("/page", "x");
    bool isTold = false;
    helper.testURL(
        server.url(u"/silent"_s), [&isTold](bool) { isTold = true; }, [&isTold](const NSError &) { isTold = true; });
    ASSERT_TRUE(runUntil([this] { return !server.requests().isEmpty(); }));
    test(u"/page"_s);
    EXPECT_EQ(isFile, false);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 2; }));
    EXPECT_FALSE(isTold);
}

TEST_F(QBURLHelperTest, MayBeUsedAgainFromItsOwnCallback)
{
    server.serve("/page", "x");
    server.serve("/file.txt", "content", "text/plain");
    helper.testURL(server.url(u"/page"_s), [this](bool) { download(server.url(u"/file.txt"_s).toString()); }, {});
    EXPECT_TRUE(runUntil([this] { return !file.isEmpty(); }));
}

TEST_F(QBURLHelperTest, PutsAFileIntoAFolderOfItsOwn)
{
    server.serve("/a/some%20name.txt?q=1.png", "content", "text/plain");
    download(server.url(u"/a/some%20name.txt?q=1.png"_s).toString(QUrl::FullyEncoded));
    const QFileInfo first(file.toLocalFile());
    EXPECT_EQ(first.fileName(), u"some name.txt"_s);
    QFile content(first.filePath());
    ASSERT_TRUE(content.open(QFile::ReadOnly));
    EXPECT_EQ(content.readAll(), "content");
    EXPECT_EQ(first.dir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
    download(server.url(u"/a/some%20name.txt?q=1.png"_s).toString(QUrl::FullyEncoded));
    EXPECT_NE(QFileInfo(file.toLocalFile()).path(), first.path());
    struct stat found = {};
    ASSERT_EQ(::stat(QFile::encodeName(file.toLocalFile()).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
}

TEST(URLFileName, IsMadeOfTheLastComponent)
{
    struct Case
    {
        const char16_t *url;
        QByteArray data;
        const char16_t *name;
    };
    const Case cases[] = {
        {u"http://a.b/c/d.txt", "x", u"d.txt"},
        {u"http://a.b/c/d.txt?x=/../e.png#f", "x", u"d.txt"},
        {u"http://a.b/c/d.txt#f.gif", "x", u"d.txt"},
        {u"http://a.b/c/d/", "x", u"d"},
        {u"http://a.b/", "x", u"file"},
        {u"http://a.b", "x", u"file"},
        {u"http://a.b/.png", kPNG, u"file.png"},
        {u"http://a.b/.htaccess", "x", u"file.htaccess"},
        {u"http://a.b/...", "x", u"file"},
        {u"http://a.b/%2e%2e", "x", u"file"},
        {u"http://a.b/..%2F..%2Fetc%2Fpasswd", "x", u"file.etcpasswd"},
        {u"http://a.b/%2Fetc%5Cc%3Ad", "x", u"etccd"},
        {u"http://a.b/..hidden.txt", "x", u"hidden.txt"},
        {u"http://a.b/a%00b%0A%1B%7F.txt", "x", u"ab.txt"},
        {u"http://a.b/photo%E2%80%AEgnp.exe", "x", u"photognp.exe"},
        {u"http://a.b/%20%20a%20.%20", "x", u"a"},
        {u"http://a.b/%C3%A8.txt", "x", u"è.txt"},
        {u"http://a.b/\u00E8.txt", "x", u"è.txt"},
        {u"http://a.b/%FF.txt", "x", u"file.txt"},
        {u"http://a.b/picture", kPNG, u"picture.png"},
        {u"http://a.b/picture.php", kGIF, u"picture.gif"},
        {u"http://a.b/picture.GIF", kGIF, u"picture.gif"},
        {u"http://a.b/picture.jpg", kPNG, u"picture.jpg"},
        {u"http://a.b/picture.JPEG", kGIF, u"picture.JPEG"},
        {u"http://a.b/page.html", "<html><body>x", u"page.html"},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(fileNameForURL(QString::fromUtf16(each.url), each.data), QString::fromUtf16(each.name))
            << QString::fromUtf16(each.url).toStdString();
    }
}

TEST(URLFileName, FitsAndKeepsItsExtension)
{
    for (const QString &letter : {u"a"_s, u"è"_s, u"\U0001F600"_s}) {
        const QString name = fileNameForURL(u"http://a.b/"_s + letter.repeated(1000) + u".pdf"_s, "x");
        EXPECT_LE(name.toUtf8().size(), 255);
        EXPECT_GE(name.toUtf8().size(), 200);
        EXPECT_TRUE(name.endsWith(u".pdf"_s));
        EXPECT_FALSE(name.contains(QChar(0xFFFD)));
    }
    EXPECT_LE(fileNameForURL(u"http://a.b/x."_s + u"y"_s.repeated(1000), "x").toUtf8().size(), 255);
}

TEST(URLFileName, NeverLeavesItsFolder)
{
    const TestSeed seed;
    auto random = seed.generator();
    const QString pieces[] = {
        u"/"_s, u"\\"_s,  u".."_s, u"."_s, u"%2F"_s, u"%00"_s,       u"%"_s,          u"a"_s,
        u" "_s, u"%0a"_s, u"?"_s,  u"#"_s, u"~"_s,   u"%E2%80%8B"_s, u"\U0001F600"_s, QString(QChar(0xD800)),
        u":"_s};
    for (int round = 0; round < 5000; ++round) {
        QString url = random() % 2 == 0 ? u"http://h/"_s : QString();
        for (auto length = random() % 12; length > 0; --length) {
            url += pieces[random() % std::size(pieces)];
        }
        const QString name = fileNameForURL(url, random() % 2 == 0 ? kPNG : QByteArray());
        EXPECT_FALSE(name.isEmpty() || name.startsWith(u'.') || name.contains(u'/') || name.contains(u'\\') ||
                     name.contains(QChar(u'\0')) || name.trimmed() != name)
            << url.toStdString() << " gives " << name.toStdString();
    }
}

} // namespace
} // namespace quib::tests
