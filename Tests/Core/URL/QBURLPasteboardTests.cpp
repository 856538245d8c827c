#include <Foundation/NSPasteboard.h>
#include <Network/NSURLSession.h>
#include <Platform/Network/LoopbackServer.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>
#include <URL/QBURLPasteboard.h>
#include <URL/QBWebsiteParser.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class QBWebsiteParserTest : public testing::Test
{
protected:
    /// The title of a page, or null with an error.
    QString title(const QString &path)
    {
        std::optional<bool> isFetched;
        parser.parseWebsiteURL(
            server.url(path), [&isFetched] { isFetched = true; },
            [this, &isFetched](const NSError &found) {
                error = found;
                isFetched = false;
            });
        EXPECT_TRUE(runUntil([&isFetched] { return isFetched.has_value(); }));
        return isFetched.value_or(false) ? parser.pageTitle() : QString();
    }

    FakeClock clock;
    LoopbackServer server;
    QBWebsiteParser parser;
    NSError error;
};

TEST_F(QBWebsiteParserTest, PutsATitleOnOneLine)
{
    const std::pair<QByteArray, QString> cases[] = {
        {"<title>\n  A title\n</title>", u"A title"_s},
        {"<title>two\nlines\r\nthree</title>", u"twolinesthree"_s},
        {"<title>a\xE2\x80\xA8z  b</title>", u"az  b"_s},
        {"<title> &nbsp; </title>", u""_s},
        {"<p>none</p>", {}},
    };
    for (const auto &[html, expected] : cases) {
        server.serve("/page", html);
        const QString found = title(u"/page"_s);
        EXPECT_EQ(found, expected) << html.toStdString();
        EXPECT_EQ(found.isNull(), expected.isNull());
    }
}

TEST_F(QBWebsiteParserTest, ReadsBrokenEncodings)
{
    server.serve("/declared", "<title>\xCF\xF0\xE8\xE2\xE5\xF2</title>", "text/html; charset=windows-1251");
    EXPECT_EQ(title(u"/declared"_s), u"Привет"_s);
    server.serve("/lying", "<title>\xC3\xA8 \xE2\x82\xAC</title>", "text/html; charset=iso-8859-1");
    EXPECT_EQ(title(u"/lying"_s), u"è €"_s);
    server.serve("/broken", "<title>a\xFF\xFE z</title>", "text/html; charset=utf-8");
    EXPECT_EQ(title(u"/broken"_s), u"a\uFFFD\uFFFD z"_s);
    server.serve("/unknown", "<title>caf\xE9</title>", "text/html; charset=klingon");
    EXPECT_EQ(title(u"/unknown"_s), u"café"_s);
}

TEST_F(QBWebsiteParserTest, ReadsTheBeginningOfAPageWithoutEnd)
{
    server.flood("/endless", "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<title>early</title>",
                 QByteArray(65536, 'x'));
    EXPECT_EQ(title(u"/endless"_s), u"early"_s);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
    EXPECT_LT(server.bytesWritten(), 16 * QBWebsiteParser::kMostHTML);
}

TEST_F(QBWebsiteParserTest, ReadsNoFiles)
{
    server.flood("/film", "HTTP/1.1 200 OK\r\nContent-Type: video/mp4\r\n\r\n<title>no</title>",
                 QByteArray(65536, 'x'));
    EXPECT_TRUE(title(u"/film"_s).isNull());
    EXPECT_FALSE(error.isSet());
    server.answer("/untold", "HTTP/1.1 200 OK\r\n\r\n<title>yes</title>");
    EXPECT_EQ(title(u"/untold"_s), u"yes"_s);
}

TEST_F(QBWebsiteParserTest, TellsOfPagesThatItCannotFetch)
{
    server.redirect("/loop", "/loop");
    title(u"/loop"_s);
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::HTTPTooManyRedirects));
    server.answer("/cut", "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 99\r\n\r\n<title>half");
    EXPECT_TRUE(title(u"/cut"_s).isNull());
    EXPECT_EQ(error.code(), static_cast<qint64>(NSURLErrorCode::NetworkConnectionLost));
}

class QBURLPasteboardTest : public testing::Test
{
protected:
    void copy(const QString &text, const QString &type = NSPasteboardTypeString)
    {
        pasteboard->clearContents();
        pasteboard->setString(text, type);
    }
    [[nodiscard]] std::optional<QString> foundTitle() const
    {
        return pasteboard->stringForType(QBURLPasteboard::kURLNameType);
    }
    QString page(const QByteArray &path, const QByteArray &title)
    {
        server.serve(path, "<title>" + title + "</title>");
        return server.url(QString::fromLatin1(path)).toString();
    }

    FakeClock clock;
    LoopbackServer server;
    std::shared_ptr<InMemoryPasteboard> pasteboard = std::make_shared<InMemoryPasteboard>();
    QBURLPasteboard urls{pasteboard};
};

TEST_F(QBURLPasteboardTest, PutsTheTitleBesideTheLinkOnce)
{
    const QString url = page("/page", "A &amp; B");
    copy(url);
    for (int i = 0; i < 3; ++i) {
        urls.fixURLWithoutTitle();
        ASSERT_TRUE(runUntil([this] { return foundTitle().has_value(); }));
    }
    EXPECT_EQ(foundTitle(), u"A & B"_s);
    EXPECT_TRUE(urls.urlAlreadyParsedForString(url));
    EXPECT_EQ(pasteboard->stringForType(NSPasteboardTypeString), url) << "the copy itself stays";
    EXPECT_EQ(server.requests().size(), 1);
    // Another reader of the same pasteboard sees that it was looked up.
    QBURLPasteboard(pasteboard).fixURLWithoutTitle();
    QCoreApplication::processEvents();
    EXPECT_EQ(server.requests().size(), 1);
    // The same link copied again is a new copy.
    copy(url);
    urls.fixURLWithoutTitle();
    EXPECT_TRUE(runUntil([this] { return foundTitle().has_value(); }));
    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(QBURLPasteboardTest, RemembersAPageWithoutATitle)
{
    server.serve("/bare", "no title");
    copy(server.url(u"/bare"_s).toString(), NSPasteboardTypeURL);
    urls.fixURLWithoutTitle();
    ASSERT_TRUE(runUntil([this] { return foundTitle().has_value(); }));
    EXPECT_EQ(foundTitle(), u""_s);
}

TEST_F(QBURLPasteboardTest, LeavesTheNextCopyAlone)
{
    QTcpSocket *connection = nullptr;
    server.on("/slow", [&connection](QTcpSocket &socket) { connection = &socket; });
    copy(server.url(u"/slow"_s).toString());
    urls.fixURLWithoutTitle();
    ASSERT_TRUE(runUntil([&connection] { return connection != nullptr; }));
    copy(u"something else"_s);
    connection->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<title>late</title>");
    connection->disconnectFromHost();
    ASSERT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(foundTitle(), std::nullopt);
}

TEST_F(QBURLPasteboardTest, LooksUpNothingThatHasATitleOrIsNoLink)
{
    const QString url = page("/page", "x");
    copy(url);
    pasteboard->setString(u"Given"_s, QBURLPasteboard::kURLNameType);
    urls.fixURLWithoutTitle();
    for (const QString &text : {QString(u"text with " % url), u"file:///etc/passwd"_s, u"javascript:1"_s, u"http://"_s,
                                QString(u"http://127.0.0.1/"_s % u"x"_s.repeated(10'000)), QString()}) {
        copy(text);
        EXPECT_EQ(urls.urlString(), std::nullopt) << text.left(50).toStdString();
        urls.fixURLWithoutTitle();
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(server.requests().isEmpty());
    // A title that is only the link itself is none.
    copy(u"  "_s + url + u'\n');
    pasteboard->setString(url, QBURLPasteboard::kURLNameType);
    urls.fixURLWithoutTitle();
    EXPECT_TRUE(runUntil([this] { return foundTitle() == u"x"_s; }));
}

TEST_F(QBURLPasteboardTest, LeavesThePasteboardAsItIsOnFailure)
{
    server.redirect("/away", "file:///etc/passwd");
    copy(server.url(u"/away"_s).toString());
    urls.fixURLWithoutTitle();
    ASSERT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(pasteboard->types(), QStringList{NSPasteboardTypeString});
}

} // namespace
} // namespace quib::tests
