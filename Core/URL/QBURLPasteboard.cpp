#include "QBURLPasteboard.h"

#include "QBWebsiteParser.h"
#include "URLParameters.h"

#include <Foundation/NSPasteboard.h>
#include <Logging/QBLogger.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>

using namespace Qt::StringLiterals;

QBURLPasteboard::QBURLPasteboard(std::shared_ptr<NSPasteboard> pasteboard)
    : m_pasteboard(std::move(pasteboard))
    , m_parser(std::make_unique<QBWebsiteParser>())
{
}

QBURLPasteboard::~QBURLPasteboard() = default;

std::optional<QString> QBURLPasteboard::urlString() const
{
    auto string = m_pasteboard->stringForType(NSPasteboardTypeURL);
    if (!string) {
        string = m_pasteboard->stringForType(NSPasteboardTypeString);
    }
    if (!string || string->size() > kLongestURL) {
        return std::nullopt;
    }
    const QString trimmed = quib::trimmedWhitespaceAndNewlines(*string);
    const bool isWeb =
        trimmed.startsWith("http://"_L1, Qt::CaseInsensitive) || trimmed.startsWith("https://"_L1, Qt::CaseInsensitive);
    const bool isOneWord = std::none_of(trimmed.cbegin(), trimmed.cend(), [](QChar unit) { return unit.isSpace(); });
    return isWeb && isOneWord && !QUrl(trimmed).host().isEmpty() ? std::optional(trimmed) : std::nullopt;
}

void QBURLPasteboard::fixURLWithoutTitle()
{
    // 1. Once for each copy.
    if (m_changeCountAlreadyParsed == m_pasteboard->changeCount()) {
        return;
    }
    m_changeCountAlreadyParsed = m_pasteboard->changeCount();
    // 2. A link that nobody looked up yet,
    const auto url = urlString();
    if (!url || urlAlreadyParsedForString(*url)) {
        return;
    }
    // 3. and that came without a title.
    const auto title = m_pasteboard->stringForType(kURLNameType);
    if (title && *title != *url) {
        return;
    }
    // 4. Its page. By then something else may have been copied.
    QBLogInfo(u"parsing url %1 for getting title"_s.arg(*url));
    const auto takeTitle = [this, url = *url] {
        if (urlString() == url) {
            setTitle(m_parser->pageTitle(), url);
            setURLAlreadyParsed(url);
        }
    };
    const auto fail = [](const NSError &error) { QBLogInfo(error.localizedDescription()); };
    m_parser->parseWebsiteURL(quib::urlFromText(*url), takeTitle, fail);
}

void QBURLPasteboard::setTitle(const QString &title, const QString &forURL)
{
    QBLogInfo(u"setting url title %1"_s.arg(title));
    if (urlString() == forURL) {
        // An empty title is one too: the page was looked at and has none.
        m_pasteboard->setString(title.isNull() ? u""_s : title, kURLNameType);
    }
}

bool QBURLPasteboard::urlAlreadyParsedForString(const QString &string) const
{
    return m_pasteboard->stringForType(kURLAlreadyParsedType) == string;
}

void QBURLPasteboard::setURLAlreadyParsed(const QString &url)
{
    m_pasteboard->setString(url, kURLAlreadyParsedType);
}
