#pragma once

#include "NSHTTPURLResponse.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <memory>
#include <vector>

class TransferLoop;

/// The domain of what can go wrong between a request and its answer.
inline constexpr QLatin1StringView kNSURLErrorDomain{"NSURLErrorDomain"};

/// Codes of kNSURLErrorDomain.
enum class NSURLErrorCode : qint64
{
    Unknown = -1,
    Cancelled = -999,
    BadURL = -1000,
    TimedOut = -1001,
    UnsupportedURL = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    NetworkConnectionLost = -1005,
    HTTPTooManyRedirects = -1007,
    BadServerResponse = -1011,
    DataLengthExceedsMaximum = -1103,
    SecureConnectionFailed = -1200,
};

/// How far the tasks of a session go. A value.
struct NSURLSessionConfiguration
{
    /// How long a server may send nothing of a body, and how long it may take to begin one. Units: seconds.
    double timeoutIntervalForRequest = 30;
    /// How long one task may last in all, redirects included. Units: seconds.
    double timeoutIntervalForResource = 300;
    /// The most that a body may hold, unpacked. Units: bytes.
    qint64 maximumBodySize = 10 * 1024 * 1024;
    int maximumRedirects = 5;
};

/// What to do behind a response.
enum class NSURLSessionResponseDisposition
{
    Cancel,
    Allow,
};

/// What a task tells; each may be left out. Called on the main queue, never from within resume() or cancel().
struct NSURLSessionDataHandlers
{
    /// The response, before anything of the body. Left out, the body is wanted.
    std::function<NSURLSessionResponseDisposition(const NSHTTPURLResponse &response)> didReceiveResponse;
    /// The next piece of the body.
    std::function<void(const QByteArray &data)> didReceiveData;
    /// The end, once: no error for a body that is whole, whatever its status.
    std::function<void(const NSError &error)> didComplete;
};

/// One request and its answer. Held by its session while it runs. Main queue.
class NSURLSessionDataTask
{
public:
    virtual ~NSURLSessionDataTask() = default;
    /// Begins; a second call does nothing.
    virtual void resume() = 0;
    /// Ends the task with the error Cancelled, unless it has ended. No response or data comes any more.
    virtual void cancel() = 0;
    /// Where the request stands: the URL given, or the last redirect's.
    [[nodiscard]] virtual QUrl currentURL() const = 0;
};

/// Fetches over http and https, and nothing else, also where a redirect leads; from https only to https. No cookies, no
/// passwords and no cache: one task leaves nothing for the next. Times pass by the shared clock. Main queue.
class NSURLSession
{
public:
    explicit NSURLSession(const NSURLSessionConfiguration &configuration = {});
    /// Ends all tasks; they tell nothing more.
    ~NSURLSession();
    NSURLSession(const NSURLSession &) = delete;
    NSURLSession &operator=(const NSURLSession &) = delete;

    /// A task that waits for resume().
    /// Errors: told by didComplete: kNSURLErrorDomain; DataLengthExceedsMaximum as soon as a body is, or says that it
    ///         is, too large.
    [[nodiscard]] std::shared_ptr<NSURLSessionDataTask> dataTaskWithURL(const QUrl &url,
                                                                        NSURLSessionDataHandlers handlers);
    /// A task that gathers the body.
    using CompletionHandler =
        std::function<void(const QByteArray &data, const NSHTTPURLResponse &response, const NSError &error)>;
    [[nodiscard]] std::shared_ptr<NSURLSessionDataTask> dataTaskWithURL(const QUrl &url,
                                                                        const CompletionHandler &completionHandler);

private:
    class Task;

    NSURLSessionConfiguration m_configuration;
    std::unique_ptr<TransferLoop> m_loop;
    std::vector<std::shared_ptr<Task>> m_tasks;                  ///< those under way
    std::shared_ptr<char> m_life = std::make_shared<char>('\0'); ///< tells late blocks whether this is still there
};
