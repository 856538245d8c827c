#pragma once

#include "HTMLDocument.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class NSURLSession;

/// Fetches a page and finds its title. One page at a time: a new one ends the one before, whose callbacks are then not
/// called, and so does destroying it. Main queue; callbacks come on it, later.
class QBWebsiteParser
{
public:
    using Success = std::function<void()>;
    using Failure = std::function<void(const NSError &error)>;

    /// How much of a page is read; titles stand near its beginning. Units: bytes.
    static constexpr qsizetype kMostHTML = 2 * 1024 * 1024;

    QBWebsiteParser();
    ~QBWebsiteParser();
    QBWebsiteParser(const QBWebsiteParser &) = delete;
    QBWebsiteParser &operator=(const QBWebsiteParser &) = delete;

    [[nodiscard]] const QUrl &websiteURL() const { return m_websiteURL; }

    /// Fetches and parses. What is no page, by its type, is not read and has no title.
    /// Errors: the network's.
    void parseWebsiteURL(const QUrl &url, const Success &success, const Failure &failure);
    /// The title on one line, without line ends and without white space around it; null where there is none.
    [[nodiscard]] QString pageTitle() const;

private:
    void finish();

    QUrl m_websiteURL;
    std::unique_ptr<NSURLSession> m_urlSession; ///< of the page under way
    QByteArray m_htmlData;
    QByteArray m_declaredEncoding;
    HTMLDocument m_htmlDocument;
    Success m_successBlock;
    Failure m_errorBlock;
};
