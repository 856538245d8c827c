#include "QBURLHelper.h"

#include "URLFileName.h"
#include "URLParameters.h"

#include <Files/AtomicFile.h>
#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Foundation/Identifiers.h>
#include <Network/NSURLSession.h>
#include <Store/QBLocalFileManager.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

NSURLSessionConfiguration sessionConfiguration()
{
    NSURLSessionConfiguration configuration;
    configuration.maximumBodySize = QBURLHelper::kLargestDownload;
    configuration.timeoutIntervalForResource = 600;
    return configuration;
}

NSError helperError(qint64 code, const QString &message)
{
    return {QBURLHelper::kErrorDomain, code, message};
}

/// Writes bytes under a URL's name into a folder of their own.
/// Errors: empty; the reason, in words for people.
QUrl writtenFile(const QByteArray &data, const QString &url, NSError *error)
{
    const QString temporary = QBLocalFileManager::temporaryUniqueDirectoryPath(nullptr);
    const QString folder = temporary % u'/' % quib::uuidString();
    if (temporary.isEmpty() || !quib::ensureFolder(folder, nullptr)) {
        *error = helperError(2, u"Unable to create the temporary folder"_s);
        return {};
    }
    const QString path = folder % u'/' % quib::fileNameForURL(url, data);
    return quib::writeFileAtomically(path, data, error) ? QUrl::fromLocalFile(path) : QUrl();
}

} // namespace

QBURLHelper::QBURLHelper() = default;
QBURLHelper::~QBURLHelper() = default;

void QBURLHelper::endRequest()
{
    // With its session a task falls silent; a file that is being written is dropped by the token.
    m_session = std::make_unique<NSURLSession>(sessionConfiguration());
    m_task.reset();
    m_request = std::make_shared<char>('\0');
    m_testSuccess = {};
    m_downloadSuccess = {};
    m_failureBlock = {};
    m_sessionErrorHandled = false;
}

void QBURLHelper::testURL(const QUrl &url, const TestSuccess &success, const Failure &failure)
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    endRequest();
    m_testSuccess = success;
    m_failureBlock = failure;
    const std::weak_ptr<char> request = m_request;
    NSURLSessionDataHandlers handlers;
    handlers.didReceiveResponse = [this, request](const NSHTTPURLResponse &response) {
        // Its end is ours, so the error that it ends with is none. Told later: the callback may begin a new request.
        m_sessionErrorHandled = true;
        const bool isPage =
            response.statusCode() == 200 &&
            response.valueForHTTPHeaderField("Content-Type").trimmed().toLower().startsWith("text/html");
        const bool isServerError = response.statusCode() == 500;
        quib::DispatchQueue::main()->async([this, request, isPage, isServerError] {
            if (request.expired()) {
                return;
            }
            if (isServerError) {
                fail(helperError(500, u"The request page responded with a 500 error"_s));
            } else {
                finishTest(/*isFile=*/!isPage);
            }
        });
        return NSURLSessionResponseDisposition::Cancel;
    };
    handlers.didComplete = [this](const NSError &error) {
        if (!m_sessionErrorHandled) {
            fail(error);
        }
    };
    m_task = m_session->dataTaskWithURL(url, std::move(handlers));
    m_task->resume();
}

void QBURLHelper::downloadFileAtURL(const QString &url, const DownloadSuccess &success, const Failure &failure)
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    endRequest();
    m_downloadSuccess = success;
    m_failureBlock = failure;
    const NSURLSession::CompletionHandler complete = [this, url](const QByteArray &data, const NSHTTPURLResponse &,
                                                                 const NSError &error) {
        if (error.isSet()) {
            fail(error);
        } else if (data.isEmpty()) {
            fail(helperError(1, u"The address gave no data"_s));
        } else {
            saveFile(data, url);
        }
    };
    m_task = m_session->dataTaskWithURL(quib::urlFromText(url), complete);
    m_task->resume();
}

void QBURLHelper::saveFile(const QByteArray &data, const QString &url)
{
    // Elsewhere: a disk may take its time.
    const std::weak_ptr<char> request = m_request;
    quib::DispatchQueue::serial(u"download"_s)->async([this, request, data, url] {
        NSError error;
        const QUrl file = writtenFile(data, url, &error);
        quib::DispatchQueue::main()->async([this, request, file, error] {
            if (request.expired()) {
                return;
            }
            if (file.isEmpty()) {
                fail(error);
                return;
            }
            m_failureBlock = {};
            if (const auto success = std::exchange(m_downloadSuccess, {})) {
                success(file);
            }
        });
    });
}

void QBURLHelper::finishTest(bool isFile)
{
    m_failureBlock = {};
    if (const auto success = std::exchange(m_testSuccess, {})) {
        success(isFile);
    }
}

void QBURLHelper::fail(const NSError &error)
{
    m_testSuccess = {};
    m_downloadSuccess = {};
    if (const auto failure = std::exchange(m_failureBlock, {})) {
        failure(error);
    }
}
