#include "IACClient.h"

#include "IACManager.h"

#include <Logging/QBLogger.h>

using namespace Qt::StringLiterals;

IACClient::IACClient(QString URLScheme)
    : m_URLScheme(std::move(URLScheme))
{
}

std::shared_ptr<IACClient> IACClient::client()
{
    return std::make_shared<IACClient>();
}

std::shared_ptr<IACClient> IACClient::clientWithURLScheme(const QString &URLScheme)
{
    return std::make_shared<IACClient>(URLScheme);
}

std::shared_ptr<IACManager> IACClient::manager() const
{
    auto own = m_manager.lock();
    return own ? own : IACManager::sharedManager();
}

void IACClient::performAction(const QString &action, const IACParameters &parameters, const IACSuccessBlock &onSuccess,
                              const IACFailureBlock &onFailure)
{
    const auto manager = this->manager();
    if (!manager) {
        QBLogError(u"no manager to send the action by"_s);
        return;
    }
    IACRequest request;
    request.client = shared_from_this();
    request.action = action;
    request.parameters = parameters;
    request.successCalback = onSuccess;
    request.errorCalback = onFailure;
    manager->sendIACRequest(request);
}

qint64 IACClient::NSErrorCodeForXCUErrorCode(const QString &code) const
{
    return quib::leadingInteger(code);
}
