#include "NSUndoManager.h"

#include <Foundation/Assert.h>

#include <utility>

void NSUndoManager::registerUndo(Action action)
{
    registerUndoWithTarget(nullptr, std::move(action));
}

void NSUndoManager::registerUndoWithTarget(const void *target, Action handler)
{
    if (!isUndoRegistrationEnabled()) {
        return;
    }
    const bool isAlone = m_groupingLevel == 0;
    if (isAlone) {
        beginUndoGrouping();
    }
    if (m_state == State::Recording) {
        m_redoStack.clear();
    }
    m_openGroup.actions.push_back({target, std::move(handler)});
    if (isAlone) {
        endUndoGrouping();
    }
}

void NSUndoManager::removeAllActions()
{
    m_undoStack.clear();
    m_redoStack.clear();
    m_openGroup.actions.clear();
}

void NSUndoManager::removeAllActionsWithTarget(const void *target)
{
    const auto isOfTarget = [target](const Registered &registered) { return registered.target == target; };
    for (Stack *stack : {&m_undoStack, &m_redoStack}) {
        for (Group &group : *stack) {
            std::erase_if(group.actions, isOfTarget);
        }
        std::erase_if(*stack, [](const Group &group) { return group.actions.empty(); });
    }
    std::erase_if(m_openGroup.actions, isOfTarget);
}

void NSUndoManager::disableUndoRegistration()
{
    ++m_disablingDepth;
}

void NSUndoManager::enableUndoRegistration()
{
    QUIB_ASSERT(m_disablingDepth > 0);
    --m_disablingDepth;
}

void NSUndoManager::beginUndoGrouping()
{
    m_observers.notify(Event::Checkpoint);
    if (m_groupingLevel++ == 0) {
        m_openGroup = {};
    }
    m_observers.notify(Event::DidOpenUndoGroup);
}

void NSUndoManager::endUndoGrouping()
{
    QUIB_ASSERT(m_groupingLevel > 0);
    m_observers.notify(Event::Checkpoint);
    m_observers.notify(Event::WillCloseUndoGroup);
    closeGroup();
    m_observers.notify(Event::DidCloseUndoGroup);
}

void NSUndoManager::closeGroup()
{
    if (--m_groupingLevel > 0) {
        return;
    }
    Group group = std::exchange(m_openGroup, {});
    if (!group.actions.empty()) {
        Stack &stack = isUndoing() ? m_redoStack : m_undoStack;
        stack.push_back(std::move(group));
        trim(stack);
    }
}

void NSUndoManager::setLevelsOfUndo(qint64 levelsOfUndo)
{
    m_levelsOfUndo = levelsOfUndo;
    trim(m_undoStack);
    trim(m_redoStack);
}

void NSUndoManager::trim(Stack &stack) const
{
    const auto size = static_cast<qint64>(stack.size());
    if (m_levelsOfUndo > 0 && size > m_levelsOfUndo) {
        stack.erase(stack.begin(), stack.begin() + (size - m_levelsOfUndo));
    }
}

bool NSUndoManager::canUndo() const
{
    return !m_undoStack.empty() || (m_state == State::Recording && !m_openGroup.actions.empty());
}

void NSUndoManager::undo()
{
    if (m_state == State::Recording && m_groupingLevel == 1) {
        endUndoGrouping();
    }
    run(State::Undoing, m_undoStack, Event::WillUndoChange, Event::DidUndoChange);
}

void NSUndoManager::redo()
{
    run(State::Redoing, m_redoStack, Event::WillRedoChange, Event::DidRedoChange);
}

void NSUndoManager::run(State state, Stack &stack, Event willEvent, Event didEvent)
{
    if (m_state != State::Recording || m_groupingLevel > 0) {
        return;
    }
    m_observers.notify(Event::Checkpoint);
    if (stack.empty()) {
        return;
    }
    m_observers.notify(willEvent);
    // An observer may have taken everything back.
    if (stack.empty()) {
        return;
    }
    // 1. What the actions register becomes one group of the other stack, under the same name.
    Group group = std::move(stack.back());
    stack.pop_back();
    m_state = state;
    beginUndoGrouping();
    m_openGroup.name = group.name;
    for (auto registered = group.actions.crbegin(); registered != group.actions.crend(); ++registered) {
        registered->action();
    }
    // 2. Groups that an action left open end with it.
    while (m_groupingLevel > 0) {
        endUndoGrouping();
    }
    m_state = State::Recording;
    m_observers.notify(didEvent);
}

void NSUndoManager::setActionName(const QString &actionName)
{
    if (m_groupingLevel > 0) {
        m_openGroup.name = actionName;
    } else if (!m_undoStack.empty()) {
        m_undoStack.back().name = actionName;
    }
}

QString NSUndoManager::undoActionName() const
{
    if (m_state == State::Recording && !m_openGroup.actions.empty()) {
        return m_openGroup.name;
    }
    return m_undoStack.empty() ? QString() : m_undoStack.back().name;
}

QString NSUndoManager::redoActionName() const
{
    return m_redoStack.empty() ? QString() : m_redoStack.back().name;
}

quib::ObservationToken NSUndoManager::observe(std::function<void(Event event)> observer)
{
    return m_observers.add(std::move(observer));
}
