#include "utils/undo/NodeCommand.h"

#include <QLoggingCategory>

namespace Utils {

namespace {

Q_LOGGING_CATEGORY(undoLog, "station.undo")

} // namespace

NodeCommand::NodeCommand(QUndoCommand *parent) : QUndoCommand(parent) {}
NodeCommand::~NodeCommand() = default;

bool NodeCommand::conclude(const char *operation)
{
    if (m_result)
        return true;
    qCWarning(undoLog, "\"%s\" not %s: %s", qUtf8Printable(text()), operation,
              m_result.ToString().c_str());
    setObsolete(!isHoldingNodes());
    return false;
}

void NodeCommand::redo()
{
    if (m_isApplied)
        return;
    m_result = apply();
    m_isApplied = conclude("done");
    if (m_isApplied)
        QUndoCommand::redo();
}

void NodeCommand::undo()
{
    if (!m_isApplied)
        return;
    QUndoCommand::undo();
    m_result = revert();
    m_isApplied = !conclude("undone");
}

} // namespace Utils
