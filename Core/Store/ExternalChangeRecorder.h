#pragma once

#include "ProfileLock.h"

#include <Foundation/NotificationCenter.h>

#include <QString>

#include <optional>

class NSManagedObjectContext;

namespace quib {

/// A companion's side of sharing a profile: with each save of a context it records in the same transaction what the
/// save changes, but only while an application holds the profile; an application that comes later reads the store
/// anyway, so that the rows never pile up. A companion makes one for its main context. The context's queue.
class ExternalChangeRecorder
{
public:
    /// The context must outlive the recorder.
    /// Shape:   folder as ProfileLock::acquire.
    explicit ExternalChangeRecorder(NSManagedObjectContext &moc, const QString &folder = {});

    /// Ends the turn of a save that failed, so that an application need not wait for it.
    void endTurn() { m_turn.reset(); }

private:
    void beginTurn(NSManagedObjectContext &moc);

    QString m_folder;
    std::optional<CompanionTurn> m_turn; ///< from before a save until after it
    ObservationToken m_willSaveToken;
    ObservationToken m_didSaveToken;
};

} // namespace quib
