#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/links/ResourceLink.h"

namespace Nodes {

/// Plays a sound file of the project once.
class NODES_EXPORT actionPlaySound : public BasicAction
{
public:
    static KindInfo Kind();
    const ResourceLink &GetSound() const { return m_sound; }

private:
    ResourceLink m_sound;
};

} // namespace Nodes
