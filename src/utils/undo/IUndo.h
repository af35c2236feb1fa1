#pragma once

#include "utils/UtilsExport.h"

#include <QString>

#include <functional>

class QObject;
class QUndoCommand;
class QUndoGroup;
class QUndoStack;

namespace Utils {

/// Base of objects whose edits can be undone: the way to the application's undo stack, which is the
/// active document's where the host keeps several documents (UndoGroup). GUI thread.
class UTILS_EXPORT IUndo
{
public:
    /// `owner` is the object that edits; not owned.
    explicit IUndo(QObject *owner);
    virtual ~IUndo();

    /// Name of what is edited, for undo texts.
    virtual QString getNameUndo() = 0;
    QObject *getUndoOwner() const { return m_owner; }

    /// Executes the command and hands it to the stack. Without a stack it is executed all the same
    /// and cannot be undone. Takes ownership; null is ignored. False when the gate is closed: the
    /// command is dropped unexecuted.
    bool pushToUndoStack(QUndoCommand *command);
    /// The same for who edits without being asked for a name.
    static bool execute(QUndoCommand *command);

    /// The group's active stack; without one the host's only one. Null when there is neither.
    static QUndoStack *undoStack();
    /// For hosts that keep one stack for everything; not owned.
    static void setUndoStack(QUndoStack *stack);
    /// For hosts with documents; an UndoGroup does so itself. Not owned.
    static void setUndoGroup(QUndoGroup *group);
    /// Asked before each command whether edits are taken now, as not in a project that is open for
    /// reading only; the host tells the user why. Empty: always.
    static void setGate(std::function<bool()> gate);

private:
    QObject *m_owner;
};

} // namespace Utils
