#include "NSURLSession.h"

#include "TransferLoop.h"

#include <Foundation/Assert.h>
#include <Foundation/Clock.h>
#include <Foundation/DispatchQueue.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

NSError urlError(NSURLErrorCode code, const QString &message, qint64 cause = 0)
{
    return {kNSURLErrorDomain, static_cast<qint64>(code), message, cause};
}

bool isWeb(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1);
}

bool isRedirect(int status)
{
    constexpr std::array<int, 5> kRedirects = {301, 302, 303, 307, 308};
    return std::find(kRedirects.begin(), kRedirects.end(), status) != kRedirects.end();
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
    ~Task() override = default;
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
        m_transfer.reset();
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
        TransferHandlers handlers;
        handlers.didReceiveHead = [this](int status, const QList<NSHTTPURLResponse::Header> &headers) {
            receiveResponse(NSHTTPURLResponse(m_url, status, headers));
        };
        handlers.didReceiveData = [this](const QByteArray &data) { receiveData(data); };
        handlers.didEnd = [this](const NSError &error) { finish(error); };
        m_transfer = std::make_unique<Transfer>(*m_session->m_loop, m_url, m_session->m_configuration.maximumBodySize,
                                                std::move(handlers));
        restartIdleTimer();
    }

    void restartIdleTimer()
    {
        m_idleTimer = quib::Clock::shared().schedule(m_session->m_configuration.timeoutIntervalForRequest,
                                                     [this] { finish(timeOut()); });
    }

    void receiveResponse(const NSHTTPURLResponse &response)
    {
        const auto keepAlive = shared_from_this();
        restartIdleTimer();
        // 1. Elsewhere?
        const QByteArray location = response.valueForHTTPHeaderField("Location");
        if (isRedirect(response.statusCode()) && !location.isEmpty()) {
            redirect(QUrl::fromEncoded(location));
            return;
        }
        // 2. Does the owner want it?
        // The handler is copied, here and below: it may well let go of the session, and of itself with it.
        const auto decide = m_handlers.didReceiveResponse;
        if (decide && decide(response) == NSURLSessionResponseDisposition::Cancel) {
            cancel();
            return;
        }
        // 3. A body that will be too large need not come. A packed one tells its packed size, which is no larger.
        if (m_session != nullptr && response.expectedContentLength() > m_session->m_configuration.maximumBodySize) {
            finish(urlError(NSURLErrorCode::DataLengthExceedsMaximum, u"the answer is too large"_s));
        }
    }

    void redirect(const QUrl &location)
    {
        const QUrl from = m_url;
        m_transfer.reset();
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

    void receiveData(const QByteArray &data)
    {
        const auto keepAlive = shared_from_this();
        restartIdleTimer();
        if (const auto take = m_handlers.didReceiveData) {
            take(data);
        }
    }

    /// Ends the task. Told at the next turn of the event loop, so that no caller is called back from within its call.
    void finish(const NSError &error)
    {
        const auto keepAlive = shared_from_this();
        NSURLSession *const session = std::exchange(m_session, nullptr);
        m_transfer.reset();
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

    NSURLSession *m_session;           ///< null once the task has ended
    std::weak_ptr<char> m_sessionLife; ///< a task that never began does not learn of its session's end otherwise
    QUrl m_url;
    NSURLSessionDataHandlers m_handlers;
    std::unique_ptr<Transfer> m_transfer; ///< of the request that is under way
    std::unique_ptr<quib::TimerToken> m_idleTimer;
    std::unique_ptr<quib::TimerToken> m_wholeTimer;
    int m_redirects = 0;
    bool m_hasBegun = false;
};

NSURLSession::NSURLSession(const NSURLSessionConfiguration &configuration)
    : m_configuration(configuration)
    , m_loop(std::make_unique<TransferLoop>())
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
