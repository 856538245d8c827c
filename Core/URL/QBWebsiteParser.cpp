#include "QBWebsiteParser.h"

#include "PageDecoding.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Network/NSURLSession.h>
#include <Text/NSStringHelpers.h>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

NSURLSessionConfiguration sessionConfiguration()
{
    NSURLSessionConfiguration configuration;
    configuration.timeoutIntervalForRequest = 15;
    configuration.timeoutIntervalForResource = 60;
    // A page may be longer than what is read of it.
    configuration.maximumBodySize = std::numeric_limits<qint64>::max();
    return configuration;
}

bool isPage(const NSHTTPURLResponse &response)
{
    const QByteArray type =
        response.valueForHTTPHeaderField("Content-Type").split(';').constFirst().trimmed().toLower();
    return type.isEmpty() || type == "text/html" || type == "application/xhtml+xml";
}

} // namespace

QBWebsiteParser::QBWebsiteParser() = default;
QBWebsiteParser::~QBWebsiteParser() = default;

void QBWebsiteParser::parseWebsiteURL(const QUrl &url, const Success &success, const Failure &failure)
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    m_websiteURL = url;
    m_htmlData.clear();
    m_declaredEncoding.clear();
    m_htmlDocument = {};
    m_successBlock = success;
    m_errorBlock = failure;
    // The session of the page before falls silent with its end.
    m_urlSession = std::make_unique<NSURLSession>(sessionConfiguration());
    NSURLSessionDataHandlers handlers;
    auto isWhole = std::make_shared<bool>(false);
    const std::shared_ptr<std::weak_ptr<NSURLSessionDataTask>> self =
        std::make_shared<std::weak_ptr<NSURLSessionDataTask>>();
    handlers.didReceiveResponse = [this, isWhole](const NSHTTPURLResponse &response) {
        m_declaredEncoding = response.textEncodingName();
        *isWhole = !isPage(response);
        return *isWhole ? NSURLSessionResponseDisposition::Cancel : NSURLSessionResponseDisposition::Allow;
    };
    handlers.didReceiveData = [this, isWhole, self](const QByteArray &data) {
        m_htmlData.append(data.first(std::min(data.size(), kMostHTML - m_htmlData.size())));
        const auto task = self->lock();
        if (m_htmlData.size() >= kMostHTML && task) {
            *isWhole = true;
            task->cancel();
        }
    };
    handlers.didComplete = [this, isWhole](const NSError &error) {
        const auto fail = std::exchange(m_errorBlock, {});
        if (!error.isSet() || *isWhole) {
            finish();
        } else if (fail) {
            fail(error);
        }
    };
    const auto task = m_urlSession->dataTaskWithURL(url, std::move(handlers));
    *self = task;
    task->resume();
}

void QBWebsiteParser::finish()
{
    m_htmlDocument = HTMLDocument::documentWithString(quib::decodePage(m_htmlData, m_declaredEncoding));
    m_htmlData.clear();
    if (const auto success = std::exchange(m_successBlock, {})) {
        success();
    }
}

QString QBWebsiteParser::pageTitle() const
{
    if (!m_htmlDocument.hasTitle()) {
        return {};
    }
    QString title = quib::trimmedWhitespaceAndNewlines(m_htmlDocument.title());
    title.removeIf([](QChar unit) { return quib::isNewline(unit.unicode()); });
    return u""_s % title;
}
