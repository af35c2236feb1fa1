#pragma once

#include "utils/undo/NodeCommand.h"

#include "nodes/model/links/NodeLink.h"

#include <boost/any.hpp>

#include <string>

namespace Utils {

/// Gives one property of one node a new value; undo gives it the value it had before. A value that
/// changes nothing leaves no step on the stack, and so does an interaction that ends where it
/// began.
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
    bool changesNothing() const override;
    bool isContinuedBy(const NodeCommand &newer) const override;
    void absorb(const NodeCommand &newer) override;

private:
    Nodes::NodeLink m_node;
    unsigned m_valueId;
    boost::any m_value;
    boost::any m_previous;
    std::string m_previousText;
};

} // namespace Utils
