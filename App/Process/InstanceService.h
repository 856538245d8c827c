#pragma once

#include "InstanceName.h"
#include "InstanceRequest.h"

#include <Foundation/NSError.h>

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>

namespace quib {

/// Who serves what comes over the bus. Main queue.
class InstanceServant
{
public:
    /// Called once, then or later; an error that is not set means that the request was served.
    using Done = std::function<void(const NSError &error)>;

    virtual ~InstanceServant() = default;
    /// Serves a request, or parks it until it can be served.
    virtual void serve(const InstanceRequest &request, Done done) = 0;
    /// The title of the note that is being edited, or the empty string.
    [[nodiscard]] virtual QString currentNoteTitle() const = 0;
    /// Shows what the user looked at elsewhere; false where it is unknown.
    virtual bool continueActivity(const QVariantMap &userInfo) = 0;
};

/// The object of an instance on the session bus: the desktop's application interface, and one of Quib's own. It takes
/// messages apart, checks their types, and hands requests on; whatever does not fit is answered with an error. Owned by
/// the process. Main queue.
class InstanceService final : public QDBusVirtualObject
{
public:
    /// The servant outlives this object.
    explicit InstanceService(InstanceServant &servant);
    ~InstanceService() override;

    /// Puts the object on a bus and takes the name, so that calls arrive from then on. Served is from the event loop.
    /// Errors: false when another process has the name, or there is no bus.
    [[nodiscard]] bool registerAt(const QDBusConnection &connection, const InstanceName &name);
    /// Takes a further name for the same object, if nobody has it.
    void addName(const QString &busName);
    /// Gives the names back: calls go to whoever is started next.
    void unregister();

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    /// Hands a request on and answers when it was taken, or, with waits, when it was served.
    void hand(const InstanceRequest &request, const QDBusMessage &message, const QDBusConnection &connection,
              bool waits);
    bool handleApplicationCall(const QDBusMessage &message, const QDBusConnection &connection);
    bool handleQuibCall(const QDBusMessage &message, const QDBusConnection &connection);

    InstanceServant &m_servant;
    QDBusConnection m_connection;
    QString m_objectPath;
    QStringList m_names;
};

} // namespace quib
