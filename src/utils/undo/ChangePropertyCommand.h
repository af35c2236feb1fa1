#pragma once

#include "utils/undo/NodeCommand.h"

#include "nodes/model/links/NodeLink.h"

#include <boost/any.hpp>

namespace Utils {

/// Gives one property of one node a new value; undo gives it the value it had before. A value that
/// changes nothing makes the command obsolete: it leaves no step on the stack.
class UTILS_EXPORT ChangePropertyCommand : public NodeCommand
{
public:
    /// `value` must be of the property's own C++ type.
    ChangePropertyCommand(const Nodes::NodeLink &node, unsigned valueId, boost::any value,
                          QUndoCommand *parent = nullptr);
    ~ChangePropertyCommand() override;

    /// Sets the value at once, for a command that is not going to the stack; one that is pushed
    /// all the same does not set it twice.
    Nodes::Result setPropertyCommand();

protected:
    Nodes::Result apply() override;
    Nodes::Result revert() override;

private:
    Nodes::NodeLink m_node;
    unsigned m_valueId;
    boost::any m_value;
    boost::any m_previous;
};

} // namespace Utils
