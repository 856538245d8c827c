#pragma once

#include "QBEditorState.h"

#include <QHash>
#include <QStringList>

#include <optional>

/// Remembers where the user was in each note. Owned by a window, and kept with its state. Main queue.
class QBEditorStateController
{
public:
    [[nodiscard]] const QHash<QString, QBEditorState> &states() const { return m_states; }
    /// Ascending.
    [[nodiscard]] QStringList registeredUUIDs() const;
    /// Null where there is none. Valid until the next registering or invalidating.
    [[nodiscard]] QBEditorState *stateForUUID(const QString &uuid);
    [[nodiscard]] const QBEditorState *stateForUUID(const QString &uuid) const;
    /// A new state as of now, in the place of any earlier one. Null for a null identifier. Valid like the above.
    QBEditorState *registerStateForUUID(const QString &uuid);
    void invalidateStateForUUID(const QString &uuid);

    [[nodiscard]] quib::PropertyValue archived() const;
    /// Nothing for what is no archive; states that are none are left out.
    [[nodiscard]] static std::optional<QBEditorStateController> unarchived(const quib::PropertyValue &archive);

private:
    QHash<QString, QBEditorState> m_states;
};
