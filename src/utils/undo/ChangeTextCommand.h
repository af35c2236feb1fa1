#pragma once

#include "utils/undo/NodeCommand.h"

#include "nodes/model/links/NodeLink.h"

#include <string>

namespace Utils {

/// Gives a node another name, which must be free among its siblings (see ConfigNode::Rename), or
/// another description. Undo gives it the text it had.
class UTILS_EXPORT ChangeTextCommand : public NodeCommand
{
public:
    enum enWhat { Name, Description };

    ChangeTextCommand(const Nodes::NodeLink &node, enWhat what, std::string text,
                      QUndoCommand *parent = nullptr);
    ~ChangeTextCommand() override;

protected:
    Nodes::Result apply() override;
    Nodes::Result revert() override;
    bool changesNothing() const override { return m_text == m_previous; }
    bool isContinuedBy(const NodeCommand &newer) const override;
    void absorb(const NodeCommand &newer) override;

private:
    Nodes::NodeLink m_node;
    enWhat m_what;
    std::string m_text;
    std::string m_previous;
};

} // namespace Utils
