#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <functional>
#include <memory>
#include <vector>

namespace Nodes {
class BasicProperty;
class ConfigNode;
} // namespace Nodes

namespace Utils {

/// Carries the notifications of one node to the GUI thread: the one place where that crossing is
/// made. A notification raised on the GUI thread itself is handled at once, values excepted. From
/// other threads bursts are collapsed: whatever is published, one delivery waits, and its handler
/// reads the node's present state. A member of the receiver, made, used and destroyed on the GUI
/// thread; once it is disconnected no handler runs, also while other threads still publish.
class UTILS_EXPORT NodeRelay
{
public:
    /// Those left empty are not subscribed to.
    struct Handlers
    {
        /// Null: re-read everything; the change was made on another thread.
        std::function<void(Nodes::BasicProperty *)> propertyChanged;
        /// A value arrived; the node tells the latest.
        std::function<void()> valueChanged;
        /// The node became active or idle; bursts from other threads end in the last state.
        std::function<void(bool)> activityChanged;
        /// The name or the description changed.
        std::function<void()> textChanged;
        /// Every child is announced; nothing is collapsed.
        std::function<void(Nodes::NodeLink)> childAdded;
        std::function<void(Nodes::NodeLink)> childRemoved;
        /// The order of the children changed.
        std::function<void()> childMoved;
    };

    NodeRelay();
    ~NodeRelay();
    NodeRelay(const NodeRelay &) = delete;
    NodeRelay &operator=(const NodeRelay &) = delete;

    /// Replaces the previous subscription; a null node only ends it.
    void connect(Nodes::ConfigNode *node, Handlers handlers);
    void disconnect();

private:
    class State;

    std::shared_ptr<State> m_state;
    std::vector<Nodes::ScopedConnection> m_connections;
};

} // namespace Utils
