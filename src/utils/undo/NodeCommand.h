#pragma once

#include "utils/UtilsExport.h"

#include "nodes/values/Result.h"

#include <QUndoCommand>

namespace Utils {

/// An undoable change of the node model. Either the whole change is made or nothing; a failure is
/// written to the log and makes the command obsolete, so that the undo stack drops it. The one
/// exception: a command that holds nodes which could not go back into the tree stays with them on
/// the stack, so that undoing can be tried again. Commands refer to nodes by link and may outlive
/// them and their project. GUI thread.
class UTILS_EXPORT NodeCommand : public QUndoCommand
{
public:
    explicit NodeCommand(QUndoCommand *parent = nullptr);
    ~NodeCommand() override;

    /// Outcome of the last redo or undo.
    const Nodes::Result &result() const { return m_result; }

    /// Does nothing while the change is in place, as after an undo that failed.
    void redo() final;
    /// Does nothing while the change is not in place.
    void undo() final;

protected:
    virtual Nodes::Result apply() = 0;
    virtual Nodes::Result revert() = 0;
    virtual bool isHoldingNodes() const { return false; }

private:
    bool conclude(const char *operation);

    Nodes::Result m_result;
    bool m_isApplied = false;
};

} // namespace Utils
