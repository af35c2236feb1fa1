#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Puts an entry of its own into the event journal, with the current user.
class NODES_EXPORT actionCreateEvent : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10006);
    struct Prop
    {
        static constexpr PropertyId<std::string> Text{16040, "text"};
        static constexpr PropertyId<int> Level{16041, "level"};
        static constexpr PropertyId<std::string> Source{16042, "source"};
        static constexpr PropertyId<NodeLink> Node{16043, "node"};
    };

    static KindInfo Kind();

    /// InvalidArgument without a text; else what the journal answers. Any thread.
    Result CreateEvent() const;

private:
    std::string m_text;
    int m_level = LevelInformation;
    std::string m_source = "System";
    NodeLink m_sourceNode; // in place of the text while it exists
};

} // namespace Nodes
