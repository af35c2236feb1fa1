#include "utils/undo/IUndo.h"

#include <QPointer>
#include <QUndoStack>

#include <memory>

namespace Utils {

namespace {

QPointer<QUndoStack> applicationStack;

} // namespace

IUndo::IUndo(QObject *owner) : m_owner(owner) {}

IUndo::~IUndo() = default;

void IUndo::pushToUndoStack(QUndoCommand *command)
{
    std::unique_ptr<QUndoCommand> held(command);
    if (!held)
        return;
    if (applicationStack)
        applicationStack->push(held.release());
    else
        held->redo();
}

QUndoStack *IUndo::undoStack()
{
    return applicationStack;
}

void IUndo::setUndoStack(QUndoStack *stack)
{
    applicationStack = stack;
}

} // namespace Utils
