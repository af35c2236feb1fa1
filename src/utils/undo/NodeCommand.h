#pragma once

#include "utils/UtilsExport.h"
#include "utils/undo/Interaction.h"

#include "nodes/values/Result.h"

#include <QUndoCommand>

#include <functional>

class QUndoStack;

namespace Utils {

/// An undoable change of the node model, with those of its child commands. Either all of it is made
/// or nothing, and each node tells of its properties once. A failure is written to the log and
/// makes the command obsolete, so that the undo stack drops it; so does a change that changes
/// nothing. The one exception: a command that holds nodes which could not go back into the tree
/// stays with them on the stack, so that undoing can be tried again. Commands refer to nodes by
/// link and may outlive them and their project. GUI thread.
class UTILS_EXPORT NodeCommand : public QUndoCommand
{
public:
    explicit NodeCommand(QUndoCommand *parent = nullptr);
    ~NodeCommand() override;

    /// Outcome of the last redo or undo: its own, or that of the child which failed.
    const Nodes::Result &result() const { return m_result; }

    /// Off while whoever makes the command tells a refusal himself; the listener is left out.
    void setRefusalTold(bool on) { m_isRefusalTold = on; }

    /// Makes the command a step of that interaction: pushed after another step of it that changes
    /// the same properties of the same nodes, it becomes part of that entry.
    void setInteraction(const Interaction &interaction) { m_interaction = interaction; }
    const Interaction &interaction() const { return m_interaction; }
    /// Takes back what the interaction has done, as Escape does, and leaves no entry of it on the
    /// stack. Only what is last on the stack can be taken back; null does nothing.
    static void cancel(const Interaction &interaction, QUndoStack *stack);

    /// Hears of each command that was refused, by its text, beside the log: to tell the user. One a
    /// process; empty: nobody.
    using RefusalListener = std::function<void(const QString &text, const Nodes::Result &why)>;
    static void setRefusalListener(RefusalListener listener);

    /// Does nothing while the change is in place, as after an undo that failed.
    void redo() final;
    /// Does nothing while the change is not in place.
    void undo() final;
    int id() const final;
    bool mergeWith(const QUndoCommand *other) final;

protected:
    virtual Nodes::Result apply() = 0;
    virtual Nodes::Result revert() = 0;
    virtual bool isHoldingNodes() const { return false; }
    /// Asked while the change is in place.
    virtual bool changesNothing() const { return false; }
    /// Whether `newer`, of the same class, does to the same what this does; children apart.
    virtual bool isContinuedBy(const NodeCommand &newer) const;
    /// Takes over what such a command has done since.
    virtual void absorb(const NodeCommand &newer);

private:
    const NodeCommand *nodeChild(int index) const;
    /// Null when all children are as wanted.
    const NodeCommand *findChild(bool isApplied) const;
    bool isHolding() const;
    bool isIdle() const;
    bool matches(const NodeCommand &newer) const;
    void take(const NodeCommand &newer);
    bool conclude(const char *operation, bool isChilds);

    bool m_isRefusalTold = true;
    bool m_isChild; ///< whose parent tells
    Nodes::Result m_result;
    Interaction m_interaction;
    bool m_isApplied = false;
};

} // namespace Utils
