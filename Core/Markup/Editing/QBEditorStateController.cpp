#include "QBEditorStateController.h"

#include <Foundation/Clock.h>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

QStringList QBEditorStateController::registeredUUIDs() const
{
    QStringList uuids = m_states.keys();
    uuids.sort();
    return uuids;
}

QBEditorState *QBEditorStateController::stateForUUID(const QString &uuid)
{
    const auto state = m_states.find(uuid);
    return state == m_states.end() ? nullptr : &*state;
}

const QBEditorState *QBEditorStateController::stateForUUID(const QString &uuid) const
{
    const auto state = m_states.constFind(uuid);
    return state == m_states.constEnd() ? nullptr : &*state;
}

QBEditorState *QBEditorStateController::registerStateForUUID(const QString &uuid)
{
    if (uuid.isNull()) {
        return nullptr;
    }
    QBEditorState state;
    state.UUID = uuid;
    state.date = quib::Clock::shared().now();
    return &*m_states.insert(uuid, state);
}

void QBEditorStateController::invalidateStateForUUID(const QString &uuid)
{
    m_states.remove(uuid);
}

PropertyValue QBEditorStateController::archived() const
{
    PropertyValue::Array states;
    for (const QString &uuid : registeredUUIDs()) {
        states.append(m_states.constFind(uuid)->archived());
    }
    return PropertyValue::Dictionary{{u"states"_s, states}};
}

std::optional<QBEditorStateController> QBEditorStateController::unarchived(const PropertyValue &archive)
{
    const auto *values = archive.asDictionary();
    const PropertyValue states = values == nullptr ? PropertyValue() : values->value(u"states"_s);
    if (states.asArray() == nullptr) {
        return std::nullopt;
    }
    QBEditorStateController controller;
    for (const PropertyValue &archivedState : *states.asArray()) {
        if (const auto state = QBEditorState::unarchived(archivedState)) {
            controller.m_states.insert(state->UUID, *state);
        }
    }
    return controller;
}
