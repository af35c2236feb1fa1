#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/system/TreeAnswer.h"

namespace Nodes {

class systemAuthentication;

/// One computer of the plant: holds the subsystems and everything that runs there. What stands in
/// another station than the local one does not run here, and its signals are bad.
class NODES_EXPORT BasicStation : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeStation;

    static KindInfo Kind();
    const BasicStation *AsStation() const override { return this; }

    /// User subsystem of this station, else the one of the whole project; null when the project
    /// configures none. Asked for every right: the tree is searched only after it has changed.
    systemAuthentication *GetSystemAuthentication() const;

private:
    systemAuthentication *findAuthentication(const ConfigNode *root) const;

    TreeAnswer<systemAuthentication> m_authentication;
};

} // namespace Nodes
