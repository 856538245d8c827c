#pragma once

#include <Foundation/NotificationCenter.h>

#include <QString>
#include <QtGlobal>

#include <functional>
#include <vector>

/// What can be undone and done again: groups of inverse actions on two stacks. What is registered while undoing goes to
/// the redo stack, and the other way round; anything registered otherwise makes redoing impossible. Confined to the
/// queue of its editor.
class NSUndoManager
{
public:
    using Action = std::function<void()>;
    enum class Event : quint8
    {
        /// A group was opened or is about to be closed, or undo or redo begins: the time to register what was put off.
        Checkpoint,
        DidOpenUndoGroup,
        WillCloseUndoGroup,
        DidCloseUndoGroup,
        WillUndoChange,
        DidUndoChange,
        WillRedoChange,
        DidRedoChange,
    };

    NSUndoManager() = default;
    NSUndoManager(const NSUndoManager &) = delete;
    NSUndoManager &operator=(const NSUndoManager &) = delete;

    // Registering

    /// Outside of a group the action becomes a group of its own.
    void registerUndo(Action action);
    /// The same; the action can be taken back by its target, which is compared and never used.
    void registerUndoWithTarget(const void *target, Action handler);
    void removeAllActions();
    void removeAllActionsWithTarget(const void *target);
    /// Pairs nest; while registration is disabled, nothing is registered and what was stays.
    void disableUndoRegistration();
    void enableUndoRegistration();
    [[nodiscard]] bool isUndoRegistrationEnabled() const { return m_disablingDepth == 0; }

    // Groups

    /// Everything until the matching end is undone as one. Pairs nest; an inner group is a part of the outer one.
    void beginUndoGrouping();
    /// A group without actions leaves nothing behind.
    void endUndoGrouping();
    [[nodiscard]] qint64 groupingLevel() const { return m_groupingLevel; }
    /// How many groups each stack keeps; 0, the default, is no limit.
    [[nodiscard]] qint64 levelsOfUndo() const { return m_levelsOfUndo; }
    void setLevelsOfUndo(qint64 levelsOfUndo);

    // Undoing

    /// Runs the actions of the last group, the last one first. An open group is closed before; within an inner group,
    /// or while undoing or redoing, nothing happens.
    void undo();
    void redo();
    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const { return !m_redoStack.empty(); }
    [[nodiscard]] bool isUndoing() const { return m_state == State::Undoing; }
    [[nodiscard]] bool isRedoing() const { return m_state == State::Redoing; }

    // Names

    /// Names the open group, or the last one where none is open. Undoing hands the name on to the redo group.
    void setActionName(const QString &actionName);
    /// Empty when there is nothing to undo, or it has no name.
    [[nodiscard]] QString undoActionName() const;
    [[nodiscard]] QString redoActionName() const;

    [[nodiscard]] quib::ObservationToken observe(std::function<void(Event event)> observer);

private:
    enum class State : quint8
    {
        Recording,
        Undoing,
        Redoing,
    };
    struct Registered
    {
        const void *target = nullptr;
        Action action;
    };
    struct Group
    {
        QString name;
        std::vector<Registered> actions;
    };
    using Stack = std::vector<Group>;

    void run(State state, Stack &stack, Event willEvent, Event didEvent);
    void closeGroup();
    void trim(Stack &stack) const;

    State m_state = State::Recording;
    Stack m_undoStack;
    Stack m_redoStack;
    /// What the outermost open group holds so far.
    Group m_openGroup;
    qint64 m_groupingLevel = 0;
    qint64 m_disablingDepth = 0;
    qint64 m_levelsOfUndo = 0;
    quib::ObserverList<Event> m_observers;
};
