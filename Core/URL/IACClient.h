#pragma once

#include "IACCallbacks.h"

#include <QString>

#include <memory>

class IACManager;

/// Another application, by the scheme of its URLs. Main queue.
class IACClient : public std::enable_shared_from_this<IACClient>
{
public:
    [[nodiscard]] static std::shared_ptr<IACClient> client();
    [[nodiscard]] static std::shared_ptr<IACClient> clientWithURLScheme(const QString &URLScheme);

    IACClient() = default;
    explicit IACClient(QString URLScheme);
    virtual ~IACClient() = default;
    IACClient(const IACClient &) = delete;
    IACClient &operator=(const IACClient &) = delete;

    [[nodiscard]] const QString &URLScheme() const { return m_URLScheme; }
    void setURLScheme(const QString &URLScheme) { m_URLScheme = URLScheme; }
    /// Who sends the requests: the one that was set and still lives, else the shared one.
    [[nodiscard]] std::shared_ptr<IACManager> manager() const;
    void setManager(const std::weak_ptr<IACManager> &manager) { m_manager = manager; }

    /// Always true: the desktop finds out when it opens the URL.
    [[nodiscard]] virtual bool isAppInstalled() const { return true; }

    /// Sends an action.
    /// Requires: the client is held by a shared pointer.
    void performAction(const QString &action) { performAction(action, {}); }
    void performAction(const QString &action, const IACParameters &parameters)
    {
        performAction(action, parameters, {}, {});
    }
    void performAction(const QString &action, const IACParameters &parameters, const IACSuccessBlock &onSuccess,
                       const IACFailureBlock &onFailure);

    /// The code of an error that the application answered with: the number that the text begins with, or 0.
    [[nodiscard]] virtual qint64 NSErrorCodeForXCUErrorCode(const QString &code) const;

private:
    QString m_URLScheme;
    std::weak_ptr<IACManager> m_manager;
};
