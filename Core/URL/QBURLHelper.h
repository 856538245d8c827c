#pragma once

#include <Foundation/NSError.h>

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class NSHTTPURLResponse;
class NSURLSession;
class NSURLSessionDataTask;

/// Tells pages from files at URLs, and downloads files. One request at a time: a new one ends the one before, whose
/// callbacks are then not called, and so does destroying it. Main queue; callbacks come on it, later.
class QBURLHelper
{
public:
    using TestSuccess = std::function<void(bool isFile)>;
    using DownloadSuccess = std::function<void(const QUrl &fileURL)>;
    using Failure = std::function<void(const NSError &error)>;

    /// The domain of errors other than the network's; the message is for people.
    static constexpr QLatin1StringView kErrorDomain{"QBURLHelper"};
    /// The largest file that is downloaded. Units: bytes.
    static constexpr qint64 kLargestDownload = 100 * 1024 * 1024;

    QBURLHelper();
    ~QBURLHelper();
    QBURLHelper(const QBURLHelper &) = delete;
    QBURLHelper &operator=(const QBURLHelper &) = delete;

    /// Asks for a URL and decides on the response alone: a page is what has status 200 and the type "text/html"; all
    /// else is a file, a missing page too.
    /// Errors: the network's; status 500, with a message that says so.
    void testURL(const QUrl &url, const TestSuccess &success, const Failure &failure);
    /// Puts what is at a URL into a file in a temporary folder of its own, under a safe name made from the URL.
    /// Errors: the network's; no data; the folder or the file could not be written.
    void downloadFileAtURL(const QString &url, const DownloadSuccess &success, const Failure &failure);

private:
    void endRequest();
    void finishTest(bool isFile);
    void fail(const NSError &error);
    void saveFile(const QByteArray &data, const QString &url);

    std::unique_ptr<NSURLSession> m_session;
    std::shared_ptr<NSURLSessionDataTask> m_task;
    TestSuccess m_testSuccess;
    DownloadSuccess m_downloadSuccess;
    Failure m_failureBlock;
    bool m_sessionErrorHandled = false; ///< the end of the task was ours, so its error is none
    std::shared_ptr<char> m_request;    ///< a new one a request: late answers to others are dropped
};
