#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/properties/PropertyId.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <memory>

namespace Widgets {

/// Gathers what an edit of several elements changes into one step; what is as wanted already takes
/// no part. GUI thread.
class EditGroup
{
public:
    explicit EditGroup(const QString &text) : m_group(std::make_unique<Utils::CommandGroup>(text))
    {
    }

    template <class Value>
    void set(const Nodes::ConfigNode &node, const Nodes::PropertyId<Value> &property,
             const Value &value)
    {
        const Nodes::BasicProperty *known = node.GetPropertyByValueId(property.valueId);
        if (!known || boost::any_cast<Value>(known->GetPropertyValue()) == value)
            return;
        new Utils::ChangePropertyCommand(Nodes::NodeLink(&node), property.valueId, value,
                                         m_group.get());
    }
    /// Parent of other commands of the step.
    QUndoCommand *parent() const { return m_group.get(); }
    /// The step, the caller's from now on; null when nothing would change.
    QUndoCommand *take() { return m_group->childCount() > 0 ? m_group.release() : nullptr; }

private:
    std::unique_ptr<Utils::CommandGroup> m_group;
};

} // namespace Widgets
