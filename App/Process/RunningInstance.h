#pragma once

#include "InstanceName.h"
#include "InstanceRequest.h"

#include <Foundation/NSError.h>

#include <QDBusConnection>
#include <QVariantMap>

namespace quib {

/// The instance of a profile that already runs, as another process reaches it over the session bus. Main thread; calls
/// wait for their answer.
class RunningInstance
{
public:
    RunningInstance(const QDBusConnection &connection, const InstanceName &name);

    /// Whether there is one. It may end before it is asked for anything.
    [[nodiscard]] bool isThere() const;
    /// Hands a request over and waits until it was taken; until it is done for what is sent.
    /// Errors: kRefused, with what the instance answers, or that it did not answer in time; kGone.
    [[nodiscard]] bool hand(const InstanceRequest &request, NSError *error) const;

    /// What the desktop gave this process to prove that the user asked for a window.
    [[nodiscard]] static QVariantMap platformData();

    static constexpr QLatin1StringView kErrorDomain{"RunningInstance"};
    /// The instance answered that it could not.
    static constexpr qint64 kRefused = 1;
    /// It ended before it answered: what was asked of it is for the next one.
    static constexpr qint64 kGone = 2;
    /// Units: milliseconds. A store that is being migrated takes requests that are served later; a text that is sent
    /// waits for that.
    static constexpr int kTimeout = 10 * 60 * 1000;

private:
    QDBusConnection m_connection;
    InstanceName m_name;
};

} // namespace quib
