#include "utils/undo/IUndo.h"

#include "utils/undo/UndoGate.h"

#include <QPointer>
#include <QUndoGroup>
#include <QUndoStack>

#include <memory>

namespace Utils {

namespace {

QPointer<QUndoStack> applicationStack;
QPointer<QUndoGroup> applicationGroup;
std::function<bool()> applicationGate;

} // namespace

IUndo::IUndo(QObject *owner) : m_owner(owner) {}

IUndo::~IUndo() = default;

bool IUndo::pushToUndoStack(QUndoCommand *command)
{
    return execute(command);
}

bool IUndo::execute(QUndoCommand *command)
{
    std::unique_ptr<QUndoCommand> held(command);
    if (!held)
        return true;
    if (!UndoGate::isOpen())
        return false;
    if (QUndoStack *stack = undoStack())
        stack->push(held.release());
    else
        held->redo();
    return true;
}

bool UndoGate::isOpen()
{
    return !applicationGate || applicationGate();
}

void IUndo::setGate(std::function<bool()> gate)
{
    applicationGate = std::move(gate);
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
