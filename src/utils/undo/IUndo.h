#pragma once

#include "utils/UtilsExport.h"

#include <QString>

class QObject;
class QUndoCommand;
class QUndoStack;

namespace Utils {

/// Base of objects whose edits can be undone: the way to the application's undo stack. GUI thread.
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
    /// and cannot be undone. Takes ownership; null is ignored.
    void pushToUndoStack(QUndoCommand *command);

    /// Stack of the application; null when it has none or it is gone.
    static QUndoStack *undoStack();
    static void setUndoStack(QUndoStack *stack);

private:
    QObject *m_owner;
};

} // namespace Utils
