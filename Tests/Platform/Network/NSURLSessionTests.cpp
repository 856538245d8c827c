#include "LoopbackServer.h"

#include <Network/NSURLSession.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class NSURLSessionTest : public testing::Test
{
protected:
    struct Outcome
    {
        int responses = 0;
        NSHTTPURLResponse response;
        QByteArray data;
        qint64 received = 0;
        std::optional<NSError> error; ///< set at the end

        [[nodiscard]] qint64 code() const { return error ? error->code() : 1; }
    };

    std::shared_ptr<NSURLSessionDataTask>
    start(const QUrl &url, NSURLSessionResponseDisposition disposition = NSURLSessionResponseDisposition::Allow)
    {
        if (!session) {
            session = std::make_unique<NSURLSession>(configuration);
        }
        outcome = {};
        NSURLSessionDataHandlers handlers;
        handlers.didReceiveResponse = [this, disposition](const NSHTTPURLResponse &response) {
            EXPECT_EQ(outcome.received, 0);
            ++outcome.responses;
            outcome.response = response;
            return disposition;
        };
        handlers.didReceiveData = [this](const QByteArray &data) {
            outcome.received += data.size();
            if (outcome.data.size() < 100'000) {
                outcome.data.append(data);
            }
        };
        handlers.didComplete = [this](const NSError &error) {
            EXPECT_FALSE(outcome.error) << "ended twice";
            outcome.error = error;
        };
        auto task = session->dataTaskWithURL(url, std::move(handlers));
        task->resume();
        EXPECT_FALSE(outcome.error) << "told from within the call";
        return task;
    }
    void fetch(const QUrl &url, NSURLSessionResponseDisposition disposition = NSURLSessionResponseDisposition::Allow)
    {
        const auto task = start(url, disposition);
        ASSERT_TRUE(runUntil([this] { return outcome.error.has_value(); }));
        finalURL = task->currentURL();
    }
    void expectError(NSURLErrorCode code) const
    {
        ASSERT_TRUE(outcome.error);
        EXPECT_EQ(outcome.error->domain(), kNSURLErrorDomain);
        EXPECT_EQ(outcome.error->code(), static_cast<qint64>(code))
            << outcome.error->localizedDescription().toStdString();
    }

    FakeClock clock;
    LoopbackServer server;
    NSURLSessionConfiguration configuration;
    std::unique_ptr<NSURLSession> session;
    Outcome outcome;
    QUrl finalURL;
};

TEST_F(NSURLSessionTest, GivesTheResponseThenTheBodyThenTheEnd)
{
    server.serve("/page", "hello", "text/html; charset=utf-8", "200 OK", "X-Thing: one\r\n");
    fetch(server.url(u"/page"_s));
    EXPECT_EQ(outcome.responses, 1);
    EXPECT_EQ(outcome.response.statusCode(), 200);
    EXPECT_EQ(outcome.response.valueForHTTPHeaderField("x-thing"), "one");
    EXPECT_EQ(outcome.response.expectedContentLength(), 5);
    EXPECT_EQ(outcome.data, "hello");
    EXPECT_EQ(outcome.code(), 0);
}

TEST_F(NSURLSessionTest, TakesAStatusOfErrorForAnAnswer)
{
    for (const QByteArray status : {"400 Bad Request", "401 Unauthorized", "403 Forbidden", "404 Not Found", "410 Gone",
                                    "418 Teapot", "500 Internal Server Error", "503 Unavailable"}) {
        server.serve("/bad", "why", "text/plain", status);
        fetch(server.url(u"/bad"_s));
        EXPECT_EQ(outcome.response.statusCode(), status.first(3).toInt());
        EXPECT_EQ(outcome.data, "why") << status.toStdString();
        EXPECT_FALSE(outcome.error->isSet()) << status.toStdString();
    }
}

TEST_F(NSURLSessionTest, LeavesNoCookieBehind)
{
    server.serve("/sets", "x", "text/plain", "200 OK", "Set-Cookie: a=b; Path=/\r\n");
    fetch(server.url(u"/sets"_s));
    fetch(server.url(u"/sets"_s));
    EXPECT_EQ(server.requests().size(), 2);
    EXPECT_FALSE(server.lastHeaders().toLower().contains("cookie"));
}

TEST_F(NSURLSessionTest, ReadsNoBodyThatItsOwnerDeclines)
{
    server.flood("/endless", "HTTP/1.1 200 OK\r\nContent-Type: video/mp4\r\n\r\n", QByteArray(65536, 'x'));
    fetch(server.url(u"/endless"_s), NSURLSessionResponseDisposition::Cancel);
    expectError(NSURLErrorCode::Cancelled);
    EXPECT_EQ(outcome.responses, 1);
    EXPECT_EQ(outcome.received, 0);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
}

// Redirects

TEST_F(NSURLSessionTest, FollowsRedirectsToTheirEnd)
{
    server.redirect("/a", "b/c", "301 Moved Permanently");
    server.redirect("/b/c", "../d?x=1", "303 See Other");
    server.redirect("/d?x=1", server.url(u"/e"_s).toEncoded(), "307 Temporary Redirect");
    server.redirect("/e", "//127.0.0.1:" + QByteArray::number(server.url({}).port()) + "/f", "308 Permanent Redirect");
    server.redirect("/f", "/end");
    server.serve("/end", "there");
    fetch(server.url(u"/a"_s));
    EXPECT_EQ(outcome.responses, 1);
    EXPECT_EQ(outcome.data, "there");
    EXPECT_EQ(outcome.response.url(), server.url(u"/end"_s));
    EXPECT_EQ(finalURL, server.url(u"/end"_s));
}

TEST_F(NSURLSessionTest, GivesUpAtTheSixthRedirect)
{
    for (int i = 0; i < 6; ++i) {
        server.redirect("/" + QByteArray::number(i), "/" + QByteArray::number(i + 1));
    }
    server.serve("/6", "too far");
    fetch(server.url(u"/1"_s));
    EXPECT_EQ(outcome.code(), 0) << "five are followed";
    fetch(server.url(u"/0"_s));
    expectError(NSURLErrorCode::HTTPTooManyRedirects);
    EXPECT_EQ(outcome.responses, 0);
}

TEST_F(NSURLSessionTest, LeavesALoopOfRedirects)
{
    server.redirect("/loop", "/loop");
    fetch(server.url(u"/loop"_s));
    expectError(NSURLErrorCode::HTTPTooManyRedirects);
    EXPECT_EQ(server.requests().size(), 6);
}

TEST_F(NSURLSessionTest, GoesNowhereButTheWeb)
{
    for (const char *url : {"file:///etc/passwd", "ftp://127.0.0.1/x", "data:text/html,x", "qrc:/x", "javascript:1",
                            "127.0.0.1", "/etc/passwd", "", "http://", "http:/x", "gopher://127.0.0.1/"}) {
        fetch(QUrl(QString::fromLatin1(url)));
        expectError(NSURLErrorCode::UnsupportedURL);
        server.redirect("/away", url);
        if (*url != '\0' && *url != '/' && QByteArray(url).contains(':')) {
            fetch(server.url(u"/away"_s));
            expectError(NSURLErrorCode::UnsupportedURL);
            EXPECT_EQ(outcome.received, 0);
        }
    }
}

TEST_F(NSURLSessionTest, TakesARedirectToNowhereForAnAnswer)
{
    server.serve("/lost", "no place", "text/plain", "302 Found");
    fetch(server.url(u"/lost"_s));
    EXPECT_EQ(outcome.response.statusCode(), 302);
    EXPECT_EQ(outcome.data, "no place");
    EXPECT_EQ(outcome.code(), 0);
}

// Sizes

TEST_F(NSURLSessionTest, TakesABodyOfTheLargestSizeAndNoLarger)
{
    configuration.maximumBodySize = 1'000'000;
    server.serve("/fits", QByteArray(1'000'000, 'x'));
    server.serve("/over", QByteArray(1'000'001, 'x'));
    fetch(server.url(u"/fits"_s));
    EXPECT_EQ(outcome.received, 1'000'000);
    EXPECT_EQ(outcome.code(), 0);
    fetch(server.url(u"/over"_s));
    expectError(NSURLErrorCode::DataLengthExceedsMaximum);
    EXPECT_EQ(outcome.received, 0) << "the length that was told is enough to know";
}

TEST_F(NSURLSessionTest, EndsABodyThatNeverEnds)
{
    configuration.maximumBodySize = 1'000'000;
    server.flood("/endless", "HTTP/1.1 200 OK\r\n\r\n", QByteArray(65536, 'x'));
    fetch(server.url(u"/endless"_s));
    expectError(NSURLErrorCode::DataLengthExceedsMaximum);
    EXPECT_LE(outcome.received, 1'000'000);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
}

TEST_F(NSURLSessionTest, CountsAPackedBodyUnpacked)
{
    // 20 MB of zeros, packed: what follows the length is a stream that gzip understands.
    configuration.maximumBodySize = 1'000'000;
    QByteArray packed = qCompress(QByteArray(20'000'000, '\0'), 9).sliced(4);
    server.serve("/bomb", packed, "text/html", "200 OK", "Content-Encoding: deflate\r\n");
    fetch(server.url(u"/bomb"_s));
    EXPECT_TRUE(outcome.error && outcome.error->isSet());
    EXPECT_LE(outcome.received, 1'000'000);
}

TEST_F(NSURLSessionTest, MissesABodyThatIsCutOff)
{
    server.answer("/cut", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this");
    fetch(server.url(u"/cut"_s));
    expectError(NSURLErrorCode::NetworkConnectionLost);
}

// Time

TEST_F(NSURLSessionTest, WaitsForASilentServerNoLongerThanAllowed)
{
    server.on("/silent", [](QTcpSocket &) {});
    start(server.url(u"/silent"_s));
    ASSERT_TRUE(runUntil([this] { return !server.requests().isEmpty(); }));
    clock.advance(29);
    EXPECT_FALSE(outcome.error);
    clock.advance(1.5);
    ASSERT_TRUE(runUntil([this] { return outcome.error.has_value(); }));
    expectError(NSURLErrorCode::TimedOut);
    EXPECT_EQ(clock.waitingTimers(), 0U);
}

TEST_F(NSURLSessionTest, BoundsTheWholeOfABodyThatTrickles)
{
    QTcpSocket *connection = nullptr;
    server.on("/drops", [&connection](QTcpSocket &socket) {
        connection = &socket;
        socket.write("HTTP/1.1 200 OK\r\n\r\n");
    });
    start(server.url(u"/drops"_s));
    ASSERT_TRUE(runUntil([this] { return outcome.responses == 1; }));
    // Each byte comes in time, for ever.
    int seconds = 0;
    for (int drop = 1; !outcome.error && drop < 100; ++drop) {
        connection->write("x");
        ASSERT_TRUE(runUntil([this, drop] { return outcome.received == drop; }));
        clock.advance(20);
        seconds += 20;
        QCoreApplication::processEvents();
    }
    expectError(NSURLErrorCode::TimedOut);
    EXPECT_EQ(seconds, 300);
}

// Ends

TEST_F(NSURLSessionTest, TellsOfACancelledTaskOnce)
{
    server.on("/silent", [](QTcpSocket &) {});
    const auto task = start(server.url(u"/silent"_s));
    ASSERT_TRUE(runUntil([this] { return !server.requests().isEmpty(); }));
    task->cancel();
    task->cancel();
    EXPECT_FALSE(outcome.error);
    ASSERT_TRUE(runUntil([this] { return outcome.error.has_value(); }));
    expectError(NSURLErrorCode::Cancelled);
    task->resume();
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(NSURLSessionTest, FallsSilentWithItsSession)
{
    server.flood("/endless", "HTTP/1.1 200 OK\r\n\r\n", QByteArray(1000, 'x'));
    const auto task = start(server.url(u"/endless"_s));
    ASSERT_TRUE(runUntil([this] { return outcome.received > 0; }));
    session.reset();
    task->cancel();
    ASSERT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
    EXPECT_FALSE(outcome.error);
    EXPECT_EQ(clock.waitingTimers(), 0U);
}

TEST_F(NSURLSessionTest, MayGoFromWithinItsOwnCallbacks)
{
    server.serve("/page", QByteArray(100'000, 'x'));
    for (int stage = 0; stage < 3; ++stage) {
        session = std::make_unique<NSURLSession>(configuration);
        int calls = 0;
        const auto leave = [this, &calls] {
            ++calls;
            session.reset();
        };
        NSURLSessionDataHandlers handlers;
        handlers.didReceiveResponse = [&leave, stage](const NSHTTPURLResponse &) {
            if (stage == 0) {
                leave();
            }
            return NSURLSessionResponseDisposition::Allow;
        };
        handlers.didReceiveData = [&leave, stage](const QByteArray &) {
            if (stage == 1) {
                leave();
            }
        };
        handlers.didComplete = [&leave](const NSError &) { leave(); };
        session->dataTaskWithURL(server.url(u"/page"_s), std::move(handlers))->resume();
        ASSERT_TRUE(runUntil([&calls] { return calls > 0; }));
        QCoreApplication::processEvents();
        EXPECT_EQ(calls, 1) << stage;
    }
}

TEST_F(NSURLSessionTest, OutlivesServersThatSpeakNonsense)
{
    const QByteArray answers[] = {
        "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nnonsense\r\n",
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 4\r\n\r\nabcd",
        "HTTP/1.1 302 Found\r\nLocation: http://[::zz]:99999/\r\n\r\n",
        "HTTP/9.9 999 ?\r\n\r\n",
    };
    for (const QByteArray &each : answers) {
        server.answer("/odd", each);
        fetch(server.url(u"/odd"_s));
        EXPECT_LE(outcome.received, each.size());
    }
}

TEST_F(NSURLSessionTest, EndsAnAnswerWhoseHeadersNeverEnd)
{
    // As fast as they can be read: the connection goes with the task, whatever is still on its way.
    for (const QByteArray each : {"X-Filler: 0123456789\r\n", "x", "\r\nHTTP/1.1 103 Early Hints\r\n"}) {
        const int before = server.disconnections();
        server.flood("/headers", "HTTP/1.1 103 Early Hints\r\n", each.repeated(3000));
        fetch(server.url(u"/headers"_s));
        EXPECT_TRUE(outcome.error && outcome.error->isSet()) << each.toStdString();
        EXPECT_EQ(outcome.responses, 0);
        EXPECT_TRUE(runUntil([this, before] { return server.disconnections() == before + 1; }));
    }
}

TEST_F(NSURLSessionTest, TakesNoHeadersForAnAnswer)
{
    QTcpSocket *connection = nullptr;
    server.on("/headers", [&connection](QTcpSocket &socket) {
        connection = &socket;
        socket.write("HTTP/1.1 200 OK\r\nX-Filler: 0123456789\r\n");
    });
    start(server.url(u"/headers"_s));
    ASSERT_TRUE(runUntil([&connection] { return connection != nullptr; }));
    clock.advance(20);
    connection->write("X-More: 0123456789\r\n");
    ASSERT_TRUE(runUntil([&connection] { return connection->bytesToWrite() == 0; }));
    clock.advance(11);
    ASSERT_TRUE(runUntil([this] { return outcome.error.has_value(); }));
    expectError(NSURLErrorCode::TimedOut);
    EXPECT_TRUE(runUntil([this] { return server.disconnections() == 1; }));
}

TEST_F(NSURLSessionTest, ReadsWhatComesAroundAnAnswer)
{
    // An interim answer, a line that goes on, names in any case, and lines behind the body.
    server.answer("/page", "HTTP/1.1 103 Early Hints\r\nLink: </style.css>\r\n\r\n"
                           "HTTP/1.1 200 OK\r\nx-thing:one\r\n two\r\nTRANSFER-ENCODING: chunked\r\n\r\n"
                           "5\r\nhello\r\n0\r\nX-Behind: 1\r\n\r\n");
    fetch(server.url(u"/page"_s));
    EXPECT_EQ(outcome.responses, 1);
    EXPECT_EQ(outcome.response.valueForHTTPHeaderField("X-Thing"), "one two");
    EXPECT_EQ(outcome.response.valueForHTTPHeaderField("Link"), "");
    EXPECT_EQ(outcome.response.valueForHTTPHeaderField("X-Behind"), "");
    EXPECT_EQ(outcome.data, "hello");
    EXPECT_EQ(outcome.code(), 0);
}

TEST_F(NSURLSessionTest, NamesWhatIsWrongWithTheServer)
{
    server.answer("/nothing", "");
    fetch(server.url(u"/nothing"_s));
    expectError(NSURLErrorCode::NetworkConnectionLost);
    server.answer("/words", "not http at all, only words\r\n\r\n");
    fetch(server.url(u"/words"_s));
    EXPECT_TRUE(outcome.error->isSet());
    QTcpServer closed;
    closed.listen(QHostAddress::LocalHost);
    const int port = closed.serverPort();
    closed.close();
    fetch(QUrl(u"http://127.0.0.1:%1/"_s.arg(port)));
    expectError(NSURLErrorCode::CannotConnectToHost);
    QTcpServer plain;
    plain.listen(QHostAddress::LocalHost);
    QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&plain] {
        QTcpSocket *const socket = plain.nextPendingConnection();
        socket->write("HTTP/1.1 400 Bad Request\r\n\r\n");
        socket->disconnectFromHost();
    });
    fetch(QUrl(u"https://127.0.0.1:%1/"_s.arg(plain.serverPort())));
    expectError(NSURLErrorCode::SecureConnectionFailed);
}

TEST_F(NSURLSessionTest, GathersABodyForThoseWhoWantItWhole)
{
    server.serve("/page", QByteArray(300'000, 'y'), "text/plain; charset=\"UTF-8\"", "404 Not Found");
    session = std::make_unique<NSURLSession>();
    bool isDone = false;
    session
        ->dataTaskWithURL(server.url(u"/page"_s),
                          [&isDone](const QByteArray &data, const NSHTTPURLResponse &response, const NSError &error) {
                              EXPECT_EQ(data, QByteArray(300'000, 'y'));
                              EXPECT_EQ(response.statusCode(), 404);
                              EXPECT_EQ(response.textEncodingName(), "UTF-8");
                              EXPECT_FALSE(error.isSet());
                              isDone = true;
                          })
        ->resume();
    EXPECT_TRUE(runUntil([&isDone] { return isDone; }));
}

TEST(NSHTTPURLResponse, FindsTheEncodingInTheType)
{
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"text/html", ""},
        {"text/html; charset=utf-8", "utf-8"},
        {"text/html;CHARSET = 'koi8-r' ; x=y", "koi8-r"},
        {"text/html; x=y; charset=\"windows-1251\"", "windows-1251"},
        {"text/html; charset", ""},
        {"text/html; charset=", ""},
        {"text/html; charset=\"", "\""},
        {"charset=utf-8", ""},
    };
    for (const auto &[type, name] : cases) {
        EXPECT_EQ(NSHTTPURLResponse(QUrl(), 200, {{"content-type", type}}).textEncodingName(), name)
            << type.toStdString();
    }
}

} // namespace
} // namespace quib::tests
