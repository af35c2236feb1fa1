#include "utils/undo/NodeCommand.h"

#include "nodes/model/ChangeBatch.h"

#include <QLoggingCategory>
#include <QUndoStack>

#include <typeinfo>

namespace Utils {

namespace {

Q_LOGGING_CATEGORY(undoLog, "station.undo")

// Commands that may be merged look at each other's class and interaction themselves.
constexpr int mergedCommands = 0x4E43;

NodeCommand::RefusalListener refusalListener;

} // namespace

NodeCommand::NodeCommand(QUndoCommand *parent) : QUndoCommand(parent), m_isChild(parent != nullptr)
{
}

NodeCommand::~NodeCommand() = default;

const NodeCommand *NodeCommand::nodeChild(int index) const
{
    return dynamic_cast<const NodeCommand *>(child(index));
}

const NodeCommand *NodeCommand::findChild(bool isApplied) const
{
    for (int i = 0; i < childCount(); ++i) {
        const NodeCommand *command = nodeChild(i);
        if (command && command->m_isApplied == isApplied)
            return command;
    }
    return nullptr;
}

bool NodeCommand::isHolding() const
{
    for (int i = 0; i < childCount(); ++i) {
        const NodeCommand *command = nodeChild(i);
        if (command && command->isHolding())
            return true;
    }
    return isHoldingNodes();
}

bool NodeCommand::isIdle() const
{
    for (int i = 0; i < childCount(); ++i) {
        const NodeCommand *command = nodeChild(i);
        if (!command || !command->isIdle())
            return false;
    }
    return changesNothing();
}

bool NodeCommand::conclude(const char *operation, bool isChilds)
{
    if (m_result)
        return true;
    if (!isChilds) // a child has said so itself
        qCWarning(undoLog, "\"%s\" not %s: %s", qUtf8Printable(text()), operation,
                  m_result.ToString().c_str());
    setObsolete(!isHolding());
    return false;
}

void NodeCommand::setRefusalListener(RefusalListener listener)
{
    refusalListener = std::move(listener);
}

void NodeCommand::redo()
{
    if (m_isApplied)
        return;
    const Nodes::ChangeBatch batch;
    const NodeCommand *failed = nullptr;
    m_result = apply();
    if (m_result) {
        QUndoCommand::redo();
        failed = findChild(false);
    }
    if (failed) {
        m_result = failed->result();
        QUndoCommand::undo();
        (void)revert();
    }
    m_isApplied = conclude("done", failed != nullptr);
    if (!m_result && refusalListener && !m_isChild && m_isRefusalTold)
        refusalListener(text(), m_result);
    if (m_isApplied && isIdle())
        setObsolete(true);
}

void NodeCommand::undo()
{
    if (!m_isApplied)
        return;
    const Nodes::ChangeBatch batch;
    QUndoCommand::undo();
    const NodeCommand *failed = findChild(true);
    m_result = failed ? failed->result() : revert();
    if (!m_result)
        QUndoCommand::redo();
    m_isApplied = !conclude("undone", failed != nullptr);
    if (!m_result && refusalListener && !m_isChild && m_isRefusalTold)
        refusalListener(text(), m_result);
    if (!m_isApplied && m_interaction.isCancelled())
        setObsolete(true);
}

int NodeCommand::id() const
{
    return m_interaction.isNone() ? -1 : mergedCommands;
}

bool NodeCommand::isContinuedBy(const NodeCommand &) const
{
    return false;
}

void NodeCommand::absorb(const NodeCommand &) {}

bool NodeCommand::matches(const NodeCommand &newer) const
{
    if (typeid(*this) != typeid(newer) || !m_isApplied || !newer.m_isApplied ||
        childCount() != newer.childCount() || !isContinuedBy(newer))
        return false;
    for (int i = 0; i < childCount(); ++i) {
        const NodeCommand *own = nodeChild(i);
        const NodeCommand *theirs = newer.nodeChild(i);
        if (!own || !theirs || !own->matches(*theirs))
            return false;
    }
    return true;
}

// Qt shows the children as constants only; they are this command's own.
void NodeCommand::take(const NodeCommand &newer)
{
    absorb(newer);
    for (int i = 0; i < childCount(); ++i)
        const_cast<NodeCommand *>(nodeChild(i))->take(*newer.nodeChild(i));
}

bool NodeCommand::mergeWith(const QUndoCommand *other)
{
    const auto *newer = dynamic_cast<const NodeCommand *>(other);
    if (!newer || m_interaction.isNone() || newer->m_interaction != m_interaction ||
        !matches(*newer))
        return false;
    take(*newer);
    setObsolete(isIdle());
    return true;
}

void NodeCommand::cancel(const Interaction &interaction, QUndoStack *stack)
{
    if (interaction.isNone())
        return;
    interaction.setCancelled();
    while (stack && stack->index() > 0) {
        const auto *last = dynamic_cast<const NodeCommand *>(stack->command(stack->index() - 1));
        if (!last || last->m_interaction != interaction)
            return;
        stack->undo();
    }
}

} // namespace Utils
