#pragma once

#include "IACCallbacks.h"
#include "IACRequest.h"

#include <QHash>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

/// Dispatches URLs of the form "SCHEME://x-callback-url/ACTION?PARAMETERS" to the handlers of actions, and answers by
/// opening the URLs that the caller gave; sends such URLs to other applications and hands out their answers. One for
/// the process, installed by the program's start or by a test. Main queue.
///
/// URLs come from anywhere, web pages included. What is opened in return goes through the installed opener only, and
/// never names a file, a script or anything else of this machine: see canOpenURL.
class IACManager : public std::enable_shared_from_this<IACManager>
{
public:
    /// Has the desktop open a URL; false where it could not.
    using Opener = std::function<bool(const QUrl &url)>;

    /// The longest URL that is read. Units: UTF-16 code units of the URL; a parameter of the largest size fits, each
    /// byte of it percent-encoded.
    static constexpr qsizetype kLargestURL = 32 * 1024 * 1024;
    /// The largest value of a parameter. Units: bytes of UTF-8, decoded.
    static constexpr qsizetype kLargestParameter = 10 * 1024 * 1024;
    /// The most parts between "&" that a query may have.
    static constexpr qsizetype kMostParameters = 10'000;

    IACManager() = default;
    IACManager(const IACManager &) = delete;
    IACManager &operator=(const IACManager &) = delete;

    /// The installed manager, or null.
    [[nodiscard]] static std::shared_ptr<IACManager> sharedManager();
    /// Installs a manager that the caller keeps alive.
    static void setSharedManager(const std::weak_ptr<IACManager> &manager);

    // Set up

    /// The application's own scheme; none is handled while it is empty.
    [[nodiscard]] const QString &callbackURLScheme() const { return m_callbackURLScheme; }
    void setCallbackURLScheme(const QString &callbackURLScheme) { m_callbackURLScheme = callbackURLScheme; }
    /// Held weakly.
    void setDelegate(const std::weak_ptr<IACDelegate> &delegate) { m_delegate = delegate; }
    /// Who opens URLs for openURL. Without one nothing is opened.
    void setOpener(Opener opener) { m_opener = std::move(opener); }
    /// Registers the handler of an action, in the place of an earlier one.
    void handleAction(const QString &action, const IACActionBlock &withBlock);

    // Incoming

    /// Runs the action of a URL, or hands out an answer. Callbacks may come later.
    /// Errors: false for a URL that is not ours, an unknown action without "x-error", an answer that nobody waits for,
    ///         and a URL beyond the limits above; nothing was done then.
    [[nodiscard]] bool handleOpenURL(const QUrl &url);

    // Outgoing

    /// Sends a request and remembers it until its answer comes.
    void sendIACRequest(const IACRequest &request);
    /// Has the opener open a URL; one that canOpenURL refuses is logged.
    /// Errors: false where it was refused or not opened.
    bool openURL(const QUrl &url);
    /// Whether a URL may be handed to the desktop. Its scheme must be one of another program or of the web. Schemes
    /// that reach into this machine (file, data, javascript, desktop locations and their kin) are refused.
    [[nodiscard]] static bool canOpenURL(const QUrl &url);

    // Helpers

    /// Without the names that begin with "x-" or "IAC", but with "x-source".
    [[nodiscard]] static IACParameters removeProtocolParamsFromDictionary(const IACParameters &dictionary);
    /// The application's name as people see it.
    [[nodiscard]] static QString localizedAppName();
    /// The requests that wait for an answer, by identifier.
    [[nodiscard]] const QHash<QString, IACRequest> &sessions() const { return m_sessions; }

private:
    [[nodiscard]] bool handleResponse(const IACParameters &all);
    /// Opens a URL that the caller gave, if it gave one; with parameters behind it.
    void openCallback(const QString &url, const IACParameters &params);

    QString m_callbackURLScheme;
    std::weak_ptr<IACDelegate> m_delegate;
    Opener m_opener;
    QHash<QString, IACActionBlock> m_actions;
    QHash<QString, IACRequest> m_sessions;
};
