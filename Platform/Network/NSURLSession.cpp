#include "NSURLSession.h"

#include <Foundation/Assert.h>
#include <Foundation/Clock.h>
#include <Foundation/DispatchQueue.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How much of a body waits in memory for its reader. Units: bytes.
constexpr qint64 kReadBuffer = 256 * 1024;

NSError urlError(NSURLErrorCode code, const QString &message, qint64 cause = 0)
{
    return {kNSURLErrorDomain, static_cast<qint64>(code), message, cause};
}

bool isWeb(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1);
}

NSURLErrorCode codeOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return NSURLErrorCode::CannotConnectToHost;
    case QNetworkReply::HostNotFoundError:
        return NSURLErrorCode::CannotFindHost;
    case QNetworkReply::TimeoutError:
        return NSURLErrorCode::TimedOut;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return NSURLErrorCode::NetworkConnectionLost;
    case QNetworkReply::SslHandshakeFailedError:
        return NSURLErrorCode::SecureConnectionFailed;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProtocolUnknownError:
        return NSURLErrorCode::BadServerResponse;
    default:
        return NSURLErrorCode::Unknown;
    }
}

bool isRedirect(int status)
{
    constexpr std::array<int, 5> kRedirects = {301, 302, 303, 307, 308};
    return std::find(kRedirects.begin(), kRedirects.end(), status) != kRedirects.end();
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

/// The requests that follow one another until one of them is answered without a redirect.
class NSURLSession::Task final : public NSURLSessionDataTask, public std::enable_shared_from_this<Task>
{
public:
    Task(NSURLSession *session, std::weak_ptr<char> sessionLife, QUrl url, NSURLSessionDataHandlers handlers)
        : m_session(session)
        , m_sessionLife(std::move(sessionLife))
        , m_url(std::move(url))
        , m_handlers(std::move(handlers))
    {
    }
    ~Task() override { dropReply(); }
    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    void resume() override
    {
        QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
        if (m_hasBegun || !isOpen()) {
            return;
        }
        m_hasBegun = true;
        m_session->m_tasks.push_back(shared_from_this());
        m_wholeTimer = quib::Clock::shared().schedule(m_session->m_configuration.timeoutIntervalForResource,
                                                      [this] { finish(timeOut()); });
        request();
    }

    void cancel() override
    {
        QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
        if (isOpen()) {
            finish(urlError(NSURLErrorCode::Cancelled, u"the request was cancelled"_s));
        }
    }

    [[nodiscard]] QUrl currentURL() const override { return m_url; }

    /// The session goes: silence.
    void detach()
    {
        dropReply();
        m_session = nullptr;
        m_handlers = {};
        m_idleTimer.reset();
        m_wholeTimer.reset();
    }

private:
    [[nodiscard]] bool isOpen() const { return m_session != nullptr && !m_sessionLife.expired(); }

    static NSError timeOut() { return urlError(NSURLErrorCode::TimedOut, u"the server took too long"_s); }

    void request()
    {
        if (!isWeb(m_url)) {
            finish(urlError(NSURLErrorCode::UnsupportedURL, u"the address is not one of the web"_s));
            return;
        }
        QNetworkRequest request(m_url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
        request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
        request.setHeader(QNetworkRequest::UserAgentHeader, u"Quib"_s);
        m_reply = m_session->m_manager->get(request);
        m_reply->setReadBufferSize(kReadBuffer);
        m_receiver = std::make_unique<QObject>();
        QObject::connect(m_reply, &QNetworkReply::metaDataChanged, m_receiver.get(), [this] { receiveResponse(); });
        QObject::connect(m_reply, &QNetworkReply::readyRead, m_receiver.get(), [this] { receiveData(); });
        QObject::connect(m_reply, &QNetworkReply::finished, m_receiver.get(), [this] { receiveEnd(); });
        restartIdleTimer();
    }

    void restartIdleTimer()
    {
        m_idleTimer = quib::Clock::shared().schedule(m_session->m_configuration.timeoutIntervalForRequest,
                                                     [this] { finish(timeOut()); });
    }

    void receiveResponse()
    {
        const int status = statusOf(*m_reply);
        if (m_hasResponse || status == 0) {
            return;
        }
        const auto keepAlive = shared_from_this();
        restartIdleTimer();
        // 1. Elsewhere?
        const QByteArray location = m_reply->rawHeader("Location");
        if (isRedirect(status) && !location.isEmpty()) {
            redirect(QUrl::fromEncoded(location));
            return;
        }
        // 2. Does the owner want it?
        m_hasResponse = true;
        const NSHTTPURLResponse response(m_url, status, m_reply->rawHeaderPairs());
        // The handler is copied, here and below: it may well let go of the session, and of itself with it.
        const auto decide = m_handlers.didReceiveResponse;
        if (decide && decide(response) == NSURLSessionResponseDisposition::Cancel) {
            cancel();
            return;
        }
        // 3. A body that will be too large need not come. A packed one tells its packed size, which is no larger.
        if (m_session != nullptr && response.expectedContentLength() > m_session->m_configuration.maximumBodySize) {
            finish(tooLarge());
        }
    }

    void redirect(const QUrl &location)
    {
        const QUrl from = m_url;
        dropReply();
        if (++m_redirects > m_session->m_configuration.maximumRedirects) {
            finish(urlError(NSURLErrorCode::HTTPTooManyRedirects, u"the server redirects too often"_s));
            return;
        }
        QUrl to = from.resolved(location);
        if (!to.hasFragment() && from.hasFragment()) {
            to.setFragment(from.fragment(QUrl::FullyEncoded), QUrl::StrictMode);
        }
        if (!isWeb(to) || (from.scheme() == "https"_L1 && to.scheme() != "https"_L1)) {
            finish(urlError(NSURLErrorCode::UnsupportedURL, u"the server redirects to an address that is not safe"_s));
            return;
        }
        m_url = to;
        request();
    }

    static NSError tooLarge()
    {
        return urlError(NSURLErrorCode::DataLengthExceedsMaximum, u"the answer is too large"_s);
    }

    void receiveData()
    {
        const auto keepAlive = shared_from_this();
        receiveResponse();
        // In pieces no larger than the buffer, so that a packed body is never in memory as a whole.
        while (m_reply != nullptr && m_hasResponse && m_reply->bytesAvailable() > 0) {
            const QByteArray data = m_reply->read(kReadBuffer);
            if (data.isEmpty()) {
                break;
            }
            m_received += data.size();
            if (m_received > m_session->m_configuration.maximumBodySize) {
                finish(tooLarge());
                return;
            }
            restartIdleTimer();
            if (const auto take = m_handlers.didReceiveData) {
                take(data);
            }
        }
    }

    void receiveEnd()
    {
        const auto keepAlive = shared_from_this();
        const QNetworkReply *const reply = m_reply;
        receiveData();
        // Ended meanwhile, or gone elsewhere.
        if (m_reply != reply || m_session == nullptr) {
            return;
        }
        // A status that tells of an error is an answer like any other; what the transport met is none.
        const QNetworkReply::NetworkError error = m_reply->error();
        const bool isAnswer = error == QNetworkReply::NoError ||
                              (m_hasResponse && statusOf(*m_reply) >= 400 &&
                               error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ProtocolFailure);
        if (!isAnswer) {
            finish(urlError(codeOf(error), m_reply->errorString(), error));
        } else if (!m_hasResponse) {
            finish(urlError(NSURLErrorCode::BadServerResponse, u"the server gave no answer"_s));
        } else {
            finish({});
        }
    }

    /// Ends the task. Told at the next turn of the event loop, so that no caller is called back from within its call.
    void finish(const NSError &error)
    {
        const auto keepAlive = shared_from_this();
        NSURLSession *const session = std::exchange(m_session, nullptr);
        dropReply();
        m_idleTimer.reset();
        m_wholeTimer.reset();
        std::erase(session->m_tasks, keepAlive);
        m_handlers.didReceiveResponse = {};
        m_handlers.didReceiveData = {};
        quib::DispatchQueue::main()->async(
            [life = std::weak_ptr(session->m_life), tell = std::exchange(m_handlers.didComplete, {}), error] {
                if (tell && !life.expired()) {
                    tell(error);
                }
            });
    }

    /// Lets go of the reply: none of its signals arrives any more.
    void dropReply()
    {
        if (QNetworkReply *const reply = std::exchange(m_reply, nullptr)) {
            m_receiver.reset();
            // One whose status tells of an error takes no second one; it ends its connection when it is deleted.
            if (statusOf(*reply) < 400) {
                reply->abort();
            }
            reply->deleteLater();
        }
    }

    NSURLSession *m_session;           ///< null once the task has ended
    std::weak_ptr<char> m_sessionLife; ///< a task that never began does not learn of its session's end otherwise
    QUrl m_url;
    NSURLSessionDataHandlers m_handlers;
    QNetworkReply *m_reply = nullptr;    ///< deletes itself once dropped
    std::unique_ptr<QObject> m_receiver; ///< of the reply's signals
    std::unique_ptr<quib::TimerToken> m_idleTimer;
    std::unique_ptr<quib::TimerToken> m_wholeTimer;
    qint64 m_received = 0;
    int m_redirects = 0;
    bool m_hasBegun = false;
    bool m_hasResponse = false; ///< of the last request, and not a redirect
};

NSURLSession::NSURLSession(const NSURLSessionConfiguration &configuration)
    : m_configuration(configuration)
    , m_manager(std::make_unique<QNetworkAccessManager>())
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
}

NSURLSession::~NSURLSession()
{
    m_life.reset();
    for (const auto &task : std::exchange(m_tasks, {})) {
        task->detach();
    }
}

std::shared_ptr<NSURLSessionDataTask> NSURLSession::dataTaskWithURL(const QUrl &url, NSURLSessionDataHandlers handlers)
{
    return std::make_shared<Task>(this, m_life, url, std::move(handlers));
}

std::shared_ptr<NSURLSessionDataTask> NSURLSession::dataTaskWithURL(const QUrl &url,
                                                                    const CompletionHandler &completionHandler)
{
    struct Gathered
    {
        NSHTTPURLResponse response;
        QByteArray data;
    };
    const auto gathered = std::make_shared<Gathered>();
    NSURLSessionDataHandlers handlers;
    handlers.didReceiveResponse = [gathered](const NSHTTPURLResponse &response) {
        gathered->response = response;
        return NSURLSessionResponseDisposition::Allow;
    };
    handlers.didReceiveData = [gathered](const QByteArray &data) { gathered->data.append(data); };
    handlers.didComplete = [gathered, completionHandler](const NSError &error) {
        completionHandler(gathered->data, gathered->response, error);
    };
    return dataTaskWithURL(url, std::move(handlers));
}
