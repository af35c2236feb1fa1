#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Plays a sound file of the project once.
class NODES_EXPORT actionPlaySound : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10001);
    struct Prop
    {
        static constexpr PropertyId<ResourceLink> Sound{16030, "sound"};
    };

    static KindInfo Kind();
    const ResourceLink &GetSound() const { return m_sound; }

private:
    ResourceLink m_sound;
};

} // namespace Nodes
