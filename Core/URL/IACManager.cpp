#include "IACManager.h"

#include "IACClient.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>
#include <Logging/QBLogger.h>

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kHost{"x-callback-url"};
constexpr QLatin1StringView kSource{"x-source"};
constexpr QLatin1StringView kSuccess{"x-success"};
constexpr QLatin1StringView kError{"x-error"};
constexpr QLatin1StringView kCancel{"x-cancel"};
constexpr QLatin1StringView kErrorCode{"error-Code"};
constexpr QLatin1StringView kErrorMessage{"errorMessage"};
constexpr QLatin1StringView kErrorDomain{"errorDomain"};
constexpr QLatin1StringView kResponseAction{"IACRequestResponse"};
constexpr QLatin1StringView kRequestID{"IACRequestID"};
constexpr QLatin1StringView kResponseType{"IACResponseType"};

enum class ResponseType : qint64
{
    Success = 0,
    Failure = 1,
    Cancel = 2,
};

std::weak_ptr<IACManager> &installedManager()
{
    static std::weak_ptr<IACManager> manager;
    return manager;
}

void assertMainQueue()
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
}

/// Schemes that a desktop resolves to things of this machine, to code, or to the shares of other machines.
const QSet<QString> &refusedSchemes()
{
    static const QSet<QString> schemes = {
        // Files and what lies in them.
        u"file"_s,
        u"local"_s,
        u"kio"_s,
        u"admin"_s,
        u"archive"_s,
        u"tar"_s,
        u"zip"_s,
        u"jar"_s,
        u"gzip"_s,
        u"desktop"_s,
        u"trash"_s,
        u"recent"_s,
        u"recentlyused"_s,
        u"computer"_s,
        u"burn"_s,
        u"tags"_s,
        u"timeline"_s,
        u"baloosearch"_s,
        u"search"_s,
        u"thumbnail"_s,
        u"remote"_s,
        u"network"_s,
        u"mtp"_s,
        u"gphoto2"_s,
        u"camera"_s,
        u"afc"_s,
        u"cdda"_s,
        u"audiocd"_s,
        u"dvd"_s,
        u"bluetooth"_s,
        u"obex"_s,
        // Programs, settings and their handbooks.
        u"programs"_s,
        u"applications"_s,
        u"apps"_s,
        u"exec"_s,
        u"shell"_s,
        u"settings"_s,
        u"systemsettings"_s,
        u"apt"_s,
        u"snap"_s,
        u"appstream"_s,
        u"help"_s,
        u"ghelp"_s,
        u"man"_s,
        u"info"_s,
        u"activities"_s,
        // Code and content in the URL itself.
        u"javascript"_s,
        u"vbscript"_s,
        u"livescript"_s,
        u"data"_s,
        u"blob"_s,
        u"filesystem"_s,
        u"about"_s,
        u"view-source"_s,
        u"resource"_s,
        u"chrome"_s,
        u"qrc"_s,
        u"mhtml"_s,
        u"wyciwyg"_s,
        u"intent"_s,
        // File systems of other machines, which a desktop mounts.
        u"smb"_s,
        u"cifs"_s,
        u"nfs"_s,
        u"afp"_s,
        u"sftp"_s,
        u"fish"_s,
        u"ftp"_s,
        u"ftps"_s,
        u"dav"_s,
        u"davs"_s,
        u"webdav"_s,
        u"webdavs"_s,
        u"google-drive"_s,
        u"onedrive"_s,
        u"dns-sd"_s,
        u"ms-msdt"_s,
        u"search-ms"_s,
    };
    return schemes;
}

/// "SCHEME://x-callback-url/ACTION?".
QString baseURL(const QString &scheme, const QString &action)
{
    return scheme % u"://" % kHost % u'/' % action % u'?';
}

/// What an error callback says: the domain is the message.
IACParameters errorParameters(const NSError &error)
{
    return {
        {kErrorCode, QString::number(error.code())}, {kErrorMessage, error.domain()}, {kErrorDomain, error.domain()}};
}

} // namespace

std::shared_ptr<IACManager> IACManager::sharedManager()
{
    assertMainQueue();
    return installedManager().lock();
}

void IACManager::setSharedManager(const std::weak_ptr<IACManager> &manager)
{
    assertMainQueue();
    installedManager() = manager;
}

void IACManager::handleAction(const QString &action, const IACActionBlock &withBlock)
{
    assertMainQueue();
    m_actions.insert(action, withBlock);
}

QString IACManager::localizedAppName()
{
    return u"Quib"_s;
}

IACParameters IACManager::removeProtocolParamsFromDictionary(const IACParameters &dictionary)
{
    IACParameters kept;
    for (auto it = dictionary.cbegin(); it != dictionary.cend(); ++it) {
        const QString &key = it.key();
        if (key == kSource || (!key.startsWith("x-"_L1) && !key.startsWith("IAC"_L1))) {
            kept.insert(key, it.value());
        }
    }
    return kept;
}

bool IACManager::canOpenURL(const QUrl &url)
{
    // A scheme of one letter is the drive of a path; without a scheme an opener would look for a file.
    const QString scheme = url.scheme();
    return url.isValid() && scheme.size() > 1 && !refusedSchemes().contains(scheme);
}

bool IACManager::openURL(const QUrl &url)
{
    assertMainQueue();
    if (!canOpenURL(url)) {
        QBLogWarn(u"refused to open a URL with the scheme \"%1\""_s.arg(url.scheme()));
        return false;
    }
    if (!m_opener || !m_opener(url)) {
        QBLogWarn(u"could not open a URL with the scheme \"%1\""_s.arg(url.scheme()));
        return false;
    }
    return true;
}

void IACManager::openCallback(const QString &url, const IACParameters &params)
{
    if (!url.isEmpty()) {
        openURL(quib::urlFromText(quib::stringByAppendingURLParams(url, params)));
    }
}

bool IACManager::handleOpenURL(const QUrl &url)
{
    assertMainQueue();
    // 1. Ours?
    if (m_callbackURLScheme.isEmpty() || url.scheme() != m_callbackURLScheme || url.host() != kHost) {
        return false;
    }
    const QString query = url.query(QUrl::FullyEncoded);
    if (query.size() > kLargestURL || query.count(u'&') >= kMostParameters) {
        QBLogWarn(u"refused a URL of %1 characters"_s.arg(query.size()));
        return false;
    }
    // 2. Its action and parameters.
    const QString action = url.path(QUrl::FullyDecoded).sliced(std::min<qsizetype>(1, url.path().size()));
    const IACParameters all = quib::parseURLParams(query);
    const QString errorURL = all.value(kError);
    // 3. An answer to one of our requests.
    if (action == kResponseAction) {
        return handleResponse(all);
    }
    // 4. A parameter that is too large, or an action that nobody knows.
    const auto refuse = [this, &errorURL](IACManagerErrorCode code, const QString &message) {
        openCallback(errorURL, {{kErrorCode, QString::number(static_cast<qint64>(code))},
                                {kErrorMessage, message},
                                {kErrorDomain, kIACManagerErrorDomain}});
        return !errorURL.isEmpty();
    };
    const auto isTooLarge = [](const QString &value) {
        // A unit takes three bytes at most, so most values need no conversion.
        return value.size() > kLargestParameter / 3 && value.toUtf8().size() > kLargestParameter;
    };
    for (auto it = all.cbegin(); it != all.cend(); ++it) {
        if (isTooLarge(it.value())) {
            QBLogWarn(u"refused a URL with a parameter of %1 units"_s.arg(it.value().size()));
            return refuse(IACManagerErrorCode::ParameterTooLarge, u"A parameter is larger than 10 MB"_s);
        }
    }
    const auto delegate = m_delegate.lock();
    const auto registered = m_actions.constFind(action);
    if (registered == m_actions.cend() && !(delegate && delegate->supportsIACAction(action))) {
        return refuse(IACManagerErrorCode::ActionNotSupported,
                      u"'%1' is not an x-callback-url action supported by %2"_s.arg(action, localizedAppName()));
    }
    // 5. How the handler answers, then or later.
    const IACSuccessBlock success = [weakSelf = weak_from_this(), successURL = all.value(kSuccess),
                                     cancelURL = all.value(kCancel)](const std::optional<IACParameters> &result,
                                                                     bool cancelled) {
        const auto self = weakSelf.lock();
        if (!self) {
            return;
        }
        if (!cancelled) {
            self->openCallback(successURL, result.value_or(IACParameters()));
        } else if (!cancelURL.isEmpty()) {
            self->openURL(quib::urlFromText(cancelURL));
        }
    };
    const IACFailureBlock failure = [weakSelf = weak_from_this(), errorURL](const NSError &error) {
        if (const auto self = weakSelf.lock()) {
            self->openCallback(errorURL, errorParameters(error));
        }
    };
    // 6. The handler. Copied, since it may register others.
    const IACParameters parameters = removeProtocolParamsFromDictionary(all);
    if (registered != m_actions.cend()) {
        const IACActionBlock block = *registered;
        block(parameters, success, failure);
    } else {
        delegate->performIACAction(action, parameters, success, failure);
    }
    return true;
}

bool IACManager::handleResponse(const IACParameters &all)
{
    const auto found = m_sessions.constFind(all.value(kRequestID));
    if (found == m_sessions.cend()) {
        return false;
    }
    // Forgotten first: a callback may well send the next request.
    const IACRequest request = *found;
    m_sessions.erase(found);
    switch (static_cast<ResponseType>(quib::leadingInteger(all.value(kResponseType)))) {
    case ResponseType::Success:
        if (request.successCalback) {
            request.successCalback(removeProtocolParamsFromDictionary(all), false);
        }
        return true;
    case ResponseType::Cancel:
        if (request.successCalback) {
            request.successCalback(std::nullopt, true);
        }
        return true;
    case ResponseType::Failure:
        if (request.errorCalback) {
            request.errorCalback(NSError(all.value(kErrorDomain, kIACClientErrorDomain),
                                         request.client->NSErrorCodeForXCUErrorCode(all.value(kErrorCode)),
                                         all.value(kErrorMessage)));
        }
        return true;
    }
    return false;
}

void IACManager::sendIACRequest(const IACRequest &request)
{
    assertMainQueue();
    QUIB_ASSERT(request.client != nullptr);
    // 1. Is anybody there?
    const QString scheme = request.client->URLScheme();
    if (!request.client->isAppInstalled()) {
        if (request.errorCalback) {
            request.errorCalback(NSError(kIACManagerErrorDomain,
                                         static_cast<qint64>(IACManagerErrorCode::AppNotInstalled),
                                         u"App with scheme '%1' is not installed in this device"_s.arg(scheme)));
        }
        return;
    }
    // 2. The action, its parameters, and who asks.
    QString url = quib::stringByAppendingURLParams(baseURL(scheme, request.action), request.parameters);
    IACParameters protocol{{kSource, localizedAppName()}};
    // 3. Where the answers go. They are parameters themselves, so what takes a query apart is escaped in them once
    // more.
    if (!m_callbackURLScheme.isEmpty()) {
        const QString base = quib::stringByAppendingURLParams(baseURL(m_callbackURLScheme, kResponseAction),
                                                              {{kRequestID, request.requestID}});
        const auto answer = [&base](ResponseType type) {
            return quib::stringByAppendingURLParams(base,
                                                    {{kResponseType, QString::number(static_cast<qint64>(type))}});
        };
        if (request.successCalback) {
            protocol.insert(kSuccess, answer(ResponseType::Success));
            protocol.insert(kCancel, answer(ResponseType::Cancel));
        }
        if (request.errorCalback) {
            protocol.insert(kError, answer(ResponseType::Failure));
        }
    } else if (request.successCalback || request.errorCalback) {
        // 4. Nobody could answer.
        QBLogWarn(u"WARNING: If you want to support callbacks from the remote app you must define a URL Scheme for "
                  "this app to listen on"_s);
    }
    for (auto it = protocol.cbegin(); it != protocol.cend(); ++it) {
        url.append(it.key() % u'=' % QString::fromLatin1(QUrl::toPercentEncoding(it.value())) % u'&');
    }
    // 5. Remembered before it leaves: the answer may come at once.
    m_sessions.insert(request.requestID, request);
    openURL(quib::urlFromText(url));
}
