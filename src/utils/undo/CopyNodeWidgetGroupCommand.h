#pragma once

#include "utils/undo/HeldNodes.h"
#include "utils/undo/NodeCommand.h"

#include "nodes/model/NodesArray.h"

#include <QPoint>

namespace Utils {

/// Inserts copied elements below a layer, all or none; undo takes them out again and holds them.
class UTILS_EXPORT CopyNodeWidgetGroupCommand : public NodeCommand
{
public:
    /// `clones` are held by their project (see NodesCollection::CloneNodes). They are moved as a
    /// group, the upper left corner of the rectangle around their positions coming to `point`
    /// (scene pixels). Clones that the layer refuses stay with their project.
    CopyNodeWidgetGroupCommand(const Nodes::NodeLink &layer, const Nodes::NodesArray &clones,
                               const QPoint &point, QUndoCommand *parent = nullptr);
    ~CopyNodeWidgetGroupCommand() override;

protected:
    Nodes::Result apply() override;
    Nodes::Result revert() override { return m_nodes.remove(); }
    bool isHoldingNodes() const override { return m_nodes.isHolding(); }

private:
    HeldNodes m_nodes;
};

} // namespace Utils
