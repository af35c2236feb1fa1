#include "utils/undo/IUndo.h"

#include <QPointer>
#include <QUndoGroup>
#include <QUndoStack>

#include <memory>

namespace Utils {

namespace {

QPointer<QUndoStack> applicationStack;
QPointer<QUndoGroup> applicationGroup;

} // namespace

IUndo::IUndo(QObject *owner) : m_owner(owner) {}

IUndo::~IUndo() = default;

void IUndo::pushToUndoStack(QUndoCommand *command)
{
    std::unique_ptr<QUndoCommand> held(command);
    if (!held)
        return;
    if (QUndoStack *stack = undoStack())
        stack->push(held.release());
    else
        held->redo();
}

QUndoStack *IUndo::undoStack()
{
    QUndoStack *active = applicationGroup ? applicationGroup->activeStack() : nullptr;
    return active ? active : applicationStack.data();
}

void IUndo::setUndoStack(QUndoStack *stack)
{
    applicationStack = stack;
}

void IUndo::setUndoGroup(QUndoGroup *group)
{
    applicationGroup = group;
}

} // namespace Utils
